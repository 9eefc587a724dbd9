// The dialog object's construction: the dialog first, then the configuration in a fixed order,
// each failure ending the run with one error box and no dialog.

#include "support/PluginFixture.hpp"

#include <NXOpen/BlockStyler_BlockDialog.hxx>
#include <NXOpen/BlockStyler_PropertyList.hxx>
#include <NXOpen/BlockStyler_StringBlock.hxx>

#include "config/ConfigTables.h"
#include "platform/ReadConfigFile.h"
#include "shell/Vornadel.h"

using vornadel_test::CrlfLines;
using vornadel_test::PluginFixture;
using vornadel_test::ReadBytes;
using vornadel_test::WriteBytes;

namespace {

class Configuration : public PluginFixture {
protected:
    std::string Folder() const { return Root() + "\\config"; }

    // Runs the user function and returns the messages it showed; shown tells whether the
    // dialog appeared.
    std::vector<host::MessageRecord> Run(bool* shown = nullptr)
    {
        bool dialogShown = false;
        RunUserFunction([&](host::LiveDialog&) { dialogShown = true; });
        if (shown != nullptr)
            *shown = dialogShown;
        return host::Messages();
    }

    void ExpectOneBlockStylerError(const std::string& text)
    {
        bool shown = true;
        std::vector<host::MessageRecord> messages = Run(&shown);
        ASSERT_EQ(1u, messages.size()) << "exactly one error box";
        EXPECT_EQ("Block Styler", messages[0].title);
        EXPECT_EQ(NXOpen::NXMessageBox::DialogTypeError, messages[0].type);
        EXPECT_EQ(text, messages[0].text);
        EXPECT_FALSE(shown) << "the dialog is never shown";
    }
};

TEST_F(Configuration, NoConfigurationAtAllGivesOneErrorBoxAboutTheLayers)
{
    ExpectOneBlockStylerError("在配置表：" + Root() + "\\config\\TK\\ 没有找到标准件图层的配置信息");
}

TEST_F(Configuration, LayerTableOfOnlyDroppedValuesStopsTheRun)
{
    WriteConfiguration();
    WriteLayerTable({"0", "257", "abc", "", "-3"});
    ExpectOneBlockStylerError("在配置表：" + Root() + "\\config\\TK\\std_layers.csv 没有找到标准件图层的配置信息");
}

TEST_F(Configuration, MissingBomHeadTableIsReportedWithTheTableMessage)
{
    WriteConfiguration();
    std::filesystem::remove(RootDir() / "config/bom_head_config.csv");
    ExpectOneBlockStylerError("配置表：" + Folder() + "\\bom_head_config.csv 不存在");
}

TEST_F(Configuration, MissingSmartDrawingTableIsReportedWithTheTableMessage)
{
    WriteConfiguration();
    std::filesystem::remove(RootDir() / "config/smart_drawing_std_config.csv");
    ExpectOneBlockStylerError("配置表：" + Folder() + "\\smart_drawing_std_config.csv 不存在");
}

TEST_F(Configuration, MissingColourTableIsReportedWithTheFileMessage)
{
    WriteConfiguration();
    std::filesystem::remove(RootDir() / "config/config.csv");
    ExpectOneBlockStylerError("配置文件：" + Folder() + "\\config.csv 不存在！");
}

TEST_F(Configuration, MissingStdPartTableIsReportedWithTheFileMessage)
{
    WriteConfiguration();
    std::filesystem::remove(RootDir() / "config/std_part_config.csv");
    ExpectOneBlockStylerError("配置文件：" + Folder() + "\\std_part_config.csv 不存在！");
}

TEST_F(Configuration, UndefinedRootLooksForBareTableNames)
{
    WriteConfiguration();
    host::UnsetEnvironmentVariable("VDConfig");
    // The layer table is then "\config\TK\std_layers.csv" on the current drive.
    ExpectOneBlockStylerError("在配置表：\\config\\TK\\std_layers.csv 没有找到标准件图层的配置信息");
}

TEST_F(Configuration, CompleteConfigurationShowsTheDialogWithoutMessages)
{
    WriteConfiguration();
    bool shown = false;
    EXPECT_TRUE(Run(&shown).empty());
    EXPECT_TRUE(shown);
}

TEST_F(Configuration, EveryTableSavedAsUtf8WithoutAMarkReadsAsInGbk)
{
    // What most editors write. Once read as GBK, the layer table gave "没有找到标准件图层的配置信息".
    WriteConfiguration();
    Vornadel gbk;
    int tables = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(RootDir() / "config")) {
        if (entry.path().extension() != ".csv") continue;
        WriteBytes(entry.path(), host::GbkToUtf8(ReadBytes(entry.path())));
        ++tables;
    }
    EXPECT_EQ(5, tables);
    bool shown = false;
    EXPECT_TRUE(Run(&shown).empty()) << "no message box";
    EXPECT_TRUE(shown);
    Vornadel utf8;
    EXPECT_EQ(gbk.stdPartLayers, utf8.stdPartLayers);
    EXPECT_EQ(gbk.modifyColour, utf8.modifyColour);
    EXPECT_EQ(gbk.bomHeadConfig.productMaterials, utf8.bomHeadConfig.productMaterials);
    EXPECT_EQ(gbk.bomHeadConfig.mouldTypes, utf8.bomHeadConfig.mouldTypes);
    EXPECT_EQ(gbk.bomHeadConfig.designers, utf8.bomHeadConfig.designers);
    EXPECT_EQ(gbk.stdPartConfig.names, utf8.stdPartConfig.names);
    EXPECT_EQ(gbk.stdPartConfig.types, utf8.stdPartConfig.types);
    EXPECT_EQ(gbk.stdPartConfig.nameOrder, utf8.stdPartConfig.nameOrder);
    EXPECT_EQ((std::vector<std::string>{"Φ4×200", "M6×20"}), utf8.stdPartConfig.types) << "in GBK, as the plug-in uses them";
}

