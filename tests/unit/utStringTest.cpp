// utString: sharing under copies, self-assignment and growth, and the editing and parsing operations that
// the program uses (case-blind comparison, search, tail, tokens and removal are called by nothing).
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
    std::string quoted(1, '"'); // appended, not "\"" + ...: GCC 12 warns falsely (-Wrestrict) on that at -O2
    quoted.append(s.str()).push_back('"');
    return quoted;
}

// A result of an operation and the text it must show.
struct Shown {
    utString got;
    const char* expected;
};

void expectShown(const std::vector<Shown>& cases)
{
    for (size_t i = 0; i < cases.size(); ++i)
        EXPECT_EQ(show(cases[i].got), cases[i].expected) << "case " << i;
}

TEST(utStringSharing, BorrowedTextsAreCopiedBeforeAWriteAndCopiesShareUntilOne)
{
    char buffer[] = "borrowed";
    utString borrowed(buffer);
    utString owned = utString::copyOf(buffer);
    EXPECT_EQ(borrowed.text(), buffer);
    EXPECT_NE(owned.text(), buffer);
    buffer[0] = 'B';
    EXPECT_EQ(show(borrowed), "\"Borrowed\"");
    EXPECT_EQ(show(owned), "\"borrowed\"");
    char* w = borrowed.writableText();
    EXPECT_NE(w, buffer) << "writing to a borrowed text copies it first";
    w[1] = 'O';
    EXPECT_STREQ(buffer, "Borrowed");
    EXPECT_EQ(show(borrowed), "\"BOrrowed\"");

    utString a = utString::copyOf("shared"), b(a), c;
    c = b;
    EXPECT_EQ(a.text(), b.text());
    EXPECT_EQ(b.text(), c.text());
    b.writableText()[0] = 'S';
    EXPECT_EQ(show(a) + show(b) + show(c), "\"shared\"\"Shared\"\"shared\"");
    EXPECT_EQ(a.text(), c.text()) << "the untouched holders keep sharing";
    const char* before = b.text();
    b.writableText()[1] = 'H';
    EXPECT_EQ(b.text(), before) << "a sole holder writes in place";
}

TEST(utStringSharing, SelfAssignmentManyHoldersAndGrowthKeepEveryText)
{
    utString a = utString::copyOf("self");
    utString& alias = a;
    a = alias;
    utString b(a);
    a = b;
    b = a;
    EXPECT_EQ(a.text(), b.text());
    a.append(a);
    EXPECT_EQ(show(a) + show(b), "\"selfself\"\"self\"");

    // ASan reports a double free or a leak if a count goes wrong
    std::vector<utString> holders;
    utString origin = utString::copyOf("x");
    for (int i = 0; i < 100; ++i)
        holders.push_back(i % 2 || holders.empty() ? origin : holders.back());
    origin = utString();
    for (size_t i = 0; i < holders.size(); i += 3)
        holders[i] = utString::copyOf("other");
    while (!holders.empty()) {
        EXPECT_TRUE(show(holders.back()) == "\"x\"" || show(holders.back()) == "\"other\"") << show(holders.back());
        holders.erase(holders.begin() + static_cast<long>(holders.size() / 2));
    }

    utString grown = utString::copyOf("a");
    std::vector<utString> snapshots;
    for (int i = 0; i < 50; ++i) {
        snapshots.push_back(grown);
        grown += utString("bc");
    }
    std::string expected = "a";
    for (int i = 0; i < 50; ++i)
        expected += "bc";
    EXPECT_EQ(grown.str(), expected);
    for (size_t i = 0; i < snapshots.size(); ++i)
        EXPECT_EQ(snapshots[i].length(), static_cast<int>(1 + 2 * i));
}

TEST(utStringConstruct, FromCharactersAndFilled)
{
    expectShown({
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
        {utString::copyOf(std::string("std")), "\"std\""},
    });
}

TEST(utStringCompare, NullEqualsNullOnlyAndTextsByteWise)
{
    EXPECT_TRUE(utString() == utString());
    EXPECT_FALSE(utString() == utString(""));
    EXPECT_FALSE(utString("") == utString());
    EXPECT_TRUE(utString("") == utString(""));
    EXPECT_FALSE(utString("Abc") == utString("abc"));
    EXPECT_FALSE(utString("abc") == utString("ab"));
    EXPECT_TRUE(utString("x") == utString::copyOf("x"));
}

TEST(utStringSearch, Substring)
{
    utString s("hello");
    expectShown({
        {s.substring(1, 3), "\"ell\""},
        {s.substring(0, 5), "\"hello\""},
        {s.substring(5, 0), "\"\""},
        {s.substring(3, 3), "<null>"},
        {s.substring(-1, 2), "<null>"},
        {s.substring(1, -1), "<null>"},
        {s.substring(2147483647, 2147483647), "<null>"},
        {utString().substring(0, 0), "<null>"},
    });
}

TEST(utStringEdit, ConcatenateAppendStripAndResize)
{
    utString null, keep("keep"), appendedNull;
    utString right = utString::copyOf("right");
    null += right;
    EXPECT_EQ(null.text(), right.text()) << "+= on a null string shares the right-hand text";
    keep += utString();
    keep.append(utString());
    appendedNull.append(utString("x"));
    expectShown({
        {utString("ab") + utString("cd"), "\"abcd\""},
        {utString() + utString("cd"), "<null>"}, // appending to a null text does nothing
        {utString("ab") + utString(), "\"ab\""},
        {keep, "\"keep\""},
        {appendedNull, "<null>"},
        {utString("  x y  ").stripTrailing(" "), "\"  x y\""},
        {utString("/\\/").stripTrailing("/\\"), "\"\""},
        {utString("dir\\//").stripTrailing("/\\"), "\"dir\""},
        {utString("abc").stripTrailing(""), "\"abc\""},
        {utString().stripTrailing(" "), "<null>"},
    });

    utString r("abc"), nul;
    r.resize(5);
    ASSERT_EQ(r.length(), 5);
    EXPECT_EQ(std::memcmp(r.text(), "abc\0\0", 6), 0);
    r.resize(2);
    nul.resize(3);
    EXPECT_EQ(show(r) + show(nul), "\"ab\"<null>");
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

// The values only decide where the string table puts a key (its own test): here, that every given byte
// counts and no other is read.
TEST(utStringHash, ReadsTheGivenBytesOnly)
{
    EXPECT_EQ(utString::hash(nullptr, 4), 0u);
    EXPECT_EQ(utString::hash("abc", 0), 0u);
    EXPECT_EQ(utString::hash("abcde", 3), utString::hash("abcXY", 3));
    EXPECT_NE(utString::hash("abcde", 5), utString::hash("abcdf", 5));
    EXPECT_EQ(utString("abcde", 3).hash(), utString::hash("abc", 3));
}

} // namespace
