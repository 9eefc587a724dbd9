// The process environment and the desktop folder on Windows.

#include "platform/Environment.h"

#include <windows.h>
#include <shlobj.h>

#include <stdlib.h>

#include <vector>

namespace platform {

std::string GetEnv(const char* name, bool* found) {
    const char* value = name == NULL ? NULL : getenv(name);
    if (found != NULL) *found = value != NULL;
    return value == NULL ? std::string() : std::string(value);
}

std::string DesktopFolder() {
    std::vector<char> buffer(MAX_PATH + 1, '\0');
    if (!SHGetSpecialFolderPathA(NULL, &buffer[0], CSIDL_DESKTOPDIRECTORY, FALSE)) {
        return std::string();
    }
    return std::string(&buffer[0]);
}

}  // namespace platform
