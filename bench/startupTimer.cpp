// Times Quillon's start-up with the start-up version check off and on, in alternating runs: from
// CreateProcess until the program first waits for input, which is after the check (it runs before the
// message loop). Prints each median, the ratio on/off and the milliseconds the check adds; the check-off
// start is the anchor. The program is closed with WM_CLOSE after each run.
//   startupTimer <runs> <quillon.exe>     (QWZ_PRODUCT_SERVER names the server to ask)
#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cwchar>
#include <string>
#include <vector>

namespace
{

BOOL CALLBACK closeWindowsOf(HWND window, LPARAM process)
{
    DWORD owner = 0;
    GetWindowThreadProcessId(window, &owner);
    if (owner == static_cast<DWORD>(process) && IsWindowVisible(window))
        PostMessageW(window, WM_CLOSE, 0, 0);
    return TRUE;
}

// Milliseconds until the started program is idle; negative on failure.
double timeOneStart(const std::wstring& exe, bool check)
{
    SetEnvironmentVariableW(L"QWZ_DISABLE_STARTUP_VERSION_CHECK", check ? L"" : L"1");
    std::wstring line = L"\"" + exe + L"\"";
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES; // the program's own output is not the benchmark's
    PROCESS_INFORMATION process = {};
    LARGE_INTEGER frequency, start, idle;
    QueryPerformanceFrequency(&frequency);
    QueryPerformanceCounter(&start);
    if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process))
        return -1;
    DWORD waited = WaitForInputIdle(process.hProcess, 60000);
    QueryPerformanceCounter(&idle);
    EnumWindows(closeWindowsOf, static_cast<LPARAM>(process.dwProcessId));
    if (WaitForSingleObject(process.hProcess, 30000) != WAIT_OBJECT_0)
        TerminateProcess(process.hProcess, 1);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    if (waited != 0)
        return -1;
    return 1000.0 * static_cast<double>(idle.QuadPart - start.QuadPart) / static_cast<double>(frequency.QuadPart);
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

} // namespace

int wmain(int argc, wchar_t** argv)
{
    if (argc != 3)
        return 2;
    int runs = std::max(1, _wtoi(argv[1]));
    timeOneStart(argv[2], true); // unmeasured: Wine's files and the server's first answer warm
    std::vector<double> off, on;
    for (int i = 0; i < runs; ++i) {
        // the order changes every round, so that neither setting always follows the other
        for (bool check : {i % 2 == 1, i % 2 == 0}) {
            double ms = timeOneStart(argv[2], check);
            if (ms < 0) {
                std::printf("a start with the check %s failed or never went idle\n", check ? "on" : "off");
                return 1;
            }
            (check ? on : off).push_back(ms);
        }
    }
    double a = median(off), b = median(on);
    std::printf("start-up, check off (anchor)          median %7.1f ms  (%d runs)\n", a, runs);
    std::printf("start-up, check on against the server median %7.1f ms\n", b);
    std::printf("ratio on/off %.3f: the exchange adds %.1f ms (target < 50 ms)\n", b / a, b - a);
    return 0;
}
