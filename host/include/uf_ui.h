#ifndef UF_UI_H_INCLUDED
#define UF_UI_H_INCLUDED

#include <uf_defs.h>
#include <uf_ui_types.h>

#endif
