// Tree::AskEditControlCallback returns Tree::ControlType: a handler returning int has another
// type and cannot be registered.
#include <NXOpen/BlockStyler_Tree.hxx>
#include <NXOpen/Callback.hxx>

class Dialog {
public:
#ifdef NXAPI_REJECTED
    int AskEditControlCallback(NXOpen::BlockStyler::Tree *, NXOpen::BlockStyler::Node *, int) { return 1; }
#else
    NXOpen::BlockStyler::Tree::ControlType AskEditControlCallback(NXOpen::BlockStyler::Tree *, NXOpen::BlockStyler::Node *, int)
    {
        return NXOpen::BlockStyler::Tree::ControlTypeComboBox;
    }
#endif
    void Register(NXOpen::BlockStyler::Tree *tree) {
        tree->SetAskEditControlHandler(NXOpen::make_callback(this, &Dialog::AskEditControlCallback));
    }
};
