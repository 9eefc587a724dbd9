// The cell table of a written sheet, record by record: runs split around a written cell, ROW
// records, DBCELL offsets, and what happens to the rows of a LibreOffice template.

#include "CellTable.h"
#include "Records.h"
#include "XlsBook.h"
#include "XlsTestSupport.h"

#include <gtest/gtest.h>

using namespace xlstest;

namespace {

Bytes record(uint16_t type, const Bytes& data) { return cat({le16({type, static_cast<unsigned>(data.size())}), data}); }

// ROW data for rows the table adds: height 300 twips, flags as Excel writes a plain row.
const Bytes kNewRow = cat({le16({0, 0, 0, 300, 0, 0}), le32({0x000F0100})});

Bytes write(const xls::CellTable& table, std::vector<xls::u32>& dbcells)
{
    Bytes out;
    table.write(out, kNewRow.data(), dbcells);
    return out;
}

void take(xls::CellTable& table, uint16_t type, const Bytes& data)
{
    std::string error;
    ASSERT_TRUE(table.take(type, data.data(), data.size(), error)) << error;
}

// The first record of `type` for `row` in the Workbook stream: in the bundled template, a record
// of its first sheet, which comes first.
Rec firstRecordFor(const Bytes& file, uint16_t type, uint16_t row)
{
    for (const Rec& r : records(workbookStream(file)))
        if (r.type == type && r.data.size() >= 2 && u16at(r.data, 0) == row) return r;
    return {};
}

}  // namespace

TEST(XlsCellTable, SplitsABlankRunAroundAWrittenCell)
{
    xls::CellTable table;
    take(table, xls::kMulBlank, le16({0, 1, 15, 16, 17, 18, 19, 5}));
    table.setLabel(0, 3, 17, 42);
    std::vector<xls::u32> dbcells;
    const Bytes expected = cat({record(0x0208, cat({le16({0, 1, 6, 300, 0, 0}), le32({0x000F0100})})),
                                record(0x00BE, le16({0, 1, 15, 16, 2})),
                                record(0x00FD, cat({le16({0, 3, 17}), le32({42})})),
                                record(0x00BE, le16({0, 4, 18, 19, 5})),
                                record(0x00D7, cat({le32({62}), le16({0})}))});
    EXPECT_EQ(expected, write(table, dbcells));
    EXPECT_EQ(std::vector<xls::u32>{62}, dbcells);
}

TEST(XlsCellTable, SplitsAnRkRunAndLeavesSingleCellsAsRk)
{
    xls::CellTable table;
    take(table, xls::kMulRk, cat({le16({4, 0, 15}), le32({6}), le16({16}), le32({10}), le16({17}), le32({14}), le16({2})}));
    table.setLabel(4, 1, 16, 0);
    std::vector<xls::u32> dbcells;
    const Bytes expected = cat({record(0x0208, cat({le16({4, 0, 3, 300, 0, 0}), le32({0x000F0100})})),
                                record(0x027E, cat({le16({4, 0, 15}), le32({6})})),
                                record(0x00FD, cat({le16({4, 1, 16}), le32({0})})),
                                record(0x027E, cat({le16({4, 2, 17}), le32({14})})),
                                record(0x00D7, cat({le32({62}), le16({0})}))});
    EXPECT_EQ(expected, write(table, dbcells));
}

TEST(XlsCellTable, JoinsAdjacentBlanksIntoOneRun)
{
    xls::CellTable table;
    take(table, xls::kBlank, le16({0, 2, 20}));
    take(table, xls::kBlank, le16({0, 3, 21}));
    std::vector<xls::u32> dbcells;
    const Bytes out = write(table, dbcells);
    EXPECT_EQ(record(0x00BE, le16({0, 2, 20, 21, 3})), Bytes(out.begin() + 20, out.begin() + 34));
}

