#ifndef UF_OBJ_TYPES_H_INCLUDED
#define UF_OBJ_TYPES_H_INCLUDED

#include <uf_defs.h>

#define UF_OBJ_NOT_BLANKED 0
#define UF_OBJ_BLANKED 1

struct UF_OBJ_disp_props_s {
    int layer;
    int color;
    int blank_status;
    int line_width;
    int font;
    logical highlight_status;
};
typedef struct UF_OBJ_disp_props_s UF_OBJ_disp_props_t, *UF_OBJ_disp_props_p_t;

#endif
