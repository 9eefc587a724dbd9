#include "Utf16.h"

namespace xls {

void appendUtf16(unsigned long c, std::vector<u16>& units)
{
    if ((c >= 0xD800 && c <= 0xDFFF) || c > 0x10FFFF) c = 0xFFFD;
    if (c > 0xFFFF) {
        c -= 0x10000;
        units.push_back(static_cast<u16>(0xD800 + (c >> 10)));
        units.push_back(static_cast<u16>(0xDC00 + (c & 0x3FF)));
    } else {
        units.push_back(static_cast<u16>(c));
    }
}

void wideToUtf16(const wchar_t* text, std::vector<u16>& units)
{
    units.clear();
    // A negative wchar_t (signed on Linux) converts to a value above U+10FFFF and is replaced.
    const unsigned long mask = sizeof(wchar_t) == 2 ? 0xFFFFul : 0xFFFFFFFFul;
    for (size_t i = 0; text[i] != 0; ++i) {
        unsigned long c = static_cast<unsigned long>(text[i]) & mask;
        if (c >= 0xD800 && c <= 0xDBFF) {
            const unsigned long low = static_cast<unsigned long>(text[i + 1]) & mask;
            if (low >= 0xDC00 && low <= 0xDFFF) {
                c = 0x10000 + ((c - 0xD800) << 10) + (low - 0xDC00);
                ++i;
            }
        }
        appendUtf16(c, units);
    }
}

}  // namespace xls
