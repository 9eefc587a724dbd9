#ifndef NXOpen_IORIENTATION_HXX_INCLUDED
#define NXOpen_IORIENTATION_HXX_INCLUDED

#include <NXOpen/INXObject.hxx>
#include <NXOpen/libnxopencpp_exports.hxx>

namespace NXOpen
{
    class NXOPENCPPEXPORT IOrientation : public virtual NXOpen::INXObject
    {
    };
}

#endif
