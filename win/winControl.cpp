// Subclassed system controls and the reflection of their notifications.
#include "win/winControl.h"

#include <commctrl.h>

namespace
{
const UINT_PTR subclassId = 0x77696E43; // "winC": one subclass of ours per control
// where the object is found from the handle (GetWindowSubclass is not exported by name)
const wchar_t objectProperty[] = L"winControl.object";
} // namespace

winControl::~winControl()
{
    detach();
}

bool winControl::attach(HWND control)
{
    if (!control || hwnd_ || fromHandle(control))
        return false;
    if (!SetPropW(control, objectProperty, this))
        return false;
    if (!SetWindowSubclass(control, SubclassProc, subclassId, reinterpret_cast<DWORD_PTR>(this))) {
        RemovePropW(control, objectProperty);
        return false;
    }
    hwnd_ = control;
    return true;
}

void winControl::detach()
{
    if (hwnd_ && IsWindow(hwnd_)) {
        RemoveWindowSubclass(hwnd_, SubclassProc, subclassId);
        RemovePropW(hwnd_, objectProperty);
    }
    hwnd_ = nullptr;
}

bool winControl::create(const wchar_t* className, DWORD style, DWORD exStyle, const RECT& rect, HWND parent, int id)
{
    HWND control = CreateWindowExW(
        exStyle, className, L"", style | WS_CHILD, rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top,
        parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), GetModuleHandleW(nullptr), nullptr);
    if (!control)
        return false;
    if (attach(control))
        return true;
    DestroyWindow(control);
    return false;
}

winControl* winControl::fromHandle(HWND control)
{
    return control ? static_cast<winControl*>(GetPropW(control, objectProperty)) : nullptr;
}

bool winControl::reflectNotify(LPARAM lParam, LRESULT& result)
{
    const auto* header = reinterpret_cast<const NMHDR*>(lParam);
    if (!header)
        return false;
    winControl* control = fromHandle(header->hwndFrom);
    return control && control->OnReflectedNotify(*header, result);
}

LRESULT winControl::HandleMessage(UINT msg, WPARAM wParam, LPARAM lParam)
{
    return defaultProc(msg, wParam, lParam);
}

bool winControl::OnReflectedNotify(const NMHDR&, LRESULT&)
{
    return false;
}

LRESULT winControl::defaultProc(UINT msg, WPARAM wParam, LPARAM lParam)
{
    return DefSubclassProc(hwnd_, msg, wParam, lParam);
}

LRESULT CALLBACK winControl::SubclassProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                          DWORD_PTR selfData)
{
    auto* self = reinterpret_cast<winControl*>(selfData);
    if (msg == WM_NCDESTROY) {
        // the control goes away before its object: let go of it first
        RemoveWindowSubclass(hwnd, SubclassProc, subclassId);
        RemovePropW(hwnd, objectProperty);
        if (self)
            self->hwnd_ = nullptr;
        return DefSubclassProc(hwnd, msg, wParam, lParam);
    }
    if (!self)
        return DefSubclassProc(hwnd, msg, wParam, lParam);
    return self->HandleMessage(msg, wParam, lParam);
}
