#ifndef NXOpen_BLOCKSTYLER_COMPOSITEBLOCK_HXX_INCLUDED
#define NXOpen_BLOCKSTYLER_COMPOSITEBLOCK_HXX_INCLUDED

#include <vector>
#include <NXOpen/BlockStyler_UIBlock.hxx>
#include <NXOpen/libnxopenuicpp_exports.hxx>

namespace NXOpen
{
    namespace BlockStyler
    {
        // A block that contains blocks (the dialog's top block).
        class NXOPENUICPPEXPORT CompositeBlock : public NXOpen::BlockStyler::UIBlock
        {
        public:
            // The block with this id anywhere below; throws NXException when there is none.
            NXOpen::BlockStyler::UIBlock *FindBlock(const NXString &blockName);
            NXOpen::BlockStyler::UIBlock *FindBlock(const char *blockName);
            std::vector<NXOpen::BlockStyler::UIBlock *> GetBlocks();

        protected:
            CompositeBlock();
            virtual ~CompositeBlock();
        };
    }
}

#endif
