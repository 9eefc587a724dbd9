#ifndef NXOpen_PROPERTYCONTAINER_HXX_INCLUDED
#define NXOpen_PROPERTYCONTAINER_HXX_INCLUDED

#include <vector>
#include <NXOpen/NXString.hxx>
#include <NXOpen/TransientObject.hxx>
#include <NXOpen/libnxopencpp_exports.hxx>

namespace NXOpen
{
    class TaggedObject;

    // Named values (property name -> value). The Get* calls by name throw NXException when the
    // container has no property of that name; they never return NULL for a missing name.
    class NXOPENCPPEXPORT PropertyContainer : public NXOpen::TransientObject
    {
    public:
        explicit PropertyContainer(void *ptr);
        virtual ~PropertyContainer();

        int Length();
        std::vector<NXString> GetPropertyNames();
        NXOpen::TaggedObject *GetTaggedObject(const NXString &propertyName);
        NXOpen::TaggedObject *GetTaggedObject(const char *propertyName);
        NXOpen::TaggedObject *GetTaggedObject(int propertyIndex);
        void SetTaggedObject(const NXString &propertyName, NXOpen::TaggedObject *taggedSc);
        void SetTaggedObject(const char *propertyName, NXOpen::TaggedObject *taggedSc);
        NXString GetString(const NXString &propertyName);
        NXString GetString(const char *propertyName);
        NXString GetString(int propertyIndex);
    };
}

#endif
