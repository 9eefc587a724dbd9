// Saving a written workbook, checked through xlrd, an independent reader: written cells read back
// exactly, everything else of the template (cells, formats, merged ranges, widths, heights, names,
// other sheets) is unchanged.

#include "CompoundFile.h"
#include "XlsBook.h"
#include "XlsTestSupport.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace xlstest;

namespace {

// Writes the cells into the fixture's active sheet and compares xlrd's view of input and output;
// the Workbook stream written goes to *stream when asked for.
void checkWrite(const fs::path& fixture, const Written& cells, Bytes* stream = nullptr)
{
    TempDir dir;
    const fs::path out = dir / "out.xls";
    ASSERT_NO_FATAL_FAILURE(writeWorkbook(fixture, out, cells));
    xls::Book book;
    ASSERT_TRUE(book.load(osPath(fixture).c_str()));
    expectOnlyWrittenCellsChanged(xlrdDump(fixture), xlrdDump(out), book.activeSheet(), cells);
    const Bytes written = workbookStream(readBytes(out));
    expectWellFormedStream(written, book.activeSheet());
    if (stream != nullptr) *stream = written;
}

// DBCELL records, one per block of rows, in the first sheet of a Workbook stream.
size_t rowBlocksOfFirstSheet(const Bytes& stream)
{
    const std::vector<Rec> recs = records(stream);
    size_t i = 0, blocks = 0;
    while (recs.at(i).type != 0x0085) ++i;
    const uint32_t bof = u32at(recs[i].data, 0);
    while (recs.at(i).pos != bof) ++i;
    for (; recs.at(i).type != 0x000A; ++i) blocks += recs[i].type == 0x00D7 ? 1 : 0;
    return blocks;
}

// Cells of the features workbook's sheet 明细 worth overwriting: numbers of a MULRK run, a
// shared-formula member, a rich-text cell, a blank bordered cell, a row-formatted row, a
// column-formatted column, rows past the end.
Written featureCells()
{
    Written cells = bomCells(3);
    cells[{2, 0}] = u"替换数字";          // RK inside a run
    cells[{5, 3}] = u"替换公式";          // a formula of the shared column (not its first cell)
    cells[{3, 4}] = u"替换富文本";        // rich text
    cells[{10, 4}] = u"空白格";           // BLANK with borders
    cells[{44, 3}] = u"黄色行的新格";     // row with its own format
    cells[{20, 5}] = u"绿色列的新格";     // column with its own format
    cells[{60, 0}] = u"末尾之后";
    return cells;
}

}  // namespace

TEST(XlsSave, WritesTheBomIntoTheBundledTemplate) { checkWrite(bundledTemplate(), bomCells(50)); }

TEST(XlsSave, WritesTheBomIntoATemplateGnumericMade) { checkWrite(dataDir() / "template-gnumeric.xls", bomCells(50)); }

TEST(XlsSave, WritesTheHeadAloneWhenThereAreNoParts) { checkWrite(bundledTemplate(), bomCells(0)); }

// Rows are grouped in blocks of 32 from row 0 of the template: 26 part rows (rows 6 to 31) end
// the first block, a 27th (row 32) opens the second.
TEST(XlsSave, WritesPartRowsThatEndTheFirstRowBlock)
{
    Bytes stream;
    ASSERT_NO_FATAL_FAILURE(checkWrite(bundledTemplate(), bomCells(26), &stream));
    EXPECT_EQ(1u, rowBlocksOfFirstSheet(stream)) << "rows 0 to 31: one block";
}

TEST(XlsSave, WritesAPartRowThatOpensTheSecondRowBlock)
{
    Bytes stream;
    ASSERT_NO_FATAL_FAILURE(checkWrite(bundledTemplate(), bomCells(27), &stream));
    EXPECT_EQ(2u, rowBlocksOfFirstSheet(stream)) << "rows 0 to 31, then row 32";
}

TEST(XlsSave, KeepsEverythingElseOfAWorkbookLibreOfficeMade)
{
    checkWrite(dataDir() / "features-libreoffice.xls", featureCells());
}

