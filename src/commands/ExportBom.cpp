// The export of the purchase BOM: the dialog is saved onto the part, then a copy of the
// template "模具标准件申购表.xls" in the active configuration folder receives the BOM head and
// one row per purchase line, in a folder of the work part's own under the output folder, and is
// opened for the designer.

#include <stdio.h>

#include <stdexcept>
#include <string>
#include <vector>

#include <NXOpen/BlockStyler_FolderSelection.hxx>
#include <NXOpen/BlockStyler_Node.hxx>
#include <NXOpen/NXMessageBox.hxx>
#include <NXOpen/Part.hxx>
#include <NXOpen/PartCollection.hxx>
#include <NXOpen/Session.hxx>
#include <NXOpen/UI.hxx>

#include "config/ConfigLocations.h"
#include "platform/CodePage.h"
#include "platform/Desktop.h"
#include "platform/Files.h"
#include "platform/Workbook.h"
#include "shell/Vornadel.h"
#include "stdparts/TreeReadBack.h"

namespace {

const char* const kTemplateName = "\\模具标准件申购表.xls";

// The first row of purchase lines on the sheet (its 7th row).
const int kFirstPartRow = 6;

// Sheet column of each exported tree column; material comes after the remark.
struct PartColumn {
    int sheetColumn;
    int treeColumn;
};
const PartColumn kPartColumns[] = {
    {1, 1}, {3, 2}, {5, 3}, {7, 4}, {9, 6}, {11, 7}, {13, 5}, {14, 8}, {15, 9}, {16, 10}, {17, 11},
};

// Head cells in the order they are written: (row, column) and the head field (BomHeadInfo).
struct HeadCell {
    int row;
    int column;
    std::string BomHeadInfo::*field;
};
const HeadCell kHeadCells[] = {
    {1, 4, &BomHeadInfo::customerName},  {1, 8, &BomHeadInfo::mouldNo},
    {2, 1, &BomHeadInfo::productNo},     {2, 11, &BomHeadInfo::designer},
    {4, 8, &BomHeadInfo::mouldTonnage},  {1, 1, &BomHeadInfo::productName},
    {3, 1, &BomHeadInfo::productMaterial}, {4, 1, &BomHeadInfo::productThickness},
    {3, 4, &BomHeadInfo::mouldType},     {2, 8, &BomHeadInfo::erpNo},
    {3, 8, &BomHeadInfo::orderNo},
};

void ThrowIfEmpty(const std::string& value, const char* message)
{
    if (value.empty())
        throw std::runtime_error(message);
}

// leaf + "标准件BOM" + ".xls" in folder, or with "-1", "-2" ... before ".xls": the first name
// that nothing exists under.
std::string FreeFileName(const std::string& folder, const std::string& leaf)
{
    const std::string stem = folder + leaf + "标准件BOM";
    std::string name = stem + ".xls";
    for (int counter = 1; FileExists(name); ++counter) {
        char suffix[32];
        sprintf(suffix, "-%d", counter);
        name = stem + suffix + ".xls";
    }
    return name;
}

void WriteText(Worksheet* sheet, int row, int column, const std::string& text)
{
    // A cell the sheet cannot take is left out; the export goes on with the next.
    sheet->writeStr(row, column, platform::AnsiToWide(text).c_str());
}

void WriteSheet(Worksheet* sheet, BomHeadInfo& head, const std::vector<NXOpen::BlockStyler::Node*>& lines)
{
    for (size_t i = 0; i < sizeof kHeadCells / sizeof kHeadCells[0]; ++i)
        WriteText(sheet, kHeadCells[i].row, kHeadCells[i].column, head.*kHeadCells[i].field);
    for (size_t i = 0; i < lines.size(); ++i) {
        const int row = kFirstPartRow + static_cast<int>(i);
        char number[32];
        sprintf(number, "%d", static_cast<int>(i) + 1);
        WriteText(sheet, row, 0, number);
        for (size_t c = 0; c < sizeof kPartColumns / sizeof kPartColumns[0]; ++c) {
            const std::string text = lines[i]->GetColumnDisplayText(kPartColumns[c].treeColumn).GetLocaleText();
            WriteText(sheet, row, kPartColumns[c].sheetColumn, text);
        }
    }
}

// Fills the copied template. A book that cannot be made or loaded, or has no active sheet,
// leaves the bare copy: the export still ends as a success. A failed save throws the workbook's
// message as a plain string, leaving the book unreleased so that the message stays readable.
void FillWorkbook(const std::string& fileName, BomHeadInfo& head,
                  const std::vector<NXOpen::BlockStyler::Node*>& lines)
{
    Workbook* book = CreateXlsBook();
    if (book == NULL)
        return;
    if (!book->load(fileName.c_str())) {
        book->release();
        return;
    }
    Worksheet* sheet = book->getSheet(book->activeSheet());
    if (sheet != NULL)
        WriteSheet(sheet, head, lines);
    if (!book->save(fileName.c_str()))
        throw book->errorMessage();
    book->release();
}

}  // namespace

void Vornadel::ExportBom()
{
    NXOpen::Part* work = theSession->Parts()->Work();
    SaveAttributes();

    BomHeadInfo head = ReadHeadBlocks();
    ThrowIfEmpty(head.customerName, "客户名称不可以为空");
    ThrowIfEmpty(head.mouldNo, "模具编号不可以为空");
    ThrowIfEmpty(head.mouldTonnage, "模具吨位不可以为空");
    ThrowIfEmpty(head.designer, "设计担当不可以为空");

    const std::string leaf = work->Leaf().GetLocaleText();
    std::string folder = nativeFolderBrowser0->Path().GetLocaleText();
    if (folder.empty() || folder[folder.size() - 1] != '\\')
        folder += "\\";
    folder += leaf + "\\";
    platform::MakeFolder(folder);  // an existing folder is fine

    const std::string fileName = FreeFileName(folder, leaf);
    const std::string templatePath = GetConfigFolder() + kTemplateName;
    if (!FileExists(templatePath))
        throw std::runtime_error(templatePath + " 配置文件不存在");
    platform::RemoveFile(fileName);
    platform::CopyOneFile(templatePath, fileName, false);

    FillWorkbook(fileName, head, GetRootNodes(tree_control0));

    const std::string message = "导出标准件BOM成功！\n文件路径：" + fileName;
    theUI->NXMessageBox()->Show("标准件BOM", NXOpen::NXMessageBox::DialogTypeInformation, message.c_str());
    platform::OpenWithAssociatedProgram(fileName);
}
