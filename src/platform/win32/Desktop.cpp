// The desktop session on Windows: the local clock and opening a file with its program. (The
// dialog windows on screen are in DialogWindows.cpp.)

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

}  // namespace platform
