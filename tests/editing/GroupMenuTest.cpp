// The tree's right-click menu: its two items and when they are offered, dissolving a group, and
// "添加组", which finds the dialog's group button on screen by its label and clicks it so that
// the group command runs in add mode.

#include <NXOpen/BlockStyler_BlockDialog.hxx>
#include <NXOpen/BlockStyler_Button.hxx>
#include <NXOpen/BlockStyler_CompositeBlock.hxx>
#include <NXOpen/NXMessageBox.hxx>
#include <uf.h>

#include "EditingFixture.hpp"
#include "editing/GroupMenu.h"

#ifdef _WIN32
#include <windows.h>
#endif

using namespace editing_test;

namespace {

enum { kAddToGroup = 0, kDissolveGroup = 1 };

class GroupMenu : public EditingFixture {
protected:
    void SetUp() override
    {
        EditingFixture::SetUp();
        LoadFourLines();
        host::PinClock({2024, 6, 3, 14, 5, 9, 27});
    }

    // The windows of the dialog shown, depth first, as the menu walks them.
    static std::vector<host::WindowView> WindowsDepthFirst()
    {
        std::vector<host::WindowView> all;
        std::function<void(const std::vector<host::WindowView>&)> walk = [&](const std::vector<host::WindowView>& level) {
            for (const host::WindowView& w : level) {
                all.push_back(w);
                walk(w.children);
            }
        };
        std::vector<host::WindowView> top = host::Windows();
        walk(top.empty() ? top : top[0].children);
        return all;
    }

    static void* WindowWithText(const std::string& text)
    {
        for (const host::WindowView& w : WindowsDepthFirst()) {
            if (w.text == text)
                return w.handle;
        }
        return nullptr;
    }

