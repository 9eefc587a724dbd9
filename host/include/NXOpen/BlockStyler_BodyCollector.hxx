#ifndef NXOpen_BLOCKSTYLER_BODYCOLLECTOR_HXX_INCLUDED
#define NXOpen_BLOCKSTYLER_BODYCOLLECTOR_HXX_INCLUDED

#include <vector>
#include <NXOpen/BlockStyler_UIBlock.hxx>
#include <NXOpen/libnxopenuicpp_exports.hxx>

namespace NXOpen
{
    namespace BlockStyler
    {
        // Lets the user select bodies; the selection is also the property "SelectedObjects".
        class NXOPENUICPPEXPORT BodyCollector : public NXOpen::BlockStyler::UIBlock
        {
        public:
            std::vector<NXOpen::TaggedObject *> GetSelectedObjects();
            void SetSelectedObjects(const std::vector<NXOpen::TaggedObject *> &objectVector);

        protected:
            BodyCollector();
            virtual ~BodyCollector();
        };
    }
}

#endif
