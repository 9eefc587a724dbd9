// Writing over formula cells: a plain formula is replaced; the first cell of a shared formula, an
// array formula or a data table can be replaced too, and the other cells of it get formulas of
// their own, so that they keep computing (or, in a data table, keep their results).

#include "Formulas.h"
#include "XlsBook.h"
#include "XlsTestSupport.h"

#include <gtest/gtest.h>

#include <cstring>

using namespace xlstest;

namespace {

const fs::path features() { return dataDir() / "features-libreoffice.xls"; }

bool isFormula(uint16_t type) { return type == 0x0006 || type == 0x0206 || type == 0x0406; }

// The records of the sheet `sheet` (counted from 0) of a Workbook stream, BOF to EOF.
std::vector<Rec> sheetRecords(const Bytes& stream, int sheet)
{
    std::vector<Rec> all = records(stream), out;
    int bofs = -1, depth = 0;
    for (const Rec& r : all) {
        if (r.type == 0x0809 && depth++ == 0) ++bofs;
        if (bofs == sheet + 1 && depth > 0) out.push_back(r);
        if (r.type == 0x000A && depth > 0) --depth;
    }
    return out;
}

// The FORMULA record of cell (row, col) among recs; empty data when there is none.
Rec formulaAt(const std::vector<Rec>& recs, int row, int col)
{
    for (const Rec& r : recs)
        if (isFormula(r.type) && u16at(r.data, 0) == row && u16at(r.data, 2) == col) return r;
    return Rec{0, 0, {}};
}

// A formula's tokens (rgce), cce bytes from offset 22.
Bytes tokens(const Rec& formula) { return Bytes(formula.data.begin() + 22, formula.data.begin() + 22 + u16at(formula.data, 20)); }

size_t count(const std::vector<Rec>& recs, uint16_t type)
{
    size_t n = 0;
    for (const Rec& r : recs) n += r.type == type;
    return n;
}

// Loads, writes text at each cell, saves into dir/out.xls; the write results in order.
std::vector<bool> writeCells(const Bytes& file, int sheetIndex, const Written& cells, const TempDir& dir)
{
    writeBytes(dir / "in.xls", file);
    xls::Book book;
    EXPECT_TRUE(book.loadBuffer(file.data(), file.size())) << book.errorMessage();
    xls::Sheet* sheet = book.getSheet(sheetIndex);
    EXPECT_NE(nullptr, sheet) << book.errorMessage();
    std::vector<bool> results;
    for (const auto& c : cells) {
        const std::wstring text(c.second.begin(), c.second.end());
        results.push_back(sheet != nullptr && sheet->writeStr(c.first.first, c.first.second, text.c_str()));
    }
    EXPECT_TRUE(book.save(osPath(dir / "out.xls").c_str())) << book.errorMessage();
    return results;
}

}  // namespace

TEST(XlsFormula, APlainFormulaIsReplacedWithItsCachedStringResult)
{
    // features-libreoffice.xls, sheet 明细: C10:C25 and the others hold formulas; E2 holds
    // CONCATENATE(...) on sheet 封面 with a cached string (FORMULA + STRING).
    const Bytes file = readBytes(features());
    const std::vector<Rec> before = sheetRecords(workbookStream(file), 0);
    int row = -1, col = -1;
    for (size_t i = 0; i + 1 < before.size(); ++i)
        if (isFormula(before[i].type) && before[i + 1].type == 0x0207) row = u16at(before[i].data, 0), col = u16at(before[i].data, 2);
    ASSERT_GE(row, 0) << "the fixture has a formula with a string result on its first sheet";
    TempDir dir;
    const Written cells = {{{row, col}, u"替换"}};
    EXPECT_EQ(std::vector<bool>{true}, writeCells(file, 0, cells, dir));
    const std::vector<Rec> after = sheetRecords(workbookStream(readBytes(dir / "out.xls")), 0);
    EXPECT_TRUE(formulaAt(after, row, col).data.empty());
    EXPECT_EQ(count(before, 0x0207) - 1, count(after, 0x0207)) << "its STRING went with it";
    expectOnlyWrittenCellsChanged(xlrdDump(dir / "in.xls"), xlrdDump(dir / "out.xls"), 0, cells);
    expectWellFormedStream(workbookStream(readBytes(dir / "out.xls")), 0);
}

