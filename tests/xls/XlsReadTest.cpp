// Reading cells: every cell of workbooks that LibreOffice, Gnumeric and the export wrote reads as
// xlrd reads it, each kind of cell record gives its text, and written cells read back.

#include "XlsBook.h"
#include "XlsTestSupport.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>

using namespace xlstest;

namespace {

std::string readCell(const xls::Sheet& sheet, int row, int col)
{
    std::vector<unsigned short> units;
    EXPECT_TRUE(sheet.readStr(row, col, units));
    return utf8(std::u16string(units.begin(), units.end()));
}

std::string general(double v)
{
    char text[40];
    std::snprintf(text, sizeof text, "%.15g", v);
    return text;
}

// xlrd's value of a cell as the engine gives it as text (xlrd: 1 text, 2 number, 3 date, 4 Boolean,
// 5 error code, 6 blank).
std::string expectedText(const nlohmann::json& cell)
{
    switch (cell[2].get<int>()) {
    case 1: return cell[3].get<std::string>();
    case 2: case 3: return general(cell[3].get<double>());
    case 4: return cell[3].get<int>() != 0 ? "TRUE" : "FALSE";
    case 5: {
        const int code = cell[3].get<int>();
        return code == 0x07 ? "#DIV/0!" : code == 0x0F ? "#VALUE!" : code == 0x17 ? "#REF!" : code == 0x1D ? "#NAME?"
             : code == 0x24 ? "#NUM!" : code == 0x00 ? "#NULL!" : "#N/A";
    }
    default: return "";
    }
}

void expectReadAsXlrd(const fs::path& path)
{
    SCOPED_TRACE(path.string());
    xls::Book book;
    ASSERT_TRUE(book.load(osPath(path).c_str())) << book.errorMessage();
    const nlohmann::json view = xlrdDump(path);
    int compared = 0;
    size_t worksheet = 0;  // xlrd lists worksheets only
    for (int s = 0; s < book.sheetCount(); ++s) {
        const xls::Sheet* sheet = book.getSheet(s);
        if (sheet == nullptr) continue;
        ASSERT_LT(worksheet, view["sheets"].size());
        const nlohmann::json& listed = view["sheets"][worksheet++];
        const nlohmann::json& cells = listed["cells"];
        std::map<std::pair<int, int>, std::string> expected;
        for (const auto& cell : cells) expected[{cell[0].get<int>(), cell[1].get<int>()}] = expectedText(cell);
        EXPECT_EQ(sheet->rowCount(), listed["nrows"].get<int>());
        for (int r = 0; r < sheet->rowCount(); ++r) {
            for (int c = 0; c < 256; ++c) {
                const auto known = expected.find({r, c});
                EXPECT_EQ(readCell(*sheet, r, c), known != expected.end() ? known->second : "")
                    << "sheet " << s << " cell (" << r << ", " << c << ")";
                ++compared;
            }
        }
    }
    EXPECT_GT(compared, 0);
}

std::string asText(double v)
{
    unsigned char bytes[8];
    std::memcpy(bytes, &v, 8);  // the tests run on little-endian machines only
    return std::string(reinterpret_cast<char*>(bytes), 8);
}

Bytes bytesOf(const std::string& s) { return Bytes(s.begin(), s.end()); }

}  // namespace

TEST(XlsRead, EveryCellOfOtherWritersReadsAsXlrdReadsIt)
{
    for (const char* name : {"features-libreoffice.xls", "features-gnumeric.xls", "template-formulas.xls",
                             "template-gnumeric.xls", "template-chart.xls"})
        expectReadAsXlrd(dataDir() / name);
    expectReadAsXlrd(bundledTemplate());
}

