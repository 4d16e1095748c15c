// The edit control's text: CR before every lone LF, UTF-8 to UTF-16 by the foundation's rules, and the
// size known before the one allocation.
#include <gtest/gtest.h>

#include <random>
#include <string>

#include "document/qwzEditText.h"
#include "foundation/utTextConversion.h"

namespace
{

std::u16string convert(const std::string& utf8)
{
    qwzEditText text;
    EXPECT_TRUE(text.assign(utf8.data(), utf8.size()));
    EXPECT_EQ(text.text()[text.size()], u'\0');
    return std::u16string(text.text(), text.size());
}

std::string crlf(const std::string& utf8)
{
    std::string out(utf8.size() + qwzEditText::crCount(utf8.data(), utf8.size()), '#');
    EXPECT_EQ(qwzEditText::crlfCopy(utf8.data(), utf8.size(), out.data()), out.size());
    return out;
}

struct LineCase {
    std::string in;
    std::string out;
};

TEST(EditText, LineEndsGetACrOnlyWhereTheyLackOne)
{
    const LineCase cases[] = {
        {"", ""},         {"a\nb", "a\r\nb"},         {"a\r\nb", "a\r\nb"}, {"\n", "\r\n"}, {"\n\n", "\r\n\r\n"},
        {"a\rb", "a\rb"}, {"\r\r\n\n", "\r\r\n\r\n"}, {"end\n", "end\r\n"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(crlf(c.in), c.out) << "input bytes: " << c.in.size();
        std::u16string wide(c.out.begin(), c.out.end());
        EXPECT_EQ(convert(c.in), wide) << "fused conversion of: " << c.in.size() << " bytes";
    }
}

struct Utf8Case {
    const char* name;
    std::string in;
    std::u16string out;
};

TEST(EditText, Utf8DecodesByTheFoundationsRules)
{
    const Utf8Case cases[] = {
        {"two-byte", "\xC3\xA4", u"\u00E4"},
        {"three-byte", "\xE2\x82\xAC", u"\u20AC"},
        {"four-byte as a pair", "\xF0\x9F\x98\x80", u"\U0001F600"},
        {"lone 0x80 stands for itself", "\x80", u"\u0080"},
        {"stray continuation skips its followers", "\x81\x80\x80x", u"?x"},
        {"0xF8 lead skips its followers", "\xF8\x80x", u"?x"},
        {"cut sequence keeps the next byte", "\xE2\x82x", u"?x"},
        {"cut sequence before LF keeps the LF", "\xE2\n", u"?\r\n"},
        {"missing continuation at the end", "\xC3", u"?"},
        {"overlong two-byte", "\xC0\xAF", u"?"},
        {"overlong three-byte", "\xE0\x80\xAF", u"?"},
        {"overlong four-byte", "\xF0\x80\x80\xAF", u"?"},
        {"surrogate", "\xED\xA0\x80", u"?"},
        {"above U+10FFFF", "\xF4\x90\x80\x80", u"?"},
        {"highest value", "\xF4\x8F\xBF\xBF", u"\U0010FFFF"},
        {"NUL byte kept", std::string("a\0b", 3), std::u16string(u"a\0b", 3)},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(convert(c.in), c.out) << c.name;
        EXPECT_EQ(qwzEditText::unitCount(c.in.data(), c.in.size()), c.out.size()) << c.name;
    }
}

TEST(EditText, FusedConversionEqualsLineEndsThenDecoding)
{
    // Random mixes of line ends, ASCII and broken and whole sequences: adding CRs first and decoding
    // afterwards must give the same units as the fused pass.
    std::mt19937 rng(4192);
    const std::string pieces[] = {"\n",   "\r",   "\r\n", "a",   "\xC3\xA4", "\xE2\x82\xAC", "\xF0\x9F\x98\x80",
                                  "\xE2", "\x80", "\xF8", "\xC3"};
    for (int round = 0; round < 3000; ++round) {
        std::string text;
        for (int n = static_cast<int>(rng() % 24); n > 0; --n)
            text += pieces[rng() % std::size(pieces)];
        std::string withCr = crlf(text);
        qwzEditText separate;
        ASSERT_TRUE(separate.assign(withCr.data(), withCr.size()));
        EXPECT_EQ(qwzEditText::crCount(withCr.data(), withCr.size()), 0u);
        ASSERT_EQ(convert(text), std::u16string(separate.text(), separate.size())) << "round " << round;
    }
}

TEST(EditText, DecodingAgreesWithTheFoundationsConversion)
{
    // Random bytes, weighted towards lead and continuation bytes, converted by both after the CRs are in.
    std::mt19937 rng(5001);
    for (int round = 0; round < 3000; ++round) {
        std::string text(rng() % 40, ' ');
        for (char& c : text) {
            unsigned r = rng() % 4;
            c = static_cast<char>(r == 0 ? 0x80 + rng() % 0x40 : (r == 1 ? 0xC0 + rng() % 0x40 : rng() % 0x100));
        }
        std::string withCr = crlf(text);
        utUtf8ToUtf16 reference(withCr.data(), static_cast<int>(withCr.size()));
        ASSERT_EQ(convert(text), reference.str()) << "round " << round;
    }
}

TEST(EditText, TextOverTheLimitIsRefusedAndLeavesTheHolderEmpty)
{
    qwzEditText text;
    ASSERT_TRUE(text.assign("abc", 3));
    EXPECT_FALSE(text.assign("a\nb", 3, 3)) << "a, CR, LF, b is four units";
    EXPECT_EQ(text.size(), 0u);
    EXPECT_EQ(text.text()[0], u'\0');
    EXPECT_TRUE(text.assign("a\nb", 3, 4));
    EXPECT_EQ(text.size(), 4u);
}

TEST(EditText, NullAndEmptyInputGiveTheEmptyText)
{
    qwzEditText text;
    EXPECT_TRUE(text.assign(nullptr, 0));
    EXPECT_EQ(text.size(), 0u);
    EXPECT_TRUE(text.assign("", 0));
    EXPECT_EQ(std::u16string(text.text()), u"");
}

} // namespace
