// A scratch folder for each test, with drives C: and D: of the path mapping pointing into it.
#pragma once

#include <gtest/gtest.h>

#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

class MappedDrives : public ::testing::Test {
protected:
    void SetUp() override {
        std::string pattern = (std::filesystem::temp_directory_path() / "vornadel-XXXXXX").string();
        ASSERT_NE(nullptr, mkdtemp(pattern.data()));
        root_ = pattern;
        std::filesystem::create_directory(root_ / "c");
        std::filesystem::create_directory(root_ / "d");
        setenv("VORNADEL_DRIVES", ("C=" + C().string() + ";D=" + D().string()).c_str(), 1);
        unsetenv("VORNADEL_CURRENT_DRIVE");
    }

    void TearDown() override {
        unsetenv("VORNADEL_DRIVES");
        unsetenv("VORNADEL_CURRENT_DRIVE");
        std::error_code ignored;
        std::filesystem::permissions(root_, std::filesystem::perms::owner_all,
                                     std::filesystem::perm_options::add, ignored);
        std::filesystem::remove_all(root_, ignored);
    }

    // The folders that drives C: and D: stand for.
    std::filesystem::path C() const { return root_ / "c"; }
    std::filesystem::path D() const { return root_ / "d"; }

    // A folder or file below a drive folder, named in UTF-8 as on disk.
    static std::filesystem::path U8(const char* utf8) { return std::filesystem::path(std::string(utf8)); }

    static void WriteBytes(const std::filesystem::path& file, const std::string& bytes) {
        std::ofstream out(file, std::ios::binary);
        out << bytes;
    }

    static std::string ReadBytes(const std::filesystem::path& file) {
        std::ifstream in(file, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    }

    std::filesystem::path root_;
};
