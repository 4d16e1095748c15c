// The page layout: line ends, wrapping at blanks, broken words, tabs, surrogate pairs, page breaks and
// the margins of a sheet. The measure makes 'W' and pairs twice as wide as the rest, so a layout that
// counted characters instead of measuring them would fail.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "foundation/utPageLayout.h"

namespace
{

class TestMeasure : public utTextMeasure
{
public:
    int advance(const char16_t* c, std::size_t units) override
    {
        return units == 2 || *c == u'W' ? 20 : 10;
    }
};

// Every page drawn as lines of text, each run placed at its column (x / 10) so that tabs show as spaces.
std::vector<std::vector<std::u16string>> draw(const std::u16string& text, int width, int linesPerPage)
{
    TestMeasure measure;
    utPageLayout layout(text.data(), text.size(), measure, width, linesPerPage);
    std::vector<std::vector<std::u16string>> pages(layout.paginate());
    std::size_t lines = 0;
    for (std::size_t p = 0; p < pages.size(); ++p) {
        for (const utPageLayout::Run& run : layout.pageRuns(p)) {
            EXPECT_LT(run.row, std::size_t(linesPerPage));
            EXPECT_LT(run.start, run.end);
            pages[p].resize(std::max(pages[p].size(), run.row + 1));
            std::u16string& line = pages[p][run.row];
            line.resize(std::max<std::size_t>(line.size(), std::size_t(run.x / 10)), u' ');
            line += text.substr(run.start, run.end - run.start);
        }
        lines += pages[p].size();
    }
    EXPECT_TRUE(layout.pageRuns(pages.size()).empty()) << "no runs past the last page";
    EXPECT_GE(layout.lineCount(), lines);
    return pages;
}

std::vector<std::u16string> allLines(const std::u16string& text, int width)
{
    std::vector<std::u16string> out;
    for (auto& page : draw(text, width, 1000))
        out.insert(out.end(), page.begin(), page.end());
    return out;
}

struct WrapCase {
    const char* name;
    std::u16string text;
    int width;
    std::vector<std::u16string> lines;
};

TEST(PageLayout, LinesEndWrapAndBreakWhereTheMeasureSays)
{
    const WrapCase cases[] = {
        {"empty", u"", 100, {}},
        {"one short line", u"abc", 100, {u"abc"}},
        {"CR-LF, LF and CR", u"a\r\nb\nc\rd", 100, {u"a", u"b", u"c", u"d"}},
        {"a final line end adds no line", u"a\r\n", 100, {u"a"}},
        {"blank lines count", u"a\r\n\r\n\nb", 100, {u"a", u"", u"", u"b"}},
        {"wrap after the last blank that fits", u"aaa bbb ccc", 70, {u"aaa bbb", u"ccc"}},
        {"every word on its own line", u"aaa bbb ccc", 50, {u"aaa", u"bbb", u"ccc"}},
        {"a word wider than the frame is broken", u"abcdefghij", 40, {u"abcd", u"efgh", u"ij"}},
        {"wide characters are measured", u"WWWWW", 50, {u"WW", u"WW", u"W"}},
        {"blanks at a wrap vanish", u"ab      cd", 40, {u"ab", u"cd"}},
        {"trailing blanks are not drawn", u"ab  \t", 100, {u"ab"}},
        {"indentation is no place to wrap", u"    abcdefgh", 60, {u"    ab", u"cdefgh"}},
        {"tabs stop every eight spaces", u"a\tb\tc", 200, {u"a       b       c"}},
        {"a tab past the edge wraps", u"abcdefgh\tx", 100, {u"abcdefgh", u"x"}},
        {"tabs count from the printed line", u"abcdefghij ab\tc", 100, {u"abcdefghij", u"ab      c"}},
        {"a surrogate pair is never split", u"a\U0001F600b", 20, {u"a", u"\U0001F600", u"b"}},
        {"a frame narrower than a character", u"WW", 5, {u"W", u"W"}},
    };
    for (const WrapCase& c : cases)
        EXPECT_EQ(allLines(c.text, c.width), c.lines) << c.name;
}

TEST(PageLayout, PagesHoldTheirLinesAndAWrappedLineCrossesAPageBreak)
{
    EXPECT_EQ(draw(u"", 100, 3).size(), 1u) << "an empty text is one empty page";
    EXPECT_EQ(draw(u"1\n2\n3\n4\n5\n6", 100, 3).size(), 2u) << "exactly full pages";
    EXPECT_EQ(draw(u"1\n2\n3\n4\n5\n6\n", 100, 3).size(), 2u) << "a final line end starts no page";
    auto pages = draw(u"1\n2\n3\n4\n5\n6\n7", 100, 3);
    ASSERT_EQ(pages.size(), 3u);
    EXPECT_EQ(pages[2], std::vector<std::u16string>{u"7"});
    pages = draw(u"top\naaaa bbbb cccc dddd eeee\nend", 40, 3);
    ASSERT_EQ(pages.size(), 3u);
    EXPECT_EQ(pages[0], (std::vector<std::u16string>{u"top", u"aaaa", u"bbbb"}));
    EXPECT_EQ(pages[1], (std::vector<std::u16string>{u"cccc", u"dddd", u"eeee"}));
    EXPECT_EQ(pages[2], (std::vector<std::u16string>{u"end"}));
}

struct FrameCase {
    const char* name;
    utPageSheet sheet;
    int lineHeight;
    utPageFrame expected;
};

TEST(PageLayout, FrameKeepsMarginsInsideThePrintableArea)
{
    const FrameCase cases[] = {
        // Letter at 600 dpi, 1/8 inch unprintable: margins of 450 and 600 from the edge of the sheet
        {"letter", {5100, 6600, 75, 75, 4950, 6450, 600, 600}, 100, {375, 525, 4200, 54, 6175}},
        // A4 at 300 dpi with an unprintable border wider than the side margin
        {"wide border", {2480, 3508, 400, 100, 1680, 3308, 300, 300}, 50, {0, 200, 1680, 58, 3233}},
        // a device that gives no sheet size: the printable area is the sheet
        {"no sheet size", {0, 0, 0, 0, 816, 1056, 96, 96}, 16, {72, 96, 672, 54, 1000}},
        {"a sheet smaller than its margins keeps an eighth",
         {100, 100, 0, 0, 100, 100, 600, 600},
         10,
         {12, 12, 76, 6, 89}},
    };
    for (const FrameCase& c : cases) {
        utPageFrame f = utPageFrame::fit(c.sheet, c.lineHeight);
        const utPageFrame& e = c.expected;
        EXPECT_EQ((std::vector<int>{f.left, f.top, f.width, f.linesPerPage, f.footerTop}),
                  (std::vector<int>{e.left, e.top, e.width, e.linesPerPage, e.footerTop}))
            << c.name;
    }
}

} // namespace
