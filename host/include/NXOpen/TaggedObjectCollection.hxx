#ifndef NXOpen_TAGGEDOBJECTCOLLECTION_HXX_INCLUDED
#define NXOpen_TAGGEDOBJECTCOLLECTION_HXX_INCLUDED

#include <NXOpen/libnxopencpp_exports.hxx>

namespace NXOpen
{
    // Root of the collections of a session or part (parts, bodies).
    class NXOPENCPPEXPORT TaggedObjectCollection
    {
    public:
        virtual ~TaggedObjectCollection();

    protected:
        TaggedObjectCollection();
        void initialize() {}

    private:
        TaggedObjectCollection(const TaggedObjectCollection &);
        TaggedObjectCollection &operator=(const TaggedObjectCollection &);
    };
}

#endif
