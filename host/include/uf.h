#ifndef UF_H_INCLUDED
#define UF_H_INCLUDED

/* Initialisation, environment variables and memory of the NX user-function library. */

#include <uf_defs.h>
#include <uf_ugopenint.h>
#include <libufun_exports.h>

#ifdef __cplusplus
extern "C" {
#endif

extern UFUNEXPORT int UF_initialize(void);
extern UFUNEXPORT int UF_is_initialized(void);
extern UFUNEXPORT int UF_terminate(void);
extern UFUNEXPORT int UF_translate_variable(const char *variable, char **translation);
extern UFUNEXPORT void UF_free(void *data);
extern UFUNEXPORT int UF_print_syslog(char *message, logical trace);
extern UFUNEXPORT int UF_get_fail_message(int fail_code, char message[133]);

#ifdef __cplusplus
}
#endif

#endif
