// A probe for the end-to-end tests, run under Wine beside the program under test: what xdotool cannot
// see, the Win32 view of another process's windows.
//   windowText <class>              every window of that class (top-level or child) and its children, one
//                                   line each: id, class, enabled, visible, text (UTF-8, "\n" escaped)
//   windowText command <class> <id> posts command <id> to the first top-level window of that class
#include <windows.h>

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

std::vector<HWND> found;
std::wstring wanted;

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
    if (argc != 2 && !command) {
        std::fprintf(stderr, "usage: windowText <class> | windowText command <class> <id>\n");
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
