// Test helper: waits up to 60 s for a top-level window with the given title, prints the texts of its
// controls in UTF-8, one a line, then closes it with its default button. Exit status 2 when none shows.
#include <windows.h>

#include <cstdio>

namespace
{

BOOL CALLBACK printText(HWND control, LPARAM)
{
    wchar_t text[4096];
    DWORD_PTR length = 0;
    // WM_GETTEXT is marshalled across processes; the window belongs to another program
    if (!SendMessageTimeoutW(control, WM_GETTEXT, 4096, reinterpret_cast<LPARAM>(text), SMTO_ABORTIFHUNG, 5000,
                             &length) ||
        length == 0)
        return TRUE;
    char utf8[4 * 4096];
    if (WideCharToMultiByte(CP_UTF8, 0, text, -1, utf8, sizeof utf8, nullptr, nullptr) > 0)
        std::printf("%s\n", utf8);
    return TRUE;
}

} // namespace

int wmain(int argc, wchar_t** argv)
{
    if (argc != 2)
        return 2;
    HWND window = nullptr;
    for (int i = 0; i < 600 && !(window = FindWindowW(nullptr, argv[1])); ++i)
        Sleep(100);
    if (!window)
        return 2;
    EnumChildWindows(window, printText, 0);
    std::fflush(stdout);
    PostMessageW(window, WM_COMMAND, IDOK, 0);
    return 0;
}
