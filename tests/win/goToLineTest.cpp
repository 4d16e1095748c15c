// Go To Line through the view's command: the dialog opens with the caret's line and the range label,
// and the caret moves to the start of the chosen display line, with no range check.
#include "quillonTestApp.h"

#include "document/qwzCGoToLineDlg.h"
#include "res/resource.h"

#include <gtest/gtest.h>

namespace
{

using qw::QuillonTestApp;

std::wstring tenLines()
{
    std::wstring text;
    for (int i = 1; i <= 10; ++i)
        text += L"line " + std::to_wstring(i) + (i < 10 ? L"\r\n" : L"");
    return text;
}

size_t caret(QuillonTestApp& app)
{
    size_t start = 0, end = 0;
    app.view()->selection(start, end);
    EXPECT_EQ(start, end) << "an empty selection";
    return start;
}

struct Seen {
    std::wstring label;
    std::wstring field;
};

// Runs Go To with the caret at `from`, types `typed` and presses OK (or Cancel when `ok` is false).
Seen goTo(QuillonTestApp& app, size_t from, const std::wstring& typed, bool ok = true)
{
    app.view()->setSelection(from, from);
    Seen seen;
    qw::whileModal([&] { app.mainFrame()->routeCommand(qwzCQuillonView::goToLineCommand); },
                   [&](HWND dialog) {
                       seen.label = qw::textOf(GetDlgItem(dialog, IDC_GOTO_LINE_LABEL));
                       seen.field = qw::textOf(GetDlgItem(dialog, IDC_GOTO_LINE_NUMBER));
                       SetDlgItemTextW(dialog, IDC_GOTO_LINE_NUMBER, typed.c_str());
                       SendMessageW(dialog, WM_COMMAND, ok ? IDOK : IDCANCEL, 0);
                   });
    return seen;
}

struct Move {
    const wchar_t* typed;
    size_t from;
    const wchar_t* offered; // the caret's line, which the dialog opens with
    size_t to;
    const char* why;
};

TEST(GoToLine, OffersTheCaretsLineAndMovesTheCaretToTheStartOfTheLineUnchecked)
{
    const Move cases[] = {
        {L"1", 30, L"4", 0, "line 1 is the very start"},
        {L"10", 0, L"1", 72, "the last line"},
        {L"3", 18, L"3", 16, "the start of the caret's own line"},
        {L"4", 0, L"1", 24, "a line in the middle"},
        {L"0", 30, L"4", 24, "0 asks the control for line -1: the caret's own line"},
        {L"99", 30, L"4", 30, "past the end: the control answers -1 and the caret stays"},
        {L" 2 ", 0, L"1", 8, "blanks around the number are accepted"},
    };
    QuillonTestApp app(L"quillonTests-goto");
    ASSERT_NE(app.openDocumentFile(L""), nullptr);
    app.view()->setText(tenLines());
    for (const auto& c : cases) {
        Seen seen = goTo(app, c.from, c.typed);
        EXPECT_EQ(wt::narrow(seen.label), "Line Number (1-10):") << c.why;
        EXPECT_EQ(seen.field, c.offered) << c.why;
        EXPECT_EQ(caret(app), c.to) << c.why;
        EXPECT_TRUE(app.boxes.empty()) << c.why << ": no range check";
    }
}

TEST(GoToLine, CancelLeavesTheSelectionAndAnEmptyViewOffersLineOne)
{
    QuillonTestApp app(L"quillonTests-goto");
    ASSERT_NE(app.openDocumentFile(L""), nullptr);
    Seen empty = goTo(app, 0, L"1", false);
    EXPECT_EQ(empty.label, L"Line Number (1-1):");
    EXPECT_EQ(empty.field, L"1");

    app.view()->setText(tenLines());
    app.view()->setSelection(3, 9);
    qw::whileModal([&] { app.mainFrame()->routeCommand(qwzCQuillonView::goToLineCommand); },
                   [&](HWND dialog) {
                       SetDlgItemTextW(dialog, IDC_GOTO_LINE_NUMBER, L"7");
                       SendMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
                   });
    size_t start = 0, end = 0;
    app.view()->selection(start, end);
    EXPECT_EQ(start, 3u);
    EXPECT_EQ(end, 9u);
}

// The integer exchange refuses anything but an integer: the dialog stays open with the refused text
// selected, and takes an integer after that.
TEST(GoToLine, NotAnIntegerKeepsTheDialogOpenWithTheTextSelected)
{
    QuillonTestApp app(L"quillonTests-goto");
    ASSERT_NE(app.openDocumentFile(L""), nullptr);
    app.view()->setText(tenLines());
    bool stillOpen = false, focused = false;
    DWORD start = 0, end = 0;
    qw::whileModal([&] { app.mainFrame()->routeCommand(qwzCQuillonView::goToLineCommand); },
                   [&](HWND dialog) {
                       HWND field = GetDlgItem(dialog, IDC_GOTO_LINE_NUMBER);
                       SetWindowTextW(field, L"3x");
                       SendMessageW(dialog, WM_COMMAND, IDOK, 0);
                       stillOpen = IsWindow(dialog) && IsWindowVisible(dialog);
                       SendMessageW(field, EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
                       focused = GetFocus() == field;
                       SetWindowTextW(field, L"3");
                       SendMessageW(dialog, WM_COMMAND, IDOK, 0);
                   });
    EXPECT_TRUE(stillOpen);
    EXPECT_EQ(std::vector<DWORD>({start, end}), std::vector<DWORD>({0, 2})) << "the refused text is selected";
    EXPECT_TRUE(focused);
    ASSERT_EQ(app.boxes.size(), 1u);
    EXPECT_EQ(wt::narrow(app.boxes[0].text), "Enter an integer.");
    EXPECT_EQ(caret(app), 16u) << "the integer typed after it was taken";
}

TEST(GoToLine, LinesAreDisplayLinesWhenTextWraps)
{
    QuillonTestApp app(L"quillonTests-goto");
    ASSERT_NE(app.openDocumentFile(L""), nullptr);
    SetWindowPos(app.mainFrame()->hwnd(), nullptr, 0, 0, 400, 300, SWP_NOZORDER);
    app.view()->setText(std::wstring(500, L'w') + L"\r\nnext");
    LRESULT second = SendMessageW(app.view()->hwnd(), EM_LINEINDEX, 1, 0);
    ASSERT_GT(second, 0);
    ASSERT_LT(second, 500) << "the first file line wraps";
    goTo(app, 0, L"2");
    EXPECT_EQ(caret(app), static_cast<size_t>(second));
}

} // namespace
