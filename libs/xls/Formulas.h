#ifndef VORNADEL_XLS_FORMULAS_H
#define VORNADEL_XLS_FORMULAS_H

// Parsed formulas (BIFF8 rgce token arrays): a shared formula turned into the own formula of one
// of the cells that use it, and a cell's cached result turned into a formula.

#include "Bytes.h"

namespace xls {

// Rewrites in place the tokens rgce[0..size) of a shared formula (SHRFMLA), whose relative
// references are offsets from the cell that uses it, into the tokens of the formula of the cell
// (row, col): PtgRefN and PtgAreaN become PtgRef and PtgArea, and in those and in 3-D references
// each relative row or column becomes that cell's row or column plus the offset (wrapping at the
// grid's edge, as Excel does). The relative flags stay, and no token changes size. False, with the
// tokens unchanged, when a token is not one of BIFF8's or the tokens do not fill size exactly.
bool sharedToCellFormula(u8* rgce, size_t size, u32 row, u32 col);

// Appends to out the formula (cce u16, then the tokens) of a constant that equals a FORMULA
// record's cached result: value is the record's 8-byte result field, text the data of the STRING
// record that follows it (NULL without one). False when the result is text that one token cannot
// hold (over 255 characters or continued in a CONTINUE record) or has no STRING record.
bool constantFormula(const u8* value, const u8* text, size_t textSize, Bytes& out);

}  // namespace xls

#endif
