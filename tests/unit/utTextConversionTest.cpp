// UTF-8 <-> UTF-16 by the house rules (files opened by UTF-8 name are checked with the file probes; the
// copy-out calls and the ANSI conversion are used by nothing).
#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <type_traits>

#include "foundation/utTextConversion.h"

namespace
{

// Code units in hex, so that a failure shows bytes that do not print.
template <typename Text> std::string hex(const std::basic_string<Text>& s)
{
    std::string out;
    char buf[8];
    for (auto c : s) {
        std::snprintf(buf, sizeof buf, sizeof c == 1 ? "%02X " : "%04X ",
                      static_cast<unsigned>(static_cast<std::make_unsigned_t<Text>>(c)));
        out += buf;
    }
    return out;
}

TEST(utUtf8ToUtf16, DecodesByTheHouseRules)
{
    struct Case {
        std::string name, in;
        std::u16string expected;
    } cases[] = {
        {"ascii", "Az~", u"Az~"},
        {"lone 0x80 stands for itself", "\x80", u"\u0080"},
        {"two bytes", "\xC3\xBC", u"\u00FC"},
        {"three bytes", "\xE6\x97\xA5", u"\u65E5"},
        {"four bytes become a pair", "\xF0\x9F\x98\x80", u"\U0001F600"},
        {"highest value", "\xF4\x8F\xBF\xBF", u"\U0010FFFF"},
        {"above 0x10FFFF", "\xF4\x90\x80\x80", u"?"},
        {"overlong two", "\xC0\xAF", u"?"},
        {"overlong three", "\xE0\x80\xAF", u"?"},
        {"overlong four", "\xF0\x80\x80\xAF", u"?"},
        {"surrogate", "\xED\xA0\x80", u"?"},
        {"truncated at the end", "a\xE6\x97", u"a?"},
        {"non-continuation keeps the next byte",
         "\xC3"
         "A",
         u"?A"},
        {"bad lead swallows its continuations", "\x81\x82\x83z", u"?z"},
        {"F8 lead", "\xF8\x88\x80\x80\x80!", u"?!"},
        {"FF alone", "\xFF", u"?"},
        {"empty", "", u""},
    };
    for (const Case& c : cases) {
        utUtf8ToUtf16 got(c.in.c_str(), static_cast<int>(c.in.size()));
        EXPECT_EQ(hex(got.str()), hex(c.expected)) << c.name;
        EXPECT_EQ(got.length(), static_cast<int>(c.expected.size())) << c.name;
    }
    EXPECT_EQ(utUtf8ToUtf16(static_cast<const char*>(nullptr)).length(), 0);
    EXPECT_EQ(hex(utUtf8ToUtf16(utString("up to NUL")).str()), hex(std::u16string(u"up to NUL")));
}

TEST(utUtf16ToUtf8, EncodesAndReplacesUnpairedSurrogates)
{
    struct Case {
        std::string name;
        std::u16string in;
        std::string expected;
    } cases[] = {
        {"ascii", u"Az", "Az"},
        {"0x80", u"\u0080", "\xC2\x80"},
        {"two bytes", u"\u07FF", "\xDF\xBF"},
        {"three bytes", u"\u0800\uFFFF", "\xE0\xA0\x80\xEF\xBF\xBF"},
        {"pair", u"\U0001F600", "\xF0\x9F\x98\x80"},
        {"high alone at the end", std::u16string(1, char16_t(0xD83D)), "?"},
        {"high then letter", std::u16string{char16_t(0xD83D), u'x'}, "?x"},
        {"stray lows collapse", std::u16string{char16_t(0xDC00), char16_t(0xDC01), char16_t(0xDC02), u'y'}, "?y"},
        {"two highs", std::u16string{char16_t(0xD800), char16_t(0xD800), char16_t(0xDC00)}, "?\xF0\x90\x80\x80"},
    };
    for (const Case& c : cases) {
        utUtf16ToUtf8 got(c.in);
        EXPECT_EQ(hex(got.str()), hex(c.expected)) << c.name;
    }
    EXPECT_EQ(utUtf16ToUtf8(static_cast<const char16_t*>(nullptr)).length(), 0);
    EXPECT_EQ(utUtf16ToUtf8(u"Gr\u00FC\u00DFe").toString(), utString("Gr\xC3\xBC\xC3\x9F"
                                                                     "e"));
}

} // namespace
