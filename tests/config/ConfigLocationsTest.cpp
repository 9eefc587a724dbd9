// Where the configuration lives: the active folder chosen by the selector table, the layer-file
// pointer on drive D:, and the existence test.

#include "support/PluginFixture.hpp"

#include "config/ConfigLocations.h"

using vornadel_test::CrlfLines;
using vornadel_test::PluginFixture;
using vornadel_test::WriteBytes;

namespace {

class ConfigFolder : public PluginFixture {
protected:
    void WriteSelector(const std::vector<std::string>& lines)
    {
        WriteBytes(RootDir() / "config/standard.csv", CrlfLines(lines));
    }
};

TEST_F(ConfigFolder, IsEmptyWhenVDConfigIsNotDefined)
{
    host::UnsetEnvironmentVariable("VDConfig");
    EXPECT_EQ("", GetConfigFolder());
}

TEST_F(ConfigFolder, IsTheBaseFolderWithoutSelectorTable)
{
    EXPECT_EQ(Root() + "\\config", GetConfigFolder());
}

TEST_F(ConfigFolder, AccumulatesEverySwitchedOnRowInOrder)
{
    WriteSelector({"文件夹名称,有效配置", "A,Y", "B,N", "C,y"});
    EXPECT_EQ(Root() + "\\config\\A\\C", GetConfigFolder());
}

TEST_F(ConfigFolder, TwoActiveRowsNestTheSecondInTheFirst)
{
    WriteSelector({"文件夹名称,有效配置", "A,Y", "B,Y"});
    EXPECT_EQ(Root() + "\\config\\A\\B", GetConfigFolder());
}

TEST_F(ConfigFolder, OnlyTheOneCharacterFlagsYAndySwitchARowOn)
{
    WriteSelector({"文件夹名称,有效配置", "A,YES", "B, Y", "C,是", "D,Y ", "E,N"});
    EXPECT_EQ(Root() + "\\config", GetConfigFolder());
}

TEST_F(ConfigFolder, SwitchedOnRowWithoutFolderNameAddsNothing)
{
    WriteSelector({"文件夹名称,有效配置", ",Y", "B,Y"});
    EXPECT_EQ(Root() + "\\config\\B", GetConfigFolder());
}

TEST_F(ConfigFolder, FlagRowBeyondTheFolderNamesCountsAsEmptyName)
{
    // The names column ends before the flags column: the extra flag has no folder to add.
    WriteSelector({"有效配置,文件夹名称", "Y,A", "Y"});
    EXPECT_EQ(Root() + "\\config\\A", GetConfigFolder());
}

TEST_F(ConfigFolder, SelectorWithoutEitherColumnGivesTheBaseFolder)
{
    WriteSelector({"文件夹,有效", "A,Y"});
    EXPECT_EQ(Root() + "\\config", GetConfigFolder());
    WriteSelector({"文件夹名称", "A"});
    EXPECT_EQ(Root() + "\\config", GetConfigFolder());
}

TEST_F(ConfigFolder, ChineseFolderNamesAreKeptAsGbk)
{
    WriteSelector({"文件夹名称,有效配置", "塑胶模,Y"});
    EXPECT_EQ(Root() + "\\config\\塑胶模", GetConfigFolder());
}

TEST_F(ConfigFolder, InitialisesTheUserFunctionLibraryWhenNeeded)
{
    // NX may call the plug-in's helpers before anything initialised the library.
    ASSERT_EQ(0, UF_is_initialized());
    GetConfigFolder();
    EXPECT_EQ(1, UF_is_initialized());
}

class CurrentLayerFile : public PluginFixture {
protected:
    void WritePointer(const std::string& bytes) { WriteBytes(DriveD() / "MYTOOL/config/TK/Layerwrk.txt", bytes); }
};

TEST_F(CurrentLayerFile, IsEmptyWithoutLayerwrkFile)
{
    EXPECT_EQ("", GetCurrentLayerFile());
}

TEST_F(CurrentLayerFile, TrimsSpacesAroundTheName)
{
    WritePointer("CURRENT_LAYER_FILE=   layers.csv   \r\n");
    EXPECT_EQ("layers.csv", GetCurrentLayerFile());
}

TEST_F(CurrentLayerFile, LineWithoutEqualsSignGivesTheWholeLine)
{
    WritePointer("CURRENT_LAYER_FILE layers.csv\r\n");
    EXPECT_EQ("CURRENT_LAYER_FILE layers.csv", GetCurrentLayerFile());
}

TEST_F(CurrentLayerFile, TabBeforeTheNameIsKept)
{
    WritePointer("CURRENT_LAYER_FILE=\tlayers.csv\r\n");
    EXPECT_EQ("\tlayers.csv", GetCurrentLayerFile());
}

TEST_F(CurrentLayerFile, FirstOfTwoLinesWins)
{
    WritePointer("LANGUAGE=CHS\r\nCURRENT_LAYER_FILE = first.csv\r\nCURRENT_LAYER_FILE = second.csv\r\n");
    EXPECT_EQ("first.csv", GetCurrentLayerFile());
}

TEST_F(CurrentLayerFile, IsEmptyWhenNoLineHoldsTheKey)
{
    WritePointer("current_layer_file = lower.csv\r\nLAYER = x.csv\r\n");
    EXPECT_EQ("", GetCurrentLayerFile());
}

TEST_F(CurrentLayerFile, KeyWithEmptyValueGivesEmptyName)
{
    WritePointer("CURRENT_LAYER_FILE =   \r\n");
    EXPECT_EQ("", GetCurrentLayerFile());
}

TEST_F(CurrentLayerFile, LastLineWithoutLineEndIsRead)
{
    WritePointer("# pointer\nCURRENT_LAYER_FILE=layers.csv");
    EXPECT_EQ("layers.csv", GetCurrentLayerFile());
}

TEST_F(CurrentLayerFile, IsEmptyWhenDriveDIsNotMapped)
{
#ifdef _WIN32
    GTEST_SKIP() << "drive D: of the Wine prefix is there for every test; a test cannot take it away";
#endif
    WritePointer("CURRENT_LAYER_FILE=layers.csv\r\n");
    setenv("VORNADEL_DRIVES", "", 1);
    EXPECT_EQ("", GetCurrentLayerFile());
}

TEST_F(PluginFixture, FileExistsForFilesAndFoldersButNotForMissingPaths)
{
    WriteBytes(RootDir() / "a.csv", "x");
    EXPECT_TRUE(FileExists(Root() + "\\a.csv"));
    EXPECT_TRUE(FileExists(Root())) << "a folder counts, as with _access";
    EXPECT_FALSE(FileExists(Root() + "\\b.csv"));
}

}  // namespace
