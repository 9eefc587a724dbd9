#include "shell/ErrorBox.h"

#include <NXOpen/NXMessageBox.hxx>
#include <NXOpen/UI.hxx>

void ShowExceptionBox(const char* title, const std::exception& e)
{
    // The UI is asked afresh rather than through Vornadel::theUI: ufusr shows this box also when
    // the dialog object failed before it could set its statics.
    NXOpen::UI::GetUI()->NXMessageBox()->Show(title, NXOpen::NXMessageBox::DialogTypeError, e.what());
}
