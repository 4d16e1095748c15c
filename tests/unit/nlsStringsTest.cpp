// The catalog library's small records: shared strings, language names, error arguments and number
// punctuation without grouping. The error texts are checked where they come out: the domain tests and the
// end-to-end runs.
#include <gtest/gtest.h>

#include <iomanip>
#include <locale>
#include <sstream>
#include <string>

#include "nls/nlsError.h"
#include "nls/nlsLanguage.h"
#include "nls/nlsNumPunct.h"
#include "nls/uiSaveString.h"

namespace
{

TEST(uiSaveString, CopiesShareOneCounter)
{
    uiSaveString a("Quill"), b(a), c;
    c = b;
    c = c; // self-assignment changes nothing
    EXPECT_EQ(a.text(), c.text());
    EXPECT_EQ(a.shares(), 3);
    {
        uiSaveString d(a);
        EXPECT_EQ(a.shares(), 4);
    }
    EXPECT_EQ(a.shares(), 3);
    c = uiSaveString("other");
    EXPECT_EQ(a.shares(), 2);
    EXPECT_STREQ(c.text(), "other");
}

TEST(uiSaveString, EmptyFormsAndComparison)
{
    struct Case {
        uiSaveString s;
        bool empty;
        int shares;
    };
    const Case cases[] = {
        {uiSaveString(), true, 0},           {uiSaveString(nullptr), true, 0}, {uiSaveString("abc", 0), true, 0},
        {uiSaveString(nullptr, 3), true, 0}, {uiSaveString(""), true, 1},      {uiSaveString("abcdef", 3), false, 1},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(c.s.empty(), c.empty) << (c.s.text() ? c.s.text() : "<null>");
        EXPECT_EQ(c.s.shares(), c.shares) << (c.s.text() ? c.s.text() : "<null>");
        EXPECT_TRUE(c.s == "" || !c.empty) << "an empty string equals the empty text";
    }
    EXPECT_STREQ(cases[5].s.text(), "abc");
    EXPECT_TRUE(uiSaveString::same(nullptr, ""));
    EXPECT_FALSE(uiSaveString::same("a", nullptr));
    EXPECT_FALSE(uiSaveString::same("a", "ab"));
}

TEST(nlsLanguage, BaseLanguageCutsTheCountryAndTheBlanksBeforeIt)
{
    const struct {
        const char* name;
        const char* base;
    } cases[] = {
        {"English-GBR", "English"}, {"English \t-GBR", "English"}, {"-GBR", ""}, {"  -GBR", ""},
        {"German-DEU-X", "German"}, {"French", "French"},
    };
    for (const auto& c : cases) {
        nlsLanguage language(c.name);
        nlsLanguage base = language.baseLanguage();
        EXPECT_STREQ(base.text() ? base.text() : "", c.base) << "base of \"" << c.name << "\"";
    }
    EXPECT_TRUE(nlsLanguage("English-GBR").hasCountry());
    EXPECT_FALSE(nlsLanguage("English").hasCountry());
    EXPECT_FALSE(nlsLanguage().hasCountry());
}

TEST(nlsError, ArgumentsStopAtFiveAndOutOfRangeIsMarked)
{
    nlsError error(5120);
    EXPECT_STREQ(error.argument(0).text(), "Internal range error");
    for (const char* arg : {"1", "2", "3", "4", "5", "6"})
        error.addArgument(arg);
    EXPECT_EQ(error.argumentCount(), 5);
    EXPECT_STREQ(error.argument(4).text(), "5");
    EXPECT_STREQ(error.argument(5).text(), "Internal range error");
    EXPECT_STREQ(error.argument(-1).text(), "Internal range error");
}

// A facet that groups by three with ",", standing in for a locale that groups digits.
class groupingPunct : public std::numpunct<char>
{
protected:
    char do_thousands_sep() const override
    {
        return ',';
    }
    std::string do_grouping() const override
    {
        return "\3";
    }
};

TEST(nlsNumPunct, NumbersComeOutWithoutGroupingWhateverTheLocale)
{
    std::locale grouping(std::locale::classic(), new groupingPunct);
    std::ostringstream before;
    before.imbue(grouping);
    before << 1234567;
    ASSERT_EQ(before.str(), "1,234,567") << "the stand-in locale must group";

    std::ostringstream after;
    after.imbue(std::locale(grouping, new nlsNumPunct("C")));
    after << 1234567 << ' ' << 9876543.25 << ' ' << std::boolalpha << true;
    EXPECT_EQ(after.str(), "1234567 9.87654e+06 true");
    after.str("");
    after << std::fixed << std::setprecision(2) << 9876543.25;
    EXPECT_EQ(after.str(), "9876543.25");
}

} // namespace
