// The export of the purchase BOM: saving first, the four head checks, the per-part folder and the
// free file name, the template and its message, the head cells and one row per purchase line in
// the sheet's column order (read back with xlrd, everything else of the template unchanged), the
// lenient ending, the failed save, the success message and the file opened.

#include "CommandsFixture.hpp"

#include <NXOpen/BlockStyler_Node.hxx>
#include <NXOpen/BlockStyler_Button.hxx>
#include <NXOpen/BlockStyler_Tree.hxx>

#include "support/DiskFull.hpp"

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/lsan_interface.h>
#endif

using namespace commands_test;
using vornadel_test::ReadBytes;
using vornadel_test::WriteBytes;

namespace {

class Export : public CommandsFixture {
protected:
    // The per-part folder of the export under D:\out, on this machine.
    fs::path PartFolder() const { return DriveD() / "out" / "T100"; }
    static fs::path Named(const std::string& gbkName) { return fs::u8path(host::GbkToUtf8(gbkName)); }

    // Fills the head, picks D:\out (or folder) and presses the export button count times.
    void ExportTimes(int count, const std::string& folder = "D:\\out",
                     const std::function<void(Vornadel&, host::LiveDialog&)>& before = {})
    {
        WithDialog([&](Vornadel& dialog, host::LiveDialog& live) {
            FillHead(live);
            live.PickFolder("nativeFolderBrowser0", folder);
            if (before)
                before(dialog, live);
            for (int i = 0; i < count; ++i)
                live.Press("button01");
            rows_ = Rows(dialog.tree_control0);
        });
    }

    // The cells the export must have written: the head cells and one row per purchase line.
    xlstest::Written ExpectedCells() const
    {
        auto text = [](const std::string& gbk) { return xlstest::utf16(host::GbkToUtf8(gbk)); };
        const std::map<std::string, std::pair<int, int>> head = {
            {"string0", {1, 4}},   {"string01", {1, 8}},  {"string033", {2, 1}}, {"string036", {2, 11}},
            {"string032", {4, 8}}, {"string04", {1, 1}},  {"string031", {3, 1}}, {"string034", {4, 1}},
            {"string035", {3, 4}}, {"string02", {2, 8}},  {"string03", {3, 8}},
        };
        xlstest::Written cells;
        for (const auto& [block, value] : HeadValues())
            cells[head.at(block)] = text(value);
        const std::vector<std::pair<int, int>> columns = {{1, 1}, {3, 2},  {5, 3},  {7, 4},  {9, 6},  {11, 7},
                                                          {13, 5}, {14, 8}, {15, 9}, {16, 10}, {17, 11}};
        int line = 0;
        for (const Row& row : rows_) {
            if (row.depth != 0)
                continue;
            const int sheetRow = 6 + line++;
            cells[{sheetRow, 0}] = text(std::to_string(line));
            for (const auto& [sheetColumn, treeColumn] : columns)
                cells[{sheetRow, sheetColumn}] = text(row.text[treeColumn]);
        }
        return cells;
    }

    // The exported workbook differs from the template in exactly the expected cells.
    void ExpectExported(const fs::path& file)
    {
        ASSERT_TRUE(fs::exists(file)) << file;
        const nlohmann::json before = xlstest::xlrdDump(TemplatePath());
        const nlohmann::json after = xlstest::xlrdDump(file);
        ASSERT_FALSE(before.is_null());
        ASSERT_FALSE(after.is_null());
        xlstest::expectOnlyWrittenCellsChanged(before, after, before["active"][0].get<int>(), ExpectedCells());
    }

