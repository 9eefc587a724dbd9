// The dialog windows on Windows: real windows, which the plug-in finds and clicks with the real
// FindWindowA, FindWindowExA, GetWindowTextA and SendMessageA (src/platform/win32). The dialog's
// window is of the standard dialog class "#32770"; a block's window is of a window class of the
// host named like the block's NX class ("Button", "Tree", ...), whose window procedure takes the
// mouse. None is ever made visible: nothing is painted, and a run shows nothing on a desktop.
#include <set>

#include "ui/Ui.hpp"

#include <windows.h>

namespace host::ui {
namespace {

HINSTANCE HostModule() {
    HMODULE module = NULL;
    GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<LPCSTR>(&HostModule), &module);
    return module;
}

LRESULT CALLBACK BlockWindowProcedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_LBUTTONDOWN || message == WM_LBUTTONUP) {
        if (Window* w = FindWindowByHandle(hwnd)) ReceiveMouse(*w, message);
        return 0;
    }
    return DefWindowProcA(hwnd, message, wParam, lParam);
}

// The host's window class for blocks of an NX class, registered on first use.
const char* BlockWindowClass(const std::string& className) {
    static std::set<std::string> registered;
    if (registered.count(className) == 0) {
        WNDCLASSEXA c = {};
        c.cbSize = sizeof c;
        c.lpfnWndProc = BlockWindowProcedure;
        c.hInstance = HostModule();
        c.lpszClassName = className.c_str();
        if (RegisterClassExA(&c) == 0) Fail("cannot register the window class " + className + " (error " + std::to_string(GetLastError()) + ")");
        registered.insert(className);
    }
    return className.c_str();
}

}  // namespace

void* CreateSystemWindow(Window& w, void* parent) {
    HWND hwnd = parent == nullptr
        ? CreateWindowExA(0, "#32770", w.Text().c_str(), WS_POPUP | WS_CAPTION | WS_SYSMENU, CW_USEDEFAULT, CW_USEDEFAULT,
                          400, 600, NULL, NULL, HostModule(), NULL)
        : CreateWindowExA(0, BlockWindowClass(w.className), w.Text().c_str(), WS_CHILD | WS_VISIBLE, 0, 0, 0, 0,
                          static_cast<HWND>(parent), NULL, HostModule(), NULL);
    if (hwnd == NULL) Fail("cannot create the window of " + (w.block ? "block " + w.block->id : std::string("the dialog")) + " (error " + std::to_string(GetLastError()) + ")");
    return hwnd;
}

void DestroySystemWindow(Window& topLevel) { DestroyWindow(static_cast<HWND>(topLevel.handle)); }

void ShowWindowText(Window& w) { SetWindowTextA(static_cast<HWND>(w.handle), w.Text().c_str()); }

}  // namespace host::ui
