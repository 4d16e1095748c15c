// The link control in a real rich-edit window: anchors become blue underlined link text, the last
// anchor is the link, the cursor is a hand over it only, and a left-button release opens its target when
// it is a web or mail address. Without its library, a dialog that holds one says so instead of failing
// silently.
#include "quillonTestApp.h"

#include "app/qwzCDialog.h"
#include "app/qwzCStaticWithLink.h"
#include "app/qwzCText.h"
#include "resourceIds.h"

#include <gtest/gtest.h>

#include <richedit.h>

#include <string>
#include <vector>

namespace
{

// Records what would have been opened instead of starting a browser.
class RecordingLink : public qwzCStaticWithLink
{
public:
    std::vector<std::string> opened;

protected:
    void openLink(const utString& url) override
    {
        opened.push_back(url.str());
    }
};

class LinkControl : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(qwzCStaticWithLink::loadLibrary());
        host_ = CreateWindowExW(0, L"STATIC", L"host", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 500, 200, nullptr,
                                nullptr, GetModuleHandleW(nullptr), nullptr);
        control_ = CreateWindowExW(0, MSFTEDIT_CLASS, L"", WS_CHILD | WS_VISIBLE | ES_MULTILINE | ES_READONLY, 10, 10,
                                   460, 140, host_, reinterpret_cast<HMENU>(100), GetModuleHandleW(nullptr), nullptr);
        ASSERT_NE(control_, nullptr);
        ASSERT_TRUE(link_.attach(control_));
    }
    void TearDown() override
    {
        if (host_)
            DestroyWindow(host_);
    }

    // Effects and colour of the character at `position`.
    CHARFORMAT2W formatAt(LONG position)
    {
        SendMessageW(control_, EM_SETSEL, static_cast<WPARAM>(position), position + 1);
        CHARFORMAT2W format = {};
        format.cbSize = sizeof format;
        format.dwMask = CFM_COLOR | CFM_UNDERLINE | CFM_LINK;
        SendMessageW(control_, EM_GETCHARFORMAT, SCF_SELECTION, reinterpret_cast<LPARAM>(&format));
        return format;
    }

    LRESULT notify(UINT mouseMessage, bool& handled)
    {
        ENLINK link = {};
        link.nmhdr.hwndFrom = control_;
        link.nmhdr.idFrom = 100;
        link.nmhdr.code = EN_LINK;
        link.msg = mouseMessage;
        link.chrg = {link_.linkStart(), link_.linkEnd()};
        LRESULT result = -1;
        handled = link_.handleNotify(link.nmhdr, result);
        return result;
    }

    HWND host_ = nullptr;
    HWND control_ = nullptr;
    RecordingLink link_;
};

TEST_F(LinkControl, AnAnchorBecomesBlueUnderlinedLinkText)
{
    // the anchor's range and target are the parser's unit test, in UTF-16 units the next test's
    link_.setText(utString("Get it <a href=\"target\">here</a>."));
    EXPECT_EQ(qw::textOf(control_), L"Get it here.");
    CHARFORMAT2W link = formatAt(8);
    EXPECT_TRUE(link.dwEffects & CFE_UNDERLINE);
    EXPECT_TRUE(link.dwEffects & CFE_LINK);
    EXPECT_EQ(link.crTextColor, RGB(0, 0, 255));
    CHARFORMAT2W plain = formatAt(2);
    EXPECT_FALSE(plain.dwEffects & CFE_UNDERLINE);
    EXPECT_FALSE(plain.dwEffects & CFE_LINK);
    CHARFORMAT2W after = formatAt(11);
    EXPECT_FALSE(after.dwEffects & CFE_LINK) << "the closing tag restores the default format";
    const RECT& r = link_.linkRect();
    EXPECT_TRUE(r.left > 0 && r.right > r.left && r.top == 0 && r.bottom > r.top)
        << r.left << " " << r.top << " " << r.right << " " << r.bottom;
    EXPECT_TRUE(SendMessageW(control_, EM_GETEVENTMASK, 0, 0) & ENM_LINK);

    link_.setText(utString("first line\r\n<a href=\"x\">link</a>"));
    EXPECT_GT(link_.linkRect().top, 0) << "a link on the second line is measured below the first";
    EXPECT_EQ(link_.linkRect().left, 0);
    link_.setText(utString("plain text"));
    EXPECT_EQ(link_.url().str(), "");
    const RECT none = {};
    EXPECT_TRUE(EqualRect(&link_.linkRect(), &none)) << "without an anchor there is no link rectangle";
}

TEST_F(LinkControl, PositionsCountUtf16CharactersAndTheLastAnchorWins)
{
    link_.setText(utString("\xC3\xA4\xF0\x9F\x98\x80 <b>x</b> <a href=\"one\">1</a> <a href=\"two\">zwei</a>"));
    EXPECT_EQ(qw::textOf(control_), L"\u00e4\U0001F600 x 1 zwei");
    EXPECT_EQ(link_.url().str(), "two");
    EXPECT_EQ(link_.linkStart(), 8);
    EXPECT_EQ(link_.linkEnd(), 12);
    EXPECT_TRUE(formatAt(6).dwEffects & CFE_LINK) << "the first anchor is drawn as a link too";
    EXPECT_FALSE(formatAt(4).dwEffects & CFE_UNDERLINE) << "a dropped tag's contents are plain";
}

