// The bundled template 模具标准件申购表.xls (tools/template), read through xlrd: its active sheet
// has the cells the BOM export writes where the export writes them, each with its label, and the
// part rows start empty.

#include "XlsTestSupport.h"

#include <gtest/gtest.h>

using namespace xlstest;

namespace {

const nlohmann::json& templateDump()
{
    static const nlohmann::json dump = xlrdDump(bundledTemplate());
    return dump;
}

// The cell (row, col) of the template's first sheet as xlrd gives it, [row, col, type, value, xf];
// null when xlrd has no cell there.
nlohmann::json cellAt(int row, int col)
{
    for (const auto& c : templateDump()["sheets"][0]["cells"])
        if (c[0] == row && c[1] == col) return c;
    return nullptr;
}

const int kText = 1, kBlank = 6;  // xlrd's cell types

}  // namespace

TEST(XlsTemplate, TheFormIsTheActiveSheet)
{
    ASSERT_FALSE(templateDump().is_null());
    EXPECT_EQ(nlohmann::json::array({0}), templateDump()["active"]) << "the export writes the active sheet";
    EXPECT_EQ(u8"申购表", templateDump()["sheets"][0]["name"]);
}

TEST(XlsTemplate, EachHeadCellTheExportWritesIsBlankWithItsLabelToTheLeft)
{
    ASSERT_FALSE(templateDump().is_null());
    const struct {
        int row, col;
        const char* label;
    } head[] = {{1, 4, u8"客户名称"}, {1, 8, u8"模具编号"}, {2, 1, u8"产品编号"}, {2, 11, u8"设计担当"},
                {4, 8, u8"模具吨位"}, {1, 1, u8"产品名称"}, {3, 1, u8"产品材质"}, {4, 1, u8"产品厚度"},
                {3, 4, u8"模具类型"}, {2, 8, u8"ERP编号"}, {3, 8, u8"订单编号"}};
    for (const auto& h : head) {
        const nlohmann::json label = cellAt(h.row, h.col - 1), value = cellAt(h.row, h.col);
        ASSERT_FALSE(label.is_null()) << "no label left of (" << h.row << ", " << h.col << ")";
        EXPECT_EQ(kText, label[2]) << "the label left of (" << h.row << ", " << h.col << ") is text";
        EXPECT_EQ(h.label, label[3]) << "the label left of (" << h.row << ", " << h.col << ")";
        ASSERT_FALSE(value.is_null()) << "head cell (" << h.row << ", " << h.col << ") has no format";
        EXPECT_EQ(kBlank, value[2]) << "head cell (" << h.row << ", " << h.col << ") is a bordered blank";
    }
}

TEST(XlsTemplate, ColumnHeadersOfRowSixSitAboveThePartColumns)
{
    ASSERT_FALSE(templateDump().is_null());
    const std::pair<int, const char*> headers[] = {
        {0, u8"序号"}, {1, u8"名称"},   {3, u8"型号/尺寸"}, {5, u8"品牌"},     {7, u8"数量"},  {9, u8"热处理"},
        {11, u8"备注"}, {13, u8"材质"}, {14, u8"供应商"},   {15, u8"采购周期"}, {16, u8"状态"}, {17, u8"修改时间"}};
    for (const auto& h : headers) {
        const nlohmann::json cell = cellAt(5, h.first);
        ASSERT_FALSE(cell.is_null()) << "no header above part column " << h.first;
        EXPECT_EQ(h.second, cell[3]) << "header above part column " << h.first;
    }
}

TEST(XlsTemplate, PartRowsStartEmpty)
{
    ASSERT_FALSE(templateDump().is_null());
    EXPECT_EQ(6, templateDump()["sheets"][0]["nrows"]) << "no cell from row 7 (index 6), the first part row, on";
}

TEST(XlsTemplate, BothSampleFoldersCarryTheSameTemplate)
{
    const fs::path other = sourceDir() / fs::u8path(u8"samples/config/压铸模/模具标准件申购表.xls");
    EXPECT_TRUE(readBytes(bundledTemplate()) == readBytes(other)) << "tools/template/build.sh copies one file to both";
}
