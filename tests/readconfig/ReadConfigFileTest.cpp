// ReadConfigFile: the configuration table reader, by the rules of its dialect and on malformed
// tables. Tables are written as raw bytes; narrow literals here are GBK, as the tables are.

#include "platform/MappedDrives.h"

#include "platform/ReadConfigFile.h"

#include <string>
#include <vector>

namespace {

using namespace std::string_literals;
using Strings = std::vector<std::string>;
using Rows = std::vector<Strings>;

class ReadConfigFileTest : public MappedDrives {
protected:
    // Writes bytes as C:\t.csv and opens that table.
    bool Open(const std::string& bytes) {
        WriteBytes(C() / "t.csv", bytes);
        return table_.OpenConfigFile(W("C:\\t.csv"));
    }

    ReadConfigFile table_;
};

class ReadConfigFileDialect : public ReadConfigFileTest {};
class ReadConfigFileQuotes : public ReadConfigFileTest {};
class ReadConfigFileMalformed : public ReadConfigFileTest {};
class ReadConfigFileLifecycle : public ReadConfigFileTest {};

TEST_F(ReadConfigFileDialect, ReadsColumnsByName) {
    ASSERT_TRUE(Open("标准件名称,标准件品牌\r\n内六角螺钉,米思米\r\n顶针,盘起\r\n"));
    EXPECT_EQ((Strings{"标准件名称", "标准件品牌"}), table_.GetColumnNames());
    EXPECT_EQ((Strings{"内六角螺钉", "顶针"}), table_.GetColumnValue("标准件名称"));
    EXPECT_EQ((Strings{"米思米", "盘起"}), table_.GetColumnValue("标准件品牌"));
}

TEST_F(ReadConfigFileDialect, TrailingCommaMakesNoExtraColumn) {
    ASSERT_TRUE(Open("a,b,\r\n1,2,\r\n"));
    EXPECT_EQ((Strings{"a", "b"}), table_.GetColumnNames());
    EXPECT_EQ((Rows{{"1", "2"}}), table_.GetColumnValues());
}

TEST_F(ReadConfigFileDialect, RewrittenTableReadsBackWithShortColumnEmpty) {
    // The writer's form of a table whose column a holds 1, 3 and column b holds 2.
    ASSERT_TRUE(Open("a,b,\r\n1,2,\r\n3,,\r\n"));
    EXPECT_EQ((Strings{"1", "3"}), table_.GetColumnValue("a"));
    EXPECT_EQ((Strings{"2", ""}), table_.GetColumnValue("b"));
}

TEST_F(ReadConfigFileDialect, InteriorEmptyCellIsACell) {
    ASSERT_TRUE(Open("a,b,c\n1,,3\n"));
    EXPECT_EQ((Strings{""}), table_.GetColumnValue("b"));
    EXPECT_EQ((Strings{"3"}), table_.GetColumnValue("c"));
}

TEST_F(ReadConfigFileDialect, EmptyCellsInAColumnAreKeptInRowOrder) {
    ASSERT_TRUE(Open("模具编号,\r\nA,\r\n,\r\nB,\r\n"));
    EXPECT_EQ((Strings{"A", "", "B"}), table_.GetColumnValue("模具编号"));
}

TEST_F(ReadConfigFileDialect, OnlyTheLastCommaIsDropped) {
    ASSERT_TRUE(Open("a,b,,\r\n"));
    EXPECT_EQ((Strings{"a", "b", ""}), table_.GetColumnNames());
}

TEST_F(ReadConfigFileDialect, LfLineEnds) {
    ASSERT_TRUE(Open("a,b\n1,2\n3,4"));
    EXPECT_EQ((Strings{"1", "3"}), table_.GetColumnValue("a"));
    EXPECT_EQ((Strings{"2", "4"}), table_.GetColumnValue("b"));
}

TEST_F(ReadConfigFileDialect, LoneCrEndsALine) {
    ASSERT_TRUE(Open("a,b\r1,2\r3,4\r"));
    EXPECT_EQ((Strings{"1", "3"}), table_.GetColumnValue("a"));
}

TEST_F(ReadConfigFileDialect, MixedLineEnds) {
    ASSERT_TRUE(Open("a\r\n1\n2\r3\r\n"));
    EXPECT_EQ((Strings{"1", "2", "3"}), table_.GetColumnValue("a"));
}

TEST_F(ReadConfigFileDialect, BlankLinesAreIgnored) {
    ASSERT_TRUE(Open("\r\n\na,b\r\n\r\n1,2\n\n\r\r\n3,4\r\n\r\n"));
    EXPECT_EQ((Strings{"a", "b"}), table_.GetColumnNames());
    EXPECT_EQ((Strings{"1", "3"}), table_.GetColumnValue("a"));
}

TEST_F(ReadConfigFileDialect, LineOfCommasIsARowOfEmptyCells) {
    ASSERT_TRUE(Open("a,b,\r\nx,y,\r\n,,\r\nz,w,\r\n"));
    EXPECT_EQ((Strings{"x", "", "z"}), table_.GetColumnValue("a"));
    EXPECT_EQ((Strings{"y", "", "w"}), table_.GetColumnValue("b"));
}

TEST_F(ReadConfigFileDialect, ValuesAreNotTrimmed) {
    ASSERT_TRUE(Open(" 文件夹名称 ,是否启用\r\n A ,\tY \r\n"));
    EXPECT_EQ((Strings{" A "}), table_.GetColumnValue(" 文件夹名称 "));
    EXPECT_EQ((Strings{"\tY "}), table_.GetColumnValue("是否启用"));
    EXPECT_EQ((Strings{}), table_.GetColumnValue("文件夹名称"));
}

TEST_F(ReadConfigFileDialect, ShortRowGivesEmptyCells) {
    ASSERT_TRUE(Open("a,b,c\r\n1\r\n"));
    EXPECT_EQ((Strings{"1"}), table_.GetColumnValue("a"));
    EXPECT_EQ((Strings{""}), table_.GetColumnValue("c"));
    EXPECT_EQ((Rows{{"1", "", ""}}), table_.GetColumnValues());
}

TEST_F(ReadConfigFileDialect, LongRowDropsCellsWithoutName) {
    ASSERT_TRUE(Open("a,b\r\n1,2,3,4\r\n"));
    EXPECT_EQ((Strings{"2"}), table_.GetColumnValue("b"));
    EXPECT_EQ((Rows{{"1", "2"}}), table_.GetColumnValues());
}

TEST_F(ReadConfigFileDialect, DuplicateColumnNameFirstWins) {
    ASSERT_TRUE(Open("a,b,a\r\n1,2,3\r\n"));
    EXPECT_EQ((Strings{"a", "b", "a"}), table_.GetColumnNames());
    EXPECT_EQ((Strings{"1"}), table_.GetColumnValue("a"));
}

TEST_F(ReadConfigFileDialect, UnknownColumnGivesNoValues) {
    ASSERT_TRUE(Open("改模颜色\r\n3\r\n"));
    EXPECT_TRUE(table_.GetColumnValue("出图的路径").empty());
}

TEST_F(ReadConfigFileDialect, Utf8ByteOrderMarkTableIsReadAsGbk) {
    ASSERT_TRUE(Open("\xEF\xBB\xBF"s + u8"标准件图层,\r\n12,\r\n模板\u20AC\u0E01,\r\n"));
    EXPECT_EQ((Strings{"标准件图层"}), table_.GetColumnNames());
    EXPECT_EQ((Strings{"12", "模板\x80?"}), table_.GetColumnValue("标准件图层"));
}

TEST_F(ReadConfigFileDialect, Utf8TableWithoutMarkIsReadAsGbk) {
    // What most editors save: UTF-8 without a byte-order mark.
    ASSERT_TRUE(Open(u8"标准件名称,标准件品牌,\r\n内六角螺钉,米思米,\r\n顶针\u20AC\u0E01,,\r\n"s));
    EXPECT_EQ((Strings{"标准件名称", "标准件品牌"}), table_.GetColumnNames());
    EXPECT_EQ((Strings{"内六角螺钉", "顶针\x80?"}), table_.GetColumnValue("标准件名称"));
}

TEST_F(ReadConfigFileDialect, GbkTableIsTakenByteForByte) {
    ASSERT_TRUE(Open("标准件名称,\r\n内六角螺钉,\r\n"));
    EXPECT_EQ((Strings{"内六角螺钉"}), table_.GetColumnValue("标准件名称"));
}

TEST_F(ReadConfigFileDialect, Utf8WithOneIllFormedByteIsTakenAsGbk) {
    // Only a table that is UTF-8 throughout is converted; anything else keeps its bytes.
    const std::string bytes = "a\r\n"s + u8"标" + "\xFF\r\n";
    ASSERT_TRUE(Open(bytes));
    EXPECT_EQ((Strings{u8"标" "\xFF"}), table_.GetColumnValue("a"));
}

TEST_F(ReadConfigFileDialect, AsciiTableIsTheSameInEitherEncoding) {
    ASSERT_TRUE(Open("a,b\r\n1,\x7F\r\n"));
    EXPECT_EQ((Rows{{"1", "\x7F"}}), table_.GetColumnValues());
}

TEST_F(ReadConfigFileQuotes, QuotedCellHoldsCommasQuotesAndLineBreaks) {
    ASSERT_TRUE(Open("a,b,\r\n\"x,y\",\"say \"\"hi\"\"\",\r\n\"two\r\nlines\",\"\",\r\n"));
    EXPECT_EQ((Strings{"x,y", "two\r\nlines"}), table_.GetColumnValue("a"));
    EXPECT_EQ((Strings{"say \"hi\"", ""}), table_.GetColumnValue("b"));
}

TEST_F(ReadConfigFileQuotes, QuotedNamesAreNames) {
    ASSERT_TRUE(Open("\"出图的路径\",\"a,b\"\r\nE:\\out,1\r\n"));
    EXPECT_EQ((Strings{"出图的路径", "a,b"}), table_.GetColumnNames());
    EXPECT_EQ((Strings{"E:\\out"}), table_.GetColumnValue("出图的路径"));
}

TEST_F(ReadConfigFileQuotes, QuotedEmptyCellAtLineEndIsACell) {
    ASSERT_TRUE(Open("a,\"\"\r\n"));
    EXPECT_EQ((Strings{"a", ""}), table_.GetColumnNames());
}

TEST_F(ReadConfigFileQuotes, QuoteInsideUnquotedCellIsOrdinary) {
    ASSERT_TRUE(Open("a,b\r\n5\",x\"y\r\n"));
    EXPECT_EQ((Strings{"5\""}), table_.GetColumnValue("a"));
    EXPECT_EQ((Strings{"x\"y"}), table_.GetColumnValue("b"));
}

TEST_F(ReadConfigFileQuotes, TextAfterClosingQuoteIsKept) {
    ASSERT_TRUE(Open("a,b\r\n\"ab\"cd,2\r\n"));
    EXPECT_EQ((Strings{"abcd"}), table_.GetColumnValue("a"));
    EXPECT_EQ((Strings{"2"}), table_.GetColumnValue("b"));
}

TEST_F(ReadConfigFileQuotes, QuoteThatNeverClosesIsOrdinary) {
    ASSERT_TRUE(Open("a,b\r\n\"x,y\r\n1,2\r\n"));
    EXPECT_EQ((Strings{"\"x", "1"}), table_.GetColumnValue("a"));
    EXPECT_EQ((Strings{"y", "2"}), table_.GetColumnValue("b"));
}

TEST_F(ReadConfigFileMalformed, OnlyHeaderGivesNoValues) {
    ASSERT_TRUE(Open("a,b,\r\n"));
    EXPECT_EQ((Strings{"a", "b"}), table_.GetColumnNames());
    EXPECT_TRUE(table_.GetColumnValue("a").empty());
    EXPECT_TRUE(table_.GetColumnValues().empty());
}

TEST_F(ReadConfigFileMalformed, EmptyFileIsAnEmptyTable) {
    EXPECT_TRUE(Open(""));
    EXPECT_TRUE(table_.GetColumnNames().empty());
    EXPECT_TRUE(Open("\r\n\r\n"));
    EXPECT_TRUE(table_.GetColumnNames().empty());
}

TEST_F(ReadConfigFileMalformed, InvalidGbkIsKeptAsItStands) {
    ASSERT_TRUE(Open("a,b\r\n\xFF\xFE,\x81\r\n"));
    EXPECT_EQ((Rows{{"\xFF\xFE", "\x81"}}), table_.GetColumnValues());
}

TEST_F(ReadConfigFileMalformed, NulBytesAreKept) {
    ASSERT_TRUE(Open("a\0b,c\r\n1\0,2\r\n"s));
    EXPECT_EQ((Strings{"a\0b"s, "c"}), table_.GetColumnNames());
    EXPECT_EQ((Strings{"1\0"s}), table_.GetColumnValue("a\0b"s));
}

TEST_F(ReadConfigFileMalformed, NulBytesSurviveUtf8Conversion) {
    ASSERT_TRUE(Open("\xEF\xBB\xBF" "a\0"s + u8"标\r\n"));
    EXPECT_EQ((Strings{"a\0标"s}), table_.GetColumnNames());
    ASSERT_TRUE(Open("a\0"s + u8"标\r\n"));
    EXPECT_EQ((Strings{"a\0标"s}), table_.GetColumnNames());
}

TEST_F(ReadConfigFileMalformed, OneMegabyteLineIsReadWhole) {
    const std::string cell(1 << 20, 'x');
    ASSERT_TRUE(Open("a,b,\r\n" + cell + ",2,\r\n3,4,\r\n"));
    const Strings a = table_.GetColumnValue("a");
    ASSERT_EQ(2u, a.size());
    EXPECT_EQ(cell, a[0]);
    EXPECT_EQ((Strings{"2", "4"}), table_.GetColumnValue("b"));
}

TEST_F(ReadConfigFileMalformed, BinaryJunkReadsAsWhatItIs) {
    std::string junk;
    unsigned state = 12345;
    for (int i = 0; i < 65536; ++i) {
        state = state * 1103515245u + 12345u;
        junk += static_cast<char>(state >> 16);
    }
    ASSERT_TRUE(Open(junk));
    const size_t columns = table_.GetColumnNames().size();
    EXPECT_GT(columns, 0u);
    for (const Strings& row : table_.GetColumnValues()) {
        EXPECT_EQ(columns, row.size());
    }
}

TEST_F(ReadConfigFileLifecycle, MissingFileReadsAsEmptyTable) {
    EXPECT_FALSE(table_.OpenConfigFile(W("C:\\missing.csv")));
    EXPECT_TRUE(table_.GetColumnNames().empty());
    EXPECT_TRUE(table_.GetColumnValue("a").empty());
    EXPECT_TRUE(table_.GetColumnValues().empty());
}

TEST_F(ReadConfigFileLifecycle, UnmappedDriveReadsAsEmptyTable) {
    EXPECT_FALSE(table_.OpenConfigFile(W("E:\\config\\standard.csv")));
    EXPECT_TRUE(table_.GetColumnNames().empty());
}

TEST_F(ReadConfigFileLifecycle, FolderReadsAsEmptyTable) {
    std::filesystem::create_directory(C() / "config");
    EXPECT_FALSE(table_.OpenConfigFile(W("C:\\config")));
    EXPECT_TRUE(table_.GetColumnNames().empty());
}

TEST_F(ReadConfigFileLifecycle, OpensChineseFileNameThroughDriveMapping) {
    std::filesystem::create_directories(D() / "MYTOOL" / U8(u8"配置"));
    WriteBytes(D() / "MYTOOL" / U8(u8"配置") / U8(u8"图层.csv"), "标准件图层,\r\n20,\r\n");
    ASSERT_TRUE(table_.OpenConfigFile(W("D:\\MYTOOL\\配置\\图层.csv")));
    EXPECT_EQ((Strings{"20"}), table_.GetColumnValue("标准件图层"));
}

TEST_F(ReadConfigFileLifecycle, CloseEmptiesTheTable) {
    ASSERT_TRUE(Open("a\r\n1\r\n"));
    table_.CloseConfigFile();
    EXPECT_TRUE(table_.GetColumnNames().empty());
    EXPECT_TRUE(table_.GetColumnValue("a").empty());
}

TEST_F(ReadConfigFileLifecycle, ReopeningReplacesThePreviousTable) {
    ASSERT_TRUE(Open("a\r\n1\r\n"));
    ASSERT_TRUE(Open("b\r\n2\r\n"));
    EXPECT_EQ((Strings{"b"}), table_.GetColumnNames());
    EXPECT_FALSE(table_.OpenConfigFile(W("C:\\missing.csv")));
    EXPECT_TRUE(table_.GetColumnNames().empty());
}

TEST_F(ReadConfigFileLifecycle, TableEditedBetweenTwoOpensIsReadAfresh) {
    ASSERT_TRUE(Open("改模颜色\r\n186\r\n"));
    ASSERT_TRUE(Open("改模颜色\r\n3\r\n"));
    EXPECT_EQ((Strings{"3"}), table_.GetColumnValue("改模颜色"));
}

}  // namespace
