// Keeps the unsaved text of the document in a recovery file while Quillon runs, and finds the files of
// runs that did not end cleanly. The user-interface thread only copies the text (a snapshot); encoding
// and the safe write (temporary file, flush, replace) happen on one worker thread, so that typing never
// waits for the disk. Every run names its file after itself and holds a named mutex of that name for
// as long as it lives: a file whose mutex nobody holds was left behind, and the run that offers it takes
// the mutex first, so that two windows never take the same file.
#pragma once

#include <windows.h>

#include <condition_variable>
#include <cstddef>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "foundation/utTextEncoding.h"

class qwzCRecoveryKeeper
{
public:
    // What is written: the document's text as the control holds it, with its path, encoding and caret.
    struct Snapshot {
        std::wstring path;
        utEncoding encoding = utEncoding::Utf8;
        std::size_t caret = 0;
        std::wstring text;
    };
    // Fills a snapshot of the unsaved text; false when there is none (the document is not modified).
    using Source = std::function<bool(Snapshot&)>;

    // How long typing must pause before the text is written.
    static constexpr UINT quietMilliseconds = 2000;
    // The files' name ending.
    static constexpr const wchar_t* fileExtension = L".qrf";

    // `folder` empty: defaultFolder().
    explicit qwzCRecoveryKeeper(std::wstring folder = std::wstring());
    // Stops the worker once the write asked for last is done. The file stays: only finish() says the run
    // ended cleanly.
    ~qwzCRecoveryKeeper();
    qwzCRecoveryKeeper(const qwzCRecoveryKeeper&) = delete;
    qwzCRecoveryKeeper& operator=(const qwzCRecoveryKeeper&) = delete;

    // %LOCALAPPDATA%\Tarvik\Quillon\Recovery.
    static std::wstring defaultFolder();

    // Makes the folder, this run's name and its mutex, and the worker; false when the folder cannot be
    // made (nothing is kept then, and every other call does nothing).
    bool start();
    bool started() const
    {
        return lock_ != nullptr;
    }
    const std::wstring& folder() const
    {
        return folder_;
    }
    // This run's recovery file (it exists only while there is unsaved text).
    const std::wstring& file() const
    {
        return file_;
    }

    void setSource(Source source);
    // The text changed: it is written once typing has paused for quietMilliseconds.
    void noteEdit();
    // The unsaved text was saved or given up: the file goes, after any write still under way.
    void discard();
    // Takes a snapshot and writes it at once on the calling thread. For the moments when no worker may
    // be waited for: a crash, and a restored text that must not be lost before the next pause.
    enum class Written { Nothing, Yes, Failed };
    Written writeNow();
    // The run ends cleanly: the file goes, the worker stops, the mutex is let go.
    void finish();
    // Waits until the worker has nothing left to do.
    void waitIdle();

    // The recovery files in the folder that were left by runs that are gone, oldest first, each now
    // held by this run until it is deleted or this keeper ends. Temporary files of writes that a killed
    // run left unfinished are deleted on the way.
    std::vector<std::wstring> claimLeftFiles();
    // Deletes a left file that this run holds, and lets its mutex go.
    void deleteLeftFile(const std::wstring& path);

private:
    struct Job {
        enum Kind { Write, Delete } kind = Write;
        Snapshot snapshot;
    };
    static void CALLBACK onQuietTimer(HWND, UINT, UINT_PTR id, DWORD);
    static std::wstring mutexName(const std::wstring& fileName);
    void post(Job job);
    void work();
    bool writeSnapshot(const Snapshot& snapshot);

    std::wstring folder_;
    std::wstring file_;
    HANDLE lock_ = nullptr;
    Source source_;
    UINT_PTR timer_ = 0;
    std::vector<std::pair<std::wstring, HANDLE>> claimed_;

    std::mutex mutex_;
    std::condition_variable wake_;
    std::condition_variable idle_;
    std::vector<Job> pending_; // at most one: a newer job replaces an older one not yet begun
    bool busy_ = false;
    bool stopping_ = false;
    std::thread worker_;
};
