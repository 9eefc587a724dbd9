#ifndef UF_PART_TYPES_H_INCLUDED
#define UF_PART_TYPES_H_INCLUDED

#include <uf_defs.h>

#endif
