// Block arrays of strings and integers and the pointer array under them: growth by blocks, range
// copies (forward and backward within one array), copying and clearing.
#include <gtest/gtest.h>

#include <string>

#include "foundation/coBlockArray.h"
#include "foundation/coPtrArray.h"

namespace
{

// Built by appending: GCC 12 warns falsely (-Wrestrict) on a literal + std::string at -O2.
std::string numbered(const char* prefix, int i)
{
    std::string s(prefix);
    s += std::to_string(i);
    return s;
}

TEST(coBlockArray, WritingElement256MakesTwoBlocksAndClearingKeepsThem)
{
    coBlockArray<utString> a;
    EXPECT_EQ(a.size(), 0);
    a.at(256) = utString("last");
    EXPECT_EQ(a.size(), 257);
    EXPECT_EQ(a.blockCount(), 2);
    for (int i = 0; i < 256; ++i)
        ASSERT_TRUE(a.get(i).isNull()) << i;
    EXPECT_EQ(a.get(256).str(), "last");
    a.at(3) = utString("early");
    EXPECT_EQ(a.size(), 257) << "writing below the size keeps it";
    a.clear(false);
    EXPECT_EQ(a.size(), 0);
    EXPECT_EQ(a.blockCount(), 2) << "clearing without freeing keeps the blocks";
    a.at(0) = utString("y");
    EXPECT_EQ(a.size(), 1);
    EXPECT_EQ(a.blockCount(), 2);

    coBlockArray<int32_t> n;
    n.at(600) = 7;
    EXPECT_EQ(n.blockCount(), 3);
    EXPECT_EQ(n.get(599), 0);
    EXPECT_EQ(n.get(600), 7);
}

TEST(coBlockArray, CopyRangeWithinOneArray)
{
    struct Case {
        const char* name;
        int filled, count, dest, source;
        const char* expected; // element i as a hex digit
    } cases[] = {
        {"overlap, source first: runs backwards", 16, 10, 5, 0, "012340123456789F"},
        {"overlap, destination first: runs forwards", 16, 10, 0, 5, "56789ABCDEABCDEF"},
        {"count cut to the source's size", 14, 100, 12, 10, "0123456789ABABCD"},
        {"disjoint", 16, 3, 13, 0, "0123456789ABC012"},
        {"nothing to copy", 16, 0, 0, 5, "0123456789ABCDEF"},
        {"source start past the end", 16, 4, 0, 16, "0123456789ABCDEF"},
        {"growing past the end", 4, 4, 2, 0, "010123"},
    };
    for (const Case& c : cases) {
        coBlockArray<int32_t> a;
        for (int i = 0; i < c.filled; ++i)
            a.at(i) = i;
        a.copyRange(a, c.count, c.dest, c.source);
        std::string got;
        for (int i = 0; i < a.size(); ++i)
            got += "0123456789ABCDEF"[a.get(i) & 15];
        EXPECT_EQ(got, c.expected) << c.name;
    }
    // strings too, whose copies share: a backward copy must not hand on a share it already replaced
    coBlockArray<utString> strings;
    for (int i = 0; i < 10; ++i)
        strings.at(i) = utString::copyOf(std::to_string(i));
    strings.copyRange(strings, 10, 5, 0);
    std::string got;
    for (int i = 0; i < strings.size(); ++i)
        got += strings.get(i).str();
    EXPECT_EQ(got, "012340123456789");
}

TEST(coBlockArray, CopiesAcrossBlocksShareStrings)
{
    coBlockArray<utString> a;
    for (int i = 0; i < 700; ++i)
        a.at(i) = utString::copyOf(numbered("s", i));
    coBlockArray<utString> b(a);
    EXPECT_EQ(b.size(), 700);
    EXPECT_EQ(b.blockCount(), 3);
    for (int i = 0; i < 700; i += 37)
        EXPECT_EQ(b.get(i).text(), a.get(i).text()) << i;
    a.clear(true);
    EXPECT_EQ(a.blockCount(), 0);
    EXPECT_EQ(b.get(699).str(), "s699") << "the copy keeps its shares after the source is freed";
    b = b;
    EXPECT_EQ(b.get(0).str(), "s0");
    coBlockArray<utString> c;
    c.at(1000) = utString("old");
    c = b;
    EXPECT_EQ(c.size(), 700);
    EXPECT_EQ(c.blockCount(), 3);
}

TEST(coPtrArray, GrowsByWholeStepsAndKeepsItsPointers)
{
    struct Case {
        int capacity, step, ensure, expectedCapacity;
    } cases[] = {
        {5, 10, 5, 5},   {5, 10, 6, 15}, {5, 10, 15, 15}, {5, 10, 16, 25},
        {5, 10, 36, 45}, {0, 4, 1, 4},   {0, 0, 3, 3},    {2, 1, 7, 7},
    };
    for (const Case& c : cases) {
        coPtrArray p(c.capacity, c.step);
        EXPECT_EQ(p.capacity(), c.capacity > 0 ? c.capacity : 0);
        EXPECT_TRUE(p.ensure(c.ensure));
        EXPECT_EQ(p.capacity(), c.expectedCapacity)
            << "capacity " << c.capacity << " step " << c.step << " ensure " << c.ensure;
    }
    coPtrArray p(5, 10);
    int values[40];
    for (int i = 0; i < 40; ++i)
        ASSERT_TRUE(p.append(&values[i]));
    EXPECT_EQ(p.capacity(), 45);
    for (int i = 0; i < 40; ++i)
        ASSERT_EQ(p.at(i), &values[i]) << i;
    p.clear(false);
    EXPECT_EQ(p.count(), 0);
    EXPECT_EQ(p.capacity(), 45) << "clearing without freeing keeps the room";
    p.clear(true);
    EXPECT_TRUE(p.append(&values[0]));
    EXPECT_EQ(p.capacity(), 10) << "freed, it grows by one step again";
}

} // namespace
