#ifndef UF_UGOPENINT_H_INCLUDED
#define UF_UGOPENINT_H_INCLUDED

/* The entry points NX calls in a user-function DLL. */

#include <uf_defs.h>

#define UF_UNLOAD_IMMEDIATELY 1
#define UF_UNLOAD_SEL_DIALOG 2
#define UF_UNLOAD_UG_TERMINATE 3

#ifdef __cplusplus
extern "C" {
#endif

extern DllExport void ufusr(char *param, int *retcod, int param_len);
extern DllExport int ufusr_ask_unload(void);
extern DllExport void ufusr_cleanup(void);

#ifdef __cplusplus
}
#endif

#endif
