// What vornadel-bomdiff prints and writes: a text table for people, tab-separated lines for
// programs, and the change workbook.
#pragma once

#include <filesystem>
#include <ostream>

#include "Compare.hpp"

namespace bomdiff {

// The table at the terminal (UTF-8): the two files, one row per change, a count of each kind.
void PrintText(std::ostream& out, const Bom& older, const Bom& newer, const Comparison& comparison);

// One line per change: kind, name, model/size, brand, material, heat treatment, old quantity,
// new quantity, difference, then each changed field as field=old→new.
void PrintTsv(std::ostream& out, const Comparison& comparison);

// The changed fields as people read them: "供应商: 龙记集团 → 盘起；备注: … → …".
std::string ChangedFieldsText(const Change& change);

// The difference as listed: "+3", "-2", "0"; "" when a quantity is not a number.
std::string SignedDifference(const Change& change);

}  // namespace bomdiff
