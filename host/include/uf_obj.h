#ifndef UF_OBJ_H_INCLUDED
#define UF_OBJ_H_INCLUDED

/* Objects: blank status, type and display properties. */

#include <uf_defs.h>
#include <uf_obj_types.h>
#include <libufun_exports.h>

#ifdef __cplusplus
extern "C" {
#endif

extern UFUNEXPORT int UF_OBJ_set_blank_status(tag_t object_id, int blank_status);
extern UFUNEXPORT int UF_OBJ_ask_type_and_subtype(tag_t object_id, int *type, int *subtype);
extern UFUNEXPORT int UF_OBJ_ask_display_properties(tag_t object_id, UF_OBJ_disp_props_p_t disp_props);

#ifdef __cplusplus
}
#endif

#endif
