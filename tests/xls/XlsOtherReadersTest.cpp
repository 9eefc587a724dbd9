// LibreOffice and Gnumeric read what the engine saved. Each test is skipped where its program is
// not installed (Debian: libreoffice-calc-nogui, gnumeric); xlrd's checks run everywhere.

#include "XlsTestSupport.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

using namespace xlstest;

namespace {

std::string cellOf(const Grid& grid, size_t r, size_t c) { return r < grid.size() && c < grid[r].size() ? grid[r][c] : ""; }

// LibreOffice's CSV of `out` must be its CSV of `in` with the cells written into the sheet named
// `sheet` (UTF-8) in place; cells in
// `recalculated` hold formulas whose results may differ and are left to the caller.
void expectLibreOfficeSees(const fs::path& in, const fs::path& out, const std::string& sheet, const Written& cells,
                           const std::set<std::pair<int, int>>& recalculated = {})
{
    TempDir dir;
    auto before = libreOfficeCsv(in, dir.path());
    auto after = libreOfficeCsv(out, dir.path());
    ASSERT_EQ(before.size(), after.size());
    for (const auto& b : before) {
        ASSERT_TRUE(after.count(b.first)) << "sheet " << b.first;
        const Grid& a = after[b.first];
        if (b.first != sheet) {
            EXPECT_EQ(b.second, a) << "sheet " << b.first;
            continue;
        }
        size_t rows = std::max(b.second.size(), a.size());
        for (size_t r = 0; r < rows; ++r) {
            size_t cols = std::max(r < b.second.size() ? b.second[r].size() : 0, r < a.size() ? a[r].size() : 0);
            for (size_t c = 0; c < cols; ++c) {
                const std::pair<int, int> at(static_cast<int>(r), static_cast<int>(c));
                if (recalculated.count(at)) continue;
                auto w = cells.find(at);
                EXPECT_EQ(w != cells.end() ? utf8(w->second) : cellOf(b.second, r, c), cellOf(a, r, c))
                    << "cell (" << r << ", " << c << ")";
            }
        }
    }
}

}  // namespace

TEST(XlsOtherReaders, LibreOfficeReadsTheBomInTheBundledTemplate)
{
    if (!haveProgram("soffice")) GTEST_SKIP() << "LibreOffice (soffice) is not installed";
    TempDir dir;
    const Written cells = bomCells(40);
    ASSERT_NO_FATAL_FAILURE(writeWorkbook(bundledTemplate(), dir / "out.xls", cells));
    expectLibreOfficeSees(bundledTemplate(), dir / "out.xls", u8"申购表", cells, {{4, 14}});
    // 项数 (O5) counts the part rows: LibreOffice recalculates it on loading.
    EXPECT_EQ("40", cellOf(libreOfficeCsv(dir / "out.xls", dir.path())[u8"申购表"], 4, 14));
}

TEST(XlsOtherReaders, LibreOfficeReadsTheBomInATemplateGnumericMade)
{
    if (!haveProgram("soffice")) GTEST_SKIP() << "LibreOffice (soffice) is not installed";
    TempDir dir;
    const fs::path in = dataDir() / "template-gnumeric.xls";
    const Written cells = bomCells(40);
    ASSERT_NO_FATAL_FAILURE(writeWorkbook(in, dir / "out.xls", cells));
    expectLibreOfficeSees(in, dir / "out.xls", u8"申购表", cells, {{4, 14}});
}

TEST(XlsOtherReaders, LibreOfficeReadsTheBomInTheTemplateVariants)
{
    if (!haveProgram("soffice")) GTEST_SKIP() << "LibreOffice (soffice) is not installed";
    for (const char* variant : {"template-formulas.xls", "template-chart.xls", "template-macros.xls"}) {
        TempDir dir;
        const fs::path in = dataDir() / variant;
        const Written cells = bomCells(20);
        ASSERT_NO_FATAL_FAILURE(writeWorkbook(in, dir / "out.xls", cells));
        expectLibreOfficeSees(in, dir / "out.xls", u8"申购表", cells, {{4, 14}});
    }
}

TEST(XlsOtherReaders, LibreOfficeReadsEveryKindOfCellAfterAWrite)
{
    if (!haveProgram("soffice")) GTEST_SKIP() << "LibreOffice (soffice) is not installed";
    TempDir dir;
    const fs::path in = dataDir() / "features-gnumeric.xls";
    std::u16string longText;
    while (longText.size() < 30000) longText += u"标准件ABC";
    const Written cells = {{{2, 0}, u"替换"}, {{3, 4}, longText}, {{50, 2}, u"新行"}};
    ASSERT_NO_FATAL_FAILURE(writeWorkbook(in, dir / "out.xls", cells));
    // 明细's formulas D2:D41 read column C, and G2:G3 column A: a text where A3 was becomes 0.
    std::set<std::pair<int, int>> formulas = {{1, 6}, {2, 6}};
    expectLibreOfficeSees(in, dir / "out.xls", u8"明细", cells, formulas);
}

TEST(XlsOtherReaders, GnumericReadsTheWrittenWorkbooksWithoutNewWarnings)
{
    if (!haveProgram("ssconvert")) GTEST_SKIP() << "Gnumeric (ssconvert) is not installed";
    for (const fs::path& in : {bundledTemplate(), dataDir() / "template-gnumeric.xls", dataDir() / "features-libreoffice.xls",
                               dataDir() / "features-gnumeric.xls", dataDir() / "template-formulas.xls",
                               dataDir() / "template-chart.xls", dataDir() / "template-macros.xls"}) {
        TempDir dir;
        Written cells = bomCells(300);
        cells[{2, 4}] = std::u16string(20000, u'长');
        ASSERT_NO_FATAL_FAILURE(writeWorkbook(in, dir / "out.xls", cells));
        EXPECT_EQ(gnumericWarnings(in, dir.path()), gnumericWarnings(dir / "out.xls", dir.path())) << in;
    }
}
