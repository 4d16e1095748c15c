// The recovery keeper. Jobs are a mailbox of one: a snapshot taken while an older one waits replaces it,
// and a delete replaces any write not yet begun, so the file always ends as the last request left it.
#include "document/qwzCRecoveryKeeper.h"

#include <shlobj.h>

#include <algorithm>
#include <chrono>
#include <cwchar>

#include "app/qwzCText.h"
#include "document/qwzRecoveryFile.h"
#include "win/winSafeSave.h"

namespace
{

// The keeper whose quiet-time timer runs; one per process.
qwzCRecoveryKeeper* timed = nullptr;

// Makes `path` and every missing folder above it.
bool makeFolders(const std::wstring& path)
{
    DWORD attributes = GetFileAttributesW(path.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES)
        return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    size_t cut = path.find_last_of(L"\\/");
    if (cut != std::wstring::npos && cut > 2 && !makeFolders(path.substr(0, cut)))
        return false;
    return CreateDirectoryW(path.c_str(), nullptr) || GetLastError() == ERROR_ALREADY_EXISTS;
}

// Removes what a write cut short by the end of its process left behind: the safe save's temporary and
// backup files ("~qsv..."), once they are older than any write still under way can be.
void sweepTemporaries(const std::wstring& folder)
{
    FILETIME now = {};
    GetSystemTimeAsFileTime(&now);
    ULARGE_INTEGER limit = {};
    limit.LowPart = now.dwLowDateTime;
    limit.HighPart = now.dwHighDateTime;
    limit.QuadPart -= 60ull * 10000000ull;
    WIN32_FIND_DATAW data = {};
    HANDLE search = FindFirstFileW((folder + L"\\~qsv*").c_str(), &data);
    if (search == INVALID_HANDLE_VALUE)
        return;
    do {
        ULARGE_INTEGER written = {};
        written.LowPart = data.ftLastWriteTime.dwLowDateTime;
        written.HighPart = data.ftLastWriteTime.dwHighDateTime;
        if (!(data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) && written.QuadPart < limit.QuadPart)
            DeleteFileW((folder + L"\\" + data.cFileName).c_str());
    } while (FindNextFileW(search, &data));
    FindClose(search);
}

std::wstring baseName(const std::wstring& path)
{
    size_t cut = path.find_last_of(L"\\/");
    return cut == std::wstring::npos ? path : path.substr(cut + 1);
}

} // namespace

qwzCRecoveryKeeper::qwzCRecoveryKeeper(std::wstring folder) : folder_(folder.empty() ? defaultFolder() : folder) {}

qwzCRecoveryKeeper::~qwzCRecoveryKeeper()
{
    if (timer_)
        KillTimer(nullptr, timer_);
    if (timed == this)
        timed = nullptr;
    {
        // a write already asked for still happens: it may be the only copy of the text
        std::lock_guard<std::mutex> hold(mutex_);
        stopping_ = true;
    }
    wake_.notify_all();
    if (worker_.joinable())
        worker_.join();
    for (auto& claim : claimed_)
        CloseHandle(claim.second);
    if (lock_)
        CloseHandle(lock_);
}

std::wstring qwzCRecoveryKeeper::defaultFolder()
{
    wchar_t local[MAX_PATH] = {};
    if (FAILED(SHGetFolderPathW(nullptr, CSIDL_LOCAL_APPDATA | CSIDL_FLAG_CREATE, nullptr, 0, local)))
        return std::wstring();
    return std::wstring(local) + L"\\Tarvik\\Quillon\\Recovery";
}

std::wstring qwzCRecoveryKeeper::mutexName(const std::wstring& fileName)
{
    // per session: another user's Quillon has its own folder
    return L"Local\\Tarvik.Quillon.Recovery." + baseName(fileName);
}

bool qwzCRecoveryKeeper::start()
{
    if (lock_)
        return true;
    if (folder_.empty() || !makeFolders(folder_))
        return false;
    // the process id alone comes back after a restart; with the start time it names this run only
    FILETIME now = {};
    GetSystemTimeAsFileTime(&now);
    wchar_t name[64];
    std::swprintf(name, 64, L"\\%08lx-%08lx%08lx", GetCurrentProcessId(), now.dwHighDateTime, now.dwLowDateTime);
    file_ = folder_ + name + fileExtension;
    lock_ = CreateMutexW(nullptr, FALSE, mutexName(file_).c_str());
    if (!lock_)
        return false;
    worker_ = std::thread(&qwzCRecoveryKeeper::work, this);
    return true;
}

void qwzCRecoveryKeeper::setSource(Source source)
{
    source_ = std::move(source);
}

void qwzCRecoveryKeeper::noteEdit()
{
    if (!lock_)
        return;
    timed = this;
    // the same id again restarts the count: the write waits for a pause in the typing
    timer_ = SetTimer(nullptr, timer_, quietMilliseconds, onQuietTimer);
}

