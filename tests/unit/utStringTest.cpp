// utString: sharing under copies, self-assignment and growth, and the editing and parsing operations.
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "foundation/utString.h"

namespace
{

std::string show(const utString& s)
{
    if (s.isNull())
        return "<null>";
    std::string quoted(1, '"');
    quoted.append(s.c_str(), static_cast<size_t>(s.length()));
    quoted.push_back('"');
    return quoted;
}

TEST(utStringSharing, BorrowingKeepsTheCallersBufferUntilAWriteAndCopyOfOwnsItsOwn)
{
    char buffer[] = "borrowed";
    utString borrowed(buffer);
    utString owned = utString::copyOf(buffer);
    EXPECT_EQ(borrowed.text(), buffer);
    EXPECT_NE(owned.text(), buffer);
    buffer[0] = 'B';
    EXPECT_EQ(show(borrowed), "\"Borrowed\"");
    EXPECT_EQ(show(owned), "\"borrowed\"");
    // writing to a borrowed text copies it first
    char* w = borrowed.writableText();
    EXPECT_NE(w, buffer);
    w[1] = 'O';
    EXPECT_STREQ(buffer, "Borrowed");
    EXPECT_EQ(show(borrowed), "\"BOrrowed\"");
}

TEST(utStringSharing, CopiesShareAndAWriteSeparatesThem)
{
    utString a = utString::copyOf("shared");
    utString b(a);
    utString c;
    c = b;
    EXPECT_EQ(a.text(), b.text());
    EXPECT_EQ(b.text(), c.text());
    b.writableText()[0] = 'S';
    EXPECT_EQ(show(a), "\"shared\"");
    EXPECT_EQ(show(b), "\"Shared\"");
    EXPECT_EQ(show(c), "\"shared\"");
    EXPECT_EQ(a.text(), c.text()) << "the untouched holders keep sharing";
    // a sole holder writes in place
    const char* before = b.text();
    b.writableText()[1] = 'H';
    EXPECT_EQ(b.text(), before);
}

TEST(utStringSharing, SelfAssignmentAndAssignmentAmongSharersKeepTheText)
{
    utString a = utString::copyOf("self");
    utString& alias = a;
    a = alias;
    EXPECT_EQ(show(a), "\"self\"");
    utString b(a);
    a = b;
    b = a;
    EXPECT_EQ(a.text(), b.text());
    EXPECT_EQ(show(b), "\"self\"");
    a.append(a);
    EXPECT_EQ(show(a), "\"selfself\"");
    EXPECT_EQ(show(b), "\"self\"");
}

TEST(utStringSharing, ManyHoldersReleasedInAnyOrderFreeOnce)
{
    // ASan reports a double free or a leak if a count goes wrong
    std::vector<utString> holders;
    utString origin = utString::copyOf("x");
    for (int i = 0; i < 100; ++i)
        holders.push_back(i % 2 ? origin : holders.empty() ? origin : holders.back());
    origin = utString();
    for (size_t i = 0; i < holders.size(); i += 3)
        holders[i] = utString::copyOf("other");
    for (const utString& h : holders)
        EXPECT_TRUE(show(h) == "\"x\"" || show(h) == "\"other\"") << show(h);
    while (!holders.empty()) {
        EXPECT_EQ(holders.back().length(), holders.back() == utString("x") ? 1 : 5);
        holders.erase(holders.begin() + static_cast<long>(holders.size() / 2));
    }
}

TEST(utStringSharing, GrowingByAppendLeavesEarlierCopiesAlone)
{
    utString grown = utString::copyOf("a");
    std::vector<utString> snapshots;
    std::string expected = "a";
    for (int i = 0; i < 50; ++i) {
        snapshots.push_back(grown);
        grown += utString("bc");
        expected += "bc";
    }
    EXPECT_EQ(grown.str(), expected);
    EXPECT_EQ(grown.length(), 101);
    for (size_t i = 0; i < snapshots.size(); ++i)
        EXPECT_EQ(snapshots[i].length(), static_cast<int>(1 + 2 * i));
}

TEST(utStringConstruct, FromCharactersAndFilled)
{
    struct Case {
        utString made;
        const char* expected;
    } cases[] = {
        {utString("abcdef", 3), "\"abc\""},
        {utString("ab\0cd", 5), "\"ab\""},
        {utString("abc", 0), "\"\""},
        {utString(static_cast<const char*>(nullptr), 3), "<null>"},
        {utString("abc", -1), "<null>"},
        {utString('z', 4), "\"zzzz\""},
        {utString('z', 0), "\"\""},
        {utString('\0', 4), "<null>"},
        {utString('z', -1), "<null>"},
        {utString(static_cast<const char*>(nullptr)), "<null>"},
        {utString(), "<null>"},
        {utString::copyOf(std::string("std")), "\"std\""},
    };
    for (const Case& c : cases)
        EXPECT_EQ(show(c.made), c.expected);
}

TEST(utStringCompare, EqualityAndCaseInsensitiveOrder)
{
    struct Case {
        utString a, b;
        bool equal;
        int noCase; // sign only
    } cases[] = {
        {utString(), utString(), true, 0},
        {utString(), utString(""), false, -1},
        {utString(""), utString(), false, 1},
        {utString(""), utString(""), true, 0},
        {utString("Abc"), utString("abc"), false, 0},
        {utString("abc"), utString("abd"), false, -1},
        {utString("abc"), utString("ab"), false, 1},
        {utString("a\xE9"), utString("a\xC9"), false, 1}, // bytes above 0x7F are not lowered
        {utString("x"), utString("x"), true, 0},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(c.a == c.b, c.equal) << show(c.a) << " vs " << show(c.b);
        int got = c.a.compareNoCase(c.b);
        EXPECT_EQ((got > 0) - (got < 0), c.noCase) << show(c.a) << " vs " << show(c.b) << " gave " << got;
    }
    EXPECT_EQ(utString("a").compareNoCase(utString("C")), 'a' - 'c');
    EXPECT_EQ(utString("\xE9").compareNoCase(utString("e")), static_cast<signed char>('\xE9') - 'e');
}

TEST(utStringSearch, FindTailAndSubstring)
{
    struct Find {
        utString s, sub;
        int expected;
    } finds[] = {
        {utString("xyz"), utString("z"), 2},     {utString("xy"), utString("xyz"), -1},
        {utString("xyzxyz"), utString("zx"), 2}, {utString("abc"), utString("abd"), -1},
        {utString(), utString("a"), -1},         {utString("a"), utString(), -1},
        {utString("abc"), utString(""), 0},      {utString("aaab"), utString("aab"), 1},
    };
    for (const Find& f : finds)
        EXPECT_EQ(f.s.find(f.sub), f.expected) << show(f.s) << ".find(" << show(f.sub) << ")";

    utString s("hello");
    struct Cut {
        utString got;
        const char* expected;
    } cuts[] = {
        {s.tail(0), "\"hello\""},
        {s.tail(3), "\"lo\""},
        {s.tail(5), "\"\""},
        {s.tail(6), "<null>"},
        {s.tail(-1), "<null>"},
        {utString().tail(0), "<null>"},
        {s.substring(1, 3), "\"ell\""},
        {s.substring(0, 5), "\"hello\""},
        {s.substring(5, 0), "\"\""},
        {s.substring(3, 3), "<null>"},
        {s.substring(-1, 2), "<null>"},
        {s.substring(1, -1), "<null>"},
        {s.substring(2147483647, 2147483647), "<null>"},
    };
    for (const Cut& c : cuts)
        EXPECT_EQ(show(c.got), c.expected);
}

TEST(utStringEdit, ConcatenationAndAppend)
{
    EXPECT_EQ(show(utString("ab") + utString("cd")), "\"abcd\"");
    EXPECT_EQ(show(utString() + utString("cd")), "<null>") << "appending to a null text does nothing";
    EXPECT_EQ(show(utString("ab") + utString()), "\"ab\"");

    utString null;
    utString right = utString::copyOf("right");
    null += right;
    EXPECT_EQ(null.text(), right.text()) << "+= on a null string shares the right-hand text";
    utString s("keep");
    s += utString();
    EXPECT_EQ(show(s), "\"keep\"");
    s.append(utString());
    EXPECT_EQ(show(s), "\"keep\"");
    utString n;
    n.append(utString("x"));
    EXPECT_EQ(show(n), "<null>");
}

TEST(utStringEdit, StripRemoveAndResize)
{
    struct Case {
        utString got;
        const char* expected;
    } cases[] = {
        {utString("  x y  ").stripLeading(" "), "\"x y  \""}, {utString("  x y  ").stripTrailing(" "), "\"  x y\""},
        {utString("/\\/").stripTrailing("/\\"), "\"\""},      {utString("dir\\//").stripTrailing("/\\"), "\"dir\""},
        {utString("abc").stripLeading(""), "\"abc\""},        {utString().stripLeading(" "), "<null>"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(show(c.got), c.expected);

    struct Removal {
        int start, count;
        const char* expected;
    } removals[] = {
        {1, 2, "\"adef\""},    {0, 6, "\"\""},       {4, 2, "\"abcd\""},   {4, 3, "\"abcdef\""},
        {-1, 2, "\"abcdef\""}, {2, 0, "\"abcdef\""}, {6, 1, "\"abcdef\""}, {1, 2147483647, "\"abcdef\""},
    };
    for (const Removal& r : removals) {
        utString s("abcdef");
        utString shared(s);
        s.remove(r.start, r.count);
        EXPECT_EQ(show(s), r.expected) << "remove(" << r.start << ", " << r.count << ")";
        EXPECT_EQ(show(shared), "\"abcdef\"");
    }

    utString r("abc");
    r.resize(5);
    ASSERT_EQ(r.length(), 5);
    EXPECT_EQ(std::memcmp(r.text(), "abc\0\0", 6), 0);
    r.resize(2);
    EXPECT_EQ(show(r), "\"ab\"");
    utString nul;
    nul.resize(3);
    EXPECT_EQ(show(nul), "<null>");
}

TEST(utStringTokens, NextTokenWalksTheText)
{
    utString s("  alpha, beta,,gamma ");
    utString token;
    std::vector<std::string> got;
    while (s.nextToken(" ,", token))
        got.push_back(token.str());
    EXPECT_EQ(got, (std::vector<std::string>{"alpha", "beta", "gamma"}));
    EXPECT_EQ(show(s), "\"\"") << "delimiters only leave the empty text";
    EXPECT_EQ(show(token), "<null>");

    utString one("single");
    EXPECT_TRUE(one.nextToken(" ", token));
    EXPECT_EQ(show(token), "\"single\"");
    EXPECT_EQ(show(one), "\"\"");

    utString rest("a b");
    ASSERT_TRUE(rest.nextToken(" ", token));
    EXPECT_EQ(show(rest), "\" b\"") << "the rest keeps its delimiter";

    utString null;
    EXPECT_FALSE(null.nextToken(" ", token));
    EXPECT_EQ(show(token), "<null>");
}

TEST(utStringParse, ToInteger)
{
    struct Case {
        utString text;
        bool ok;
        int value;
        int errorPosition;
    } cases[] = {
        {utString("42  "), true, 42, -1},
        {utString("42x"), false, 42, 2},
        {utString(""), false, 0, 0},
        {utString("-17"), true, -17, -1},
        {utString("  +8\t\n"), true, 8, -1},
        {utString("x"), false, 0, 0},
        {utString("12 3"), false, 12, 3},
        {utString("2147483647"), true, 2147483647, -1},
        {utString("-2147483648"), true, -2147483647 - 1, -1},
        {utString("2147483648"), false, 2147483647, -1},
        {utString("-99999999999999999999"), false, -2147483647 - 1, -1},
    };
    for (const Case& c : cases) {
        int value = -555, pos = -555;
        EXPECT_EQ(c.text.toInteger(value, pos), c.ok) << show(c.text);
        EXPECT_EQ(value, c.value) << show(c.text);
        EXPECT_EQ(pos, c.errorPosition) << show(c.text);
    }
    int value = -555, pos = -555;
    EXPECT_FALSE(utString().toInteger(value, pos));
    EXPECT_EQ(pos, 0);
    EXPECT_EQ(value, -555) << "a null text leaves the value alone";
}

TEST(utStringHash, BytesFoldIntoFourLanes)
{
    struct Case {
        const char* text;
        int length;
        uint32_t expected;
    } cases[] = {
        {nullptr, 4, 0},
        {"abc", 0, 0},
        {"a", 1, 0x61},
        {"abcd", 4, 0x64636261},
        {"abcde", 5, 0x64636261 ^ 0x65},
        {"\xFF\xFF", 2, 0xFFFF},
        {"abcdabcd", 8, 0},
    };
    for (const Case& c : cases)
        EXPECT_EQ(utString::hash(c.text, c.length), c.expected) << (c.text ? c.text : "<null>");
    EXPECT_EQ(utString("abcd").hash(), 0x64636261u);
}

} // namespace
