// Tree::OnEndLabelEditCallback passes the edited text as NXString by value: a handler taking
// const NXString & has another type and cannot be registered.
#include <NXOpen/BlockStyler_Tree.hxx>
#include <NXOpen/Callback.hxx>

class Dialog {
public:
#ifdef NXAPI_REJECTED
    NXOpen::BlockStyler::Tree::EndLabelEditState OnEndLabelEditCallback(NXOpen::BlockStyler::Tree *, NXOpen::BlockStyler::Node *, int, const NXOpen::NXString &)
#else
    NXOpen::BlockStyler::Tree::EndLabelEditState OnEndLabelEditCallback(NXOpen::BlockStyler::Tree *, NXOpen::BlockStyler::Node *, int, NXOpen::NXString)
#endif
    {
        return NXOpen::BlockStyler::Tree::EndLabelEditStateAcceptText;
    }
    void Register(NXOpen::BlockStyler::Tree *tree) {
        tree->SetOnEndLabelEditHandler(NXOpen::make_callback(this, &Dialog::OnEndLabelEditCallback));
    }
};
