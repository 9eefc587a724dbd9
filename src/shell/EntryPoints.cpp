// The entry points NX calls in the user-function DLL.

#include <exception>

#include <uf.h>

#include "shell/ErrorBox.h"
#include "shell/Vornadel.h"

extern "C" DllExport void ufusr(char* param, int* retcod, int param_len)
{
    (void)param;
    (void)retcod;
    (void)param_len;

    UF_initialize();
    Vornadel* dialog = NULL;
    try {
        dialog = new Vornadel();
        dialog->Show();
    } catch (std::exception& e) {
        ShowExceptionBox("Block Styler", e);
    }
    // A constructor that threw has released its memory already; only a made object is deleted.
    if (dialog != NULL) {
        delete dialog;
        dialog = NULL;
    }
    // UF_terminate is not called: NX unloads the DLL right after this returns.
}

extern "C" DllExport int ufusr_ask_unload()
{
    return UF_UNLOAD_IMMEDIATELY;
}

extern "C" DllExport void ufusr_cleanup()
{
}
