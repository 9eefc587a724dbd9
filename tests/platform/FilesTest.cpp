// The file operations of the platform layer, on mapped drives, including how each one fails.

#include "platform/MappedDrives.h"

#include "platform/Files.h"

#include <algorithm>
#include <vector>

#include "support/DiskFull.hpp"

namespace fs = std::filesystem;

namespace {

// The names in folder, to show that no temporary file was left behind.
std::vector<std::string> Names(const fs::path& folder) {
    std::vector<std::string> names;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
        names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

class PathExists : public MappedDrives {};
class MakeFolder : public MappedDrives {};
class RemoveFile : public MappedDrives {};
class CopyOneFile : public MappedDrives {};
class ReadWholeFile : public MappedDrives {};
class ReplaceFileBytes : public MappedDrives {};
class ReplaceTextFile : public MappedDrives {};

TEST_F(PathExists, FindsFilesAndFolders) {
    WriteBytes(D() / "a.csv", "x");
    fs::create_directory(D() / "sub");
    EXPECT_TRUE(platform::PathExists(W("D:\\a.csv")));
    EXPECT_TRUE(platform::PathExists(W("D:\\sub")));
    EXPECT_TRUE(platform::PathExists(W("D:\\")));
}

TEST_F(PathExists, MissingFileDoesNotExist) {
    EXPECT_FALSE(platform::PathExists(W("D:\\missing.csv")));
}

TEST_F(PathExists, NothingExistsOnUnmappedDrive) {
    EXPECT_FALSE(platform::PathExists(W("E:\\")));
}

TEST_F(MakeFolder, CreatesChineseFolderNamedInUtf8OnDisk) {
    EXPECT_TRUE(platform::MakeFolder(W("D:\\项目")));
    EXPECT_TRUE(fs::is_directory(D() / U8(u8"项目")));
    EXPECT_TRUE(platform::PathExists(W("D:\\项目")));
}

TEST_F(MakeFolder, SecondTimeFails) {
    ASSERT_TRUE(platform::MakeFolder(W("D:\\out")));
    EXPECT_FALSE(platform::MakeFolder(W("D:\\out")));
    EXPECT_TRUE(fs::is_directory(D() / "out"));
}

TEST_F(MakeFolder, CreatesOnlyTheLastLevel) {
    EXPECT_FALSE(platform::MakeFolder(W("D:\\a\\b")));
    EXPECT_FALSE(fs::exists(D() / "a"));
}

TEST_F(MakeFolder, FailsOnUnmappedDrive) {
    EXPECT_FALSE(platform::MakeFolder(W("E:\\out")));
}

TEST_F(RemoveFile, DeletesAFile) {
    WriteBytes(D() / U8(u8"表.csv"), "x");
    EXPECT_TRUE(platform::RemoveFile(W("D:\\表.csv")));
    EXPECT_FALSE(fs::exists(D() / U8(u8"表.csv")));
}

TEST_F(RemoveFile, MissingFileFails) {
    EXPECT_FALSE(platform::RemoveFile(W("D:\\missing.xls")));
}

TEST_F(RemoveFile, NeverDeletesAFolder) {
    fs::create_directory(D() / "empty");
    EXPECT_FALSE(platform::RemoveFile(W("D:\\empty")));
    EXPECT_TRUE(fs::is_directory(D() / "empty"));
}

TEST_F(CopyOneFile, CopiesBytesExactly) {
    const std::string bytes("a\r\nb\0\x1A\xFF", 7);
    WriteBytes(C() / U8(u8"模板.xls"), bytes);
    fs::create_directory(D() / "A100");
    EXPECT_TRUE(platform::CopyOneFile(W("C:\\模板.xls"), W("D:\\A100\\A100标准件BOM.xls"), false));
    EXPECT_EQ(bytes, ReadBytes(D() / "A100" / U8(u8"A100标准件BOM.xls")));
}

TEST_F(CopyOneFile, FailIfExistsLeavesTargetAlone) {
    WriteBytes(C() / "from", "new");
    WriteBytes(C() / "to", "old");
    EXPECT_FALSE(platform::CopyOneFile(W("C:\\from"), W("C:\\to"), true));
    EXPECT_EQ("old", ReadBytes(C() / "to"));
}

TEST_F(CopyOneFile, FailIfExistsCopiesToFreeName) {
    WriteBytes(C() / "from", "new");
    EXPECT_TRUE(platform::CopyOneFile(W("C:\\from"), W("C:\\to"), true));
    EXPECT_EQ("new", ReadBytes(C() / "to"));
}

TEST_F(CopyOneFile, WithoutFailIfExistsReplacesTarget) {
    WriteBytes(C() / "from", "new");
    WriteBytes(C() / "to", "older and longer");
    EXPECT_TRUE(platform::CopyOneFile(W("C:\\from"), W("C:\\to"), false));
    EXPECT_EQ("new", ReadBytes(C() / "to"));
}

TEST_F(CopyOneFile, MissingSourceFailsAndCreatesNothing) {
    EXPECT_FALSE(platform::CopyOneFile(W("C:\\missing"), W("C:\\to"), false));
    EXPECT_FALSE(fs::exists(C() / "to"));
}

TEST_F(CopyOneFile, FolderIsNoSource) {
    fs::create_directory(C() / "folder");
    EXPECT_FALSE(platform::CopyOneFile(W("C:\\folder"), W("C:\\to"), false));
    EXPECT_FALSE(fs::exists(C() / "to"));
}

TEST_F(CopyOneFile, OntoItselfFailsAndKeepsTheFile) {
    WriteBytes(C() / "same", "content");
    EXPECT_FALSE(platform::CopyOneFile(W("C:\\same"), W("C:\\same"), false));
    EXPECT_EQ("content", ReadBytes(C() / "same"));
}

TEST_F(CopyOneFile, MissingTargetFolderFails) {
    WriteBytes(C() / "from", "x");
    EXPECT_FALSE(platform::CopyOneFile(W("C:\\from"), W("C:\\no\\to"), false));
}

TEST_F(CopyOneFile, UnmappedDriveFails) {
    WriteBytes(C() / "from", "x");
    EXPECT_FALSE(platform::CopyOneFile(W("C:\\from"), W("E:\\to"), false));
    EXPECT_FALSE(platform::CopyOneFile(W("E:\\from"), W("C:\\to"), false));
}

TEST_F(ReadWholeFile, ReadsBytesWithoutLineEndTranslation) {
    const std::string bytes("a,b,\r\n\xB1\xEA\r\n\0\x1A\r", 13);
    WriteBytes(C() / "t.csv", bytes);
    std::string got;
    EXPECT_TRUE(platform::ReadWholeFile(W("C:\\t.csv"), got));
    EXPECT_EQ(bytes, got);
}

TEST_F(ReadWholeFile, ReadsEmptyFile) {
    WriteBytes(C() / "empty.csv", "");
    std::string got = "sentinel";
    EXPECT_TRUE(platform::ReadWholeFile(W("C:\\empty.csv"), got));
    EXPECT_EQ("", got);
}

TEST_F(ReadWholeFile, MissingFileFailsAndGivesNoBytes) {
    std::string got = "sentinel";
    EXPECT_FALSE(platform::ReadWholeFile(W("C:\\missing.csv"), got));
    EXPECT_EQ("", got);
}

TEST_F(ReadWholeFile, FolderCannotBeRead) {
    fs::create_directory(C() / "folder");
    std::string got;
    EXPECT_FALSE(platform::ReadWholeFile(W("C:\\folder"), got));
}

TEST_F(ReplaceFileBytes, WritesBytesExactly) {
    const std::string bytes("a\nb\r\n\0\xFF", 7);
    EXPECT_TRUE(platform::ReplaceFileBytes(W("C:\\t.csv"), bytes));
    EXPECT_EQ(bytes, ReadBytes(C() / "t.csv"));
}

TEST_F(ReplaceTextFile, EveryLineFeedBecomesCrLf) {
    EXPECT_TRUE(platform::ReplaceTextFile(W("C:\\t.csv"), "a,b,\n1,2,\n3,,\n"));
    EXPECT_EQ("a,b,\r\n1,2,\r\n3,,\r\n", ReadBytes(C() / "t.csv"));
}

TEST_F(ReplaceTextFile, WritesGbkBytesUnderChineseNames) {
    ASSERT_TRUE(platform::MakeFolder(W("D:\\配置")));
    EXPECT_TRUE(platform::ReplaceTextFile(W("D:\\配置\\表.csv"), "出图的路径,\n"));
    EXPECT_EQ(std::string("出图的路径,\r\n"), ReadBytes(D() / U8(u8"配置") / U8(u8"表.csv")));
    std::string back;
    EXPECT_TRUE(platform::ReadWholeFile(W("D:\\配置\\表.csv"), back));
    EXPECT_EQ("出图的路径,\r\n", back);
}

TEST_F(ReplaceFileBytes, ReplacesOldContentAndLeavesNoTemporaryFile) {
    WriteBytes(C() / "t.csv", "a much longer old content\r\n");
    EXPECT_TRUE(platform::ReplaceFileBytes(W("C:\\t.csv"), "new\r\n"));
    EXPECT_EQ("new\r\n", ReadBytes(C() / "t.csv"));
    EXPECT_EQ(std::vector<std::string>{"t.csv"}, Names(C()));
}

TEST_F(ReplaceFileBytes, KeepsPermissionsOfReplacedFile) {
#ifdef _WIN32
    GTEST_SKIP() << "POSIX permission bits; a Windows file has none";
#endif
    WriteBytes(C() / "t.csv", "old");
    fs::permissions(C() / "t.csv", fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
    ASSERT_TRUE(platform::ReplaceFileBytes(W("C:\\t.csv"), "new"));
    EXPECT_EQ(fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read,
              fs::status(C() / "t.csv").permissions());
}

TEST_F(ReplaceTextFile, FailedWriteLeavesOldFileIntact) {
    VORNADEL_NEEDS_DISK_FULL();
    WriteBytes(C() / "t.csv", "old,\r\n");
    bool replaced;
    {
        vornadel_test::DiskFullAfter diskFull(16);
        replaced = platform::ReplaceTextFile(W("C:\\t.csv"), std::string(1000, 'x'));
    }

    EXPECT_FALSE(replaced);
    EXPECT_EQ("old,\r\n", ReadBytes(C() / "t.csv"));
    EXPECT_EQ(std::vector<std::string>{"t.csv"}, Names(C()));
}

TEST_F(ReplaceFileBytes, ReadOnlyFolderLeavesOldFileIntact) {
#ifdef _WIN32
    GTEST_SKIP() << "Windows has no read-only folders: the read-only attribute of a folder does not stop writes";
#else
    if (geteuid() == 0) GTEST_SKIP() << "root writes into read-only folders";
#endif
    fs::create_directory(C() / "ro");
    WriteBytes(C() / "ro" / "t.csv", "old");
    fs::permissions(C() / "ro", fs::perms::owner_read | fs::perms::owner_exec);
    EXPECT_FALSE(platform::ReplaceFileBytes(W("C:\\ro\\t.csv"), "new"));
    fs::permissions(C() / "ro", fs::perms::owner_all);
    EXPECT_EQ("old", ReadBytes(C() / "ro" / "t.csv"));
}

TEST_F(ReplaceFileBytes, FolderInTheWayFailsAndLeavesIt) {
    fs::create_directory(C() / "t.csv");
    WriteBytes(C() / "t.csv" / "inside", "x");
    EXPECT_FALSE(platform::ReplaceFileBytes(W("C:\\t.csv"), "new"));
    EXPECT_EQ("x", ReadBytes(C() / "t.csv" / "inside"));
    EXPECT_EQ(std::vector<std::string>{"t.csv"}, Names(C()));
}

TEST_F(ReplaceFileBytes, MissingFolderFails) {
    EXPECT_FALSE(platform::ReplaceFileBytes(W("C:\\no\\t.csv"), "new"));
    EXPECT_FALSE(fs::exists(C() / "no"));
}

TEST_F(ReplaceFileBytes, UnmappedDriveFails) {
    EXPECT_FALSE(platform::ReplaceFileBytes(W("E:\\t.csv"), "new"));
}

TEST_F(ReplaceTextFile, EmptyTextMakesEmptyFile) {
    WriteBytes(C() / "t.csv", "old");
    EXPECT_TRUE(platform::ReplaceTextFile(W("C:\\t.csv"), ""));
    EXPECT_EQ("", ReadBytes(C() / "t.csv"));
}

}  // namespace
