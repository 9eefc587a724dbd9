// What NX calls when the designer works in the tree: clicks (selection handlers), cell edits (the
// label-edit and edit-control handlers, with the NX 8.5 UTF-8 quirk) and the context menu.
#include <algorithm>
#include <stdexcept>

#include <NXOpen/BlockStyler_TreeListMenu.hxx>

#include "UiFixture.hpp"

namespace {

using NXOpen::NXString;
using namespace NXOpen::BlockStyler;

// Records every tree handler call; the answers it gives are set by the test.
class TreeHandlers : public TreeTest {
protected:
    void SetUp() override {
        TreeTest::SetUp();
        tree_->SetOnPreSelectHandler(NXOpen::make_callback(this, &TreeHandlers::onPreSelect));
        tree_->SetOnSelectHandler(NXOpen::make_callback(this, &TreeHandlers::onSelect));
        tree_->SetOnBeginLabelEditHandler(NXOpen::make_callback(this, &TreeHandlers::onBeginLabelEdit));
        tree_->SetOnEndLabelEditHandler(NXOpen::make_callback(this, &TreeHandlers::onEndLabelEdit));
        tree_->SetOnEditOptionSelectedHandler(NXOpen::make_callback(this, &TreeHandlers::onEditOptionSelected));
        tree_->SetAskEditControlHandler(NXOpen::make_callback(this, &TreeHandlers::askEditControl));
        tree_->SetOnMenuHandler(NXOpen::make_callback(this, &TreeHandlers::onMenu));
        tree_->SetOnMenuSelectionHandler(NXOpen::make_callback(this, &TreeHandlers::onMenuSelection));
        a_ = Add("a");
        b_ = Add("b");
        a1_ = Add("a1", a_);
    }

    std::string Name(Node* node) { return node ? node->DisplayText().GetLocaleText() : "NULL"; }

    void onPreSelect(Tree*, Node* node, int column, bool selected) {
        events_.push_back("preselect " + Name(node) + " " + std::to_string(column) + (selected ? " true" : " false"));
    }
    void onSelect(Tree*, Node* node, int column, bool selected) {
        events_.push_back("select " + Name(node) + " " + std::to_string(column) + (selected ? " true" : " false"));
    }
    Tree::BeginLabelEditState onBeginLabelEdit(Tree*, Node* node, int column) {
        events_.push_back("begin " + Name(node) + " " + std::to_string(column));
        return allowEdit_ ? Tree::BeginLabelEditStateAllow : Tree::BeginLabelEditStateDisallow;
    }
    Tree::EndLabelEditState onEndLabelEdit(Tree*, Node* node, int column, NXString text) {
        handedText_ = text.GetLocaleText();
        handedMode_ = text.GetMode();
        events_.push_back("end " + Name(node) + " " + std::to_string(column));
        node->SetColumnDisplayText(column, "set by the handler");
        return acceptEdit_ ? Tree::EndLabelEditStateAcceptText : Tree::EndLabelEditStateRejectText;
    }
    Tree::EditControlOption onEditOptionSelected(Tree*, Node* node, int column, int index, NXString text, Tree::ControlType type) {
        handedText_ = text.GetLocaleText();
        events_.push_back("option " + Name(node) + " " + std::to_string(column) + " #" + std::to_string(index) + " type " +
                          std::to_string(type));
        return acceptEdit_ ? Tree::EditControlOptionAccept : Tree::EditControlOptionReject;
    }
    Tree::ControlType askEditControl(Tree* tree, Node* node, int column) {
        events_.push_back("ask " + Name(node) + " " + std::to_string(column));
        if (control_ != Tree::ControlTypeNone) {
            std::vector<NXString> options = {NXString("顶针"), NXString("内六角螺钉")};
            tree->SetEditOptions(options, 1);
        }
        return control_;
    }
    void onMenu(Tree* tree, Node* node, int column) {
        events_.push_back("menu " + Name(node) + " " + std::to_string(column));
        TreeListMenu* menu = tree->CreateMenu();
        menu->AddMenuItem(0, "添加组");
        menu->AddSeperator();
        menu->AddMenuItem(1, "解散组");
        menu->AddMenuItem(2, "隐藏项");
        menu->SetItemDisable(1, disableDissolve_);
        menu->SetItemHidden(2, true);
        tree->SetMenu(menu);
        delete menu;
    }
    void onMenuSelection(Tree*, Node* node, int item) { events_.push_back("chosen " + Name(node) + " " + std::to_string(item)); }

