// The edit channel: every text is appended at the end (its line ends and UTF-8 as the edit text's unit
// test says), whatever the user selected,
// and cannot be undone; a file's text fills the view and leaves it editable.
#include "quillonTestApp.h"

#include "document/qwzCEditOutput.h"
#include "document/qwzEditText.h"

#include <cstring>

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
    size_t start = 0, end = 0;
    app.view()->selection(start, end);
    EXPECT_EQ(start, 15u);
    EXPECT_EQ(end, 15u);
    EXPECT_FALSE(SendMessageW(app.view()->hwnd(), EM_CANUNDO, 0, 0)) << "the insertion cannot be undone";
}

std::unique_ptr<char[]> bytesOf(const std::string& text)
{
    std::unique_ptr<char[]> bytes(new char[text.size() + 1]);
    std::memcpy(bytes.get(), text.c_str(), text.size() + 1);
    return bytes;
}

TEST(EditOutput, FileTextFillsAnEmptyViewOrIsAppendedAndStaysEditable)
{
    const std::string file = "\xC3\xA4 one\ntwo";
    const std::wstring shown = L"\u00e4 one\r\ntwo";
    for (const std::wstring& before : {std::wstring(), std::wstring(L"kept ")}) {
        QuillonTestApp app(L"quillonTests-output");
        ASSERT_NE(app.openDocumentFile(L""), nullptr);
        app.view()->setText(before);
        size_t units = qwzEditText::unitCount(file.data(), file.size());
        ASSERT_TRUE(qwzCEditOutput(app.view()).writeFileText(bytesOf(file), file.size(), units));
        EXPECT_EQ(app.view()->text(), before + shown);
        size_t start = 0, end = 0;
        app.view()->selection(start, end);
        EXPECT_EQ(start, before.size() + shown.size()) << "the caret is at the end";
        SendMessageW(app.view()->hwnd(), EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(L"!"));
        EXPECT_EQ(app.view()->text(), before + shown + L"!") << "the control still takes typing";
        qwzCEditOutput(app.view()).write(utString("\nmore"));
        EXPECT_EQ(app.view()->text(), before + shown + L"!\r\nmore");
    }
}

} // namespace
