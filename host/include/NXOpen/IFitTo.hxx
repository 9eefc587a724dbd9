#ifndef NXOpen_IFITTO_HXX_INCLUDED
#define NXOpen_IFITTO_HXX_INCLUDED

#include <NXOpen/INXObject.hxx>
#include <NXOpen/libnxopencpp_exports.hxx>

namespace NXOpen
{
    class NXOPENCPPEXPORT IFitTo : public virtual NXOpen::INXObject
    {
    };
}

#endif
