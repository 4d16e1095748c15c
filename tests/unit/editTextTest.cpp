// The edit control's text: CR before every lone LF, UTF-8 to UTF-16 by the foundation's rules, and the
// size known before the one allocation.
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

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

// The fused pass against adding the CRs and then the foundation's decoding (whose house rules its own
// test states): the edges of those rules, then random mixes of line ends, whole and broken sequences and
// any bytes, weighted towards lead and continuation bytes. The count made beforehand must agree too.
TEST(EditText, DecodingAgreesWithTheFoundationsConversionAfterTheCrs)
{
    std::vector<std::string> texts = {
        "\xC3\xA4",      "\xE2\x82\xAC",     "\xF0\x9F\x98\x80", "\x80",
        "\x81\x80\x80x", "\xF8\x80x",        "\xE2\x82x",        "\xE2\n",
        "\xC3",          "\xC0\xAF",         "\xE0\x80\xAF",     "\xF0\x80\x80\xAF",
        "\xED\xA0\x80",  "\xF4\x90\x80\x80", "\xF4\x8F\xBF\xBF", "\xFF\r\n",
        "a\rb\n",
    };
    texts.push_back(std::string("a\0b", 3));
    std::mt19937 rng(4192);
    const std::string pieces[] = {
        "\n",   "\r",   "\r\n", "a",    "\xC3\xA4",          "\xE2\x82\xAC", "\xF0\x9F\x98\x80",
        "\xE2", "\x80", "\xF8", "\xC3", std::string(1, '\0')};
    for (int round = 0; round < 6000; ++round) {
        std::string text;
        for (int n = static_cast<int>(rng() % 24); n > 0; --n) {
            unsigned r = rng() % 6;
            text += r < 3 ? pieces[rng() % std::size(pieces)]
                          : std::string(1, static_cast<char>(r == 3 ? 0x80 + rng() % 0x40
                                                                    : (r == 4 ? 0xC0 + rng() % 0x40 : rng() % 0x100)));
        }
        texts.push_back(text);
    }
    for (const std::string& text : texts) {
        std::string withCr = crlf(text);
        utUtf8ToUtf16 reference(withCr.data(), static_cast<int>(withCr.size()));
        std::string shown;
        for (unsigned char c : text)
            shown += std::to_string(c) + " ";
        ASSERT_EQ(convert(text), reference.str()) << "bytes " << shown;
        ASSERT_EQ(qwzEditText::unitCount(text.data(), text.size()), reference.str().size()) << "bytes " << shown;
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
    EXPECT_TRUE(text.assign(nullptr, 0)) << "no text is the empty text";
    EXPECT_EQ(text.size(), 0u);
}

} // namespace
