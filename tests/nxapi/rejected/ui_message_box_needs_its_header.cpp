// NXOpen/UI.hxx only forward-declares NXMessageBox: NXMessageBox()->Show needs
// NXOpen/NXMessageBox.hxx.
#include <NXOpen/UI.hxx>
#ifndef NXAPI_REJECTED
#include <NXOpen/NXMessageBox.hxx>
#endif

void Report(const char *text) {
    NXOpen::UI::GetUI()->NXMessageBox()->Show("Block Styler", NXOpen::NXMessageBox::DialogTypeError, text);
}
