// The dialog's windows as FindWindowA, FindWindowExA, GetWindowTextA and SendMessageA show them
// (platform/Desktop.h): found by class and title, walked depth first, read with truncation, and a
// button pressed by a left button down then up, also from inside a tree menu handler.
#include <cstring>

#include <NXOpen/BlockStyler_Button.hxx>
#include <NXOpen/BlockStyler_TreeListMenu.hxx>

#include "UiFixture.hpp"
#include "platform/Desktop.h"

#ifdef _WIN32
#include <windows.h>
#endif

namespace {

using namespace NXOpen::BlockStyler;
using platform::WindowHandle;

const char kDialogClass[] = "#32770";

// Every descendant of a window, depth first: a child, then its descendants, then the next child.
void Collect(WindowHandle parent, std::vector<WindowHandle>& out) {
    for (WindowHandle child = platform::FindChildWindow(parent, NULL); child; child = platform::FindChildWindow(parent, child)) {
        out.push_back(child);
        Collect(child, out);
    }
}

std::string TextOf(WindowHandle window) {
    char buffer[1024];
    platform::ReadWindowText(window, buffer, sizeof buffer);
    return buffer;
}

// The first descendant of the dialog's window whose text is label, as the grouping menu finds a button.
WindowHandle FindByText(const std::string& title, const std::string& label) {
    std::vector<WindowHandle> all;
    Collect(platform::FindTopLevelWindow(kDialogClass, title.c_str()), all);
    for (WindowHandle w : all) {
        if (TextOf(w) == label) return w;
    }
    return NULL;
}

void Click(WindowHandle window) {
    platform::SendWindowMessage(window, platform::WM_LBUTTONDOWN_MESSAGE, 0, 0);
    platform::SendWindowMessage(window, platform::WM_LBUTTONUP_MESSAGE, 0, 0);
}

class DialogWindows : public UiTest {
protected:
    void SetUp() override {
        UiTest::SetUp();
        OpenDialog();
        title_ = dialog_->TopBlock()->Label().GetLocaleText();
        caption_ = dialog_->TopBlock()->FindBlock("button04")->Label().GetLocaleText();
        dialog_->AddUpdateHandler(NXOpen::make_callback(this, &DialogWindows::update));
    }
    int update(UIBlock* block) {
        events_.push_back("update " + std::string(block->Name().GetLocaleText()));
        return 0;
    }
    // A menu whose item presses button04 the grouping menu's way: by the dialog's title and the
    // button's caption.
    void UseGroupMenu(Tree* tree) {
        tree->SetOnMenuHandler(NXOpen::make_callback(this, &DialogWindows::onMenu));
        tree->SetOnMenuSelectionHandler(NXOpen::make_callback(this, &DialogWindows::onMenuSelection));
    }
    void onMenu(Tree* tree, Node*, int) {
        TreeListMenu* menu = tree->CreateMenu();
        menu->AddMenuItem(0, "添加组");
        tree->SetMenu(menu);
        delete menu;
    }
    void onMenuSelection(Tree*, Node*, int) {
        events_.push_back("menu selection begins");
        Click(FindByText(title_, caption_));
        events_.push_back("menu selection ends");
    }

