// GBK <-> UTF-8 at the host's edges (part files, NXString's UTF-8 side, the runner's output),
// and the host's one reader and writer of UTF-8 sequences. On POSIX glibc's iconv converter "GBK"
// is the code page of a Chinese Windows (CP936); on Windows it is that code page itself.
#include <cerrno>
#include <cstdio>
#include <stdexcept>
#include <string>

#ifdef _WIN32
#include <windows.h>
#else
#include <iconv.h>
#endif

#include "HostSession.hpp"

namespace host {
namespace {

const char kReplacementUtf8[] = "\xEF\xBF\xBD";  // U+FFFD

// Length of the UTF-8 sequence that starts with lead (1 for a stray byte), so that an
// unconvertible character is skipped whole.
size_t Utf8SequenceLength(unsigned char lead) {
    if (lead >= 0xF0 && lead <= 0xF4) return 4;
    if (lead >= 0xE0) return lead <= 0xEF ? 3 : 1;
    if (lead >= 0xC2 && lead <= 0xDF) return 2;
    return 1;
}

// The length (1 to 4) of the well-formed UTF-8 sequence at byte at, and its code point; 0 (and
// codePoint untouched) when the bytes there are not one: a stray or cut-off byte, an overlong
// form, a surrogate, a code point beyond U+10FFFF.
size_t DecodeUtf8(const std::string& utf8, size_t at, unsigned long& codePoint) {
    unsigned char lead = static_cast<unsigned char>(utf8[at]);
    size_t length = Utf8SequenceLength(lead);
    if (length == 1) {
        if (lead >= 0x80) return 0;
        codePoint = lead;
        return 1;
    }
    if (at + length > utf8.size()) return 0;
    unsigned long code = lead & (0x7F >> length);
    for (size_t i = 1; i < length; ++i) {
        unsigned char next = static_cast<unsigned char>(utf8[at + i]);
        if ((next & 0xC0) != 0x80) return 0;
        code = (code << 6) | (next & 0x3F);
    }
    if ((length == 3 && code < 0x800) || (length == 4 && (code < 0x10000 || code > 0x10FFFF)) ||
        (code >= 0xD800 && code <= 0xDFFF))
        return 0;
    codePoint = code;
    return length;
}

// "U+1F600" for the character at byte at, "byte 0xFF" when it is not valid UTF-8.
std::string DescribeCharacter(const std::string& utf8, size_t at) {
    unsigned long code = 0;
    char text[16];
    if (DecodeUtf8(utf8, at, code) == 0)
        std::snprintf(text, sizeof text, "byte 0x%02X", static_cast<unsigned char>(utf8[at]));
    else
        std::snprintf(text, sizeof text, "U+%04lX", code);
    return text;
}

#ifndef _WIN32

// One iconv descriptor per direction and thread, reset before each use.
class Converter {
public:
    Converter(const char* to, const char* from) : cd_(iconv_open(to, from)) {
        if (cd_ == reinterpret_cast<iconv_t>(-1))
            throw std::runtime_error(std::string("iconv cannot convert ") + from + " to " + to);
    }
    ~Converter() { iconv_close(cd_); }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    // Converts input; each character that cannot be converted is handed to onBad, which returns
    // how many input bytes to skip and appends its replacement to the output (or throws).
    template <typename OnBad>
    std::string Run(const std::string& input, OnBad onBad) {
        iconv(cd_, nullptr, nullptr, nullptr, nullptr);
        std::string out;
        char buffer[1024];
        char* in = const_cast<char*>(input.data());
        size_t inLeft = input.size();
        while (inLeft > 0) {
            char* o = buffer;
            size_t oLeft = sizeof buffer;
            size_t r = iconv(cd_, &in, &inLeft, &o, &oLeft);
            out.append(buffer, o - buffer);
            if (r != static_cast<size_t>(-1)) continue;
            if (errno == E2BIG) continue;
            // EILSEQ or EINVAL (a sequence cut off at the end): replace and go on.
            size_t skip = onBad(static_cast<size_t>(in - input.data()), out);
            if (skip > inLeft) skip = inLeft;
            in += skip;
            inLeft -= skip;
            iconv(cd_, nullptr, nullptr, nullptr, nullptr);
        }
        return out;
    }

private:
    iconv_t cd_;
};

Converter& GbkToUtf8Converter() {
    thread_local Converter converter("UTF-8", "GBK");
    return converter;
}

Converter& Utf8ToGbkConverter() {
    thread_local Converter converter("GBK", "UTF-8");
    return converter;
}

// Each character that cannot be converted is handed to onBad with its byte offset; onBad returns
// how many input bytes to skip and appends its replacement to the output (or throws).
template <typename OnBad>
std::string FromGbk(const std::string& gbk, OnBad onBad) {
    return GbkToUtf8Converter().Run(gbk, onBad);
}

template <typename OnBad>
std::string ToGbk(const std::string& utf8, OnBad onBad) {
    return Utf8ToGbkConverter().Run(utf8, onBad);
}

#else

const UINT kGbk = 936;

// Character by character through UTF-16, so that a character without a form in the other
// encoding is found exactly as iconv finds it.
template <typename OnBad>
std::string FromGbk(const std::string& gbk, OnBad onBad) {
    std::string out;
    for (size_t at = 0; at < gbk.size();) {
        const size_t length = IsDBCSLeadByteEx(kGbk, static_cast<BYTE>(gbk[at])) ? 2 : 1;
        wchar_t wide[2];
        const int n = at + length <= gbk.size()
                          ? MultiByteToWideChar(kGbk, MB_ERR_INVALID_CHARS, gbk.data() + at, static_cast<int>(length), wide, 2)
                          : 0;
        if (n == 1) {
            AppendUtf8(out, wide[0]);
            at += length;
        } else {
            size_t skip = onBad(at, out);
            at += skip < gbk.size() - at ? skip : gbk.size() - at;
        }
    }
    return out;
}

template <typename OnBad>
std::string ToGbk(const std::string& utf8, OnBad onBad) {
    std::string out;
    for (size_t at = 0; at < utf8.size();) {
        unsigned long code = 0;
        const size_t length = DecodeUtf8(utf8, at, code);
        char bytes[8];
        int n = 0;
        if (length > 0) {
            wchar_t wide[2];
            int units = 1;
            if (code >= 0x10000) {
                wide[0] = static_cast<wchar_t>(0xD800 + ((code - 0x10000) >> 10));
                wide[1] = static_cast<wchar_t>(0xDC00 + ((code - 0x10000) & 0x3FF));
                units = 2;
            } else {
                wide[0] = static_cast<wchar_t>(code);
            }
            BOOL usedDefault = FALSE;
            n = WideCharToMultiByte(kGbk, WC_NO_BEST_FIT_CHARS, wide, units, bytes, sizeof bytes, nullptr, &usedDefault);
            if (usedDefault) n = 0;
        }
        if (n > 0) {
            out.append(bytes, static_cast<size_t>(n));
            at += length;
        } else {
            size_t skip = onBad(at, out);
            at += skip < utf8.size() - at ? skip : utf8.size() - at;
        }
    }
    return out;
}

#endif

}  // namespace

std::string GbkToUtf8(const std::string& gbk) {
    return FromGbk(gbk, [](size_t, std::string& out) {
        out += kReplacementUtf8;
        return size_t{1};
    });
}

std::string Utf8ToGbk(const std::string& utf8) {
    return ToGbk(utf8, [&utf8](size_t at, std::string& out) {
        out += '?';
        return Utf8SequenceLength(static_cast<unsigned char>(utf8[at]));
    });
}

size_t FirstInvalidUtf8(const std::string& utf8) {
    unsigned long code = 0;
    for (size_t at = 0; at < utf8.size();) {
        size_t length = DecodeUtf8(utf8, at, code);
        if (length == 0) return at;
        at += length;
    }
    return std::string::npos;
}

void AppendUtf8(std::string& out, unsigned long codePoint) {
    if (codePoint < 0x80) {
        out += static_cast<char>(codePoint);
    } else if (codePoint < 0x800) {
        out += static_cast<char>(0xC0 | (codePoint >> 6));
        out += static_cast<char>(0x80 | (codePoint & 0x3F));
    } else if (codePoint < 0x10000) {
        out += static_cast<char>(0xE0 | (codePoint >> 12));
        out += static_cast<char>(0x80 | ((codePoint >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (codePoint & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (codePoint >> 18));
        out += static_cast<char>(0x80 | ((codePoint >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((codePoint >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (codePoint & 0x3F));
    }
}

std::string Utf8ToGbkStrict(const std::string& utf8) {
    return ToGbk(utf8, [&utf8](size_t at, std::string&) -> size_t {
        throw std::runtime_error(DescribeCharacter(utf8, at) + " has no GBK form");
    });
}

}  // namespace host
