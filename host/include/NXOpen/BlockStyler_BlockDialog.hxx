#ifndef NXOpen_BLOCKSTYLER_BLOCKDIALOG_HXX_INCLUDED
#define NXOpen_BLOCKSTYLER_BLOCKDIALOG_HXX_INCLUDED

#include <NXOpen/BlockStyler_CompositeBlock.hxx>
#include <NXOpen/BlockStyler_UIBlock.hxx>
#include <NXOpen/Selection.hxx>
#include <NXOpen/TransientObject.hxx>
#include <NXOpen/Callback.hxx>
#include <NXOpen/libnxopenuicpp_exports.hxx>

namespace NXOpen
{
    namespace BlockStyler
    {
        class PropertyList;

        // A Block UI Styler dialog made by UI::CreateDialog. Deleting it frees the dialog.
        class NXOPENUICPPEXPORT BlockDialog : public NXOpen::TransientObject
        {
        public:
            enum DialogMode
            {
                DialogModeCreate,
                DialogModeEdit
            };

            typedef NXOpen::Callback1<int, NXOpen::BlockStyler::UIBlock *> Update;
            typedef NXOpen::Callback0<void> Initialize;
            typedef NXOpen::Callback0<void> DialogShown;
            typedef NXOpen::Callback0<int> Ok;
            typedef NXOpen::Callback0<int> Apply;
            typedef NXOpen::Callback0<int> Cancel;
            typedef NXOpen::Callback0<int> Close;
            typedef NXOpen::Callback0<bool> EnableOKButton;
            typedef NXOpen::Callback2<int, NXOpen::BlockStyler::UIBlock *, NXOpen::TaggedObject *> Filter;
            typedef NXOpen::Callback2<void, NXOpen::BlockStyler::UIBlock *, bool> FocusNotify;
            typedef NXOpen::Callback2<void, NXOpen::BlockStyler::UIBlock *, bool> KeyboardFocusNotify;

            explicit BlockDialog(void *ptr);
            virtual ~BlockDialog();

            void AddUpdateHandler(const NXOpen::BlockStyler::BlockDialog::Update &cb);
            void AddInitializeHandler(const NXOpen::BlockStyler::BlockDialog::Initialize &cb);
            void AddDialogShownHandler(const NXOpen::BlockStyler::BlockDialog::DialogShown &cb);
            void AddOkHandler(const NXOpen::BlockStyler::BlockDialog::Ok &okCb);
            void AddApplyHandler(const NXOpen::BlockStyler::BlockDialog::Apply &applyCb);
            void AddCancelHandler(const NXOpen::BlockStyler::BlockDialog::Cancel &cancelCb);
            void AddCloseHandler(const NXOpen::BlockStyler::BlockDialog::Close &closeCb);
            void AddFilterHandler(const NXOpen::BlockStyler::BlockDialog::Filter &cb);
            // Shows the dialog modally (create mode); returns when it is closed.
            NXOpen::Selection::Response Show();
            NXOpen::Selection::Response Show(NXOpen::BlockStyler::BlockDialog::DialogMode dialogMode);
            // The block that contains every block of the dialog; its Label() is the dialog title.
            NXOpen::BlockStyler::CompositeBlock *TopBlock();
            void PerformApply();
            // Properties of a block by id; the caller deletes the list.
            NXOpen::BlockStyler::PropertyList *GetBlockProperties(const NXString &blockName);
            NXOpen::BlockStyler::PropertyList *GetBlockProperties(const char *blockName);
        };
    }
}

#endif
