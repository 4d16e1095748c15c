// Saving that never loses the user's file: the bytes go to a temporary file in the target's directory,
// are flushed to the disk, and only then replace the target in one step. Whatever fails, the user's
// content stays findable: as a rule the target keeps its old content and no temporary file is left
// behind; in the one case where the old content was moved aside and cannot be put back, both files stay
// and the result names them. A killed process may leave the temporary file, never a damaged target.
// Paths of any length work: past MAX_PATH the file functions are given the "\\?\" form.
#pragma once

#include <windows.h>

#include <string>

// The outcome of a save: ok, or the step that failed and the system's error code.
struct winSaveResult {
    enum Step { Done, CheckTarget, CreateTemp, WriteTemp, FlushTemp, Replace };
    bool ok = false;
    Step failedStep = Done;
    DWORD error = ERROR_SUCCESS;
    // Set only when the target was moved aside and could not be put back: where the old content and the
    // new content now are.
    std::wstring originalKeptAs;
    std::wstring newKeptAs;
};

class winSafeSave
{
public:
    // Points a test may stop at: after the temporary file was written; after it was flushed; before the
    // target is replaced (the file is the name the old content is moved to); before the old content is
    // put back after a failed replace (the file is the target).
    enum class Point { TempWritten, TempFlushed, Replacing, Restoring };
    // Called at each point with the file named above; returning a non-zero error code makes that step
    // fail with the code (a stand-in for a full disk or a failing replace).
    using TestHook = DWORD (*)(Point point, const std::wstring& file);

    // Writes `bytes` to `path` safely; no user interface.
    static winSaveResult write(const std::wstring& path, const std::string& bytes);

    // Installs (or with nullptr removes) the test hook.
    static void setTestHook(TestHook hook);

    // The directory part of `path` ("." for a bare name).
    static std::wstring directoryOf(const std::wstring& path);
    // The full path of `path` (GetFullPathNameW), or `path` itself when the system cannot make one.
    static std::wstring fullPath(const std::wstring& path);
};