TEST(XlsCellTable, GroupsRowsInBlocksOf32WithTheirDbcell)
{
    // Rows 5 and 36 have cells; row 37 has a ROW record only. Blocks count from row 5: rows
    // 5..36 form the first block, row 37 the second.
    xls::CellTable table;
    table.setLabel(5, 0, 15, 1);
    table.setLabel(36, 2, 15, 2);
    take(table, xls::kRow, cat({le16({37, 0, 0, 500, 0, 0}), le32({0x000F0140})}));
    std::vector<xls::u32> dbcells;
    const Bytes out = write(table, dbcells);
    const Bytes row5 = record(0x0208, cat({le16({5, 0, 1, 300, 0, 0}), le32({0x000F0100})}));
    const Bytes row36 = record(0x0208, cat({le16({36, 2, 3, 300, 0, 0}), le32({0x000F0100})}));
    const Bytes row37 = record(0x0208, cat({le16({37, 0, 0, 500, 0, 0}), le32({0x000F0140})}));
    const Bytes expected = cat({row5, row36, record(0x00FD, cat({le16({5, 0, 15}), le32({1})})),
                                record(0x00FD, cat({le16({36, 2, 15}), le32({2})})),
                                // at 68, after 2 ROW (40) and 2 LABELSST (28): row 5's cells start
                                // 20 bytes after the second ROW record, row 36's 14 bytes later
                                record(0x00D7, cat({le32({68}), le16({20, 14})})),
                                // a block of a row without cells: its cells "start" where the DBCELL does
                                row37, record(0x00D7, cat({le32({20}), le16({0})}))});
    EXPECT_EQ(expected, out);
    EXPECT_EQ((std::vector<xls::u32>{68, 100}), dbcells);
    EXPECT_EQ(2u, table.blockCount());
}

TEST(XlsCellTable, KeepsAFormulaWithItsStringResult)
{
    xls::CellTable table;
    const Bytes formula = cat({le16({2, 1, 15}), Bytes{0, 0, 0, 0, 0, 0, 0xFF, 0xFF}, le16({0}), le32({0}), le16({3}),
                               Bytes{0x17, 0, 0}});
    const Bytes string = cat({le16({1}), Bytes{0, 'x'}});
    take(table, xls::kFormula, formula);
    take(table, xls::kString, string);
    take(table, xls::kBlank, le16({2, 3, 15}));
    EXPECT_TRUE(table.hasFormulas());
    table.setLabel(2, 3, 15, 0);
    std::vector<xls::u32> dbcells;
    const Bytes out = write(table, dbcells);
    const Bytes cells(out.begin() + 20, out.end() - 10);
    EXPECT_EQ(cat({record(0x0006, formula), record(0x0207, string), record(0x00FD, cat({le16({2, 3, 15}), le32({0})}))}), cells);
}

TEST(XlsCellTable, HoldsRowsCellsAndTheRecordsOfAFormula)
{
    for (uint16_t type : {xls::kRow, xls::kDbCell, xls::kBlank, xls::kMulBlank, xls::kRk, xls::kMulRk, xls::kNumber,
                          xls::kLabelSst, xls::kLabel, xls::kRString, xls::kBoolErr, xls::kFormula, xls::kString,
                          xls::kShrFmla, xls::kArray, xls::kTable})
        EXPECT_TRUE(xls::CellTable::holds(type)) << "record 0x" << std::hex << type << " is part of the cell table";
    EXPECT_FALSE(xls::CellTable::holds(xls::kContinue)) << "a CONTINUE is the table's only after a STRING";
    EXPECT_FALSE(xls::CellTable::holds(xls::kDimensions)) << "DIMENSIONS comes before the table";
    EXPECT_FALSE(xls::CellTable::holds(xls::kWindow2)) << "WINDOW2 comes after it";
}

TEST(XlsCellTable, RefusesACellRecordTooShort)
{
    xls::CellTable table;
    std::string error;
    const Bytes shortLabel = le16({0, 0, 15});
    EXPECT_FALSE(table.take(xls::kLabelSst, shortLabel.data(), shortLabel.size(), error));
    EXPECT_NE(std::string::npos, error.find("too short")) << error;
}

