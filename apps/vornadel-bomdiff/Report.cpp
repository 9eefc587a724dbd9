#include "Report.hpp"

#include <algorithm>

#include "Output.hpp"

namespace bomdiff {

namespace {

// As the people reading the table name the kinds and fields.
const char* KindTitle(Kind kind) {
    switch (kind) {
    case Kind::Added: return u8"新增";
    case Kind::Quantity: return u8"数量变更";
    case Kind::Removed: return u8"删除";
    case Kind::Changed: return u8"变更";
    case Kind::Unchanged: return u8"未变";
    }
    return "";
}

}  // namespace

std::string ChangedFieldsText(const Change& change) {
    std::string text;
    for (const FieldChange& c : change.fields)
        text += (text.empty() ? "" : u8"；") + std::string(kPartTitles[c.field]) + u8": " + c.before + u8" → " + c.after;
    return text;
}

std::string SignedDifference(const Change& change) {
    if (!change.difference) return "";
    return (*change.difference > 0 ? "+" : "") + std::to_string(*change.difference);
}

void PrintText(std::ostream& out, const Bom& older, const Bom& newer, const Comparison& comparison) {
    out << u8"旧: " << Utf8Path(older.file) << u8"  (模具编号 " << older.head[kMouldNo] << ")\n";
    out << u8"新: " << Utf8Path(newer.file) << u8"  (模具编号 " << newer.head[kMouldNo] << ")\n";
    std::vector<std::vector<std::string>> table;
    table.push_back({u8"类别"});
    for (PartField f : kIdentityFields) table[0].push_back(kPartTitles[f]);
    for (const char* title : {u8"原数量", u8"新数量", u8"订购", u8"变更内容"}) table[0].push_back(title);
    int counts[5] = {};
    for (const Change& change : comparison.changes) {
        ++counts[static_cast<int>(change.kind)];
        std::vector<std::string> row = {KindTitle(change.kind)};
        for (PartField f : kIdentityFields) row.push_back(change.line.fields[f]);
        row.push_back(change.oldQuantity);
        row.push_back(change.newQuantity);
        row.push_back(SignedDifference(change));
        row.push_back(ChangedFieldsText(change));
        table.push_back(row);
    }
    std::vector<int> widths(table[0].size(), 0);
    for (const auto& row : table)
        for (size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], runner::DisplayWidth(row[i]));
    for (size_t r = 0; r < table.size(); ++r) {
        std::string line;
        for (size_t i = 0; i < table[r].size(); ++i) line += i + 1 < table[r].size() ? runner::Pad(table[r][i], widths[i]) + "  " : table[r][i];
        while (!line.empty() && line.back() == ' ') line.pop_back();
        out << line << '\n';
        if (r == 0) out << std::string(static_cast<size_t>(runner::DisplayWidth(line)), '-') << '\n';
    }
    if (comparison.changes.empty()) out << u8"(无变更)\n";
    counts[static_cast<int>(Kind::Unchanged)] = comparison.unchanged;
    std::string summary;
    for (Kind kind : {Kind::Added, Kind::Quantity, Kind::Removed, Kind::Changed, Kind::Unchanged})
        summary += (summary.empty() ? "" : u8"，") + std::string(KindTitle(kind)) + " " + std::to_string(counts[static_cast<int>(kind)]);
    out << summary << '\n';
}

void PrintTsv(std::ostream& out, const Comparison& comparison) {
    for (const Change& change : comparison.changes) {
        out << KindName(change.kind);
        for (PartField f : kIdentityFields) out << '\t' << runner::TsvField(change.line.fields[f]);
        out << '\t' << runner::TsvField(change.oldQuantity) << '\t' << runner::TsvField(change.newQuantity) << '\t'
            << SignedDifference(change);
        for (const FieldChange& c : change.fields)
            out << '\t' << FieldName(c.field) << '=' << runner::TsvField(c.before) << u8"→" << runner::TsvField(c.after);
        out << '\n';
    }
}

}  // namespace bomdiff
