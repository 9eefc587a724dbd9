#include "Bom.hpp"

#include <fstream>
#include <iterator>
#include <map>
#include <regex>

#include "XlsBook.h"

namespace bomdiff {

namespace fs = std::filesystem;

// As the export writes them.
const Cell kHeadCells[kHeadFields] = {{1, 4}, {1, 8}, {2, 1}, {2, 11}, {4, 8}, {1, 1},
                                      {3, 1}, {4, 1}, {3, 4}, {2, 8}, {3, 8}};
const int kPartColumns[kPartFields] = {1, 3, 5, 7, 9, 11, 13, 14, 15, 16, 17};
const char* const kPartTitles[kPartFields] = {u8"名称", u8"型号/尺寸", u8"品牌", u8"数量", u8"热处理", u8"备注",
                                              u8"材质", u8"供应商", u8"采购周期", u8"状态", u8"修改时间"};

namespace {

// The label left of the mould number in the head, which every BOM export carries.
const Cell kMouldNoLabel = {1, 7};
const char* const kMouldNoTitle = u8"模具编号";
// The columns a comparison needs: the identity and the quantity.
const PartField kNeededColumns[] = {kName, kModel, kBrand, kQuantity, kHeatTreatment, kMaterial};

std::string ReadCell(const xls::Sheet& sheet, int row, int column) {
    std::vector<unsigned short> units;
    sheet.readStr(row, column, units);
    return Utf8(units);
}

std::vector<unsigned char> ReadFile(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) throw BadInput("cannot read " + Utf8Path(path) + ": no such file or no permission");
    std::vector<unsigned char> bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    if (in.bad()) throw BadInput("cannot read " + Utf8Path(path));
    return bytes;
}

}  // namespace

std::string Utf8Path(const fs::path& path) {
    const auto text = path.u8string();
    return std::string(text.begin(), text.end());
}

std::string Utf8(const std::vector<unsigned short>& units) {
    std::string out;
    for (size_t i = 0; i < units.size(); ++i) {
        unsigned long cp = units[i];
        if (cp >= 0xD800 && cp <= 0xDBFF && i + 1 < units.size() && units[i + 1] >= 0xDC00 && units[i + 1] <= 0xDFFF) {
            cp = 0x10000 + ((cp - 0xD800) << 10) + (units[++i] - 0xDC00);
        } else if (cp >= 0xD800 && cp <= 0xDFFF) {
            cp = 0xFFFD;
        }
        if (cp < 0x80) {
            out += static_cast<char>(cp);
        } else if (cp < 0x800) {
            out += static_cast<char>(0xC0 | (cp >> 6));
            out += static_cast<char>(0x80 | (cp & 0x3F));
        } else if (cp < 0x10000) {
            out += static_cast<char>(0xE0 | (cp >> 12));
            out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
            out += static_cast<char>(0x80 | (cp & 0x3F));
        } else {
            out += static_cast<char>(0xF0 | (cp >> 18));
            out += static_cast<char>(0x80 | ((cp >> 12) & 0x3F));
            out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
            out += static_cast<char>(0x80 | (cp & 0x3F));
        }
    }
    return out;
}

std::vector<unsigned short> Utf16(const std::string& utf8) {
    std::vector<unsigned short> units;
    for (size_t i = 0; i < utf8.size();) {
        const unsigned char lead = static_cast<unsigned char>(utf8[i]);
        const size_t length = lead < 0x80 ? 1 : lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC0 ? 2 : 1;
        unsigned long cp = length == 1 ? lead : lead & (0x3F >> (length - 1));
        for (size_t k = 1; k < length && i + k < utf8.size(); ++k) cp = (cp << 6) | (utf8[i + k] & 0x3F);
        i += length;
        if (cp >= 0x10000) {
            units.push_back(static_cast<unsigned short>(0xD800 + ((cp - 0x10000) >> 10)));
            units.push_back(static_cast<unsigned short>(0xDC00 + ((cp - 0x10000) & 0x3FF)));
        } else {
            units.push_back(static_cast<unsigned short>(cp));
        }
    }
    return units;
}

Bom ReadBom(const fs::path& path) {
    const std::vector<unsigned char> bytes = ReadFile(path);
    xls::Book book;
    if (!book.loadBuffer(bytes.data(), bytes.size()))
        throw BadInput("cannot read " + Utf8Path(path) + ": " + book.errorMessage());
    const xls::Sheet* sheet = book.getSheet(book.activeSheet());
    if (sheet == nullptr) throw BadInput("cannot read " + Utf8Path(path) + ": " + book.errorMessage());
    const std::string notBom = Utf8Path(path) + " is not a BOM export: ";
    if (ReadCell(*sheet, kMouldNoLabel.row, kMouldNoLabel.column) != kMouldNoTitle)
        throw BadInput(notBom + u8"no head (\"模具编号\" is not in cell H2)");
    for (PartField field : kNeededColumns) {
        const std::string title = ReadCell(*sheet, kTitleRow, kPartColumns[field]);
        if (title != kPartTitles[field])
            throw BadInput(notBom + "the title of column " + std::string(1, static_cast<char>('A' + kPartColumns[field])) +
                           " in row 6 is \"" + title + "\", not \"" + kPartTitles[field] + "\"");
    }
    Bom bom;
    bom.file = path;
    for (int f = 0; f < kHeadFields; ++f) bom.head[f] = ReadCell(*sheet, kHeadCells[f].row, kHeadCells[f].column);
    const int rows = sheet->rowCount();
    for (int row = kFirstPartRow; row < rows; ++row) {
        BomLine line;
        bool blank = true;
        for (int f = 0; f < kPartFields; ++f) {
            line.fields[f] = ReadCell(*sheet, row, kPartColumns[f]);
            blank = blank && line.fields[f].empty();
        }
        if (!blank) bom.lines.push_back(std::move(line));
    }
    return bom;
}

std::pair<fs::path, fs::path> NewestExports(const fs::path& folder) {
    std::error_code error;
    if (!fs::is_directory(folder, error)) throw BadInput("cannot read the folder " + Utf8Path(folder));
    // Exports by the part they are of (the leaf before "标准件BOM"), then by their counter.
    static const std::regex exportName(u8"(.*)标准件BOM(?:-([0-9]{1,9}))?\\.xls");
    std::map<std::string, std::map<long, fs::path>> exports;
    for (fs::directory_iterator it(folder, error), end; !error && it != end; it.increment(error)) {
        const std::string name = Utf8Path(it->path().filename());
        std::smatch match;
        if (!std::regex_match(name, match, exportName) || !it->is_regular_file(error)) continue;
        exports[match[1]][match[2].matched ? std::stol(match[2]) : 0] = it->path();
    }
    if (error) throw BadInput("cannot read the folder " + Utf8Path(folder) + ": " + error.message());
    // Several parts' exports: those of the part the folder is named after (the export's own folder).
    auto part = exports.find(Utf8Path(folder.filename().empty() ? folder.parent_path().filename() : folder.filename()));
    if (part == exports.end() && exports.size() == 1) part = exports.begin();
    if (part == exports.end() && exports.size() > 1)
        throw BadInput("the folder " + Utf8Path(folder) + " holds the exports of " + std::to_string(exports.size()) +
                       " parts: name the two workbooks to compare");
    if (part == exports.end() || part->second.size() < 2)
        throw BadInput("the folder " + Utf8Path(folder) + u8" holds fewer than two BOM exports (<part>标准件BOM.xls, -1, -2, ...)");
    const auto newest = std::prev(part->second.end());
    return {std::prev(newest)->second, newest->second};
}

}  // namespace bomdiff
