// The edit channel: every text is appended at the end with CR-LF line ends, whatever the user selected,
// and cannot be undone; a file's text fills the view and leaves it editable.
#include "quillonTestApp.h"

#include "document/qwzCEditOutput.h"
#include "document/qwzEditText.h"

#include <cstring>

#include <gtest/gtest.h>

namespace
{

using qw::QuillonTestApp;

struct Append {
    const char* written;
    std::wstring appended;
};

TEST(EditOutput, AppendsWithCrLfLineEnds)
{
    const Append cases[] = {
        {"a\nb", L"a\r\nb"}, {"a\r\nb", L"a\r\nb"}, {"\n", L"\r\n"}, {"x\r", L"x\r"}, {"\xE2\x82\xAC\n", L"\u20AC\r\n"},
        {"", L""},           {nullptr, L""}, // a null string appends nothing
    };
    QuillonTestApp app(L"quillonTests-output");
    ASSERT_NE(app.openDocumentFile(L""), nullptr);
    for (const auto& c : cases) {
        app.view()->setText(L"start");
        qwzCEditOutput(app.view()).write(utString(c.written));
        EXPECT_EQ(app.view()->text(), L"start" + c.appended) << "written: " << (c.written ? c.written : "<null>");
    }
}

TEST(EditOutput, TextIsAppendedAtTheEndAndTheUsersSelectionIsDropped)
{
    QuillonTestApp app(L"quillonTests-output");
    ASSERT_NE(app.openDocumentFile(L""), nullptr);
    app.view()->setText(L"hello world");
    app.view()->setSelection(0, 5);
    qwzCEditOutput(app.view()).write(utString("!\n"));
    EXPECT_EQ(app.view()->text(), L"hello world!\r\n");
    size_t start = 0, end = 0;
    app.view()->selection(start, end);
    EXPECT_EQ(start, 14u);
    EXPECT_EQ(end, 14u);
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
