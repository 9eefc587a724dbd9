// Rebuilding the tree from records read back earlier (the snapshot).

#include "StdPartsFixture.hpp"

#include "stdparts/TreeReadBack.h"

using namespace stdparts_test;

namespace {

class TreeRestore : public StdPartsFixture {
protected:
    static NodeParam* Record(const std::string& seq, NXOpen::Body* body, const std::string& date = "")
    {
        NodeParam* record = new NodeParam();
        record->body = body;
        for (int column = 0; column < 13; ++column)
            record->columnText[column] = seq + "-" + std::to_string(column);
        record->columnText[0] = seq;
        record->columnText[11] = date;
        return record;
    }
};

TEST_F(TreeRestore, SnapshotBringsBackTheListOfTheLastFullBuild)
{
    PartBody modified{1003, ScrewM6x20()};
    modified.color = 186;
    LoadBodies({{1001, ScrewM6x20()}, {1002, ScrewM6x20()}, modified, {1004, Marked({{"名称", "顶针"}})}});
    WithDialog([](Vornadel& dialog, host::LiveDialog&) {
        std::vector<Row> before = Rows(dialog.tree_control0);
        Body(1002)->Blank();
        Body(1004)->Blank();
        dialog.CreatStdPartNodes(true, false);
        ASSERT_NE(Outline(before), Outline(Rows(dialog.tree_control0)));
        dialog.CreateStdNodes(dialog.initialParams);
        std::vector<Row> after = Rows(dialog.tree_control0);
        EXPECT_EQ(Outline(before), Outline(after));
        ASSERT_EQ(before.size(), after.size());
        for (size_t i = 0; i < before.size(); ++i) {
            EXPECT_EQ(before[i].text, after[i].text) << "row " << i;
            EXPECT_EQ(before[i].tag, after[i].tag) << "row " << i;
        }
    });
}

TEST_F(TreeRestore, RestoredNodesAreColouredOnlyWhenTheirColumn11ReadsGaiMo)
{
    PartBody modified{1002, ScrewM6x20()};
    modified.color = 186;
    LoadBodies({{1001, ScrewM6x20()}, modified});
    WithDialog([](Vornadel& dialog, host::LiveDialog&) {
        ASSERT_EQ(186, Rows(dialog.tree_control0)[2].colour) << "built: the child follows its body colour";
        dialog.CreateStdNodes(dialog.initialParams);
        std::vector<Row> rows = Rows(dialog.tree_control0);
        ASSERT_EQ(3u, rows.size());
        EXPECT_EQ("改模", rows[2].text[10]) << "the text is restored";
        EXPECT_EQ(0, rows[2].colour) << "restored: only column 11 decides";
    });
}

TEST_F(TreeRestore, RecordsAreRestoredInTheirOrderWithTheirTextsAndBodies)
{
    LoadBodies({{1001, Marked()}, {1002, Marked()}, {1003, Marked()}});
    WithDialog([](Vornadel& dialog, host::LiveDialog&) {
        std::vector<NodeParam*> records = {Record("002", Body(1002)), Record("001", Body(1001), "改模")};
        records[0]->children = {Record("002", Body(1003)), Record("002", Body(1002), "改模")};
        dialog.CreateStdNodes(records);
        std::vector<Row> rows = Rows(dialog.tree_control0);
        EXPECT_EQ((std::vector<std::string>{"002 1002", "  002 1003", "  002 1002", "001 1001"}), Outline(rows))
            << "SortRootNodes() sorts nothing and the dialog file does not sort root nodes: 002 stays before 001";
        ASSERT_EQ(4u, rows.size());
        EXPECT_EQ("002-5", rows[0].text[5]);
        EXPECT_EQ("002-12", rows[1].text[12]);
        EXPECT_EQ(0, rows[0].colour);
        EXPECT_EQ(186, rows[2].colour) << "a child record whose column 11 reads 改模";
        EXPECT_EQ(186, rows[3].colour);
        DeleteNodeParams(records);
    });
}

TEST_F(TreeRestore, RestoreClearsTheTreeFirst)
{
    LoadBodies({{1001, ScrewM6x20()}, {1002, Marked({{"名称", "顶针"}})}});
    WithDialog([](Vornadel& dialog, host::LiveDialog&) {
        dialog.CreateStdNodes(dialog.initialParams);
        dialog.CreateStdNodes(dialog.initialParams);
        EXPECT_EQ((std::vector<std::string>{"001 1001", "002 1002"}), Outline(Rows(dialog.tree_control0)));
    });
}

TEST_F(TreeRestore, EmptySnapshotEmptiesTheTree)
{
    LoadBodies({{1001, ScrewM6x20()}});
    WithDialog([](Vornadel& dialog, host::LiveDialog&) {
        std::vector<NodeParam*> none;
        dialog.CreateStdNodes(none);
        EXPECT_EQ(nullptr, dialog.tree_control0->RootNode());
    });
}

}  // namespace