void CALLBACK qwzCRecoveryKeeper::onQuietTimer(HWND, UINT, UINT_PTR id, DWORD)
{
    KillTimer(nullptr, id);
    qwzCRecoveryKeeper* keeper = timed;
    if (!keeper || keeper->timer_ != id)
        return;
    keeper->timer_ = 0;
    Job job;
    if (keeper->source_ && keeper->source_(job.snapshot))
        keeper->post(std::move(job));
}

void qwzCRecoveryKeeper::discard()
{
    if (!lock_)
        return;
    if (timer_) {
        KillTimer(nullptr, timer_);
        timer_ = 0;
    }
    Job job;
    job.kind = Job::Delete;
    post(std::move(job));
}

qwzCRecoveryKeeper::Written qwzCRecoveryKeeper::writeNow()
{
    Snapshot snapshot;
    if (!lock_ || !source_ || !source_(snapshot))
        return Written::Nothing;
    {
        // a write not yet begun holds older text, and one under way must not land after this one; the
        // wait is bounded, since a crash may have stopped the worker itself
        std::unique_lock<std::mutex> hold(mutex_);
        pending_.clear();
        idle_.wait_for(hold, std::chrono::seconds(5), [this] { return !busy_; });
    }
    return writeSnapshot(snapshot) ? Written::Yes : Written::Failed;
}

void qwzCRecoveryKeeper::finish()
{
    if (!lock_)
        return;
    discard();
    waitIdle();
    {
        std::lock_guard<std::mutex> hold(mutex_);
        stopping_ = true;
    }
    wake_.notify_all();
    if (worker_.joinable())
        worker_.join();
    CloseHandle(lock_);
    lock_ = nullptr;
}

void qwzCRecoveryKeeper::waitIdle()
{
    std::unique_lock<std::mutex> hold(mutex_);
    idle_.wait(hold, [this] { return (pending_.empty() && !busy_) || !worker_.joinable(); });
}

void qwzCRecoveryKeeper::post(Job job)
{
    {
        std::lock_guard<std::mutex> hold(mutex_);
        if (stopping_)
            return;
        pending_.clear();
        pending_.push_back(std::move(job));
    }
    wake_.notify_one();
}

void qwzCRecoveryKeeper::work()
{
    std::unique_lock<std::mutex> hold(mutex_);
    for (;;) {
        wake_.wait(hold, [this] { return stopping_ || !pending_.empty(); });
        if (pending_.empty())
            break;
        Job job = std::move(pending_.front());
        pending_.clear();
        busy_ = true;
        hold.unlock();
        if (job.kind == Job::Write)
            writeSnapshot(job.snapshot);
        else
            DeleteFileW(file_.c_str());
        hold.lock();
        busy_ = false;
        idle_.notify_all();
    }
    busy_ = false;
    idle_.notify_all();
}

bool qwzCRecoveryKeeper::writeSnapshot(const Snapshot& snapshot)
{
    std::string bytes;
    if (!qwzRecoveryFile::format(qwzUtf8(snapshot.path).str(), snapshot.encoding, snapshot.caret,
                                 reinterpret_cast<const char16_t*>(snapshot.text.data()), snapshot.text.size(), bytes))
        return false;
    return winSafeSave::write(file_, bytes).ok;
}

std::vector<std::wstring> qwzCRecoveryKeeper::claimLeftFiles()
{
    struct Found {
        std::wstring path;
        FILETIME written;
    };
    sweepTemporaries(folder_);
    std::vector<Found> found;
    WIN32_FIND_DATAW data = {};
    HANDLE search = FindFirstFileW((folder_ + L"\\*" + fileExtension).c_str(), &data);
    if (search == INVALID_HANDLE_VALUE)
        return {};
    do {
        if (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)
            continue;
        found.push_back({folder_ + L"\\" + data.cFileName, data.ftLastWriteTime});
    } while (FindNextFileW(search, &data));
    FindClose(search);
    std::sort(found.begin(), found.end(),
              [](const Found& a, const Found& b) { return CompareFileTime(&a.written, &b.written) < 0; });

    std::vector<std::wstring> left;
    for (const Found& f : found) {
        if (f.path == file_ ||
            std::any_of(claimed_.begin(), claimed_.end(), [&](auto& c) { return c.first == f.path; }))
            continue;
        // a mutex that exists already is held by its live run, or by another run that offers the file
        HANDLE claim = CreateMutexW(nullptr, FALSE, mutexName(f.path).c_str());
        if (!claim)
            continue;
        if (GetLastError() == ERROR_ALREADY_EXISTS) {
            CloseHandle(claim);
            continue;
        }
        claimed_.emplace_back(f.path, claim);
        left.push_back(f.path);
    }
    return left;
}

void qwzCRecoveryKeeper::deleteLeftFile(const std::wstring& path)
{
    auto it = std::find_if(claimed_.begin(), claimed_.end(), [&](auto& c) { return c.first == path; });
    if (it == claimed_.end())
        return;
    DeleteFileW(path.c_str());
    CloseHandle(it->second);
    claimed_.erase(it);
}
