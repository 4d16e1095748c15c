// Watches the document's file from a worker thread: at least twice a second and whenever the window is
// activated, the worker looks at the file (qwzFileWatch) and posts what it found to a message-only window
// of this object, which hands it on from the message loop. The window never waits for the file: a share
// that does not answer holds only the worker. A stopped worker that is still waiting for such a share is
// let go and ends by itself; what it finds afterwards reaches nobody.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "document/qwzFileWatch.h"
#include "win/winWindow.h"

class qwzCFileWatcher : public winWindow
{
public:
    struct Finding {
        qwzFileWatch::Change change = qwzFileWatch::Change::Unchanged;
        std::string added; // the new bytes of a grown file
    };

    qwzCFileWatcher() = default;
    // Stops the worker.
    ~qwzCFileWatcher() override;

    // Called from the message loop with each finding, in order.
    std::function<void(Finding&)> onFinding;

    // Starts watching `watch` (what the document knows of its file) in place of any file watched so far.
    // With `fromDisk` the worker first takes the file as it is then. False when the message window or
    // the thread could not be made (nothing is watched).
    bool start(const qwzFileWatch& watch, bool fromDisk);
    // Stops watching; no finding is handed on after it returns.
    void stop();
    // Asks the worker to look now (the window was activated).
    void lookNow();
    // The file watched; empty when none.
    const utString& path() const
    {
        return path_;
    }

    // How long the worker waits between two looks.
    static constexpr unsigned intervalMs = 500;

protected:
    const wchar_t* className() const override;
    LRESULT HandleMessage(UINT msg, WPARAM wParam, LPARAM lParam) override;

private:
    struct Shared;
    static void run(std::shared_ptr<Shared> shared, qwzFileWatch watch, bool fromDisk);
    void deliver();

    std::shared_ptr<Shared> shared_;
    utString path_;
};
