// Temp file, flush, replace: the only order in which a crash or a failure at any step leaves the user's
// file whole.
#include "win/winSafeSave.h"

#include "win/winHandles.h"

#include <algorithm>
#include <cwchar>
#include <memory>

namespace
{

winSafeSave::TestHook testHook = nullptr;

const std::wstring extendedPrefix = L"\\\\?\\";
const std::wstring extendedUncPrefix = L"\\\\?\\UNC\\";

using FileHandle = winHandle;

winSaveResult failure(winSaveResult::Step step, DWORD error)
{
    winSaveResult r;
    r.failedStep = step;
    r.error = error ? error : ERROR_GEN_FAILURE;
    return r;
}

winSaveResult success()
{
    winSaveResult r;
    r.ok = true;
    return r;
}

// The form the file functions take at any length: near or past MAX_PATH (our temporary names add up to
// 20 characters), the full path in its "\\?\" form, which knows no "/" and no relative parts.
std::wstring systemForm(const std::wstring& path)
{
    if (path.size() + 20 < MAX_PATH || path.rfind(extendedPrefix, 0) == 0)
        return path;
    std::wstring full = winSafeSave::fullPath(path);
    std::replace(full.begin(), full.end(), L'/', L'\\');
    if (full.rfind(L"\\\\", 0) == 0)
        return extendedUncPrefix + full.substr(2);
    return extendedPrefix + full;
}

// The name the user knows a file by: the "\\?\" form undone.
std::wstring userForm(const std::wstring& path)
{
    if (path.rfind(extendedUncPrefix, 0) == 0)
        return L"\\\\" + path.substr(extendedUncPrefix.size());
    if (path.rfind(extendedPrefix, 0) == 0)
        return path.substr(extendedPrefix.size());
    return path;
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

// A new, empty file in `directory` named like GetTempFileNameW's ("~qsv" and hex digits), made here
// because GetTempFileNameW takes no directory longer than MAX_PATH.
FileHandle createTemp(const std::wstring& directory, std::wstring& temp, DWORD& error)
{
    static unsigned counter = 0;
    const unsigned seed = GetCurrentProcessId() * 2654435761u ^ GetTickCount();
    for (int attempt = 0; attempt < 64; ++attempt) {
        wchar_t name[32];
        std::swprintf(name, 32, L"\\~qsv%08x.tmp", seed + ++counter);
        temp = directory + name;
        HANDLE h = CreateFileW(temp.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
        if (h != INVALID_HANDLE_VALUE)
            return FileHandle(h);
        error = GetLastError();
        if (error != ERROR_FILE_EXISTS && error != ERROR_ALREADY_EXISTS)
            break;
    }
    return FileHandle();
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

DWORD runHook(winSafeSave::Point point, const std::wstring& file)
{
    return testHook ? testHook(point, file) : ERROR_SUCCESS;
}

// Writes, flushes and closes the temporary file.
winSaveResult fillTemp(FileHandle file, const std::wstring& temp, const std::string& bytes)
{
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
    return success();
}

bool exists(const std::wstring& path)
{
    return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

// Puts the flushed temporary file in place of the existing target. The original is moved to a backup
// name of ours rather than one ReplaceFileW would invent (Wine leaves an invented one behind when the
// target is locked); the backup goes once the new content is in place, and comes back if it is not. When
// it cannot come back, nothing is deleted: the result says where both contents are.
winSaveResult replaceExisting(const std::wstring& path, const std::wstring& temp)
{
    const std::wstring backup = temp + L".bak";
    DWORD error = runHook(winSafeSave::Point::Replacing, backup);
    if (error == ERROR_SUCCESS) {
        if (ReplaceFileW(path.c_str(), temp.c_str(), backup.c_str(), REPLACEFILE_IGNORE_MERGE_ERRORS, nullptr,
                         nullptr)) {
            DeleteFileW(backup.c_str());
            return success();
        }
        error = GetLastError();
    }
    winSaveResult r = failure(winSaveResult::Replace, error);
    if (exists(path)) {
        DeleteFileW(backup.c_str());
        DeleteFileW(temp.c_str());
        return r;
    }
    DWORD restore = runHook(winSafeSave::Point::Restoring, path);
    if (restore == ERROR_SUCCESS && MoveFileExW(backup.c_str(), path.c_str(), MOVEFILE_WRITE_THROUGH)) {
        DeleteFileW(temp.c_str());
        return r;
    }
    r.originalKeptAs = userForm(backup);
    r.newKeptAs = userForm(temp);
    return r;
}

} // namespace

void winSafeSave::setTestHook(TestHook hook)
{
    testHook = hook;
}

std::wstring winSafeSave::fullPath(const std::wstring& path)
{
    DWORD need = GetFullPathNameW(path.c_str(), 0, nullptr, nullptr);
    if (need == 0)
        return path;
    std::wstring out(need, L'\0');
    DWORD got = GetFullPathNameW(path.c_str(), need, out.data(), nullptr);
    if (got == 0 || got >= need)
        return path;
    out.resize(got);
    return out;
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

winSaveResult winSafeSave::write(const std::wstring& userPath, const std::string& bytes)
{
    const std::wstring path = systemForm(userPath);
    bool existing = false;
    if (DWORD e = checkTarget(path, existing))
        return failure(winSaveResult::CheckTarget, e);

    std::wstring temp;
    DWORD error = ERROR_SUCCESS;
    std::wstring directory = directoryOf(path);
    if (!directory.empty() && (directory.back() == L'\\' || directory.back() == L'/'))
        directory.pop_back();
    FileHandle file = createTemp(directory, temp, error);
    if (!file)
        return failure(winSaveResult::CreateTemp, error);

    winSaveResult r = fillTemp(std::move(file), temp, bytes);
    if (!r.ok) {
        DeleteFileW(temp.c_str());
        return r;
    }
    if (existing)
        return replaceExisting(path, temp);
    if (MoveFileExW(temp.c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
        return r;
    r = failure(winSaveResult::Replace, GetLastError());
    DeleteFileW(temp.c_str());
    return r;
}
