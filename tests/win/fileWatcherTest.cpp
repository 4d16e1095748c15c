// The file watcher's hand-over: findings made on its worker thread reach the handler from the message loop,
// in order, and none arrives after stop() (or after a restart, from the file watched before); and the
// document it serves: an append is no edit, and the window's end ends the questions.
#include "app/qwzCText.h"
#include "document/qwzCFileWatcher.h"
#include "quillonTestApp.h"
#include "winTestApp.h"

#include <gtest/gtest.h>

#include <vector>

namespace
{

using Change = qwzFileWatch::Change;

// Runs the message loop until `done` or `ms` milliseconds have passed.
template <class Done> void pump(unsigned ms, Done done)
{
    const ULONGLONG end = GetTickCount64() + ms;
    while (!done() && GetTickCount64() < end) {
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 20, QS_ALLINPUT);
        MSG msg;
        while (PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE))
            DispatchMessageW(&msg);
    }
}

TEST(FileWatcher, FindingsReachTheMessageLoopInOrderAndStopEndsThem)
{
    std::wstring dir = wt::scratch("file-watcher");
    std::wstring path = dir + L"\\log.txt", other = dir + L"\\other.txt";
    wt::writeWide(path, "first\r\n");
    wt::writeWide(other, "other\r\n");
    qwzCFileWatcher watcher;
    std::vector<qwzCFileWatcher::Finding> found;
    watcher.onFinding = [&](qwzCFileWatcher::Finding& f) { found.push_back(f); };
    ASSERT_TRUE(watcher.start(qwzFileWatch(qwzUtf8(path)), true));
    EXPECT_EQ(qwzWide(watcher.path()), path);

    // the first look takes the file as it is: nothing to hand on
    pump(2 * qwzCFileWatcher::intervalMs, [] { return false; });
    EXPECT_TRUE(found.empty());
    wt::writeWide(path, "first\r\nsecond\r\n");
    pump(5000, [&] { return !found.empty(); });
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0].change, Change::Grown);
    EXPECT_EQ(found[0].added, "second\r\n");
    wt::writeWide(path, "new\r\n");
    watcher.lookNow();
    pump(5000, [&] { return found.size() == 2; });
    ASSERT_EQ(found.size(), 2u);
    EXPECT_EQ(found[1].change, Change::Rewritten);

    // another file in its place: the first one's changes reach nobody
    ASSERT_TRUE(watcher.start(qwzFileWatch(qwzUtf8(other)), true));
    pump(qwzCFileWatcher::intervalMs, [] { return false; });
    wt::writeWide(path, "");
    wt::writeWide(other, "other\r\nmore\r\n");
    pump(5000, [&] { return found.size() == 3; });
    ASSERT_EQ(found.size(), 3u);
    EXPECT_EQ(found[2].added, "more\r\n");

    watcher.stop();
    EXPECT_TRUE(watcher.path().isEmpty() || watcher.path().isNull());
    wt::writeWide(other, "other\r\nmore\r\nafter the stop\r\n");
    pump(3 * qwzCFileWatcher::intervalMs, [] { return false; });
    EXPECT_EQ(found.size(), 3u) << "a finding after stop()";
}

TEST(FileWatcher, AnAppendIsNoEditAndTheWindowsEndStopsTheWatch)
{
    wt::clearSettings(L"quillonTests-follow");
    qw::QuillonTestApp app(L"quillonTests-follow");
    std::wstring path = qw::scratchFile("follow-doc", L"app.log", "first\r\n");
    ASSERT_NE(app.openDocumentFile(path), nullptr);
    wt::writeWide(path, "first\r\nsecond\r\n");
    pump(5000, [&] { return app.view()->text() == L"first\r\nsecond\r\n"; });
    EXPECT_EQ(app.view()->text(), L"first\r\nsecond\r\n");
    EXPECT_FALSE(app.doc()->isModified()) << "closing would ask to save a text the user never edited";

    HWND frame = app.mainFrame()->hwnd();
    SendMessageW(frame, WM_CLOSE, 0, 0);
    ASSERT_FALSE(IsWindow(frame));
    wt::writeWide(path, "rewritten\r\n");
    pump(3 * qwzCFileWatcher::intervalMs, [] { return false; });
    EXPECT_TRUE(app.boxes.empty()) << "asked about the file after the window closed: " << wt::narrow(app.boxes[0].text);
}

} // namespace
