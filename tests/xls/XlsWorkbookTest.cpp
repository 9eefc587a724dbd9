// The platform's Workbook interface over the engine (src/platform/XlsWorkbook.cpp), as the BOM
// export uses it: Windows paths in GBK, wide text, the engine's messages.

#include "XlsTestSupport.h"
#include "platform/Workbook.h"

#include <gtest/gtest.h>

using namespace xlstest;

namespace {

// Drive X: on a temporary folder holding the bundled template in a folder of its own.
class XlsWorkbook : public ::testing::Test {
protected:
    void SetUp() override
    {
        fs::create_directories(x_.folder() / u8"导出");
        fs::copy_file(bundledTemplate(), x_.folder() / u8"导出/模具标准件申购表.xls");
    }

    DriveX x_;
};

}  // namespace

TEST_F(XlsWorkbook, WritesTheBomThroughTheWorkbookInterface)
{
    // Narrow literals are GBK here, as the plug-in's paths are.
    const std::string path = x_.path("导出\\模具标准件申购表.xls");
    Workbook* book = CreateXlsBook();
    ASSERT_NE(nullptr, book);
    ASSERT_TRUE(book->load(path.c_str())) << book->errorMessage();
    Worksheet* sheet = book->getSheet(book->activeSheet());
    ASSERT_NE(nullptr, sheet) << book->errorMessage();
    EXPECT_EQ(sheet, book->getSheet(book->activeSheet()));
    EXPECT_TRUE(sheet->writeStr(1, 4, L"宁波精密模塑有限公司"));
    EXPECT_TRUE(sheet->writeStr(6, 0, L"1"));
    EXPECT_TRUE(sheet->writeStr(6, 1, L"顶针"));
    ASSERT_TRUE(book->save(path.c_str())) << book->errorMessage();
    EXPECT_STREQ("", book->errorMessage());
    book->release();
    Written cells = {{{1, 4}, u"宁波精密模塑有限公司"}, {{6, 0}, u"1"}, {{6, 1}, u"顶针"}};
    expectOnlyWrittenCellsChanged(xlrdDump(bundledTemplate()), xlrdDump(x_.folder() / u8"导出/模具标准件申购表.xls"), 0, cells);
}

TEST_F(XlsWorkbook, ReportsFailuresWithTheirPath)
{
    Workbook* book = CreateXlsBook();
    ASSERT_NE(nullptr, book);
    const std::string missing = x_.path("导出\\没有这个文件.xls");
    EXPECT_FALSE(book->load(missing.c_str()));
    EXPECT_EQ(missing + ": cannot open the workbook: No such file or directory", book->errorMessage());
#ifndef _WIN32  // Windows has no drive table: a drive that is not there is the C library's missing file
    EXPECT_FALSE(book->load("Q:\\a.xls"));
    EXPECT_STREQ("Q:\\a.xls: no such drive", book->errorMessage());
#endif
    EXPECT_EQ(nullptr, book->getSheet(0));
    EXPECT_STREQ("no workbook is loaded", book->errorMessage());
    book->release();
}

TEST_F(XlsWorkbook, ReportsARefusedCell)
{
    Workbook* book = CreateXlsBook();
    ASSERT_TRUE(book->load(x_.path("导出\\模具标准件申购表.xls").c_str()));
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
    ASSERT_TRUE(book->load(x_.path("导出\\模具标准件申购表.xls").c_str()));
    const std::string path = x_.path("没有的文件夹\\a.xls");
    EXPECT_FALSE(book->save(path.c_str()));
    EXPECT_EQ(path + ": cannot create a temporary file beside the workbook: No such file or directory", book->errorMessage());
    book->release();
}

TEST_F(XlsWorkbook, GetSheetGivesNullForASheetThatIsNotThere)
{
    Workbook* book = CreateXlsBook();
    ASSERT_TRUE(book->load(x_.path("导出\\模具标准件申购表.xls").c_str()));
    EXPECT_EQ(nullptr, book->getSheet(2));
    EXPECT_STREQ("there is no sheet 2; the workbook has 2 sheets", book->errorMessage());
    book->release();
}

TEST_F(XlsWorkbook, AFailedLoadKeepsTheBookAndItsSheets)
{
    const std::string path = x_.path("导出\\模具标准件申购表.xls");
    Workbook* book = CreateXlsBook();
    ASSERT_TRUE(book->load(path.c_str()));
    Worksheet* sheet = book->getSheet(0);
    ASSERT_NE(nullptr, sheet);
    EXPECT_FALSE(book->load(x_.path("导出\\没有这个文件.xls").c_str()));
    EXPECT_TRUE(sheet->writeStr(6, 1, L"顶针")) << "the sheet of the book loaded before still takes cells";
    EXPECT_EQ(sheet, book->getSheet(0)) << "and is still the book's sheet 0";
    ASSERT_TRUE(book->save(path.c_str())) << book->errorMessage();
    book->release();
    Written cells = {{{6, 1}, u"顶针"}};
    expectOnlyWrittenCellsChanged(xlrdDump(bundledTemplate()), xlrdDump(x_.folder() / u8"导出/模具标准件申购表.xls"), 0, cells);
}
