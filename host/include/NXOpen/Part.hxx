#ifndef NXOpen_PART_HXX_INCLUDED
#define NXOpen_PART_HXX_INCLUDED

#include <NXOpen/BasePart.hxx>
#include <NXOpen/libnxopencpp_exports.hxx>

namespace NXOpen
{
    class BodyCollection;

    // A .prt part.
    class NXOPENCPPEXPORT Part : public NXOpen::BasePart
    {
    public:
        // The part's bodies (include NXOpen/BodyCollection.hxx to use them).
        NXOpen::BodyCollection *Bodies();

    protected:
        Part();
        virtual ~Part();
    };
}

#endif
