// Go To Line through the view's command: the dialog opens with the caret's line and the range label,
// and the caret moves to the start of the chosen display line, with no range check.
#include "quillonTestApp.h"

#include "document/qwzCGoToLineDlg.h"
#include "res/resource.h"

#include <gtest/gtest.h>

namespace
{

using Range = std::pair<size_t, size_t>;

std::wstring tenLines()
{
    std::wstring text;
    for (int i = 1; i <= 10; ++i)
        text += L"line " + std::to_wstring(i) + (i < 10 ? L"\r\n" : L"");
    return text;
}

struct Seen {
    std::wstring label;
    std::wstring field;
};

class GoToLine : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_NE(app.openDocumentFile(L""), nullptr);
        app.view()->setText(tenLines());
    }
    // Runs Go To, types `typed` and presses OK (or Cancel when `ok` is false).
    Seen goTo(const std::wstring& typed, bool ok = true)
    {
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
    Range selection() const
    {
        return wt::selection(*app.view());
    }
    qw::QuillonTestApp app{L"quillonTests-goto"};
};

struct Move {
    const wchar_t* typed;
    size_t from;
    const wchar_t* offered; // the caret's line, which the dialog opens with
    size_t to;
    const char* why;
};

TEST_F(GoToLine, OffersTheCaretsLineAndMovesTheCaretToTheStartOfTheLineUnchecked)
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
    for (const auto& c : cases) {
        app.view()->setSelection(c.from, c.from);
        Seen seen = goTo(c.typed);
        EXPECT_EQ(wt::narrow(seen.label), "Line Number (1-10):") << c.why;
        EXPECT_EQ(seen.field, c.offered) << c.why;
        EXPECT_EQ(selection(), Range(c.to, c.to)) << c.why;
        EXPECT_TRUE(app.boxes.empty()) << c.why << ": no range check";
    }
}

TEST_F(GoToLine, CancelLeavesTheSelectionAndAnEmptyViewOffersLineOne)
{
    app.view()->setSelection(3, 9);
    goTo(L"7", false);
    EXPECT_EQ(selection(), Range(3, 9));

    app.view()->setText(L"");
    Seen empty = goTo(L"1", false);
    EXPECT_EQ(empty.label, L"Line Number (1-1):");
    EXPECT_EQ(empty.field, L"1");
}

// The integer exchange refuses anything but an integer: the dialog stays open with the refused text
// selected, and takes an integer after that.
TEST_F(GoToLine, NotAnIntegerKeepsTheDialogOpenWithTheTextSelected)
{
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
    EXPECT_EQ(selection(), Range(16, 16)) << "the integer typed after it was taken";
}

TEST_F(GoToLine, LinesAreDisplayLinesWhenTextWraps)
{
    SetWindowPos(app.mainFrame()->hwnd(), nullptr, 0, 0, 400, 300, SWP_NOZORDER);
    app.view()->setText(std::wstring(500, L'w') + L"\r\nnext");
    LRESULT second = SendMessageW(app.view()->hwnd(), EM_LINEINDEX, 1, 0);
    ASSERT_GT(second, 0);
    ASSERT_LT(second, 500) << "the first file line wraps";
    app.view()->setSelection(0, 0);
    goTo(L"2");
    EXPECT_EQ(selection(), Range(second, second));
}

} // namespace
