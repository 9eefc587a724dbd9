#ifndef VORNADEL_PLATFORM_CODEPAGE_H
#define VORNADEL_PLATFORM_CODEPAGE_H

#include <string>

namespace platform {

// MultiByteToWideChar(CP_UTF8) then WideCharToMultiByte(CP_ACP): UTF-8 bytes to the system code
// page (GBK). Invalid UTF-8 becomes U+FFFD and every character GBK cannot hold becomes "?", as
// Windows does. The result ends at the first NUL.
std::string Utf8ToAnsi(const std::string& utf8);

// The reverse: system code page (GBK) to UTF-8; undecodable bytes become U+FFFD.
std::string AnsiToUtf8(const std::string& ansi);

// mbstowcs under the user's default locale: system code page (GBK) to wide text for the workbook.
// Undecodable bytes become U+FFFD.
std::wstring AnsiToWide(const std::string& ansi);

}  // namespace platform

#endif
