// The edit view as a user meets it: big texts are not cut, word wrap without a horizontal scroll bar,
// the edit commands, and Find (next, up, down, match case, whole word) selecting the right range and
// saying "Cannot find" in the system's message box.
#include "winTestApp.h"

#include <gtest/gtest.h>

#include <thread>

namespace
{

struct ViewFixture {
    wt::TestApp app{L"winTests-view"};
    winEditView* view = nullptr;
    HWND frame = nullptr;
    ViewFixture()
    {
        if (app.openDocumentFile(L"")) {
            view = app.mainFrame()->activeView();
            frame = app.mainFrame()->hwnd();
        }
    }
    std::pair<size_t, size_t> sel() const
    {
        size_t s = 0, e = 0;
        view->selection(s, e);
        return {s, e};
    }
};

TEST(EditViewTest, BigTextsAreNotCutAndTheStyleWraps)
{
    ViewFixture f;
    ASSERT_NE(f.view, nullptr);
    LONG style = GetWindowLongW(f.view->hwnd(), GWL_STYLE);
    EXPECT_FALSE(style & WS_HSCROLL);
    EXPECT_FALSE(style & ES_AUTOHSCROLL);
    EXPECT_TRUE(style & WS_VSCROLL);
    EXPECT_TRUE(style & ES_MULTILINE);

    std::wstring big(200000, L'x');
    for (size_t i = 80; i < big.size(); i += 81)
        big[i] = L'\n';
    // EM_REPLACESEL honours the limit (typing and output channels use it)
    SendMessageW(f.view->hwnd(), EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(big.c_str()));
    EXPECT_EQ(f.view->textLength(), big.size());
    EXPECT_EQ(f.view->text().size(), big.size());
    ASSERT_TRUE(f.view->setText(big + big));
    EXPECT_EQ(f.view->text(), big + big);
}

TEST(EditViewTest, EditCommandsWorkThroughTheClipboardAndUndo)
{
    ViewFixture f;
    ASSERT_NE(f.view, nullptr);
    HWND edit = f.view->hwnd();
    ASSERT_TRUE(f.view->setText(L"hello world"));
    EXPECT_EQ(SendMessageW(edit, EM_CANUNDO, 0, 0), 0) << "a new text has nothing to undo";
    f.view->setSelection(0, 5);
    SendMessageW(f.frame, WM_COMMAND, 57634, 0); // Copy
    f.view->setSelection(11, 11);
    SendMessageW(f.frame, WM_COMMAND, 57637, 0); // Paste
    EXPECT_EQ(wt::narrow(f.view->text()), "hello worldhello");
    SendMessageW(f.frame, WM_COMMAND, 57643, 0); // Undo
    EXPECT_EQ(wt::narrow(f.view->text()), "hello world");
    f.view->setSelection(5, 11);
    SendMessageW(f.frame, WM_COMMAND, 57635, 0); // Cut
    EXPECT_EQ(wt::narrow(f.view->text()), "hello");
    SendMessageW(f.frame, WM_COMMAND, 57642, 0); // Select All
    EXPECT_EQ(f.sel(), (std::pair<size_t, size_t>{0, 5}));
}

struct FindCase {
    const wchar_t* what;
    bool matchCase, wholeWord, down;
    size_t selStart, selEnd;
    long expectStart; // -1: not found, selection unchanged
};

TEST(EditViewTest, FindSelectsTheRightRange)
{
    // "Beta" 0, "beta_x" 14, "BETA" 21, "beta." 27, "Alpha" 33, "beta" 39, length 43
    const wchar_t* text = L"Beta alphabet beta_x BETA\r\nbeta. Alpha beta";
    const FindCase cases[] = {
        {L"beta", false, false, true, 0, 0, 0},     // case-insensitive from the start
        {L"beta", false, false, true, 0, 4, 14},    // next after the selection
        {L"beta", true, false, true, 0, 0, 14},     // match case skips "Beta"
        {L"beta", false, true, true, 0, 4, 21},     // whole word skips "beta_x"
        {L"beta", true, true, true, 0, 4, 27},      // both: "beta." after the line break
        {L"beta", false, false, false, 27, 31, 21}, // up from "beta."
        {L"beta", true, true, false, 39, 43, 27},   // up, whole word, match case
        {L"alpha", false, true, true, 0, 0, 33},    // "alphabet" is not a whole word
        {L"Beta", true, false, false, 0, 4, -1},    // nothing before the start
        {L"gamma", false, false, true, 0, 0, -1},   // not in the text
        {L"beta", false, false, true, 39, 43, -1},  // nothing after the last
        {L"\u00c9T\u00c9", false, false, true, 0, 0, -1},
    };
    ViewFixture f;
    ASSERT_NE(f.view, nullptr);
    f.view->setText(text);
    for (size_t i = 0; i < std::size(cases); ++i) {
        const FindCase& c = cases[i];
        f.view->setSelection(c.selStart, c.selEnd);
        bool found = f.view->findText(c.what, c.matchCase, c.wholeWord, c.down);
        auto [s, e] = f.sel();
        if (c.expectStart < 0) {
            EXPECT_FALSE(found) << "case " << i;
            EXPECT_EQ(s, c.selStart) << "case " << i;
            EXPECT_EQ(e, c.selEnd) << "case " << i;
        } else {
            EXPECT_TRUE(found) << "case " << i;
            EXPECT_EQ(s, size_t(c.expectStart)) << "case " << i;
            EXPECT_EQ(e, size_t(c.expectStart) + wcslen(c.what)) << "case " << i;
        }
    }
}

// Closes the message box captioned `caption` of the UI thread and hands back its text: proves the real
// message box path without leaving a box open. When none comes in time, a WM_QUIT ends whatever modal loop
// the UI thread is in, so that the test fails at once instead of hanging until the run's time-out.
std::wstring closeBoxOf(DWORD uiThread, const std::wstring& caption)
{
    struct Search {
        const std::wstring& caption;
        HWND found;
    };
    for (int tries = 0; tries < 200; ++tries) {
        Search search{caption, nullptr};
        EnumThreadWindows(
            uiThread,
            [](HWND h, LPARAM out) -> BOOL {
                auto* search = reinterpret_cast<Search*>(out);
                wchar_t cls[16] = {}, title[128] = {};
                GetClassNameW(h, cls, 16);
                GetWindowTextW(h, title, 128);
                if (std::wstring(cls) == L"#32770" && title == search->caption && GetDlgItem(h, 0xFFFF)) {
                    search->found = h;
                    return FALSE;
                }
                return TRUE;
            },
            reinterpret_cast<LPARAM>(&search));
        if (search.found) {
            wchar_t text[512] = {};
            GetDlgItemTextW(search.found, 0xFFFF, text, 512);
            PostMessageW(search.found, WM_COMMAND, IDOK, 0);
            return text;
        }
        Sleep(50);
    }
    PostThreadMessageW(uiThread, WM_QUIT, 0, 0);
    return L"<no box within 10 s>";
}

TEST(EditViewTest, FindDialogMessagesSearchAndReportFailureInARealMessageBox)
{
    ViewFixture f;
    ASSERT_NE(f.view, nullptr);
    f.view->setText(L"one two one two");
    SendMessageW(f.frame, WM_COMMAND, 57636, 0);
    ASSERT_NE(f.view->findDialog(), nullptr);

    wchar_t what[] = L"two";
    FINDREPLACEW fr = {};
    fr.lStructSize = sizeof fr;
    fr.Flags = FR_FINDNEXT | FR_DOWN;
    fr.lpstrFindWhat = what;
    SendMessageW(f.frame, winEditView::findMessage(), 0, reinterpret_cast<LPARAM>(&fr));
    EXPECT_EQ(f.sel(), (std::pair<size_t, size_t>{4, 7}));
    SendMessageW(f.frame, winEditView::findMessage(), 0, reinterpret_cast<LPARAM>(&fr));
    EXPECT_EQ(f.sel(), (std::pair<size_t, size_t>{12, 15}));
    EXPECT_TRUE(f.app.boxes.empty());

    // nothing after the last: the system's own message box says so, and closes
    f.app.realBoxes = true;
    std::wstring seen;
    DWORD ui = GetCurrentThreadId();
    std::thread closer([&] { seen = closeBoxOf(ui, f.app.appName()); });
    SendMessageW(f.frame, winEditView::findMessage(), 0, reinterpret_cast<LPARAM>(&fr));
    closer.join();
    MSG quit;
    while (PeekMessageW(&quit, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE)) {
    }
    EXPECT_EQ(wt::narrow(seen), "Cannot find \"two\"");
    ASSERT_EQ(f.app.boxes.size(), 1u);
    EXPECT_EQ(f.app.boxes[0].type & MB_ICONMASK, UINT(MB_ICONINFORMATION));
    EXPECT_EQ(f.sel(), (std::pair<size_t, size_t>{12, 15})) << "the last match stays selected";

    fr.Flags = FR_DIALOGTERM;
    SendMessageW(f.frame, winEditView::findMessage(), 0, reinterpret_cast<LPARAM>(&fr));
    EXPECT_EQ(f.view->findDialog(), nullptr);
}

} // namespace
