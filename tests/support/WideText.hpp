// UTF-8 text as the wide text of the Win32 calls the tests make on Windows (file names, command
// lines, environment blocks).
#pragma once

#ifdef _WIN32
#include <windows.h>

#include <string>

inline std::wstring WideFromUtf8(const std::string& utf8)
{
    if (utf8.empty()) return std::wstring();
    const int size = MultiByteToWideChar(CP_UTF8, 0, utf8.data(), static_cast<int>(utf8.size()), nullptr, 0);
    std::wstring wide(static_cast<size_t>(size), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, utf8.data(), static_cast<int>(utf8.size()), &wide[0], size);
    return wide;
}
#endif
