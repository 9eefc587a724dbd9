#ifndef VORNADEL_XLS_XLSBOOK_H
#define VORNADEL_XLS_XLSBOOK_H

// The template workbook engine: loads an Excel 97-2003 workbook (BIFF8 in a compound file),
// reads and writes cells of its worksheets and saves it, keeping everything it did not write.
// No call throws: failure is false or NULL, with a message in errorMessage() (ASCII English).
// See README.md in this folder for what is read, what is refused and why.

#include <stddef.h>
#include <string>
#include <vector>

namespace xls {

class BookState;
class SheetState;

// A worksheet of a loaded book. Owned by its Book; valid until the book loads again or dies.
class Sheet {
public:
    // Writes text (NUL-terminated) as a string cell at (row, col), both counted from 0. A cell
    // that exists keeps its format (also a blank cell of a run); a new cell takes its row's
    // format, else its column's, else the default cell format. Over the first cell of a shared
    // formula, an array formula or a data table, the group's other cells first get formulas of
    // their own. False, with the book's errorMessage(), for a cell outside 65,536 rows x 256
    // columns, text longer than 32,767 UTF-16 units, NULL text, or such a first cell whose group
    // holds a formula that cannot be given to the other cells (the sheet is then unchanged).
    bool writeStr(int row, int col, const wchar_t* text);

    // The same with text given as length UTF-16 code units.
    bool writeStrUtf16(int row, int col, const unsigned short* units, size_t length);

    // The same, giving the cell the format xf (an index as cellFormat gives it), or with -1 the
    // format writeStr gives. False also for an xf that is not a cell format of the book.
    bool writeStrUtf16(int row, int col, const unsigned short* units, size_t length, int xf);

    // The format (XF index) of the cell at (row, col); -1 when the sheet has no such cell.
    int cellFormat(int row, int col) const;

    // One past the last row that holds a cell (a blank cell with a format counts); 0 without cells.
    int rowCount() const;

    // The text of the cell at (row, col) as UTF-16 code units, as a user reads it in the cell
    // with the General format: a string as stored; a number with up to 15 significant digits
    // (3, 2.5, -0.125, 1e+20); TRUE or FALSE; an error as Excel names it (#N/A). A formula gives
    // its last result. Empty for a blank cell or none. False, with units empty, for a cell outside
    // 65,536 rows x 256 columns.
    bool readStr(int row, int col, std::vector<unsigned short>& units) const;

private:
    friend class Book;
    explicit Sheet(SheetState* state) : state_(state) {}
    SheetState* state_;  // borrowed from the book

    Sheet(const Sheet&);  // not copyable
    Sheet& operator=(const Sheet&);
};

class Book {
public:
    Book();
    ~Book();

    // Loads the workbook at path (a path as the operating system takes it). False when the file
    // cannot be read or is not a workbook this engine edits; the book then keeps what it held.
    bool load(const char* path);
    // The same from bytes in memory.
    bool loadBuffer(const void* data, size_t size);

    // Number of sheets (worksheets, chart sheets, dialog sheets, macro sheets, modules); 0 before a load.
    int sheetCount() const;
    // Index of the sheet that was active when the workbook was saved; 0 when none is recorded.
    int activeSheet() const;
    // The worksheet at index, owned by the book; NULL when there is no such sheet, when it is not
    // a worksheet (a chart, dialog or macro sheet or a module: the message names it) or when its
    // cells cannot be read.
    Sheet* getSheet(int index);

    // Writes the book to path: a temporary file beside it is written completely, then replaces
    // path. False on failure; path is then as it was.
    bool save(const char* path);
    // The same into memory.
    bool saveBuffer(std::vector<unsigned char>& out);

    // Text of the last failure; "" when the last call succeeded.
    const char* errorMessage() const { return error_.c_str(); }

private:
    BookState* state_;  // owned; NULL until a load succeeds
    std::string error_;

    Book(const Book&);  // not copyable
    Book& operator=(const Book&);
};

}  // namespace xls

#endif
