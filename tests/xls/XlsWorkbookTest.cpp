// The platform's Workbook interface over the engine (src/platform/XlsWorkbook.cpp), as the BOM
// export uses it: Windows paths in GBK, wide text, the engine's messages.

#include "XlsTestSupport.h"
#include "platform/Workbook.h"

#include <gtest/gtest.h>

#include <cstdlib>

using namespace xlstest;

namespace {

// Maps drive X: onto a temporary folder for the test's lifetime.
class XlsWorkbook : public ::testing::Test {
protected:
    void SetUp() override
    {
        const char* old = std::getenv("VORNADEL_DRIVES");
        saved_ = old != nullptr ? old : "";
        hadDrives_ = old != nullptr;
        setenv("VORNADEL_DRIVES", ("X=" + dir_.path().u8string()).c_str(), 1);
        fs::create_directories(dir_ / u8"导出");
        fs::copy_file(bundledTemplate(), dir_ / u8"导出/模具标准件申购表.xls");
    }
    void TearDown() override
    {
        if (hadDrives_)
            setenv("VORNADEL_DRIVES", saved_.c_str(), 1);
        else
            unsetenv("VORNADEL_DRIVES");
    }

    TempDir dir_;
    std::string saved_;
    bool hadDrives_ = false;
};

}  // namespace

TEST_F(XlsWorkbook, WritesTheBomThroughTheWorkbookInterface)
{
    // Narrow literals are GBK here, as the plug-in's paths are.
    const char* path = "X:\\导出\\模具标准件申购表.xls";
    Workbook* book = CreateXlsBook();
    ASSERT_NE(nullptr, book);
    ASSERT_TRUE(book->load(path)) << book->errorMessage();
    Worksheet* sheet = book->getSheet(book->activeSheet());
    ASSERT_NE(nullptr, sheet) << book->errorMessage();
    EXPECT_EQ(sheet, book->getSheet(book->activeSheet()));
    EXPECT_TRUE(sheet->writeStr(1, 4, L"宁波精密模塑有限公司"));
    EXPECT_TRUE(sheet->writeStr(6, 0, L"1"));
    EXPECT_TRUE(sheet->writeStr(6, 1, L"顶针"));
    ASSERT_TRUE(book->save(path)) << book->errorMessage();
    EXPECT_STREQ("", book->errorMessage());
    book->release();
    Written cells = {{{1, 4}, u"宁波精密模塑有限公司"}, {{6, 0}, u"1"}, {{6, 1}, u"顶针"}};
    expectOnlyWrittenCellsChanged(xlrdDump(bundledTemplate()), xlrdDump(dir_ / u8"导出/模具标准件申购表.xls"), 0, cells);
}

TEST_F(XlsWorkbook, ReportsFailuresWithTheirPath)
{
    Workbook* book = CreateXlsBook();
    ASSERT_NE(nullptr, book);
    EXPECT_FALSE(book->load("X:\\导出\\没有这个文件.xls"));
    EXPECT_EQ(std::string("X:\\导出\\没有这个文件.xls: cannot open the workbook: No such file or directory"),
              book->errorMessage());
    EXPECT_FALSE(book->load("Q:\\a.xls"));
    EXPECT_STREQ("Q:\\a.xls: no such drive", book->errorMessage());
    EXPECT_EQ(nullptr, book->getSheet(0));
    EXPECT_STREQ("no workbook is loaded", book->errorMessage());
    book->release();
}

TEST_F(XlsWorkbook, ReportsARefusedCell)
{
    Workbook* book = CreateXlsBook();
    ASSERT_TRUE(book->load("X:\\导出\\模具标准件申购表.xls"));
    Worksheet* sheet = book->getSheet(0);
    EXPECT_FALSE(sheet->writeStr(70000, 0, L"x"));
    EXPECT_STREQ("row 70000 is outside the sheet (rows 0 to 65535)", book->errorMessage());
    EXPECT_TRUE(sheet->writeStr(7, 0, L"x"));
    EXPECT_STREQ("", book->errorMessage());
    book->release();
}

TEST_F(XlsWorkbook, ReportsAFailedSaveWithItsPath)
{
    Workbook* book = CreateXlsBook();
    ASSERT_TRUE(book->load("X:\\导出\\模具标准件申购表.xls"));
    EXPECT_FALSE(book->save("X:\\没有的文件夹\\a.xls"));
    EXPECT_STREQ("X:\\没有的文件夹\\a.xls: cannot create a temporary file beside the workbook: No such file or directory",
                 book->errorMessage());
    book->release();
}

TEST_F(XlsWorkbook, GetSheetGivesNullForASheetThatIsNotThere)
{
    Workbook* book = CreateXlsBook();
    ASSERT_TRUE(book->load("X:\\导出\\模具标准件申购表.xls"));
    EXPECT_EQ(nullptr, book->getSheet(2));
    EXPECT_STREQ("there is no sheet 2; the workbook has 2 sheets", book->errorMessage());
    book->release();
}

TEST_F(XlsWorkbook, AFailedLoadKeepsTheBookAndItsSheets)
{
    const char* path = "X:\\导出\\模具标准件申购表.xls";
    Workbook* book = CreateXlsBook();
    ASSERT_TRUE(book->load(path));
    Worksheet* sheet = book->getSheet(0);
    ASSERT_NE(nullptr, sheet);
    EXPECT_FALSE(book->load("X:\\导出\\没有这个文件.xls"));
    EXPECT_TRUE(sheet->writeStr(6, 1, L"顶针")) << "the sheet of the book loaded before still takes cells";
    EXPECT_EQ(sheet, book->getSheet(0)) << "and is still the book's sheet 0";
    ASSERT_TRUE(book->save(path)) << book->errorMessage();
    book->release();
    Written cells = {{{6, 1}, u"顶针"}};
    expectOnlyWrittenCellsChanged(xlrdDump(bundledTemplate()), xlrdDump(dir_ / u8"导出/模具标准件申购表.xls"), 0, cells);
}
