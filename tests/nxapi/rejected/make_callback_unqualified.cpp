// For a handler void (), nothing in the call's types comes from namespace NXOpen, so an
// unqualified make_callback is not found by argument-dependent lookup: write NXOpen::make_callback.
#include <NXOpen/BlockStyler_BlockDialog.hxx>
#include <NXOpen/Callback.hxx>

class Dialog {
public:
    void initialize_cb() {}
    void Register(NXOpen::BlockStyler::BlockDialog *dialog) {
#ifdef NXAPI_REJECTED
        dialog->AddInitializeHandler(make_callback(this, &Dialog::initialize_cb));
#else
        dialog->AddInitializeHandler(NXOpen::make_callback(this, &Dialog::initialize_cb));
#endif
    }
};