    // Every body's attributes, by tag.
    static std::map<unsigned, std::map<std::string, std::string>> PartAttributes()
    {
        std::map<unsigned, std::map<std::string, std::string>> all;
        for (unsigned tag : {1001u, 1002u, 1003u, 2001u, 2002u, 3001u, 3002u, 3003u, 4001u, 4002u, 5001u})
            all[tag] = AttributesOf(tag);
        return all;
    }
};

TEST_F(GroupMenu, RowWhoseBodyHasAGroupIdOffersBothItems)
{
    WithDialog([](Vornadel& dialog, host::LiveDialog& live) {
        std::vector<host::LiveDialog::MenuItemView> items = live.RightClick(RowNode(dialog.tree_control0, 3, 3), 2);
        ASSERT_EQ(2u, items.size());
        EXPECT_EQ(kAddToGroup, items[0].id);
        EXPECT_EQ("添加组", items[0].text);
        EXPECT_FALSE(items[0].disabled);
        EXPECT_EQ(kDissolveGroup, items[1].id);
        EXPECT_EQ("解散组", items[1].text);
        EXPECT_FALSE(items[1].disabled);
    });
}

TEST_F(GroupMenu, RowWhoseBodyHasNoGroupIdShowsBothItemsDisabled)
{
    WithDialog([](Vornadel& dialog, host::LiveDialog& live) {
        for (Node* node : {RowNode(dialog.tree_control0, 1), RowNode(dialog.tree_control0, 1, 2),
                           RowNode(dialog.tree_control0, 5)}) {
            std::vector<host::LiveDialog::MenuItemView> items = live.RightClick(node, 0);
            ASSERT_EQ(2u, items.size());
            EXPECT_TRUE(items[0].disabled) << "添加组 too";
            EXPECT_TRUE(items[1].disabled);
            EXPECT_FALSE(live.ChooseMenuItem(kAddToGroup));
        }
    });
    EXPECT_TRUE(host::SelectionRequests().empty());
}

TEST_F(GroupMenu, GroupIdOfAnotherTypeDoesNotCount)
{
    LoadBodies({{1001, Marked({{"名称", "顶针"}, {"组ID", Json{{"integer", 7}}}})}});
    WithDialog([](Vornadel& dialog, host::LiveDialog& live) {
        std::vector<host::LiveDialog::MenuItemView> items = live.RightClick(RowNode(dialog.tree_control0, 1), 0);
        ASSERT_EQ(2u, items.size());
        EXPECT_TRUE(items[0].disabled);
        EXPECT_TRUE(items[1].disabled);
    });
}

TEST_F(GroupMenu, EmptyTreeSpaceShowsBothItemsDisabled)
{
    WithDialog([](Vornadel&, host::LiveDialog& live) {
        std::vector<host::LiveDialog::MenuItemView> items = live.RightClick(nullptr, 0);
        ASSERT_EQ(2u, items.size());
        EXPECT_TRUE(items[0].disabled);
        EXPECT_TRUE(items[1].disabled);
    });
}

TEST_F(GroupMenu, DissolvingABodyRowClearsThatBodyOnlyAndRebuildsTheTree)
{
    const auto before = PartAttributes();
    WithDialog([](Vornadel& dialog, host::LiveDialog& live) {
        live.RightClick(RowNode(dialog.tree_control0, 3, 3), 0);
        EXPECT_TRUE(live.ChooseMenuItem(kDissolveGroup));
        EXPECT_EQ((std::vector<std::string>{"001 1001", "  001 1001", "  001 1002", "  001 1003", "002 2001",
                                            "  002 2001", "  002 2002", "003 3001", "  003 3001", "  003 3002",
                                            "004 3003", "005 4001", "  005 4001", "  005 4002", "006 5001"}),
                  Outline(Rows(dialog.tree_control0)));
        EXPECT_EQ(6u, dialog.initialParams.size()) << "the snapshot is taken again";
    });
    auto expected = before;
    expected[3003].erase("组ID");
    EXPECT_EQ(expected, PartAttributes()) << "nothing else changes";
}

TEST_F(GroupMenu, DissolvingAGroupRowClearsTheWholeGroup)
{
    const auto before = PartAttributes();
    WithDialog([](Vornadel& dialog, host::LiveDialog& live) {
        live.RightClick(RowNode(dialog.tree_control0, 3), 0);
        EXPECT_TRUE(live.ChooseMenuItem(kDissolveGroup));
    });
    auto expected = before;
    for (unsigned tag : {3001u, 3002u, 3003u})
        expected[tag].erase("组ID");
    EXPECT_EQ(expected, PartAttributes()) << "the group G2 keeps its id";
    EXPECT_EQ("G2", GroupIdOf(4001));
    EXPECT_TRUE(host::Messages().empty());
}

TEST_F(GroupMenu, DissolvedGroupIsRebuiltFromThePartWithoutUnsavedEdits)
{
    WithDialog([](Vornadel& dialog, host::LiveDialog& live) {
        Tree* tree = dialog.tree_control0;
        live.Edit(RowNode(tree, 1), 7, "未保存");
        live.RightClick(RowNode(tree, 3), 0);
        EXPECT_TRUE(live.ChooseMenuItem(kDissolveGroup));
        EXPECT_EQ("", Text(RowNode(tree, 1), 7));
        const std::vector<std::string> outline = Outline(Rows(tree));
        EXPECT_EQ((std::vector<std::string>{"003 3001", "  003 3001", "  003 3002", "004 3003", "005 4001",
                                            "  005 4001", "  005 4002", "006 5001"}),
                  std::vector<std::string>(outline.begin() + 7, outline.end()));
    });
}

TEST_F(GroupMenu, AddToGroupRunsTheGroupButtonInAddMode)
{
    host::QueueSelectionAnswer(NXOpen::Selection::ResponseOk, {5001});
    WithDialog([](Vornadel& dialog, host::LiveDialog& live) {
        Tree* tree = dialog.tree_control0;
        Node* clicked = RowNode(tree, 3, 2);
        live.RightClick(clicked, 0);
        EXPECT_TRUE(live.ChooseMenuItem(kAddToGroup));
        EXPECT_TRUE(dialog.addToGroupMode);
        EXPECT_EQ(clicked, dialog.addToGroupNode);
        const std::vector<std::string> outline = Outline(Rows(tree));
        EXPECT_EQ((std::vector<std::string>{"003 3001", "  003 3001", "  003 3002", "  003 3003", "  003 5001",
                                            "004 4001", "  004 4001", "  004 4002"}),
                  std::vector<std::string>(outline.begin() + 7, outline.end()))
            << "the tree is rebuilt with the bush in the group";
    });
    ASSERT_EQ(1u, host::SelectionRequests().size());
    EXPECT_EQ("设置组", host::SelectionRequests()[0].title);
    EXPECT_EQ("选择需要设置为同一组的实体", host::SelectionRequests()[0].message);
    EXPECT_EQ("G1", GroupIdOf(5001)) << "the clicked row's group id";
    EXPECT_EQ("-", GroupIdOf(1001));
}

TEST_F(GroupMenu, AfterOneAddToGroupTheGroupButtonKeepsAddingToTheRememberedGroup)
{
    host::QueueSelectionAnswer(NXOpen::Selection::ResponseCancel);
    host::QueueSelectionAnswer(NXOpen::Selection::ResponseOk, {5001, 2002});
    WithDialog([](Vornadel& dialog, host::LiveDialog& live) {
        live.RightClick(RowNode(dialog.tree_control0, 4), 0);
        EXPECT_TRUE(live.ChooseMenuItem(kAddToGroup));
        EXPECT_EQ("-", GroupIdOf(5001)) << "cancelled: nothing changes";
        live.Press("button04");
    });
    EXPECT_EQ(2u, host::SelectionRequests().size());
    EXPECT_EQ("G2", GroupIdOf(5001)) << "the group of the row the menu was opened on, not a new group";
    EXPECT_EQ("G2", GroupIdOf(2002));
}

TEST_F(GroupMenu, WithoutTheMenuTheGroupButtonMakesANewGroup)
{
    host::QueueSelectionAnswer(NXOpen::Selection::ResponseOk, {5001, 2002});
    WithDialog([](Vornadel& dialog, host::LiveDialog& live) {
        live.Press("button04");
        EXPECT_FALSE(dialog.addToGroupMode);
    });
    EXPECT_EQ("06031405090027", GroupIdOf(5001));
    EXPECT_EQ("06031405090027", GroupIdOf(2002));
}

TEST_F(GroupMenu, TitleThatMatchesNoWindowMakesAddToGroupDoNothing)
{
    host::QueueSelectionAnswer(NXOpen::Selection::ResponseOk, {5001});
    WithDialog([](Vornadel& dialog, host::LiveDialog& live) {
        std::vector<host::WindowView> top = host::Windows();
        ASSERT_EQ(1u, top.size());
        ASSERT_TRUE(host::ChangeWindowText(top[0].handle, "Vornadel - 标准件BOM"));
        live.RightClick(RowNode(dialog.tree_control0, 3), 0);
        EXPECT_TRUE(live.ChooseMenuItem(kAddToGroup));
        EXPECT_FALSE(dialog.addToGroupMode);
        EXPECT_EQ(nullptr, dialog.addToGroupNode);
    });
    EXPECT_TRUE(host::SelectionRequests().empty());
    EXPECT_EQ("-", GroupIdOf(5001));
    EXPECT_TRUE(host::Messages().empty()) << "silently";
}

TEST_F(GroupMenu, NoWindowWithTheButtonLabelMakesAddToGroupDoNothing)
{
    WithDialog([](Vornadel& dialog, host::LiveDialog& live) {
        ASSERT_TRUE(host::ChangeWindowText(WindowWithText("设置组"), "设置组(&G)"));
        live.RightClick(RowNode(dialog.tree_control0, 3), 0);
        EXPECT_TRUE(live.ChooseMenuItem(kAddToGroup));
        EXPECT_FALSE(dialog.addToGroupMode);
    });
    EXPECT_TRUE(host::SelectionRequests().empty());
    EXPECT_TRUE(host::Messages().empty());
}

TEST_F(GroupMenu, OnlyTheFirstWindowWithTheButtonLabelInDepthFirstOrderIsClicked)
{
    host::QueueSelectionAnswer(NXOpen::Selection::ResponseOk, {5001});
    WithDialog([](Vornadel& dialog, host::LiveDialog& live) {
        // The tree's window lies deeper than the group button's but in an earlier branch: depth
        // first it comes before the button, breadth first after it.
        dialog.tree_control0->SetLabel("设置组");
        Node* clicked = RowNode(dialog.tree_control0, 3);
        live.RightClick(clicked, 0);
        EXPECT_TRUE(live.ChooseMenuItem(kAddToGroup));
        EXPECT_TRUE(dialog.addToGroupMode) << "a window with the label was found";
        EXPECT_EQ(clicked, dialog.addToGroupNode);
    });
    EXPECT_TRUE(host::SelectionRequests().empty()) << "the tree's window took the click, the button got none";
    EXPECT_EQ("-", GroupIdOf(5001));
}

TEST_F(GroupMenu, ALaterWindowWithTheButtonLabelIsNotClicked)
{
    host::QueueSelectionAnswer(NXOpen::Selection::ResponseOk, {5001});
    host::QueueSelectionAnswer(NXOpen::Selection::ResponseOk, {1001});
    WithDialog([](Vornadel& dialog, host::LiveDialog& live) {
        dialog.button03->SetLabel("设置组");
        live.RightClick(RowNode(dialog.tree_control0, 3), 0);
        EXPECT_TRUE(live.ChooseMenuItem(kAddToGroup));
    });
    EXPECT_EQ(1u, host::SelectionRequests().size()) << "one press of the group button, none of button03";
    EXPECT_EQ("G1", GroupIdOf(5001));
}

TEST_F(GroupMenu, ChoiceWithoutANodeOrOfAnotherItemDoesNothing)
{
    const auto before = PartAttributes();
    WithDialog([](Vornadel& dialog, host::LiveDialog&) {
        Tree* tree = dialog.tree_control0;
        UF_terminate();
        dialog.OnMenuSelectionCallback(tree, nullptr, kDissolveGroup);
        EXPECT_EQ(1, UF_is_initialized()) << "the user-function library is initialised first";
        dialog.OnMenuSelectionCallback(tree, nullptr, kAddToGroup);
        dialog.OnMenuSelectionCallback(tree, RowNode(tree, 3), 2);
        dialog.OnMenuSelectionCallback(tree, RowNode(tree, 3), -1);
        EXPECT_FALSE(dialog.addToGroupMode);
        EXPECT_EQ(15u, Rows(tree).size());
    });
    EXPECT_EQ(before, PartAttributes());
    EXPECT_TRUE(host::SelectionRequests().empty());
    EXPECT_TRUE(host::Messages().empty());
}

// A node deleted from the tree is still read as it was: dissolving on it clears its group.
TEST_F(GroupMenu, DissolvingOnANodeTheTreeNoLongerHoldsUsesItAsItWas)
{
    WithDialog([](Vornadel& dialog, host::LiveDialog&) {
        Tree* tree = dialog.tree_control0;
        Node* gone = RowNode(tree, 3);
        tree->DeleteNode(gone);
        dialog.OnMenuSelectionCallback(tree, gone, kDissolveGroup);
    });
    EXPECT_TRUE(host::Messages().empty());
    EXPECT_EQ("-", GroupIdOf(3001));
    EXPECT_EQ("-", GroupIdOf(3002)) << "its body rows as they were";
    EXPECT_EQ("G2", GroupIdOf(4001)) << "another group keeps its id";
}

TEST(CollectChildWindows, NoWindowHasNoDescendants)
{
    std::vector<platform::WindowHandle> list(1, reinterpret_cast<platform::WindowHandle>(0x1));
    CollectChildWindows(reinterpret_cast<platform::WindowHandle>(0x7), list);
    EXPECT_EQ(1u, list.size()) << "an unknown window adds nothing, and the list is appended to";
}

TEST_F(GroupMenu, CollectChildWindowsWalksTheDialogDepthFirst)
{
    WithDialog([](Vornadel&, host::LiveDialog& live) {
        std::vector<platform::WindowHandle> list;
        CollectChildWindows(host::Windows()[0].handle, list);
        std::vector<void*> expected;
        for (const host::WindowView& w : WindowsDepthFirst())
            expected.push_back(w.handle);
        EXPECT_EQ(expected, list);
        EXPECT_EQ(live.Blocks().size(), list.size()) << "one window per block";
    });
}

#ifdef _WIN32
// On Windows the menu finds and clicks real windows with the real window calls: a spy subclasses
// windows and records the mouse messages their procedures receive.
std::map<HWND, WNDPROC> g_spied;
std::map<HWND, std::vector<UINT>> g_mouse;

LRESULT CALLBACK Spy(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_LBUTTONDOWN || message == WM_LBUTTONUP)
        g_mouse[window].push_back(message);
    return CallWindowProcA(g_spied[window], window, message, wParam, lParam);
}

