// The change workbook: a copy of the template 标准件变更单.xls with the newer BOM's head and one row
// per change, each kind in the format of its own template row.
#pragma once

#include <filesystem>
#include <string>

#include "Compare.hpp"

namespace bomdiff {

// The template, beside the program (the build copies samples/bomdiff/标准件变更单.xls there).
std::filesystem::path ChangeBookTemplate();

// Writes the change workbook to out, which must not exist. "" on success, else what went wrong
// (out is then not written).
std::string WriteChangeBook(const std::filesystem::path& templatePath, const std::filesystem::path& out,
                            const Bom& older, const Bom& newer, const Comparison& comparison);

}  // namespace bomdiff
