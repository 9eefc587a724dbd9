#ifndef VORNADEL_PLATFORM_DESKTOP_H
#define VORNADEL_PLATFORM_DESKTOP_H

#include <string>

// What the user's desktop session offers the plug-in: the local clock, opening a file with its
// program, and the dialog windows on screen. In NX these are Win32 calls; inside the host they
// are the host's simulated clock, file opener and dialog windows.
namespace platform {

// GetLocalTime(): the local time, with milliseconds.
struct LocalTime {
    int year;
    int month;         // 1..12
    int day;           // 1..31
    int hour;          // 0..23
    int minute;
    int second;
    int milliseconds;  // 0..999
};
LocalTime GetLocalTime();

// ShellExecuteA(NULL, "open", path, NULL, NULL, SW_SHOWNORMAL). The result is not reported.
void OpenWithAssociatedProgram(const std::string& path);

// A window handle (HWND); NULL is no window.
typedef void* WindowHandle;

// FindWindowA(className, title): a top-level window of that class whose text equals title.
WindowHandle FindTopLevelWindow(const char* className, const char* title);

// FindWindowExA(parent, after, NULL, NULL): the direct child of parent that follows after
// (the first child when after is NULL); NULL when there is none.
WindowHandle FindChildWindow(WindowHandle parent, WindowHandle after);

// GetWindowTextA(window, buffer, size): copies at most size - 1 bytes of the window's text and
// a NUL; returns the number of bytes copied (0 for a NULL window or an empty text).
int ReadWindowText(WindowHandle window, char* buffer, int size);

// SendMessageA(window, message, wParam, lParam).
long SendWindowMessage(WindowHandle window, unsigned int message, unsigned long wParam, long lParam);

enum { WM_LBUTTONDOWN_MESSAGE = 0x0201, WM_LBUTTONUP_MESSAGE = 0x0202 };

}  // namespace platform

#endif