void SpyOn(void* handle)
{
    HWND window = static_cast<HWND>(handle);
    ASSERT_TRUE(IsWindow(window)) << "a real window";
    g_spied[window] = reinterpret_cast<WNDPROC>(SetWindowLongPtrA(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Spy)));
}

class GroupMenuOnWindows : public GroupMenu {
protected:
    void SetUp() override
    {
        GroupMenu::SetUp();
        g_spied.clear();
        g_mouse.clear();
    }
};

TEST_F(GroupMenuOnWindows, AddToGroupClicksTheGroupButtonsRealWindow)
{
    host::QueueSelectionAnswer(NXOpen::Selection::ResponseOk, {5001});
    void* button = nullptr;
    WithDialog([&](Vornadel& dialog, host::LiveDialog& live) {
        button = WindowWithText("设置组");
        SpyOn(button);
        live.RightClick(RowNode(dialog.tree_control0, 3), 0);
        EXPECT_TRUE(live.ChooseMenuItem(kAddToGroup));
    });
    std::map<HWND, std::vector<UINT>> expected = {{static_cast<HWND>(button), {WM_LBUTTONDOWN, WM_LBUTTONUP}}};
    EXPECT_EQ(expected, g_mouse) << "SendMessageA delivered the click to the button's window procedure";
    EXPECT_EQ("G1", GroupIdOf(5001)) << "the selected body joined the clicked row's group";
}

TEST_F(GroupMenuOnWindows, OnlyTheFirstRealWindowWithTheLabelGetsTheClick)
{
    void* tree = nullptr;
    WithDialog([&](Vornadel& dialog, host::LiveDialog& live) {
        SpyOn(WindowWithText("设置组"));
        dialog.tree_control0->SetLabel("设置组");
        tree = WindowWithText("设置组");
        SpyOn(tree);
        live.RightClick(RowNode(dialog.tree_control0, 3), 0);
        EXPECT_TRUE(live.ChooseMenuItem(kAddToGroup));
    });
    std::map<HWND, std::vector<UINT>> expected = {{static_cast<HWND>(tree), {WM_LBUTTONDOWN, WM_LBUTTONUP}}};
    EXPECT_EQ(expected, g_mouse) << "the tree's window, first depth first, got the click; the button's none";
    EXPECT_TRUE(host::SelectionRequests().empty());
}
#endif

}  // namespace
