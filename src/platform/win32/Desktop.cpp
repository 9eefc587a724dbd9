// The desktop session on Windows: the local clock, opening a file with its program, and the
// dialog windows on screen.

#include "platform/Desktop.h"

#include <windows.h>
#include <shellapi.h>

namespace platform {

LocalTime GetLocalTime() {
    SYSTEMTIME now;
    ::GetLocalTime(&now);
    LocalTime time;
    time.year = now.wYear;
    time.month = now.wMonth;
    time.day = now.wDay;
    time.hour = now.wHour;
    time.minute = now.wMinute;
    time.second = now.wSecond;
    time.milliseconds = now.wMilliseconds;
    return time;
}

void OpenWithAssociatedProgram(const std::string& path) {
    ShellExecuteA(NULL, "open", path.c_str(), NULL, NULL, SW_SHOWNORMAL);
}

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
