#ifndef VORNADEL_PLATFORM_WORKBOOK_H
#define VORNADEL_PLATFORM_WORKBOOK_H

// The workbook operations the export needs, with the meaning of the spreadsheet library the
// export was designed for: a book is made, loaded from a copied template, one sheet receives
// string cells, the book is saved and released. Every call reports failure by its result
// (NULL or false) and leaves a readable text in errorMessage(); nothing throws.

class Worksheet {
public:
    // Writes text as a string cell at (row, col), both counted from 0. An existing cell keeps
    // its format. False when the cell lies outside the sheet's limits (see errorMessage()).
    virtual bool writeStr(int row, int col, const wchar_t* text) = 0;

protected:
    virtual ~Worksheet() {}
};

class Workbook {
public:
    // Reads the workbook at path (a Windows path in the system code page). False on failure.
    virtual bool load(const char* path) = 0;
    // Index of the sheet that was active when the workbook was saved (0 when none is recorded).
    virtual int activeSheet() = 0;
    // The sheet at index, owned by the book and valid until release(); NULL when there is none.
    virtual Worksheet* getSheet(int index) = 0;
    // Writes the book to path. The file at path is replaced only once the new one is complete.
    virtual bool save(const char* path) = 0;
    // Text of the last failure, in the system code page; "" when nothing failed.
    virtual const char* errorMessage() = 0;
    // Frees the book and its sheets.
    virtual void release() = 0;

protected:
    virtual ~Workbook() {}
};

// Makes an empty .xls book; NULL when no book can be made. Free it with release().
Workbook* CreateXlsBook();

#endif
