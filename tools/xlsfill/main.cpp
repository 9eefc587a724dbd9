// xlsfill [--sheet N] IN.xls OUT.xls: writes string cells into the active sheet of a workbook, or
// into sheet N (counted from 0 over every sheet, charts and macro sheets included).
//
// Standard input holds one cell per line, "row<TAB>col<TAB>text": row and column counted from 0,
// text in UTF-8 with the escapes \t (tab), \n (line break) and \\ (backslash). Empty lines are
// skipped and a CR before the line end is dropped. Every line is read and written before the
// book is saved, so a bad line leaves OUT uncreated.
// Exit status: 0 done; 1 the workbook or a line was refused (message on standard error); 2 usage.

#include "Utf16.h"
#include "XlsBook.h"

#include <cstdio>
#include <iostream>
#include <string>
#include <vector>

namespace {

bool parseIndex(const std::string& text, int& value)
{
    if (text.empty() || text.size() > 6) return false;
    value = 0;
    for (char c : text) {
        if (c < '0' || c > '9') return false;
        value = value * 10 + (c - '0');
    }
    return true;
}

// UTF-8 to UTF-16; false for bytes that are not UTF-8.
bool utf8ToUtf16(const std::string& in, std::vector<xls::u16>& out)
{
    out.clear();
    for (size_t i = 0; i < in.size();) {
        const unsigned char b = static_cast<unsigned char>(in[i]);
        size_t extra = 0;
        if (b >= 0xF0 && b < 0xF8)
            extra = 3;
        else if (b >= 0xE0 && b < 0xF0)
            extra = 2;
        else if (b >= 0xC0 && b < 0xE0)
            extra = 1;
        else if (b >= 0x80)
            return false;
        if (extra >= in.size() - i) return false;
        unsigned long c = extra == 0 ? b : b & (0x3F >> extra);
        for (size_t k = 1; k <= extra; ++k) {
            unsigned char next = static_cast<unsigned char>(in[i + k]);
            if ((next & 0xC0) != 0x80) return false;
            c = (c << 6) | (next & 0x3F);
        }
        static const unsigned long smallest[] = {0, 0x80, 0x800, 0x10000};
        if (c < smallest[extra] || c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF)) return false;
        xls::appendUtf16(c, out);
        i += extra + 1;
    }
    return true;
}

bool unescape(const std::string& in, std::string& out, std::string& problem)
{
    out.clear();
    for (size_t i = 0; i < in.size(); ++i) {
        if (in[i] != '\\') {
            out += in[i];
            continue;
        }
        char next = i + 1 < in.size() ? in[i + 1] : '\0';
        if (next == 't')
            out += '\t';
        else if (next == 'n')
            out += '\n';
        else if (next == '\\')
            out += '\\';
        else {
            problem = next == '\0' ? "a lone backslash ends the text" : std::string("unknown escape \\") + next;
            return false;
        }
        ++i;
    }
    return true;
}

}  // namespace

int main(int argc, char** argv)
{
    int sheetIndex = -1;
    if (argc == 5 && std::string(argv[1]) == "--sheet" && parseIndex(argv[2], sheetIndex)) {
        argv += 2;
        argc -= 2;
    }
    if (argc != 3) {
        std::cerr << "usage: xlsfill [--sheet N] IN.xls OUT.xls < cells (lines: row<TAB>col<TAB>text)\n";
        return 2;
    }
    xls::Book book;
    if (!book.load(argv[1])) {
        std::cerr << "xlsfill: " << argv[1] << ": " << book.errorMessage() << "\n";
        return 1;
    }
    xls::Sheet* sheet = book.getSheet(sheetIndex >= 0 ? sheetIndex : book.activeSheet());
    if (sheet == nullptr) {
        std::cerr << "xlsfill: " << argv[1] << ": " << book.errorMessage() << "\n";
        return 1;
    }
    std::string line, text;
    std::vector<xls::u16> units;
    for (long number = 1; std::getline(std::cin, line); ++number) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        if (line.empty()) continue;
        const size_t tab1 = line.find('\t');
        const size_t tab2 = tab1 == std::string::npos ? std::string::npos : line.find('\t', tab1 + 1);
        int row = 0, col = 0;
        std::string problem;
        if (tab2 == std::string::npos)
            problem = "expected row<TAB>col<TAB>text";
        else if (!parseIndex(line.substr(0, tab1), row) || !parseIndex(line.substr(tab1 + 1, tab2 - tab1 - 1), col))
            problem = "row and column must be numbers counted from 0";
        else if (unescape(line.substr(tab2 + 1), text, problem) && !utf8ToUtf16(text, units))
            problem = "the text is not UTF-8";
        if (problem.empty() &&
            !sheet->writeStrUtf16(row, col, units.data(), units.size()))
            problem = book.errorMessage();
        if (!problem.empty()) {
            std::cerr << "xlsfill: line " << number << ": " << problem << "\n";
            return 1;
        }
    }
    if (!book.save(argv[2])) {
        std::cerr << "xlsfill: " << argv[2] << ": " << book.errorMessage() << "\n";
        return 1;
    }
    return 0;
}
