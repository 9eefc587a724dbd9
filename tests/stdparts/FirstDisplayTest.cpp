// The dialog's first display: the blocks bound by id, the tree's columns, the head blocks with
// their values and choices, the output folder, the standard-part layers and the tree, and the
// error boxes of the two handlers.

#include "StdPartsFixture.hpp"

#include <NXOpen/BlockStyler_BlockDialog.hxx>
#include <NXOpen/BlockStyler_BodyCollector.hxx>
#include <NXOpen/BlockStyler_Button.hxx>
#include <NXOpen/BlockStyler_FolderSelection.hxx>
#include <NXOpen/BlockStyler_Group.hxx>
#include <NXOpen/BlockStyler_ScrolledWindow.hxx>
#include <NXOpen/BlockStyler_StringBlock.hxx>

using namespace stdparts_test;
using vornadel_test::CrlfLines;
using vornadel_test::ReadBytes;
using vornadel_test::SourceDir;
using vornadel_test::WriteBytes;

namespace {

class FirstDisplay : public StdPartsFixture {
protected:
    // The blocks as the designer sees them after the first display of the user function.
    std::vector<host::BlockView> ShownBlocks()
    {
        std::vector<host::BlockView> blocks;
        RunUserFunction([&](host::LiveDialog& live) { blocks = live.Blocks(); });
        return blocks;
    }

    static const host::BlockView& Block(const std::vector<host::BlockView>& blocks, const std::string& id)
    {
        for (const host::BlockView& b : blocks) {
            if (b.id == id)
                return b;
        }
        static host::BlockView none;
        ADD_FAILURE() << "no block " << id;
        return none;
    }

    // The eleven head attributes, each its title followed by "值".
    static Attributes FullHead()
    {
        Attributes head;
        for (const char* title : {"订单编号", "ERP编号", "产品材质", "模具编号", "模具吨位", "产品编号", "客户名称",
                                  "产品厚度", "模具类型", "设计担当", "产品名称"})
            head.push_back({title, std::string(title) + "值"});
        return head;
    }

    // Makes NX find the bundled dialog file with every quoted occurrence of each id of the
    // pairs given the other's id (an id given a new name leaves nothing to swap back).
    void UseDialogFileWithIds(const std::vector<std::pair<std::string, std::string>>& swaps)
    {
        std::string dlx = ReadBytes(SourceDir() / "dialog/Vornadel.dlx");
        for (const auto& [a, b] : swaps) {
            const std::string qa = "\"" + a + "\"", qb = "\"" + b + "\"", parked = "\"\x01\"";
            ASSERT_NE(std::string::npos, dlx.find(qa));
            for (auto [from, to] : {std::make_pair(qa, parked), std::make_pair(qb, qa), std::make_pair(parked, qb)}) {
                for (size_t at = dlx.find(from); at != std::string::npos; at = dlx.find(from, at + to.size()))
                    dlx.replace(at, from.size(), to);
            }
        }
        WriteBytes(top_ / "dialogs/Vornadel.dlx", dlx);
        host::SetDialogSearchPath({(top_ / "dialogs").string()});
    }

