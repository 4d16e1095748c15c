// Word boundaries of the edit view: spaces and tabs separate words, every other character (punctuation,
// CJK, surrogates) belongs to a word, and no answer leaves the text's bounds.
#include <gtest/gtest.h>

#include <string>

#include "document/qwzWordBreak.h"

namespace
{

struct BreakCase {
    std::u16string text;
    int index;
    int action;
    int expected;
};

TEST(WordBreak, WordsAreSeparatedBySpacesAndTabsOnly)
{
    using W = qwzWordBreak;
    const BreakCase cases[] = {
        // the next word's start, as wrapping asks for it
        {u"one two three", 1, W::Right, 4},
        {u"one two three", 4, W::Right, 8},
        {u"one two three", 9, W::Right, 13},
        {u"one  \t two", 1, W::Right, 7},
        {u"   lead", 1, W::Right, 3},
        {u"a-b,c.d\u65e5\u672c", 1, W::Right, 9},
        {u"end ", 4, W::Right, 4},
        // the start of the word before, as Ctrl+Left asks for it
        {u"one two three", 13, W::Left, 8},
        {u"one two three", 8, W::Left, 4},
        {u"one two three", 2, W::Left, 0},
        {u"one   two", 6, W::Left, 0},
        {u"x", 0, W::Left, 0},
        {u"\U0001F600 \U0001F600", 5, W::Left, 3},
        // delimiters
        {u"a b", 1, W::IsDelimiter, 1},
        {u"a\tb", 1, W::IsDelimiter, 1},
        {u"a\u3000b", 1, W::IsDelimiter, 0},
        {u"ab", 2, W::IsDelimiter, 0},
        // out of bounds and unknown actions answer inside the text
        {u"abc def", 99, W::Left, 4},
        {u"abc def", 99, W::Right, 7},
        {u"abc", -1, W::Right, 0},
        {u"", 0, W::Right, 0},
        {u"abc", 1, 7, 0},
    };
    for (const BreakCase& c : cases) {
        EXPECT_EQ(W::find(c.text.data(), c.index, static_cast<int>(c.text.size()), c.action), c.expected)
            << "action " << c.action << " at " << c.index << " of a text of " << c.text.size();
    }
    EXPECT_EQ(W::find(nullptr, 0, 5, W::Right), 0);
}

} // namespace
