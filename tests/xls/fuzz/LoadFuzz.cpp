// libFuzzer target for Book::loadBuffer. Beyond "no crash, no hang, no read outside the buffer":
// a refused input carries a message; an accepted one takes writes into its active sheet, saves,
// saves again to the same bytes, and the saved workbook loads again with the same sheets.
// Built only with -DVORNADEL_FUZZ=ON (clang); see libs/xls/README.md for how to run it.

#include "XlsBook.h"

#include <cstdint>
#include <cstdlib>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    xls::Book book;
    if (!book.loadBuffer(data, size)) {
        if (*book.errorMessage() == '\0') abort();
        return 0;
    }
    xls::Sheet* sheet = book.getSheet(book.activeSheet());
    const bool editable = sheet != nullptr;
    if (editable) {
        // Every cell of the first rows and columns, where small inputs keep their formulas.
        for (int row = 0; row < 12; ++row)
            for (int col = 0; col < 4; ++col) sheet->writeStr(row, col, L"");
        sheet->writeStr(1, 4, L"客户名称");
        sheet->writeStr(6, 1, L"顶针 \U0001F600");
        sheet->writeStr(40, 17, L"2024-05-06 12:00");
        sheet->writeStr(65535, 255, L"last");
    }
    std::vector<unsigned char> first, second;
    if (!book.saveBuffer(first) || !book.saveBuffer(second) || first != second) abort();
    xls::Book again;
    if (!again.loadBuffer(first.data(), first.size())) abort();
    if (again.sheetCount() != book.sheetCount() || again.activeSheet() != book.activeSheet()) abort();
    if (editable && again.getSheet(again.activeSheet()) == nullptr) abort();
    return 0;
}
