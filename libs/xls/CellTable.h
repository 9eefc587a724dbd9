#ifndef VORNADEL_XLS_CELLTABLE_H
#define VORNADEL_XLS_CELLTABLE_H

// The cell table of one worksheet: ROW records, cell records and DBCELL records, exploded into
// rows of cells so that single cells can be replaced or added, then written again in blocks of
// 32 rows. Runs (MULBLANK, MULRK) become single cells when loaded and runs again when written;
// every other cell record is kept verbatim with the records that belong to it (a FORMULA's
// SHRFMLA, ARRAY, TABLE, STRING and CONTINUE). A formula shared by several cells or entered as an
// array or a data table is kept as it was until its first cell (the anchor, followed by SHRFMLA,
// ARRAY or TABLE) is replaced: the other cells then get formulas of their own.

#include "Bytes.h"

#include <string>

namespace xls {

enum { kMaxRows = 65536, kMaxColumns = 256, kRowsPerBlock = 32, kRowDataSize = 16 };

struct Cell {
    u16 col;
    u16 kind;   // kBlank, kRk, kLabelSst, or kVerbatim
    u16 xf;     // index of the cell's XF record
    u32 value;  // RK value, SST index, or number of the verbatim group
};

enum { kVerbatim = 0 };

// What a cell holds, for reading: a formula gives its last result.
struct CellValue {
    enum Kind { kNone, kNumber, kSharedString, kText, kBoolean, kError };
    Kind kind;
    double number;          // kNumber
    u32 code;               // kSharedString: SST index; kBoolean: 0 or 1; kError: the error's code
    std::vector<u16> text;  // kText
};

struct Row {
    Row() : hasRecord(false) {}
    bool hasRecord;
    u8 record[kRowDataSize];  // data of its ROW record, when it has one
    std::vector<Cell> cells;  // ascending columns, one per column
};

class CellTable {
public:
    CellTable();
    ~CellTable();

    // True for the record types a cell table is made of: ROW, DBCELL, the cell records, and the
    // SHRFMLA, ARRAY, TABLE and STRING that follow a FORMULA. (A CONTINUE belongs to the table
    // only after a STRING, which the caller knows.)
    static bool holds(u32 type);

    // Takes one record of the cell table as read from the sheet, in stream order. False, with a
    // message, for a record too short for its kind or a cell beyond column 255.
    bool take(u32 type, const u8* data, size_t size, std::string& error);

    // The row, or NULL when it has neither a ROW record nor cells.
    const Row* row(u32 r) const { return r < rows_.size() ? rows_[r] : NULL; }
    // The cell, or NULL.
    const Cell* cell(u32 r, u32 c) const;
    // Readies (r, c) for replacement. When its record is the first cell of a shared formula, an
    // array formula or a data table (followed by SHRFMLA, ARRAY or TABLE), every other cell of it
    // (a FORMULA that only refers to the first cell: PtgExp, in a data table PtgTbl) gets a formula
    // of its own: the shared formula moved to that cell, the array's formula as it stands, or, in a
    // data table, its last result as a constant. False, with a message and nothing changed, when a
    // formula holds what this engine cannot move.
    bool release(u32 r, u32 c, std::string& error);
    // Makes (r, c) a LABELSST cell with the given XF and SST index; release(r, c) first.
    void setLabel(u32 r, u32 c, u32 xf, u32 sstIndex);

    // What (r, c) holds: kNone for no cell, a blank or a record too short for its kind.
    void value(u32 r, u32 c, CellValue& out) const;

    bool hasFormulas() const { return hasFormulas_; }
    // Cells' extent: first row, last row + 1, first column, last column + 1; all zero without cells.
    void extent(u32 out[4]) const;
    // Number of DBCELL records write() gives.
    size_t blockCount() const;

    // Appends the table. A row with cells and no ROW record gets newRow (rw, colMic and colMac
    // filled in); ROW records get their column range from their cells. dbcells receives each
    // DBCELL's offset in out.
    void write(Bytes& out, const u8 newRow[kRowDataSize], std::vector<u32>& dbcells) const;

private:
    struct Group {
        u32 offset;  // in verbatim_, record headers included
        u32 size;
        u32 range;   // offset in verbatim_ of its SHRFMLA, ARRAY or TABLE; kNoRange without
    };
    enum { kNoRange = 0xFFFFFFFFu };

    static size_t slot(const std::vector<Cell>& cells, u32 c);
    Row& makeRow(u32 r);
    Cell& put(u32 r, u32 c);
    bool present(u32 r) const { return rows_[r] != NULL && (rows_[r]->hasRecord || !rows_[r]->cells.empty()); }
    void writeRow(Bytes& out, u32 r, const u8 newRow[kRowDataSize]) const;
    void writeCells(Bytes& out, const Row& row, u32 r) const;

    std::vector<Row*> rows_;  // owned; indexed by row number
    Bytes verbatim_;          // records kept as loaded
    std::vector<Group> groups_;
    bool hasFormulas_;

    CellTable(const CellTable&);  // not copyable
    CellTable& operator=(const CellTable&);
};

}  // namespace xls

#endif
