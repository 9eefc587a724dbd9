#ifndef NXOpen_NXMESSAGEBOX_HXX_INCLUDED
#define NXOpen_NXMESSAGEBOX_HXX_INCLUDED

#include <vector>
#include <NXOpen/NXString.hxx>
#include <NXOpen/Callback.hxx>
#include <NXOpen/TaggedObject.hxx>
#include <NXOpen/libnxopenuicpp_exports.hxx>

namespace NXOpen
{
    // NX's modal message boxes.
    class NXOPENUICPPEXPORT NXMessageBox
    {
    public:
        enum DialogType
        {
            DialogTypeError,
            DialogTypeWarning,
            DialogTypeInformation,
            DialogTypeQuestion
        };

        // Shows a modal box; returns the button pressed (1 yes / 2 no for a question, else -2).
        int Show(const NXString &title, NXOpen::NXMessageBox::DialogType msgboxType, const NXString &message);
        int Show(const char *title, NXOpen::NXMessageBox::DialogType msgboxType, const char *message);
        int Show(const NXString &title, NXOpen::NXMessageBox::DialogType msgboxType, std::vector<NXString> &messages);
        int Show(const char *title, NXOpen::NXMessageBox::DialogType msgboxType, std::vector<NXString> &messages);
        tag_t Tag() const;

    protected:
        NXMessageBox();
        virtual ~NXMessageBox();

    private:
        NXMessageBox(const NXMessageBox &);
        NXMessageBox &operator=(const NXMessageBox &);
    };
}

#endif
