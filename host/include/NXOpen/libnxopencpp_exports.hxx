#ifndef LIBNXOPENCPP_EXPORTS_HXX_INCLUDED
#define LIBNXOPENCPP_EXPORTS_HXX_INCLUDED
#if defined(_WIN32) && !defined(WNT_STATIC_LINK)
#define NXOPENCPPEXPORT __declspec(dllimport)
#else
#define NXOPENCPPEXPORT
#endif
#endif
