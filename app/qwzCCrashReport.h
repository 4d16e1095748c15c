// What Quillon does when an exception nobody handles would end it: the unsaved text goes to its
// recovery file, a minidump goes beside it (dbghelp.dll is loaded only then), and the user is told, in
// their language, where both are. The process then ends.
#pragma once

#include <windows.h>

#include <string>

class qwzCRecoveryKeeper;

class qwzCCrashReport
{
public:
    // The files written; an empty name for one that was not, and whether there was unsaved text.
    struct Files {
        std::wstring recovery;
        std::wstring dump;
        bool unsaved = false;
    };

    // Installs filter() for the process, with the keeper of the document's text; returns the filter
    // it replaced.
    static LPTOP_LEVEL_EXCEPTION_FILTER install(qwzCRecoveryKeeper* keeper);

    // The unhandled-exception filter: write(), then the message through the application's message box;
    // returns EXCEPTION_EXECUTE_HANDLER, which ends the process.
    static LONG WINAPI filter(EXCEPTION_POINTERS* exception);

    // Writes the recovery file (when there is unsaved text) and the minidump "<run>.dmp" in the
    // keeper's folder.
    static Files write(EXCEPTION_POINTERS* exception, qwzCRecoveryKeeper* keeper);
    // The message that names both files (string 332).
    static std::wstring message(const Files& files);
};
