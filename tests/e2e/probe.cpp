// Reads another program's windows from outside, as the end-to-end tests need: the first visible top-level
// window whose title contains the argument, then each of its children, one line each, tab-separated:
//   <kind> <control id> <class> <left> <top> <width> <height> <visible 0/1> <count> <text>
// kind is "window" or "child"; the rectangle is in screen pixels; count is a toolbar's button count or a
// status bar's part count (0 otherwise); text is WM_GETTEXT's (a status bar's first part). Exit status 1
// when no window matches.
#include <windows.h>

#include <commctrl.h>

#include <cstdio>
#include <string>

namespace
{

std::wstring wanted;
HWND found = nullptr;

std::string utf8(const std::wstring& text)
{
    std::string out;
    for (wchar_t c : text) {
        if (c == L'\t' || c == L'\n' || c == L'\r') {
            out += ' ';
            continue;
        }
        char buffer[8];
        int n = WideCharToMultiByte(CP_UTF8, 0, &c, 1, buffer, sizeof buffer, nullptr, nullptr);
        out.append(buffer, size_t(n > 0 ? n : 0));
    }
    return out;
}

std::wstring textOf(HWND window)
{
    wchar_t buffer[1024] = {};
    DWORD_PTR got = 0;
    SendMessageTimeoutW(window, WM_GETTEXT, 1024, reinterpret_cast<LPARAM>(buffer), SMTO_ABORTIFHUNG, 2000, &got);
    return buffer;
}

void print(const char* kind, HWND window)
{
    wchar_t className[128] = {};
    GetClassNameW(window, className, 128);
    RECT r = {};
    GetWindowRect(window, &r);
    LRESULT count = 0;
    if (lstrcmpiW(className, TOOLBARCLASSNAMEW) == 0)
        count = SendMessageW(window, TB_BUTTONCOUNT, 0, 0);
    else if (lstrcmpiW(className, STATUSCLASSNAMEW) == 0)
        count = SendMessageW(window, SB_GETPARTS, 0, 0);
    std::printf("%s\t%d\t%s\t%ld\t%ld\t%ld\t%ld\t%d\t%d\t%s\n", kind, GetDlgCtrlID(window), utf8(className).c_str(),
                r.left, r.top, r.right - r.left, r.bottom - r.top, IsWindowVisible(window) ? 1 : 0, int(count),
                utf8(textOf(window)).c_str());
}

BOOL CALLBACK topLevel(HWND window, LPARAM)
{
    if (IsWindowVisible(window) && textOf(window).find(wanted) != std::wstring::npos) {
        found = window;
        return FALSE;
    }
    return TRUE;
}

BOOL CALLBACK child(HWND window, LPARAM)
{
    print("child", window);
    return TRUE;
}

} // namespace

int wmain(int argc, wchar_t** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: probe <part of a window title>\n");
        return 2;
    }
    wanted = argv[1];
    EnumWindows(topLevel, 0);
    if (!found)
        return 1;
    print("window", found);
    EnumChildWindows(found, child, 0);
    return 0;
}
