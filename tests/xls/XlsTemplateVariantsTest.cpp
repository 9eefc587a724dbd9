// Templates as sites have them (tools/template/variants.sh): the bundled one saved again by
// Gnumeric, one with formulas, shaded blank cells and a choice list in the part rows, one with a
// chart sheet, one with an Excel 4.0 macro sheet and a VBA project. Each is filled through the
// platform's Workbook interface exactly as the BOM export fills it, then read back cell by cell in
// xlrd: everything not written is unchanged, and so is every sheet and stream that is not the form.

#include "XlsTestSupport.h"
#include "platform/Workbook.h"

#include <gtest/gtest.h>

#include <cctype>
#include <set>

using namespace xlstest;

namespace {

const int kPartRows = 12;  // fewer than the 30 part rows the formula variant has

// Drive X: on a temporary folder holding the variant as t.xls; fills it through the Workbook
// interface as the export does.
class XlsTemplateVariants : public ::testing::TestWithParam<std::string> {
protected:
    void SetUp() override
    {
        template_ = GetParam() == "bundled" ? bundledTemplate() : dataDir() / GetParam();
        fs::copy_file(template_, x_.folder() / "t.xls");
    }

    // The 11 head cells, then per part row column 0 and the 11 columns, as the export writes them.
    void fill(const Written& cells)
    {
        Workbook* book = CreateXlsBook();
        ASSERT_NE(nullptr, book);
        ASSERT_TRUE(book->load(x_.path("t.xls").c_str())) << book->errorMessage();
        Worksheet* sheet = book->getSheet(book->activeSheet());
        ASSERT_NE(nullptr, sheet) << book->errorMessage();
        for (const auto& c : cells) {
            const std::wstring text(c.second.begin(), c.second.end());
            EXPECT_TRUE(sheet->writeStr(c.first.first, c.first.second, text.c_str()))
                << c.first.first << ", " << c.first.second << ": " << book->errorMessage();
        }
        EXPECT_TRUE(book->save(x_.path("t.xls").c_str())) << book->errorMessage();
        book->release();
    }

    DriveX x_;
    fs::path template_;
};

}  // namespace

TEST_P(XlsTemplateVariants, TheExportFillsTheFormAndLeavesEverythingElseAsItWas)
{
    const Written cells = bomCells(kPartRows);
    fill(cells);
    const Bytes before = readBytes(template_), after = readBytes(x_.folder() / "t.xls");
    expectOnlyWrittenCellsChanged(xlrdDump(template_), xlrdDump(x_.folder() / "t.xls"), 0, cells);
    expectWellFormedStream(workbookStream(after), 0);
    EXPECT_TRUE(otherStreams(before) == otherStreams(after)) << "streams and storages besides Workbook";
    EXPECT_TRUE(otherSubstreams(workbookStream(before)) == otherSubstreams(workbookStream(after)))
        << "the other sheets, record by record";
}

INSTANTIATE_TEST_SUITE_P(Sites, XlsTemplateVariants,
                         ::testing::Values("bundled", "template-gnumeric.xls", "template-formulas.xls",
                                           "template-chart.xls", "template-macros.xls"),
                         [](const ::testing::TestParamInfo<std::string>& info) {
                             std::string name = info.param == "bundled" ? "LibreOffice" : info.param.substr(9);
                             name = name.substr(0, name.find('.'));
                             name[0] = static_cast<char>(std::toupper(name[0]));
                             return name;
                         });

TEST(XlsTemplateVariant, TheChartSheetAndTheMacroSheetAreThereToKeep)
{
    // What the two variants are made for: a chart sheet between the form and the notes, and a
    // macro sheet after them with the VBA project beside the Workbook stream.
    auto kinds = [](const fs::path& path) {
        std::vector<int> out;
        for (const Rec& r : records(workbookStream(readBytes(path))))
            if (r.type == 0x0085) out.push_back(r.data.at(5));
        return out;
    };
    EXPECT_EQ((std::vector<int>{0, 2, 0}), kinds(dataDir() / "template-chart.xls"));
    EXPECT_EQ((std::vector<int>{0, 0, 1}), kinds(dataDir() / "template-macros.xls"));
    EXPECT_TRUE(otherStreams(readBytes(dataDir() / "template-macros.xls")).count("_VBA_PROJECT_CUR/VBA/Module1"));
}

TEST(XlsTemplateVariant, PartRowFormulasShadesAndChoicesOutsideTheWrittenCellsStay)
{
    // template-formulas.xls: A7:A36 =ROW()-6 (one shared formula, written over in the first
    // rows), T7:T36 a line total, every other part row shaded, a choice list on Q7:Q36.
    const fs::path in = dataDir() / "template-formulas.xls";
    TempDir dir;
    const Written cells = bomCells(kPartRows);
    writeWorkbook(in, dir / "out.xls", cells);
    const nlohmann::json before = xlrdDump(in), after = xlrdDump(dir / "out.xls");
    expectOnlyWrittenCellsChanged(before, after, 0, cells);
    // Blank shaded cells of the part rows that were not written keep their formats.
    int blanks = 0;
    for (const auto& c : before["sheets"][0]["cells"])
        blanks += c[0].get<int>() >= 6 && c[2].get<int>() == 6 && !cells.count({c[0].get<int>(), c[1].get<int>()});
    EXPECT_GT(blanks, 100);
    const std::vector<Rec> recs = records(workbookStream(readBytes(dir / "out.xls")));
    std::set<std::pair<int, int>> formulas;
    Bytes validation;
    for (const Rec& r : recs) {
        if (r.type == 0x0006) formulas.insert({u16at(r.data, 0), u16at(r.data, 2)});
        if (r.type == 0x01BE) validation = r.data;
    }
    for (int row = 6; row < 36; ++row) {
        EXPECT_EQ(row >= 6 + kPartRows, formulas.count({row, 0}) == 1) << "A" << row + 1;
        EXPECT_EQ(1u, formulas.count({row, 19})) << "T" << row + 1;
    }
    Bytes validationBefore;
    for (const Rec& r : records(workbookStream(readBytes(in))))
        if (r.type == 0x01BE) validationBefore = r.data;
    EXPECT_FALSE(validation.empty());
    EXPECT_TRUE(validation == validationBefore) << "the choice list on Q7:Q36";
    if (!haveProgram("soffice")) GTEST_SKIP() << "LibreOffice (soffice) is not installed";
    const Grid form = libreOfficeCsv(dir / "out.xls", dir.path(), true)[u8"申购表"];
    ASSERT_GE(form.size(), 36u);
    for (int row = 6; row < 36; ++row) {
        const std::string r = std::to_string(row + 1);
        if (row >= 6 + kPartRows) {
            EXPECT_EQ("=ROW()-6", form[row][0]) << "A" << r;
        }
        EXPECT_EQ("=IF(S" + r + "=\"\",\"\",H" + r + "*S" + r + ")", form[row][19]) << "T" << r;
    }
}
