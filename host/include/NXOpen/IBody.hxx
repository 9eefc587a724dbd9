#ifndef NXOpen_IBODY_HXX_INCLUDED
#define NXOpen_IBODY_HXX_INCLUDED

#include <NXOpen/INXObject.hxx>
#include <NXOpen/libnxopencpp_exports.hxx>

namespace NXOpen
{
    class NXOPENCPPEXPORT IBody : public virtual NXOpen::INXObject
    {
    };
}

#endif