TEST_F(Configuration, LayersKeepTableOrderRepeatsAndAtoiValues)
{
    WriteConfiguration();
    WriteLayerTable({"0", "257", "abc", "", "12abc", "1", "256", "61", "1"});
    Vornadel dialog;
    EXPECT_EQ((std::vector<int>{12, 1, 256, 61, 1}), dialog.stdPartLayers);
}

TEST_F(Configuration, ColourTableWithoutTheColumnGives186)
{
    WriteConfiguration();
    WriteBytes(RootDir() / "config/config.csv", CrlfLines({"其他", "3"}));
    Vornadel dialog;
    EXPECT_EQ(186, dialog.modifyColour);
}

TEST_F(Configuration, ColourIsTheFirstValueOfItsColumn)
{
    WriteConfiguration();
    WriteBytes(RootDir() / "config/config.csv", CrlfLines({"改模颜色", "3", "5"}));
    Vornadel dialog;
    EXPECT_EQ(3, dialog.modifyColour);
}

TEST_F(Configuration, PathsAndListsComeFromTheActiveFolder)
{
    WriteConfiguration();
    Vornadel dialog;
    EXPECT_EQ(Folder() + "\\bom_head_config.csv", dialog.bomHeadConfigPath);
    EXPECT_EQ(Folder() + "\\smart_drawing_std_config.csv", dialog.smartDrawingConfigPath);
    EXPECT_EQ((std::vector<std::string>{"ABS", "PC"}), dialog.bomHeadConfig.productMaterials);
    EXPECT_EQ((std::vector<std::string>{"YM-01"}), dialog.bomHeadConfig.mouldNos);
    EXPECT_EQ((std::vector<std::string>{"内六角螺钉", "顶针"}), dialog.stdPartConfig.nameOrder);
    EXPECT_STREQ("Vornadel.dlx", dialog.dialogFileName);
    EXPECT_FALSE(dialog.initialParamsTaken);
    EXPECT_FALSE(dialog.addToGroupMode);
    EXPECT_EQ(nullptr, dialog.addToGroupNode);
}

TEST_F(Configuration, TableEditedBetweenTwoRunsTakesEffect)
{
    WriteConfiguration();
    RunUserFunction();
    EXPECT_TRUE(host::Messages().empty());
    std::filesystem::remove(RootDir() / "config/std_part_config.csv");
    RunUserFunction();
    ASSERT_EQ(1u, host::Messages().size()) << "the second run reads the configuration afresh";
    EXPECT_EQ("配置文件：" + Folder() + "\\std_part_config.csv 不存在！", host::Messages()[0].text);
}

TEST_F(Configuration, ClosingTheDialogSavesNothing)
{
    WriteConfiguration();
    LoadPart(R"({ "format": "vornadel-part/1", "leaf": "T100", "work_layer": 1, "attributes": { "订单编号": "SO-1" },
                  "bodies": [ { "tag": 1001, "layer": 61, "color": 6, "attributes": { "转图标识": "Y" },
                                "solid": { "shape": "cylinder", "d": 6, "l": 20 } } ] })");
    RunUserFunction([](host::LiveDialog& dialog) { dialog.Close(); });
    EXPECT_EQ(0, host::ModelUpdateCount()) << "no close handler: nothing is written";
    EXPECT_FALSE(host::WorkPart()->HasUserAttribute("标准件", NXOpen::NXObject::AttributeTypeString, -1));
    EXPECT_TRUE(host::Messages().empty());
}

