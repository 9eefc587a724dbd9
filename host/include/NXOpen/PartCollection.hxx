#ifndef NXOpen_PARTCOLLECTION_HXX_INCLUDED
#define NXOpen_PARTCOLLECTION_HXX_INCLUDED

#include <NXOpen/BasePart.hxx>
#include <NXOpen/Part.hxx>
#include <NXOpen/TaggedObjectCollection.hxx>
#include <NXOpen/libnxopencpp_exports.hxx>

namespace NXOpen
{
    // The parts loaded in the session.
    class NXOPENCPPEXPORT PartCollection : public NXOpen::TaggedObjectCollection
    {
    public:
        // The work part; throws NXException when there is none.
        NXOpen::Part *Work();
        NXOpen::Part *Display();
        NXOpen::BasePart *BaseWork();
        tag_t Tag() const;

    protected:
        PartCollection();
        virtual ~PartCollection();
    };
}

#endif
