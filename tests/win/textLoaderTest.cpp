// A text bigger than one piece, opened into Quillon's view: the first piece is there when the open
// returns, the rest arrives from the message loop with the progress in the message pane, the commands
// that need the whole text greyed and the user's caret kept; the end leaves the caret at the end unless
// the user moved it; a stopped load keeps its part and makes a save over the file ask; closing during a
// load asks nothing of an unedited document; text appended after a CR completes its line end.
#include "quillonTestApp.h"

#include "app/qwzCText.h"
#include "resourceIds.h"
#include "win/winFrame.h"
#include "win/winText.h"

#include <gtest/gtest.h>

#include <string>

namespace
{

using qw::QuillonTestApp;

// About 600 KB of log lines with multibyte characters, and one line longer than the first piece.
std::string bigLog()
{
    std::string text;
    for (int i = 0; text.size() < 600 * 1000; ++i) {
        text += "2026-11-25 12:00:00 [INFO] step " + std::to_string(i) + " Gr\xC3\xB6\xC3\x9F" + "e \xE6\x97\xA5\n";
        if (i == 100)
            text += std::string(40000, 'x') + "\n";
    }
    return text;
}

std::wstring shownText(const std::string& utf8)
{
    std::wstring out = qwzWide(utString::copyOf(utf8));
    std::wstring crlf;
    for (wchar_t c : out)
        crlf += c == L'\n' ? std::wstring(L"\r\n") : std::wstring(1, c);
    return crlf;
}

bool enabled(QuillonTestApp& app, unsigned id)
{
    winCommandState state{true, false};
    return app.mainFrame()->routeUpdateCommand(id, state) && state.enabled;
}

// Dispatches messages one at a time until the load ends; the number of messages it took. One at a time,
// since a whole pump keeps finding the next piece's timer due and could take the load in one round.
int untilLoaded(QuillonTestApp& app)
{
    int rounds = 0;
    MSG msg;
    for (DWORD start = GetTickCount(); app.doc()->loading() && GetTickCount() - start < 120000;) {
        if (!PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE)) {
            Sleep(5);
            continue;
        }
        ++rounds;
        TranslateMessage(&msg);
        DispatchMessageW(&msg);
    }
    return rounds;
}

struct Placement {
    DWORD start = 0, end = 0;
    LRESULT firstLine = 0;
};

Placement placement(HWND edit)
{
    Placement p;
    SendMessageW(edit, EM_GETSEL, reinterpret_cast<WPARAM>(&p.start), reinterpret_cast<LPARAM>(&p.end));
    p.firstLine = SendMessageW(edit, EM_GETFIRSTVISIBLELINE, 0, 0);
    return p;
}

const unsigned wholeTextCommands[] = {ID_FILE_SAVE,          ID_FILE_SAVE_AS, ID_FILE_PRINT,    ID_FILE_PRINT_DIRECT,
                                      ID_FILE_PRINT_PREVIEW, ID_EDIT_FIND,    ID_EDIT_GOTO_LINE};

TEST(TextLoader, ABigFileArrivesFromTheLoopWithProgressAndEndsWithTheCaretAtTheEnd)
{
    wt::clearSettings(L"quillonTests-loader");
    QuillonTestApp app(L"quillonTests-loader");
    const std::string log = bigLog();
    const std::wstring whole = shownText(log);
    const std::wstring path = qw::scratchFile("loader-whole", L"big.log", log);
    ASSERT_NE(app.openDocumentFile(path), nullptr);

    HWND edit = app.view()->hwnd();
    const std::wstring first = app.view()->text();
    ASSERT_TRUE(app.doc()->loading()) << "a text of many pieces is still arriving";
    EXPECT_FALSE(first.empty());
    EXPECT_LT(first.size(), whole.size());
    EXPECT_EQ(whole.compare(0, first.size(), first), 0) << "the first piece is the start of the text";
    EXPECT_EQ(app.mainFrame()->messageText().rfind(L"Opening big.log: ", 0), 0u)
        << wt::narrow(app.mainFrame()->messageText());
    EXPECT_TRUE(app.mainFrame()->backgroundWork());
    for (unsigned id : wholeTextCommands)
        EXPECT_FALSE(enabled(app, id)) << "command " << id << " waits for the whole text";
    EXPECT_TRUE(enabled(app, ID_EDIT_SELECT_ALL)) << "the rest of the commands stay";
    // a greyed command reached through its accelerator does nothing
    SendMessageW(app.mainFrame()->hwnd(), WM_COMMAND, ID_FILE_SAVE_AS, 0);
    EXPECT_TRUE(app.fileDialogsOpened.empty());

    EXPECT_GT(untilLoaded(app), 1) << "the pieces came from the message loop";
    ASSERT_FALSE(app.doc()->loading());
    EXPECT_EQ(app.view()->text(), whole);
    const Placement end = placement(edit);
    EXPECT_EQ(end.start, whole.size());
    EXPECT_EQ(end.end, whole.size()) << "the caret at the end, as an append leaves it";
    EXPECT_GT(end.firstLine, 0) << "and in view";
    EXPECT_FALSE(app.doc()->isModified()) << "the loader's appends are not edits";
    EXPECT_EQ(app.mainFrame()->messageText(), winText::load(winFrame::idleMessageId)) << "the message pane as before";
    EXPECT_FALSE(app.mainFrame()->backgroundWork());
    for (unsigned id : wholeTextCommands)
        EXPECT_TRUE(enabled(app, id)) << "command " << id;
    EXPECT_TRUE(app.boxes.empty());
}

