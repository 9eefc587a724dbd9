// What the generator's tests share: the source and build folders, a scratch folder of the
// test's own, and the bundled configuration tables the generated moulds must follow.
#pragma once

#include <stdlib.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "HostSession.hpp"
#include "platform/ReadConfigFile.h"

namespace moldgen_test {

namespace fs = std::filesystem;

inline fs::path SourceDir() {
    const char* dir = getenv("VORNADEL_SOURCE_DIR");
    return dir != nullptr ? fs::path(dir) : fs::current_path();
}

inline fs::path BinaryDir() {
    const char* dir = getenv("VORNADEL_BINARY_DIR");
    return dir != nullptr ? fs::path(dir) : fs::current_path() / "build";
}

inline std::string ReadBytes(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
}

inline void WriteBytes(const fs::path& path, const std::string& bytes) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out << bytes;
}

// A folder of the test's own, removed when the test ends.
class ScratchTest : public ::testing::Test {
protected:
    void SetUp() override {
        char pattern[] = "/tmp/vornadel-moldgen-XXXXXX";
        ASSERT_NE(mkdtemp(pattern), nullptr);
        scratch_ = pattern;
    }
    void TearDown() override {
        std::error_code ignored;
        fs::remove_all(scratch_, ignored);
    }
    fs::path scratch_;
};

// One column of a bundled configuration table, read as the plug-in reads it (GBK): its non-empty
// cells, in order. Empty when the table or the column is missing.
inline std::vector<std::string> ConfigColumn(const fs::path& table, const std::string& title) {
    ReadConfigFile reader;
    reader.OpenConfigFile(host::Utf8ToGbk(table.string()));
    std::vector<std::string> column;
    for (const std::string& cell : reader.GetColumnValue(title))
        if (!cell.empty()) column.push_back(cell);
    return column;
}

// The standard-part table of the bundled plastic-mould configuration.
inline fs::path StdPartTable() { return SourceDir() / u8"samples/config/塑胶模/std_part_config.csv"; }
inline fs::path LayerTable() { return SourceDir() / "samples/config/TK/std_layers.csv"; }

}  // namespace moldgen_test