    static const std::vector<std::string>& HeadBlockIds()
    {
        static const std::vector<std::string> ids = {"string03", "string02", "string031", "string01",
                                                     "string032", "string033", "string0", "string034",
                                                     "string035", "string036", "string04"};
        return ids;
    }
};

TEST_F(FirstDisplay, AllTwentySixBlocksAreBoundToTheMembersOfTheirIds)
{
    LoadBodies({});
    WithDialog([](Vornadel& d, host::LiveDialog&) {
        const std::vector<std::pair<NXOpen::BlockStyler::UIBlock*, std::string>> blocks = {
            {d.group, "group"}, {d.string03, "string03"}, {d.string02, "string02"}, {d.string031, "string031"},
            {d.string033, "string033"}, {d.string01, "string01"}, {d.string032, "string032"}, {d.string0, "string0"},
            {d.string034, "string034"}, {d.string035, "string035"}, {d.string036, "string036"},
            {d.string04, "string04"}, {d.group4, "group4"}, {d.group3, "group3"}, {d.scrolledWindow, "scrolledWindow"},
            {d.tree_control0, "tree_control0"}, {d.group2, "group2"}, {d.button01, "button01"}, {d.button0, "button0"},
            {d.button04, "button04"}, {d.button03, "button03"}, {d.button021, "button021"}, {d.button02, "button02"},
            {d.group1, "group1"}, {d.bodySelect0, "bodySelect0"}, {d.nativeFolderBrowser0, "nativeFolderBrowser0"}};
        ASSERT_EQ(26u, blocks.size());
        for (const auto& [block, id] : blocks) {
            ASSERT_NE(nullptr, block) << id << " found and of its class";
            EXPECT_EQ(id, block->Name().GetLocaleText());
        }
    });
}

TEST_F(FirstDisplay, MissingBlockGivesOneBlockStylerBoxAndBindsNothingAfterIt)
{
    UseDialogFileWithIds({{"button04", "button04renamed"}});
    Vornadel dialog;
    dialog.initialize_cb();
    ASSERT_EQ(1u, host::Messages().size());
    EXPECT_EQ("Block Styler", host::Messages()[0].title);
    EXPECT_EQ(NXOpen::NXMessageBox::DialogTypeError, host::Messages()[0].type);
    EXPECT_NE(nullptr, dialog.button0) << "blocks before the missing one are bound";
    EXPECT_EQ(nullptr, dialog.button03) << "blocks after it are not";
    EXPECT_EQ(nullptr, dialog.nativeFolderBrowser0);
}

TEST_F(FirstDisplay, BlockOfAnotherClassLeavesItsMemberNullWithoutAnErrorBox)
{
    // The string block string04 takes the id button04 (and the button string04's).
    UseDialogFileWithIds({{"button04", "string04"}});
    Vornadel dialog;
    dialog.initialize_cb();
    EXPECT_EQ(nullptr, dialog.button04) << "the checked cast to Button gives NULL for a string block";
    EXPECT_TRUE(host::Messages().empty()) << "the result of the cast is not tested";
    EXPECT_NE(nullptr, dialog.button03) << "the blocks after it are bound";
    EXPECT_NE(nullptr, dialog.nativeFolderBrowser0);
    EXPECT_EQ(9u, host::TreeHandlerRegistrations(dialog.tree_control0).size()) << "the tree handlers are registered";
}

TEST_F(FirstDisplay, NineTreeHandlersAreRegisteredInOrder)
{
    LoadBodies({});
    WithDialog([](Vornadel& dialog, host::LiveDialog&) {
        const std::vector<std::string> expected = {
            "SetOnExpandHandler",         "SetOnPreSelectHandler",          "SetOnSelectHandler",
            "SetOnBeginLabelEditHandler", "SetOnEndLabelEditHandler",       "SetOnEditOptionSelectedHandler",
            "SetAskEditControlHandler",   "SetOnMenuHandler",               "SetOnMenuSelectionHandler"};
        EXPECT_EQ(expected, host::TreeHandlerRegistrations(dialog.tree_control0))
            << "no other tree handler is registered";
    });
}

TEST_F(FirstDisplay, TreeHasThirteenColumnsWithTheirTitlesAndWidths)
{
    LoadBodies({});
    std::vector<host::ColumnView> columns;
    RunUserFunction([&](host::LiveDialog& live) { columns = live.Columns(); });
    const std::vector<std::pair<std::string, int>> expected = {
        {"序号", 75}, {"名称", 120}, {"型号/尺寸", 120}, {"品牌", 80}, {"数量", 60}, {"材质", 60}, {"热处理", 75},
        {"备注", 60}, {"供应商", 86}, {"采购周期", 80}, {"状态", 50}, {"修改时间", 80}, {"ID", 80}};
    ASSERT_EQ(13u, columns.size());
    for (int i = 0; i < 13; ++i) {
        EXPECT_EQ(i, columns[i].id);
        EXPECT_EQ(expected[i].first, columns[i].title) << "column " << i;
        EXPECT_EQ(expected[i].second, columns[i].width) << "column " << i;
        EXPECT_EQ(i != 12, columns[i].visible) << "column " << i;
    }
}

TEST_F(FirstDisplay, HiddenColumn12IsWrittenAndReadLikeTheOthers)
{
    LoadBodies({{1001, With(ScrewM6x20(), {{"标准件ID", "05201030150001"}})}});
    WithDialog([](Vornadel& dialog, host::LiveDialog& live) {
        ASSERT_EQ(13u, live.Columns().size());
        EXPECT_FALSE(live.Columns()[12].visible);
        EXPECT_EQ("05201030150001", std::string(dialog.tree_control0->RootNode()->GetColumnDisplayText(12).GetLocaleText()));
        ASSERT_EQ(1u, dialog.initialParams.size());
        EXPECT_EQ("05201030150001", dialog.initialParams[0]->columnText[12]);
    });
}

TEST_F(FirstDisplay, TreeShowsToolTips)
{
    LoadBodies({});
    WithDialog([](Vornadel& dialog, host::LiveDialog&) { EXPECT_TRUE(dialog.tree_control0->ShowToolTips()); });
}

TEST_F(FirstDisplay, SevenHeadBlocksOfferTheChoicesOfTheBomHeadTable)
{
    LoadBodies({});
    std::vector<host::BlockView> blocks = ShownBlocks();
    EXPECT_EQ((std::vector<std::string>{"ABS", "PC"}), Block(blocks, "string031").choices);
    EXPECT_EQ((std::vector<std::string>{"YM-01"}), Block(blocks, "string01").choices) << "empty cells left out";
    EXPECT_EQ((std::vector<std::string>{"120T", "160T"}), Block(blocks, "string032").choices);
    EXPECT_EQ((std::vector<std::string>{"美的", "格力"}), Block(blocks, "string0").choices);
    EXPECT_EQ((std::vector<std::string>{"2.0"}), Block(blocks, "string034").choices);
    EXPECT_EQ((std::vector<std::string>{"两板模", "三板模"}), Block(blocks, "string035").choices);
    EXPECT_EQ((std::vector<std::string>{"张工"}), Block(blocks, "string036").choices);
    for (const char* id : {"string03", "string02", "string033", "string04"})
        EXPECT_TRUE(Block(blocks, id).choices.empty()) << id << " is free text";
}

TEST_F(FirstDisplay, EmptyChoiceListLeavesItsBlockWithoutChoices)
{
    WriteBytes(RootDir() / "config/bom_head_config.csv", CrlfLines({"产品材质,设计担当", "ABS,"}));
    LoadBodies({});
    std::vector<host::BlockView> blocks = ShownBlocks();
    EXPECT_EQ((std::vector<std::string>{"ABS"}), Block(blocks, "string031").choices);
    EXPECT_TRUE(Block(blocks, "string036").choices.empty());
    EXPECT_TRUE(Block(blocks, "string01").choices.empty()) << "a column the table lacks";
}

TEST_F(FirstDisplay, HeadBlocksShowTheWorkPartAttributes)
{
    LoadBodies({}, 61, {}, FullHead());
    std::vector<host::BlockView> blocks = ShownBlocks();
    const Attributes head = FullHead();
    for (size_t i = 0; i < head.size(); ++i)
        EXPECT_EQ(head[i].second.get<std::string>(), Block(blocks, HeadBlockIds()[i]).value) << HeadBlockIds()[i];
}

TEST_F(FirstDisplay, NewWorkPartLeavesTheHeadBlocksEmptyButFillsTheChoicesAndTheTree)
{
    LoadBodies({{1001, ScrewM6x20()}});
    std::vector<host::BlockView> blocks;
    std::vector<Row> rows;
    RunUserFunction([&](host::LiveDialog& live) {
        blocks = live.Blocks();
        rows = Rows(live.Tree());
    });
    for (const std::string& id : HeadBlockIds())
        EXPECT_EQ("", Block(blocks, id).value) << id;
    EXPECT_FALSE(Block(blocks, "string031").choices.empty());
    EXPECT_EQ(std::vector<std::string>{"001 1001"}, Outline(rows));
    EXPECT_TRUE(host::Messages().empty());
}

TEST_F(FirstDisplay, IntegerOrderNumberLeavesItsBlockEmpty)
{
    Attributes head = With(FullHead(), {{"订单编号", Json{{"integer", 240518}}}});
    LoadBodies({}, 61, {}, head);
    std::vector<host::BlockView> blocks = ShownBlocks();
    EXPECT_EQ("", Block(blocks, "string03").value) << "only a string attribute is read";
    EXPECT_EQ("ERP编号值", Block(blocks, "string02").value);
}

TEST_F(FirstDisplay, MarkOfAnEarlierSaveDoesNotChangeTheTree)
{
    LoadBodies({{1001, ScrewM6x20()}, {1002, Marked({{"名称", "顶针"}})}});
    const std::vector<std::string> fresh = Outline(FirstDisplayRows());
    LoadBodies({{1001, ScrewM6x20()}, {1002, Marked({{"名称", "顶针"}})}}, 61, {}, {{"标准件", "Y"}});
    EXPECT_EQ(fresh, Outline(FirstDisplayRows()));
}

TEST_F(FirstDisplay, FolderBlockShowsTheDesktopWhenThePerUserTableGivesNone)
{
    LoadBodies({});
    EXPECT_EQ(Desktop(), Block(ShownBlocks(), "nativeFolderBrowser0").value);
}

TEST_F(FirstDisplay, FolderBlockShowsTheOutputFolderOfThePerUserTable)
{
    WriteBytes(AppData() / "Convert/config.csv", CrlfLines({"出图的路径", "D:\\BOM\\输出"}));
    LoadBodies({});
    EXPECT_EQ("D:\\BOM\\输出", Block(ShownBlocks(), "nativeFolderBrowser0").value);
}

TEST_F(FirstDisplay, TakesTheSnapshotOfTheTree)
{
    LoadBodies({{1001, ScrewM6x20()}, {1002, ScrewM6x20()}, {1003, Marked({{"名称", "顶针"}})}});
    WithDialog([](Vornadel& dialog, host::LiveDialog&) {
        EXPECT_TRUE(dialog.initialParamsTaken);
        ASSERT_EQ(2u, dialog.initialParams.size());
        EXPECT_EQ(2u, dialog.initialParams[0]->children.size());
    });
}

TEST_F(FirstDisplay, FailureIsShownTitledStandardPartBomAndTheDialogStaysOpen)
{
    LoadBodies({}, 61, {}, FullHead());
    WithDialog([](Vornadel& dialog, host::LiveDialog& live) {
        host::WorkPart()->SetUserAttribute("订单编号", -1, "SO-2", NXOpen::Update::OptionNow);
        // NX refuses to insert column 0 a second time: the handler stops at step 4.
        dialog.dialogShown_cb();
        ASSERT_EQ(1u, host::Messages().size());
        EXPECT_EQ("标准件BOM", host::Messages()[0].title);
        EXPECT_EQ(NXOpen::NXMessageBox::DialogTypeError, host::Messages()[0].type);
        EXPECT_FALSE(live.Closed()) << "the failure ends the handler, not the dialog";
        EXPECT_EQ("订单编号值", std::string(dialog.string03->WideValue().GetLocaleText()))
            << "the head blocks are not set again";
    });
}

TEST_F(FirstDisplay, BomHeadInfoReadsTheElevenFieldsInOrderFromTheirTitles)
{
    LoadBodies({}, 61, {}, FullHead());
    BomHeadInfo head;
    head.ReadFromPart(host::WorkPart());
    EXPECT_EQ("订单编号值", head.orderNo);
    EXPECT_EQ("ERP编号值", head.erpNo);
    EXPECT_EQ("产品材质值", head.productMaterial);
    EXPECT_EQ("模具编号值", head.mouldNo);
    EXPECT_EQ("模具吨位值", head.mouldTonnage);
    EXPECT_EQ("产品编号值", head.productNo);
    EXPECT_EQ("客户名称值", head.customerName);
    EXPECT_EQ("产品厚度值", head.productThickness);
    EXPECT_EQ("模具类型值", head.mouldType);
    EXPECT_EQ("设计担当值", head.designer);
    EXPECT_EQ("产品名称值", head.productName);
}

TEST_F(FirstDisplay, BomHeadInfoEmptiesFieldsThePartLacks)
{
    LoadBodies({}, 61, {}, {{"客户名称", "格力"}, {"模具吨位", Json{{"real", 160.0}}}});
    BomHeadInfo head;
    head.orderNo = "sentinel";
    head.mouldTonnage = "sentinel";
    head.ReadFromPart(host::WorkPart());
    EXPECT_EQ("", head.orderNo) << "a missing attribute empties the field";
    EXPECT_EQ("", head.mouldTonnage) << "a real attribute counts as absent";
    EXPECT_EQ("格力", head.customerName);
}

}  // namespace
