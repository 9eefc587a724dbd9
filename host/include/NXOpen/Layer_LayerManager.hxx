#ifndef NXOpen_LAYER_LAYERMANAGER_HXX_INCLUDED
#define NXOpen_LAYER_LAYERMANAGER_HXX_INCLUDED

#include <vector>
#include <NXOpen/Layer.hxx>
#include <NXOpen/TaggedObject.hxx>
#include <NXOpen/libnxopencpp_layer_exports.hxx>

namespace NXOpen
{
    class NXObject;

    namespace Layer
    {
        // The layers of a part: exactly one work layer; every other layer selectable, visible
        // only or hidden.
        class NXOPENCPP_LAYEREXPORT LayerManager
        {
        public:
            NXOpen::Layer::State GetState(int layer);
            void SetState(int layer, NXOpen::Layer::State state);
            int WorkLayer();
            void SetWorkLayer(int newWorkLayer);
            std::vector<NXOpen::NXObject *> GetAllObjectsOnLayer(int layer);
            tag_t Tag() const;

        protected:
            LayerManager();
            virtual ~LayerManager();

        private:
            LayerManager(const LayerManager &);
            LayerManager &operator=(const LayerManager &);
        };
    }
}

#endif