TEST_F(Configuration, ExceptionPassedOnByTheDialogIsShownByShowAsBlockStyler)
{
    WriteConfiguration();
    // What NX does with a std::exception that escapes while the dialog is shown: the dialog
    // ends and Show passes the exception on.
    RunUserFunction([](host::LiveDialog&) { throw std::runtime_error("对话框出错"); });
    ASSERT_EQ(1u, host::Messages().size()) << "Show shows it; ufusr then ends normally";
    EXPECT_EQ("Block Styler", host::Messages()[0].title);
    EXPECT_EQ(NXOpen::NXMessageBox::DialogTypeError, host::Messages()[0].type);
    EXPECT_EQ("对话框出错", host::Messages()[0].text);
}

TEST_F(Configuration, BlockPropertiesComeFromTheDialog)
{
    WriteConfiguration();
    Vornadel dialog;
    NXOpen::BlockStyler::PropertyList* properties = dialog.GetBlockProperties("nativeFolderBrowser0");
    ASSERT_NE(nullptr, properties);
    properties->SetString("Path", "E:\\出图");
    EXPECT_STREQ("E:\\出图", properties->GetString("Path").GetLocaleText());
    delete properties;
}

TEST_F(Configuration, UserFunctionAsksToBeUnloadedAtOnce)
{
    EXPECT_EQ(UF_UNLOAD_IMMEDIATELY, ufusr_ask_unload());
}

TEST_F(Configuration, OutputFolderIsTheDesktopWithoutPerUserTable)
{
    WriteConfiguration();
    Vornadel dialog;
    EXPECT_EQ(Desktop(), dialog.outputFolder);
    EXPECT_EQ(AppData().string() + "\\Convert\\config.csv", dialog.userConfigPath);
    EXPECT_TRUE(std::filesystem::is_directory(AppData() / "Convert")) << "the per-user folder is made";
}

TEST_F(Configuration, OutputFolderIsTheDesktopWhenThePerUserValueIsEmpty)
{
    WriteConfiguration();
    WriteBytes(AppData() / "Convert/config.csv", CrlfLines({"出图的路径,", ",", "E:\\later,"}));
    Vornadel dialog;
    EXPECT_EQ(Desktop(), dialog.outputFolder);
}

TEST_F(Configuration, OutputFolderWrittenBackIsReadByTheNextRun)
{
    WriteConfiguration();
    WriteBytes(AppData() / "Convert/config.csv", CrlfLines({"出图的路径", "E:\\out"}));
    std::string userTable;
    {
        Vornadel first;
        EXPECT_EQ("E:\\out", first.outputFolder);
        userTable = first.userConfigPath;
    }
    // What the dispatch does when the designer picks F:\bom in the folder block.
    SetConfigValue(userTable, "出图的路径", "F:\\bom");
    Vornadel next;
    EXPECT_EQ("F:\\bom", next.outputFolder);
}

TEST_F(Configuration, TypedHeadValueIsAddedToTheListTheBlockAndTheTable)
{
    WriteConfiguration();
    WriteBytes(RootDir() / "config/bom_head_config.csv", CrlfLines({"客户名称,设计担当", "A,张工", "B,"}));
    std::vector<std::string> itemsAfter;
    Vornadel dialog;
    NXOpen::BlockStyler::StringBlock* block = nullptr;
    host::SetDialogScript([&](host::LiveDialog&) {
        block = dynamic_cast<NXOpen::BlockStyler::StringBlock*>(dialog.theDialog->TopBlock()->FindBlock("string0"));
        dialog.AddConfigFileValue(dialog.bomHeadConfigPath, "客户名称", dialog.bomHeadConfig.customerNames, "X", block);
        for (const NXOpen::NXString& item : block->GetListItems())
            itemsAfter.push_back(item.GetLocaleText());
    });
    dialog.Show();
    EXPECT_EQ((std::vector<std::string>{"A", "B", "X"}), dialog.bomHeadConfig.customerNames);
    EXPECT_EQ((std::vector<std::string>{"A", "B", "X"}), itemsAfter) << "offered in the drop-down at once";
    EXPECT_EQ(CrlfLines({"客户名称,设计担当,", "A,张工,", "B,,", "X,,"}), ReadBytes(RootDir() / "config/bom_head_config.csv"));
}

TEST_F(Configuration, KnownOrEmptyHeadValueChangesNothing)
{
    WriteConfiguration();
    const std::string table = CrlfLines({"客户名称", "A", "B"});
    WriteBytes(RootDir() / "config/bom_head_config.csv", table);
    Vornadel dialog;
    dialog.AddConfigFileValue(dialog.bomHeadConfigPath, "客户名称", dialog.bomHeadConfig.customerNames, "A", nullptr);
    dialog.AddConfigFileValue(dialog.bomHeadConfigPath, "客户名称", dialog.bomHeadConfig.customerNames, "", nullptr);
    EXPECT_EQ((std::vector<std::string>{"A", "B"}), dialog.bomHeadConfig.customerNames);
    EXPECT_EQ(table, ReadBytes(RootDir() / "config/bom_head_config.csv")) << "the table is not rewritten";
}

}  // namespace