TEST(XlsFormula, TheOtherCellsOfASharedFormulaGetItAsTheirOwnWhenItsFirstCellIsWritten)
{
    // Sheet 明细 (index 1): D2:D41 hold =C2*1.5 ... =C41*1.5, which LibreOffice saves as one
    // shared formula: D2's FORMULA followed by SHRFMLA, the others PtgExp to D2.
    const Bytes file = readBytes(features());
    const std::vector<Rec> before = sheetRecords(workbookStream(file), 1);
    ASSERT_EQ(1u, count(before, 0x04BC));
    TempDir dir;
    const Written cells = {{{1, 3}, u"首格"}};
    EXPECT_EQ(std::vector<bool>{true}, writeCells(file, 1, cells, dir));
    const Bytes out = workbookStream(readBytes(dir / "out.xls"));
    const std::vector<Rec> after = sheetRecords(out, 1);
    EXPECT_EQ(0u, count(after, 0x04BC)) << "no cell shares the formula any more";
    for (int row = 2; row <= 40; ++row) {
        const Rec f = formulaAt(after, row, 3);
        ASSERT_FALSE(f.data.empty()) << "D" << row + 1;
        EXPECT_EQ(0, u16at(f.data, 14) & 0x0008) << "D" << row + 1 << " is no longer marked as shared";
        // PtgRef C(row) with relative row and column, PtgNum 1.5, PtgMul.
        const Bytes t = tokens(f);
        ASSERT_EQ(15u, t.size()) << "D" << row + 1;
        EXPECT_EQ(0x04, t[0] & 0x1F) << "D" << row + 1;
        EXPECT_EQ(row, u16at(t, 1)) << "D" << row + 1;
        EXPECT_EQ(0xC002, u16at(t, 3)) << "D" << row + 1;
        double value = 0;
        std::memcpy(&value, &t[6], 8);
        EXPECT_EQ(0x1F, t[5]);
        EXPECT_EQ(1.5, value);
        EXPECT_EQ(0x05, t[14]);
        EXPECT_TRUE(f.data.size() == 22 + t.size()) << "D" << row + 1;
    }
    expectOnlyWrittenCellsChanged(xlrdDump(dir / "in.xls"), xlrdDump(dir / "out.xls"), 1, cells);
    expectWellFormedStream(out, 1);
    if (!haveProgram("soffice")) GTEST_SKIP() << "LibreOffice (soffice) is not installed";
    const Grid sheet = libreOfficeCsv(dir / "out.xls", dir.path(), true)[u8"明细"];
    ASSERT_GE(sheet.size(), 41u);
    EXPECT_EQ(u8"首格", sheet[1][3]);
    for (int row = 2; row <= 40; ++row) EXPECT_EQ("=C" + std::to_string(row + 1) + "*1.5", sheet[row][3]);
}

TEST(XlsFormula, TheOtherCellsOfAnArrayFormulaGetItsFormulaWhenItsFirstCellIsWritten)
{
    // Sheet 明细: G2:G3 hold the array formula {=A2:A3*2}: G2's FORMULA followed by ARRAY.
    const Bytes file = readBytes(features());
    const std::vector<Rec> before = sheetRecords(workbookStream(file), 1);
    Bytes arrayTokens;
    for (const Rec& r : before)
        if (r.type == 0x0221) arrayTokens.assign(r.data.begin() + 14, r.data.begin() + 14 + u16at(r.data, 12));
    ASSERT_FALSE(arrayTokens.empty());
    ASSERT_EQ(0x01, tokens(formulaAt(before, 2, 6)).at(0)) << "G3 refers to G2";
    TempDir dir;
    const Written cells = {{{1, 6}, u"数组"}};
    EXPECT_EQ(std::vector<bool>{true}, writeCells(file, 1, cells, dir));
    const std::vector<Rec> after = sheetRecords(workbookStream(readBytes(dir / "out.xls")), 1);
    EXPECT_EQ(0u, count(after, 0x0221));
    EXPECT_TRUE(arrayTokens == tokens(formulaAt(after, 2, 6)));
    expectOnlyWrittenCellsChanged(xlrdDump(dir / "in.xls"), xlrdDump(dir / "out.xls"), 1, cells);
}

