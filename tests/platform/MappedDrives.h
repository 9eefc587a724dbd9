// A scratch folder for each test, with drives C: and D: pointing into it: on POSIX through the
// path mapping's drive table; on Windows, where a test cannot move a drive, W() puts the two
// drives' paths into the scratch folder.
#pragma once

#include <gtest/gtest.h>

#include "support/Posix.hpp"

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

    // The Windows path the plug-in forms, as the test hands it to the platform layer: unchanged on
    // POSIX (the drive table maps it); on Windows "C:" and "D:" become the scratch folders, and
    // any other drive stays the machine's own (E: is not there).
    std::string W(const std::string& path) const {
#ifdef _WIN32
        if (path.size() >= 2 && path[1] == ':' && (path[0] == 'C' || path[0] == 'D'))
            return (path[0] == 'C' ? C() : D()).string() + path.substr(2);
#endif
        return path;
    }

    // The folders that drives C: and D: stand for.
    std::filesystem::path C() const { return root_ / "c"; }
    std::filesystem::path D() const { return root_ / "d"; }

    // A folder or file below a drive folder, named in UTF-8 as on disk.
    static std::filesystem::path U8(const char* utf8) { return std::filesystem::u8path(utf8); }

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
