#ifndef NXOpen_BLOCKSTYLER_STRINGBLOCK_HXX_INCLUDED
#define NXOpen_BLOCKSTYLER_STRINGBLOCK_HXX_INCLUDED

#include <vector>
#include <NXOpen/BlockStyler_UIBlock.hxx>
#include <NXOpen/libnxopenuicpp_exports.hxx>

namespace NXOpen
{
    namespace BlockStyler
    {
        // A one-line text field, optionally with a drop-down of choices.
        class NXOPENUICPPEXPORT StringBlock : public NXOpen::BlockStyler::UIBlock
        {
        public:
            NXString Value();
            void SetValue(const NXString &valueString);
            void SetValue(const char *valueString);
            // The text in the full character set (Chinese text).
            NXString WideValue();
            void SetWideValue(const NXString &wideValueString);
            void SetWideValue(const char *wideValueString);
            std::vector<NXString> GetListItems();
            void SetListItems(std::vector<NXString> &itemStrings);
            NXString PresentationStyleAsString();
            void SetPresentationStyleAsString(const NXString &enumString);
            void SetPresentationStyleAsString(const char *enumString);
            bool ReadOnlyString();
            void SetReadOnlyString(bool readonly);
            int MaxTextLength();
            void SetMaxTextLength(int textLength);

        protected:
            StringBlock();
            virtual ~StringBlock();
        };
    }
}

#endif
