#ifndef UF_ATTR_H_INCLUDED
#define UF_ATTR_H_INCLUDED

/* Object attributes (the older user-function calls). */

#include <uf_defs.h>
#include <uf_attr_datatypes.h>
#include <libufun_exports.h>

#ifdef __cplusplus
extern "C" {
#endif

extern UFUNEXPORT int UF_ATTR_read_value(tag_t object, char *title, int type, UF_ATTR_value_p_t value);
extern UFUNEXPORT int UF_ATTR_assign(tag_t object, char *title, UF_ATTR_value_t value);

#ifdef __cplusplus
}
#endif

#endif
