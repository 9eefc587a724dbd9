// NXString has no comparison operators: compare the GetLocaleText() bytes.
#include <NXOpen/NXString.hxx>

#include <string.h>

bool Same(const NXOpen::NXString &a, const NXOpen::NXString &b) {
#ifdef NXAPI_REJECTED
    return a == b;
#else
    return strcmp(a.GetLocaleText(), b.GetLocaleText()) == 0;
#endif
}
