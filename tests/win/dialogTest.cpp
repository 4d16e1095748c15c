// The dialogs' integer parsing (Go To Line shows the refusal and the dialog kept open) and the framework's
// texts with their numbered inserts. Translation of dialogs is checked on Quillon's, in German.
#include "winTestApp.h"

#include "win/winDataExchange.h"
#include "win/winText.h"

#include <gtest/gtest.h>

#include <climits>

namespace
{

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

// The framework's own texts take numbered inserts, each once, and nothing else is an insert.
TEST(DialogTest, FrameworkTextsFillTheirNumberedInserts)
{
    EXPECT_EQ(wt::narrow(winText::format(L"%1 %% %2 %3 %n %s %", {L"a%1", L"b"})), "a%1 % b %3 %n %s %");
}

} // namespace
