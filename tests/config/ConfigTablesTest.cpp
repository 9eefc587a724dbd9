// The configuration tables: option lists, the rewriting of a table, and what malformed tables do.

#include "support/DiskFull.hpp"
#include "support/PluginFixture.hpp"

#include "config/ConfigTables.h"
#include "platform/ReadConfigFile.h"

using vornadel_test::CrlfLines;
using vornadel_test::PluginFixture;
using vornadel_test::ReadBytes;
using vornadel_test::WriteBytes;

namespace {

class ConfigTable : public PluginFixture {
protected:
    // A table in root\, as the plug-in names it.
    std::string Table(const std::string& name) const { return Root() + "\\" + name; }
    std::filesystem::path TableFile(const std::string& name) const { return RootDir() / name; }
};

TEST(RemoveEmpty, DropsEmptyStringsAndKeepsTheOrder)
{
    std::vector<std::string> list = {"A", "", "B", "", "A"};
    EXPECT_EQ((std::vector<std::string>{"A", "B", "A"}), RemoveEmpty(list));
}

TEST(ToNXStrings, MakesLocaleTextOfEveryElement)
{
    std::vector<NXOpen::NXString> items = ToNXStrings({"顶针", ""});
    ASSERT_EQ(2u, items.size());
    EXPECT_EQ(NXOpen::NXString::Locale, items[0].GetMode());
    EXPECT_STREQ("顶针", items[0].GetLocaleText());
    EXPECT_STREQ("", items[1].GetLocaleText());
}

TEST_F(ConfigTable, HeadColumnWithAnEmptyCellOffersTheOtherTwoChoices)
{
    WriteBytes(TableFile("bom.csv"), CrlfLines({"客户名称,设计担当", "A,张工", ",", "B,"}));
    BomHeadConfig config;
    ReadBomHeadConfig(config, Table("bom.csv"));
    EXPECT_EQ((std::vector<std::string>{"A", "B"}), config.customerNames);
    EXPECT_EQ((std::vector<std::string>{"张工"}), config.designers);
    EXPECT_TRUE(config.mouldNos.empty()) << "a column the table lacks gives an empty list";
}

TEST_F(ConfigTable, StdPartTableFillsEveryListAndTheNameOrder)
{
    WriteBytes(TableFile("std.csv"),
               CrlfLines({"标准件名称,标准件类型,标准件品牌,标准件材质,标准件热处理,标准件供应商,标准件采购周期,标准件名称顺序",
                          "顶针,Φ4,盘起,SKD61,淬火,盘起工业,3天,内六角螺钉", "内六角螺钉,M6,,,,,,顶针"}));
    StdPartConfig config;
    ReadStdPartConfig(config, Table("std.csv"));
    EXPECT_EQ((std::vector<std::string>{"顶针", "内六角螺钉"}), config.names);
    EXPECT_EQ((std::vector<std::string>{"Φ4", "M6"}), config.types);
    EXPECT_EQ((std::vector<std::string>{"盘起"}), config.brands);
    EXPECT_EQ((std::vector<std::string>{"SKD61"}), config.materials);
    EXPECT_EQ((std::vector<std::string>{"淬火"}), config.heatTreatments);
    EXPECT_EQ((std::vector<std::string>{"盘起工业"}), config.suppliers);
    EXPECT_EQ((std::vector<std::string>{"3天"}), config.leadTimes);
    EXPECT_EQ((std::vector<std::string>{"内六角螺钉", "顶针"}), config.nameOrder);
}

TEST_F(ConfigTable, ReadingAMissingTableThrowsTheFileMessage)
{
    BomHeadConfig config;
    try {
        ReadBomHeadConfig(config, Table("missing.csv"));
        FAIL() << "a missing table must throw";
    } catch (const std::exception& e) {
        EXPECT_EQ("配置文件：" + Table("missing.csv") + " 不存在！", std::string(e.what()));
    }
}

TEST_F(ConfigTable, RewriteEndsEveryLineWithACommaAndFillsShortColumns)
{
    WriteBytes(TableFile("t.csv"), "a,b\r\n1,2\r\n3\r\n");
    SetConfigColumn(Table("t.csv"), "zzz", {"unused"});
    EXPECT_EQ("a,b,\r\n1,2,\r\n3,,\r\n", ReadBytes(TableFile("t.csv")));
}

TEST_F(ConfigTable, RewriteOfTheWritersOwnFormIsStable)
{
    const std::string table = "a,b,\r\n1,2,\r\n3,,\r\n";
    WriteBytes(TableFile("t.csv"), table);
    SetConfigColumn(Table("t.csv"), "zzz", {});
    EXPECT_EQ(table, ReadBytes(TableFile("t.csv"))) << "the trailing comma never becomes an extra column";
}

TEST_F(ConfigTable, SetConfigValueReplacesTheFirstValueOfTheColumn)
{
    WriteBytes(TableFile("user.csv"), CrlfLines({"出图的路径,其他", "E:\\out,x", "G:\\old,y"}));
    SetConfigValue(Table("user.csv"), "出图的路径", "F:\\bom");
    EXPECT_EQ(CrlfLines({"出图的路径,其他,", "F:\\bom,x,", "G:\\old,y,"}), ReadBytes(TableFile("user.csv")));
}

TEST_F(ConfigTable, SetConfigValueAppendsToAColumnHoldingOnlyItsName)
{
    WriteBytes(TableFile("user.csv"), CrlfLines({"出图的路径"}));
    SetConfigValue(Table("user.csv"), "出图的路径", "F:\\bom");
    EXPECT_EQ(CrlfLines({"出图的路径,", "F:\\bom,"}), ReadBytes(TableFile("user.csv")));
}

TEST_F(ConfigTable, SetConfigValueOnATableWithoutTheColumnKeepsItsContent)
{
    WriteBytes(TableFile("user.csv"), CrlfLines({"其他,备注", "1,2"}));
    SetConfigValue(Table("user.csv"), "出图的路径", "F:\\bom");
    EXPECT_EQ(CrlfLines({"其他,备注,", "1,2,"}), ReadBytes(TableFile("user.csv")));
}

TEST_F(ConfigTable, SetConfigValueOnAMissingTableCreatesAnEmptyFile)
{
    std::filesystem::create_directories(RootDir());
    SetConfigValue(Table("user.csv"), "出图的路径", "F:\\bom");
    ASSERT_TRUE(std::filesystem::exists(TableFile("user.csv")));
    EXPECT_EQ("", ReadBytes(TableFile("user.csv"))) << "no columns, so the value is remembered nowhere";
}

TEST_F(ConfigTable, SetConfigValueChangesEveryColumnOfThatName)
{
    WriteBytes(TableFile("t.csv"), CrlfLines({"x,y,x", "1,2,3"}));
    SetConfigValue(Table("t.csv"), "x", "9");
    EXPECT_EQ(CrlfLines({"x,y,x,", "9,2,9,"}), ReadBytes(TableFile("t.csv")));
}

TEST_F(ConfigTable, SetConfigColumnReplacesTheWholeColumn)
{
    WriteBytes(TableFile("bom.csv"), CrlfLines({"客户名称,设计担当", "A,张工", ",李工", "B,"}));
    SetConfigColumn(Table("bom.csv"), "客户名称", {"A", "B", "X"});
    EXPECT_EQ(CrlfLines({"客户名称,设计担当,", "A,张工,", "B,李工,", "X,,"}), ReadBytes(TableFile("bom.csv")));
}

TEST_F(ConfigTable, ValuesWithCommasQuotesOrLineBreaksReadBackUnchanged)
{
    WriteBytes(TableFile("t.csv"), CrlfLines({"v,w", "a,b"}));
    const std::vector<std::string> values = {"D:\\a,b", "say \"hi\"", "two\nlines", "cr\r\nlf", "plain"};
    SetConfigColumn(Table("t.csv"), "v", values);
    EXPECT_EQ(CrlfLines({"v,w,", "\"D:\\a,b\",b,", "\"say \"\"hi\"\"\",,", "\"two\nlines\",,", "\"cr\r\nlf\",,", "plain,,"}),
              ReadBytes(TableFile("t.csv")));
    ReadConfigFile table;
    ASSERT_TRUE(table.OpenConfigFile(Table("t.csv")));
    EXPECT_EQ(values, table.GetColumnValue("v"));
}

TEST_F(ConfigTable, RewriteThatCannotBeWrittenLeavesTheTableAsItWas)
{
    VORNADEL_NEEDS_DISK_FULL();
    // The disk fills up after 16 bytes of the new table: the rewrite fails half-way, and the
    // table keeps its old bytes and no temporary file is left beside it.
    const std::string original = CrlfLines({"客户名称", "A"});
    WriteBytes(TableFile("bom.csv"), original);
    {
        vornadel_test::DiskFullAfter diskFull(16);
        SetConfigColumn(Table("bom.csv"), "客户名称", {"A", "一个很长的客户名称", "另一个很长的客户名称"});
    }

    EXPECT_EQ(original, ReadBytes(TableFile("bom.csv")));
    const auto files = std::distance(std::filesystem::directory_iterator(RootDir()), std::filesystem::directory_iterator());
    EXPECT_EQ(1, files) << "no temporary file is left beside the table";
}

TEST_F(ConfigTable, BinaryJunkReadsAsWhatItIsAndARewriteLosesNoReadableCell)
{
    std::string junk;
    for (int i = 0; i < 4096; ++i)
        junk += static_cast<char>((i * 7919 + 13) % 256);
    WriteBytes(TableFile("junk.csv"), junk);
    BomHeadConfig config;
    ReadBomHeadConfig(config, Table("junk.csv"));  // must not crash
    SetConfigColumn(Table("junk.csv"), "no such column", {});
    std::string once = ReadBytes(TableFile("junk.csv"));
    SetConfigColumn(Table("junk.csv"), "no such column", {});
    EXPECT_EQ(once, ReadBytes(TableFile("junk.csv"))) << "a rewritten table reads back cell for cell";
}

TEST_F(ConfigTable, OneMegabyteLineIsReadAndRewrittenWhole)
{
    const std::string longCell(1 << 20, 'x');
    WriteBytes(TableFile("long.csv"), CrlfLines({"客户名称", longCell}));
    BomHeadConfig config;
    ReadBomHeadConfig(config, Table("long.csv"));
    ASSERT_EQ(1u, config.customerNames.size());
    EXPECT_EQ(longCell.size(), config.customerNames[0].size());
    SetConfigColumn(Table("long.csv"), "其他", {});
    EXPECT_EQ(CrlfLines({"客户名称,", longCell + ","}), ReadBytes(TableFile("long.csv")));
}

TEST_F(ConfigTable, InvalidGbkIsKeptByteForByte)
{
    const std::string bad = "\x81\x20\xff\xfe";
    WriteBytes(TableFile("bad.csv"), CrlfLines({"客户名称", bad}));
    BomHeadConfig config;
    ReadBomHeadConfig(config, Table("bad.csv"));
    ASSERT_EQ(1u, config.customerNames.size());
    EXPECT_EQ(bad, config.customerNames[0]);
    SetConfigColumn(Table("bad.csv"), "其他", {});
    EXPECT_EQ(CrlfLines({"客户名称,", bad + ","}), ReadBytes(TableFile("bad.csv")));
}

TEST_F(ConfigTable, TableOfOnlyAHeaderGivesEmptyLists)
{
    WriteBytes(TableFile("head.csv"), "客户名称,设计担当");
    BomHeadConfig config;
    ReadBomHeadConfig(config, Table("head.csv"));
    EXPECT_TRUE(config.customerNames.empty());
    SetConfigValue(Table("head.csv"), "客户名称", "A");
    EXPECT_EQ(CrlfLines({"客户名称,设计担当,", "A,,"}), ReadBytes(TableFile("head.csv")));
}

TEST_F(ConfigTable, UtfEightTableWithByteOrderMarkReadsAsGbk)
{
    WriteBytes(TableFile("utf8.csv"), "\xEF\xBB\xBF" + host::GbkToUtf8(CrlfLines({"客户名称", "格力"})));
    BomHeadConfig config;
    ReadBomHeadConfig(config, Table("utf8.csv"));
    EXPECT_EQ((std::vector<std::string>{"格力"}), config.customerNames);
}

}  // namespace
