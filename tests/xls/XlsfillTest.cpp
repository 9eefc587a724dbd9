// xlsfill [--sheet N] IN.xls OUT.xls: cells from standard input into the active sheet or sheet N.

#include "XlsTestSupport.h"

#include <gtest/gtest.h>

using namespace xlstest;

namespace {

CommandResult xlsfill(const fs::path& in, const fs::path& out, const std::string& input, const std::string& options = "")
{
    return run(toolCommand("xlsfill") + " " + options + toolArgument(in) + " " + toolArgument(out), input);
}

}  // namespace

TEST(Xlsfill, WritesEachLineAsAStringCell)
{
    TempDir dir;
    const std::string input = u8"1\t4\t宁波精密模塑\n"
                              u8"6\t0\t1\r\n"
                              "\n"
                              u8"6\t1\ttab\\there\\nnew line \\\\ backslash\n"
                              u8"70\t17\t末行";
    CommandResult r = xlsfill(bundledTemplate(), dir / "out.xls", input);
    ASSERT_EQ(0, r.status) << r.err;
    EXPECT_EQ("", r.err);
    Written cells = {{{1, 4}, u"宁波精密模塑"}, {{6, 0}, u"1"}, {{6, 1}, u"tab\there\nnew line \\ backslash"}, {{70, 17}, u"末行"}};
    expectOnlyWrittenCellsChanged(xlrdDump(bundledTemplate()), xlrdDump(dir / "out.xls"), 0, cells);
}

TEST(Xlsfill, WritesCharactersAboveUffffAsSurrogatePairs)
{
    TempDir dir;
    CommandResult r = xlsfill(bundledTemplate(), dir / "out.xls", u8"6\t1\t表情\U0001F600与𠀋\n");
    ASSERT_EQ(0, r.status) << r.err;
    Written cells = {{{6, 1}, u"表情\U0001F600与𠀋"}};
    expectOnlyWrittenCellsChanged(xlrdDump(bundledTemplate()), xlrdDump(dir / "out.xls"), 0, cells);
}

TEST(Xlsfill, ABadLineLeavesNoOutput)
{
    TempDir dir;
    const fs::path out = dir / "out.xls";
    const std::pair<const char*, const char*> cases[] = {
        {"1\t2\n", "expected row<TAB>col<TAB>text"},
        {"x\t2\ttext\n", "row and column must be numbers"},
        {"1\t-2\ttext\n", "row and column must be numbers"},
        {"1\t2\tbad \\q escape\n", "unknown escape \\q"},
        {"1\t2\tends with \\\n", "a lone backslash"},
        {"1\t2\t\xC3\x28\n", "not UTF-8"},
        {"65536\t0\ttoo far\n", "row 65536 is outside the sheet"},
        {"0\t256\ttoo far\n", "column 256 is outside the sheet"},
    };
    for (const auto& c : cases) {
        CommandResult r = xlsfill(bundledTemplate(), out, std::string("1\t1\tgood\n") + c.first);
        EXPECT_EQ(1, r.status) << c.first;
        EXPECT_NE(std::string::npos, r.err.find("line 2: ")) << r.err;
        EXPECT_NE(std::string::npos, r.err.find(c.second)) << r.err;
        EXPECT_FALSE(fs::exists(out)) << c.first;
    }
}

TEST(Xlsfill, ReportsTheEngineMessageForABadWorkbook)
{
    TempDir dir;
    writeBytes(dir / "in.xls", Bytes{'n', 'o', 't', ' ', 'x', 'l', 's'});
    CommandResult r = xlsfill(dir / "in.xls", dir / "out.xls", "1\t1\tx\n");
    EXPECT_EQ(1, r.status);
    EXPECT_NE(std::string::npos, r.err.find("not a compound file")) << r.err;
    EXPECT_FALSE(fs::exists(dir / "out.xls"));
}

TEST(Xlsfill, ReportsAFailedSave)
{
    TempDir dir;
    CommandResult r = xlsfill(bundledTemplate(), dir / "missing" / "out.xls", "1\t1\tx\n");
    EXPECT_EQ(1, r.status);
    EXPECT_NE(std::string::npos, r.err.find("cannot create a temporary file")) << r.err;
}

TEST(Xlsfill, ShowsUsageWithoutTwoFileNames)
{
    CommandResult r = run(toolCommand("xlsfill") + " only-one.xls");
    EXPECT_EQ(2, r.status);
    EXPECT_NE(std::string::npos, r.err.find("usage: xlsfill [--sheet N] IN.xls OUT.xls")) << r.err;
}

TEST(Xlsfill, WritesIntoTheSheetGivenWithSheet)
{
    TempDir dir;
    CommandResult r = xlsfill(bundledTemplate(), dir / "out.xls", u8"0\t5\t说明\n", "--sheet 1 ");
    ASSERT_EQ(0, r.status) << r.err;
    expectOnlyWrittenCellsChanged(xlrdDump(bundledTemplate()), xlrdDump(dir / "out.xls"), 1, {{{0, 5}, u"说明"}});
    r = xlsfill(bundledTemplate(), dir / "none.xls", u8"0\t5\t说明\n", "--sheet 2 ");
    EXPECT_EQ(1, r.status);
    EXPECT_NE(std::string::npos, r.err.find("there is no sheet 2")) << r.err;
    EXPECT_FALSE(fs::exists(dir / "none.xls"));
    EXPECT_EQ(2, xlsfill(bundledTemplate(), dir / "out.xls", "", "--sheet x ").status);
}
