#ifndef NXOpen_BLOCKSTYLER_UIBLOCK_HXX_INCLUDED
#define NXOpen_BLOCKSTYLER_UIBLOCK_HXX_INCLUDED

#include <NXOpen/NXString.hxx>
#include <NXOpen/TaggedObject.hxx>
#include <NXOpen/libnxopenuicpp_exports.hxx>

namespace NXOpen
{
    namespace BlockStyler
    {
        class PropertyList;

        // A block of a dialog. The dialog owns its blocks.
        class NXOPENUICPPEXPORT UIBlock : public NXOpen::TaggedObject
        {
        public:
            NXString Type();
            // The block id.
            NXString Name();
            // All properties of the block; the caller deletes the list.
            NXOpen::BlockStyler::PropertyList *GetProperties();
            void Focus();
            bool Enable();
            void SetEnable(bool enable);
            bool Expanded();
            void SetExpanded(bool expanded);
            bool Group();
            void SetGroup(bool group);
            NXString Label();
            void SetLabel(const NXString &label);
            void SetLabel(const char *label);
            bool Show();
            void SetShow(bool show);

        protected:
            UIBlock();
            virtual ~UIBlock();
        };
    }
}

#endif