TEST(XlsFormula, TheOtherCellsOfADataTableKeepTheirResultsWhenItsFirstCellIsWritten)
{
    // A data table over B2:C3: B2 is its first cell (FORMULA + TABLE); C2, B3, C3 refer to it
    // with PtgTbl and hold a number, a string (STRING after it) and a Boolean.
    auto formula = [](unsigned row, unsigned col, const Bytes& value, uint8_t reference) {
        return cat({le16({row, col, 15}), value, le16({0}), le32({0}), le16({5}), Bytes{reference}, le16({1, 1})});
    };
    const Bytes number = {0, 0, 0, 0, 0, 0, 0x14, 0x40};  // 5.0
    const Bytes text = {0, 0, 0, 0, 0, 0, 0xFF, 0xFF};
    const Bytes boolean = {1, 0, 1, 0, 0, 0, 0xFF, 0xFF};
    const Bytes file = BookBuilder()
                           .sheet("S")
                           .record(0x0006, formula(1, 1, number, 0x02))
                           .record(0x0236, cat({le16({1, 2}), Bytes{1, 2}, le16({0, 0, 0, 0, 0})}))
                           .record(0x0006, formula(1, 2, number, 0x02))
                           .record(0x0006, formula(2, 1, text, 0x02))
                           .record(0x0207, cat({le16({2}), Bytes{0, 'a', 'b'}}))
                           .record(0x0006, formula(2, 2, boolean, 0x02))
                           .file();
    TempDir dir;
    const Written cells = {{{1, 1}, u"表"}};
    EXPECT_EQ(std::vector<bool>{true}, writeCells(file, 0, cells, dir));
    const std::vector<Rec> after = sheetRecords(workbookStream(readBytes(dir / "out.xls")), 0);
    EXPECT_EQ(0u, count(after, 0x0236));
    EXPECT_TRUE((Bytes{0x1F, 0, 0, 0, 0, 0, 0, 0x14, 0x40}) == tokens(formulaAt(after, 1, 2)));
    EXPECT_TRUE((Bytes{0x17, 2, 0, 'a', 'b'}) == tokens(formulaAt(after, 2, 1)));
    EXPECT_TRUE((Bytes{0x1D, 1}) == tokens(formulaAt(after, 2, 2)));
    EXPECT_EQ(1u, count(after, 0x0207)) << "the string result stays";
    expectOnlyWrittenCellsChanged(xlrdDump(dir / "in.xls"), xlrdDump(dir / "out.xls"), 0, cells);
}

