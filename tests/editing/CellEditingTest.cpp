// In-place editing of the tree: which cells open an editor, the option lists of the list
// columns, a value entered on a group row reaching its body rows, and the selection of rows.

#include <algorithm>

#include <NXOpen/NXMessageBox.hxx>

#include "EditingFixture.hpp"
#include "editing/CellEditing.h"

using namespace editing_test;

namespace {

class CellEditing : public EditingFixture {
protected:
    void SetUp() override
    {
        EditingFixture::SetUp();
        LoadFourLines();
    }

    // The options the last list offered, with the preselected index in *index.
    static std::vector<std::string> Offered(host::LiveDialog& live, int* index)
    {
        *index = -1;
        return live.EditOptions(index);
    }
};

TEST(Utf8ToAnsi, ChineseUtf8BecomesGbk)
{
    EXPECT_EQ("加长 M8", Utf8ToAnsi(host::GbkToUtf8("加长 M8")));
    EXPECT_EQ("abc", Utf8ToAnsi("abc"));
    EXPECT_EQ("", Utf8ToAnsi(""));
}

TEST(Utf8ToAnsi, ResultEndsAtTheFirstNul)
{
    EXPECT_EQ("ab", Utf8ToAnsi(std::string("ab\0cd", 5)));
}

TEST(Utf8ToAnsi, CharacterGbkCannotHoldBecomesAQuestionMark)
{
#ifdef _WIN32
    GTEST_SKIP() << "Windows' WideCharToMultiByte gives one \"?\" per UTF-16 unit: U+1F600 becomes \"??\" (seen under Wine)";
#endif
    EXPECT_EQ("?x", Utf8ToAnsi("\xF0\x9F\x98\x80x"));
}

TEST(FindOptionIndex, GivesThePlaceOfTheFirstEqualOption)
{
    const std::vector<NXOpen::NXString> options = {"M6×20", "M8×30", "M8×30"};
    EXPECT_EQ(0, FindOptionIndex(options, "M6×20"));
    EXPECT_EQ(1, FindOptionIndex(options, "M8×30")) << "duplicates: the first one";
}

TEST(FindOptionIndex, TextNotOfferedOrAnEmptyListGivesZero)
{
    const std::vector<NXOpen::NXString> options = {"abc", "M6×20"};
    EXPECT_EQ(0, FindOptionIndex(options, "M6×25"));
    EXPECT_EQ(0, FindOptionIndex(options, "ABC")) << "byte for byte, case-sensitive";
    EXPECT_EQ(0, FindOptionIndex(options, "M6×20 ")) << "no trimming";
    EXPECT_EQ(0, FindOptionIndex({}, "M6×20"));
}

TEST_F(CellEditing, BodyRowOpensNoEditorInAnyColumn)
{
    WithDialog([](Vornadel& dialog, host::LiveDialog& live) {
        Tree* tree = dialog.tree_control0;
        Node* body = RowNode(tree, 1, 2);
        for (int column = 0; column < 13; ++column) {
            EXPECT_EQ(Tree::BeginLabelEditStateDisallow, dialog.OnBeginLabelEditCallback(tree, body, column)) << column;
            EXPECT_EQ(Tree::ControlTypeNone, live.AskEditControl(body, column)) << column;
        }
        EXPECT_FALSE(live.Edit(body, 1, "顶针"));
        EXPECT_FALSE(live.Edit(body, 4, "9"));
        EXPECT_EQ("内六角螺钉", Text(body, 1));
        EXPECT_EQ("3", Text(body, 4));
    });
}

TEST_F(CellEditing, ColumnZeroOfAGroupRowOpensNoEditor)
{
    WithDialog([](Vornadel& dialog, host::LiveDialog& live) {
        Tree* tree = dialog.tree_control0;
        Node* group = RowNode(tree, 1);
        EXPECT_EQ(Tree::BeginLabelEditStateDisallow, dialog.OnBeginLabelEditCallback(tree, group, 0));
        EXPECT_FALSE(live.Edit(group, 0, "009"));
        EXPECT_EQ("001", Text(group, 0));
    });
}

TEST_F(CellEditing, EveryOtherColumnOfAGroupRowIsEditable)
{
    WithDialog([](Vornadel& dialog, host::LiveDialog&) {
        Tree* tree = dialog.tree_control0;
        for (int column = 1; column < 13; ++column)
            EXPECT_EQ(Tree::BeginLabelEditStateAllow, dialog.OnBeginLabelEditCallback(tree, RowNode(tree, 1), column))
                << column;
    });
}

TEST_F(CellEditing, SevenListColumnsOfferTheirConfiguredOptions)
{
    WithDialog([](Vornadel& dialog, host::LiveDialog& live) {
        Tree* tree = dialog.tree_control0;
        Node* group = RowNode(tree, 1);
        const std::vector<std::pair<int, std::vector<std::string>>> expected = {
            {1, {"顶针", "内六角螺钉"}},
            {2, {"Φ4×200", "M6×20", "M8×30"}},
            {3, {"盘起", "米思米"}},
            {5, {"SKD61", "12.9级"}},
            {6, {}},
            {8, {"盘起工业", "米思米(中国)", "东莞盘起"}},
            {9, {"现货", "3天"}},
        };
        for (const auto& [column, options] : expected) {
            // NX 8.5 numbers the combo box 1; the list columns open control 1.
            EXPECT_EQ(Tree::ControlTypeComboBox, live.AskEditControl(group, column)) << column;
            int index = -1;
            EXPECT_EQ(options, Offered(live, &index)) << column;
        }
    });
}

TEST_F(CellEditing, FreeTextColumnsOpenNoControl)
{
    WithDialog([](Vornadel& dialog, host::LiveDialog& live) {
        Tree* tree = dialog.tree_control0;
        for (int column : {0, 4, 7, 10, 11, 12, 13, -1})
            EXPECT_EQ(Tree::ControlTypeNone, live.AskEditControl(RowNode(tree, 1), column)) << column;
    });
}

TEST_F(CellEditing, ListPreselectsTheCurrentText)
{
    WithDialog([](Vornadel& dialog, host::LiveDialog& live) {
        Tree* tree = dialog.tree_control0;
        live.AskEditControl(RowNode(tree, 1), 2);
        int index = -1;
        Offered(live, &index);
        EXPECT_EQ(1, index) << "M6×20 is the second configured size";
        live.AskEditControl(RowNode(tree, 1), 5);
        Offered(live, &index);
        EXPECT_EQ(1, index) << "12.9级 is the second configured material";
        live.AskEditControl(RowNode(tree, 2), 1);
        Offered(live, &index);
        EXPECT_EQ(0, index) << "顶针 is the first configured name";
    });
}

TEST_F(CellEditing, SizeThatIsNotConfiguredPreselectsTheFirstOption)
{
    WithDialog([](Vornadel& dialog, host::LiveDialog& live) {
        Tree* tree = dialog.tree_control0;
        Node* sleeves = RowNode(tree, 3);
        ASSERT_EQ("Φ6×150", Text(sleeves, 2));
        EXPECT_EQ(Tree::ControlTypeComboBox, live.AskEditControl(sleeves, 2));
        int index = -1;
        EXPECT_EQ(3u, Offered(live, &index).size());
        EXPECT_EQ(0, index);
    });
}

TEST_F(CellEditing, EmptyConfiguredListOpensEmptyAtZero)
{
    WithDialog([](Vornadel& dialog, host::LiveDialog& live) {
        Tree* tree = dialog.tree_control0;
        EXPECT_EQ(Tree::ControlTypeComboBox, live.AskEditControl(RowNode(tree, 1), 6));
        int index = -1;
        EXPECT_TRUE(Offered(live, &index).empty());
        EXPECT_EQ(0, index);
    });
}

TEST_F(CellEditing, AnNxErrorWhileOfferingAListShowsItsTextAndOpensNoList)
{
    WithDialog([](Vornadel& dialog, host::LiveDialog&) {
        Tree* tree = dialog.tree_control0;
        Node* gone = RowNode(tree, 5);
        tree->DeleteNode(gone);
        EXPECT_EQ(Tree::ControlTypeNone, dialog.AskEditControlCallback(tree, gone, 1));
    });
    ASSERT_EQ(1u, host::Messages().size());
    EXPECT_EQ("标准件BOM", host::Messages()[0].title);
    EXPECT_EQ(NXOpen::NXMessageBox::DialogTypeError, host::Messages()[0].type);
    EXPECT_FALSE(host::Messages()[0].text.empty()) << "the NX error's own text";
}

TEST_F(CellEditing, AbcInTheQuantityColumnReachesEveryBodyRowOfThatGroupOnly)
{
    WithDialog([](Vornadel& dialog, host::LiveDialog& live) {
        Tree* tree = dialog.tree_control0;
        EXPECT_TRUE(live.Edit(RowNode(tree, 1), 4, "abc")) << "no value is checked";
        EXPECT_EQ((std::vector<std::string>{"abc", "abc", "abc", "abc", "2", "2", "2", "2", "2", "2", "2", "1", "1",
                                            "1", "1"}),
                  Column(tree, 4));
    });
}

TEST_F(CellEditing, OptionChosenInColumn8ChangesOneGroup)
{
    WithDialog([](Vornadel& dialog, host::LiveDialog& live) {
        Tree* tree = dialog.tree_control0;
        const std::vector<std::string> before = Column(tree, 8);
        EXPECT_TRUE(live.Edit(RowNode(tree, 2), 8, "东莞盘起"));
        std::vector<std::string> expected = before;
        for (int row : {4, 5, 6})
            expected[row] = "东莞盘起";
        EXPECT_EQ(expected, Column(tree, 8));
    });
}

TEST_F(CellEditing, TextThatIsNotOfferedIsTakenInAListColumnToo)
{
    WithDialog([](Vornadel& dialog, host::LiveDialog& live) {
        Tree* tree = dialog.tree_control0;
        EXPECT_TRUE(live.Edit(RowNode(tree, 4), 1, "导柱(加硬)"));
        for (Node* node : {RowNode(tree, 4), RowNode(tree, 4, 1), RowNode(tree, 4, 2)})
            EXPECT_EQ("导柱(加硬)", Text(node, 1));
    });
}

TEST_F(CellEditing, EmptyTextIsAccepted)
{
    WithDialog([](Vornadel& dialog, host::LiveDialog& live) {
        Tree* tree = dialog.tree_control0;
        EXPECT_TRUE(live.Edit(RowNode(tree, 1), 3, ""));
        EXPECT_EQ("", Text(RowNode(tree, 1), 3));
        EXPECT_EQ("", Text(RowNode(tree, 1, 3), 3));
    });
}

TEST_F(CellEditing, GroupOfOneBodyHasOnlyItsOwnRowToChange)
{
    WithDialog([](Vornadel& dialog, host::LiveDialog& live) {
        Tree* tree = dialog.tree_control0;
        EXPECT_TRUE(live.Edit(RowNode(tree, 5), 10, "已下单"));
        EXPECT_EQ("已下单", Text(RowNode(tree, 5), 10));
        const std::vector<std::string> status = Column(tree, 10);
        EXPECT_EQ(1, std::count(status.begin(), status.end(), "已下单"));
    });
}

TEST_F(CellEditing, HandlersConvertTheTypedUtf8Themselves)
{
    WithDialog([](Vornadel& dialog, host::LiveDialog&) {
        Tree* tree = dialog.tree_control0;
        const std::string utf8 = host::GbkToUtf8("加长");
        EXPECT_EQ(Tree::EndLabelEditStateAcceptText,
                  dialog.OnEndLabelEditCallback(tree, RowNode(tree, 2), 7, NXOpen::NXString(utf8, NXOpen::NXString::Locale)));
        EXPECT_EQ("加长", Text(RowNode(tree, 2, 2), 7));
        const std::string supplier = host::GbkToUtf8("东莞盘起");
        EXPECT_EQ(Tree::EditControlOptionAccept,
                  dialog.OnEditOptionSelectedCallback(tree, RowNode(tree, 2), 8, 99,
                                                      NXOpen::NXString(supplier, NXOpen::NXString::Locale),
                                                      Tree::ControlTypeListBox))
            << "the option's index and the control type are not used";
        EXPECT_EQ("东莞盘起", Text(RowNode(tree, 2), 8));
        EXPECT_EQ("东莞盘起", Text(RowNode(tree, 2, 1), 8));
    });
}

TEST_F(CellEditing, ChineseTypedIntoAFreeTextCellIsSavedAsGbkOnEveryBodyOfTheLine)
{
    WithDialog([](Vornadel& dialog, host::LiveDialog& live) {
        Tree* tree = dialog.tree_control0;
        EXPECT_TRUE(live.Edit(RowNode(tree, 1), 7, "加长，头部磨平"));
        EXPECT_TRUE(live.Edit(RowNode(tree, 1), 2, "M8×30"));
        dialog.SaveAttributesNoTitle();
    });
    for (unsigned tag : {1001u, 1002u, 1003u}) {
        EXPECT_EQ("加长，头部磨平", AttributesOf(tag)["备注"]) << tag;
        EXPECT_EQ("M8×30", AttributesOf(tag)["类型"]) << tag;
    }
    EXPECT_EQ("", AttributesOf(2001)["备注"]) << "another line keeps its own (empty) remark";
}

TEST_F(CellEditing, SelectingABodyRowCollapsesTheOtherGroupsAndOpensItsOwn)
{
    WithDialog([](Vornadel& dialog, host::LiveDialog& live) {
        Tree* tree = dialog.tree_control0;
        for (int n = 1; n <= 4; ++n)
            RowNode(tree, n)->Expand(Node::ExpandOptionExpand);
        live.Click(RowNode(tree, 3, 2), 1);
        for (int n = 1; n <= 5; ++n)
            EXPECT_EQ(n == 3, RowNode(tree, n)->IsExpanded()) << n;
        EXPECT_TRUE(RowNode(tree, 3, 2)->IsSelected());
        EXPECT_FALSE(RowNode(tree, 3, 1)->IsSelected()) << "its sibling rows keep their state";
        EXPECT_FALSE(RowNode(tree, 3)->IsSelected()) << "and so does its group row";
    });
}

TEST_F(CellEditing, SelectingAGroupRowSelectsItsBodyRowsAndOpensIt)
{
    WithDialog([](Vornadel& dialog, host::LiveDialog& live) {
        Tree* tree = dialog.tree_control0;
        RowNode(tree, 1)->Expand(Node::ExpandOptionExpand);
        live.Click(RowNode(tree, 3), 0);
        EXPECT_FALSE(RowNode(tree, 1)->IsExpanded());
        EXPECT_TRUE(RowNode(tree, 3)->IsExpanded());
        for (int m = 1; m <= 3; ++m)
            EXPECT_TRUE(RowNode(tree, 3, m)->IsSelected()) << m;
        EXPECT_FALSE(RowNode(tree, 4, 1)->IsSelected());
    });
}

TEST_F(CellEditing, GroupRowDeselectedDeselectsItsBodyRows)
{
    WithDialog([](Vornadel& dialog, host::LiveDialog& live) {
        Tree* tree = dialog.tree_control0;
        live.Click(RowNode(tree, 1), 0);
        ASSERT_TRUE(RowNode(tree, 1, 2)->IsSelected());
        live.ToggleClick(RowNode(tree, 1), 0);
        for (int m = 1; m <= 3; ++m)
            EXPECT_FALSE(RowNode(tree, 1, m)->IsSelected()) << m;
    });
}

TEST_F(CellEditing, ClickOnAnotherGroupRowMovesTheSelectionWithItsBodyRows)
{
    WithDialog([](Vornadel& dialog, host::LiveDialog& live) {
        Tree* tree = dialog.tree_control0;
        live.Click(RowNode(tree, 1), 0);
        live.Click(RowNode(tree, 2), 0);
        for (int m = 1; m <= 3; ++m)
            EXPECT_FALSE(RowNode(tree, 1, m)->IsSelected()) << m;
        EXPECT_TRUE(RowNode(tree, 2, 1)->IsSelected());
        EXPECT_TRUE(RowNode(tree, 2, 2)->IsSelected());
        EXPECT_FALSE(RowNode(tree, 1)->IsExpanded());
        EXPECT_TRUE(RowNode(tree, 2)->IsExpanded());
    });
}

TEST_F(CellEditing, SelectionWithoutANodeAndExpandAndPreSelectChangeNothing)
{
    WithDialog([](Vornadel& dialog, host::LiveDialog&) {
        Tree* tree = dialog.tree_control0;
        RowNode(tree, 2)->Expand(Node::ExpandOptionExpand);
        dialog.OnSelectCallback(tree, nullptr, 0, true);
        dialog.OnExpandCallback(tree, RowNode(tree, 1));
        dialog.OnPreSelectCallback(tree, RowNode(tree, 1), 0, true);
        for (int n = 1; n <= 5; ++n) {
            EXPECT_EQ(n == 2, RowNode(tree, n)->IsExpanded()) << n;
            EXPECT_FALSE(RowNode(tree, n)->IsSelected()) << n;
        }
    });
}

}  // namespace
