// An exported purchase BOM as read back from its workbook: the head and the part rows, in the
// cells the export writes them (head cells in rows 2 to 5, part rows from row 7).
#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

namespace bomdiff {

// Input that cannot be compared: a workbook that cannot be read, a workbook that is no BOM export,
// a folder without two exports. The message names the file or folder.
class BadInput : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// The head fields, in the order the change workbook and the messages use them.
enum HeadField { kCustomer, kMouldNo, kProductNo, kDesigner, kTonnage, kProductName, kProductMaterial,
                 kProductThickness, kMouldType, kErpNo, kOrderNo, kHeadFields };

// The cell of each head field: (row, column), counted from 0.
struct Cell {
    int row, column;
};
extern const Cell kHeadCells[kHeadFields];

// The part columns, in the order of the sheet.
enum PartField { kName, kModel, kBrand, kQuantity, kHeatTreatment, kRemark, kMaterial, kSupplier, kLeadTime,
                 kStatus, kModified, kPartFields };
extern const int kPartColumns[kPartFields];   // sheet column of each field
extern const char* const kPartTitles[kPartFields];  // its title in the sheet's title row (UTF-8)

const int kTitleRow = 5;      // the titles of the part columns
const int kFirstPartRow = 6;

// One part row (UTF-8 texts as the cells hold them).
struct BomLine {
    std::string fields[kPartFields];
};

struct Bom {
    std::filesystem::path file;
    std::string head[kHeadFields];
    std::vector<BomLine> lines;  // the part rows that are not blank, in sheet order
};

// Reads the BOM export at path (the sheet active when it was saved). Throws BadInput.
Bom ReadBom(const std::filesystem::path& path);

// The two newest exports of one part in folder: "<leaf>标准件BOM.xls" is the oldest, then
// "-1", "-2", ... by their counter. Returns {older, newer}. Throws BadInput.
std::pair<std::filesystem::path, std::filesystem::path> NewestExports(const std::filesystem::path& folder);

// A path as UTF-8, for messages.
std::string Utf8Path(const std::filesystem::path& path);

// UTF-16 units to UTF-8 (an unpaired surrogate becomes U+FFFD), and back.
std::string Utf8(const std::vector<unsigned short>& units);
std::vector<unsigned short> Utf16(const std::string& utf8);

}  // namespace bomdiff
