// Reading the tree back: the node walks and the records of nodes, with their texts and bodies.

#include "StdPartsFixture.hpp"

#include <NXOpen/Part.hxx>

#include "stdparts/TreeReadBack.h"

using namespace stdparts_test;

namespace {

class TreeReadBack : public StdPartsFixture {
protected:
    // A node made by hand at the top level, with column 0 text and column 12 text.
    static NXOpen::BlockStyler::Node* AddNode(NXOpen::BlockStyler::Tree* tree, const char* text,
                                              NXOpen::BlockStyler::Node* parent = nullptr)
    {
        NXOpen::BlockStyler::Node* node = tree->CreateNode(text);
        tree->InsertNode(node, parent, nullptr, NXOpen::BlockStyler::Tree::NodeInsertOptionLast);
        node->SetColumnDisplayText(12, "ID-1");
        return node;
    }
};

TEST_F(TreeReadBack, EmptyTreeGivesAnEmptyVector)
{
    LoadBodies({});
    WithDialog([](Vornadel& dialog, host::LiveDialog&) {
        EXPECT_TRUE(dialog.GetNodeParams().empty());
        EXPECT_TRUE(GetRootNodes(dialog.tree_control0).empty());
        EXPECT_TRUE(GetAllNodes(dialog.tree_control0).empty());
    });
}

TEST_F(TreeReadBack, NullNodeGivesNoRecord)
{
    LoadBodies({});
    WithDialog([](Vornadel& dialog, host::LiveDialog&) { EXPECT_EQ(nullptr, dialog.GetNodeParam(nullptr)); });
}

TEST_F(TreeReadBack, GroupOfOneBodyGivesARecordWithoutChildren)
{
    LoadBodies({{1001, ScrewM6x20()}});
    WithDialog([](Vornadel& dialog, host::LiveDialog&) {
        std::vector<NodeParam*> records = dialog.GetNodeParams();
        ASSERT_EQ(1u, records.size());
        EXPECT_TRUE(records[0]->children.empty());
        EXPECT_EQ(Body(1001), records[0]->body);
        DeleteNodeParams(records);
    });
}

TEST_F(TreeReadBack, GroupOfThreeGivesThreeChildrenThatRepeatItsTextsExceptAModifiedStatus)
{
    PartBody modified{1003, ScrewM6x20()};
    modified.color = 186;
    LoadBodies({{1001, ScrewM6x20()}, {1002, ScrewM6x20()}, modified});
    WithDialog([](Vornadel& dialog, host::LiveDialog&) {
        std::vector<NodeParam*> records = dialog.GetNodeParams();
        ASSERT_EQ(1u, records.size());
        ASSERT_EQ(3u, records[0]->children.size());
        const NodeParam& group = *records[0];
        for (int i = 0; i < 3; ++i) {
            const NodeParam& child = *group.children[i];
            EXPECT_EQ(Body(1001 + i), child.body);
            EXPECT_TRUE(child.children.empty()) << "a child record has no children";
            for (int column = 0; column < 13; ++column) {
                if (column != 10) {
                    EXPECT_EQ(group.columnText[column], child.columnText[column]) << "column " << column;
                }
            }
        }
        EXPECT_EQ("", group.children[0]->columnText[10]);
        EXPECT_EQ("改模", group.children[2]->columnText[10]);
        DeleteNodeParams(records);
    });
}

TEST_F(TreeReadBack, ReadingRightAfterTheBuildGivesSequenceNumbersAndCountedQuantities)
{
    LoadBodies({{1001, ScrewM6x20()}, {1002, ScrewM6x20()}, {1003, Marked({{"名称", "顶针"}, {"数量", "7"}})}});
    WithDialog([](Vornadel& dialog, host::LiveDialog&) {
        std::vector<NodeParam*> records = dialog.GetNodeParams();
        ASSERT_EQ(2u, records.size());
        EXPECT_EQ("001", records[0]->columnText[0]);
        EXPECT_EQ("2", records[0]->columnText[4]);
        EXPECT_EQ("002", records[1]->columnText[0]);
        EXPECT_EQ("1", records[1]->columnText[4]);
        DeleteNodeParams(records);
    });
}

TEST_F(TreeReadBack, SnapshotOfTheFirstDisplayMatchesTheTree)
{
    LoadBodies({{1001, ScrewM6x20()}, {1002, ScrewM6x20()}, {1003, Marked({{"名称", "顶针"}})}});
    WithDialog([](Vornadel& dialog, host::LiveDialog&) {
        std::vector<Row> rows = Rows(dialog.tree_control0);
        std::vector<const NodeParam*> flat;
        for (const NodeParam* record : dialog.initialParams) {
            flat.push_back(record);
            flat.insert(flat.end(), record->children.begin(), record->children.end());
        }
        ASSERT_EQ(rows.size(), flat.size());
        for (size_t i = 0; i < rows.size(); ++i) {
            EXPECT_EQ(rows[i].text, std::vector<std::string>(flat[i]->columnText, flat[i]->columnText + 13));
            EXPECT_EQ(rows[i].tag, flat[i]->body->Tag());
        }
    });
}

TEST_F(TreeReadBack, NodeWithoutDataReadsBackWithANullBodyAndAllItsTexts)
{
    LoadBodies({});
    WithDialog([](Vornadel& dialog, host::LiveDialog&) {
        NXOpen::BlockStyler::Node* node = AddNode(dialog.tree_control0, "009");
        NodeParam* record = dialog.GetNodeParam(node);
        ASSERT_NE(nullptr, record);
        EXPECT_EQ(nullptr, record->body) << "NX throws for the missing \"Data\"; the record has no body";
        EXPECT_EQ("009", record->columnText[0]);
        EXPECT_EQ("ID-1", record->columnText[12]);
        EXPECT_EQ("", record->columnText[5]);
        delete record;
    });
}

TEST_F(TreeReadBack, NodeWhoseDataIsNotABodyReadsBackWithANullBody)
{
    LoadBodies({});
    WithDialog([](Vornadel& dialog, host::LiveDialog&) {
        NXOpen::BlockStyler::Node* node = AddNode(dialog.tree_control0, "001");
        NXOpen::DataContainer* data = node->GetNodeData();
        data->AddTaggedObject("Data", host::WorkPart());
        delete data;
        NodeParam* record = dialog.GetNodeParam(node);
        EXPECT_EQ(nullptr, record->body) << "the work part is not a body";
        delete record;
    });
}

TEST_F(TreeReadBack, NodeWhoseDataIsTextReadsBackWithANullBody)
{
    LoadBodies({});
    WithDialog([](Vornadel& dialog, host::LiveDialog&) {
        NXOpen::BlockStyler::Node* node = AddNode(dialog.tree_control0, "001");
        NXOpen::DataContainer* data = node->GetNodeData();
        data->AddString("Data", "1001");
        delete data;
        NodeParam* record = dialog.GetNodeParam(node);
        EXPECT_EQ(nullptr, record->body);
        delete record;
    });
}

TEST_F(TreeReadBack, OnlyTwoLevelsAreRead)
{
    LoadBodies({{1001, ScrewM6x20()}, {1002, ScrewM6x20()}});
    WithDialog([](Vornadel& dialog, host::LiveDialog&) {
        NXOpen::BlockStyler::Node* child = dialog.tree_control0->RootNode()->FirstChildNode();
        AddNode(dialog.tree_control0, "grandchild", child);
        std::vector<NodeParam*> records = dialog.GetNodeParams();
        ASSERT_EQ(1u, records.size());
        ASSERT_EQ(2u, records[0]->children.size());
        EXPECT_TRUE(records[0]->children[0]->children.empty()) << "children of children are ignored";
        DeleteNodeParams(records);
        EXPECT_TRUE(records.empty());
    });
}

TEST_F(TreeReadBack, NodesAreReadWhetherOrNotExpandedOrSelected)
{
    LoadBodies({{1001, ScrewM6x20()}, {1002, ScrewM6x20()}, {1003, Marked({{"名称", "顶针"}})}});
    WithDialog([](Vornadel& dialog, host::LiveDialog&) {
        NXOpen::BlockStyler::Tree* tree = dialog.tree_control0;
        std::vector<NXOpen::BlockStyler::Node*> roots = GetRootNodes(tree);
        ASSERT_EQ(2u, roots.size());
        NXOpen::BlockStyler::Node* child = roots[0]->FirstChildNode();
        roots[0]->Expand(NXOpen::BlockStyler::Node::ExpandOptionExpand);
        tree->SelectNode(child, true, false);
        ASSERT_TRUE(roots[0]->IsExpanded());
        ASSERT_TRUE(child->IsSelected());
        std::vector<NodeParam*> records = dialog.GetNodeParams();
        ASSERT_EQ(2u, records.size());
        EXPECT_EQ(2u, records[0]->children.size()) << "an expanded group with a selected child";
        EXPECT_EQ(Body(1001), records[0]->children[0]->body) << "the selected child";
        EXPECT_EQ("顶针", records[1]->columnText[1]) << "a group neither expanded nor selected";
        DeleteNodeParams(records);
    });
}

TEST_F(TreeReadBack, WalksGiveRootsChildrenAndEveryNodeInPreOrder)
{
    LoadBodies({{1001, ScrewM6x20()}, {1002, ScrewM6x20()}, {1003, Marked({{"名称", "顶针"}})}});
    WithDialog([](Vornadel& dialog, host::LiveDialog&) {
        std::vector<NXOpen::BlockStyler::Node*> roots = GetRootNodes(dialog.tree_control0);
        ASSERT_EQ(2u, roots.size());
        std::vector<NXOpen::BlockStyler::Node*> children = GetChildNodes(roots[0]);
        ASSERT_EQ(2u, children.size());
        EXPECT_TRUE(GetChildNodes(roots[1]).empty()) << "a group of one body has no child";
        EXPECT_TRUE(GetChildNodes(children[0]).empty());
        EXPECT_EQ((std::vector<NXOpen::BlockStyler::Node*>{roots[0], children[0], children[1], roots[1]}),
                  GetAllNodes(dialog.tree_control0));
    });
}

TEST_F(TreeReadBack, GetNodeBodyGivesTheBodyUnderData)
{
    LoadBodies({{1001, ScrewM6x20()}});
    WithDialog([](Vornadel& dialog, host::LiveDialog&) {
        EXPECT_EQ(Body(1001), GetNodeBody(dialog.tree_control0->RootNode()));
    });
}

}  // namespace
