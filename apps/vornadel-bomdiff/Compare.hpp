// The comparison of two BOMs as purchase lines. A line is identified by name, model/size, brand,
// material and heat treatment (trimmed); rows of one BOM with the same identity are one line with
// their quantities added.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Bom.hpp"

namespace bomdiff {

// What happened to a purchase line, in the order the lines are listed.
enum class Kind { Added, Quantity, Removed, Changed, Unchanged };
const char* KindName(Kind kind);  // "added", "quantity", "removed", "changed", "unchanged"

// The fields that make a line's identity, in the order they are shown.
const PartField kIdentityFields[] = {kName, kModel, kBrand, kMaterial, kHeatTreatment};
// The fields compared beside the quantity, and their names in a change list.
const PartField kComparedFields[] = {kSupplier, kRemark, kLeadTime, kStatus};
const char* FieldName(PartField field);  // "supplier", "remark", "lead_time", "status"

// A quantity: a whole number when its text is one (full-width digits too), else its text.
struct Quantity {
    std::optional<long long> number;
    std::string text;  // the number in ASCII digits, or the trimmed text
};
Quantity ParseQuantity(const std::string& text);

// One purchase line: the rows of one BOM that share an identity.
struct PurchaseLine {
    std::string fields[kPartFields];  // trimmed; quantity: the sum; other fields: each distinct value, joined by "、"
    Quantity quantity;
};

struct FieldChange {
    PartField field;
    std::string before, after;
};

struct Change {
    Kind kind;
    PurchaseLine line;  // the newer BOM's line; the older one's for a removed line
    std::string oldQuantity, newQuantity;  // "" for a line the BOM does not have
    std::optional<long long> difference;   // what to order (negative: surplus); none when a quantity is not a number
    std::vector<FieldChange> fields;
};

struct Comparison {
    std::vector<Change> changes;  // by kind, then in the order of the newer BOM (removed: of the older)
    int unchanged = 0;
    bool differentMoulds = false;  // the mould numbers differ
};

// With all, unchanged lines are listed too.
Comparison Compare(const Bom& older, const Bom& newer, bool all);

// Text without leading and trailing blanks (spaces, tabs, line ends, U+3000 ideographic space).
std::string Trimmed(const std::string& utf8);

}  // namespace bomdiff
