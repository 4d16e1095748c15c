// The edit view as a user meets it: big texts are not cut, word wrap without a horizontal scroll bar,
// the edit commands, and Find (next, up, down, match case, whole word) selecting the right range and
// saying "Cannot find" in the system's message box.
#include "quillonTestApp.h"
#include "resourceIds.h"

#include <gtest/gtest.h>

namespace
{

using wt::selection;
using Range = std::pair<size_t, size_t>;

class EditViewTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_NE(app.openDocumentFile(L""), nullptr);
        view = app.mainFrame()->activeView();
        frame = app.mainFrame()->hwnd();
    }
    wt::TestApp app{L"winTests-view"};
    winEditView* view = nullptr;
    HWND frame = nullptr;
};

TEST_F(EditViewTest, BigTextsAreNotCutAndTheStyleWraps)
{
    LONG style = GetWindowLongW(view->hwnd(), GWL_STYLE);
    EXPECT_EQ(style & (WS_HSCROLL | ES_AUTOHSCROLL | WS_VSCROLL), WS_VSCROLL) << "wrapped: a vertical bar only";

    std::wstring big(200000, L'x');
    for (size_t i = 80; i < big.size(); i += 81)
        big[i] = L'\n';
    // EM_REPLACESEL honours the limit (typing and output channels use it)
    SendMessageW(view->hwnd(), EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(big.c_str()));
    EXPECT_EQ(view->textLength(), big.size());
    EXPECT_EQ(view->text().size(), big.size());
    ASSERT_TRUE(view->setText(big + big));
    EXPECT_EQ(view->text(), big + big);
}

TEST_F(EditViewTest, EditCommandsWorkThroughTheClipboardAndUndo)
{
    ASSERT_TRUE(view->setText(L"hello world"));
    EXPECT_EQ(SendMessageW(view->hwnd(), EM_CANUNDO, 0, 0), 0) << "a new text has nothing to undo";
    view->setSelection(0, 5);
    SendMessageW(frame, WM_COMMAND, ID_EDIT_COPY, 0); // Copy
    view->setSelection(11, 11);
    SendMessageW(frame, WM_COMMAND, ID_EDIT_PASTE, 0); // Paste
    EXPECT_EQ(wt::narrow(view->text()), "hello worldhello");
    SendMessageW(frame, WM_COMMAND, ID_EDIT_UNDO, 0); // Undo
    EXPECT_EQ(wt::narrow(view->text()), "hello world");
    view->setSelection(5, 11);
    SendMessageW(frame, WM_COMMAND, ID_EDIT_CUT, 0); // Cut
    EXPECT_EQ(wt::narrow(view->text()), "hello");
    SendMessageW(frame, WM_COMMAND, ID_EDIT_SELECT_ALL, 0); // Select All
    EXPECT_EQ(selection(*view), Range(0, 5));
}

struct FindCase {
    const wchar_t* what;
    bool matchCase, wholeWord, down;
    size_t selStart, selEnd;
    long expectStart; // -1: not found, selection unchanged
};

TEST_F(EditViewTest, FindSelectsTheRightRange)
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
    view->setText(text);
    for (size_t i = 0; i < std::size(cases); ++i) {
        const FindCase& c = cases[i];
        view->setSelection(c.selStart, c.selEnd);
        bool found = view->findText(c.what, c.matchCase, c.wholeWord, c.down);
        Range expected = c.expectStart < 0 ? Range(c.selStart, c.selEnd)
                                           : Range(size_t(c.expectStart), size_t(c.expectStart) + wcslen(c.what));
        EXPECT_EQ(found, c.expectStart >= 0) << "case " << i;
        EXPECT_EQ(selection(*view), expected) << "case " << i;
    }
}

TEST_F(EditViewTest, FindDialogMessagesSearchAndReportFailureInARealMessageBox)
{
    view->setText(L"one two one two");
    SendMessageW(frame, WM_COMMAND, ID_EDIT_FIND, 0);
    ASSERT_NE(view->findDialog(), nullptr);

    wchar_t what[] = L"two";
    FINDREPLACEW fr = {};
    fr.lStructSize = sizeof fr;
    fr.Flags = FR_FINDNEXT | FR_DOWN;
    fr.lpstrFindWhat = what;
    auto findNext = [&] { SendMessageW(frame, winEditView::findMessage(), 0, reinterpret_cast<LPARAM>(&fr)); };
    findNext();
    EXPECT_EQ(selection(*view), Range(4, 7));
    findNext();
    EXPECT_EQ(selection(*view), Range(12, 15));
    EXPECT_TRUE(app.boxes.empty());

    // nothing after the last: the system's own message box says so, and closes
    app.realBoxes = true;
    std::wstring seen;
    qw::whileModal(findNext, [&](HWND box) {
        EXPECT_EQ(qw::textOf(box), app.appName());
        seen = qw::textOf(GetDlgItem(box, 0xFFFF));
        SendMessageW(box, WM_COMMAND, IDOK, 0);
    });
    EXPECT_EQ(wt::narrow(seen), "Cannot find \"two\"");
    ASSERT_EQ(app.boxes.size(), 1u);
    EXPECT_EQ(app.boxes[0].type & MB_ICONMASK, UINT(MB_ICONINFORMATION));
    EXPECT_EQ(selection(*view), Range(12, 15)) << "the last match stays selected";

    fr.Flags = FR_DIALOGTERM;
    findNext();
    EXPECT_EQ(view->findDialog(), nullptr);
}

} // namespace
