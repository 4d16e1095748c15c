// The open benchmark's anchor: a window with nothing but a word-wrapping EDIT control (Courier New 10 pt,
// no horizontal scroll), into which the file named on the command line is inserted the way Quillon
// inserts it; the title becomes the file's path when the text is in.
#include <windows.h>

#include <shellapi.h>

#include <cstdio>
#include <memory>

#include "document/qwzEditText.h"

namespace
{

HWND edit = nullptr;

LRESULT CALLBACK frameProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_SIZE:
        MoveWindow(edit, 0, 0, LOWORD(lParam), HIWORD(lParam), TRUE);
        return 0;
    case WM_DESTROY:
        PostQuitMessage(0);
        return 0;
    default:
        return DefWindowProcW(window, message, wParam, lParam);
    }
}

// One read of the whole file; empty on any failure.
bool readAll(const wchar_t* path, std::unique_ptr<char[]>& bytes, size_t& size)
{
    HANDLE file = CreateFileW(path, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return false;
    LARGE_INTEGER length;
    bool ok = GetFileSizeEx(file, &length) && length.QuadPart < 0x7FFFFFFF;
    DWORD got = 0;
    if (ok) {
        size = static_cast<size_t>(length.QuadPart);
        bytes.reset(new char[size + 1]);
        ok = ReadFile(file, bytes.get(), static_cast<DWORD>(size), &got, nullptr) && got == size;
    }
    CloseHandle(file);
    return ok;
}

void insertFile(HWND frame, const wchar_t* path)
{
    std::unique_ptr<char[]> bytes;
    size_t size = 0;
    qwzEditText text;
    if (!readAll(path, bytes, size) || !text.assign(bytes.get(), size))
        return;
    bytes.reset();
    // EM_REPLACESEL, as Quillon's edit channel: under Wine it is faster than WM_SETTEXT
    SendMessageW(edit, EM_SETSEL, 0, 0);
    SendMessageW(edit, EM_REPLACESEL, 0, reinterpret_cast<LPARAM>(text.text()));
    SetWindowTextW(frame, path);
}

} // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, PWSTR, int show)
{
    WNDCLASSW frameClass = {};
    frameClass.lpfnWndProc = frameProc;
    frameClass.hInstance = instance;
    frameClass.hCursor = LoadCursorW(nullptr, MAKEINTRESOURCEW(32512));
    frameClass.lpszClassName = L"bareEditFrame";
    RegisterClassW(&frameClass);
    HWND frame = CreateWindowExW(0, L"bareEditFrame", L"bare edit", WS_OVERLAPPEDWINDOW, CW_USEDEFAULT, CW_USEDEFAULT,
                                 CW_USEDEFAULT, CW_USEDEFAULT, nullptr, nullptr, instance, nullptr);
    RECT client;
    GetClientRect(frame, &client);
    edit = CreateWindowExW(WS_EX_CLIENTEDGE, L"EDIT", L"",
                           WS_CHILD | WS_VISIBLE | WS_VSCROLL | ES_MULTILINE | ES_AUTOVSCROLL | ES_NOHIDESEL, 0, 0,
                           client.right, client.bottom, frame, nullptr, instance, nullptr);
    SendMessageW(edit, EM_SETLIMITTEXT, 0, 0);
    HDC screen = GetDC(nullptr);
    int height = -MulDiv(10, GetDeviceCaps(screen, LOGPIXELSY), 72);
    ReleaseDC(nullptr, screen);
    HFONT font = CreateFontW(height, 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS,
                             CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY, FIXED_PITCH | FF_MODERN, L"Courier New");
    SendMessageW(edit, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
    // the file goes in before the window shows, in the order of Quillon's start-up
    int argc = 0;
    LPWSTR* argv = CommandLineToArgvW(GetCommandLineW(), &argc);
    if (argv != nullptr && argc > 1)
        insertFile(frame, argv[1]);
    LocalFree(argv);
    ShowWindow(frame, show);
    UpdateWindow(frame);

    MSG msg;
    while (GetMessageW(&msg, nullptr, 0, 0) > 0) {
        TranslateMessage(&msg);
        DispatchMessageW(&msg);
    }
    DeleteObject(font);
    return 0;
}
