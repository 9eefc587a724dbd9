#ifndef NXOpen_LAYER_HXX_INCLUDED
#define NXOpen_LAYER_HXX_INCLUDED

#include <NXOpen/NXString.hxx>
#include <NXOpen/Callback.hxx>
#include <NXOpen/libnxopencpp_layer_exports.hxx>

namespace NXOpen
{
    namespace Layer
    {
        // The state of a layer (NX Open numbering; the user-function statuses count differently).
        enum State
        {
            StateWorkLayer,
            StateSelectable,
            StateVisible,
            StateHidden
        };

        enum Constants
        {
            ConstantsFirstLayer = 1,
            ConstantsLastLayer = 256
        };

        struct StateInfo
        {
        public:
            int Layer;
            NXOpen::Layer::State State;
            StateInfo() : Layer(), State() {}
            StateInfo(int layerInitial, NXOpen::Layer::State stateInitial) : Layer(layerInitial), State(stateInitial) {}
        };
    }
}

#endif
