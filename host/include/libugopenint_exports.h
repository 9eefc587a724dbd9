#ifndef LIBUGOPENINT_EXPORTS_H_INCLUDED
#define LIBUGOPENINT_EXPORTS_H_INCLUDED
#if defined(_WIN32) && !defined(WNT_STATIC_LINK)
#define UGOPENINTEXPORT __declspec(dllimport)
#else
#define UGOPENINTEXPORT
#endif
#endif
