#ifndef NXOpen_BLOCKSTYLER_GROUP_HXX_INCLUDED
#define NXOpen_BLOCKSTYLER_GROUP_HXX_INCLUDED

#include <NXOpen/BlockStyler_UIBlock.hxx>
#include <NXOpen/libnxopenuicpp_exports.hxx>

namespace NXOpen
{
    namespace BlockStyler
    {
        class NXOPENUICPPEXPORT Group : public NXOpen::BlockStyler::UIBlock
        {
        protected:
            Group();
            virtual ~Group();
        };
    }
}

#endif
