#ifndef NXOpen_BLOCKSTYLER_FOLDERSELECTION_HXX_INCLUDED
#define NXOpen_BLOCKSTYLER_FOLDERSELECTION_HXX_INCLUDED

#include <NXOpen/BlockStyler_UIBlock.hxx>
#include <NXOpen/libnxopenuicpp_exports.hxx>

namespace NXOpen
{
    namespace BlockStyler
    {
        // A folder path with a browse button.
        class NXOPENUICPPEXPORT FolderSelection : public NXOpen::BlockStyler::UIBlock
        {
        public:
            NXString Path();
            void SetPath(const NXString &path);
            void SetPath(const char *path);

        protected:
            FolderSelection();
            virtual ~FolderSelection();
        };
    }
}

#endif
