// The file watcher's worker and its hand-over. Findings travel in a queue under the shared lock; the
// posted message carries nothing, so a message left in the queue of a window already gone leaks nothing.
#include "document/qwzCFileWatcher.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <system_error>
#include <thread>

namespace
{

constexpr UINT findingsMessage = WM_APP + 13;

} // namespace

struct qwzCFileWatcher::Shared {
    std::mutex lock;
    std::condition_variable wake;
    bool stopped = false;
    bool lookNow = false;
    HWND target = nullptr;
    std::deque<Finding> findings;
};

qwzCFileWatcher::~qwzCFileWatcher()
{
    stop();
}

const wchar_t* qwzCFileWatcher::className() const
{
    return L"QuillonFileWatcher";
}

bool qwzCFileWatcher::start(const qwzFileWatch& watch, bool fromDisk)
{
    stop();
    if (!hwnd() && !createWindow(0, std::wstring(), 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr))
        return false;
    auto shared = std::make_shared<Shared>();
    shared->target = hwnd();
    try {
        std::thread(run, shared, watch, fromDisk).detach();
    } catch (const std::system_error&) {
        return false;
    }
    shared_ = std::move(shared);
    path_ = watch.path();
    return true;
}

void qwzCFileWatcher::stop()
{
    if (!shared_)
        return;
    {
        std::lock_guard<std::mutex> hold(shared_->lock);
        shared_->stopped = true;
        shared_->target = nullptr;
        shared_->findings.clear();
    }
    shared_->wake.notify_all();
    shared_.reset();
    path_ = utString();
}

void qwzCFileWatcher::lookNow()
{
    if (!shared_)
        return;
    {
        std::lock_guard<std::mutex> hold(shared_->lock);
        shared_->lookNow = true;
    }
    shared_->wake.notify_all();
}

void qwzCFileWatcher::run(std::shared_ptr<Shared> shared, qwzFileWatch watch, bool fromDisk)
{
    if (fromDisk)
        watch.knowFromDisk();
    std::unique_lock<std::mutex> hold(shared->lock);
    while (!shared->stopped) {
        shared->lookNow = false;
        hold.unlock();
        Finding finding{qwzFileWatch::Change::Unchanged, std::string()};
        finding.change = watch.look(finding.added);
        hold.lock();
        if (shared->stopped)
            break;
        if (finding.change != qwzFileWatch::Change::Unchanged) {
            bool first = shared->findings.empty();
            shared->findings.push_back(std::move(finding));
            // one message for a run of findings: the window takes them all
            if (first)
                PostMessageW(shared->target, findingsMessage, 0, 0);
            // a grown file is looked at again at once: a burst goes on in the next look
            continue;
        }
        shared->wake.wait_for(hold, std::chrono::milliseconds(intervalMs),
                              [&] { return shared->stopped || shared->lookNow; });
    }
}

void qwzCFileWatcher::deliver()
{
    // one at a time, the lock not held: a finding's handler may stop or restart the watch, or ask the user
    while (shared_) {
        std::shared_ptr<Shared> shared = shared_;
        Finding finding;
        {
            std::lock_guard<std::mutex> hold(shared->lock);
            if (shared->findings.empty())
                return;
            finding = std::move(shared->findings.front());
            shared->findings.pop_front();
        }
        if (onFinding)
            onFinding(finding);
    }
}

LRESULT qwzCFileWatcher::HandleMessage(UINT msg, WPARAM wParam, LPARAM lParam)
{
    if (msg == findingsMessage) {
        deliver();
        return 0;
    }
    return winWindow::HandleMessage(msg, wParam, lParam);
}
