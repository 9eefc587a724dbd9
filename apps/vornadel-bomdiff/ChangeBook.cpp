#include "ChangeBook.hpp"

#include <ctime>
#include <fstream>
#include <iterator>

#include "Platform.hpp"
#include "Report.hpp"
#include "XlsBook.h"

namespace bomdiff {

namespace fs = std::filesystem;

namespace {

const char* const kTemplateName = u8"标准件变更单.xls";

// Cells of the template besides the BOM head (which is where the export writes it).
const Cell kOlderFileCell = {1, 11}, kNewerFileCell = {3, 11}, kDateCell = {4, 11};
const int kFirstRow = 6;  // the template rows, one per kind in the order of Kind, then the changes
const int kColumns = 15;
const int kPlainFormat = 15;  // the default cell format, for template rows left over
enum Column { kNumber, kKind, kNameColumn, kModelColumn, kBrandColumn, kMaterialColumn, kHeatColumn, kOldQuantity,
              kNewQuantity, kOrder, kSupplierColumn, kLeadTimeColumn, kStatusColumn, kRemarkColumn, kChanges };

std::string Today() {
    const std::time_t now = std::time(nullptr);
    char text[16] = "";
    std::strftime(text, sizeof text, "%Y-%m-%d", std::localtime(&now));
    return text;
}

}  // namespace

fs::path ChangeBookTemplate() {
    return fs::u8path(runner::ExecutablePath()).parent_path() / fs::u8path(kTemplateName);
}

std::string WriteChangeBook(const fs::path& templatePath, const fs::path& out, const Bom& older, const Bom& newer,
                            const Comparison& comparison) {
    std::ifstream in(templatePath, std::ios::binary);
    const std::vector<unsigned char> bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    xls::Book book;
    if (!in || !book.loadBuffer(bytes.data(), bytes.size()))
        return "cannot read the template " + Utf8Path(templatePath) + ": " + (in ? book.errorMessage() : "no such file");
    xls::Sheet* sheet = book.getSheet(book.activeSheet());
    if (sheet == nullptr) return "the template " + Utf8Path(templatePath) + " has no worksheet: " + book.errorMessage();

    bool written = true;
    auto write = [&](int row, int column, const std::string& text, int format) {
        const std::vector<unsigned short> units = Utf16(text);
        written = sheet->writeStrUtf16(row, column, units.data(), units.size(), format) && written;
    };
    for (int f = 0; f < kHeadFields; ++f) write(kHeadCells[f].row, kHeadCells[f].column, newer.head[f], -1);
    write(kOlderFileCell.row, kOlderFileCell.column, Utf8Path(older.file.filename()), -1);
    write(kNewerFileCell.row, kNewerFileCell.column, Utf8Path(newer.file.filename()), -1);
    write(kDateCell.row, kDateCell.column, Today(), -1);

    // Each kind's format and label from its template row, before any row is written.
    const int kinds = static_cast<int>(Kind::Unchanged);
    std::vector<std::vector<int>> formats(kinds, std::vector<int>(kColumns));
    std::vector<std::string> labels(kinds);
    for (int k = 0; k < kinds; ++k) {
        for (int c = 0; c < kColumns; ++c) formats[k][c] = sheet->cellFormat(kFirstRow + k, c);
        std::vector<unsigned short> label;
        sheet->readStr(kFirstRow + k, kKind, label);
        labels[k] = Utf8(label);
    }
    int row = kFirstRow;
    for (const Change& change : comparison.changes) {
        if (change.kind == Kind::Unchanged) continue;
        const int k = static_cast<int>(change.kind);
        std::string texts[kColumns];
        texts[kNumber] = std::to_string(row - kFirstRow + 1);
        texts[kKind] = labels[k];
        texts[kNameColumn] = change.line.fields[kName];
        texts[kModelColumn] = change.line.fields[kModel];
        texts[kBrandColumn] = change.line.fields[kBrand];
        texts[kMaterialColumn] = change.line.fields[kMaterial];
        texts[kHeatColumn] = change.line.fields[kHeatTreatment];
        texts[kOldQuantity] = change.oldQuantity;
        texts[kNewQuantity] = change.newQuantity;
        texts[kOrder] = SignedDifference(change);
        texts[kSupplierColumn] = change.line.fields[kSupplier];
        texts[kLeadTimeColumn] = change.line.fields[kLeadTime];
        texts[kStatusColumn] = change.line.fields[kStatus];
        texts[kRemarkColumn] = change.line.fields[kRemark];
        texts[kChanges] = ChangedFieldsText(change);
        for (int c = 0; c < kColumns; ++c) write(row, c, texts[c], formats[k][c]);
        ++row;
    }
    for (; row < kFirstRow + kinds; ++row)  // template rows no change took
        for (int c = 0; c < kColumns; ++c) write(row, c, "", kPlainFormat);
    if (!written) return "cannot fill the template " + Utf8Path(templatePath) + ": " + book.errorMessage();

    std::vector<unsigned char> result;
    if (!book.saveBuffer(result)) return "cannot write " + Utf8Path(out) + ": " + book.errorMessage();
    std::error_code error;
    if (fs::exists(out, error)) return Utf8Path(out) + " exists already: give the name of a new file";
    std::ofstream file(out, std::ios::binary);
    file.write(reinterpret_cast<const char*>(result.data()), static_cast<std::streamsize>(result.size()));
    file.close();
    if (!file) {
        fs::remove(out, error);
        return "cannot write " + Utf8Path(out);
    }
    return "";
}

}  // namespace bomdiff