    std::vector<Row> rows_;
};

TEST_F(Export, WritesTheHeadAndOneRowPerPurchaseLineIntoACopyOfTheTemplate)
{
    LoadMould();
    ExportTimes(1);
    ExpectExported(PartFolder() / Named("T100标准件BOM.xls"));
    // Three purchase lines: rows 7 to 9 of the sheet, nothing below.
    EXPECT_EQ(3, std::count_if(rows_.begin(), rows_.end(), [](const Row& r) { return r.depth == 0; }));
}

TEST_F(Export, RunningNumberIsCountedNotTakenFromColumnZeroAndTheIdIsNotExported)
{
    LoadMould();
    ExportTimes(1, "D:\\out", [](Vornadel& dialog, host::LiveDialog&) {
        NXOpen::BlockStyler::Node* first = dialog.tree_control0->RootNode();
        first->SetColumnDisplayText(0, "九十九");
        first->SetColumnDisplayText(12, "ID-SECRET");
        first->SetColumnDisplayText(5, "材质X");
        first->SetColumnDisplayText(7, "备注Y");
    });
    const nlohmann::json sheet = xlstest::xlrdDump(PartFolder() / Named("T100标准件BOM.xls"))["sheets"][0];
    std::map<std::pair<int, int>, std::string> cells;
    for (const auto& c : sheet["cells"])
        if (c[3].is_string())
            cells[{c[0].get<int>(), c[1].get<int>()}] = c[3].get<std::string>();
    EXPECT_EQ("1", (cells[{6, 0}]));
    EXPECT_EQ(host::GbkToUtf8("备注Y"), (cells[{6, 11}]));
    EXPECT_EQ(host::GbkToUtf8("材质X"), (cells[{6, 13}]));
    for (const auto& [place, value] : cells)
        EXPECT_EQ(std::string::npos, value.find("ID-SECRET")) << place.first << "," << place.second;
    ExpectExported(PartFolder() / Named("T100标准件BOM.xls"));
}

TEST_F(Export, SavesTheAttributesFirst)
{
    LoadMould();
    ExportTimes(1);
    EXPECT_EQ("美的", StringAttribute(Work(), "客户名称"));
    EXPECT_EQ("顶针", StringAttribute(Body(1003), "名称"));
    EXPECT_EQ("Y", StringAttribute(Work(), "标准件"));
}

TEST_F(Export, TellsThePathAndOpensTheWorkbook)
{
    LoadMould();
    ExportTimes(1);
    ASSERT_FALSE(host::Messages().empty());
    const host::MessageRecord& m = host::Messages().back();
    EXPECT_EQ("标准件BOM", m.title);
    EXPECT_EQ(NXOpen::NXMessageBox::DialogTypeInformation, m.type);
    EXPECT_EQ("导出标准件BOM成功！\n文件路径：D:\\out\\T100\\T100标准件BOM.xls", m.text);
    EXPECT_EQ(std::vector<std::string>{"D:\\out\\T100\\T100标准件BOM.xls"}, host::OpenedFiles());
}

TEST_F(Export, ExportsInARowTakeThePlainNameThenDashOneThenDashTwo)
{
    LoadMould();
    ExportTimes(3);
    EXPECT_EQ((std::vector<std::string>{"D:\\out\\T100\\T100标准件BOM.xls", "D:\\out\\T100\\T100标准件BOM-1.xls",
                                        "D:\\out\\T100\\T100标准件BOM-2.xls"}),
              host::OpenedFiles());
    ExpectExported(PartFolder() / Named("T100标准件BOM-2.xls"));
}

TEST_F(Export, WhenOnlyDashTwoExistsThePlainNameIsTakenFirst)
{
    LoadMould();
    WriteBytes(PartFolder() / Named("T100标准件BOM-2.xls"), "earlier export");
    ExportTimes(2);
    EXPECT_EQ((std::vector<std::string>{"D:\\out\\T100\\T100标准件BOM.xls", "D:\\out\\T100\\T100标准件BOM-1.xls"}),
              host::OpenedFiles());
    EXPECT_EQ("earlier export", ReadBytes(PartFolder() / Named("T100标准件BOM-2.xls")));
}

TEST_F(Export, AFolderPickedWithATrailingBackslashGetsNoSecondOne)
{
    LoadMould();
    ExportTimes(1, "D:\\out\\");
    EXPECT_EQ(std::vector<std::string>{"D:\\out\\T100\\T100标准件BOM.xls"}, host::OpenedFiles());
}

TEST_F(Export, AnEmptyTreeGivesTheHeadAndNoPartRows)
{
    LoadBodies({});
    ExportTimes(1);
    ExpectExported(PartFolder() / Named("T100标准件BOM.xls"));
    EXPECT_EQ(1u, host::OpenedFiles().size());
}

TEST_F(Export, EmptyCustomerAndDesignerReportOnlyTheCustomer)
{
    LoadMould();
    ExportTimes(1, "D:\\out", [](Vornadel&, host::LiveDialog& live) {
        live.SetText("string0", "");
        live.SetText("string036", "");
    });
    ASSERT_FALSE(host::Messages().empty());
    EXPECT_EQ("Block Styler", host::Messages().back().title);
    EXPECT_EQ(NXOpen::NXMessageBox::DialogTypeError, host::Messages().back().type);
    EXPECT_EQ("客户名称不可以为空", host::Messages().back().text);
    EXPECT_FALSE(fs::exists(PartFolder()));
    EXPECT_TRUE(host::OpenedFiles().empty());
}

TEST_F(Export, AMissingTemplateIsNamedWithItsPathAfterTheAttributesAreSavedAndTheFolderMade)
{
    LoadMould();
    fs::remove(TemplatePath());
    ExportTimes(1);
    ASSERT_FALSE(host::Messages().empty());
    EXPECT_EQ("Block Styler", host::Messages().back().title);
    EXPECT_EQ(Root() + "\\config\\模具标准件申购表.xls 配置文件不存在", host::Messages().back().text);
    EXPECT_TRUE(fs::is_directory(PartFolder()));
    EXPECT_TRUE(fs::is_empty(PartFolder()));
    EXPECT_EQ("张工", StringAttribute(Work(), "设计担当"));
    EXPECT_TRUE(host::OpenedFiles().empty());
}

TEST_F(Export, WithoutAConfigurationRootTheTemplateIsLookedForOnTheCurrentDrive)
{
    LoadMould();
    ExportTimes(1, "D:\\out", [](Vornadel&, host::LiveDialog&) { host::UnsetEnvironmentVariable("VDConfig"); });
    ASSERT_FALSE(host::Messages().empty());
    EXPECT_EQ("\\模具标准件申购表.xls 配置文件不存在", host::Messages().back().text);
}

TEST_F(Export, ATemplateTheWorkbookCannotLoadStillEndsAsASuccessWithTheBareCopy)
{
    LoadMould();
    WriteBytes(TemplatePath(), "not a workbook at all");
    ExportTimes(1);
    ASSERT_FALSE(host::Messages().empty());
    EXPECT_EQ("导出标准件BOM成功！\n文件路径：D:\\out\\T100\\T100标准件BOM.xls", host::Messages().back().text);
    EXPECT_EQ("not a workbook at all", ReadBytes(PartFolder() / Named("T100标准件BOM.xls")));
    EXPECT_EQ(1u, host::OpenedFiles().size());
}

TEST_F(Export, AFailedSaveThrowsTheWorkbooksMessageAsAPlainStringPastUpdateCb)
{
    VORNADEL_NEEDS_DISK_FULL();
    LoadMould();
    // The copy of the template fits on the disk, the filled workbook does not.
    const size_t templateSize = fs::file_size(TemplatePath());
    std::string thrown;
    bool returned = false;
    WithDialog([&](Vornadel& dialog, host::LiveDialog& live) {
        FillHead(live);
        live.PickFolder("nativeFolderBrowser0", "D:\\out");
        for (int i = 0; i < 200; ++i)  // enough lines that the filled workbook outgrows the copy
            dialog.tree_control0->RootNode()->SetColumnDisplayText(7, std::string(100, 'x') + std::to_string(i));
        vornadel_test::DiskFullAfter full(templateSize + 16);
#if defined(__SANITIZE_ADDRESS__)
        __lsan::ScopedDisabler leftUnreleased;  // the failed save leaves its book, by design
#endif
        try {
            dialog.update_cb(dialog.button01);
            returned = true;
        } catch (const char* message) {
            thrown = message;
        }
    });
    EXPECT_FALSE(returned);
    EXPECT_NE(std::string::npos, thrown.find("T100")) << thrown;
    EXPECT_TRUE(host::OpenedFiles().empty());
    for (const host::MessageRecord& m : host::Messages())
        EXPECT_EQ(std::string::npos, m.text.find("导出标准件BOM成功")) << m.text;
}

TEST_F(Export, LibreOfficeAndGnumericOpenTheExportWithoutComplaint)
{
    LoadMould();
    ExportTimes(1);
    const fs::path file = PartFolder() / Named("T100标准件BOM.xls");
    bool checked = false;
    fs::create_directories(top_ / "readers");
    if (xlstest::haveProgram("ssconvert")) {
        // Whatever Gnumeric says of the template (a font it has no widths for), it says no more.
        EXPECT_EQ(xlstest::gnumericWarnings(TemplatePath(), top_ / "readers"),
                  xlstest::gnumericWarnings(file, top_ / "readers"));
        checked = true;
    }
    if (xlstest::haveProgram("soffice")) {
        auto before = xlstest::libreOfficeCsv(TemplatePath(), top_ / "readers");
        auto after = xlstest::libreOfficeCsv(file, top_ / "readers");
        ASSERT_EQ(2u, after.size());
        EXPECT_EQ(before.at(u8"填写说明"), after.at(u8"填写说明"));
        EXPECT_EQ(u8"美的", after.at(u8"申购表").at(1).at(4));
        checked = true;
    }
    if (!checked)
        GTEST_SKIP() << "neither Gnumeric nor LibreOffice is installed";
}

TEST_F(Export, FillsTheTemplateVariantsSitesHaveAndKeepsTheirOtherSheetsAndStreams)
{
    // tools/template/variants.sh: the form saved by Gnumeric; with formulas, shaded blanks and a
    // choice list in the part rows (column A's running-number formula is written over); with a
    // chart sheet; with an Excel 4.0 macro sheet and a VBA project.
    LoadMould();
    int exports = 0;
    for (const char* variant : {"template-gnumeric.xls", "template-formulas.xls", "template-chart.xls",
                                "template-macros.xls"}) {
        fs::copy_file(xlstest::dataDir() / variant, TemplatePath(), fs::copy_options::overwrite_existing);
        ExportTimes(1);
        const std::string suffix = exports == 0 ? "" : "-" + std::to_string(exports);
        ++exports;
        const fs::path file = PartFolder() / Named("T100标准件BOM" + suffix + ".xls");
        SCOPED_TRACE(variant);
        ExpectExported(file);
        // The workbook stream's sheets after the form, and every other stream, as they were.
        const xlstest::Bytes before = xlstest::readBytes(TemplatePath()), after = xlstest::readBytes(file);
        EXPECT_TRUE(xlstest::otherSubstreams(xlstest::workbookStream(before)) ==
                    xlstest::otherSubstreams(xlstest::workbookStream(after)));
        EXPECT_TRUE(xlstest::otherStreams(before) == xlstest::otherStreams(after));
    }
}

}  // namespace
