// Starts a program for `make run` as a Windows desktop would: without the locale variables that Linux set
// for Wine. Wine has made the Windows user locale from them already, and a Windows program takes its
// language from that locale. A language chosen for the program itself (LC_ALL=German) comes as
// QUILLON_RUN_<name> and is handed on under its own name. The program ends with the starter, so that
// Ctrl+C on `make run` or stopping its pid closes Quillon too (Wine gives every process a session of its own).
// usage: startAsWindows.exe PROGRAM [ARGS...]; the exit status is the program's.
#include <windows.h>

#include <string>

namespace
{

struct Handle {
    HANDLE h = nullptr;
    ~Handle()
    {
        if (h)
            CloseHandle(h);
    }
};

// Our command line without our own name, as it came: the program's words keep their quoting.
wchar_t* programCommandLine()
{
    wchar_t* p = GetCommandLineW();
    if (*p == L'"') {
        // the first word ends at the next quote; a backslash escapes nothing in it
        for (++p; *p && *p != L'"'; ++p) {
        }
        if (*p)
            ++p;
    } else {
        while (*p && *p != L' ' && *p != L'\t')
            ++p;
    }
    while (*p == L' ' || *p == L'\t')
        ++p;
    return p;
}

void handOnLanguageVariables()
{
    for (const wchar_t* name : {L"LC_ALL", L"LC_MESSAGES", L"LANG"}) {
        std::wstring chosen = std::wstring(L"QUILLON_RUN_") + name;
        wchar_t value[256];
        DWORD n = GetEnvironmentVariableW(chosen.c_str(), value, 256);
        SetEnvironmentVariableW(name, n > 0 && n < 256 ? value : nullptr);
        SetEnvironmentVariableW(chosen.c_str(), nullptr);
    }
}

void complain(const char* text)
{
    DWORD written;
    WriteFile(GetStdHandle(STD_ERROR_HANDLE), text, lstrlenA(text), &written, nullptr);
}

} // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int)
{
    handOnLanguageVariables();
    // closing the job, however the starter ends, ends the program; what the program starts may stay
    Handle job{CreateJobObjectW(nullptr, nullptr)};
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
    limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE | JOB_OBJECT_LIMIT_SILENT_BREAKAWAY_OK;
    if (!job.h || !SetInformationJobObject(job.h, JobObjectExtendedLimitInformation, &limits, sizeof limits)) {
        complain("startAsWindows: no job object\n");
        return 127;
    }
    STARTUPINFOW si{};
    si.cb = sizeof si;
    // the program's output (usage text, reports) goes where ours goes
    si.dwFlags = STARTF_USESTDHANDLES;
    si.hStdInput = GetStdHandle(STD_INPUT_HANDLE);
    si.hStdOutput = GetStdHandle(STD_OUTPUT_HANDLE);
    si.hStdError = GetStdHandle(STD_ERROR_HANDLE);
    PROCESS_INFORMATION pi{};
    if (!CreateProcessW(nullptr, programCommandLine(), nullptr, nullptr, TRUE, CREATE_SUSPENDED, nullptr, nullptr, &si,
                        &pi)) {
        complain("startAsWindows: the program could not be started\n");
        return 127;
    }
    Handle process{pi.hProcess}, thread{pi.hThread};
    AssignProcessToJobObject(job.h, process.h);
    ResumeThread(thread.h);
    WaitForSingleObject(process.h, INFINITE);
    DWORD code = 1;
    GetExitCodeProcess(process.h, &code);
    return static_cast<int>(code);
}