TEST(XlsRead, EachKindOfCellRecordGivesItsText)
{
    const Bytes cell = le16({3, 2, 15});  // row 3, column 2, XF 15
    auto at = [](unsigned col) { return le16({3, col, 15}); };
    const Bytes wideText = cat({le16({2}), Bytes{1}, le16({0x6A21, 0x5177})});  // "模具", two bytes a character
    BookBuilder builder;
    builder.cellXfs(16).sheet("Sheet1")
        .record(0x0203, cat({cell, bytesOf(asText(-0.125))}))                        // NUMBER
        .record(0x027E, cat({at(3), le32({(1234u << 2) | 0x03u})}))                   // RK: 12.34
        .record(0x00BD, cat({le16({3, 4, 15}), le32({(7u << 2) | 2u}), le16({15}),   // MULRK: 7, 2.5
                             le32({0x40040000u}), le16({5})}))
        .record(0x0204, cat({at(6), wideText}))                                       // LABEL
        .record(0x0205, cat({at(7), Bytes{1, 0}}))                                    // BOOLERR: TRUE
        .record(0x0205, cat({at(8), Bytes{0x2A, 1}}))                                 // BOOLERR: #N/A
        // FORMULA with a text result in STRING, whose characters go on in a CONTINUE record.
        .record(0x0006, cat({at(9), Bytes{0, 0, 0, 0, 0, 0, 0xFF, 0xFF}, le16({0}), le32({0}), le16({3}),
                             Bytes{0x17, 0, 0}}))
        .record(0x0207, cat({le16({5}), Bytes{0}, bytesOf("abc")}))
        .record(0x003C, cat({Bytes{1}, le16({0x4EF6, 0x53F7})}))
        .record(0x0006, cat({at(10), bytesOf(asText(1e20)), le16({0}), le32({0}), le16({0})}))  // number result
        .record(0x0006, cat({at(11), Bytes{3, 0, 0, 0, 0, 0, 0xFF, 0xFF}, le16({0}), le32({0}), le16({0})}))
        .record(0x0201, at(12));  // BLANK
    TempDir dir;
    writeBytes(dir / "kinds.xls", builder.file());
    xls::Book book;
    ASSERT_TRUE(book.load(osPath(dir / "kinds.xls").c_str())) << book.errorMessage();
    const xls::Sheet* sheet = book.getSheet(0);
    ASSERT_NE(sheet, nullptr) << book.errorMessage();
    const std::vector<std::string> expected = {"-0.125", "12.34", "7", "2.5", u8"模具", "TRUE", "#N/A",
                                               u8"abc件号", "1e+20", "", ""};
    for (size_t k = 0; k < expected.size(); ++k) EXPECT_EQ(readCell(*sheet, 3, 2 + static_cast<int>(k)), expected[k]) << k;
    EXPECT_EQ(sheet->rowCount(), 4);
    std::vector<unsigned short> units{1};
    EXPECT_FALSE(sheet->readStr(70000, 0, units));
    EXPECT_TRUE(units.empty());
    EXPECT_FALSE(sheet->readStr(0, 256, units));
}

TEST(XlsRead, WrittenCellsReadBack)
{
    xls::Book book;
    ASSERT_TRUE(book.load(osPath(bundledTemplate()).c_str())) << book.errorMessage();
    xls::Sheet* sheet = book.getSheet(book.activeSheet());
    ASSERT_NE(sheet, nullptr);
    const std::string before = readCell(*sheet, 0, 0);
    EXPECT_FALSE(before.empty());  // the template's title
    ASSERT_TRUE(sheet->writeStr(1, 4, L"宁波精密模塑"));
    ASSERT_TRUE(sheet->writeStr(6, 1, L"顶针"));
    ASSERT_TRUE(sheet->writeStr(900, 3, L"new"));
    EXPECT_EQ(readCell(*sheet, 1, 4), u8"宁波精密模塑");
    EXPECT_EQ(readCell(*sheet, 6, 1), u8"顶针");
    EXPECT_EQ(readCell(*sheet, 900, 3), "new");
    EXPECT_EQ(readCell(*sheet, 0, 0), before);
    EXPECT_EQ(sheet->rowCount(), 901);
}

TEST(XlsRead, ACellTakesTheFormatItIsGiven)
{
    TempDir dir;
    xls::Book book;
    ASSERT_TRUE(book.load(osPath(bundledTemplate()).c_str())) << book.errorMessage();
    xls::Sheet* sheet = book.getSheet(book.activeSheet());
    ASSERT_NE(sheet, nullptr);
    const nlohmann::json before = xlrdDump(bundledTemplate());
    int titleFormat = -1;
    for (const auto& cell : before["sheets"][0]["cells"])
        if (cell[0] == 5 && cell[1] == 1) titleFormat = cell[4].get<int>();
    ASSERT_GE(titleFormat, 0);
    EXPECT_EQ(sheet->cellFormat(5, 1), titleFormat) << "as xlrd reads it";
    EXPECT_EQ(sheet->cellFormat(300, 1), -1) << "no cell";
    EXPECT_EQ(sheet->cellFormat(-1, 1), -1);
    const std::u16string text = u"顶针";
    const auto* units = reinterpret_cast<const unsigned short*>(text.data());
    ASSERT_TRUE(sheet->writeStrUtf16(6, 1, units, text.size(), titleFormat)) << book.errorMessage();
    ASSERT_TRUE(sheet->writeStrUtf16(5, 3, units, text.size(), 15)) << "an existing cell takes the format given";
    EXPECT_EQ(sheet->cellFormat(6, 1), titleFormat);
    EXPECT_EQ(sheet->cellFormat(5, 3), 15);
    EXPECT_FALSE(sheet->writeStrUtf16(6, 2, units, text.size(), 0)) << "XF 0 is a style format";
    EXPECT_NE(std::string(book.errorMessage()).find("format 0 is not a cell format"), std::string::npos);
    EXPECT_FALSE(sheet->writeStrUtf16(6, 2, units, text.size(), 100000));
    EXPECT_EQ(sheet->cellFormat(6, 2), -1) << "nothing written";
    ASSERT_TRUE(book.save(osPath(dir / "out.xls").c_str())) << book.errorMessage();
    int written = -1, retitled = -1;
    const nlohmann::json after = xlrdDump(dir / "out.xls");
    for (const auto& cell : after["sheets"][0]["cells"]) {
        if (cell[0] == 6 && cell[1] == 1) written = cell[4].get<int>();
        if (cell[0] == 5 && cell[1] == 3) retitled = cell[4].get<int>();
    }
    EXPECT_EQ(written, titleFormat);
    EXPECT_EQ(retitled, 15);
}
