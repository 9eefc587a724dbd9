#ifndef NXOpen_BASEPART_HXX_INCLUDED
#define NXOpen_BASEPART_HXX_INCLUDED

#include <NXOpen/NXObject.hxx>
#include <NXOpen/libnxopencpp_exports.hxx>

namespace NXOpen
{
    namespace Layer
    {
        class LayerManager;
    }

    // A part file loaded in the session.
    class NXOPENCPPEXPORT BasePart : public NXOpen::NXObject
    {
    public:
        // The part's file name without folder and extension.
        NXString Leaf();
        NXString FullPath();
        // The part's layers (include NXOpen/Layer_LayerManager.hxx to use them).
        NXOpen::Layer::LayerManager *Layers();

    protected:
        BasePart();
        virtual ~BasePart();
    };
}

#endif
