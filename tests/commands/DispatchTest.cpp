// update_cb: each block's command, the head values remembered in the option tables, the group
// command in both modes with its selection dialog, the body selection mirrored into the tree, the
// output folder, the display buttons, and the one error box.

#include "CommandsFixture.hpp"

#include <NXOpen/BlockStyler_Button.hxx>
#include <NXOpen/BlockStyler_Group.hxx>
#include <NXOpen/BlockStyler_Node.hxx>
#include <NXOpen/BlockStyler_Tree.hxx>
#include <uf_object_types.h>
#include <uf_ui_types.h>

#include <algorithm>
#include <map>

using namespace commands_test;
using vornadel_test::CrlfLines;
using vornadel_test::ReadBytes;

namespace {

class Dispatch : public CommandsFixture {
protected:
    // Every file of the configuration root and the per-user folder, with its bytes.
    std::map<std::string, std::string> ConfigurationFiles() const
    {
        std::map<std::string, std::string> files;
        for (const fs::path& folder : {RootDir(), AppData()})
            for (const auto& entry : fs::recursive_directory_iterator(folder))
                if (entry.is_regular_file())
                    files[entry.path().string()] = ReadBytes(entry.path());
        return files;
    }

    fs::path HeadTable() const { return RootDir() / "config/bom_head_config.csv"; }

    // The group row whose body has this tag; NULL when none.
    static NXOpen::BlockStyler::Node* GroupOf(Vornadel& dialog, unsigned tag)
    {
        for (NXOpen::BlockStyler::Node* n = dialog.tree_control0->RootNode(); n != nullptr; n = n->NextSiblingNode())
            if (DataObject(n)->Tag() == tag)
                return n;
        return nullptr;
    }

    static void ExpandAll(NXOpen::BlockStyler::Tree* tree)
    {
        for (NXOpen::BlockStyler::Node* n = tree->RootNode(); n != nullptr; n = n->NextNode())
            n->Expand(NXOpen::BlockStyler::Node::ExpandOptionExpand);
    }

