#ifndef UF_LAYER_H_INCLUDED
#define UF_LAYER_H_INCLUDED

/* Layer status and walking the objects of a layer. */

#include <uf_defs.h>
#include <libufun_exports.h>

#define UF_LAYER_WORK_LAYER 1
#define UF_LAYER_ACTIVE_LAYER 2
#define UF_LAYER_REFERENCE_LAYER 3
#define UF_LAYER_INACTIVE_LAYER 4
#define UF_LAYER_MIN_LAYER 1
#define UF_LAYER_MAX_LAYER 256

#ifdef __cplusplus
extern "C" {
#endif

extern UFUNEXPORT int UF_LAYER_set_status(const int layer_number, const int layer_status);
extern UFUNEXPORT int UF_LAYER_set_all_but_work(const int layer_status);
extern UFUNEXPORT int UF_LAYER_ask_status(const int layer_number, int *layer_status);
extern UFUNEXPORT int UF_LAYER_ask_work_layer(int *layer_number);
extern UFUNEXPORT int UF_LAYER_cycle_by_layer(int layer_number, tag_t *object_tag);

#ifdef __cplusplus
}
#endif

#endif
