// The window base: one window procedure for every framework window, dispatching to the object.
#include "win/winWindow.h"

winWindow::~winWindow()
{
    if (hwnd_) {
        // detach first: the messages of the destruction must not reach a half-destroyed object
        SetWindowLongPtrW(hwnd_, GWLP_USERDATA, 0);
        HWND h = hwnd_;
        hwnd_ = nullptr;
        DestroyWindow(h);
    }
}

const wchar_t* winWindow::className() const
{
    return L"winWindow";
}

void winWindow::PreRegisterClass(WNDCLASSEXW&) {}

bool winWindow::createWindow(DWORD exStyle, const std::wstring& title, DWORD style, int x, int y, int width, int height,
                             HWND parent, HMENU menu)
{
    HINSTANCE instance = GetModuleHandleW(nullptr);
    WNDCLASSEXW wc = {};
    wc.cbSize = sizeof wc;
    if (!GetClassInfoExW(instance, className(), &wc)) {
        wc = {};
        wc.cbSize = sizeof wc;
        wc.lpfnWndProc = WndProc;
        wc.hInstance = instance;
        wc.hCursor = LoadCursorW(nullptr, IDC_ARROW);
        wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
        wc.lpszClassName = className();
        PreRegisterClass(wc);
        if (!RegisterClassExW(&wc))
            return false;
    }
    CreateWindowExW(exStyle, className(), title.c_str(), style, x, y, width, height, parent, menu, instance, this);
    return hwnd_ != nullptr;
}

LRESULT winWindow::HandleMessage(UINT msg, WPARAM wParam, LPARAM lParam)
{
    return DefWindowProcW(hwnd_, msg, wParam, lParam);
}

LRESULT CALLBACK winWindow::WndProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam)
{
    winWindow* self;
    if (msg == WM_NCCREATE) {
        auto* cs = reinterpret_cast<CREATESTRUCTW*>(lParam);
        self = static_cast<winWindow*>(cs->lpCreateParams);
        self->hwnd_ = hwnd;
        SetWindowLongPtrW(hwnd, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
    } else {
        self = reinterpret_cast<winWindow*>(GetWindowLongPtrW(hwnd, GWLP_USERDATA));
    }
    if (!self)
        return DefWindowProcW(hwnd, msg, wParam, lParam);
    LRESULT result = self->HandleMessage(msg, wParam, lParam);
    if (msg == WM_NCDESTROY) {
        SetWindowLongPtrW(hwnd, GWLP_USERDATA, 0);
        self->hwnd_ = nullptr;
    }
    return result;
}
