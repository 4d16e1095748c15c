// Dialogs: the integer exchange accepts integers and refuses anything else with "Enter an integer.",
// keeping the dialog open with the field selected; the translation hook replaces non-empty texts.
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
    std::vector<std::wstring> typed; // texts typed in turn, each followed by OK, while modal
    IntDialog() : winDialog(wt::intDialog) {}

protected:
    void doDataExchange(winDataExchange& dx) override
    {
        dx.exchangeInt(wt::intField, value);
    }
    bool OnInitDialog() override
    {
        winDialog::OnInitDialog();
        if (!typed.empty())
            PostMessageW(hwnd(), WM_APP, 0, 0);
        return true;
    }
    INT_PTR HandleMessage(UINT msg, WPARAM wParam, LPARAM lParam) override
    {
        if (msg != WM_APP)
            return winDialog::HandleMessage(msg, wParam, lParam);
        setItemText(wt::intField, typed.front());
        typed.erase(typed.begin());
        if (!typed.empty())
            PostMessageW(hwnd(), WM_APP, 0, 0);
        SendMessageW(hwnd(), WM_COMMAND, IDOK, 0);
        return TRUE;
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

TEST(DialogTest, ModelessOkRefusesNonIntegerAndKeepsTheDialogOpen)
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

    // Cancel keeps the member whatever the field holds
    IntDialog cancelled;
    ASSERT_TRUE(cancelled.create());
    cancelled.setItemText(wt::intField, L"42");
    SendMessageW(cancelled.hwnd(), WM_COMMAND, IDCANCEL, 0);
    EXPECT_EQ(cancelled.result(), IDCANCEL);
    EXPECT_EQ(cancelled.value, 7);
    EXPECT_EQ(app.boxes.size(), 1u) << "Cancel shows no message";
}

TEST(DialogTest, ModalRunReturnsOkOnlyAfterAValidInteger)
{
    wt::TestApp app(L"winTests-dialog");
    IntDialog dlg;
    dlg.typed = {L"12a", L" -12 "};
    EXPECT_EQ(dlg.doModal(), IDOK);
    EXPECT_EQ(dlg.value, -12);
    ASSERT_EQ(app.boxes.size(), 1u);
    EXPECT_EQ(wt::narrow(app.boxes[0].text), "Enter an integer.");
}

std::wstring shout(const std::wstring& text)
{
    return L"[" + text + L"]";
}

TEST(DialogTest, TranslationHookReplacesNonEmptyTextsAndFrameworkMessages)
{
    wt::TestApp app(L"winTests-dialog");
    winApp::setTranslator(shout);
    IntDialog dlg;
    ASSERT_TRUE(dlg.create());
    dlg.setItemText(wt::intField, L"");
    dlg.translateItem(0);
    dlg.translateItem(1002);
    dlg.translateItem(wt::intField);
    dlg.setItemText(wt::intField, L"x");
    SendMessageW(dlg.hwnd(), WM_COMMAND, IDOK, 0);
    winApp::setTranslator(nullptr);
    EXPECT_EQ(wt::narrow(dlg.itemText(0)), "[Number]");
    EXPECT_EQ(wt::narrow(dlg.itemText(1002)), "[Value:]");
    EXPECT_EQ(wt::narrow(dlg.itemText(wt::intField)), "x");
    ASSERT_EQ(app.boxes.size(), 1u);
    EXPECT_EQ(wt::narrow(app.boxes[0].text), "[Enter an integer.]");
    EXPECT_EQ(wt::narrow(winText::format(L"%1 %% %2 %3 %n %s %", {L"a%1", L"b"})), "a%1 % b %3 %n %s %");
}

} // namespace