// A press, a move or the right button opens nothing; the left button's release opens a web or mail
// target as written, and no other.
TEST_F(LinkControl, OnlyTheLeftButtonsReleaseOpensAWebOrMailTarget)
{
    const std::pair<const char*, bool> targets[] = {
        {"https://example.invalid/q?a=1", true},
        {"HTTP://example.invalid/", true},
        {"mailto:someone@example.invalid", true},
        {"file:///C:/windows/system32/calc.exe", false},
        {"javascript:alert(1)", false},
        {"C:\\windows\\notepad.exe", false},
        {"calc", false},
        {"httpx://example.invalid/", false},
        {"", false},
    };
    for (const auto& [target, opens] : targets) {
        link_.opened.clear();
        link_.setText(utString(("Get it <a href=\"" + std::string(target) + "\">here</a>.").c_str()));
        bool handled = false;
        for (UINT message : {WM_LBUTTONDOWN, WM_MOUSEMOVE, WM_RBUTTONUP, WM_LBUTTONUP}) {
            EXPECT_TRUE(link_.opened.empty()) << target << ": opened before the left button's release";
            EXPECT_EQ(notify(message, handled), 0) << target;
            EXPECT_TRUE(handled) << target;
        }
        EXPECT_EQ(link_.opened, opens ? std::vector<std::string>{target} : std::vector<std::string>{}) << target;
    }
    NMHDR other = {control_, 100, EN_SELCHANGE};
    LRESULT result = 0;
    EXPECT_FALSE(link_.handleNotify(other, result)) << "other notifications are not the link's";
}

TEST_F(LinkControl, TheCursorIsAHandOverTheLinkOnly)
{
    link_.setText(utString("Get it <a href=\"target\">here</a>."));
    RECT window;
    GetWindowRect(control_, &window);
    const RECT& r = link_.linkRect();
    HCURSOR hand = LoadCursorW(nullptr, MAKEINTRESOURCEW(32649));
    HCURSOR arrow = LoadCursorW(nullptr, MAKEINTRESOURCEW(32512));

    SetCursorPos(window.left + (r.left + r.right) / 2, window.top + (r.top + r.bottom) / 2);
    EXPECT_TRUE(SendMessageW(control_, WM_SETCURSOR, reinterpret_cast<WPARAM>(control_), HTCLIENT));
    EXPECT_EQ(GetCursor(), hand);
    SetCursorPos(window.left + r.right + 40, window.top + r.bottom + 40);
    EXPECT_TRUE(SendMessageW(control_, WM_SETCURSOR, reinterpret_cast<WPARAM>(control_), HTCLIENT));
    EXPECT_EQ(GetCursor(), arrow);
}

// A dialog of Quillon's that cannot be made: the rich-edit library named when it is the missing piece,
// the system's error otherwise; never a silent nothing.
class UnmakeableDialog : public qwzCDialog
{
public:
    UnmakeableDialog(bool richEdit, winServices& services) : qwzCDialog(wt::unmakeableDialog, nullptr, &services)
    {
        usesRichEdit = richEdit;
    }
};

TEST(LinkDialog, ADialogThatCannotBeMadeTellsTheUserWhy)
{
    const struct {
        const char* what;
        bool usesRichEdit, libraryLoaded;
        bool namesTheLibrary;
    } cases[] = {
        {"link dialog, library missing", true, false, true},
        {"link dialog, library there", true, true, false},
        {"other dialog, library missing", false, false, false},
    };
    for (const auto& c : cases) {
        qw::QuillonTestApp app(L"quillonTests-links");
        ASSERT_EQ(qwzCStaticWithLink::loadLibrary(c.libraryLoaded ? L"Msftedit.dll" : L"quillon-no-such-library.dll"),
                  c.libraryLoaded);
        UnmakeableDialog dialog(c.usesRichEdit, app);
        EXPECT_EQ(dialog.doModal(), -1) << c.what;
        qwzCStaticWithLink::loadLibrary();
        ASSERT_EQ(app.boxes.size(), 1u) << c.what;
        EXPECT_EQ(app.boxes[0].type & MB_ICONMASK, UINT(MB_ICONERROR)) << c.what;
        std::wstring needsLibrary = qwzMessage(IDS_DIALOG_NEEDS_RICHEDIT);
        EXPECT_EQ(app.boxes[0].text == needsLibrary, c.namesTheLibrary)
            << c.what << ": " << wt::narrow(app.boxes[0].text);
        if (!c.namesTheLibrary) {
            std::wstring failed = qwzMessage(IDS_DIALOG_FAILED, 0ul);
            EXPECT_EQ(app.boxes[0].text.rfind(failed.substr(0, failed.find(L'0')), 0), 0u)
                << c.what << ": the system's error, not " << wt::narrow(app.boxes[0].text);
        }
    }
}

} // namespace
