#ifndef NXOPEN_NXDEPRECATION_HXX_INCLUDED
#define NXOPEN_NXDEPRECATION_HXX_INCLUDED
#if defined(_MSC_VER)
#define NX_DEPRECATED(s) __declspec(deprecated(s))
#elif defined(__GNUC__)
#define NX_DEPRECATED(s) __attribute__((deprecated))
#else
#define NX_DEPRECATED(s)
#endif
#endif
