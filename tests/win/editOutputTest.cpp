// The edit channel: every text is appended at the end with CR-LF line ends, whatever the user selected,
// and cannot be undone; long formatted texts arrive whole.
#include "quillonTestApp.h"

#include "document/qwzCEditOutput.h"

#include <gtest/gtest.h>

namespace
{

using qw::QuillonTestApp;

struct Append {
    std::string written;
    std::wstring appended;
};

TEST(EditOutput, AppendsWithCrLfLineEnds)
{
    const Append cases[] = {
        {"a\nb", L"a\r\nb"}, {"a\r\nb", L"a\r\nb"}, {"\n", L"\r\n"}, {"x\r", L"x\r"}, {"\xE2\x82\xAC\n", L"\u20AC\r\n"},
        {"", L""},
    };
    QuillonTestApp app(L"quillonTests-output");
    ASSERT_NE(app.openDocumentFile(L""), nullptr);
    for (const auto& c : cases) {
        app.view()->setText(L"start");
        qwzCEditOutput(app.view()).write(utString(c.written.c_str()));
        EXPECT_EQ(app.view()->text(), L"start" + c.appended) << "written: " << c.written;
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

TEST(EditOutput, FormattedTextLongerThanTheFirstBufferArrivesWhole)
{
    QuillonTestApp app(L"quillonTests-output");
    ASSERT_NE(app.openDocumentFile(L""), nullptr);
    std::string big(10000, 'q');
    qwzCEditOutput output(app.view());
    output.printf(0, "<%s>\n", big.c_str());
    EXPECT_EQ(app.view()->text(), L"<" + std::wstring(10000, L'q') + L">\r\n");
}

TEST(EditOutput, ANullStringAppendsNothing)
{
    QuillonTestApp app(L"quillonTests-output");
    ASSERT_NE(app.openDocumentFile(L""), nullptr);
    app.view()->setText(L"kept");
    qwzCEditOutput(app.view()).write(utString());
    EXPECT_EQ(app.view()->text(), L"kept");
}

} // namespace
