// The crash path runs on a thread whose state may be broken: it allocates little, takes no lock of the
// window framework, and loads dbghelp.dll only here, so that a normal run never maps it.
#include "app/qwzCCrashReport.h"

#include <dbghelp.h>

#include "app/qwzCText.h"
#include "document/qwzCRecoveryKeeper.h"
#include "resourceIds.h"
#include "win/winApp.h"

namespace
{

qwzCRecoveryKeeper* installedKeeper = nullptr;

using MiniDumpWriteDumpFn = BOOL(WINAPI*)(HANDLE, DWORD, HANDLE, MINIDUMP_TYPE, PMINIDUMP_EXCEPTION_INFORMATION,
                                          PMINIDUMP_USER_STREAM_INFORMATION, PMINIDUMP_CALLBACK_INFORMATION);

bool writeDump(const std::wstring& path, EXCEPTION_POINTERS* exception)
{
    HMODULE dbghelp = LoadLibraryW(L"dbghelp.dll");
    if (!dbghelp)
        return false;
    auto writeDumpFn =
        reinterpret_cast<MiniDumpWriteDumpFn>(reinterpret_cast<void*>(GetProcAddress(dbghelp, "MiniDumpWriteDump")));
    HANDLE file = writeDumpFn ? CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                            FILE_ATTRIBUTE_NORMAL, nullptr)
                              : INVALID_HANDLE_VALUE;
    bool ok = false;
    if (file != INVALID_HANDLE_VALUE) {
        MINIDUMP_EXCEPTION_INFORMATION info = {};
        info.ThreadId = GetCurrentThreadId();
        info.ExceptionPointers = exception;
        info.ClientPointers = FALSE;
        ok = writeDumpFn(GetCurrentProcess(), GetCurrentProcessId(), file, MiniDumpNormal, exception ? &info : nullptr,
                         nullptr, nullptr) != FALSE;
        CloseHandle(file);
        if (!ok)
            DeleteFileW(path.c_str());
    }
    FreeLibrary(dbghelp);
    return ok;
}

} // namespace

LPTOP_LEVEL_EXCEPTION_FILTER qwzCCrashReport::install(qwzCRecoveryKeeper* keeper)
{
    installedKeeper = keeper;
    return SetUnhandledExceptionFilter(filter);
}

qwzCCrashReport::Files qwzCCrashReport::write(EXCEPTION_POINTERS* exception, qwzCRecoveryKeeper* keeper)
{
    Files files;
    if (!keeper || !keeper->started())
        return files;
    qwzCRecoveryKeeper::Written written = keeper->writeNow();
    files.unsaved = written != qwzCRecoveryKeeper::Written::Nothing;
    if (written == qwzCRecoveryKeeper::Written::Yes)
        files.recovery = keeper->file();
    std::wstring dump = keeper->file();
    size_t dot = dump.rfind(L'.');
    dump = (dot == std::wstring::npos ? dump : dump.substr(0, dot)) + L".dmp";
    if (writeDump(dump, exception))
        files.dump = dump;
    return files;
}

std::wstring qwzCCrashReport::message(const Files& files)
{
    std::wstring recovery = !files.recovery.empty() ? files.recovery
                            : files.unsaved         ? qwzMessage(IDS_RECOVERY_NOT_WRITTEN)
                                                    : qwzMessage(IDS_RECOVERY_NOTHING_UNSAVED);
    std::wstring dump = !files.dump.empty() ? files.dump : qwzMessage(IDS_RECOVERY_NOT_WRITTEN);
    return qwzMessage(IDS_RECOVERY_CRASH, qwzUtf8(recovery).c_str(), qwzUtf8(dump).c_str());
}

LONG WINAPI qwzCCrashReport::filter(EXCEPTION_POINTERS* exception)
{
    std::wstring text = message(write(exception, installedKeeper));
    if (winApp* app = winApp::instance())
        app->messageBox(text, MB_OK | MB_ICONERROR | MB_TASKMODAL);
    else
        MessageBoxW(nullptr, text.c_str(), L"Quillon", MB_OK | MB_ICONERROR | MB_TASKMODAL);
    return EXCEPTION_EXECUTE_HANDLER;
}
