#ifndef VORNADEL_XLS_UTF16_H
#define VORNADEL_XLS_UTF16_H

// Wide text to the UTF-16 code units that BIFF8 stores. wchar_t is UTF-16 on Windows and UTF-32
// on Linux; both give the same units, so a workbook written on either is the same file.

#include "Bytes.h"

namespace xls {

// Replaces units with the UTF-16 form of text, up to its terminating NUL. A character above
// U+FFFF becomes a surrogate pair; a lone surrogate or a value beyond U+10FFFF becomes U+FFFD.
void wideToUtf16(const wchar_t* text, std::vector<u16>& units);

}  // namespace xls

#endif
