#ifndef VORNADEL_XLS_UTF16_H
#define VORNADEL_XLS_UTF16_H

// Text to the UTF-16 code units that BIFF8 stores. wchar_t is UTF-16 on Windows and UTF-32 on
// Linux; both give the same units, so a workbook written on either is the same file.

#include "Bytes.h"

namespace xls {

// Appends the UTF-16 form of one code point: a surrogate pair above U+FFFF; U+FFFD for a
// surrogate or a value beyond U+10FFFF.
void appendUtf16(unsigned long codePoint, std::vector<u16>& units);

// Replaces units with the UTF-16 form of text, up to its terminating NUL, as appendUtf16 gives
// each character; a surrogate pair in UTF-16 text is one character.
void wideToUtf16(const wchar_t* text, std::vector<u16>& units);

}  // namespace xls

#endif
