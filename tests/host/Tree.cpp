// The tree list block: where InsertNode puts nodes, walks, deletion, the sort property, selection,
// expansion, columns and cells, as NX 8.5 does them (or as the host chose where NX says nothing).
#include <memory>

#include <NXOpen/BlockStyler_Node.hxx>
#include <NXOpen/DataContainer.hxx>
#include <NXOpen/BlockStyler_PropertyList.hxx>
#include <NXOpen/BlockStyler_Tree.hxx>

#include "UiFixture.hpp"

namespace {

using NXOpen::BlockStyler::Node;
using NXOpen::BlockStyler::Tree;

class TreeInsert : public TreeTest {};
class TreeWalk : public TreeTest {};
class TreeDelete : public TreeTest {};
class TreeSortRootNodes : public TreeTest {};
class TreeSelection : public TreeTest {};
class TreeExpansion : public TreeTest {};
class TreeColumns : public TreeTest {};
class TreeCells : public TreeTest {};

TEST_F(TreeInsert, CreatedNodeIsNotInTheTreeUntilInserted) {
    Node* node = tree_->CreateNode("a");
    EXPECT_FALSE(node->IsInserted()) << "NX: CreateNode makes a node outside the tree";
    EXPECT_EQ(nullptr, tree_->RootNode()) << "NX: the tree is still empty";
    tree_->InsertNode(node, nullptr, nullptr, Tree::NodeInsertOptionLast);
    EXPECT_TRUE(node->IsInserted()) << "NX: InsertNode puts it in";
    EXPECT_EQ(node, tree_->RootNode()) << "NX: the only top-level node is the root node";
}

TEST_F(TreeInsert, LastAppendsAfterTheSiblings) {
    Add("a");
    Add("b");
    Add("c", nullptr, nullptr, Tree::NodeInsertOptionLast);
    EXPECT_EQ("a,b,c", Level()) << "NX: Last puts the node after its siblings";
}

TEST_F(TreeInsert, FirstPutsTheNodeBeforeTheSiblings) {
    Add("a");
    Add("b");
    Add("c", nullptr, nullptr, Tree::NodeInsertOptionFirst);
    EXPECT_EQ("c,a,b", Level()) << "NX: First puts the node before its siblings";
}

TEST_F(TreeInsert, SortPlacesTheNodeByItsDisplayText) {
    Add("b", nullptr, nullptr, Tree::NodeInsertOptionSort);
    Add("d", nullptr, nullptr, Tree::NodeInsertOptionSort);
    Add("c", nullptr, nullptr, Tree::NodeInsertOptionSort);
    Add("a", nullptr, nullptr, Tree::NodeInsertOptionSort);
    EXPECT_EQ("a,b,c,d", Level()) << "NX: Sort places the node by its display text";
}

TEST_F(TreeInsert, SortComparesTheGbkBytesOfTheText) {
    // 文 is CE C4 in GBK and E6 96 87 in UTF-8; 中 is D6 D0 and E4 B8 AD: the two orders differ.
    Add("中", nullptr, nullptr, Tree::NodeInsertOptionSort);
    Add("文", nullptr, nullptr, Tree::NodeInsertOptionSort);
    EXPECT_EQ("文,中", Level()) << "host choice: Sort compares display texts byte by byte in GBK";
}

TEST_F(TreeInsert, SortPutsTheNodeAfterEqualTexts) {
    Node* first = Add("a", nullptr, nullptr, Tree::NodeInsertOptionSort);
    Node* second = Add("a", nullptr, nullptr, Tree::NodeInsertOptionSort);
    EXPECT_EQ(first, tree_->RootNode()) << "host choice: an equal text goes after the existing node";
    EXPECT_EQ(second, first->NextSiblingNode()) << "host choice: an equal text goes after the existing node";
}

// Sort searches for its place only while the siblings are known to be in order: a text changed
// after the insert, or a node put first, sends it back to comparing each sibling in turn.
TEST_F(TreeInsert, SortAfterAChangedTextGoesBeforeTheFirstGreaterSibling) {
    Add("b", nullptr, nullptr, Tree::NodeInsertOptionSort);
    Node* d = Add("d", nullptr, nullptr, Tree::NodeInsertOptionSort);
    d->SetDisplayText("a");
    Add("a0", nullptr, nullptr, Tree::NodeInsertOptionSort);
    EXPECT_EQ("a0,b,a", Level()) << "host choice: before the first sibling of a greater text";
    Add("z", nullptr, nullptr, Tree::NodeInsertOptionFirst);
    Add("c", nullptr, nullptr, Tree::NodeInsertOptionSort);
    EXPECT_EQ("c,z,a0,b,a", Level());
}

TEST_F(TreeInsert, SortAmongManyEqualAndOrderedSiblingsKeepsTheirOrder) {
    std::vector<Node*> nodes;
    for (int i = 0; i < 300; ++i) nodes.push_back(Add(i % 2 == 0 ? "m" : "k", nullptr, nullptr, Tree::NodeInsertOptionSort));
    Node* first = Add("a", nullptr, nullptr, Tree::NodeInsertOptionSort);
    Node* last = Add("z", nullptr, nullptr, Tree::NodeInsertOptionSort);
    EXPECT_EQ(first, tree_->RootNode());
    Node* at = first->NextSiblingNode();
    for (int i = 1; i < 300; i += 2, at = at->NextSiblingNode()) ASSERT_EQ(nodes[i], at) << "the k nodes in the order inserted";
    for (int i = 0; i < 300; i += 2, at = at->NextSiblingNode()) ASSERT_EQ(nodes[i], at) << "then the m nodes";
    EXPECT_EQ(last, at);
    EXPECT_EQ(nullptr, last->NextSiblingNode());
}

TEST_F(TreeInsert, AlwaysFirstStaysBeforeLaterFirstInserts) {
    Add("a");
    Add("top", nullptr, nullptr, Tree::NodeInsertOptionAlwaysFirst);
    Add("b", nullptr, nullptr, Tree::NodeInsertOptionFirst);
    EXPECT_EQ("top,b,a", Level()) << "host choice: a First insert goes after the AlwaysFirst nodes";
}

TEST_F(TreeInsert, AlwaysLastStaysAfterLaterLastInserts) {
    Add("a");
    Add("end", nullptr, nullptr, Tree::NodeInsertOptionAlwaysLast);
    Add("b", nullptr, nullptr, Tree::NodeInsertOptionLast);
    Add("c", nullptr, nullptr, Tree::NodeInsertOptionSort);
    EXPECT_EQ("a,b,c,end", Level()) << "host choice: Last and Sort inserts go before the AlwaysLast nodes";
}

TEST_F(TreeInsert, WithAfterNodeIgnoresTheOption) {
    const Tree::NodeInsertOption options[] = {Tree::NodeInsertOptionFirst, Tree::NodeInsertOptionLast, Tree::NodeInsertOptionSort,
                                              Tree::NodeInsertOptionAlwaysFirst, Tree::NodeInsertOptionAlwaysLast};
    for (Tree::NodeInsertOption option : options) {
        while (tree_->RootNode()) tree_->DeleteNode(tree_->RootNode());
        Node* z = Add("z");
        Add("y");
        Add("m", nullptr, z, option);
        EXPECT_EQ("z,m,y", Level()) << "NX: with an after-node the node goes right after it, whatever option " << option;
    }
}

TEST_F(TreeInsert, WithParentGoesAmongTheParentsChildren) {
    Node* a = Add("a");
    Add("b");
    Node* a1 = Add("a1", a);
    Add("a0", a, nullptr, Tree::NodeInsertOptionFirst);
    Add("a2", a, a1, Tree::NodeInsertOptionFirst);
    EXPECT_EQ("a0,a1,a2", Level(a)) << "NX: the options and the after-node work among the parent's children";
    EXPECT_EQ("a,b", Level()) << "NX: the top level is unchanged";
    EXPECT_EQ(a, a1->ParentNode()) << "NX: the child's parent node is the parent given";
}

TEST_F(TreeInsert, NodeIsInsertedOnce) {
    Node* a = Add("a");
    EXPECT_NE("", NXErrorOf([&] { tree_->InsertNode(a, nullptr, nullptr, Tree::NodeInsertOptionLast); }))
        << "host choice: inserting a node a second time throws NXException";
    EXPECT_EQ("a", Level()) << "host choice: the refused insert changes nothing";
}

TEST_F(TreeInsert, AfterNodeUnderAnotherParentIsRefused) {
    Node* a = Add("a");
    Node* a1 = Add("a1", a);
    Node* x = tree_->CreateNode("x");
    EXPECT_NE("", NXErrorOf([&] { tree_->InsertNode(x, nullptr, a1, Tree::NodeInsertOptionLast); }))
        << "host choice: an after-node that is not a child of the parent throws NXException";
    EXPECT_FALSE(x->IsInserted()) << "host choice: the node stays outside the tree";
}

TEST_F(TreeWalk, EmptyTreeHasNoRootNode) {
    EXPECT_EQ(nullptr, tree_->RootNode()) << "NX: RootNode is NULL for an empty tree";
}

TEST_F(TreeWalk, NextNodeWalksPreOrderAcrossLevels) {
    Node* a = Add("a");
    Node* b = Add("b");
    Node* a1 = Add("a1", a);
    Node* a2 = Add("a2", a);
    Node* a21 = Add("a21", a2);
    Node* b1 = Add("b1", b);
    std::vector<Node*> expected = {a, a1, a2, a21, b, b1};
    std::vector<Node*> walked;
    for (Node* n = tree_->RootNode(); n; n = n->NextNode()) walked.push_back(n);
    EXPECT_EQ(expected, walked) << "NX: NextNode walks the whole tree in pre-order and ends with NULL";
}

TEST_F(TreeWalk, PreviousNodeWalksPreOrderBackwards) {
    Node* a = Add("a");
    Node* a1 = Add("a1", a);
    Node* a11 = Add("a11", a1);
    Node* b = Add("b");
    EXPECT_EQ(a11, b->PreviousNode()) << "NX: before a node comes the last descendant of its previous sibling";
    EXPECT_EQ(a1, a11->PreviousNode()) << "NX: before a first child comes its parent";
    EXPECT_EQ(nullptr, a->PreviousNode()) << "NX: nothing comes before the root node";
}

TEST_F(TreeWalk, SiblingsParentAndFirstChild) {
    Node* a = Add("a");
    Node* b = Add("b");
    Node* a1 = Add("a1", a);
    EXPECT_EQ(b, a->NextSiblingNode()) << "NX: next node under the same parent";
    EXPECT_EQ(nullptr, b->NextSiblingNode()) << "NX: NULL after the last sibling";
    EXPECT_EQ(a, b->PreviousSiblingNode()) << "NX: previous node under the same parent";
    EXPECT_EQ(nullptr, a->PreviousSiblingNode()) << "NX: NULL before the first sibling";
    EXPECT_EQ(a1, a->FirstChildNode()) << "NX: first child";
    EXPECT_EQ(nullptr, a1->FirstChildNode()) << "NX: NULL for a node without children";
    EXPECT_EQ(nullptr, a->ParentNode()) << "NX: a top-level node has no parent";
    EXPECT_EQ(nullptr, a1->NextSiblingNode()) << "NX: an only child has no next sibling";
}

// Siblings are found in constant time from where each node was last seen; inserts and deletes in
// the middle of a level move the others, and every walk still finds the right neighbours.
TEST_F(TreeWalk, SiblingWalksStayRightThroughInsertsAndDeletesInTheMiddle) {
    std::vector<Node*> nodes;
    for (int i = 0; i < 200; ++i) nodes.insert(nodes.begin(), Add(std::to_string(i).c_str(), nullptr, nullptr, Tree::NodeInsertOptionFirst));
    for (size_t i = 1; i < nodes.size(); i += 3) tree_->DeleteNode(nodes[i]);
    std::vector<Node*> kept;
    for (size_t i = 0; i < nodes.size(); ++i)
        if (i % 3 != 1) kept.push_back(nodes[i]);
    Node* middle = Add("x", nullptr, kept[50], Tree::NodeInsertOptionLast);
    kept.insert(kept.begin() + 51, middle);
    std::vector<Node*> forward, backward;
    for (Node* n = tree_->RootNode(); n != nullptr; n = n->NextSiblingNode()) forward.push_back(n);
    EXPECT_EQ(kept, forward);
    for (Node* n = kept.back(); n != nullptr; n = n->PreviousSiblingNode()) backward.insert(backward.begin(), n);
    EXPECT_EQ(kept, backward);
    EXPECT_EQ(kept[52], middle->NextNode());
    EXPECT_EQ(kept[50], middle->PreviousNode());
}

TEST_F(TreeDelete, DeleteNodeRemovesItsChildren) {
    Node* a = Add("a");
    Node* b = Add("b");
    Add("a1", a);
    tree_->DeleteNode(a);
    EXPECT_EQ(b, tree_->RootNode()) << "NX: the deleted node leaves the tree";
    EXPECT_EQ(nullptr, b->NextNode()) << "NX: its children leave with it";
}

TEST_F(TreeDelete, DeletedNodeAndItsChildrenCannotBeUsed) {
    Node* a = Add("a");
    Node* a1 = Add("a1", a);
    tree_->DeleteNode(a);
    EXPECT_NE("", NXErrorOf([&] { a->DisplayText(); })) << "host choice: a deleted node throws NXException when used";
    EXPECT_NE("", NXErrorOf([&] { a1->SetDisplayText("x"); })) << "host choice: so does a child deleted with it";
    EXPECT_NE("", NXErrorOf([&] { a->Expand(Node::ExpandOptionExpand); }));
    EXPECT_NE("", NXErrorOf([&] { tree_->DeleteNode(a1); })) << "no tree changes through a deleted node";
    EXPECT_NE("", NXErrorOf([&] { tree_->InsertNode(tree_->CreateNode("b"), a, nullptr, Tree::NodeInsertOptionLast); }));
    EXPECT_NE("", NXErrorOf([&] { tree_->SelectNode(a1, true, false); }));
}

// The group button reads a group node that a rebuild deleted (its data, its children as they
// were): the host keeps those readable, NX does in practice, though its documentation calls any
// use of a deleted node illegal (docs/host.md).
TEST_F(TreeDelete, ADeletedNodesDataAndChildrenReadAsTheyWere) {
    Node* a = Add("a");
    Node* a1 = Add("a1", a);
    Node* a2 = Add("a2", a);
    Node* b = Add("b");
    std::unique_ptr<NXOpen::DataContainer>(a1->GetNodeData())->AddString("n", "7");
    tree_->DeleteNode(a);
    EXPECT_FALSE(a->IsInserted());
    EXPECT_EQ(a1, a->FirstChildNode()) << "its children as they were";
    EXPECT_EQ(a2, a1->NextSiblingNode());
    EXPECT_EQ(a1, a2->PreviousSiblingNode());
    EXPECT_EQ(a, a1->ParentNode());
    EXPECT_EQ(nullptr, a->NextSiblingNode()) << "out of the tree: no neighbours";
    EXPECT_EQ(nullptr, a->ParentNode());
    EXPECT_EQ(b, tree_->RootNode()) << "the tree itself goes on without it";
    const std::unique_ptr<NXOpen::DataContainer> data(a1->GetNodeData());
    EXPECT_STREQ("7", data->GetString("n").GetLocaleText()) << "its data as it was";
    EXPECT_NE("", NXErrorOf([&] { data->AddInteger("m", 1); })) << "but no new data";
}

TEST_F(TreeDelete, TopLevelNodesDeletedOneByOneEmptyTheTree) {
    Add("a");
    Add("b");
    while (tree_->RootNode()) tree_->DeleteNode(tree_->RootNode());
    EXPECT_EQ(nullptr, tree_->RootNode()) << "NX: deleting the root node until NULL clears the tree";
}

TEST_F(TreeSortRootNodes, SortRootNodesOnlyReadsTheProperty) {
    Add("b");
    Add("a");
    bool sortable = tree_->SortRootNodes();
    EXPECT_FALSE(sortable) << "host choice: the property is false unless the dialog file sets it";
    EXPECT_EQ("b,a", Level()) << "NX 8.5: SortRootNodes() is a getter and sorts nothing";
    tree_->SetSortRootNodes(true);
    EXPECT_TRUE(tree_->SortRootNodes()) << "NX: the setter sets the property";
    EXPECT_EQ("b,a", Level()) << "NX 8.5: setting the property sorts nothing either";
    Add("ab");
    EXPECT_EQ("ab,b,a", Level()) << "host choice: a root node inserted later goes before the first greater display text";
}

TEST_F(TreeSortRootNodes, TheDialogFileKeepsRootNodesInTheOrderInserted) {
    Add("998");
    Add("999");
    Add("1000");
    Add("001", nullptr, tree_->RootNode(), Tree::NodeInsertOptionSort);
    EXPECT_EQ("998,001,999,1000", Level()) << "Vornadel.dlx sets SortRootNodes False: the plug-in's order stands";
}

TEST_F(TreeSortRootNodes, WithoutTheSettingNXsDefaultSortsRootNodesByDisplayText) {
    WriteFile("Sorted.dlx", u8R"(<Dialog><item id="t" class="UICOMP_tree_control"/></Dialog>)");
    delete dialog_;
    OpenDialog("Sorted.dlx");
    Tree* tree = Find<Tree>("t");
    ASSERT_NE(nullptr, tree);
    EXPECT_TRUE(tree->SortRootNodes()) << "NX 8.5's default (TreeListDemo.dlx)";
    Node* thousand = nullptr;
    for (const char* text : {"998", "999", "1000"}) {
        Node* node = tree->CreateNode(text);
        tree->InsertNode(node, nullptr, nullptr, Tree::NodeInsertOptionLast);
        if (std::string(text) == "1000") thousand = node;
    }
    EXPECT_EQ(thousand, tree->RootNode()) << "host choice: root nodes by display text, so line 1000 comes before 998";
    Node* child = tree->CreateNode("0");
    Node* other = tree->CreateNode("9");
    tree->InsertNode(other, thousand, nullptr, Tree::NodeInsertOptionLast);
    tree->InsertNode(child, thousand, nullptr, Tree::NodeInsertOptionLast);
    EXPECT_EQ(other, thousand->FirstChildNode()) << "children keep the order the options give";
    NXOpen::BlockStyler::PropertyList* props = tree->GetProperties();
    EXPECT_EQ(0, props->GetInteger("Height")) << "no InitialHeight: NX chooses the height";
    delete props;
}

TEST_F(TreeSortRootNodes, HeightIsTheFilesInitialHeight) {
    NXOpen::BlockStyler::PropertyList* props = tree_->GetProperties();
    EXPECT_EQ(400, props->GetInteger("Height")) << "Vornadel.dlx: InitialHeight 400, about 20 rows";
    delete props;
}

TEST_F(TreeSelection, NewNodeIsNotSelected) {
    Node* a = Add("a");
    EXPECT_FALSE(a->IsSelected()) << "NX: a new node is not selected";
    EXPECT_EQ(nullptr, tree_->FirstSelectedNode()) << "NX: no selected node";
}

TEST_F(TreeSelection, SelectNodeWithoutOthersAffectedAddsToTheSelection) {
    Node* a = Add("a");
    Node* b = Add("b");
    tree_->SelectNode(a, true, false);
    tree_->SelectNode(b, true, false);
    EXPECT_TRUE(a->IsSelected()) << "NX: isOtherNodeAffected false keeps the other selections";
    EXPECT_TRUE(b->IsSelected()) << "NX: the node is selected";
}

TEST_F(TreeSelection, SelectNodeWithOthersAffectedClearsTheOtherSelections) {
    Node* a = Add("a");
    Node* b = Add("b");
    tree_->SelectNode(a, true, false);
    tree_->SelectNode(b, true, true);
    EXPECT_FALSE(a->IsSelected()) << "NX: isOtherNodeAffected true clears the other selections";
    EXPECT_TRUE(b->IsSelected()) << "NX: the node is selected";
}

TEST_F(TreeSelection, DeselectWithOthersAffectedClearsEveryNode) {
    Node* a = Add("a");
    Node* b = Add("b");
    tree_->SelectNodes({a, b}, true, false);
    tree_->SelectNode(b, false, true);
    EXPECT_FALSE(a->IsSelected()) << "host choice: deselecting with isOtherNodeAffected clears the others too";
    EXPECT_FALSE(b->IsSelected()) << "NX: the node is deselected";
}

TEST_F(TreeSelection, SelectNodesDeselectsTheGivenNodesOnly) {
    Node* a = Add("a");
    Node* b = Add("b");
    Node* c = Add("c");
    tree_->SelectNodes({a, b, c}, true, false);
    tree_->SelectNodes({a, b}, false, false);
    EXPECT_FALSE(a->IsSelected()) << "NX: a is deselected";
    EXPECT_FALSE(b->IsSelected()) << "NX: b is deselected";
    EXPECT_TRUE(c->IsSelected()) << "NX: c keeps its selection";
}

TEST_F(TreeSelection, SelectedNodesComeInDisplayOrder) {
    Node* a = Add("a");
    Node* a1 = Add("a1", a);
    Node* b = Add("b");
    tree_->SelectNode(b, true, false);
    tree_->SelectNode(a1, true, false);
    std::vector<Node*> expected = {a1, b};
    EXPECT_EQ(expected, tree_->GetSelectedNodes()) << "host choice: selected nodes in pre-order, not in selection order";
    EXPECT_EQ(a1, tree_->FirstSelectedNode()) << "host choice: the first selected node in pre-order";
}

TEST_F(TreeSelection, SelectingANodeOutsideTheTreeThrows) {
    Node* loose = tree_->CreateNode("x");
    EXPECT_NE("", NXErrorOf([&] { tree_->SelectNode(loose, true, false); }))
        << "host choice: a node that is not inserted cannot be selected";
}

TEST_F(TreeExpansion, NewNodeIsCollapsed) {
    Node* a = Add("a");
    Add("a1", a);
    EXPECT_FALSE(a->IsExpanded()) << "host choice: a new node is collapsed";
}

TEST_F(TreeExpansion, ExpandCollapseAndToggle) {
    Node* a = Add("a");
    Add("a1", a);
    a->Expand(Node::ExpandOptionExpand);
    EXPECT_TRUE(a->IsExpanded()) << "NX: Expand expands";
    a->Expand(Node::ExpandOptionExpand);
    EXPECT_TRUE(a->IsExpanded()) << "NX: expanding twice keeps it expanded";
    a->Expand(Node::ExpandOptionToggle);
    EXPECT_FALSE(a->IsExpanded()) << "NX: Toggle flips it";
    a->Expand(Node::ExpandOptionToggle);
    EXPECT_TRUE(a->IsExpanded()) << "NX: Toggle flips it back";
    a->Expand(Node::ExpandOptionCollapse);
    EXPECT_FALSE(a->IsExpanded()) << "NX: Collapse collapses";
}

TEST_F(TreeExpansion, ExpandingAParentKeepsTheChildrensState) {
    Node* a = Add("a");
    Node* a1 = Add("a1", a);
    Add("a11", a1);
    a->Expand(Node::ExpandOptionExpand);
    EXPECT_FALSE(a1->IsExpanded()) << "NX: children keep their state when the parent expands";
}

TEST_F(TreeColumns, InsertColumnReturnsThePosition) {
    EXPECT_EQ(3, tree_->InsertColumn(12, "隐藏", 80)) << "NX: InsertColumn returns the new column's position";
    EXPECT_EQ(4, tree_->NumberOfColumns()) << "NX: four columns now";
}

TEST_F(TreeColumns, TitleWidthAndVisibilityReadBack) {
    EXPECT_STREQ("名称", tree_->GetColumnTitle(1).GetLocaleText()) << "NX: the title given";
    EXPECT_EQ(120, tree_->GetColumnWidth(1)) << "NX: the width given";
    EXPECT_TRUE(tree_->GetColumnVisible(1)) << "NX: a new column is shown";
    tree_->SetColumnVisible(2, false);
    EXPECT_FALSE(tree_->GetColumnVisible(2)) << "NX: SetColumnVisible(false) hides it";
}

TEST_F(TreeColumns, DefaultWidthIsOneHundred) {
    tree_->InsertColumn(7, "备注", -1);
    EXPECT_EQ(100, tree_->GetColumnWidth(7)) << "host choice: width -1 (the default) reads as 100";
}

TEST_F(TreeColumns, UnknownOrRepeatedColumnIdIsRefused) {
    EXPECT_NE("", NXErrorOf([&] { tree_->GetColumnTitle(9); })) << "host choice: an unknown column id throws NXException";
    EXPECT_NE("", NXErrorOf([&] { tree_->InsertColumn(1, "again", 10); })) << "host choice: a column id is used once";
}

TEST_F(TreeColumns, NewColumnIsSortableAscendingText) {
    EXPECT_EQ(Tree::ColumnSortOptionAscending, tree_->GetColumnSortOption(0)) << "NX: ascending is a new column's default";
    EXPECT_EQ(Tree::ColumnDisplayText, tree_->GetColumnDisplayType(0)) << "NX: cells show text by default";
    EXPECT_EQ(Tree::ColumnResizePolicyConstantWidth, tree_->GetColumnResizePolicy(0)) << "NX: constant width by default";
}

TEST_F(TreeCells, DisplayTextIsColumnZero) {
    Node* a = Add("a");
    EXPECT_STREQ("a", a->GetColumnDisplayText(0).GetLocaleText()) << "NX: the display text is column 0's text";
    a->SetColumnDisplayText(0, "b");
    EXPECT_STREQ("b", a->DisplayText().GetLocaleText()) << "NX: setting column 0 sets the display text";
    a->SetDisplayText("c");
    EXPECT_STREQ("c", a->GetColumnDisplayText(0).GetLocaleText()) << "NX: setting the display text sets column 0";
}

TEST_F(TreeCells, HiddenColumnKeepsItsCellsReadable) {
    Node* a = Add("a");
    tree_->SetColumnVisible(2, false);
    a->SetColumnDisplayText(2, "0612153000123");
    EXPECT_STREQ("0612153000123", a->GetColumnDisplayText(2).GetLocaleText()) << "NX: a hidden column's cells are written and read";
}

TEST_F(TreeCells, CellNeverSetIsEmpty) {
    Node* a = Add("a");
    EXPECT_STREQ("", a->GetColumnDisplayText(1).GetLocaleText()) << "NX: a cell never set is empty";
}

TEST_F(TreeCells, Utf8TextIsStoredAsLocaleText) {
    Node* a = Add("a");
    a->SetColumnDisplayText(1, NXOpen::NXString(u8"螺钉", NXOpen::NXString::UTF8));
    EXPECT_STREQ("螺钉", a->GetColumnDisplayText(1).GetLocaleText()) << "NX: an NXString keeps its text whatever its mode";
}

TEST_F(TreeCells, ForegroundColourIsZeroUntilSet) {
    Node* a = Add("a");
    EXPECT_EQ(0, a->ForegroundColor()) << "host choice: 0 (no colour number) until one is set";
    a->SetForegroundColor(186);
    EXPECT_EQ(186, a->ForegroundColor()) << "NX: the colour set reads back";
}

}  // namespace

namespace {

class TreeHandlers : public TreeTest {};

void OnExpand(Tree*, Node*) {}
void OnMenu(Tree*, Node*, int) {}

// Host choice: the driver lists the registration calls in order, so that tests can see the
// order in which a plug-in registers its tree handlers; NX keeps no such record.
TEST_F(TreeHandlers, RegistrationCallsAreListedInTheOrderMade) {
    tree_->SetOnMenuHandler(NXOpen::make_callback(&OnMenu));
    tree_->SetOnExpandHandler(NXOpen::make_callback(&OnExpand));
    tree_->SetOnMenuSelectionHandler(NXOpen::make_callback(&OnMenu));
    const std::vector<std::string> expected = {"SetOnMenuHandler", "SetOnExpandHandler", "SetOnMenuSelectionHandler"};
    EXPECT_EQ(expected, host::TreeHandlerRegistrations(tree_));
}

}  // namespace
