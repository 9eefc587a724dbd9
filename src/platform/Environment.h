#ifndef VORNADEL_PLATFORM_ENVIRONMENT_H
#define VORNADEL_PLATFORM_ENVIRONMENT_H

#include <string>

namespace platform {

// getenv(name) in the system code page. found (may be NULL) tells an empty value from an unset
// variable. POSIX: the process environment is UTF-8 and is converted to GBK.
std::string GetEnv(const char* name, bool* found);

// SHGetSpecialFolderPathA(NULL, buf, CSIDL_DESKTOPDIRECTORY, FALSE): the user's desktop folder in
// the system code page; "" when there is none. POSIX: $VORNADEL_DESKTOP, else $HOME/Desktop.
std::string DesktopFolder();

}  // namespace platform

#endif
