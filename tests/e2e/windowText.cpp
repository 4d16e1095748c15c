// A probe for the end-to-end tests, run under Wine beside the program under test: what xdotool cannot
// see, the Win32 view of another process's windows.
//   windowText <class>              every window of that class (top-level or child), each followed by its
//                                   children
//   windowText frame <title part>   the first visible top-level window whose title holds the text, then
//                                   its children
//   windowText command <class> <id> posts command <id> to the first visible top-level window of that class
//                                   (a dialog owned by another window is one)
//   windowText button <class> <id> the toolbar button of command <id> in the first visible top-level window
//                                   of that class, as a window line (its text empty)
//   windowText fit <class>          for each visible window of that class, its visible static texts,
//                                   buttons and rich edit controls: whether the text, measured in the
//                                   control's own font, fits, and whether its characters are in that font
//   windowText edit <title part> <file>
//                                   writes the whole text of that window's edit control to <file> as
//                                   UTF-8, CR-LF line ends as the control holds them
// One line a window: id, class, enabled, visible, left, top, width, height (screen pixels), text (a status
// bar's first part; UTF-8, "\n" escaped). A fit line: id, class, fits (1 or 0), the width and height the
// text needs, the width and height the control has for it, how many of its characters the font draws as
// the missing-glyph box, the face GetTextFace names, text.
#include <windows.h>

#include <commctrl.h>

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

// The toolbar's button rectangle is written into the memory of the toolbar's own process.
int printButton(HWND top, int command)
{
    found.clear();
    wanted = TOOLBARCLASSNAMEW;
    EnumChildWindows(top, collectChild, 0);
    DWORD pid = 0;
    if (found.empty() || !GetWindowThreadProcessId(found[0], &pid))
        return 1;
    HWND bar = found[0];
    HANDLE process = OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE, FALSE, pid);
    if (!process)
        return 1;
    void* remote = VirtualAllocEx(process, nullptr, sizeof(RECT), MEM_COMMIT, PAGE_READWRITE);
    RECT r = {};
    bool got = remote && SendMessageW(bar, TB_GETRECT, WPARAM(command), reinterpret_cast<LPARAM>(remote)) &&
               ReadProcessMemory(process, remote, &r, sizeof r, nullptr);
    if (remote)
        VirtualFreeEx(process, remote, 0, MEM_RELEASE);
    CloseHandle(process);
    if (!got)
        return 1;
    MapWindowPoints(bar, nullptr, reinterpret_cast<POINT*>(&r), 2);
    bool enabled = SendMessageW(bar, TB_ISBUTTONENABLED, WPARAM(command), 0) != 0;
    std::printf("%d\tbutton\t%d\t1\t%ld\t%ld\t%ld\t%ld\t\n", command, enabled ? 1 : 0, r.left, r.top, r.right - r.left,
                r.bottom - r.top);
    return 0;
}

// Another process's font handles mean nothing here: the measuring runs inside the window's own thread,
// in windowTextFit.dll, hooked in for one message, and writes its lines to a file for this process.
int printFits(HWND window)
{
    wchar_t dll[MAX_PATH] = {}, temp[MAX_PATH] = {}, name[64] = {};
    GetModuleFileNameW(nullptr, dll, MAX_PATH);
    wcscpy(wcsrchr(dll, L'\\') + 1, L"windowTextFit.dll");
    HMODULE module = LoadLibraryW(dll);
    // the usual detour through a generic function pointer: GetProcAddress knows no signatures
    auto hookProc =
        module ? reinterpret_cast<HOOKPROC>(reinterpret_cast<void (*)()>(GetProcAddress(module, "fitHook"))) : nullptr;
    if (!hookProc)
        return 1;
    DWORD asker = GetCurrentProcessId();
    swprintf(name, 64, L"windowText-fit-%lu", asker);
    HANDLE done = CreateEventW(nullptr, TRUE, FALSE, name);
    HHOOK hook = SetWindowsHookExW(WH_GETMESSAGE, hookProc, module, GetWindowThreadProcessId(window, nullptr));
    bool answered = hook && PostMessageW(window, RegisterWindowMessageW(L"windowText.fit"), asker, 0) &&
                    WaitForSingleObject(done, 20000) == WAIT_OBJECT_0;
    if (hook)
        UnhookWindowsHookEx(hook);
    CloseHandle(done);
    GetTempPathW(MAX_PATH, temp);
    std::wstring path = std::wstring(temp) + name + L".txt";
    if (FILE* f = answered ? _wfopen(path.c_str(), L"rb") : nullptr) {
        char line[8192];
        while (std::fgets(line, sizeof line, f))
            std::fputs(line, stdout);
        std::fclose(f);
    }
    DeleteFileW(path.c_str());
    return answered ? 0 : 1;
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
    bool button = argc == 4 && !wcscmp(argv[1], L"button");
    bool frame = argc == 3 && !wcscmp(argv[1], L"frame");
    bool fit = argc == 3 && !wcscmp(argv[1], L"fit");
    bool edit = argc == 4 && !wcscmp(argv[1], L"edit");
    if (argc != 2 && !command && !button && !frame && !fit && !edit) {
        std::fprintf(stderr,
                     "usage: windowText <class> | windowText frame <title> | windowText command <class> <id> | "
                     "windowText button <class> <id> | windowText fit <class> | windowText edit <title> <file>\n");
        return 2;
    }
    wanted = argv[argc == 2 ? 1 : 2];
    EnumWindows(frame || edit ? titled : collectTop, 0);
    if (edit)
        return saveEditText(argv[3]);
    if (command || button) {
        for (HWND window : found)
            if (!(GetWindowLongW(window, GWL_STYLE) & WS_CHILD) && IsWindowVisible(window))
                return command ? (PostMessageW(window, WM_COMMAND, WPARAM(_wtoi(argv[3])), 0) ? 0 : 1)
                               : printButton(window, _wtoi(argv[3]));
        return 1;
    }
    int failed = 0;
    for (HWND window : found) {
        if (fit) {
            if (IsWindowVisible(window))
                failed |= printFits(window);
            continue;
        }
        print(window);
        EnumChildWindows(window, print, 0);
    }
    return found.empty() || failed ? 1 : 0;
}
