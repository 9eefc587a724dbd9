// NXMessageBox::Show takes NXMessageBox::DialogType: the number 0 does not convert to it.
#include <NXOpen/NXMessageBox.hxx>

void Report(NXOpen::NXMessageBox *box, const char *text) {
#ifdef NXAPI_REJECTED
    box->Show("Block Styler", 0, text);
#else
    box->Show("Block Styler", NXOpen::NXMessageBox::DialogTypeError, text);
#endif
}
