#ifndef NXOpen_BLOCKSTYLER_BUTTON_HXX_INCLUDED
#define NXOpen_BLOCKSTYLER_BUTTON_HXX_INCLUDED

#include <NXOpen/BlockStyler_UIBlock.hxx>
#include <NXOpen/libnxopenuicpp_exports.hxx>

namespace NXOpen
{
    namespace BlockStyler
    {
        class NXOPENUICPPEXPORT Button : public NXOpen::BlockStyler::UIBlock
        {
        protected:
            Button();
            virtual ~Button();
        };
    }
}

#endif
