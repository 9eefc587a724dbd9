// Code-page conversions on POSIX. The system code page is GBK, which glibc's iconv knows under
// that name with the mappings of Windows code page 936 (0x80 is the euro sign there as well).
// UTF-8 is decoded here by hand so that invalid input is replaced exactly as Windows'
// MultiByteToWideChar(CP_UTF8) does; iconv only ever sees well-formed code points.

#include "platform/CodePage.h"

#include <errno.h>
#include <iconv.h>

#include <vector>

namespace platform {

namespace {

typedef std::vector<unsigned long> CodePoints;

const unsigned long kReplacementCharacter = 0xFFFD;

// An iconv descriptor that is closed on every exit.
class IconvHandle {
public:
    IconvHandle(const char* to, const char* from) : cd_(iconv_open(to, from)) {}
    ~IconvHandle() { if (ok()) iconv_close(cd_); }
    bool ok() const { return cd_ != reinterpret_cast<iconv_t>(-1); }
    iconv_t get() const { return cd_; }

private:
    IconvHandle(const IconvHandle&);
    IconvHandle& operator=(const IconvHandle&);

    iconv_t cd_;
};

enum Direction { FromGbk, ToGbk };

// The descriptor of a direction (GBK <-> UTF-32BE), opened on first use and kept: opening one
// costs far more than converting a cell's text, and the export converts every cell it writes.
IconvHandle& Descriptor(Direction direction) {
    static IconvHandle fromGbk("UTF-32BE", "GBK");
    static IconvHandle toGbk("GBK", "UTF-32BE");
    IconvHandle& cd = direction == FromGbk ? fromGbk : toGbk;
    if (cd.ok()) iconv(cd.get(), NULL, NULL, NULL, NULL);  // back to the initial state
    return cd;
}

// Converts in with iconv, unit bytes at a time where it must skip: every unit that cannot be
// converted (invalid, incomplete or not representable) becomes replacement. Without a descriptor
// (iconv lacks GBK) only single-byte ASCII units pass.
std::string Convert(Direction direction, const std::string& in, size_t unit, const std::string& replacement) {
    IconvHandle& cd = Descriptor(direction);
    std::string out;
    std::vector<char> buffer(4096);
    size_t pos = 0;
    while (pos < in.size()) {
        if (!cd.ok()) {
            const unsigned char c = static_cast<unsigned char>(in[pos]);
            if (unit == 1 && c < 0x80) {
                out += static_cast<char>(c);
            } else {
                out += replacement;
            }
            pos += unit;
            continue;
        }
        char* inPtr = const_cast<char*>(in.data()) + pos;
        size_t inLeft = in.size() - pos;
        char* outPtr = &buffer[0];
        size_t outLeft = buffer.size();
        const size_t result = iconv(cd.get(), &inPtr, &inLeft, &outPtr, &outLeft);
        const int error = errno;
        out.append(&buffer[0], buffer.size() - outLeft);
        pos = in.size() - inLeft;
        if (result == static_cast<size_t>(-1) && error != E2BIG) {
            out += replacement;
            pos += unit;
            iconv(cd.get(), NULL, NULL, NULL, NULL);
        }
    }
    return out;
}

// UTF-8 to code points. Each maximal ill-formed subsequence (a stray continuation byte, a lead
// byte without enough continuation bytes, an overlong form, a surrogate, a value above U+10FFFF)
// becomes one U+FFFD, and the byte that broke the sequence starts the next one.
CodePoints DecodeUtf8(const std::string& text) {
    CodePoints points;
    points.reserve(text.size());
    size_t i = 0;
    while (i < text.size()) {
        const unsigned char lead = static_cast<unsigned char>(text[i++]);
        if (lead < 0x80) {
            points.push_back(lead);
            continue;
        }
        int following;
        unsigned char low = 0x80;
        unsigned char high = 0xBF;
        unsigned long point;
        if (lead >= 0xC2 && lead <= 0xDF) {
            following = 1;
            point = lead & 0x1F;
        } else if (lead >= 0xE0 && lead <= 0xEF) {
            following = 2;
            point = lead & 0x0F;
            if (lead == 0xE0) low = 0xA0;   // no overlong forms
            if (lead == 0xED) high = 0x9F;  // no surrogates
        } else if (lead >= 0xF0 && lead <= 0xF4) {
            following = 3;
            point = lead & 0x07;
            if (lead == 0xF0) low = 0x90;
            if (lead == 0xF4) high = 0x8F;  // nothing above U+10FFFF
        } else {
            points.push_back(kReplacementCharacter);
            continue;
        }
        for (; following > 0; --following) {
            const unsigned char c = i < text.size() ? static_cast<unsigned char>(text[i]) : 0;
            if (c < low || c > high) {
                point = kReplacementCharacter;
                break;
            }
            point = (point << 6) | (c & 0x3F);
            low = 0x80;
            high = 0xBF;
            ++i;
        }
        points.push_back(point);
    }
    return points;
}

std::string EncodeUtf8(const CodePoints& points) {
    std::string out;
    out.reserve(points.size());
    for (size_t i = 0; i < points.size(); ++i) {
        const unsigned long p = points[i];
        if (p < 0x80) {
            out += static_cast<char>(p);
        } else if (p < 0x800) {
            out += static_cast<char>(0xC0 | (p >> 6));
            out += static_cast<char>(0x80 | (p & 0x3F));
        } else if (p < 0x10000) {
            out += static_cast<char>(0xE0 | (p >> 12));
            out += static_cast<char>(0x80 | ((p >> 6) & 0x3F));
            out += static_cast<char>(0x80 | (p & 0x3F));
        } else {
            out += static_cast<char>(0xF0 | (p >> 18));
            out += static_cast<char>(0x80 | ((p >> 12) & 0x3F));
            out += static_cast<char>(0x80 | ((p >> 6) & 0x3F));
            out += static_cast<char>(0x80 | (p & 0x3F));
        }
    }
    return out;
}

// GBK bytes to code points; a byte that starts no valid character becomes U+FFFD and the next
// byte is tried afresh (so the ASCII byte after a stray lead byte survives).
CodePoints DecodeAnsi(const std::string& ansi) {
    const std::string replacement("\0\0\xFF\xFD", 4);
    const std::string wide = Convert(FromGbk, ansi, 1, replacement);
    CodePoints points(wide.size() / 4);
    for (size_t i = 0; i < points.size(); ++i) {
        unsigned long p = 0;
        for (size_t k = 0; k < 4; ++k) {
            p = (p << 8) | static_cast<unsigned char>(wide[4 * i + k]);
        }
        points[i] = p;
    }
    return points;
}

// Code points to GBK; every character GBK cannot hold becomes "?", as WideCharToMultiByte's
// default character does.
std::string EncodeAnsi(const CodePoints& points) {
    std::string wide;
    wide.reserve(4 * points.size());
    for (size_t i = 0; i < points.size(); ++i) {
        for (int shift = 24; shift >= 0; shift -= 8) {
            wide += static_cast<char>((points[i] >> shift) & 0xFF);
        }
    }
    return Convert(ToGbk, wide, 4, "?");
}

}  // namespace

std::string Utf8ToAnsi(const std::string& utf8) {
    const std::string ansi = EncodeAnsi(DecodeUtf8(utf8));
    return std::string(ansi.c_str());
}

std::string AnsiToUtf8(const std::string& ansi) {
    return EncodeUtf8(DecodeAnsi(ansi));
}

std::wstring AnsiToWide(const std::string& ansi) {
    // mbstowcs stops at the terminating NUL of its input; so does this.
    const CodePoints points = DecodeAnsi(std::string(ansi.c_str()));
    std::wstring wide;
    wide.reserve(points.size());
    for (size_t i = 0; i < points.size(); ++i) {
        wide += static_cast<wchar_t>(points[i]);
    }
    return wide;
}

}  // namespace platform
