#ifndef NXOpen_DATACONTAINER_HXX_INCLUDED
#define NXOpen_DATACONTAINER_HXX_INCLUDED

#include <NXOpen/PropertyContainer.hxx>
#include <NXOpen/libnxopencpp_exports.hxx>

namespace NXOpen
{
    // The named data of a tree node. The wrapper belongs to whoever received it and is deleted
    // after use; the data stays on the node.
    class NXOPENCPPEXPORT DataContainer : public NXOpen::PropertyContainer
    {
    public:
        explicit DataContainer(void *ptr);

        // Adds a named object; names are unique (adding an existing name throws NXException).
        void AddTaggedObject(const NXString &propertyName, NXOpen::TaggedObject *taggedSc);
        void AddTaggedObject(const char *propertyName, NXOpen::TaggedObject *taggedSc);
        void AddString(const NXString &propertyName, const NXString &value);
        void AddString(const char *propertyName, const char *value);
        void AddInteger(const NXString &propertyName, int value);
        void AddInteger(const char *propertyName, int value);
    };
}

#endif
