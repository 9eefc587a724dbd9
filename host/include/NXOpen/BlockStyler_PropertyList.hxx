#ifndef NXOpen_BLOCKSTYLER_PROPERTYLIST_HXX_INCLUDED
#define NXOpen_BLOCKSTYLER_PROPERTYLIST_HXX_INCLUDED

#include <vector>
#include <NXOpen/BlockStyler_UIBlock.hxx>
#include <NXOpen/Selection.hxx>
#include <NXOpen/TransientObject.hxx>
#include <NXOpen/libnxopenuicpp_exports.hxx>

namespace NXOpen
{
    namespace BlockStyler
    {
        // The properties of one block, by name. A getter with an unknown name throws NXException.
        // The caller deletes the list after use.
        class NXOPENUICPPEXPORT PropertyList : public NXOpen::TransientObject
        {
        public:
            explicit PropertyList(void *ptr);
            virtual ~PropertyList();

            std::vector<NXOpen::TaggedObject *> GetTaggedObjectVector(const NXString &propertyName);
            std::vector<NXOpen::TaggedObject *> GetTaggedObjectVector(const char *propertyName);
            std::vector<NXOpen::TaggedObject *> GetTaggedObjectVector(int propertyIndex);
            void SetTaggedObjectVector(const NXString &propertyName, const std::vector<NXOpen::TaggedObject *> &tagVector);
            void SetTaggedObjectVector(const char *propertyName, const std::vector<NXOpen::TaggedObject *> &tagVector);
            NXString GetString(const NXString &propertyName);
            NXString GetString(const char *propertyName);
            NXString GetString(int propertyIndex);
            void SetString(const NXString &propertyName, const NXString &value);
            void SetString(const char *propertyName, const char *value);
            bool GetLogical(const NXString &propertyName);
            bool GetLogical(const char *propertyName);
            bool GetLogical(int propertyIndex);
            void SetLogical(const NXString &propertyName, bool value);
            void SetLogical(const char *propertyName, bool value);
            int GetInteger(const NXString &propertyName);
            int GetInteger(const char *propertyName);
            int GetInteger(int propertyIndex);
            void SetInteger(const NXString &propertyName, int value);
            void SetInteger(const char *propertyName, int value);
            std::vector<NXString> GetStrings(const NXString &propertyName);
            std::vector<NXString> GetStrings(const char *propertyName);
            std::vector<NXString> GetStrings(int propertyIndex);
            void SetStrings(const NXString &propertyName, std::vector<NXString> &stringArray);
            void SetStrings(const char *propertyName, std::vector<NXString> &stringArray);
        };
    }
}

#endif
