// The process environment on POSIX: UTF-8 outside, GBK inside.

#include "platform/Environment.h"

#include "platform/CodePage.h"

#include <stdlib.h>

namespace platform {

std::string GetEnv(const char* name, bool* found) {
    const char* value = name == NULL ? NULL : getenv(AnsiToUtf8(name).c_str());
    if (found != NULL) *found = value != NULL;
    return value == NULL ? std::string() : Utf8ToAnsi(value);
}

std::string DesktopFolder() {
    const std::string desktop = GetEnv("VORNADEL_DESKTOP", NULL);
    if (!desktop.empty()) return desktop;
    const std::string home = GetEnv("HOME", NULL);
    return home.empty() ? std::string() : home + "/Desktop";
}

}  // namespace platform
