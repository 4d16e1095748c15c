// Prints what another program's window shows, for the end-to-end tests: the texts of the top-level window
// with the given title and of each of its controls, one "<class>\t<text>" line each, in UTF-8 (line ends
// inside a text are written as \r and \n). Exit status 1 when no such window is visible.
#include <windows.h>

#include <cstdio>
#include <string>

namespace
{

std::string utf8(const std::wstring& text)
{
    int n = WideCharToMultiByte(CP_UTF8, 0, text.c_str(), static_cast<int>(text.size()), nullptr, 0, nullptr, nullptr);
    std::string out(static_cast<size_t>(n), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.c_str(), static_cast<int>(text.size()), out.data(), n, nullptr, nullptr);
    std::string escaped;
    for (char c : out)
        escaped += c == '\r' ? std::string("\\r") : c == '\n' ? std::string("\\n") : std::string(1, c);
    return escaped;
}

void print(HWND window)
{
    wchar_t name[64] = {};
    GetClassNameW(window, name, 64);
    DWORD_PTR length = 0;
    SendMessageTimeoutW(window, WM_GETTEXTLENGTH, 0, 0, SMTO_ABORTIFHUNG, 5000, &length);
    std::wstring text(length + 1, L'\0');
    DWORD_PTR copied = 0;
    SendMessageTimeoutW(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()), SMTO_ABORTIFHUNG, 5000,
                        &copied);
    text.resize(copied);
    std::printf("%s\t%s\n", utf8(name).c_str(), utf8(text).c_str());
}

BOOL CALLBACK printChild(HWND child, LPARAM)
{
    print(child);
    return TRUE;
}

} // namespace

int wmain(int argc, wchar_t** argv)
{
    if (argc != 2)
        return 2;
    HWND window = FindWindowW(nullptr, argv[1]);
    if (!window || !IsWindowVisible(window))
        return 1;
    print(window);
    EnumChildWindows(window, printChild, 0);
    return 0;
}
