#ifndef NXOpen_UI_HXX_INCLUDED
#define NXOpen_UI_HXX_INCLUDED

#include <NXOpen/NXString.hxx>
#include <NXOpen/Callback.hxx>
#include <NXOpen/BlockStyler_BlockDialog.hxx>
#include <NXOpen/TaggedObject.hxx>
#include <NXOpen/libnxopenuicpp_exports.hxx>

namespace NXOpen
{
    class NXMessageBox;

    // NX's user interface.
    class NXOPENUICPPEXPORT UI : public NXOpen::TaggedObject
    {
    public:
        static NXOpen::UI *GetUI();
        // Builds a dialog from a .dlx file name, searched for in NX's dialog folders. The caller
        // deletes the dialog. Throws NXException when the file cannot be found or read.
        NXOpen::BlockStyler::BlockDialog *CreateDialog(const NXString &dialogName);
        NXOpen::BlockStyler::BlockDialog *CreateDialog(const char *dialogName);
        // The message-box service (include NXOpen/NXMessageBox.hxx to use it).
        NXOpen::NXMessageBox *NXMessageBox();
        NXOpen::Selection *SelectionManager();
        void LockAccess();
        void UnlockAccess();

    protected:
        UI();
        virtual ~UI();
    };
}

#endif
