#include "Formulas.h"

namespace xls {
namespace {

// Bytes of the token at p, with left bytes from p to the formula's end; 0 for a token that is
// not one of BIFF8's or does not fit.
size_t tokenSize(const u8* p, size_t left)
{
    const u32 ptg = p[0];
    size_t size = 0;
    if (ptg == 0x01 || ptg == 0x02) {  // PtgExp, PtgTbl
        size = 5;
    } else if (ptg >= 0x03 && ptg <= 0x16) {  // operators, PtgParen, PtgMissArg
        size = 1;
    } else if (ptg == 0x17) {  // PtgStr: cch u8, flags u8, characters
        size = left >= 3 ? 3 + p[1] * ((p[2] & 0x01) != 0 ? 2u : 1u) : 0;
    } else if (ptg == 0x19) {  // PtgAttr; tAttrChoose carries a jump table
        size = left >= 4 ? (p[1] == 0x04 ? 4 + 2 * (getU16(p + 2) + 1u) : 4) : 0;
    } else if (ptg == 0x1C || ptg == 0x1D) {  // PtgErr, PtgBool
        size = 2;
    } else if (ptg == 0x1E) {  // PtgInt
        size = 3;
    } else if (ptg == 0x1F) {  // PtgNum
        size = 9;
    } else if (ptg >= 0x20 && ptg < 0x80) {  // tokens with a class: reference, value or array
        static const u8 sizes[32] = {8, 3, 4, 5, 5, 9, 7, 7, 7, 3, 5, 9, 5, 9, 0, 0,
                                     0, 0, 0, 0, 0, 0, 0, 0, 0, 7, 7, 11, 7, 11, 0, 0};
        size = sizes[ptg & 0x1F];
    }
    return size <= left ? size : 0;
}

// A row field of a relative reference: the cell's row plus the offset, within 65,536 rows.
void moveRow(u8* field, u32 row) { putU16(field, (getU16(field) + row) & 0xFFFFu); }

// A column field (column in bits 0-13, fColRel bit 14, fRwRel bit 15): for a relative reference,
// the cell's column plus the offset, within 256 columns; the flags stay.
void moveColumn(u8* field, u32 col, u32 flags)
{
    const u32 value = getU16(field);
    if ((flags & 0x4000) != 0) putU16(field, (value & 0xC000) | ((value + col) & 0xFF));
}

}  // namespace

bool sharedToCellFormula(u8* rgce, size_t size, u32 row, u32 col)
{
    for (size_t at = 0, step = 0; at < size; at += step) {
        step = tokenSize(rgce + at, size - at);
        if (step == 0) return false;
    }
    for (size_t at = 0; at < size; at += tokenSize(rgce + at, size - at)) {
        u8* p = rgce + at;
        const u32 base = p[0] >= 0x20 && p[0] < 0x80 ? p[0] & 0x1F : 0;
        if (base == 0x0C || base == 0x1A) {  // PtgRefN, PtgRef3d: [ixti u16] rw u16, col u16
            if (base == 0x0C) p[0] = static_cast<u8>((p[0] & 0x60) | 0x04);
            u8* loc = p + (base == 0x1A ? 3 : 1);
            const u32 flags = getU16(loc + 2);
            if ((flags & 0x8000) != 0) moveRow(loc, row);
            moveColumn(loc + 2, col, flags);
        } else if (base == 0x0D || base == 0x1B) {  // PtgAreaN, PtgArea3d: [ixti] rw1, rw2, col1, col2
            if (base == 0x0D) p[0] = static_cast<u8>((p[0] & 0x60) | 0x05);
            u8* area = p + (base == 0x1B ? 3 : 1);
            const u32 first = getU16(area + 4), last = getU16(area + 6);
            if ((first & 0x8000) != 0) moveRow(area, row);
            if ((last & 0x8000) != 0) moveRow(area + 2, row);
            moveColumn(area + 4, col, first);
            moveColumn(area + 6, col, last);
        }
    }
    return true;
}

bool constantFormula(const u8* value, const u8* text, size_t textSize, Bytes& out)
{
    Bytes tokens;
    if (getU16(value + 6) != 0xFFFF) {  // a number: PtgNum
        appendU8(tokens, 0x1F);
        appendBytes(tokens, value, 8);
    } else if (value[0] == 1 || value[0] == 2) {  // a Boolean (PtgBool) or an error (PtgErr)
        appendU8(tokens, value[0] == 1 ? 0x1D : 0x1C);
        appendU8(tokens, value[2]);
    } else if (value[0] == 3) {  // empty text: PtgStr of no characters
        appendU8(tokens, 0x17);
        appendU16(tokens, 0);
    } else {  // text from the STRING record (cch u16, flags u8, characters) into PtgStr
        if (text == NULL || textSize < 3) return false;
        const size_t cch = getU16(text), width = (text[2] & 0x01) != 0 ? 2 : 1;
        if (value[0] != 0 || cch > 255 || textSize != 3 + cch * width) return false;
        appendU8(tokens, 0x17);
        appendU8(tokens, static_cast<u32>(cch));
        appendU8(tokens, text[2] & 0x01);
        appendBytes(tokens, text + 3, cch * width);
    }
    appendU16(out, static_cast<u32>(tokens.size()));
    appendBytes(out, &tokens[0], tokens.size());
    return true;
}

}  // namespace xls
