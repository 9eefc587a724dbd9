#ifndef VORNADEL_SHELL_ERRORBOX_H
#define VORNADEL_SHELL_ERRORBOX_H

#include <exception>

// The exception message box: an NX error box with the caller's title and the exception's text.
// Every NX entry point and callback that catches std::exception shows it with its own title.
void ShowExceptionBox(const char* title, const std::exception& e);

#endif
