// The dialog's windows as FindWindowA, FindWindowExA, GetWindowTextA and SendMessageA see them on
// Windows: while a dialog is shown, a top-level window of class "#32770" titled like the dialog,
// with one child window per block, nested like the blocks, whose text is the block's label. A
// left button down then up on a button's window presses the button: its update handler runs
// inside SendMessage, as the button's window procedure would run it.
#include <algorithm>
#include <cstdint>
#include <cstring>
#include <unordered_map>

#include "platform/Desktop.h"
#include "ui/Ui.hpp"

namespace host::ui {
namespace {

struct Registry {
    std::vector<Window*> topLevel;  // in creation order
    std::unordered_map<void*, Window*> byHandle;
    std::uintptr_t nextHandle = 0x10010;
};

Registry& Windows() {
    static Registry* registry = new Registry;
    return *registry;
}

Window* Find(void* handle) {
    auto found = Windows().byHandle.find(handle);
    return found == Windows().byHandle.end() ? nullptr : found->second;
}

std::unique_ptr<Window> Make(DialogImpl& dialog, BlockImpl* block) {
    Registry& r = Windows();
    void* handle = reinterpret_cast<void*>(r.nextHandle);
    r.nextHandle += 4;
    auto w = std::unique_ptr<Window>(new Window{handle, block ? block->className : "#32770", dialog, block, {}, false, std::nullopt});
    r.byHandle[handle] = w.get();
    for (BlockImpl* member : (block ? block : dialog.top.get())->members) w->children.push_back(Make(dialog, member));
    return w;
}

void Forget(Window& w) {
    Windows().byHandle.erase(w.handle);
    for (std::unique_ptr<Window>& child : w.children) Forget(*child);
}

// FindWindowA and FindWindowExA(NULL, ...) go through top-level windows from the top of the
// Z order: the dialog shown last comes first.
std::vector<Window*> ZOrder() {
    std::vector<Window*> order = Windows().topLevel;
    std::reverse(order.begin(), order.end());
    return order;
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
    dialog.window = Make(dialog, nullptr);
    Windows().topLevel.push_back(dialog.window.get());
}

void CloseWindows(DialogImpl& dialog) {
    if (!dialog.window) return;
    std::vector<Window*>& top = Windows().topLevel;
    top.erase(std::remove(top.begin(), top.end(), dialog.window.get()), top.end());
    Forget(*dialog.window);
    dialog.window.reset();
}

}  // namespace host::ui

namespace host {

std::vector<WindowView> Windows() {
    std::vector<WindowView> views;
    for (const ui::Window* w : ui::Windows().topLevel) views.push_back(ui::View(*w));
    return views;
}

bool ChangeWindowText(void* handle, const std::string& text) {
    ui::Window* w = ui::Find(handle);
    if (w == nullptr) return false;
    w->ownText = text;
    return true;
}

}  // namespace host

namespace platform {

WindowHandle FindTopLevelWindow(const char* className, const char* title) {
    for (host::ui::Window* w : host::ui::ZOrder()) {
        if ((className == NULL || w->className == className) && (title == NULL || w->Text() == title)) return w->handle;
    }
    return NULL;
}

WindowHandle FindChildWindow(WindowHandle parent, WindowHandle after) {
    std::vector<host::ui::Window*> level;
    if (parent == NULL) {
        level = host::ui::ZOrder();
    } else if (host::ui::Window* p = host::ui::Find(parent)) {
        for (std::unique_ptr<host::ui::Window>& child : p->children) level.push_back(child.get());
    }
    auto it = level.begin();
    if (after != NULL) {
        it = std::find_if(level.begin(), level.end(), [after](host::ui::Window* w) { return w->handle == after; });
        if (it != level.end()) ++it;
    }
    return it == level.end() ? NULL : (*it)->handle;
}

// GetWindowTextA copies at most size - 1 bytes and a NUL; an unknown window reads as empty.
int ReadWindowText(WindowHandle window, char* buffer, int size) {
    if (buffer == NULL || size <= 0) return 0;
    host::ui::Window* w = host::ui::Find(window);
    std::string text = w ? w->Text() : std::string();
    size_t n = std::min(text.size(), static_cast<size_t>(size - 1));
    std::memcpy(buffer, text.data(), n);
    buffer[n] = '\0';
    return static_cast<int>(n);
}

// A button that is hidden or disabled (itself or a group around it) ignores the click.
long SendWindowMessage(WindowHandle window, unsigned int message, unsigned long, long) {
    host::ui::Window* w = host::ui::Find(window);
    if (w == nullptr) return 0;
    if (message == WM_LBUTTONDOWN_MESSAGE) {
        w->buttonDown = true;
    } else if (message == WM_LBUTTONUP_MESSAGE && w->buttonDown) {
        w->buttonDown = false;
        auto* button = dynamic_cast<host::ui::ButtonImpl*>(w->block);
        if (button != nullptr && host::ui::Unusable(*button) == nullptr) w->dialog.Update(*button);
    }
    return 0;
}

}  // namespace platform