    // Runs the designer's actions in the shown dialog.
    void Designer(std::function<void(host::LiveDialog&)> actions) {
        ShowWith([&](host::LiveDialog& live) {
            events_.clear();
            actions(live);
        });
    }

    Node* a_ = nullptr;
    Node* b_ = nullptr;
    Node* a1_ = nullptr;
    std::vector<std::string> events_;
    bool allowEdit_ = true;
    bool acceptEdit_ = true;
    bool disableDissolve_ = false;
    Tree::ControlType control_ = Tree::ControlTypeNone;
    std::string handedText_;
    NXString::NXStringMode handedMode_ = NXString::UTF8;
};

class TreeClick : public TreeHandlers {};
class TreeEdit : public TreeHandlers {};
class TreeMenu : public TreeHandlers {};

// NX: a click first deselects the other nodes (select handler with false for each, in display
// order, with the clicked column: a host choice), then runs the pre-select and select handlers of
// the clicked node with true.
const std::vector<std::string> kClickSequence = {"select a 1 false", "select a1 1 false", "preselect b 1 true", "select b 1 true"};

TEST_F(TreeClick, ClickDeselectsTheOthersThenSelectsTheNode) {
    tree_->SelectNodes({a_, a1_}, true, false);
    Designer([&](host::LiveDialog& live) { live.Click(b_, 1); });
    EXPECT_EQ(kClickSequence, events_) << "the handlers NX runs for a click, in order";
    EXPECT_EQ(std::vector<Node*>{b_}, tree_->GetSelectedNodes()) << "the clicked node is the only selected node";
}

TEST_F(TreeClick, ToggleClickFlipsOneNode) {
    tree_->SelectNode(a_, true, false);
    Designer([&](host::LiveDialog& live) {
        live.ToggleClick(b_, 0);
        live.ToggleClick(a_, 0);
    });
    std::vector<std::string> expected = {"select b 0 true", "select a 0 false"};
    EXPECT_EQ(expected, events_) << "a Ctrl+click runs the select handler with the node's new state";
    EXPECT_EQ(std::vector<Node*>{b_}, tree_->GetSelectedNodes()) << "the others keep their state";
}

TEST_F(TreeEdit, FreeTextReachesTheHandlerAsUtf8BytesThroughGetLocaleText) {
    bool accepted = false;
    Designer([&](host::LiveDialog& live) { accepted = live.Edit(a_, 1, "螺钉"); });
    EXPECT_TRUE(accepted) << "the handler accepted the text";
    EXPECT_EQ(u8"螺钉", handedText_) << "NX 8.5: GetLocaleText() of the edited text gives UTF-8 bytes";
    EXPECT_EQ(NXString::Locale, handedMode_) << "NX 8.5: the edited text comes as a Locale string";
    std::vector<std::string> expected = {"begin a 1", "ask a 1", "end a 1"};
    EXPECT_EQ(expected, events_) << "NX: begin-label-edit, ask-edit-control, end-label-edit";
    EXPECT_STREQ("螺钉", a_->GetColumnDisplayText(1).GetLocaleText()) << "NX: an accepted text becomes the cell's text";
}

TEST_F(TreeEdit, RejectedTextRestoresTheCell) {
    a_->SetColumnDisplayText(1, "旧");
    acceptEdit_ = false;
    bool accepted = true;
    Designer([&](host::LiveDialog& live) { accepted = live.Edit(a_, 1, "新"); });
    EXPECT_FALSE(accepted) << "the handler rejected the text";
    EXPECT_STREQ("旧", a_->GetColumnDisplayText(1).GetLocaleText()) << "NX: a rejected edit restores the text the cell had";
}

TEST_F(TreeEdit, RefusedBeginStopsTheEdit) {
    allowEdit_ = false;
    bool accepted = true;
    Designer([&](host::LiveDialog& live) { accepted = live.Edit(a_, 0, "x"); });
    EXPECT_FALSE(accepted) << "no editor opens";
    EXPECT_EQ(std::vector<std::string>{"begin a 0"}, events_) << "NX: nothing runs after a refusing begin-label-edit";
    EXPECT_STREQ("a", a_->DisplayText().GetLocaleText()) << "the cell is unchanged";
}

class TreeWithoutHandlers : public TreeTest {};

TEST_F(TreeWithoutHandlers, CellIsNotEditableWithoutABeginHandler) {
    Node* n = Add("n");
    bool accepted = true;
    ShowWith([&](host::LiveDialog& live) { accepted = live.Edit(n, 0, "x"); });
    EXPECT_FALSE(accepted) << "host choice: without a begin-label-edit handler the cell is not editable";
    EXPECT_STREQ("n", n->DisplayText().GetLocaleText()) << "the cell is unchanged";
}

TEST_F(TreeEdit, ComboBoxOptionRunsTheOptionHandler) {
    control_ = Tree::ControlTypeComboBox;
    Designer([&](host::LiveDialog& live) {
        live.Edit(a_, 2, "顶针");
        int index = -1;
        std::vector<std::string> options = live.EditOptions(&index);
        EXPECT_EQ((std::vector<std::string>{"顶针", "内六角螺钉"}), options) << "the options the ask handler set";
        EXPECT_EQ(1, index) << "the preselected index";
    });
    std::vector<std::string> expected = {"begin a 2", "ask a 2", "option a 2 #0 type 1"};
    EXPECT_EQ(expected, events_) << "NX: choosing an option runs the option handler with its index and the control type";
    EXPECT_EQ(u8"顶针", handedText_) << "NX 8.5: the option text also comes as UTF-8 bytes";
    EXPECT_STREQ("顶针", a_->GetColumnDisplayText(2).GetLocaleText()) << "the chosen option becomes the cell's text";
}

TEST_F(TreeEdit, ComboBoxTakesTypedText) {
    control_ = Tree::ControlTypeComboBox;
    Designer([&](host::LiveDialog& live) { live.Edit(a_, 2, "弹簧"); });
    std::vector<std::string> expected = {"begin a 2", "ask a 2", "end a 2"};
    EXPECT_EQ(expected, events_) << "NX: text typed into a combo box ends like a free-text edit";
    EXPECT_STREQ("弹簧", a_->GetColumnDisplayText(2).GetLocaleText()) << "the typed text becomes the cell's text";
}

TEST_F(TreeEdit, ListBoxTakesOnlyItsOptions) {
    control_ = Tree::ControlTypeListBox;
    bool typed = true;
    bool chosen = false;
    Designer([&](host::LiveDialog& live) {
        typed = live.Edit(a_, 2, "弹簧");
        chosen = live.Edit(a_, 2, "内六角螺钉");
    });
    EXPECT_FALSE(typed) << "NX: a list box cannot take other text";
    EXPECT_TRUE(chosen) << "NX: an option of the list is chosen";
    std::vector<std::string> expected = {"begin a 2", "ask a 2", "begin a 2", "ask a 2", "option a 2 #1 type 2"};
    EXPECT_EQ(expected, events_) << "the refused text runs no end or option handler";
}

TEST_F(TreeEdit, HiddenColumnCannotBeEdited) {
    tree_->SetColumnVisible(2, false);
    Designer([&](host::LiveDialog& live) { EXPECT_THROW(live.Edit(a_, 2, "x"), std::invalid_argument) << "host: the designer cannot reach a hidden cell"; });
    EXPECT_TRUE(events_.empty()) << "no handler ran";
}

TEST_F(TreeMenu, RightClickShowsTheMenuTheHandlerSet) {
    std::vector<host::LiveDialog::MenuItemView> items;
    Designer([&](host::LiveDialog& live) { items = live.RightClick(a1_, 1); });
    EXPECT_EQ(std::vector<std::string>{"menu a1 1"}, events_) << "NX: the menu handler runs with the node and column";
    ASSERT_EQ(3u, items.size()) << "three items (the separator is none)";
    EXPECT_EQ(0, items[0].id) << "the first item";
    EXPECT_EQ("添加组", items[0].text) << "its text";
    EXPECT_TRUE(items[2].hidden) << "the hidden item is marked";
}

TEST_F(TreeMenu, ChosenItemRunsTheSelectionHandlerWithTheNode) {
    bool chosen = false;
    Designer([&](host::LiveDialog& live) {
        live.RightClick(a_, 0);
        chosen = live.ChooseMenuItem(1);
    });
    EXPECT_TRUE(chosen) << "an enabled item can be chosen; the menu survives the deletion of its wrapper after SetMenu";
    std::vector<std::string> expected = {"menu a 0", "chosen a 1"};
    EXPECT_EQ(expected, events_) << "NX: the menu-selection handler gets the node and the item id";
}

TEST_F(TreeMenu, DisabledHiddenOrMissingItemsCannotBeChosen) {
    disableDissolve_ = true;
    Designer([&](host::LiveDialog& live) {
        live.RightClick(a_, 0);
        EXPECT_FALSE(live.ChooseMenuItem(1)) << "a disabled item cannot be chosen";
        live.RightClick(a_, 0);
        EXPECT_FALSE(live.ChooseMenuItem(2)) << "a hidden item cannot be chosen";
        live.RightClick(a_, 0);
        EXPECT_FALSE(live.ChooseMenuItem(7)) << "an absent item cannot be chosen";
    });
    EXPECT_EQ(3, std::count_if(events_.begin(), events_.end(), [](const std::string& e) { return e.rfind("menu", 0) == 0; }))
        << "three menus were shown";
    EXPECT_EQ(0, std::count_if(events_.begin(), events_.end(), [](const std::string& e) { return e.rfind("chosen", 0) == 0; }))
        << "the menu-selection handler never ran";
}

TEST_F(TreeMenu, MenuClosesOnceAnItemIsChosen) {
    Designer([&](host::LiveDialog& live) {
        live.RightClick(a_, 0);
        EXPECT_TRUE(live.ChooseMenuItem(0)) << "the first choice runs";
        EXPECT_FALSE(live.ChooseMenuItem(0)) << "host choice: the menu is gone after a choice";
    });
}

TEST_F(TreeMenu, RightClickOnEmptySpaceGivesANullNode) {
    Designer([&](host::LiveDialog& live) {
        live.RightClick(nullptr, 0);
        live.ChooseMenuItem(0);
    });
    std::vector<std::string> expected = {"menu NULL 0", "chosen NULL 0"};
    EXPECT_EQ(expected, events_) << "NX: a click on empty tree space passes a NULL node";
}

TEST_F(TreeMenu, MenuItemFlagsReadBack) {
    TreeListMenu* menu = tree_->CreateMenu();
    menu->AddMenuItem(5, "五");
    menu->SetItemDisable(5, true);
    menu->SetItemChecked(5, true);
    EXPECT_TRUE(menu->GetItemDisable(5)) << "NX: disabled";
    EXPECT_TRUE(menu->GetItemChecked(5)) << "NX: checked";
    EXPECT_FALSE(menu->GetItemHidden(5)) << "NX: not hidden";
    EXPECT_NE("", NXErrorOf([&] { menu->GetItemDisable(6); })) << "host choice: an unknown item id throws NXException";
    delete menu;
}

// NX's documentation: SetMenu is called in the menu handler, SetEditOptions in the
// ask-edit-control handler. The host takes them there only.
TEST_F(TreeMenu, SetMenuOutsideTheMenuHandlerIsAnNxError) {
    TreeListMenu* menu = tree_->CreateMenu();
    menu->AddMenuItem(0, "添加组");
    EXPECT_NE("", NXErrorOf([&] { tree_->SetMenu(menu); }));
    delete menu;
}

TEST_F(TreeEdit, SetEditOptionsOutsideTheAskEditControlHandlerIsAnNxError) {
    std::vector<NXString> options = {NXString("顶针")};
    EXPECT_NE("", NXErrorOf([&] { tree_->SetEditOptions(options, 0); }));
}

}  // namespace