    std::string title_;
    std::string caption_;
    std::vector<std::string> events_;
};

TEST_F(DialogWindows, DialogWindowIsFoundByClassAndTitleWhileShown) {
    ShowWith([&](host::LiveDialog&) {
        WindowHandle window = platform::FindTopLevelWindow(kDialogClass, title_.c_str());
        EXPECT_NE(nullptr, window) << "Windows: FindWindowA(\"#32770\", title) finds the dialog";
        EXPECT_EQ(window, platform::FindTopLevelWindow(NULL, title_.c_str())) << "Windows: a NULL class matches any class";
        EXPECT_EQ(nullptr, platform::FindTopLevelWindow("Button", title_.c_str())) << "Windows: the class must match";
        EXPECT_EQ(nullptr, platform::FindTopLevelWindow(kDialogClass, "标准件BOM")) << "Windows: the title must match exactly";
        EXPECT_EQ(title_, TextOf(window)) << "the window text is the dialog title";
    });
}

TEST_F(DialogWindows, ChildWindowsNestLikeTheBlocksAndWalkDepthFirst) {
    ShowWith([&](host::LiveDialog& live) {
        std::vector<std::string> labels;
        for (const host::BlockView& b : live.Blocks()) labels.push_back(b.label);
        std::vector<WindowHandle> all;
        Collect(platform::FindTopLevelWindow(kDialogClass, title_.c_str()), all);
        std::vector<std::string> texts;
        for (WindowHandle w : all) texts.push_back(TextOf(w));
        EXPECT_EQ(labels, texts) << "one child window per block, depth first in dialog order, text = label";
        WindowHandle top = platform::FindTopLevelWindow(kDialogClass, title_.c_str());
        std::vector<WindowHandle> direct;
        for (WindowHandle c = platform::FindChildWindow(top, NULL); c; c = platform::FindChildWindow(top, c)) direct.push_back(c);
        EXPECT_EQ(3u, direct.size()) << "the dialog window's direct children are the three top-level groups";
    });
}

TEST_F(DialogWindows, ReadWindowTextCopiesAtMostSizeMinusOneBytes) {
    ShowWith([&](host::LiveDialog&) {
        WindowHandle window = platform::FindTopLevelWindow(kDialogClass, title_.c_str());
        char buffer[16];
        std::memset(buffer, 'x', sizeof buffer);
        EXPECT_EQ(4, platform::ReadWindowText(window, buffer, 5)) << "Windows: GetWindowTextA copies size - 1 bytes";
        EXPECT_EQ(0, std::memcmp(buffer, title_.data(), 4)) << "Windows: the first bytes of the text";
        EXPECT_EQ('\0', buffer[4]) << "Windows: then a NUL";
        EXPECT_EQ('x', buffer[5]) << "Windows: nothing is written after the NUL";
        std::memset(buffer, 'x', sizeof buffer);
        EXPECT_EQ(0, platform::ReadWindowText(window, buffer, 0)) << "Windows: size 0 copies nothing";
        EXPECT_EQ('x', buffer[0]) << "Windows: size 0 writes nothing";
    });
}

TEST_F(DialogWindows, LeftButtonDownThenUpPressesTheButton) {
    ShowWith([&](host::LiveDialog&) {
        WindowHandle button = FindByText(title_, caption_);
        ASSERT_NE(nullptr, button) << "button04's window is found by its caption";
        platform::SendWindowMessage(button, platform::WM_LBUTTONUP_MESSAGE, 0, 0);
        EXPECT_TRUE(events_.empty()) << "host: a button up without a button down presses nothing";
        platform::SendWindowMessage(button, platform::WM_LBUTTONDOWN_MESSAGE, 0, 0);
        EXPECT_TRUE(events_.empty()) << "host: the button down alone presses nothing";
        platform::SendWindowMessage(button, platform::WM_LBUTTONUP_MESSAGE, 0, 0);
        std::vector<std::string> expected = {"update button04"};
        EXPECT_EQ(expected, events_) << "Windows: down then up clicks the button; NX runs its update handler inside SendMessage";
    });
}

TEST_F(DialogWindows, ButtonIsPressedFromInsideATreeMenuHandler) {
    ShowWith([&](host::LiveDialog& live) {
        Tree* tree = live.Tree();
        UseGroupMenu(tree);
        tree->InsertColumn(0, "序号", 75);
        Node* node = tree->CreateNode("1");
        tree->InsertNode(node, NULL, NULL, Tree::NodeInsertOptionLast);
        live.RightClick(node, 0);
        live.ChooseMenuItem(0);
    });
    std::vector<std::string> expected = {"menu selection begins", "update button04", "menu selection ends"};
    EXPECT_EQ(expected, events_) << "the button's update handler runs synchronously inside the menu handler";
}

TEST_F(DialogWindows, ChangedWindowTextIsWhatTheWindowCallsSee) {
    ShowWith([&](host::LiveDialog&) {
        WindowHandle top = platform::FindTopLevelWindow(kDialogClass, title_.c_str());
        WindowHandle button = FindByText(title_, caption_);
        ASSERT_TRUE(host::ChangeWindowText(top, "另一个标题"));
        EXPECT_EQ(nullptr, platform::FindTopLevelWindow(kDialogClass, title_.c_str())) << "Windows: the old title finds nothing";
        EXPECT_EQ(top, platform::FindTopLevelWindow(kDialogClass, "另一个标题"));
        EXPECT_EQ(title_, std::string(dialog_->TopBlock()->Label().GetLocaleText())) << "the dialog's title is unchanged";
        ASSERT_TRUE(host::ChangeWindowText(button, "按钮"));
        dialog_->TopBlock()->FindBlock("button04")->SetLabel("新标签");
        EXPECT_EQ("按钮", TextOf(button)) << "host choice: a changed window text stays until the dialog closes";
        EXPECT_FALSE(host::ChangeWindowText(reinterpret_cast<WindowHandle>(0x7), "x")) << "no such window";
    });
}

TEST_F(DialogWindows, DisabledButtonIgnoresTheClick) {
    ShowWith([&](host::LiveDialog&) {
        dialog_->TopBlock()->FindBlock("button04")->SetEnable(false);
        Click(FindByText(title_, caption_));
    });
    EXPECT_TRUE(events_.empty()) << "host choice: a disabled button's window ignores the click";
}

TEST_F(DialogWindows, WindowsDisappearWhenTheDialogCloses) {
    WindowHandle seen = NULL;
    ShowWith([&](host::LiveDialog& live) {
        seen = platform::FindTopLevelWindow(kDialogClass, title_.c_str());
        live.Close();
        EXPECT_EQ(nullptr, platform::FindTopLevelWindow(kDialogClass, title_.c_str())) << "closing removes the window at once";
    });
    EXPECT_NE(nullptr, seen) << "the window existed while the dialog was shown";
    EXPECT_EQ(nullptr, platform::FindTopLevelWindow(kDialogClass, title_.c_str())) << "no window after Show returns";
    EXPECT_EQ(nullptr, platform::FindChildWindow(seen, NULL)) << "a closed window has no children";
    char buffer[8] = "xxxxxxx";
    EXPECT_EQ(0, platform::ReadWindowText(seen, buffer, sizeof buffer)) << "Windows: a stale handle reads as empty";
    EXPECT_TRUE(host::Windows().empty()) << "no top-level window is left";
}

TEST_F(DialogWindows, WindowAppearsAfterInitializeBeforeDialogShown) {
    struct Probe {
        std::string title;
        bool duringInitialize = true;
        bool duringDialogShown = false;
        void initialize() { duringInitialize = platform::FindTopLevelWindow(kDialogClass, title.c_str()) != NULL; }
        void dialogShown() { duringDialogShown = platform::FindTopLevelWindow(kDialogClass, title.c_str()) != NULL; }
    } probe;
    probe.title = title_;
    dialog_->AddInitializeHandler(NXOpen::make_callback(&probe, &Probe::initialize));
    dialog_->AddDialogShownHandler(NXOpen::make_callback(&probe, &Probe::dialogShown));
    dialog_->Show();
    EXPECT_FALSE(probe.duringInitialize) << "host choice: the dialog is not on screen during initialize";
    EXPECT_TRUE(probe.duringDialogShown) << "host choice: it is on screen when dialog shown runs";
}

TEST_F(DialogWindows, WindowsViewShowsTheDialogWindow) {
    ShowWith([&](host::LiveDialog&) {
        std::vector<host::WindowView> windows = host::Windows();
        ASSERT_EQ(1u, windows.size()) << "one top-level window while one dialog is shown";
        EXPECT_EQ("#32770", windows[0].className) << "the class of standard dialogs";
        EXPECT_EQ(title_, windows[0].text) << "its text is the title";
        EXPECT_EQ(3u, windows[0].children.size()) << "its children are the top-level groups";
    });
}

#ifdef _WIN32
// On Windows the host's windows are real: the window calls above are the plug-in's Win32 ones, and
// the windows answer Win32's own questions too.

std::string ClassOf(HWND window) {
    char name[256] = "";
    GetClassNameA(window, name, sizeof name);
    return name;
}

// The messages a window's procedure receives, recorded by subclassing it, as a spy program would.
std::vector<UINT> g_received;
WNDPROC g_original = nullptr;

LRESULT CALLBACK Recorder(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    g_received.push_back(message);
    return CallWindowProcA(g_original, window, message, wParam, lParam);
}

TEST_F(DialogWindows, OnWindowsTheDialogWindowsAreRealWindows) {
    HWND top = NULL;
    ShowWith([&](host::LiveDialog&) {
        top = FindWindowA("#32770", title_.c_str());
        ASSERT_NE(nullptr, top) << "Win32 FindWindowA finds the dialog's window";
        EXPECT_EQ(top, platform::FindTopLevelWindow(kDialogClass, title_.c_str()));
        EXPECT_EQ("#32770", ClassOf(top)) << "Win32: the standard dialog class";
        EXPECT_FALSE(IsWindowVisible(top)) << "host choice: never shown on the desktop";
        HWND button = static_cast<HWND>(FindByText(title_, caption_));
        ASSERT_TRUE(IsWindow(button));
        EXPECT_EQ("Button", ClassOf(button)) << "a block's window class is named like its NX class";
        EXPECT_EQ(top, GetAncestor(button, GA_ROOT)) << "Win32: the button's window lies inside the dialog's";
        HWND group = GetParent(button);
        EXPECT_NE(top, group) << "the button sits in its group's window";
        EXPECT_EQ("Group", ClassOf(group));
        char text[64] = "";
        GetWindowTextA(button, text, sizeof text);
        EXPECT_EQ(caption_, text) << "Win32: the caption in the system code page";
        dialog_->TopBlock()->FindBlock("button04")->SetLabel("新标签");
        GetWindowTextA(button, text, sizeof text);
        EXPECT_EQ("新标签", std::string(text)) << "a new label is the window's text at once";
        dialog_->TopBlock()->SetLabel("新标题");
        EXPECT_EQ(top, FindWindowA("#32770", "新标题")) << "a new title is found by the new title";
    });
    EXPECT_FALSE(IsWindow(top)) << "Win32: the window is destroyed when the dialog closes";
}

TEST_F(DialogWindows, OnWindowsTheClickReachesTheButtonsWindowProcedure) {
    ShowWith([&](host::LiveDialog&) {
        HWND button = static_cast<HWND>(FindByText(title_, caption_));
        g_received.clear();
        g_original = reinterpret_cast<WNDPROC>(SetWindowLongPtrA(button, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Recorder)));
        ASSERT_NE(nullptr, g_original);
        Click(button);
        SetWindowLongPtrA(button, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(g_original));
    });
    std::vector<UINT> messages = {WM_LBUTTONDOWN, WM_LBUTTONUP};
    EXPECT_EQ(messages, g_received) << "Win32: SendMessageA delivers both messages to the window";
    std::vector<std::string> expected = {"update button04"};
    EXPECT_EQ(expected, events_) << "the window procedure runs the update handler";
}

TEST_F(DialogWindows, OnWindowsAnExceptionOfTheUpdateHandlerReachesTheCallerOfSendMessage) {
    struct Thrower {
        int update(UIBlock*) { throw std::runtime_error("update failed"); }
    } thrower;
    dialog_->AddUpdateHandler(NXOpen::make_callback(&thrower, &Thrower::update));
    std::string caught;
    ShowWith([&](host::LiveDialog&) {
        try {
            Click(FindByText(title_, caption_));
        } catch (const std::runtime_error& e) {
            caught = e.what();
        }
    });
    EXPECT_EQ("update failed", caught) << "as on POSIX, the exception passes through SendMessageA";
}
#endif

}  // namespace
