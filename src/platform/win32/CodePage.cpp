// Code-page conversions on Windows: the system ANSI code page (GBK on a Chinese Windows) and
// UTF-8 through UTF-16, and the C library's multibyte conversion for the workbook.

#include "platform/CodePage.h"

#include <windows.h>

#include <locale.h>
#include <stdlib.h>

#include <vector>

namespace platform {

namespace {

// MultiByteToWideChar without flags: invalid input becomes U+FFFD (UTF-8) or the code page's
// default character instead of failing.
std::wstring ToWide(UINT codePage, const std::string& text) {
    if (text.empty()) return std::wstring();
    const int size = static_cast<int>(text.size());
    const int length = MultiByteToWideChar(codePage, 0, text.data(), size, NULL, 0);
    if (length <= 0) return std::wstring();
    std::vector<wchar_t> buffer(static_cast<size_t>(length) + 1, L'\0');
    MultiByteToWideChar(codePage, 0, text.data(), size, &buffer[0], length);
    return std::wstring(&buffer[0], static_cast<size_t>(length));
}

// WideCharToMultiByte without flags: a character the code page cannot hold becomes its default
// character ("?").
std::string FromWide(UINT codePage, const std::wstring& wide) {
    if (wide.empty()) return std::string();
    const int size = static_cast<int>(wide.size());
    const int length = WideCharToMultiByte(codePage, 0, wide.data(), size, NULL, 0, NULL, NULL);
    if (length <= 0) return std::string();
    std::vector<char> buffer(static_cast<size_t>(length) + 1, '\0');
    WideCharToMultiByte(codePage, 0, wide.data(), size, &buffer[0], length, NULL, NULL);
    return std::string(&buffer[0], static_cast<size_t>(length));
}

// Switches every locale category to the user's default and back again on every exit.
class UserLocale {
public:
    UserLocale() {
        const char* previous = setlocale(LC_ALL, NULL);
        previous_ = previous == NULL ? "C" : previous;
        setlocale(LC_ALL, "");
    }
    ~UserLocale() { setlocale(LC_ALL, previous_.c_str()); }

private:
    UserLocale(const UserLocale&);
    UserLocale& operator=(const UserLocale&);

    std::string previous_;
};

}  // namespace

std::string Utf8ToAnsi(const std::string& utf8) {
    const std::string ansi = FromWide(CP_ACP, ToWide(CP_UTF8, utf8));
    return std::string(ansi.c_str());
}

std::string AnsiToUtf8(const std::string& ansi) {
    return FromWide(CP_UTF8, ToWide(CP_ACP, ansi));
}

std::wstring AnsiToWide(const std::string& ansi) {
    // mbstowcs would give up on the first undecodable byte; mbtowc, character by character,
    // lets that byte become U+FFFD and the rest of the text survive.
    UserLocale locale;
    std::wstring wide;
    const char* p = ansi.c_str();
    size_t left = ansi.size();
    mbtowc(NULL, NULL, 0);
    while (left > 0) {
        wchar_t c;
        const int used = mbtowc(&c, p, left);
        if (used == 0) break;  // the terminating NUL, as for mbstowcs
        if (used < 0) {
            wide += static_cast<wchar_t>(0xFFFD);
            mbtowc(NULL, NULL, 0);
            ++p;
            --left;
            continue;
        }
        wide += c;
        p += used;
        left -= static_cast<size_t>(used);
    }
    return wide;
}

}  // namespace platform
