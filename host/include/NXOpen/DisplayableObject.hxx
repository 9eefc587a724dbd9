#ifndef NXOpen_DISPLAYABLEOBJECT_HXX_INCLUDED
#define NXOpen_DISPLAYABLEOBJECT_HXX_INCLUDED

#include <NXOpen/NXObject.hxx>
#include <NXOpen/IFitTo.hxx>
#include <NXOpen/libnxopencpp_exports.hxx>

namespace NXOpen
{
    // An object drawn in the graphics window: colour, layer, blank state, highlight.
    class NXOPENCPPEXPORT DisplayableObject : public NXOpen::NXObject, public virtual NXOpen::IFitTo
    {
    public:
        void Blank();
        void Unblank();
        bool IsBlanked();
        void Highlight();
        void Unhighlight();
        int Color();
        void SetColor(int color);
        // Layer number, 1..256.
        int Layer();
        void SetLayer(int layer);
        void RedisplayObject();

    protected:
        DisplayableObject();
        virtual ~DisplayableObject();
    };
}

#endif
