#ifndef UF_UI_TYPES_H_INCLUDED
#define UF_UI_TYPES_H_INCLUDED

/* Selection kinds of solid objects, for NXOpen::Selection::MaskTriple::SolidBodySubtype. */

#include <uf_part_types.h>

#define UF_UI_SEL_NOT_A_FEATURE -1
#define UF_UI_SEL_FEATURE_BODY 0
#define UF_UI_SEL_FEATURE_ANY_EDGE 1
#define UF_UI_SEL_FEATURE_ANY_FACE 20
#define UF_UI_SEL_FEATURE_SHEET_BODY 35
#define UF_UI_SEL_FEATURE_SOLID_BODY 36

#endif