TEST(XlsSave, KeepsEverythingElseOfAWorkbookGnumericMade)
{
    checkWrite(dataDir() / "features-gnumeric.xls", featureCells());
}

TEST(XlsSave, WritesTheLastCellOfTheSheet)
{
    checkWrite(dataDir() / "features-gnumeric.xls", {{{65535, 255}, u"最后一格"}, {{65535, 0}, u"最后一行"}});
}

TEST(XlsSave, WritesIntoASheetThatIsNotActive)
{
    TempDir dir;
    const fs::path in = dataDir() / "features-libreoffice.xls", out = dir / "out.xls";
    Written cells = {{{0, 0}, u"隐藏表的新值"}, {{3, 1}, u"新行"}};
    ASSERT_NO_FATAL_FAILURE(writeWorkbook(in, out, cells, 2));
    expectOnlyWrittenCellsChanged(xlrdDump(in), xlrdDump(out), 2, cells);
}

TEST(XlsSave, KeepsMergedRangesOfTheTemplate)
{
    TempDir dir;
    const fs::path out = dir / "out.xls";
    ASSERT_NO_FATAL_FAILURE(writeWorkbook(bundledTemplate(), out, bomCells(40)));
    nlohmann::json before = xlrdDump(bundledTemplate()), after = xlrdDump(out);
    ASSERT_FALSE(after.is_null());
    EXPECT_EQ(before["sheets"][0]["merged"], after["sheets"][0]["merged"]);
    // The title and the head value cells stay merged: A1:R1, B2:C2, E2:G2.
    const auto& merged = after["sheets"][0]["merged"];
    for (auto range : {std::vector<int>{0, 1, 0, 18}, {1, 2, 1, 3}, {1, 2, 4, 7}})
        EXPECT_NE(merged.end(), std::find(merged.begin(), merged.end(), nlohmann::json(range)));
}

TEST(XlsSave, ABlankCellOfARunKeepsItsFormat)
{
    // MULBLANK over columns 1..5 with XFs 15..19; column 3 is written.
    const Bytes file = BookBuilder()
                           .cellXfs(5)
                           .sheet("S")
                           .record(0x0200, cat({le32({0, 1}), le16({1, 6, 0})}))
                           .record(0x00BE, le16({0, 1, 15, 16, 17, 18, 19, 5}))
                           .file();
    const nlohmann::json after = writeAndCompare(file, {{{0, 3}, u"中"}});
    ASSERT_FALSE(after.is_null());
    EXPECT_EQ(nlohmann::json::array({0, 3, 1, u8"中", 17}), after["sheets"][0]["cells"][2]);
}

TEST(XlsSave, ANumberOfAnRkRunKeepsItsNeighbours)
{
    // MULRK over columns 0..3 (1, 2, 3, 4 as RK integers), column 1 is written.
    const Bytes file = BookBuilder()
                           .cellXfs(2)
                           .sheet("S")
                           .record(0x0200, cat({le32({0, 1}), le16({0, 4, 0})}))
                           .record(0x00BD, cat({le16({0, 0}), le16({15}), le32({(1u << 2) | 2}), le16({16}),
                                                le32({(2u << 2) | 2}), le16({15}), le32({(3u << 2) | 2}), le16({16}),
                                                le32({(4u << 2) | 2}), le16({3})}))
                           .file();
    writeAndCompare(file, {{{0, 1}, u"二"}});
}

TEST(XlsSave, NewCellsTakeTheRowFormatThenTheColumnFormatThenTheDefault)
{
    // Row 2 carries XF 16 (fGhostDirty), column 3 carries XF 17 (COLINFO).
    const Bytes file = BookBuilder()
                           .cellXfs(3)
                           .sheet("S")
                           .record(0x007D, le16({3, 3, 2000, 17, 0, 0}))
                           .record(0x0200, cat({le32({0, 0}), le16({0, 0, 0})}))
                           .record(0x0208, cat({le16({2, 0, 0, 300, 0, 0}), le32({0x0180u | (16u << 16)})}))
                           .file();
    const nlohmann::json after = writeAndCompare(file, {{{2, 3}, u"行格式"}, {{5, 3}, u"列格式"}, {{5, 4}, u"默认"}});
    ASSERT_FALSE(after.is_null());
    const auto& got = after["sheets"][0]["cells"];
    EXPECT_EQ(16, got[0][4]) << "a new cell in a formatted row takes the row's XF";
    EXPECT_EQ(17, got[1][4]) << "else the column's XF";
    EXPECT_EQ(15, got[2][4]) << "else the default cell XF 15";
}

