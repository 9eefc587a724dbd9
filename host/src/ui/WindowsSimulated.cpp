// The dialog windows on POSIX, where there is no window system: the host hands out handles of its
// own and answers the plug-in's window calls (platform/Desktop.h) from its windows, as
// FindWindowA, FindWindowExA, GetWindowTextA and SendMessageA answer them on Windows.
#include <algorithm>
#include <cstdint>
#include <cstring>

#include "platform/Desktop.h"
#include "ui/Ui.hpp"

namespace host::ui {

void* CreateSystemWindow(Window&, void*) {
    static std::uintptr_t next = 0x10010;
    next += 4;
    return reinterpret_cast<void*>(next);
}

void DestroySystemWindow(Window&) {}

// The text is read from the window whenever it is asked for.
void ShowWindowText(Window&) {}

namespace {

// FindWindowA and FindWindowExA(NULL, ...) go through top-level windows from the top of the Z
// order: the dialog shown last comes first.
std::vector<Window*> ZOrder() {
    std::vector<Window*> order = TopLevelWindows();
    std::reverse(order.begin(), order.end());
    return order;
}

}  // namespace
}  // namespace host::ui

namespace platform {

using host::ui::Window;

WindowHandle FindTopLevelWindow(const char* className, const char* title) {
    for (Window* w : host::ui::ZOrder()) {
        if ((className == NULL || w->className == className) && (title == NULL || w->Text() == title)) return w->handle;
    }
    return NULL;
}

WindowHandle FindChildWindow(WindowHandle parent, WindowHandle after) {
    std::vector<Window*> level;
    if (parent == NULL) {
        level = host::ui::ZOrder();
    } else if (Window* p = host::ui::FindWindowByHandle(parent)) {
        for (std::unique_ptr<Window>& child : p->children) level.push_back(child.get());
    }
    auto it = level.begin();
    if (after != NULL) {
        it = std::find_if(level.begin(), level.end(), [after](Window* w) { return w->handle == after; });
        if (it != level.end()) ++it;
    }
    return it == level.end() ? NULL : (*it)->handle;
}

// GetWindowTextA copies at most size - 1 bytes and a NUL; an unknown window reads as empty.
int ReadWindowText(WindowHandle window, char* buffer, int size) {
    if (buffer == NULL || size <= 0) return 0;
    Window* w = host::ui::FindWindowByHandle(window);
    std::string text = w ? w->Text() : std::string();
    size_t n = std::min(text.size(), static_cast<size_t>(size - 1));
    std::memcpy(buffer, text.data(), n);
    buffer[n] = '\0';
    return static_cast<int>(n);
}

long SendWindowMessage(WindowHandle window, unsigned int message, unsigned long, long) {
    if (Window* w = host::ui::FindWindowByHandle(window)) host::ui::ReceiveMouse(*w, message);
    return 0;
}

}  // namespace platform
