// <windows.h> defines CreateDialog as CreateDialogA, a function-like macro of four arguments,
// so UI::CreateDialog cannot be called where that macro is defined, unless it is undefined.
#include <NXOpen/UI.hxx>

// What <windows.h> defines (ANSI build).
#define CreateDialogA(hInstance, lpName, hWndParent, lpDialogFunc) 0
#define CreateDialog CreateDialogA
#ifndef NXAPI_REJECTED
#undef CreateDialog
#endif

NXOpen::BlockStyler::BlockDialog *Open(NXOpen::UI *ui) {
    return ui->CreateDialog("Vornadel.dlx");
}
