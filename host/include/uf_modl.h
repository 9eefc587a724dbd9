#ifndef UF_MODL_H_INCLUDED
#define UF_MODL_H_INCLUDED

/* Model update and mass properties. */

#include <uf_defs.h>
#include <libufun_exports.h>

#ifdef __cplusplus
extern "C" {
#endif

extern UFUNEXPORT int UF_MODL_update(void);
extern UFUNEXPORT int UF_MODL_ask_mass_props_3d(tag_t *objects, int num_objs, int type, int units,
                                                double density, int accuracy, double acc_value[11],
                                                double mass_props[47], double statistics[13]);

#ifdef __cplusplus
}
#endif

#endif