TEST(XlsFormula, ASharedFormulaWithATokenTheEngineDoesNotKnowKeepsItsFirstCell)
{
    // D1 shares a formula holding an unknown token (0x18) with D2.
    const Bytes exp = cat({Bytes{0x01}, le16({0, 3})});
    auto formula = [&](unsigned row) {
        return cat({le16({row, 3, 15}), Bytes(8, 0), le16({0x0008}), le32({0}), le16({5}), exp});
    };
    const Bytes file = BookBuilder()
                           .sheet("S")
                           .record(0x0006, formula(0))
                           .record(0x04BC, cat({le16({0, 1}), Bytes{3, 3, 0, 2}, le16({2}), Bytes{0x18, 0x01}}))
                           .record(0x0006, formula(1))
                           .file();
    xls::Book book;
    ASSERT_TRUE(book.loadBuffer(file.data(), file.size()));
    xls::Sheet* sheet = book.getSheet(0);
    ASSERT_NE(nullptr, sheet);
    EXPECT_FALSE(sheet->writeStr(0, 3, L"x"));
    EXPECT_NE(std::string::npos, std::string(book.errorMessage()).find("cell (0, 3) cannot be written"))
        << book.errorMessage();
    std::vector<unsigned char> out;
    ASSERT_TRUE(book.saveBuffer(out));
    EXPECT_TRUE(workbookStream(out) == workbookStream(file)) << "nothing changed";
    EXPECT_TRUE(sheet->writeStr(1, 3, L"x")) << "the other cell can be written";
}

TEST(XlsFormula, AFormulaUnderItsExcel4IdIsReplacedLikeAnyFormula)
{
    // FORMULA as record 0x0406, which some writers use in BIFF8 and readers take as a formula.
    const Bytes file =
        BookBuilder()
            .sheet("S")
            .record(0x0406, cat({le16({0, 0, 15}), Bytes{0, 0, 0, 0, 0, 0, 0xF0, 0x3F}, le16({0}), le32({0}), le16({3}),
                                 Bytes{0x1E, 1, 0}}))
            .file();
    TempDir dir;
    const Written cells = {{{0, 0}, u"新"}};
    EXPECT_EQ(std::vector<bool>{true}, writeCells(file, 0, cells, dir));
    const std::vector<Rec> after = sheetRecords(workbookStream(readBytes(dir / "out.xls")), 0);
    EXPECT_EQ(0u, count(after, 0x0406)) << "one record per cell";
    expectOnlyWrittenCellsChanged(xlrdDump(dir / "in.xls"), xlrdDump(dir / "out.xls"), 0, cells);
}

TEST(XlsFormula, ASharedFormulaMovedToACellTakesItsRowAndColumnWhereTheyAreRelative)
{
    // For cell (10, 5): PtgAreaN rows -1 (relative) to 1 (relative), columns -1 (relative) to 3
    // (absolute); PtgRef3d on sheet 2, row 2 and column 0 relative; PtgRefN at row 7, column 2,
    // both absolute; PtgAdd between them.
    Bytes tokens = cat({Bytes{0x2D}, le16({0xFFFF, 1, 0xC0FF, 0x8003}), Bytes{0x3A}, le16({2, 2, 0xC000}), Bytes{0x03},
                        Bytes{0x2C}, le16({7, 2}), Bytes{0x03}});
    ASSERT_TRUE(xls::sharedToCellFormula(tokens.data(), tokens.size(), 10, 5));
    EXPECT_TRUE(cat({Bytes{0x25}, le16({9, 11, 0xC004, 0x8003}), Bytes{0x3A}, le16({2, 12, 0xC005}), Bytes{0x03},
                     Bytes{0x24}, le16({7, 2}), Bytes{0x03}}) == tokens);
    // Offsets past the grid's edge wrap, as in Excel: row 0 - 1 is row 65535, column 0 - 1 is IV.
    Bytes edge = cat({Bytes{0x4C}, le16({0xFFFF, 0xC0FF})});
    ASSERT_TRUE(xls::sharedToCellFormula(edge.data(), edge.size(), 0, 0));
    EXPECT_TRUE(cat({Bytes{0x44}, le16({0xFFFF, 0xC0FF})}) == edge);
    // A token that is not BIFF8's, or tokens that end inside a token: refused, nothing changed.
    for (Bytes bad : {cat({Bytes{0x2C}, le16({1, 0xC001}), Bytes{0x18, 0x01}}), cat({Bytes{0x2C}, le16({1})})}) {
        const Bytes before = bad;
        EXPECT_FALSE(xls::sharedToCellFormula(bad.data(), bad.size(), 3, 3));
        EXPECT_TRUE(before == bad);
    }
}
