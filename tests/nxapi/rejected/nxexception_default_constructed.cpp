// NXException's constructors are private: an exception is made with NXException::Create.
#include <NXOpen/NXException.hxx>

void Fail() {
#ifdef NXAPI_REJECTED
    NXOpen::NXException e;
#else
    NXOpen::NXException e = NXOpen::NXException::Create("no such block");
#endif
    throw e;
}