TEST(XlsSave, WritesIntoASheetWithoutCells)
{
    const Bytes file = BookBuilder().sheet("Empty").record(0x023E, le16({0x06B6, 0, 0, 0x40, 0, 0, 0, 0, 0})).file();
    writeAndCompare(file, {{{0, 0}, u"第一格"}, {{40, 7}, u"远处"}});
}

TEST(XlsSave, AWorkbookWithoutStringsGetsAStringTable)
{
    const Bytes file = BookBuilder()
                           .sheet("S")
                           .record(0x0200, cat({le32({0, 1}), le16({0, 1, 0})}))
                           .record(0x027E, cat({le16({0, 0, 15}), le32({(7u << 2) | 2})}))
                           .file();
    writeAndCompare(file, {{{0, 1}, u"文字"}});
    xls::Book book;
    ASSERT_TRUE(book.loadBuffer(file.data(), file.size()));
    ASSERT_TRUE(book.getSheet(0)->writeStr(0, 1, L"文字"));
    std::vector<unsigned char> out;
    ASSERT_TRUE(book.saveBuffer(out));
    bool sst = false, extsst = false;
    for (const Rec& r : records(workbookStream(out))) {
        sst = sst || r.type == 0x00FC;
        extsst = extsst || r.type == 0x00FF;
    }
    EXPECT_TRUE(sst && extsst);
}

TEST(XlsSave, ALargeWorkbookGetsADifatAndStillReads)
{
    // 30,000 rows of a unique 250-character string: the file passes 6.8 MB, beyond what the
    // header's 109 FAT sector ids cover.
    Written cells;
    for (int r = 0; r < 30000; ++r) {
        std::u16string text = u"行" + utf16(std::to_string(r)) + u":";
        while (text.size() < 250) text += static_cast<char16_t>(u'a' + (r + text.size()) % 26);
        cells[{r, 0}] = text;
    }
    TempDir dir;
    ASSERT_NO_FATAL_FAILURE(writeWorkbook(bundledTemplate(), dir / "out.xls", cells));
    const Bytes out = readBytes(dir / "out.xls");
    ASSERT_GT(out.size(), 7u * 1000 * 1000);
    EXPECT_GT(out[0x48] | (out[0x49] << 8), 0) << "DIFAT sectors";
    nlohmann::json after = xlrdDump(dir / "out.xls");
    ASSERT_FALSE(after.is_null());
    const auto& got = after["sheets"][0]["cells"];
    EXPECT_EQ(30000, after["sheets"][0]["nrows"]);
    EXPECT_EQ(utf8(cells[{29999, 0}]), got.back()[3]);
    expectWellFormedStream(workbookStream(out), 0);
}

TEST(XlsSave, SavingTwiceGivesTheSameBytes)
{
    xls::Book book;
    ASSERT_TRUE(book.load(osPath(bundledTemplate()).c_str()));
    ASSERT_TRUE(book.getSheet(0)->writeStr(6, 1, L"顶针"));
    std::vector<unsigned char> first, second;
    ASSERT_TRUE(book.saveBuffer(first));
    ASSERT_TRUE(book.saveBuffer(second));
    EXPECT_EQ(first, second);
}

TEST(XlsSave, WritesAfterASaveAreInTheNextSave)
{
    TempDir dir;
    xls::Book book;
    ASSERT_TRUE(book.load(osPath(bundledTemplate()).c_str()));
    xls::Sheet* sheet = book.getSheet(0);
    ASSERT_TRUE(sheet->writeStr(1, 1, L"第一次"));
    ASSERT_TRUE(book.save(osPath(dir / "a.xls").c_str()));
    ASSERT_TRUE(sheet->writeStr(1, 1, L"第二次"));
    ASSERT_TRUE(sheet->writeStr(7, 1, L"新"));
    ASSERT_TRUE(book.save(osPath(dir / "b.xls").c_str()));
    Written cells = {{{1, 1}, u"第二次"}, {{7, 1}, u"新"}};
    expectOnlyWrittenCellsChanged(xlrdDump(bundledTemplate()), xlrdDump(dir / "b.xls"), 0, cells);
}

