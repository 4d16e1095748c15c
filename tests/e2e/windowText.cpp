// A probe for the end-to-end tests, run under Wine beside the program under test: what xdotool cannot
// see, the Win32 view of another process's windows.
//   windowText <class>              every window of that class (top-level or child), each followed by its
//                                   children
//   windowText frame <title part>   the first visible top-level window whose title holds the text, then
//                                   its children
//   windowText command <class> <id> posts command <id> to the first visible top-level window of that class
//   windowText edit <title part> <file>
//                                   writes the whole text of that window's edit control to <file> as
//                                   UTF-8, CR-LF line ends as the control holds them
// One line a window: id, class, enabled, visible, left, top, width, height (screen pixels), text (a status
// bar's first part; UTF-8, "\n" escaped).
#include <windows.h>

#include <cstdio>
#include <cwchar>
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

std::wstring textOf(HWND window)
{
    wchar_t text[4096] = {};
    SendMessageTimeoutW(window, WM_GETTEXT, 4096, reinterpret_cast<LPARAM>(text), SMTO_ABORTIFHUNG, 2000, nullptr);
    return text;
}

BOOL CALLBACK print(HWND window, LPARAM = 0)
{
    RECT r = {};
    GetWindowRect(window, &r);
    std::printf("%d\t%s\t%d\t%d\t%ld\t%ld\t%ld\t%ld\t%s\n", GetDlgCtrlID(window), utf8(classOf(window)).c_str(),
                IsWindowEnabled(window) ? 1 : 0, IsWindowVisible(window) ? 1 : 0, r.left, r.top, r.right - r.left,
                r.bottom - r.top, utf8(textOf(window)).c_str());
    return TRUE;
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

BOOL CALLBACK collectChild(HWND window, LPARAM)
{
    if (classOf(window) == wanted)
        found.push_back(window);
    return TRUE;
}

BOOL CALLBACK collectTop(HWND window, LPARAM)
{
    collectChild(window, 0);
    EnumChildWindows(window, collectChild, 0);
    return TRUE;
}

BOOL CALLBACK firstEdit(HWND window, LPARAM result)
{
    if (_wcsicmp(classOf(window).c_str(), L"Edit") != 0)
        return TRUE;
    *reinterpret_cast<HWND*>(result) = window;
    return FALSE;
}

// The whole text, however long: one WM_GETTEXT with a buffer of the length the control reports.
int saveEditText(const wchar_t* path)
{
    HWND edit = nullptr;
    if (found.empty() || (EnumChildWindows(found.front(), firstEdit, reinterpret_cast<LPARAM>(&edit)), !edit))
        return 1;
    DWORD_PTR length = 0;
    if (!SendMessageTimeoutW(edit, WM_GETTEXTLENGTH, 0, 0, SMTO_ABORTIFHUNG, 60000, &length))
        return 1;
    std::wstring text(length + 1, L'\0');
    DWORD_PTR got = 0;
    if (!SendMessageTimeoutW(edit, WM_GETTEXT, length + 1, reinterpret_cast<LPARAM>(text.data()), SMTO_ABORTIFHUNG,
                             120000, &got))
        return 1;
    text.resize(got);
    int n = WideCharToMultiByte(CP_UTF8, 0, text.c_str(), int(text.size()), nullptr, 0, nullptr, nullptr);
    std::string bytes(size_t(n > 0 ? n : 0), '\0');
    if (n > 0)
        WideCharToMultiByte(CP_UTF8, 0, text.c_str(), int(text.size()), bytes.data(), n, nullptr, nullptr);
    FILE* out = _wfopen(path, L"wb");
    if (!out)
        return 1;
    bool ok = std::fwrite(bytes.data(), 1, bytes.size(), out) == bytes.size();
    return std::fclose(out) == 0 && ok ? 0 : 1;
}

} // namespace

int wmain(int argc, wchar_t** argv)
{
    bool command = argc == 4 && !wcscmp(argv[1], L"command");
    bool frame = argc == 3 && !wcscmp(argv[1], L"frame");
    bool edit = argc == 4 && !wcscmp(argv[1], L"edit");
    if (argc != 2 && !command && !frame && !edit) {
        std::fprintf(stderr, "usage: windowText <class> | windowText frame <title> | windowText command <class> <id> | "
                             "windowText edit <title> <file>\n");
        return 2;
    }
    wanted = argv[argc == 2 ? 1 : 2];
    EnumWindows(frame || edit ? titled : collectTop, 0);
    if (edit)
        return saveEditText(argv[3]);
    if (command) {
        for (HWND window : found)
            if (!GetParent(window) && IsWindowVisible(window))
                return PostMessageW(window, WM_COMMAND, WPARAM(_wtoi(argv[3])), 0) ? 0 : 1;
        return 1;
    }
    for (HWND window : found) {
        print(window);
        EnumChildWindows(window, print, 0);
    }
    return found.empty() ? 1 : 0;
}
