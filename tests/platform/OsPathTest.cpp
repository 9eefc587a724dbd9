// OsPath: how the Windows paths the plug-in forms reach this machine's folders (docs/paths.md).

#include "platform/MappedDrives.h"

#include "platform/Files.h"

namespace {

class OsPath : public MappedDrives {};

#ifdef _WIN32

// On Windows the paths go to the C runtime and Win32 as the plug-in forms them.
TEST_F(OsPath, WindowsPathStaysAsItIs) {
    EXPECT_EQ("D:\\MYTOOL\\config\\TK\\Layerwrk.txt", platform::OsPath("D:\\MYTOOL\\config\\TK\\Layerwrk.txt"));
    EXPECT_EQ("\\模具标准件申购表.xls", platform::OsPath("\\模具标准件申购表.xls"));
}

#else

TEST_F(OsPath, DriveLetterGoesThroughDriveTable) {
    EXPECT_EQ(D().string() + "/MYTOOL/config/TK/Layerwrk.txt",
              platform::OsPath("D:\\MYTOOL\\config\\TK\\Layerwrk.txt"));
}

TEST_F(OsPath, DriveLettersAreCaseInsensitive) {
    EXPECT_EQ(D().string() + "/x.csv", platform::OsPath("d:\\x.csv"));
    setenv("VORNADEL_DRIVES", ("c=" + C().string()).c_str(), 1);
    EXPECT_EQ(C().string() + "/x.csv", platform::OsPath("C:\\x.csv"));
}

TEST_F(OsPath, GbkNamesBecomeUtf8) {
    EXPECT_EQ(D().string() + u8"/配置/标准件.csv", platform::OsPath("D:\\配置\\标准件.csv"));
}

TEST_F(OsPath, BackslashInsideAGbkCharacterIsNoSeparator) {
    // The second byte of "誠" in GBK is 0x5C, the byte of "\".
    ASSERT_EQ(std::string("\xD5\x5C"), std::string("誠"));
    EXPECT_EQ(D().string() + u8"/誠/a.txt", platform::OsPath("D:\\誠\\a.txt"));
}

TEST_F(OsPath, LeadingBackslashGoesToCurrentDrive) {
    EXPECT_EQ(C().string() + u8"/模具标准件申购表.xls", platform::OsPath("\\模具标准件申购表.xls"));
    setenv("VORNADEL_CURRENT_DRIVE", "d", 1);
    EXPECT_EQ(D().string() + "/bom_head_config.csv", platform::OsPath("\\bom_head_config.csv"));
}

TEST_F(OsPath, UnmappedDriveGivesEmptyPath) {
    EXPECT_EQ("", platform::OsPath("E:\\out\\A100.xls"));
}

TEST_F(OsPath, UnmappedCurrentDriveGivesEmptyPath) {
    setenv("VORNADEL_CURRENT_DRIVE", "Q", 1);
    EXPECT_EQ("", platform::OsPath("\\config\\standard.csv"));
}

TEST_F(OsPath, WithoutDriveTableNoDriveExists) {
    unsetenv("VORNADEL_DRIVES");
    EXPECT_EQ("", platform::OsPath("C:\\a.txt"));
    EXPECT_EQ("", platform::OsPath("\\a.txt"));
}

TEST_F(OsPath, LaterDriveTableEntryReplacesEarlierOne) {
    setenv("VORNADEL_DRIVES", ("D=/nowhere;junk;;D=" + D().string()).c_str(), 1);
    EXPECT_EQ(D().string() + "/a.txt", platform::OsPath("D:\\a.txt"));
}

TEST_F(OsPath, TrailingSlashOfDriveFolderIsIgnored) {
    setenv("VORNADEL_DRIVES", ("D=" + D().string() + "/").c_str(), 1);
    EXPECT_EQ(D().string() + "/a.txt", platform::OsPath("D:\\a.txt"));
    setenv("VORNADEL_DRIVES", "D=/", 1);
    EXPECT_EQ("/a.txt", platform::OsPath("D:\\a.txt"));
}

TEST_F(OsPath, DriveRootIsTheDriveFolder) {
    EXPECT_EQ(D().string(), platform::OsPath("D:\\"));
    EXPECT_EQ(D().string(), platform::OsPath("D:"));
}

TEST_F(OsPath, TrailingBackslashStays) {
    EXPECT_EQ(D().string() + "/out/A100/", platform::OsPath("D:\\out\\A100\\"));
}

TEST_F(OsPath, DotDotNeverLeavesTheDriveFolder) {
    EXPECT_EQ(C().string() + "/etc/passwd", platform::OsPath("C:\\..\\..\\etc\\passwd"));
    EXPECT_EQ(C().string() + "/b", platform::OsPath("C:\\a\\.\\..\\b"));
}

TEST_F(OsPath, RepeatedSeparatorsCountOnce) {
    EXPECT_EQ(C().string() + "/a/b", platform::OsPath("C:\\a\\\\b"));
}

TEST_F(OsPath, PosixPathPassesThrough) {
    EXPECT_EQ("/srv/vornadel/config.csv", platform::OsPath("/srv/vornadel/config.csv"));
    EXPECT_EQ(u8"/srv/配置", platform::OsPath("/srv/配置"));
}

TEST_F(OsPath, BackslashesAppendedToPosixPathBecomeSlashes) {
    // A configuration root or picked folder given as a POSIX path, with the plug-in's
    // "\config\standard.csv" appended.
    EXPECT_EQ("/srv/root/config/standard.csv", platform::OsPath("/srv/root\\config\\standard.csv"));
}

TEST_F(OsPath, RelativePathStaysRelative) {
    EXPECT_EQ("config/a.csv", platform::OsPath("config\\a.csv"));
}

TEST_F(OsPath, NetworkShareGivesEmptyPath) {
    EXPECT_EQ("", platform::OsPath("\\\\server\\share\\a.xls"));
}

TEST_F(OsPath, EmptyPathStaysEmpty) {
    EXPECT_EQ("", platform::OsPath(""));
}

#endif

}  // namespace