TEST(XlsSave, OverwritesAnExistingFile)
{
    TempDir dir;
    const fs::path out = dir / "out.xls";
    writeBytes(out, Bytes(100, 'x'));
    ASSERT_NO_FATAL_FAILURE(writeWorkbook(bundledTemplate(), out, bomCells(1)));
    expectOnlyWrittenCellsChanged(xlrdDump(bundledTemplate()), xlrdDump(out), 0, bomCells(1));
    EXPECT_EQ(1, std::distance(fs::directory_iterator(dir.path()), fs::directory_iterator()))
        << "no temporary file is left beside the workbook";
}

TEST(XlsSave, AFailedSaveLeavesTheTargetAsItWas)
{
    TempDir dir;
    xls::Book book;
    ASSERT_TRUE(book.load(osPath(bundledTemplate()).c_str()));
    ASSERT_TRUE(book.getSheet(0)->writeStr(1, 1, L"x"));

    const fs::path missing = dir / "no-such-folder" / "out.xls";
    EXPECT_FALSE(book.save(osPath(missing).c_str()));
    EXPECT_NE(std::string(""), book.errorMessage());
    EXPECT_FALSE(fs::exists(missing.parent_path()));

    // A folder where the workbook should go: rename() cannot replace it.
    const fs::path folder = dir / "target.xls";
    fs::create_directories(folder / "inside");
    EXPECT_FALSE(book.save(osPath(folder).c_str()));
    EXPECT_EQ(0u, std::string(book.errorMessage()).find("cannot replace the workbook: ")) << book.errorMessage();
    EXPECT_TRUE(fs::is_directory(folder / "inside"));
    EXPECT_EQ(1, std::distance(fs::directory_iterator(dir.path()), fs::directory_iterator()))
        << "the temporary file is removed";
}

TEST(XlsSave, KeepsEveryOtherStreamByteForByte)
{
    for (const fs::path& fixture : {bundledTemplate(), dataDir() / "features-libreoffice.xls"}) {
        TempDir dir;
        ASSERT_NO_FATAL_FAILURE(writeWorkbook(fixture, dir / "out.xls", bomCells(5)));
        xls::CompoundFile before, after;
        std::string error;
        const Bytes in = readBytes(fixture), out = readBytes(dir / "out.xls");
        ASSERT_TRUE(before.read(in.data(), in.size(), error));
        ASSERT_TRUE(after.read(out.data(), out.size(), error));
        ASSERT_EQ(before.entries.size(), after.entries.size());
        for (size_t i = 0; i < before.entries.size(); ++i) {
            // Everything but start sector (0x74) and size (0x78) of each entry is kept.
            EXPECT_TRUE(std::equal(before.entries[i].raw, before.entries[i].raw + 0x74, after.entries[i].raw))
                << fixture << " entry " << i;
            if (static_cast<int>(i) != before.findRootStream("Workbook") && i != 0) {
                EXPECT_EQ(before.entries[i].data, after.entries[i].data) << fixture << " stream " << i;
            }
        }
    }
}

TEST(XlsSave, SavingWithoutWritesKeepsTheWorkbookStream)
{
    for (const fs::path& fixture : {bundledTemplate(), dataDir() / "template-gnumeric.xls",
                                    dataDir() / "features-libreoffice.xls", dataDir() / "features-gnumeric.xls"}) {
        xls::Book book;
        ASSERT_TRUE(book.load(osPath(fixture).c_str()));
        ASSERT_NE(nullptr, book.getSheet(book.activeSheet()));
        std::vector<unsigned char> out;
        ASSERT_TRUE(book.saveBuffer(out));
        EXPECT_TRUE(workbookStream(readBytes(fixture)) == workbookStream(out)) << fixture;
    }
}