    // The body row of this tag (a leaf); NULL when none.
    static NXOpen::BlockStyler::Node* LeafOf(Vornadel& dialog, unsigned tag)
    {
        for (NXOpen::BlockStyler::Node* n = dialog.tree_control0->RootNode(); n != nullptr; n = n->NextNode())
            if (n->FirstChildNode() == nullptr && DataObject(n)->Tag() == tag)
                return n;
        return nullptr;
    }
};

TEST_F(Dispatch, UpdateCbAlwaysReturnsZero)
{
    LoadMould();
    WithDialog([](Vornadel& dialog, host::LiveDialog&) {
        EXPECT_EQ(0, dialog.update_cb(dialog.button0));   // fails: the head is empty
        EXPECT_EQ(0, dialog.update_cb(dialog.group));     // not a command
        EXPECT_EQ(0, dialog.update_cb(dialog.tree_control0));
    });
}

TEST_F(Dispatch, ATypedHeadValueJoinsItsOptionListAndTable)
{
    LoadBodies({});
    const std::vector<std::pair<std::string, int>> blocks = {{"string031", 0}, {"string01", 1}, {"string032", 2},
                                                             {"string0", 3},   {"string034", 4}, {"string035", 5},
                                                             {"string036", 6}};
    WithDialog([&](Vornadel&, host::LiveDialog& live) {
        for (const auto& [block, column] : blocks)
            live.SetText(block, "新值" + std::to_string(column));
        for (const host::BlockView& b : live.Blocks()) {
            for (const auto& [block, column] : blocks) {
                if (b.id == block) {
                    EXPECT_EQ("新值" + std::to_string(column), b.choices.back()) << block;
                }
            }
        }
    });
    EXPECT_EQ(CrlfLines({"产品材质,模具编号,模具吨位,客户名称,产品厚度,模具类型,设计担当,",
                         "ABS,YM-01,120T,美的,2.0,两板模,张工,", "PC,新值1,160T,格力,新值4,三板模,新值6,",
                         "新值0,,新值2,新值3,,新值5,,"}),
              ReadBytes(HeadTable()));
}

TEST_F(Dispatch, TheFourOtherHeadBlocksTouchNoFile)
{
    LoadBodies({});
    const auto before = ConfigurationFiles();
    WithDialog([](Vornadel&, host::LiveDialog& live) {
        for (const char* block : {"string03", "string02", "string033", "string04"})
            live.SetText(block, "随便");
    });
    EXPECT_EQ(before, ConfigurationFiles());
    EXPECT_TRUE(host::Messages().empty());
}

TEST_F(Dispatch, SaveButtonConfirmsEvenWhenNothingChanged)
{
    LoadMould();
    WithDialog([](Vornadel&, host::LiveDialog& live) {
        FillHead(live);
        live.Press("button0");
        live.Press("button0");
    });
    ASSERT_EQ(2u, host::Messages().size());
    for (const host::MessageRecord& m : host::Messages()) {
        EXPECT_EQ("标准件BOM", m.title);
        EXPECT_EQ(NXOpen::NXMessageBox::DialogTypeInformation, m.type);
        EXPECT_EQ("保存BOM属性成功！", m.text);
    }
    EXPECT_EQ("张工", StringAttribute(Work(), "设计担当"));
}

TEST_F(Dispatch, AFailingCommandShowsOneBlockStylerErrorBox)
{
    LoadMould();
    WithDialog([](Vornadel&, host::LiveDialog& live) { live.Press("button0"); });
    ASSERT_EQ(1u, host::Messages().size());
    EXPECT_EQ("Block Styler", host::Messages()[0].title);
    EXPECT_EQ(NXOpen::NXMessageBox::DialogTypeError, host::Messages()[0].type);
    EXPECT_EQ("产品材质不可以为空", host::Messages()[0].text);
}

TEST_F(Dispatch, ExportButtonExports)
{
    LoadMould();
    WithDialog([](Vornadel&, host::LiveDialog& live) {
        FillHead(live);
        live.PickFolder("nativeFolderBrowser0", "D:\\out");
        live.Press("button01");
    });
    EXPECT_EQ(std::vector<std::string>{"D:\\out\\T100\\T100标准件BOM.xls"}, host::OpenedFiles());
}

TEST_F(Dispatch, FolderBlockRemembersTheFolderAndStoresItForTheUser)
{
    LoadBodies({});
    vornadel_test::WriteBytes(AppData() / "Convert/config.csv", CrlfLines({"出图的路径", "E:\\out"}));
    WithDialog([](Vornadel& dialog, host::LiveDialog& live) {
        EXPECT_EQ("E:\\out", dialog.outputFolder);
        live.PickFolder("nativeFolderBrowser0", "D:\\图纸");
        EXPECT_EQ("D:\\图纸", dialog.outputFolder);
    });
    EXPECT_EQ(CrlfLines({"出图的路径,", "D:\\图纸,"}), ReadBytes(AppData() / "Convert/config.csv"));
}

TEST_F(Dispatch, WithoutAPerUserTableTheFolderIsRememberedForThisRunOnly)
{
    LoadBodies({});
    WithDialog([](Vornadel& dialog, host::LiveDialog& live) {
        live.PickFolder("nativeFolderBrowser0", "D:\\图纸");
        EXPECT_EQ("D:\\图纸", dialog.outputFolder);
    });
    EXPECT_EQ("", ReadBytes(AppData() / "Convert/config.csv"));
}

TEST_F(Dispatch, NewGroupAsksForSolidBodiesAndGivesThemOneTimeStampId)
{
    LoadMould();
    host::QueueSelectionAnswer(NXOpen::Selection::ResponseOk, {1003, 1004});
    std::vector<std::string> outline;
    WithDialog([&](Vornadel& dialog, host::LiveDialog& live) {
        live.Press("button04");
        outline = TreeOutline(dialog);
    });
    ASSERT_EQ(1u, host::SelectionRequests().size());
    const host::SelectionRequest& r = host::SelectionRequests()[0];
    EXPECT_EQ("选择需要设置为同一组的实体", r.message);
    EXPECT_EQ("设置组", r.title);
    EXPECT_EQ(NXOpen::Selection::SelectionScopeWorkPart, r.scope);
    EXPECT_EQ(NXOpen::Selection::SelectionActionClearAndEnableSpecific, r.action);
    EXPECT_FALSE(r.includeFeatures);
    EXPECT_FALSE(r.keepHighlighted);
    ASSERT_EQ(1u, r.masks.size());
    EXPECT_EQ(UF_solid_type, r.masks[0].Type);
    EXPECT_EQ(0, r.masks[0].Subtype);
    EXPECT_EQ(36, r.masks[0].SolidBodySubtype);
    // The clock is pinned at 2024-05-18 09:30:15.042.
    EXPECT_EQ("05180930150042", StringAttribute(Body(1003), "组ID"));
    EXPECT_EQ("05180930150042", StringAttribute(Body(1004), "组ID"));
    EXPECT_EQ("<none>", StringAttribute(Body(1005), "组ID"));
    // The tree is rebuilt: the grouped pin and block now form one line, the other block its own.
    EXPECT_EQ((std::vector<std::string>{"001 1001", "  001 1001", "  001 1002", "002 1003", "  002 1003", "  002 1004",
                                        "003 1005"}),
              outline);
}

// The clock moves on 7 ms at every reading: the group id is read once, for all the bodies.
TEST_F(Dispatch, NewGroupReadsTheClockOnceForAllItsBodies)
{
    LoadMould();
    host::PinClock({2024, 5, 18, 9, 30, 15, 42}, 7);
    host::QueueSelectionAnswer(NXOpen::Selection::ResponseOk, {1003, 1004, 1005});
    WithDialog([&](Vornadel&, host::LiveDialog& live) { live.Press("button04"); });
    const std::string id = StringAttribute(Body(1003), "组ID");
    EXPECT_EQ(14u, id.size()) << id;
    EXPECT_EQ(id, StringAttribute(Body(1004), "组ID"));
    EXPECT_EQ(id, StringAttribute(Body(1005), "组ID"));
}

// The designer picks a face of 1004 with the bodies: the group dialog takes solid bodies only, so
// the face never reaches the group command, and the bodies form the group.
TEST_F(Dispatch, AFacePickedWithTheBodiesIsNoPartOfTheGroup)
{
    LoadBodies({{1003, Marked({{"名称", "顶针"}}), Stack({{8, 4}, {4, 200}})},
                {1004, Marked(), Box(20, 20, 15), 61, 6, false, {0, 0, 0}, {0, 0, 0}, {7001}},
                {1005, Marked(), Box(20, 20, 15), 61, 6, false, {0, 50, 0}}});
    host::QueueSelectionAnswer(NXOpen::Selection::ResponseOk, {7001, 1003, 1005});
    WithDialog([&](Vornadel&, host::LiveDialog& live) { live.Press("button04"); });
    EXPECT_TRUE(host::Messages().empty());
    EXPECT_EQ("05180930150042", StringAttribute(Body(1003), "组ID"));
    EXPECT_EQ("05180930150042", StringAttribute(Body(1005), "组ID"));
    EXPECT_EQ("<none>", StringAttribute(Body(1004), "组ID")) << "the face's body is not grouped";
}

TEST_F(Dispatch, NewGroupTakesANewSnapshot)
{
    LoadMould();
    host::QueueSelectionAnswer(NXOpen::Selection::ResponseOk, {1003, 1004});
    WithDialog([&](Vornadel& dialog, host::LiveDialog& live) {
        live.Press("button04");
        // Restoring the snapshot gives the tree as the group command left it.
        const auto grouped = TreeOutline(dialog);
        live.Press("button03");
        EXPECT_EQ(grouped, TreeOutline(dialog));
        ASSERT_EQ(3u, dialog.initialParams.size());
        EXPECT_EQ(2u, dialog.initialParams[1]->children.size());
    });
}

TEST_F(Dispatch, CancelOrBackOfTheGroupSelectionChangesNothing)
{
    for (NXOpen::Selection::Response answer : {NXOpen::Selection::ResponseCancel, NXOpen::Selection::ResponseBack}) {
        LoadMould();
        host::QueueSelectionAnswer(answer, {});
        WithDialog([&](Vornadel& dialog, host::LiveDialog& live) {
            const auto before = TreeOutline(dialog);
            const int updates = host::ModelUpdateCount();
            live.Press("button04");
            EXPECT_EQ(before, TreeOutline(dialog));
            EXPECT_EQ(updates, host::ModelUpdateCount());
        });
        for (unsigned tag : {1001u, 1002u, 1003u, 1004u, 1005u})
            EXPECT_EQ("<none>", StringAttribute(Body(tag), "组ID"));
    }
}

TEST_F(Dispatch, AddModeHighlightsTheGroupWhileSelectingAndJoinsItsId)
{
    LoadBodies({{1001, With(ScrewM6x20(), {{"组ID", "G1"}})},
                {1002, With(ScrewM6x20(), {{"组ID", "G1"}}), Screw(6, 20), 61, 6, false, {40, 0, 0}},
                {1003, Marked({{"名称", "顶针"}}), Stack({{8, 4}, {4, 200}})}});
    host::QueueSelectionAnswer(NXOpen::Selection::ResponseOk, {1003});
    host::QueueSelectionAnswer(NXOpen::Selection::ResponseOk, {1003});
    WithDialog([&](Vornadel& dialog, host::LiveDialog& live) {
        dialog.addToGroupMode = true;
        dialog.addToGroupNode = GroupOf(dialog, 1001);
        live.Press("button04");
        EXPECT_TRUE(dialog.addToGroupMode);
    });
    ASSERT_EQ(1u, host::SelectionRequests().size());
    EXPECT_EQ((std::vector<unsigned>{1001, 1002}), host::SelectionRequests()[0].highlighted);
    EXPECT_TRUE(host::HighlightedBodies().empty());
    EXPECT_EQ("G1", StringAttribute(Body(1003), "组ID"));
}

TEST_F(Dispatch, AddModeRemovesTheHighlightAlsoWhenCancelled)
{
    LoadBodies({{1001, With(ScrewM6x20(), {{"组ID", "G1"}})}, {1003, Marked({{"名称", "顶针"}}), Stack({{8, 4}, {4, 200}})}});
    host::QueueSelectionAnswer(NXOpen::Selection::ResponseCancel, {});
    WithDialog([&](Vornadel& dialog, host::LiveDialog& live) {
        dialog.addToGroupMode = true;
        dialog.addToGroupNode = GroupOf(dialog, 1001);
        live.Press("button04");
    });
    ASSERT_EQ(1u, host::SelectionRequests().size());
    EXPECT_EQ(std::vector<unsigned>{1001}, host::SelectionRequests()[0].highlighted);
    EXPECT_TRUE(host::HighlightedBodies().empty());
    EXPECT_EQ("<none>", StringAttribute(Body(1003), "组ID"));
}

TEST_F(Dispatch, AfterAddModeEveryPressAddsToTheSameGroup)
{
    LoadBodies({{1001, With(ScrewM6x20(), {{"组ID", "G1"}})},
                {1003, Marked({{"名称", "顶针"}}), Stack({{8, 4}, {4, 200}})},
                {1004, Marked(), Box(20, 20, 15)}});
    host::QueueSelectionAnswer(NXOpen::Selection::ResponseOk, {1003});
    host::QueueSelectionAnswer(NXOpen::Selection::ResponseOk, {1004});
    WithDialog([&](Vornadel& dialog, host::LiveDialog& live) {
        dialog.addToGroupMode = true;
        dialog.addToGroupNode = GroupOf(dialog, 1001);
        live.Press("button04");
        // The rebuilt tree has a new node for the group; the remembered one is the menu's.
        dialog.addToGroupNode = GroupOf(dialog, 1001);
        live.Press("button04");
    });
    EXPECT_EQ("G1", StringAttribute(Body(1003), "组ID"));
    EXPECT_EQ("G1", StringAttribute(Body(1004), "组ID"));
}

// The remembered node is the menu's: the rebuild after the first press deletes it from the tree,
// and the group button still uses it, as it was (its body and its body rows then).
TEST_F(Dispatch, ARememberedNodeThatARebuildDeletedStillNamesTheGroup)
{
    LoadBodies({{1001, With(ScrewM6x20(), {{"组ID", "G1"}})},
                {1003, Marked({{"名称", "顶针"}}), Stack({{8, 4}, {4, 200}})},
                {1004, Marked(), Box(20, 20, 15)}});
    host::QueueSelectionAnswer(NXOpen::Selection::ResponseOk, {1003});
    host::QueueSelectionAnswer(NXOpen::Selection::ResponseOk, {1004});
    WithDialog([&](Vornadel& dialog, host::LiveDialog& live) {
        dialog.addToGroupMode = true;
        dialog.addToGroupNode = GroupOf(dialog, 1001);
        live.RightClick(dialog.addToGroupNode, 0);  // the menu's node, as "添加组" remembers it
        live.Press("button04");  // joins 1003 and rebuilds the tree: the remembered node is gone
        EXPECT_FALSE(dialog.addToGroupNode->IsInserted());
        live.Press("button04");
    });
    EXPECT_TRUE(host::Messages().empty()) << "no error";
    ASSERT_EQ(2u, host::SelectionRequests().size());
    EXPECT_EQ(std::vector<unsigned>{1001}, host::SelectionRequests()[1].highlighted)
        << "the deleted node's body rows as they were: 1001 alone";
    EXPECT_EQ("G1", StringAttribute(Body(1003), "组ID"));
    EXPECT_EQ("G1", StringAttribute(Body(1004), "组ID")) << "the remembered group, not a new one";
    EXPECT_TRUE(host::HighlightedBodies().empty());
}

// A rebuild releases the nodes it deleted once the press is over, except the node the menu was
// opened on, which the plug-in may remember: with its body rows, as they were.
TEST_F(Dispatch, RebuildsKeepOnlyTheDeletedNodesTheMenuWasOpenedOn)
{
    LoadMould();
    host::QueueSelectionAnswer(NXOpen::Selection::ResponseOk, {1003, 1004});
    host::QueueSelectionAnswer(NXOpen::Selection::ResponseOk, {1004, 1005});
    host::QueueSelectionAnswer(NXOpen::Selection::ResponseOk, {1003, 1005});
    WithDialog([&](Vornadel& dialog, host::LiveDialog& live) {
        live.Press("button04");
        EXPECT_EQ(0u, host::KeptDeletedNodes(dialog.tree_control0)) << "the first tree is released with the press";
        NXOpen::BlockStyler::Node* group = GroupOf(dialog, 1001);
        size_t rows = 1;
        for (NXOpen::BlockStyler::Node* c = group->FirstChildNode(); c != NULL; c = c->NextSiblingNode()) ++rows;
        ASSERT_LT(1u, rows) << "a group with body rows";
        live.RightClick(group, 0);
        live.Press("button04");
        EXPECT_EQ(rows, host::KeptDeletedNodes(dialog.tree_control0)) << "the node the menu was opened on, with its body rows";
        live.Press("button04");
        EXPECT_EQ(rows, host::KeptDeletedNodes(dialog.tree_control0)) << "and no more after another rebuild";
        EXPECT_EQ(1001u, DataObject(group)->Tag()) << "still readable";
    });
}

TEST_F(Dispatch, BodySelectionSelectsBodyRowsAndOpensTheirGroupsOnly)
{
    LoadMould();
    WithDialog([&](Vornadel& dialog, host::LiveDialog& live) {
        NXOpen::BlockStyler::Tree* tree = dialog.tree_control0;
        // Everything open and one group row selected before.
        ExpandAll(tree);
        tree->SelectNode(GroupOf(dialog, 1003), true, false);
        live.SelectBodies("bodySelect0", {1002, 1001});
        std::vector<NXOpen::BlockStyler::Node*> selected = tree->GetSelectedNodes();
        // 1001 is both the group row's body and a body row's: only the body row is selected.
        EXPECT_EQ((std::vector<NXOpen::BlockStyler::Node*>{LeafOf(dialog, 1001), LeafOf(dialog, 1002)}), selected);
        EXPECT_TRUE(GroupOf(dialog, 1001)->IsExpanded());
        EXPECT_FALSE(GroupOf(dialog, 1003)->IsExpanded());
        EXPECT_FALSE(GroupOf(dialog, 1004)->IsExpanded());
    });
}

TEST_F(Dispatch, SelectingNothingDeselectsAndCollapsesEveryNode)
{
    LoadMould();
    WithDialog([&](Vornadel& dialog, host::LiveDialog& live) {
        NXOpen::BlockStyler::Tree* tree = dialog.tree_control0;
        ExpandAll(tree);
        tree->SelectNode(LeafOf(dialog, 1004), true, false);
        live.SelectBodies("bodySelect0", {});
        EXPECT_TRUE(tree->GetSelectedNodes().empty());
        for (NXOpen::BlockStyler::Node* n = tree->RootNode(); n != nullptr; n = n->NextNode())
            EXPECT_FALSE(n->IsExpanded());
    });
}

TEST_F(Dispatch, RestoreButtonBringsTheLayersBackAndTheTreeOfTheSnapshot)
{
    LoadMould();
    WithDialog([&](Vornadel& dialog, host::LiveDialog& live) {
        const auto snapshot = TreeOutline(dialog);
        live.Press("button02");  // only bodies of the modification colour: none
        EXPECT_NE(snapshot, TreeOutline(dialog));
        Body(1003)->Blank();
        live.Press("button03");
        EXPECT_EQ(snapshot, TreeOutline(dialog));
    });
}

TEST_F(Dispatch, DisplayButtonsSplitTheBodiesByTheModificationColour)
{
    LoadBodies({{1001, ScrewM6x20()}, {1002, ScrewM6x20(), Screw(6, 20), 61, 186, false, {40, 0, 0}}});
    WithDialog([&](Vornadel&, host::LiveDialog& live) {
        live.Press("button02");
        EXPECT_TRUE(Body(1001)->IsBlanked());
        EXPECT_FALSE(Body(1002)->IsBlanked());
        live.Press("button021");
        EXPECT_FALSE(Body(1001)->IsBlanked());
        EXPECT_TRUE(Body(1002)->IsBlanked());
    });
}

}  // namespace
