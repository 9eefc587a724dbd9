#include "XlsBook.h"

#include "CellTable.h"
#include "CompoundFile.h"
#include "Records.h"
#include "SharedStrings.h"
#include "Utf16.h"

#include <errno.h>
#include <stdio.h>
#include <string.h>

namespace xls {
namespace {

const u32 kNone = 0xFFFFFFFFu;
const long kMaxFileSize = 0x40000000L;     // 1 GiB: far above any template
const u32 kMaxStreamSize = 0x7FFFFFF0u;    // stream positions are 32-bit fields
const u32 kDefaultCellXf = 15;             // XF 15 is the mandatory default cell format
const size_t kMaxTextUnits = 32767;        // the most a BIFF8 cell holds
const u32 kStandardRowHeight = 255;        // twips, when the sheet gives none
const u32 kPlainRowFlags = 0x000F0100u;    // what Excel writes for a row without formats
const char* const kBiff5Refused = "Excel 5.0/95 workbook (BIFF5) is not supported: save it as Excel 97-2003 (.xls)";
const char* const kOldBiffRefused = "Excel 2.x-4.0 workbook is not supported: save it as Excel 97-2003 (.xls)";

// The BOF record of Excel 2.x, 3.0 or 4.0.
bool oldBof(u32 type) { return type == kBof2 || type == kBof3 || type == kBof4; }

std::string number(long v)
{
    char text[32];
    sprintf(text, "%ld", v);
    return text;
}

// Frees a half-built object on every exit unless released.
template <class T>
class Owned {
public:
    explicit Owned(T* p) : p_(p) {}
    ~Owned() { delete p_; }
    T* get() const { return p_; }
    T* release()
    {
        T* p = p_;
        p_ = NULL;
        return p;
    }

private:
    T* p_;
    Owned(const Owned&);
    Owned& operator=(const Owned&);
};

// How a written sheet's records are laid out when the book is saved.
struct SheetPlan {
    u32 extent[4];         // DIMENSIONS
    size_t blocks;         // DBCELL records, hence INDEX entries
    u32 dimensionsBefore;  // where DIMENSIONS goes when the sheet has none
    u32 indexAfter;        // after which record INDEX goes when the sheet has none
    bool addUncalced;
    u32 indexPos, dimensionsPos;
    std::vector<u32> dbcells;
};

// An error value as Excel shows it in a cell.
const char* errorName(u32 code)
{
    switch (code) {
    case 0x00: return "#NULL!";
    case 0x07: return "#DIV/0!";
    case 0x0F: return "#VALUE!";
    case 0x17: return "#REF!";
    case 0x1D: return "#NAME?";
    case 0x24: return "#NUM!";
    default: return "#N/A";
    }
}

}  // namespace

struct ColumnFormat {
    u32 first, last, xf;
};

class SheetState {
public:
    explicit SheetState(BookState* owner)
        : book(owner), boundSheet(kNone), bof(kNone), eof(kNone), kind(NULL), handle(NULL), table(NULL),
          modified(false), dimensions(kNone), index(kNone), defColWidth(kNone), firstColInfo(kNone),
          uncalced(kNone), window2(kNone), firstCell(kNone)
    {
        memset(oldExtent, 0, sizeof oldExtent);
        memset(newRow, 0, sizeof newRow);
    }
    ~SheetState()
    {
        delete handle;
        delete table;
    }

    bool open(std::string& error);
    // xf: the cell's format; kNone for the one it has, else the one a new cell takes.
    bool write(u32 r, u32 c, const u16* units, size_t length, u32 xf, std::string& error);
    u32 newCellXf(u32 r, u32 c) const;

    BookState* book;
    u32 boundSheet, bof, eof;  // record numbers of its BOUNDSHEET8, BOF and EOF
    const char* kind;          // NULL for a worksheet, else what the sheet is: "a chart sheet", ...
    Sheet* handle;             // owned
    CellTable* table;          // owned; made by open()
    bool modified;
    // What open() found at the sheet's own level (record numbers, kNone when absent).
    u32 dimensions, index, defColWidth, firstColInfo, uncalced, window2, firstCell;
    u32 oldExtent[4];  // DIMENSIONS as loaded
    std::vector<ColumnFormat> columns;
    u8 newRow[kRowDataSize];  // ROW data for a row that gets its first cell
    std::vector<u16> scratch;  // writeStr's text as UTF-16, kept so that its memory is reused

private:
    SheetState(const SheetState&);
    SheetState& operator=(const SheetState&);
};

class BookState {
public:
    BookState()
        : workbook(-1), end(0), globalsEof(kNone), sst(kNone), sstEnd(kNone), extSst(kNone), active(0), error(NULL)
    {
    }
    ~BookState()
    {
        for (size_t i = 0; i < sheets.size(); ++i) delete sheets[i];
    }

