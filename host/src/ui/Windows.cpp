// The dialog's windows as FindWindowA, FindWindowExA, GetWindowTextA and SendMessageA see them:
// while a dialog is shown, a top-level window of class "#32770" titled like the dialog, with one
// child window per block, nested like the blocks, of the block's class and with the block's label
// as text. A left button down then up on a button's window presses the button: its update
// handler runs inside SendMessage, as the button's window procedure would run it.
// This file keeps the windows of every shown dialog; the system's own windows are made by
// WindowsSimulated.cpp (POSIX: the host answers the window calls itself) or WindowsWin32.cpp
// (Windows: real windows, found and clicked through the real calls).
#include <algorithm>
#include <unordered_map>

#include "platform/Desktop.h"
#include "ui/Ui.hpp"

namespace host::ui {
namespace {

struct Registry {
    std::vector<Window*> topLevel;  // in creation order
    std::unordered_map<void*, Window*> byHandle;
};

Registry& Windows() {
    static Registry* registry = new Registry;
    return *registry;
}

// The system's window for w, known by its handle from now on.
void Create(Window& w, void* parent) {
    w.handle = CreateSystemWindow(w, parent);
    Windows().byHandle[w.handle] = &w;
}

void CreateChildren(Window& w) {
    for (BlockImpl* member : (w.block ? w.block : w.dialog.top.get())->members) {
        w.children.push_back(std::unique_ptr<Window>(new Window{nullptr, member->className, w.dialog, member, {}, false, std::nullopt}));
        Create(*w.children.back(), w.handle);
        CreateChildren(*w.children.back());
    }
}

void Forget(Window& w) {
    Windows().byHandle.erase(w.handle);
    for (std::unique_ptr<Window>& child : w.children) Forget(*child);
}

Window* WindowOf(Window& w, const BlockImpl& block) {
    if (w.block == &block) return &w;
    for (std::unique_ptr<Window>& child : w.children) {
        if (Window* found = WindowOf(*child, block)) return found;
    }
    return nullptr;
}

WindowView View(const Window& w) {
    WindowView view{w.handle, w.className, w.Text(), {}};
    for (const std::unique_ptr<Window>& child : w.children) view.children.push_back(View(*child));
    return view;
}

}  // namespace

std::string Window::Text() const {
    if (ownText) return *ownText;
    return block ? block->label : dialog.top->label;
}

void OpenWindows(DialogImpl& dialog) {
    if (dialog.window) return;
    auto top = std::unique_ptr<Window>(new Window{nullptr, "#32770", dialog, nullptr, {}, false, std::nullopt});
    Create(*top, nullptr);
    dialog.window = std::move(top);
    Windows().topLevel.push_back(dialog.window.get());
    try {
        CreateChildren(*dialog.window);
    } catch (...) {
        CloseWindows(dialog);
        throw;
    }
}

void CloseWindows(DialogImpl& dialog) {
    if (!dialog.window) return;
    std::vector<Window*>& top = Windows().topLevel;
    top.erase(std::remove(top.begin(), top.end(), dialog.window.get()), top.end());
    Forget(*dialog.window);
    DestroySystemWindow(*dialog.window);
    dialog.window.reset();
}

void LabelChanged(BlockImpl& block) {
    DialogImpl& dialog = block.dialog;
    if (!dialog.window) return;
    Window* w = &block == dialog.top.get() ? dialog.window.get() : WindowOf(*dialog.window, block);
    if (w != nullptr && !w->ownText) ShowWindowText(*w);
}

// A button that is hidden or disabled (itself or a group around it) ignores the click.
void ReceiveMouse(Window& w, unsigned int message) {
    if (message == platform::WM_LBUTTONDOWN_MESSAGE) {
        w.buttonDown = true;
    } else if (message == platform::WM_LBUTTONUP_MESSAGE && w.buttonDown) {
        w.buttonDown = false;
        auto* button = dynamic_cast<ButtonImpl*>(w.block);
        if (button != nullptr && Unusable(*button) == nullptr) w.dialog.Update(*button);
    }
}

Window* FindWindowByHandle(void* handle) {
    auto found = Windows().byHandle.find(handle);
    return found == Windows().byHandle.end() ? nullptr : found->second;
}

const std::vector<Window*>& TopLevelWindows() { return Windows().topLevel; }

}  // namespace host::ui

namespace host {

std::vector<WindowView> Windows() {
    std::vector<WindowView> views;
    for (const ui::Window* w : ui::Windows().topLevel) views.push_back(ui::View(*w));
    return views;
}

bool ChangeWindowText(void* handle, const std::string& text) {
    ui::Window* w = ui::FindWindowByHandle(handle);
    if (w == nullptr) return false;
    w->ownText = text;
    ui::ShowWindowText(*w);
    return true;
}

}  // namespace host
