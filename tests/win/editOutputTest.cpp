// The edit channel: every text is appended at the end (its line ends and UTF-8 as the edit text's unit
// test says), whatever the user selected, and cannot be undone. (A file's text filling the view is the
// document's open, checked with the document.)
#include "quillonTestApp.h"

#include "document/qwzCEditOutput.h"

#include <gtest/gtest.h>

namespace
{

using qw::QuillonTestApp;

TEST(EditOutput, TextIsAppendedAtTheEndAndTheUsersSelectionIsDropped)
{
    QuillonTestApp app(L"quillonTests-output");
    ASSERT_NE(app.openDocumentFile(L""), nullptr);
    app.view()->setText(L"hello world");
    app.view()->setSelection(0, 5);
    qwzCEditOutput(app.view()).write(utString("\xE2\x82\xAC!\n"));
    qwzCEditOutput(app.view()).write(utString());
    EXPECT_EQ(app.view()->text(), L"hello world\u20AC!\r\n") << "converted as the edit text's unit test says";
    EXPECT_EQ(wt::selection(*app.view()), (std::pair<size_t, size_t>(15, 15)));
    EXPECT_FALSE(SendMessageW(app.view()->hwnd(), EM_CANUNDO, 0, 0)) << "the insertion cannot be undone";
}

} // namespace