TEST(TextLoader, TheCaretAndScrollTheUserChoseDuringTheLoadStay)
{
    wt::clearSettings(L"quillonTests-loader");
    QuillonTestApp app(L"quillonTests-loader");
    const std::string log = bigLog();
    ASSERT_NE(app.openDocumentFile(qw::scratchFile("loader-moved", L"big.log", log)), nullptr);
    ASSERT_TRUE(app.doc()->loading());
    HWND edit = app.view()->hwnd();
    SendMessageW(edit, EM_SETSEL, 5, 12);
    SendMessageW(edit, EM_LINESCROLL, 0, 3);
    const Placement chosen = placement(edit);
    ASSERT_EQ(chosen.firstLine, 3);
    untilLoaded(app);
    EXPECT_EQ(app.view()->text(), shownText(log));
    const Placement after = placement(edit);
    EXPECT_EQ(after.start, 5u);
    EXPECT_EQ(after.end, 12u);
    EXPECT_EQ(after.firstLine, 3);
}

TEST(TextLoader, AStoppedLoadKeepsItsPartAndASaveOverTheFileAsks)
{
    wt::clearSettings(L"quillonTests-loader");
    QuillonTestApp app(L"quillonTests-loader");
    const std::string log = bigLog();
    const std::wstring path = qw::scratchFile("loader-stopped", L"big.log", log);
    ASSERT_NE(app.openDocumentFile(path), nullptr);
    // the first piece is in; pumping here could let the timer bring in all the rest on a fast machine
    ASSERT_TRUE(app.doc()->loading());
    app.doc()->stopLoading();
    ASSERT_FALSE(app.doc()->loading());
    const std::wstring part = app.view()->text();
    EXPECT_LT(part.size(), shownText(log).size());
    EXPECT_EQ(shownText(log).compare(0, part.size(), part), 0);
    for (int i = 0; i < 20; ++i)
        app.pumpMessages(), Sleep(10);
    EXPECT_EQ(app.view()->text(), part) << "nothing arrives after the stop";
    EXPECT_FALSE(app.mainFrame()->backgroundWork());

    app.answers = {IDCANCEL};
    SendMessageW(app.mainFrame()->hwnd(), WM_COMMAND, ID_FILE_SAVE, 0);
    ASSERT_EQ(app.boxes.size(), 1u) << "a save over the file asks first";
    EXPECT_NE(app.boxes[0].text.find(qwzMessage(IDS_SAVE_ALTERS_PARTIAL)), std::wstring::npos)
        << wt::narrow(app.boxes[0].text);
    EXPECT_EQ(wt::readWide(path), log) << "Cancel wrote nothing";
}

TEST(TextLoader, ClosingDuringALoadAsksNothingOfAnUneditedDocument)
{
    wt::clearSettings(L"quillonTests-loader");
    QuillonTestApp app(L"quillonTests-loader");
    ASSERT_NE(app.openDocumentFile(qw::scratchFile("loader-close", L"big.log", bigLog())), nullptr);
    ASSERT_TRUE(app.doc()->loading());
    HWND frame = app.mainFrame()->hwnd();
    SendMessageW(frame, WM_CLOSE, 0, 0);
    EXPECT_TRUE(app.boxes.empty());
    EXPECT_FALSE(IsWindow(frame));
    MSG msg;
    while (PeekMessageW(&msg, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE)) {
    }
}

// The growing log's appends: small texts go in at once at the end, and an LF that comes after a CR
// completes that line end instead of making a second one.
TEST(TextLoader, AppendedTextEndsUpAtTheEndAndCompletesACrLf)
{
    wt::clearSettings(L"quillonTests-loader");
    QuillonTestApp app(L"quillonTests-loader");
    ASSERT_NE(app.openDocumentFile(qw::scratchFile("loader-append", L"tail.log", "first\r")), nullptr);
    app.doc()->appendText("\nsecond\n");
    EXPECT_FALSE(app.doc()->loading());
    EXPECT_EQ(app.view()->text(), L"first\r\nsecond\r\n");
    const Placement p = placement(app.view()->hwnd());
    EXPECT_EQ(p.start, 15u);
    EXPECT_EQ(p.end, 15u);
    EXPECT_FALSE(app.doc()->isModified());
}

} // namespace
