#include "Compare.hpp"

#include <algorithm>
#include <map>

namespace bomdiff {

namespace {

const std::string kIdeographicSpace = u8"\u3000";

struct Lines {
    std::vector<PurchaseLine> lines;  // in order of their first row
    std::map<std::string, size_t> byIdentity;
};

std::string IdentityKey(const std::string (&fields)[kPartFields]) {
    std::string key;
    for (PartField f : kIdentityFields) key += fields[f] + '\x1F';
    return key;
}

void AddQuantity(Quantity& sum, const Quantity& more) {
    if (sum.number && more.number) {
        *sum.number += *more.number;
        sum.text = std::to_string(*sum.number);
        return;
    }
    sum.number.reset();
    if (!more.text.empty()) sum.text += (sum.text.empty() ? "" : "+") + more.text;
}

Lines Merge(const Bom& bom) {
    Lines merged;
    for (const BomLine& row : bom.lines) {
        std::string fields[kPartFields];
        for (int f = 0; f < kPartFields; ++f) fields[f] = Trimmed(row.fields[f]);
        const auto [at, fresh] = merged.byIdentity.emplace(IdentityKey(fields), merged.lines.size());
        if (fresh) {
            PurchaseLine line;
            std::copy(std::begin(fields), std::end(fields), std::begin(line.fields));
            line.quantity = ParseQuantity(fields[kQuantity]);
            line.fields[kQuantity] = line.quantity.text;
            merged.lines.push_back(std::move(line));
            continue;
        }
        PurchaseLine& line = merged.lines[at->second];
        AddQuantity(line.quantity, ParseQuantity(fields[kQuantity]));
        line.fields[kQuantity] = line.quantity.text;
        for (int f = 0; f < kPartFields; ++f) {
            if (f == kQuantity || fields[f].empty()) continue;
            std::string& value = line.fields[f];
            if (value.empty())
                value = fields[f];
            else if ((u8"、" + value + u8"、").find(u8"、" + fields[f] + u8"、") == std::string::npos)
                value += u8"、" + fields[f];
        }
    }
    return merged;
}

}  // namespace

const char* KindName(Kind kind) {
    switch (kind) {
    case Kind::Added: return "added";
    case Kind::Quantity: return "quantity";
    case Kind::Removed: return "removed";
    case Kind::Changed: return "changed";
    case Kind::Unchanged: return "unchanged";
    }
    return "";
}

const char* FieldName(PartField field) {
    switch (field) {
    case kSupplier: return "supplier";
    case kRemark: return "remark";
    case kLeadTime: return "lead_time";
    case kStatus: return "status";
    default: return "";
    }
}

std::string Trimmed(const std::string& text) {
    size_t begin = 0, end = text.size();
    for (;;) {
        if (begin < end && std::string(" \t\r\n").find(text[begin]) != std::string::npos) {
            ++begin;
        } else if (text.compare(begin, kIdeographicSpace.size(), kIdeographicSpace) == 0 && begin < end) {
            begin += kIdeographicSpace.size();
        } else {
            break;
        }
    }
    for (;;) {
        if (end > begin && std::string(" \t\r\n").find(text[end - 1]) != std::string::npos) {
            --end;
        } else if (end >= begin + kIdeographicSpace.size() &&
                   text.compare(end - kIdeographicSpace.size(), kIdeographicSpace.size(), kIdeographicSpace) == 0) {
            end -= kIdeographicSpace.size();
        } else {
            break;
        }
    }
    return text.substr(begin, end - begin);
}

Quantity ParseQuantity(const std::string& text) {
    Quantity q;
    q.text = Trimmed(text);
    std::string digits;
    for (size_t i = 0; i < q.text.size();) {
        const unsigned char c = static_cast<unsigned char>(q.text[i]);
        // Full-width digits U+FF10..U+FF19: EF BC 90..99.
        if (c == 0xEF && i + 2 < q.text.size() && static_cast<unsigned char>(q.text[i + 1]) == 0xBC &&
            static_cast<unsigned char>(q.text[i + 2]) >= 0x90 && static_cast<unsigned char>(q.text[i + 2]) <= 0x99) {
            digits += static_cast<char>('0' + (static_cast<unsigned char>(q.text[i + 2]) - 0x90));
            i += 3;
        } else if (c >= '0' && c <= '9') {
            digits += static_cast<char>(c);
            ++i;
        } else {
            return q;
        }
    }
    if (digits.empty() || digits.size() > 15) return q;
    q.number = std::stoll(digits);
    q.text = std::to_string(*q.number);
    return q;
}

Comparison Compare(const Bom& older, const Bom& newer, bool all) {
    Comparison result;
    result.differentMoulds = Trimmed(older.head[kMouldNo]) != Trimmed(newer.head[kMouldNo]);
    const Lines before = Merge(older), after = Merge(newer);
    std::vector<Change> byKind[5];
    for (const PurchaseLine& line : after.lines) {
        Change change;
        change.line = line;
        change.newQuantity = line.quantity.text;
        const auto old = before.byIdentity.find(IdentityKey(line.fields));
        if (old == before.byIdentity.end()) {
            change.kind = Kind::Added;
            change.difference = line.quantity.number;
            byKind[static_cast<int>(Kind::Added)].push_back(std::move(change));
            continue;
        }
        const PurchaseLine& was = before.lines[old->second];
        change.oldQuantity = was.quantity.text;
        for (PartField f : kComparedFields)
            if (was.fields[f] != line.fields[f]) change.fields.push_back({f, was.fields[f], line.fields[f]});
        if (was.quantity.text != line.quantity.text) {
            change.kind = Kind::Quantity;
            if (was.quantity.number && line.quantity.number) change.difference = *line.quantity.number - *was.quantity.number;
        } else {
            change.kind = change.fields.empty() ? Kind::Unchanged : Kind::Changed;
            change.difference = 0;
        }
        if (change.kind == Kind::Unchanged) ++result.unchanged;
        if (change.kind != Kind::Unchanged || all) byKind[static_cast<int>(change.kind)].push_back(std::move(change));
    }
    for (const PurchaseLine& line : before.lines) {
        if (after.byIdentity.count(IdentityKey(line.fields)) != 0) continue;
        Change change;
        change.kind = Kind::Removed;
        change.line = line;
        change.oldQuantity = line.quantity.text;
        if (line.quantity.number) change.difference = -*line.quantity.number;
        byKind[static_cast<int>(Kind::Removed)].push_back(std::move(change));
    }
    for (auto& kind : byKind)
        for (Change& change : kind) result.changes.push_back(std::move(change));
    return result;
}

}  // namespace bomdiff
