// Prints the texts of another program's window for the end-to-end tests: that of the visible top-level
// window titled argv[1], then those of its controls, each in UTF-8 followed by a NUL byte. Exit status 1
// when there is no such window.
#include <windows.h>

#include <fcntl.h>
#include <io.h>

#include <cstdio>
#include <string>

namespace
{

BOOL CALLBACK print(HWND window, LPARAM)
{
    DWORD_PTR length = 0, copied = 0;
    SendMessageTimeoutW(window, WM_GETTEXTLENGTH, 0, 0, SMTO_ABORTIFHUNG, 5000, &length);
    std::wstring text(length + 1, L'\0');
    SendMessageTimeoutW(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()), SMTO_ABORTIFHUNG, 5000,
                        &copied);
    std::string utf8(copied * 3, '\0');
    utf8.resize(static_cast<size_t>(WideCharToMultiByte(CP_UTF8, 0, text.c_str(), static_cast<int>(copied), utf8.data(),
                                                        static_cast<int>(utf8.size()), nullptr, nullptr)));
    std::fwrite(utf8.c_str(), 1, utf8.size() + 1, stdout);
    return TRUE;
}

} // namespace

int wmain(int argc, wchar_t** argv)
{
    HWND window = argc == 2 ? FindWindowW(nullptr, argv[1]) : nullptr;
    if (!window || !IsWindowVisible(window))
        return 1;
    _setmode(_fileno(stdout), _O_BINARY); // the texts' own line ends, unchanged
    print(window, 0);
    EnumChildWindows(window, print, 0);
    return 0;
}
