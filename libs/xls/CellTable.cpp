#include "CellTable.h"

#include "Formulas.h"
#include "Records.h"
#include "SharedStrings.h"

#include <math.h>

#include <cstddef>
#include <stdio.h>
#include <utility>

namespace xls {
namespace {

std::string describe(const char* what, u32 type)
{
    char text[96];
    sprintf(text, "%s (record 0x%04X)", what, static_cast<unsigned>(type));
    return text;
}

void appendCellHeader(Bytes& out, u32 type, u32 size, u32 r, u32 c, u32 xf)
{
    appendU16(out, type);
    appendU16(out, size);
    appendU16(out, r);
    appendU16(out, c);
    appendU16(out, xf);
}

// An IEEE 754 double stored little-endian, built without relying on the machine's byte order.
double toDouble(u32 low, u32 high)
{
    const u32 exponent = (high >> 20) & 0x7FF;
    const double fraction = (high & 0xFFFFF) * 4294967296.0 + low;  // 52 bits: exact
    double magnitude;
    if (exponent == 0)
        magnitude = ldexp(fraction, -1074);
    else if (exponent == 0x7FF)
        magnitude = HUGE_VAL;  // infinity or NaN, which no cell holds
    else
        magnitude = ldexp(fraction + 4503599627370496.0, static_cast<int>(exponent) - 1075);
    return (high & 0x80000000u) != 0 ? -magnitude : magnitude;
}

// RK: a 30-bit integer or the high 30 bits of a double, divided by 100 when its lowest bit is set.
double rkNumber(u32 rk)
{
    double v;
    if ((rk & 0x02) != 0) {
        long whole = static_cast<long>(rk >> 2);
        if ((rk & 0x80000000u) != 0) whole -= 0x40000000L;
        v = static_cast<double>(whole);
    } else {
        v = toDouble(0, rk & 0xFFFFFFFCu);
    }
    return (rk & 0x01) != 0 ? v / 100 : v;
}

// The characters of a string that starts at offset in the record at `at` (type, size, data) and
// goes on in the CONTINUE records that follow it up to end.
bool recordString(const u8* at, const u8* end, size_t offset, std::vector<u16>& units)
{
    std::vector<Bytes> chain;
    do {
        const u32 size = getU16(at + 2);
        chain.push_back(Bytes(at + kRecordHeaderSize, at + kRecordHeaderSize + size));
        at += kRecordHeaderSize + size;
    } while (at + kRecordHeaderSize <= end && getU16(at) == kContinue);
    return SharedStrings::readString(chain, 0, offset, units);
}

}  // namespace

CellTable::CellTable() : hasFormulas_(false) {}

CellTable::~CellTable()
{
    for (size_t i = 0; i < rows_.size(); ++i) delete rows_[i];
}

bool CellTable::holds(u32 type)
{
    switch (type) {
    case kRow: case kDbCell: case kBlank: case kMulBlank: case kRk: case kMulRk: case kNumber:
    case kLabelSst: case kLabel: case kRString: case kBoolErr: case kFormula: case kFormula3: case kFormula4:
    case kString:
    case kShrFmla: case kArray: case kTable:
        return true;
    default:
        return false;
    }
}

Row& CellTable::makeRow(u32 r)
{
    if (r >= rows_.size()) rows_.resize(r + 1, static_cast<Row*>(NULL));
    if (rows_[r] == NULL) rows_[r] = new Row;
    return *rows_[r];
}

// Where column c is, or would go, in a row's cells. Cells mostly arrive in ascending order, so
// the end of the row is tried first.
size_t CellTable::slot(const std::vector<Cell>& cells, u32 c)
{
    if (cells.empty() || cells.back().col < c) return cells.size();
    size_t low = 0, high = cells.size();
    while (low < high) {
        const size_t mid = (low + high) / 2;
        if (cells[mid].col < c)
            low = mid + 1;
        else
            high = mid;
    }
    return low;
}

Cell& CellTable::put(u32 r, u32 c)
{
    std::vector<Cell>& cells = makeRow(r).cells;
    const size_t at = slot(cells, c);
    if (at < cells.size() && cells[at].col == c) return cells[at];
    const Cell fresh = {static_cast<u16>(c), kBlank, 0, 0};
    cells.insert(cells.begin() + static_cast<std::ptrdiff_t>(at), fresh);
    return cells[at];
}

const Cell* CellTable::cell(u32 r, u32 c) const
{
    const Row* line = row(r);
    if (line == NULL) return NULL;
    const size_t at = slot(line->cells, c);
    return at < line->cells.size() && line->cells[at].col == c ? &line->cells[at] : NULL;
}

bool CellTable::take(u32 type, const u8* data, size_t size, std::string& error)
{
    switch (type) {
    case kRow: {
        if (size < kRowDataSize) break;
        Row& row = makeRow(getU16(data));
        row.hasRecord = true;
        memcpy(row.record, data, kRowDataSize);
        return true;
    }
    case kDbCell:
        return true;  // rebuilt on writing
    case kBlank:
    case kRk:
    case kLabelSst: {
        if (size < (type == kBlank ? 6u : 10u)) break;
        if (getU16(data + 2) >= kMaxColumns) {
            error = describe("a cell lies beyond column IV", type);
            return false;
        }
        Cell& c = put(getU16(data), getU16(data + 2));
        c.kind = static_cast<u16>(type);
        c.xf = getU16(data + 4);
        c.value = type == kBlank ? 0 : getU32(data + 6);
        return true;
    }
    case kMulBlank:
    case kMulRk: {
        const size_t each = type == kMulBlank ? 2 : 6;
        if (size < 6 + each || (size - 6) % each != 0) break;
        const u32 first = getU16(data + 2);
        const size_t count = (size - 6) / each;
        if (first + count > kMaxColumns) {
            error = describe("a cell lies beyond column IV", type);
            return false;
        }
        for (size_t k = 0; k < count; ++k) {
            const u8* item = data + 4 + k * each;
            Cell& c = put(getU16(data), static_cast<u32>(first + k));
            c.kind = type == kMulBlank ? static_cast<u16>(kBlank) : static_cast<u16>(kRk);
            c.xf = getU16(item);
            c.value = type == kMulBlank ? 0 : getU32(item + 2);
        }
        return true;
    }
    case kNumber:
    case kLabel:
    case kRString:
    case kBoolErr:
    case kFormula:
    case kFormula3:
    case kFormula4: {
        if (size < 6) break;
        if (getU16(data + 2) >= kMaxColumns) {
            error = describe("a cell lies beyond column IV", type);
            return false;
        }
        Group g = {static_cast<u32>(verbatim_.size()), static_cast<u32>(kRecordHeaderSize + size), static_cast<u32>(kNoRange)};
        appendRecord(verbatim_, type, data, size);
        Cell& c = put(getU16(data), getU16(data + 2));
        c.kind = kVerbatim;
        c.xf = getU16(data + 4);
        c.value = static_cast<u32>(groups_.size());
        groups_.push_back(g);
        if (type == kFormula || type == kFormula3 || type == kFormula4) hasFormulas_ = true;
        return true;
    }
    case kShrFmla:
    case kArray:
    case kTable:
    case kString:
    case kContinue:
        // These belong to the formula cell before them and travel with it.
        if (groups_.empty()) {
            error = describe("a formula's companion record has no formula before it", type);
            return false;
        }
        if ((type == kShrFmla || type == kArray || type == kTable) && groups_.back().range == kNoRange)
            groups_.back().range = static_cast<u32>(verbatim_.size());
        appendRecord(verbatim_, type, data, size);
        groups_.back().size += static_cast<u32>(kRecordHeaderSize + size);
        return true;
    default:
        error = describe("not a cell record", type);
        return false;
    }
    error = describe("a cell record is too short", type);
    return false;
}

bool CellTable::release(u32 r, u32 c, std::string& error)
{
    const Cell* anchor = cell(r, c);
    if (anchor == NULL || anchor->kind != kVerbatim || groups_[anchor->value].range == kNoRange) return true;
    const u32 anchorGroup = anchor->value;
    const u8* range = &verbatim_[groups_[anchorGroup].range];
    const u32 rangeType = getU16(range), rangeSize = getU16(range + 2);
    // SHRFMLA: RefU and cUse before the formula; ARRAY: RefU, flags and a reserved field.
    const u32 skip = rangeType == kShrFmla ? 8 : 12;
    if (rangeType != kTable &&
        (rangeSize < skip + 2 || getU16(range + kRecordHeaderSize + skip) + 2u + skip > rangeSize)) {
        error = describe("the cell's shared or array formula is damaged", rangeType);
        return false;
    }
    // The formula: cce u16, the tokens, then extra data of some tokens (rgcb), all carried over.
    const Bytes formula(range + kRecordHeaderSize + (rangeType != kTable ? skip : rangeSize),
                        range + kRecordHeaderSize + rangeSize);
    // The other cells refer to the anchor with PtgExp, in a data table with PtgTbl.
    const u32 reference = rangeType == kTable ? 0x02 : 0x01;

    // Every member's new records, built before anything changes.
    std::vector<std::pair<u32, Bytes> > replaced;
    for (size_t row = 0; row < rows_.size(); ++row) {
        if (rows_[row] == NULL) continue;
        const std::vector<Cell>& cells = rows_[row]->cells;
        for (size_t k = 0; k < cells.size(); ++k) {
            if (cells[k].kind != kVerbatim || cells[k].value == anchorGroup) continue;
            const Group& g = groups_[cells[k].value];
            const u8* record = &verbatim_[g.offset];
            const u32 type = getU16(record), size = getU16(record + 2);
            const u8* data = record + kRecordHeaderSize;
            // FORMULA: rw, col, ixfe, value (8), flags u16, chn u32, cce u16, rgce: one reference.
            if ((type != kFormula && type != kFormula3 && type != kFormula4) || g.range != kNoRange || size < 27 ||
                getU16(data + 20) != 5 || data[22] != reference || getU16(data + 23) != r || getU16(data + 25) != c)
                continue;
            const u8* rest = record + kRecordHeaderSize + size;  // its STRING, CONTINUE
            const size_t restSize = g.size - kRecordHeaderSize - size;
            Bytes own;
            if (rangeType == kTable) {
                // A cell of a data table keeps its last result, as a constant.
                const bool text = restSize >= kRecordHeaderSize && getU16(rest) == kString;
                if (!constantFormula(data + 6, text ? rest + kRecordHeaderSize : NULL,
                                     text ? getU16(rest + 2) : 0, own)) {
                    error = describe("a cell of the data table holds a result no formula can hold", type);
                    return false;
                }
            } else {
                own = formula;
                if (rangeType == kShrFmla &&
                    !sharedToCellFormula(&own[2], getU16(&own[0]), static_cast<u32>(row), cells[k].col)) {
                    error = describe("the shared formula holds a token this engine does not know", rangeType);
                    return false;
                }
            }
            const u32 newSize = 20 + static_cast<u32>(own.size());
            if (newSize > kMaxRecordData) {
                error = describe("a cell's own copy of the formula would not fit in its record", type);
                return false;
            }
            Bytes member;
            appendU16(member, type);
            appendU16(member, newSize);
            appendBytes(member, data, 20);
            putU16(&member[kRecordHeaderSize + 14], getU16(data + 14) & ~0x0008u);  // not shared (fShrFmla)
            appendBytes(member, &own[0], own.size());
            appendBytes(member, rest, restSize);
            replaced.push_back(std::make_pair(cells[k].value, member));
        }
    }
    for (size_t k = 0; k < replaced.size(); ++k) {
        Group& g = groups_[replaced[k].first];
        g.offset = static_cast<u32>(verbatim_.size());
        g.size = static_cast<u32>(replaced[k].second.size());
        appendBytes(verbatim_, &replaced[k].second[0], replaced[k].second.size());
    }
    return true;
}

void CellTable::setLabel(u32 r, u32 c, u32 xf, u32 sstIndex)
{
    Cell& cell = put(r, c);
    cell.kind = kLabelSst;
    cell.xf = static_cast<u16>(xf);
    cell.value = sstIndex;
}

void CellTable::value(u32 r, u32 c, CellValue& out) const
{
    out.kind = CellValue::kNone;
    const Cell* found = cell(r, c);
    if (found == NULL || found->kind == kBlank) return;
    if (found->kind == kRk) {
        out.kind = CellValue::kNumber;
        out.number = rkNumber(found->value);
        return;
    }
    if (found->kind == kLabelSst) {
        out.kind = CellValue::kSharedString;
        out.code = found->value;
        return;
    }
    const Group& g = groups_[found->value];
    const u8* record = &verbatim_[g.offset];
    const u8* end = record + g.size;
    const u32 type = getU16(record), size = getU16(record + 2);
    const u8* data = record + kRecordHeaderSize;
    if (type == kNumber && size >= 14) {
        out.kind = CellValue::kNumber;
        out.number = toDouble(getU32(data + 6), getU32(data + 10));
    } else if ((type == kLabel || type == kRString) && recordString(record, end, 6, out.text)) {
        out.kind = CellValue::kText;
    } else if (type == kBoolErr && size >= 8) {
        out.kind = data[7] != 0 ? CellValue::kError : CellValue::kBoolean;
        out.code = data[6];
    } else if ((type == kFormula || type == kFormula3 || type == kFormula4) && size >= 14) {
        if (getU16(data + 12) != 0xFFFF) {
            out.kind = CellValue::kNumber;
            out.number = toDouble(getU32(data + 6), getU32(data + 10));
        } else if (data[6] == 1 || data[6] == 2) {
            out.kind = data[6] == 1 ? CellValue::kBoolean : CellValue::kError;
            out.code = data[8];
        } else if (data[6] == 3) {
            out.kind = CellValue::kText;
            out.text.clear();
        } else if (data[6] == 0) {
            // The text result is in the STRING record after the formula and its companions.
            for (const u8* at = record; at + kRecordHeaderSize <= end; at += kRecordHeaderSize + getU16(at + 2)) {
                if (getU16(at) == kString) {
                    if (recordString(at, end, 0, out.text)) out.kind = CellValue::kText;
                    break;
                }
            }
        }
    }
}

void CellTable::extent(u32 out[4]) const
{
    out[0] = out[1] = out[2] = out[3] = 0;
    bool any = false;
    for (size_t r = 0; r < rows_.size(); ++r) {
        if (rows_[r] == NULL || rows_[r]->cells.empty()) continue;
        const std::vector<Cell>& cells = rows_[r]->cells;
        if (!any) {
            out[0] = static_cast<u32>(r);
            out[2] = cells.front().col;
            out[3] = cells.back().col + 1u;
            any = true;
        }
        out[1] = static_cast<u32>(r + 1);
        if (cells.front().col < out[2]) out[2] = cells.front().col;
        if (cells.back().col + 1u > out[3]) out[3] = cells.back().col + 1u;
    }
}

// Blocks are windows of 32 row numbers counted from the first row that has a ROW record or
// cells, as Excel writes them; empty windows are skipped.
size_t CellTable::blockCount() const
{
    size_t count = 0, first = 0, window = 0;
    for (size_t r = 0; r < rows_.size(); ++r) {
        if (!present(static_cast<u32>(r))) continue;
        if (count == 0) first = r;
        if (count == 0 || (r - first) / kRowsPerBlock != window) {
            window = (r - first) / kRowsPerBlock;
            ++count;
        }
    }
    return count;
}

void CellTable::writeRow(Bytes& out, u32 r, const u8 newRow[kRowDataSize]) const
{
    const Row& row = *rows_[r];
    u8 data[kRowDataSize];
    memcpy(data, row.hasRecord ? row.record : newRow, kRowDataSize);
    putU16(data, r);
    if (!row.cells.empty()) {
        putU16(data + 2, row.cells.front().col);
        putU16(data + 4, row.cells.back().col + 1u);
    }
    appendRecord(out, kRow, data, kRowDataSize);
}

// Adjacent blank cells become one MULBLANK, adjacent RK cells one MULRK.
void CellTable::writeCells(Bytes& out, const Row& row, u32 r) const
{
    const std::vector<Cell>& cells = row.cells;
    size_t i = 0;
    while (i < cells.size()) {
        const Cell& c = cells[i];
        if (c.kind == kVerbatim) {
            const Group& g = groups_[c.value];
            appendBytes(out, &verbatim_[g.offset], g.size);
            ++i;
            continue;
        }
        if (c.kind == kLabelSst) {
            appendCellHeader(out, kLabelSst, 10, r, c.col, c.xf);
            appendU32(out, c.value);
            ++i;
            continue;
        }
        size_t end = i + 1;
        while (end < cells.size() && cells[end].kind == c.kind && cells[end].col == cells[end - 1].col + 1) ++end;
        const size_t count = end - i;
        if (c.kind == kBlank && count == 1) {
            appendCellHeader(out, kBlank, 6, r, c.col, c.xf);
        } else if (c.kind == kBlank) {
            appendU16(out, kMulBlank);
            appendU16(out, static_cast<u32>(6 + 2 * count));
            appendU16(out, r);
            appendU16(out, c.col);
            for (size_t k = i; k < end; ++k) appendU16(out, cells[k].xf);
            appendU16(out, cells[end - 1].col);
        } else if (count == 1) {
            appendCellHeader(out, kRk, 10, r, c.col, c.xf);
            appendU32(out, c.value);
        } else {
            appendU16(out, kMulRk);
            appendU16(out, static_cast<u32>(6 + 6 * count));
            appendU16(out, r);
            appendU16(out, c.col);
            for (size_t k = i; k < end; ++k) {
                appendU16(out, cells[k].xf);
                appendU32(out, cells[k].value);
            }
            appendU16(out, cells[end - 1].col);
        }
        i = end;
    }
}

// Per block: its ROW records, then the cells of those rows, then a DBCELL holding the distance
// back to the first ROW record and, per row, the distance between the starts of successive
// rows' cells (the first measured from the second ROW record; a row without cells counts from
// where the next row's cells start).
void CellTable::write(Bytes& out, const u8 newRow[kRowDataSize], std::vector<u32>& dbcells) const
{
    dbcells.clear();
    size_t first = 0;
    while (first < rows_.size() && !present(static_cast<u32>(first))) ++first;
    std::vector<u32> blockRows;
    std::vector<size_t> cellStarts;
    for (size_t start = first; start < rows_.size(); start += kRowsPerBlock) {
        size_t stop = start + kRowsPerBlock < rows_.size() ? start + kRowsPerBlock : rows_.size();
        blockRows.clear();
        for (size_t r = start; r < stop; ++r)
            if (present(static_cast<u32>(r))) blockRows.push_back(static_cast<u32>(r));
        if (blockRows.empty()) continue;
        const size_t blockStart = out.size();
        for (size_t k = 0; k < blockRows.size(); ++k) writeRow(out, blockRows[k], newRow);
        cellStarts.clear();
        for (size_t k = 0; k < blockRows.size(); ++k) {
            cellStarts.push_back(out.size());
            writeCells(out, *rows_[blockRows[k]], blockRows[k]);
        }
        const size_t dbcell = out.size();
        dbcells.push_back(static_cast<u32>(dbcell));
        appendU16(out, kDbCell);
        appendU16(out, static_cast<u32>(4 + 2 * blockRows.size()));
        appendU32(out, static_cast<u32>(dbcell - blockStart));
        size_t previous = blockStart + kRecordHeaderSize + kRowDataSize;
        for (size_t k = 0; k < cellStarts.size(); ++k) {
            appendU16(out, static_cast<u32>((cellStarts[k] - previous) & 0xFFFFu));
            previous = cellStarts[k];
        }
    }
}

}  // namespace xls
