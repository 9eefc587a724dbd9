#ifndef UF_ATTR_DATATYPES_H_INCLUDED
#define UF_ATTR_DATATYPES_H_INCLUDED

#include <uf_defs.h>

#define UF_ATTR_integer 1
#define UF_ATTR_real 2
#define UF_ATTR_time 3
#define UF_ATTR_null 4
#define UF_ATTR_string 5
#define UF_ATTR_any 6
#define UF_ATTR_reference 7
#define UF_ATTR_bool 8

#define UF_ATTR_MAX_STRING_LEN 132
#define UF_ATTR_MAX_TITLE_LEN 50

#define UF_ATTR_NOT_ARRAY -3
#define UF_ATTR_ANY_ATTRIBUTE -2
#define UF_ATTR_LAST_ELEMENT -1

union UF_ATTR_value_u {
    logical boolean;
    int integer;
    double real;
    int time[2];
    char *string;
    char *reference;
};
typedef union UF_ATTR_value_u UF_ATTR_value_u_t, *UF_ATTR_value_u_p_t;

struct UF_ATTR_value_s {
    int type;
    UF_ATTR_value_u_t value;
};
typedef struct UF_ATTR_value_s UF_ATTR_value_t, *UF_ATTR_value_p_t;

#endif