// The template's ROW record of row 2 (sheet row index 1), as LibreOffice wrote it:
// 01 00 00 00 12 00 8D 01 00 00 00 00 40 01 0F 00 (columns 0..17, 397 twips, fUnsynced).
TEST(XlsCellTable, KeepsTheRowRecordsOfTheTemplate)
{
    const Bytes in = readBytes(bundledTemplate());
    const Rec before = firstRecordFor(in, 0x0208, 1);
    ASSERT_EQ(cat({le16({1, 0, 18, 0x018D, 0, 0}), le32({0x000F0140})}), before.data);
    xls::Book book;
    ASSERT_TRUE(book.loadBuffer(in.data(), in.size()));
    ASSERT_TRUE(book.getSheet(0)->writeStr(1, 4, L"客户"));
    ASSERT_TRUE(book.getSheet(0)->writeStr(6, 17, L"时间"));
    std::vector<unsigned char> out;
    ASSERT_TRUE(book.saveBuffer(out));
    EXPECT_EQ(before.data, firstRecordFor(out, 0x0208, 1).data);
    // A new row looks like LibreOffice's own: the sheet's default height (0x015F twips) and flags.
    EXPECT_EQ(cat({le16({6, 17, 18, 0x015F, 0, 0}), le32({0x000F0140})}), firstRecordFor(out, 0x0208, 6).data);
}

TEST(XlsCellTable, IndexPointsAtEachDbcellAndDimensionsCoverTheCells)
{
    xls::Book book;
    ASSERT_TRUE(book.load(osPath(bundledTemplate()).c_str()));
    for (int r = 6; r < 106; ++r) ASSERT_TRUE(book.getSheet(0)->writeStr(r, 1, L"顶针"));
    std::vector<unsigned char> out;
    ASSERT_TRUE(book.saveBuffer(out));
    const std::vector<Rec> recs = records(workbookStream(out));
    size_t bof = 0, eof = 0;
    for (const Rec& r : recs) {
        if (r.type != 0x0085) continue;
        const uint32_t pos = u32at(r.data, 0);
        while (recs[bof].pos != pos) ++bof;
        break;
    }
    for (eof = bof; recs[eof].type != 0x000A; ++eof) {
    }
    // LibreOffice wrote neither UNCALCED nor INDEX. The sheet has a formula (项数), so UNCALCED
    // asks for recalculation on opening, and INDEX follows it.
    EXPECT_EQ(0x005E, recs[bof + 1].type);
    ASSERT_EQ(0x020B, recs[bof + 2].type);
    const Bytes& index = recs[bof + 2].data;
    EXPECT_EQ(le32({0, 0, 106}), Bytes(index.begin(), index.begin() + 12)) << "rows 0..105";
    std::vector<uint32_t> dbcells;
    uint32_t defColWidth = 0;
    Bytes dimensions;
    for (size_t i = bof; i < eof; ++i) {
        if (recs[i].type == 0x00D7) dbcells.push_back(recs[i].pos);
        if (recs[i].type == 0x0055) defColWidth = recs[i].pos;
        if (recs[i].type == 0x0200) dimensions = recs[i].data;
    }
    ASSERT_EQ(4u, dbcells.size()) << "rows 0..105 in blocks of 32";
    ASSERT_EQ(16 + 4 * dbcells.size(), index.size());
    for (size_t k = 0; k < dbcells.size(); ++k)
        EXPECT_EQ(le32({dbcells[k]}), Bytes(index.begin() + 16 + 4 * k, index.begin() + 20 + 4 * k));
    EXPECT_EQ(le32({defColWidth}), Bytes(index.begin() + 12, index.begin() + 16)) << "ibXF: DEFCOLWIDTH";
    EXPECT_EQ(cat({le32({0, 106}), le16({0, 18, 0})}), dimensions);
}
