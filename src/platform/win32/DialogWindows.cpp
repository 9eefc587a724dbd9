// The dialog windows on screen, on Windows: NX's dialog windows, or the host's real windows when
// the plug-in runs inside the host built for Windows.

#include "platform/Desktop.h"

#include <windows.h>

namespace platform {

WindowHandle FindTopLevelWindow(const char* className, const char* title) {
    return FindWindowA(className, title);
}

WindowHandle FindChildWindow(WindowHandle parent, WindowHandle after) {
    return FindWindowExA(static_cast<HWND>(parent), static_cast<HWND>(after), NULL, NULL);
}

int ReadWindowText(WindowHandle window, char* buffer, int size) {
    if (window == NULL) {
        if (buffer != NULL && size > 0) buffer[0] = '\0';
        return 0;
    }
    return GetWindowTextA(static_cast<HWND>(window), buffer, size);
}

long SendWindowMessage(WindowHandle window, unsigned int message, unsigned long wParam, long lParam) {
    return static_cast<long>(SendMessageA(static_cast<HWND>(window), message,
                                          static_cast<WPARAM>(wParam), static_cast<LPARAM>(lParam)));
}

}  // namespace platform
