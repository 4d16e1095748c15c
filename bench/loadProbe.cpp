// The open benchmark's watcher, run under Wine beside the program it times: waits for a visible top-level
// window whose title holds a text, then for text in its edit control, then for the whole text (the
// control's length reaching a given count of UTF-16 units). Prints "ready" once it watches, then
// "window", "text" and "whole", each with the wall-clock time (Unix seconds) at which it saw it, so that
// the launcher can take the times from its own start.
#include <windows.h>

#include <cstdio>
#include <cwchar>
#include <string>

namespace
{

const wchar_t* wanted = nullptr;
HWND frame = nullptr;

double unixSeconds()
{
    FILETIME now;
    GetSystemTimePreciseAsFileTime(&now);
    const unsigned long long ticks = (static_cast<unsigned long long>(now.dwHighDateTime) << 32) | now.dwLowDateTime;
    return static_cast<double>(ticks - 116444736000000000ULL) / 1e7;
}

BOOL CALLBACK titled(HWND window, LPARAM)
{
    wchar_t title[1024] = {};
    // the program may be busy: its title is read by the system without asking it
    InternalGetWindowText(window, title, 1024);
    if (IsWindowVisible(window) && std::wcsstr(title, wanted)) {
        frame = window;
        return FALSE;
    }
    return TRUE;
}

BOOL CALLBACK firstEdit(HWND window, LPARAM result)
{
    wchar_t name[32] = {};
    GetClassNameW(window, name, 32);
    if (_wcsicmp(name, L"Edit") != 0)
        return TRUE;
    *reinterpret_cast<HWND*>(result) = window;
    return FALSE;
}

// The edit control's length; waits while the program is busy, as a user would.
long long textLength(HWND edit)
{
    DWORD_PTR length = 0;
    if (!SendMessageTimeoutW(edit, WM_GETTEXTLENGTH, 0, 0, SMTO_BLOCK, 600000, &length))
        return -1;
    return static_cast<long long>(length);
}

} // namespace

int wmain(int argc, wchar_t** argv)
{
    if (argc != 3) {
        std::fprintf(stderr, "usage: loadProbe <title part> <units of the whole text>\n");
        return 2;
    }
    wanted = argv[1];
    const long long whole = _wtoi64(argv[2]);
    std::printf("ready\n");
    std::fflush(stdout);
    while (!frame) {
        EnumWindows(titled, 0);
        if (!frame)
            Sleep(5);
    }
    std::printf("window %.3f\n", unixSeconds());
    std::fflush(stdout);
    HWND edit = nullptr;
    bool text = false;
    for (;;) {
        if (!IsWindow(frame))
            return 1;
        if (!edit)
            EnumChildWindows(frame, firstEdit, reinterpret_cast<LPARAM>(&edit));
        const long long length = edit ? textLength(edit) : -1;
        if (length > 0 && !text) {
            text = true;
            std::printf("text %.3f\n", unixSeconds());
            std::fflush(stdout);
        }
        if (length >= whole) {
            std::printf("whole %.3f\n", unixSeconds());
            std::fflush(stdout);
            return 0;
        }
        // seldom enough not to take the processor from a program that works between its messages
        Sleep(100);
    }
}
