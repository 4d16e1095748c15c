// Dialogs: the integer exchange accepts integers and refuses anything else with "Enter an integer.",
// keeping the dialog open with the field selected (Go To Line runs it modally, with Cancel); the
// framework's texts fill their inserts. Translation of dialogs is checked on Quillon's, in German.
#include "winTestApp.h"

#include "resourceIds.h"
#include "win/winDataExchange.h"
#include "win/winDialog.h"
#include "win/winText.h"

#include <gtest/gtest.h>

#include <climits>

namespace
{

class IntDialog : public winDialog
{
public:
    int value = 7;
    IntDialog() : winDialog(wt::intDialog) {}

protected:
    void doDataExchange(winDataExchange& dx) override
    {
        dx.exchangeInt(wt::intField, value);
    }
};

TEST(DialogTest, ParseIntAcceptsIntegersOnly)
{
    const std::pair<const wchar_t*, long long> cases[] = {
        {L"12", 12},
        {L" 12 ", 12},
        {L"-3", -3},
        {L"+4", 4},
        {L"0", 0},
        {L"2147483647", INT_MAX},
        {L"-2147483648", INT_MIN},
        {L"12a", LLONG_MIN},
        {L"", LLONG_MIN},
        {L" ", LLONG_MIN},
        {L"-", LLONG_MIN},
        {L"2147483648", LLONG_MIN},
        {L"1 2", LLONG_MIN},
        {L"0x10", LLONG_MIN},
        {L"99999999999999999999", LLONG_MIN},
        {L"\u0661", LLONG_MIN},
    };
    for (const auto& [text, expected] : cases) {
        int v = 99;
        bool ok = winDataExchange::parseInt(text, v);
        if (expected == LLONG_MIN) {
            EXPECT_FALSE(ok) << wt::narrow(text);
            EXPECT_EQ(v, 99) << wt::narrow(text);
        } else {
            EXPECT_TRUE(ok) << wt::narrow(text);
            EXPECT_EQ(v, expected) << wt::narrow(text);
        }
    }
}

TEST(DialogTest, OkRefusesANonIntegerWithTheFieldSelectedAndTakesAnInteger)
{
    wt::TestApp app(L"winTests-dialog");
    IntDialog dlg;
    ASSERT_TRUE(dlg.create());
    EXPECT_EQ(wt::narrow(dlg.itemText(wt::intField)), "7") << "the member went into the field";

    dlg.setItemText(wt::intField, L"12a");
    SendMessageW(dlg.hwnd(), WM_COMMAND, IDOK, 0);
    ASSERT_EQ(app.boxes.size(), 1u);
    EXPECT_EQ(wt::narrow(app.boxes[0].text), "Enter an integer.");
    ASSERT_NE(dlg.hwnd(), nullptr);
    EXPECT_TRUE(IsWindow(dlg.hwnd()));
    EXPECT_EQ(dlg.value, 7);
    DWORD s = 0, e = 0;
    SendDlgItemMessageW(dlg.hwnd(), wt::intField, EM_GETSEL, reinterpret_cast<WPARAM>(&s),
                        reinterpret_cast<LPARAM>(&e));
    EXPECT_EQ(s, 0u);
    EXPECT_EQ(e, 3u) << "the refused text is selected";
    EXPECT_EQ(GetFocus(), GetDlgItem(dlg.hwnd(), wt::intField));

    dlg.setItemText(wt::intField, L"12");
    SendMessageW(dlg.hwnd(), WM_COMMAND, IDOK, 0);
    EXPECT_EQ(app.boxes.size(), 1u);
    EXPECT_EQ(dlg.value, 12);
    EXPECT_EQ(dlg.result(), IDOK);
    EXPECT_EQ(dlg.hwnd(), nullptr);
}

// The framework's own texts take numbered inserts, each once, and nothing else is an insert.
TEST(DialogTest, FrameworkTextsFillTheirNumberedInserts)
{
    EXPECT_EQ(wt::narrow(winText::format(L"%1 %% %2 %3 %n %s %", {L"a%1", L"b"})), "a%1 % b %3 %n %s %");
}

} // namespace
