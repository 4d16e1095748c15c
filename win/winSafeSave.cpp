// Temp file, flush, replace: the only order in which a crash or a failure at any step leaves the user's
// file whole.
#include "win/winSafeSave.h"

#include <memory>

namespace
{

winSafeSave::TestHook testHook = nullptr;

struct HandleCloser {
    void operator()(HANDLE h) const
    {
        if (h && h != INVALID_HANDLE_VALUE)
            CloseHandle(h);
    }
};
using FileHandle = std::unique_ptr<void, HandleCloser>;

winSaveResult failure(winSaveResult::Step step, DWORD error)
{
    winSaveResult r;
    r.failedStep = step;
    r.error = error ? error : ERROR_GEN_FAILURE;
    return r;
}

// A read-only target is the user's sign that the file must not change: refused before anything is written.
DWORD checkTarget(const std::wstring& path, bool& exists)
{
    DWORD attributes = GetFileAttributesW(path.c_str());
    exists = attributes != INVALID_FILE_ATTRIBUTES;
    if (!exists) {
        DWORD e = GetLastError();
        return e == ERROR_FILE_NOT_FOUND ? ERROR_SUCCESS : e;
    }
    if (attributes & FILE_ATTRIBUTE_DIRECTORY)
        return ERROR_ACCESS_DENIED;
    if (attributes & FILE_ATTRIBUTE_READONLY)
        return ERROR_ACCESS_DENIED;
    return ERROR_SUCCESS;
}

DWORD writeAll(HANDLE file, const std::string& bytes)
{
    size_t done = 0;
    while (done < bytes.size()) {
        size_t left = bytes.size() - done;
        DWORD chunk = left > (DWORD(1) << 30) ? (DWORD(1) << 30) : DWORD(left);
        DWORD written = 0;
        if (!WriteFile(file, bytes.data() + done, chunk, &written, nullptr))
            return GetLastError();
        if (written == 0)
            return ERROR_DISK_FULL;
        done += written;
    }
    return ERROR_SUCCESS;
}

DWORD runHook(winSafeSave::Point point, const std::wstring& temp)
{
    return testHook ? testHook(point, temp) : ERROR_SUCCESS;
}

// Writes and flushes the temporary file; an error code on failure.
winSaveResult fillTemp(const std::wstring& temp, const std::string& bytes)
{
    FileHandle file(
        CreateFileW(temp.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (file.get() == INVALID_HANDLE_VALUE)
        return failure(winSaveResult::CreateTemp, GetLastError());
    DWORD e = writeAll(file.get(), bytes);
    if (e == ERROR_SUCCESS)
        e = runHook(winSafeSave::Point::TempWritten, temp);
    if (e != ERROR_SUCCESS)
        return failure(winSaveResult::WriteTemp, e);
    if (!FlushFileBuffers(file.get()))
        return failure(winSaveResult::FlushTemp, GetLastError());
    file.reset();
    e = runHook(winSafeSave::Point::TempFlushed, temp);
    if (e != ERROR_SUCCESS)
        return failure(winSaveResult::FlushTemp, e);
    winSaveResult ok;
    ok.ok = true;
    return ok;
}

// Puts the flushed temporary file in place of the existing target. The original is moved to a backup
// name of ours rather than one ReplaceFileW would invent (Wine leaves an invented one behind when the
// target is locked); the backup goes once the new content is in place, and comes back if it is not.
DWORD replaceExisting(const std::wstring& path, const std::wstring& temp)
{
    std::wstring backup = temp + L".bak";
    if (ReplaceFileW(path.c_str(), temp.c_str(), backup.c_str(), REPLACEFILE_IGNORE_MERGE_ERRORS, nullptr, nullptr)) {
        DeleteFileW(backup.c_str());
        return ERROR_SUCCESS;
    }
    DWORD error = GetLastError();
    if (GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES)
        DeleteFileW(backup.c_str());
    else
        MoveFileExW(backup.c_str(), path.c_str(), MOVEFILE_WRITE_THROUGH);
    return error ? error : ERROR_GEN_FAILURE;
}

} // namespace

void winSafeSave::setTestHook(TestHook hook)
{
    testHook = hook;
}

std::wstring winSafeSave::directoryOf(const std::wstring& path)
{
    size_t cut = path.find_last_of(L"\\/");
    if (cut == std::wstring::npos)
        return L".";
    if (cut == 0 || (cut == 2 && path[1] == L':'))
        return path.substr(0, cut + 1);
    return path.substr(0, cut);
}

winSaveResult winSafeSave::write(const std::wstring& path, const std::string& bytes)
{
    bool exists = false;
    if (DWORD e = checkTarget(path, exists))
        return failure(winSaveResult::CheckTarget, e);

    wchar_t temp[MAX_PATH + 1] = {};
    if (!GetTempFileNameW(directoryOf(path).c_str(), L"qsv", 0, temp))
        return failure(winSaveResult::CreateTemp, GetLastError());

    winSaveResult r = fillTemp(temp, bytes);
    if (r.ok) {
        DWORD e = ERROR_SUCCESS;
        if (exists)
            e = replaceExisting(path, temp);
        else if (!MoveFileExW(temp, path.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
            e = GetLastError();
        if (e == ERROR_SUCCESS)
            return r;
        r = failure(winSaveResult::Replace, e);
    }
    DeleteFileW(temp);
    return r;
}
