// The link control's text: anchors become link ranges, other tags vanish, the last anchor is the link.
#include <gtest/gtest.h>

#include <string>

#include "app/qwzLinkText.h"

namespace
{

struct LinkCase {
    const char* in;
    const char* plain;
    const char* url;
    std::size_t start;
    std::size_t end;
    std::size_t ranges;
};

TEST(LinkText, ParsesAnchorsAndDropsOtherTags)
{
    const LinkCase cases[] = {
        {"Get it <a href=\"target\">here</a>.", "Get it here.", "target", 7, 11, 1},
        {"no anchors at all", "no anchors at all", "", 0, 0, 0},
        {"", "", "", 0, 0, 0},
        {"<b>bold</b> text", "bold text", "", 0, 0, 0},
        {"<a href=\"one\">1</a> and <a href=\"two\">2</a>", "1 and 2", "two", 6, 7, 2},
        {"cut <here", "cut ", "", 0, 0, 0},
        {"x <a href=\"u\">open to the end", "x open to the end", "u", 2, 17, 1},
        {"x <a href=\"u\">t</a", "x t", "u", 2, 3, 1},
        {"<a href=\"u\" title=\"v\">t</a>", "t", "u", 0, 1, 1},
        {"<a href=u>t</a>", "t", "", 0, 1, 1},
        {"<a href=\"u>t</a>", "t", "", 0, 1, 1},
        {"<a href=\"\">empty</a>", "empty", "", 0, 5, 1},
        {"<a href=\"u\"></a>after", "after", "u", 0, 0, 1},
        {"<A href=\"u\">upper</A>", "upper", "", 0, 0, 0},
        {"<abbr>is an a-tag</abbr>", "is an a-tag", "", 0, 11, 1},
        {"<a href=\"u\"><b>nested</b></a>!", "nested!", "u", 0, 0, 1},
        {"a > b <i>c</i>", "a > b c", "", 0, 0, 0},
        {"<>", "", "", 0, 0, 0},
        {"\xC3\xA4 <a href=\"http://x/\xC3\xB6\">\xE2\x82\xAC</a>", "\xC3\xA4 \xE2\x82\xAC", "http://x/\xC3\xB6", 3, 6,
         1},
    };
    for (const auto& c : cases) {
        qwzLinkText parsed(c.in);
        EXPECT_EQ(parsed.plainText(), c.plain) << "input: " << c.in;
        EXPECT_EQ(parsed.url(), c.url) << "input: " << c.in;
        EXPECT_EQ(parsed.linkStart(), c.start) << "input: " << c.in;
        EXPECT_EQ(parsed.linkEnd(), c.end) << "input: " << c.in;
        EXPECT_EQ(parsed.linkRanges().size(), c.ranges) << "input: " << c.in;
    }
}

TEST(LinkText, EveryAnchorIsARangeOfItsOwnText)
{
    qwzLinkText parsed("<a href=\"1\">first</a> <b>-</b> <a href=\"2\">second</a>");
    ASSERT_EQ(parsed.linkRanges().size(), 2u);
    const std::string& plain = parsed.plainText();
    auto text = [&](const qwzLinkText::Range& r) { return plain.substr(r.start, r.end - r.start); };
    EXPECT_EQ(text(parsed.linkRanges()[0]), "first");
    EXPECT_EQ(text(parsed.linkRanges()[1]), "second");
    EXPECT_EQ(plain, "first - second");
}

} // namespace
