#ifndef NXOpen_BLOCKSTYLER_SCROLLEDWINDOW_HXX_INCLUDED
#define NXOpen_BLOCKSTYLER_SCROLLEDWINDOW_HXX_INCLUDED

#include <NXOpen/BlockStyler_UIBlock.hxx>
#include <NXOpen/libnxopenuicpp_exports.hxx>

namespace NXOpen
{
    namespace BlockStyler
    {
        class NXOPENUICPPEXPORT ScrolledWindow : public NXOpen::BlockStyler::UIBlock
        {
        protected:
            ScrolledWindow();
            virtual ~ScrolledWindow();
        };
    }
}

#endif
