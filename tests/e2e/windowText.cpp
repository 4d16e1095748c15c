// A probe for the end-to-end tests, run under Wine beside the program under test: what xdotool cannot
// see, the Win32 view of another process's windows.
//   windowText <class>              every window of that class (top-level or child) and its children, one
//                                   line each: id, class, enabled, visible, text (UTF-8, "\n" escaped)
//   windowText command <class> <id> posts command <id> to the first top-level window of that class
//   windowText frame <title part>   the first visible top-level window whose title holds the text, then
//                                   its children: kind ("window"/"child"), id, class, left, top, width,
//                                   height (screen pixels), visible, count (a toolbar's buttons, a status
//                                   bar's parts, else 0), text (a status bar's: its first part)
#include <windows.h>

#include <commctrl.h>

#include <cstdio>
#include <string>
#include <vector>

namespace
{

std::string utf8(const std::wstring& text)
{
    std::string out;
    int n = WideCharToMultiByte(CP_UTF8, 0, text.c_str(), int(text.size()), nullptr, 0, nullptr, nullptr);
    out.resize(size_t(n > 0 ? n : 0));
    if (n > 0)
        WideCharToMultiByte(CP_UTF8, 0, text.c_str(), int(text.size()), out.data(), n, nullptr, nullptr);
    std::string escaped;
    for (char c : out)
        escaped += c == '\n' ? std::string("\\n") : c == '\r' ? std::string() : std::string(1, c);
    return escaped;
}

std::wstring classOf(HWND window)
{
    wchar_t name[256] = {};
    GetClassNameW(window, name, 256);
    return name;
}

void print(HWND window)
{
    wchar_t text[4096] = {};
    SendMessageTimeoutW(window, WM_GETTEXT, 4096, reinterpret_cast<LPARAM>(text), SMTO_ABORTIFHUNG, 2000, nullptr);
    std::printf("%d\t%s\t%d\t%d\t%s\n", GetDlgCtrlID(window), utf8(classOf(window)).c_str(),
                IsWindowEnabled(window) ? 1 : 0, IsWindowVisible(window) ? 1 : 0, utf8(text).c_str());
}

std::wstring textOf(HWND window)
{
    wchar_t text[4096] = {};
    SendMessageTimeoutW(window, WM_GETTEXT, 4096, reinterpret_cast<LPARAM>(text), SMTO_ABORTIFHUNG, 2000, nullptr);
    return text;
}

void printPlaced(const char* kind, HWND window)
{
    std::wstring name = classOf(window);
    RECT r = {};
    GetWindowRect(window, &r);
    LRESULT count = 0;
    if (name == TOOLBARCLASSNAMEW)
        count = SendMessageW(window, TB_BUTTONCOUNT, 0, 0);
    else if (name == STATUSCLASSNAMEW)
        count = SendMessageW(window, SB_GETPARTS, 0, 0);
    std::printf("%s\t%d\t%s\t%ld\t%ld\t%ld\t%ld\t%d\t%d\t%s\n", kind, GetDlgCtrlID(window), utf8(name).c_str(), r.left,
                r.top, r.right - r.left, r.bottom - r.top, IsWindowVisible(window) ? 1 : 0, int(count),
                utf8(textOf(window)).c_str());
}

std::vector<HWND> found;
std::wstring wanted;

BOOL CALLBACK titled(HWND window, LPARAM)
{
    if (IsWindowVisible(window) && textOf(window).find(wanted) != std::wstring::npos) {
        found.push_back(window);
        return FALSE;
    }
    return TRUE;
}

BOOL CALLBACK printPlacedChild(HWND window, LPARAM)
{
    printPlaced("child", window);
    return TRUE;
}

BOOL CALLBACK collectChild(HWND window, LPARAM)
{
    if (classOf(window) == wanted)
        found.push_back(window);
    return TRUE;
}

BOOL CALLBACK collectTop(HWND window, LPARAM)
{
    if (classOf(window) == wanted)
        found.push_back(window);
    EnumChildWindows(window, collectChild, 0);
    return TRUE;
}

BOOL CALLBACK printChild(HWND window, LPARAM)
{
    print(window);
    return TRUE;
}

} // namespace

int wmain(int argc, wchar_t** argv)
{
    bool command = argc == 4 && std::wstring(argv[1]) == L"command";
    if (argc == 3 && std::wstring(argv[1]) == L"frame") {
        wanted = argv[2];
        EnumWindows(titled, 0);
        if (found.empty())
            return 1;
        printPlaced("window", found[0]);
        EnumChildWindows(found[0], printPlacedChild, 0);
        return 0;
    }
    if (argc != 2 && !command) {
        std::fprintf(stderr,
                     "usage: windowText <class> | windowText command <class> <id> | windowText frame <title>\n");
        return 2;
    }
    wanted = argv[command ? 2 : 1];
    EnumWindows(collectTop, 0);
    if (command) {
        for (HWND window : found)
            if (!GetParent(window) && IsWindowVisible(window))
                return PostMessageW(window, WM_COMMAND, WPARAM(_wtoi(argv[3])), 0) ? 0 : 1;
        return 1;
    }
    for (HWND window : found) {
        print(window);
        EnumChildWindows(window, printChild, 0);
    }
    return found.empty() ? 1 : 0;
}
