#ifndef NXOpen_BODY_HXX_INCLUDED
#define NXOpen_BODY_HXX_INCLUDED

#include <NXOpen/DisplayableObject.hxx>
#include <NXOpen/IBody.hxx>
#include <NXOpen/IOrientation.hxx>
#include <NXOpen/libnxopencpp_exports.hxx>

namespace NXOpen
{
    // A body of a part.
    class NXOPENCPPEXPORT Body : public NXOpen::DisplayableObject, public virtual NXOpen::IOrientation, public virtual NXOpen::IBody
    {
    public:
        bool IsSolidBody();
        bool IsSheetBody();
        double Density();

    protected:
        Body();
        virtual ~Body();
    };
}

#endif
