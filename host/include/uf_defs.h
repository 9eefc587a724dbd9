#ifndef UF_DEFS_H_INCLUDED
#define UF_DEFS_H_INCLUDED

/* Basic types and macros of the NX user-function library (NX 8.5). */

#ifndef TAG_T_DEFINED
#define TAG_T_DEFINED
typedef unsigned int tag_t;
typedef tag_t *tag_p_t;
#endif

#ifndef LOGICAL_DEFINED
#define LOGICAL_DEFINED
#ifdef __cplusplus
typedef bool logical;
#else
typedef unsigned char logical;
#endif
#endif

#ifndef NULL_TAG
#define NULL_TAG ((tag_t)0)
#endif
#ifndef null_tag
#define null_tag ((tag_t)0)
#endif

#ifndef TRUE
#define TRUE 1
#endif
#ifndef FALSE
#define FALSE 0
#endif

#define ERROR_OK 0
#define MAX_LINE_SIZE 132
#define MAX_FSPEC_SIZE 256
#define MAX_ENTITY_NAME_SIZE 128

#ifdef _WIN32
#define DllExport __declspec(dllexport)
#else
#define DllExport
#endif

#endif
