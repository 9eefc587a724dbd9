#ifndef VORNADEL_EDITING_CELLEDITING_H
#define VORNADEL_EDITING_CELLEDITING_H

#include <string>
#include <vector>

#include <NXOpen/NXString.hxx>

// Text typed into a tree cell, which NX 8.5 hands over as UTF-8 bytes, in the system code page
// (GBK): UTF-8 to UTF-16 to code page 0, cut at the first NUL. Characters GBK cannot hold
// become "?", invalid UTF-8 becomes what Windows makes of it; empty text stays empty.
std::string Utf8ToAnsi(const std::string& text);

// The zero-based position of the first option whose locale text equals text byte for byte;
// 0 when none does or options is empty.
int FindOptionIndex(const std::vector<NXOpen::NXString>& options, const std::string& text);

#endif