    bool load(const u8* bytes, size_t size, std::string& error);
    bool write(Bytes& out, std::string& error) const;
    const char* kindOfSheet(const SheetState& s) const;
    std::string sheetName(const SheetState& s) const;

    const u8* data(u32 i) const { return &stream[0] + records[i].pos + kRecordHeaderSize; }
    u32 findRecord(u32 pos) const;

    CompoundFile file;
    int workbook;  // directory id of the Workbook stream
    Bytes stream;  // the Workbook stream as loaded
    std::vector<RecordRef> records;
    size_t end;  // where the bytes after the last whole record start
    u32 globalsEof, sst, sstEnd, extSst;
    SharedStrings strings;
    std::vector<char> cellXf;  // per XF record: true for a cell XF (not a style XF)
    std::vector<SheetState*> sheets;
    std::vector<u32> owner;    // per record: number of the sheet whose substream holds it, or kNone
    std::vector<char> inTable; // per record: part of the cell table of an opened sheet
    u32 active;
    std::string* error;  // the owning Book's message

private:
    BookState(const BookState&);
    BookState& operator=(const BookState&);
};

u32 BookState::findRecord(u32 pos) const
{
    size_t low = 0, high = records.size();
    while (low < high) {
        size_t mid = (low + high) / 2;
        if (records[mid].pos < pos)
            low = mid + 1;
        else
            high = mid;
    }
    return low < records.size() && records[low].pos == pos ? static_cast<u32>(low) : kNone;
}

// A sheet is a worksheet when both its BOUNDSHEET8 and its BOF say so and its WSBOOL does not
// mark it as a dialog sheet (which is stored as a worksheet).
const char* BookState::kindOfSheet(const SheetState& s) const
{
    const u32 bofType = records[s.bof].size >= 4 ? getU16(data(s.bof) + 2) : 0;
    const u32 listedType = data(s.boundSheet)[5];
    if (bofType == kBofChart || listedType == 2) return "a chart sheet";
    if (bofType == kBofMacroSheet || listedType == 1) return "an Excel 4.0 macro sheet";
    if (bofType == kBofVbaModule || listedType == 6) return "a Visual Basic module";
    if (bofType != kBofWorksheet || listedType != 0) return "not a worksheet";
    for (u32 i = s.bof + 1, depth = 0; i < s.eof; ++i) {
        if (records[i].type == kBof) ++depth;
        if (records[i].type == kEof && depth > 0) --depth;
        if (depth == 0 && records[i].type == kWsBool && records[i].size >= 1 && (data(i)[0] & 0x10) != 0)
            return "a dialog sheet";
    }
    return NULL;
}

// The sheet's name from its BOUNDSHEET8 for messages: characters outside ASCII become '?'.
std::string BookState::sheetName(const SheetState& s) const
{
    const u8* d = data(s.boundSheet);
    const u32 size = records[s.boundSheet].size;
    const u32 wide = size >= 8 && (d[7] & 0x01) != 0 ? 2 : 1;
    std::string name;
    for (u32 k = 0, at = 8; size >= 8 && k < d[6] && at + wide <= size; ++k, at += wide) {
        const u32 unit = wide == 2 ? getU16(d + at) : d[at];
        name += unit >= 0x20 && unit < 0x7F ? static_cast<char>(unit) : '?';
    }
    return name;
}

bool BookState::load(const u8* bytes, size_t size, std::string& error)
{
    // Excel 2.x to 4.0 saved a bare BIFF stream, not a compound file.
    if (size >= 4 && oldBof(getU16(bytes))) {
        error = kOldBiffRefused;
        return false;
    }
    if (!file.read(bytes, size, error)) return false;
    // Excel 97 and later name the stream "Workbook", Excel 5.0/95 "Book"; other writers use
    // either name for either format (any case), so the BOF record decides what the stream holds.
    // A workbook saved for both versions holds both streams: "Workbook" is the one to edit.
    workbook = file.findRootStream("Workbook");
    if (workbook < 0) workbook = file.findRootStream("Book");
    if (workbook < 0) {
        error = "not an Excel workbook: the compound file has no Workbook stream";
        return false;
    }
    stream.swap(file.entries[workbook].data);
    if (stream.size() > kMaxStreamSize) {
        error = "the Workbook stream is too large";
        return false;
    }
    splitRecords(stream, records, &end);
    if (!records.empty() && oldBof(records[0].type)) {
        error = kOldBiffRefused;
        return false;
    }
    if (records.empty() || records[0].type != kBof || records[0].size < 4) {
        error = "not an Excel workbook: the Workbook stream does not start with a BOF record";
        return false;
    }
    const u32 version = getU16(data(0));
    if (version != kBiff8Version) {
        error = version == kBiff5Version ? kBiff5Refused : "unsupported BIFF version in the Workbook stream";
        return false;
    }
    if (getU16(data(0) + 2) != kBofGlobals) {
        error = "damaged workbook: the Workbook stream does not start with the workbook globals";
        return false;
    }
    const u32 n = static_cast<u32>(records.size());
    for (u32 i = 0, depth = 0; i < n && globalsEof == kNone; ++i) {
        if (records[i].type == kBof) ++depth;
        if (records[i].type == kEof && depth > 0 && --depth == 0) globalsEof = i;
    }
    if (globalsEof == kNone) {
        error = "damaged workbook: the workbook globals have no end (EOF) record";
        return false;
    }

    std::vector<u32> boundSheets;
    u32 activeTab = kNone;
    for (u32 i = 1; i < globalsEof; ++i) {
        const u32 type = records[i].type, length = records[i].size;
        if (type == kFilePass) {
            error = "the workbook is encrypted (password to open): save it without a password";
            return false;
        } else if (type == kBoundSheet && length >= 6) {
            boundSheets.push_back(i);
        } else if (type == kWindow1 && length >= 12 && activeTab == kNone) {
            activeTab = getU16(data(i) + 10);
        } else if (type == kXf) {
            cellXf.push_back(length >= 6 && (getU16(data(i) + 4) & 0x0004) == 0);
        } else if (type == kSst && sst == kNone) {
            sst = i;
            sstEnd = i + 1;
            while (sstEnd < globalsEof && records[sstEnd].type == kContinue) ++sstEnd;
        } else if (type == kExtSst && sst != kNone && i >= sstEnd && extSst == kNone) {
            extSst = i;
        }
    }

    // Each BOUNDSHEET8 names its substream by position; a wrong position falls back to the
    // substreams' order, as LibreOffice and Gnumeric read such files.
    std::vector<u32> topLevel;
    for (u32 i = globalsEof + 1, depth = 0; i < n; ++i) {
        if (records[i].type == kBof && depth++ == 0) topLevel.push_back(i);
        if (records[i].type == kEof && depth > 0) --depth;
    }
    owner.assign(n, kNone);
    inTable.assign(n, 0);
    std::vector<u32> bofs;
    std::vector<char> startsSheet(n, 0);
    for (size_t k = 0; k < boundSheets.size(); ++k) {
        u32 bof = findRecord(getU32(data(boundSheets[k])));
        if (bof == kNone || records[bof].type != kBof || bof <= globalsEof) bof = k < topLevel.size() ? topLevel[k] : kNone;
        if (bof == kNone) {
            error = "damaged workbook: sheet " + number(static_cast<long>(k)) + " is missing from the Workbook stream";
            return false;
        }
        bofs.push_back(bof);
        startsSheet[bof] = 1;
    }
    for (size_t k = 0; k < boundSheets.size(); ++k) {
        sheets.push_back(new SheetState(this));
        SheetState& s = *sheets.back();
        s.boundSheet = boundSheets[k];
        const u32 bof = bofs[k];
        // A sheet ends at the EOF that closes its BOF. Gnumeric writes a chart sheet as two BOFs
        // and one EOF: a sheet other than a worksheet that leaves a BOF open ends at its last
        // EOF before the next sheet.
        u32 lastEof = kNone;
        for (u32 i = bof, depth = 0; i < n && s.eof == kNone && (i == bof || !startsSheet[i]); ++i) {
            if (records[i].type == kBof) ++depth;
            if (records[i].type == kEof) lastEof = i;
            if (records[i].type == kEof && depth > 0 && --depth == 0) s.eof = i;
        }
        if (s.eof == kNone && records[bof].size >= 4 && getU16(data(bof) + 2) != kBofWorksheet) s.eof = lastEof;
        if (s.eof == kNone) {
            error = "damaged workbook: sheet " + number(static_cast<long>(k)) + " has no end (EOF) record";
            return false;
        }
        s.bof = bof;
        s.kind = kindOfSheet(s);
        for (u32 i = s.bof; i <= s.eof; ++i) {
            if (owner[i] != kNone) {
                error = "damaged workbook: two sheets share one substream";
                return false;
            }
            owner[i] = static_cast<u32>(k);
        }
    }
    active = activeTab < sheets.size() ? activeTab : 0;

    if (sst != kNone) {
        std::vector<const u8*> parts;
        std::vector<size_t> sizes;
        for (u32 i = sst; i < sstEnd; ++i) {
            parts.push_back(data(i));
            sizes.push_back(records[i].size);
        }
        strings.load(parts, sizes);
    }
    return true;
}

bool SheetState::open(std::string& error)
{
    const BookState& b = *book;
    Owned<CellTable> cells(new CellTable);
    dimensions = index = defColWidth = firstColInfo = uncalced = window2 = firstCell = kNone;
    memset(oldExtent, 0, sizeof oldExtent);
    columns.clear();
    std::vector<u32> taken;
    u32 rowFlags = 0, rowHeight = kStandardRowHeight;
    bool stringGoesOn = false;  // the record before was a STRING or one of its CONTINUEs
    for (u32 i = bof + 1, depth = 0; i < eof; ++i) {
        const u32 type = b.records[i].type, length = b.records[i].size;
        const u8* data = b.data(i);
        if (type == kBof) ++depth;
        if (type == kEof && depth > 0) --depth;
        if (depth > 0 || type == kEof) continue;  // an embedded chart's substream
        const bool cell = CellTable::holds(type) || (type == kContinue && stringGoesOn);
        stringGoesOn = cell && (type == kString || type == kContinue);
        if (cell) {
            if (!cells.get()->take(type, data, length, error)) {
                error = "the sheet's cells cannot be edited: " + error;
                return false;
            }
            taken.push_back(i);
            if (firstCell == kNone) firstCell = i;
        } else if (type == kDimensions && dimensions == kNone) {
            dimensions = i;
            if (length >= 12) {
                oldExtent[0] = getU32(data);
                oldExtent[1] = getU32(data + 4);
                oldExtent[2] = getU16(data + 8);
                oldExtent[3] = getU16(data + 10);
            }
        } else if (type == kIndex && index == kNone) {
            index = i;
        } else if (type == kDefColWidth && defColWidth == kNone) {
            defColWidth = i;
        } else if (type == kColInfo && length >= 8) {
            if (firstColInfo == kNone) firstColInfo = i;
            ColumnFormat f = {getU16(data), getU16(data + 2), getU16(data + 6)};
            columns.push_back(f);
        } else if (type == kUncalced) {
            uncalced = i;
        } else if (type == kWindow2 && window2 == kNone) {
            window2 = i;
        } else if (type == kDefaultRowHeight && length >= 4) {
            const u32 flags = getU16(data);
            rowHeight = (flags & 0x0002) != 0 || getU16(data + 2) == 0 ? kStandardRowHeight : getU16(data + 2);
            rowFlags = (flags & 0x0001) != 0 ? 0x40 : 0;  // fUnsynced: the default height was set by hand
        }
    }
    putU16(newRow + 6, rowHeight);
    putU32(newRow + 12, kPlainRowFlags | rowFlags);
    for (size_t k = 0; k < taken.size(); ++k) book->inTable[taken[k]] = 1;
    table = cells.release();
    return true;
}

// Format of a new cell, in Excel's order: the row's format, the column's, the default cell
// format. A reference to an XF that does not exist or is a style XF is skipped.
u32 SheetState::newCellXf(u32 r, u32 c) const
{
    const std::vector<char>& cellXf = book->cellXf;
    const Row* row = table->row(r);
    if (row != NULL && row->hasRecord && (row->record[12] & 0x80) != 0) {
        u32 xf = (getU32(row->record + 12) >> 16) & 0x0FFF;
        if (xf < cellXf.size() && cellXf[xf]) return xf;
    }
    for (size_t k = 0; k < columns.size(); ++k) {
        if (c < columns[k].first || c > columns[k].last) continue;
        if (columns[k].xf < cellXf.size() && cellXf[columns[k].xf]) return columns[k].xf;
        break;
    }
    if (kDefaultCellXf < cellXf.size() && cellXf[kDefaultCellXf]) return kDefaultCellXf;
    for (size_t xf = 0; xf < cellXf.size(); ++xf)
        if (cellXf[xf]) return static_cast<u32>(xf);
    return 0;
}

bool SheetState::write(u32 r, u32 c, const u16* units, size_t length, u32 xf, std::string& error)
{
    if (!table->release(r, c, error)) {
        error = "cell (" + number(static_cast<long>(r)) + ", " + number(static_cast<long>(c)) + ") cannot be written: " + error;
        return false;
    }
    const Cell* existing = table->cell(r, c);
    if (xf == kNone) xf = existing != NULL ? existing->xf : newCellXf(r, c);
    const bool wasLabel = existing != NULL && existing->kind == kLabelSst;
    const u32 sstIndex = book->strings.add(units, length);
    if (!wasLabel) book->strings.countCells(1);
    table->setLabel(r, c, xf, sstIndex);
    modified = true;
    return true;
}

// The Workbook stream is written record by record from the loaded one. What changes: the SST
// (strings appended) and EXTSST, every BOUNDSHEET8's position of its sheet, every INDEX's
// positions, and in each written sheet DIMENSIONS, INDEX and the cell table (ROW, cells, DBCELL).
bool BookState::write(Bytes& out, std::string& error) const
{
    const u32 n = static_cast<u32>(records.size());
    Bytes ws;
    ws.reserve(stream.size() + stream.size() / 4 + 4096);
    std::vector<u32> newPos(n, kNone);

    std::vector<SheetPlan> plans(sheets.size());
    for (size_t k = 0; k < sheets.size(); ++k) {
        const SheetState& s = *sheets[k];
        if (!s.modified) continue;
        SheetPlan& p = plans[k];
        s.table->extent(p.extent);
        const u32* old = s.oldExtent;
        if (old[1] > old[0] && old[3] > old[2]) {
            if (old[0] < p.extent[0]) p.extent[0] = old[0];
            if (old[1] > p.extent[1]) p.extent[1] = old[1] > u32(kMaxRows) ? u32(kMaxRows) : old[1];
            if (old[2] < p.extent[2]) p.extent[2] = old[2];
            if (old[3] > p.extent[3]) p.extent[3] = old[3] > u32(kMaxColumns) ? u32(kMaxColumns) : old[3];
        }
        p.blocks = s.table->blockCount();
        p.dimensionsBefore = s.firstCell != kNone ? s.firstCell : s.window2 != kNone ? s.window2 : s.eof;
        p.indexAfter = s.index != kNone ? kNone : (s.uncalced == s.bof + 1 ? s.uncalced : s.bof);
        p.addUncalced = s.table->hasFormulas() && s.uncalced == kNone;
        p.indexPos = p.dimensionsPos = kNone;
    }

    // A workbook without text has no SST: a new one goes just before the globals' EOF, ahead of
    // the records that only later Excel versions know (BOOKEXT, THEME ...: ids 0x08xx).
    const bool newSst = sst == kNone && strings.grown();
    u32 newSstBefore = globalsEof;
    while (newSst && newSstBefore > 1 && records[newSstBefore - 1].type >= 0x0800 &&
           records[newSstBefore - 1].type <= 0x08FF)
        --newSstBefore;
    const bool addExtSst = strings.grown() && extSst == kNone;
    u32 sstPos = kNone, extSstPos = kNone;
    SstLayout layout;

#define XLS_EMIT_EXTSST()                                                           \
    do {                                                                           \
        extSstPos = static_cast<u32>(ws.size());                                   \
        Bytes zeros(SharedStrings::extSstSize(strings.count()), 0);                \
        appendRecord(ws, kExtSst, &zeros[0], zeros.size());                        \
    } while (0)
#define XLS_EMIT_INDEX(p)                                                           \
    do {                                                                           \
        (p).indexPos = static_cast<u32>(ws.size());                                \
        Bytes zeros(16 + 4 * (p).blocks, 0);                                       \
        appendRecord(ws, kIndex, &zeros[0], zeros.size());                         \
    } while (0)

    for (u32 i = 0; i < n; ++i) {
        if (newSst && i == newSstBefore) {
            sstPos = static_cast<u32>(ws.size());
            strings.write(ws, layout);
            XLS_EMIT_EXTSST();
        }
        const u32 k = owner[i];
        const SheetState* s = k != kNone && sheets[k]->modified ? sheets[k] : NULL;
        SheetPlan* p = s != NULL ? &plans[k] : NULL;
        if (s != NULL && (i == s->dimensions || (s->dimensions == kNone && i == p->dimensionsBefore))) {
            p->dimensionsPos = static_cast<u32>(ws.size());
            appendU16(ws, kDimensions);
            appendU16(ws, 14);
            appendU32(ws, p->extent[0]);
            appendU32(ws, p->extent[1]);
            appendU16(ws, p->extent[2]);
            appendU16(ws, p->extent[3]);
            appendU16(ws, 0);
            s->table->write(ws, s->newRow, p->dbcells);
            if (i == s->dimensions) continue;
        }
        if (s != NULL && inTable[i]) continue;
        if (i == sst) {
            sstPos = static_cast<u32>(ws.size());
            newPos[i] = sstPos;
            strings.write(ws, layout);
            if (addExtSst) XLS_EMIT_EXTSST();
            continue;
        }
        if (sst != kNone && i > sst && i < sstEnd) continue;
        if (i == extSst && strings.changed()) {  // else its positions still hold: the SST stays put
            newPos[i] = static_cast<u32>(ws.size());
            XLS_EMIT_EXTSST();
            continue;
        }
        if (s != NULL && i == s->index) {
            XLS_EMIT_INDEX(*p);
            newPos[i] = p->indexPos;
            continue;
        }
        newPos[i] = static_cast<u32>(ws.size());
        appendRecord(ws, records[i].type, data(i), records[i].size);
        if (s != NULL && i == s->bof && p->addUncalced) {
            const u8 zero[2] = {0, 0};
            appendRecord(ws, kUncalced, zero, 2);
        }
        if (s != NULL && i == p->indexAfter) XLS_EMIT_INDEX(*p);
    }
#undef XLS_EMIT_INDEX
#undef XLS_EMIT_EXTSST
    if (end < stream.size()) appendBytes(ws, &stream[end], stream.size() - end);
    if (ws.size() > kMaxStreamSize) {
        error = "the workbook has grown too large for the format";
        return false;
    }

    // Positions, now that every record has its place.
    for (size_t k = 0; k < sheets.size(); ++k) {
        const SheetState& s = *sheets[k];
        putU32(&ws[newPos[s.boundSheet] + kRecordHeaderSize], newPos[s.bof]);
        if (!s.modified) continue;
        const SheetPlan& p = plans[k];
        u32 xfPos = s.defColWidth != kNone ? newPos[s.defColWidth]
                    : s.firstColInfo != kNone ? newPos[s.firstColInfo] : p.dimensionsPos;
        u8* index = &ws[p.indexPos + kRecordHeaderSize];
        putU32(index + 4, p.extent[0]);
        putU32(index + 8, p.extent[1]);
        putU32(index + 12, xfPos);
        for (size_t b = 0; b < p.dbcells.size(); ++b) putU32(index + 16 + 4 * b, p.dbcells[b]);
    }
    if (extSstPos != kNone && sstPos != kNone) {
        Bytes extData;
        SharedStrings::extSst(layout, sstPos, extData);
        memcpy(&ws[extSstPos + kRecordHeaderSize], &extData[0], extData.size());
    }
    // INDEX of an unwritten sheet: each position follows the record it named; one that named no
    // record moves with its sheet.
    for (u32 i = 0; i < n; ++i) {
        if (records[i].type != kIndex || records[i].size < 16 || owner[i] == kNone) continue;
        const SheetState& s = *sheets[owner[i]];
        if (s.modified) continue;
        const u32 shift = newPos[s.bof] - records[s.bof].pos;
        u8* index = &ws[newPos[i] + kRecordHeaderSize];
        for (u32 at = 12; at + 4 <= records[i].size; at += 4) {
            const u32 old = getU32(index + at);
            const u32 named = findRecord(old);
            putU32(index + at, named != kNone && newPos[named] != kNone ? newPos[named] : old + shift);
        }
    }
    file.write(out, workbook, ws);
    return true;
}

bool Sheet::writeStr(int row, int col, const wchar_t* text)
{
    std::string& error = *state_->book->error;
    if (text == NULL) {
        error = "no text given (NULL)";
        return false;
    }
    try {
        wideToUtf16(text, state_->scratch);
    } catch (...) {
        error = "out of memory";
        return false;
    }
    const std::vector<u16>& units = state_->scratch;
    return writeStrUtf16(row, col, units.empty() ? NULL : &units[0], units.size());
}

int Sheet::rowCount() const
{
    u32 extent[4];
    state_->table->extent(extent);
    return static_cast<int>(extent[1]);
}

bool Sheet::readStr(int row, int col, std::vector<unsigned short>& units) const
{
    units.clear();
    if (row < 0 || row >= kMaxRows || col < 0 || col >= kMaxColumns) return false;
    CellValue value;
    state_->table->value(static_cast<u32>(row), static_cast<u32>(col), value);
    char text[40] = "";
    switch (value.kind) {
    case CellValue::kNone:
        break;
    case CellValue::kNumber:
        sprintf(text, "%.15g", value.number);
        break;
    case CellValue::kSharedString:
        state_->book->strings.text(value.code, units);
        break;
    case CellValue::kText:
        units.swap(value.text);
        break;
    case CellValue::kBoolean:
        strcpy(text, value.code != 0 ? "TRUE" : "FALSE");
        break;
    case CellValue::kError:
        strcpy(text, errorName(value.code));
        break;
    }
    for (const char* c = text; *c != '\0'; ++c) units.push_back(static_cast<unsigned char>(*c));
    return true;
}

bool Sheet::writeStrUtf16(int row, int col, const unsigned short* units, size_t length)
{
    return writeStrUtf16(row, col, units, length, -1);
}

int Sheet::cellFormat(int row, int col) const
{
    if (row < 0 || row >= kMaxRows || col < 0 || col >= kMaxColumns) return -1;
    const Cell* cell = state_->table->cell(static_cast<u32>(row), static_cast<u32>(col));
    return cell != NULL ? cell->xf : -1;
}

bool Sheet::writeStrUtf16(int row, int col, const unsigned short* units, size_t length, int xf)
{
    std::string& error = *state_->book->error;
    error.clear();
    const std::vector<char>& cellXf = state_->book->cellXf;
    if (xf != -1 && (xf < 0 || static_cast<size_t>(xf) >= cellXf.size() || !cellXf[static_cast<size_t>(xf)])) {
        error = "format " + number(xf) + " is not a cell format of the workbook";
        return false;
    }
    if (row < 0 || row >= kMaxRows) {
        error = "row " + number(row) + " is outside the sheet (rows 0 to 65535)";
        return false;
    }
    if (col < 0 || col >= kMaxColumns) {
        error = "column " + number(col) + " is outside the sheet (columns 0 to 255)";
        return false;
    }
    if (units == NULL && length > 0) {
        error = "no text given (NULL)";
        return false;
    }
    if (length > kMaxTextUnits) {
        error = "text of " + number(static_cast<long>(length)) + " characters is longer than the 32767 a cell holds";
        return false;
    }
    try {
        return state_->write(static_cast<u32>(row), static_cast<u32>(col), units, length,
                             xf == -1 ? kNone : static_cast<u32>(xf), error);
    } catch (...) {
        error = "out of memory";
        return false;
    }
}

Book::Book() : state_(NULL) {}

Book::~Book() { delete state_; }

bool Book::load(const char* path)
{
    error_.clear();
    if (path == NULL) {
        error_ = "no file name given";
        return false;
    }
    FILE* f = fopen(path, "rb");
    if (f == NULL) {
        error_ = std::string("cannot open the workbook: ") + strerror(errno);
        return false;
    }
    bool ok = false;
    try {
        Bytes bytes;
        long size = -1;
        if (fseek(f, 0, SEEK_END) == 0) size = ftell(f);
        if (size < 0 || fseek(f, 0, SEEK_SET) != 0) {
            error_ = "cannot read the workbook: its size is unknown";
        } else if (size > kMaxFileSize) {
            error_ = "the workbook is larger than 1 GiB";
        } else {
            bytes.resize(static_cast<size_t>(size));
            if (size > 0 && fread(&bytes[0], 1, bytes.size(), f) != bytes.size())
                error_ = "cannot read the workbook: it was cut short while reading";
            else
                ok = true;
        }
        fclose(f);
        f = NULL;
        return ok && loadBuffer(bytes.empty() ? NULL : &bytes[0], bytes.size());
    } catch (...) {
        if (f != NULL) fclose(f);
        error_ = "out of memory while reading the workbook";
        return false;
    }
}

bool Book::loadBuffer(const void* data, size_t size)
{
    error_.clear();
    if (data == NULL && size > 0) {
        error_ = "no data given";
        return false;
    }
    try {
        Owned<BookState> fresh(new BookState);
        static const u8 none = 0;
        if (!fresh.get()->load(size > 0 ? static_cast<const u8*>(data) : &none, size, error_)) return false;
        delete state_;
        state_ = fresh.release();
        state_->error = &error_;
        return true;
    } catch (...) {
        error_ = "out of memory while loading the workbook";
        return false;
    }
}

int Book::sheetCount() const { return state_ != NULL ? static_cast<int>(state_->sheets.size()) : 0; }

int Book::activeSheet() const { return state_ != NULL ? static_cast<int>(state_->active) : 0; }

Sheet* Book::getSheet(int index)
{
    error_.clear();
    if (state_ == NULL) {
        error_ = "no workbook is loaded";
        return NULL;
    }
    if (index < 0 || index >= sheetCount()) {
        error_ = "there is no sheet " + number(index) + "; the workbook has " + number(sheetCount()) + " sheets";
        return NULL;
    }
    SheetState& s = *state_->sheets[index];
    if (s.handle != NULL) return s.handle;
    if (s.kind != NULL) {
        error_ = "sheet " + number(index) + " \"" + state_->sheetName(s) + "\" is " + s.kind +
                 ": only worksheets can be written";
        return NULL;
    }
    try {
        if (!s.open(error_)) return NULL;
        s.handle = new Sheet(&s);
        return s.handle;
    } catch (...) {
        error_ = "out of memory while reading the sheet";
        return NULL;
    }
}

bool Book::saveBuffer(std::vector<unsigned char>& out)
{
    error_.clear();
    if (state_ == NULL) {
        error_ = "no workbook is loaded";
        return false;
    }
    try {
        return state_->write(out, error_);
    } catch (...) {
        error_ = "out of memory while writing the workbook";
        return false;
    }
}

bool Book::save(const char* path)
{
    Bytes bytes;
    if (path == NULL) {
        error_ = "no file name given";
        return false;
    }
    if (!saveBuffer(bytes)) return false;
    try {
        // The temporary file sits beside the target so that renaming it never crosses file systems.
        std::string temporary;
        for (int attempt = 0; attempt < 100; ++attempt) {
            temporary = std::string(path) + ".~" + number(attempt) + ".tmp";
            FILE* probe = fopen(temporary.c_str(), "rb");
            if (probe == NULL) break;
            fclose(probe);
        }
        FILE* f = fopen(temporary.c_str(), "wb");
        if (f == NULL) {
            error_ = std::string("cannot create a temporary file beside the workbook: ") + strerror(errno);
            return false;
        }
        bool written = fwrite(&bytes[0], 1, bytes.size(), f) == bytes.size();
        written = fflush(f) == 0 && written;
        const int writeErrno = errno;
        written = fclose(f) == 0 && written;
        if (!written) {
            remove(temporary.c_str());
            error_ = std::string("cannot write the workbook: ") + strerror(writeErrno);
            return false;
        }
        if (rename(temporary.c_str(), path) != 0) {
            int renameErrno = errno;
#if defined(_WIN32)
            // The Windows C runtime does not rename onto an existing file: the old file steps
            // aside under a temporary name until the new one has taken its place. Only a file
            // does (the C runtime opens no folder): a folder in the way stays where it is.
            FILE* existing = fopen(path, "rb");
            if (existing != NULL) {
                fclose(existing);
                const std::string aside = temporary + ".old";
                const bool moved = rename(path, aside.c_str()) == 0;
                if (moved && rename(temporary.c_str(), path) == 0) {
                    remove(aside.c_str());
                    return true;
                }
                renameErrno = errno;
                if (moved) rename(aside.c_str(), path);
            }
#endif
            error_ = std::string("cannot replace the workbook: ") + strerror(renameErrno);
            remove(temporary.c_str());
            return false;
        }
        return true;
    } catch (...) {
        error_ = "out of memory while writing the workbook";
        return false;
    }
}

}  // namespace xls
