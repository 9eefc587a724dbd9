#ifndef LIBUFUN_EXPORTS_H_INCLUDED
#define LIBUFUN_EXPORTS_H_INCLUDED
#if defined(_WIN32) && !defined(WNT_STATIC_LINK)
#define UFUNEXPORT __declspec(dllimport)
#else
#define UFUNEXPORT
#endif
#endif
