#ifndef NXOpen_INXOBJECT_HXX_INCLUDED
#define NXOpen_INXOBJECT_HXX_INCLUDED

#include <NXOpen/NXString.hxx>
#include <NXOpen/libnxopencpp_exports.hxx>

namespace NXOpen
{
    class BasePart;

    // Interface of every NX object (reduced to the members NXObject overrides here).
    class NXOPENCPPEXPORT INXObject
    {
    public:
        virtual ~INXObject() {}
        virtual NXString JournalIdentifier() = 0;
        virtual bool IsOccurrence() = 0;
        virtual NXOpen::BasePart *OwningPart() = 0;
        virtual NXString Name() = 0;
        virtual void SetName(const NXString &name) = 0;
    };
}

#endif
