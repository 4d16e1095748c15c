// Saving that never loses the user's file: the bytes go to a temporary file in the target's directory,
// are flushed to the disk, and only then replace the target in one step. Whatever fails, the target
// keeps its old content and no temporary file is left behind (a killed process may leave the temporary
// file, never a damaged target).
#pragma once

#include <windows.h>

#include <string>

// The outcome of a save: ok, or the step that failed and the system's error code.
struct winSaveResult {
    enum Step { Done, CheckTarget, CreateTemp, WriteTemp, FlushTemp, Replace };
    bool ok = false;
    Step failedStep = Done;
    DWORD error = ERROR_SUCCESS;
};

class winSafeSave
{
public:
    // Points a test may stop at: after the temporary file was written, and after it was flushed.
    enum class Point { TempWritten, TempFlushed };
    // Called at each point with the temporary file's name; returning a non-zero error code makes the
    // save fail there with that code (a stand-in for a full disk).
    using TestHook = DWORD (*)(Point point, const std::wstring& tempPath);

    // Writes `bytes` to `path` safely; no user interface.
    static winSaveResult write(const std::wstring& path, const std::string& bytes);

    // Installs (or with nullptr removes) the test hook.
    static void setTestHook(TestHook hook);

    // The directory part of `path` ("." for a bare name).
    static std::wstring directoryOf(const std::wstring& path);
};
