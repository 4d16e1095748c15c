// Block arrays and the pointer array under them: growth by whole blocks and whole steps, and range copies
// that keep the source's old values when they overlap within one array.
#include <gtest/gtest.h>

#include <string>

#include "foundation/coBlockArray.h"
#include "foundation/coPtrArray.h"

TEST(coBlockArray, WritingElement256MakesTwoBlocksOfEmptyStrings)
{
    coBlockArray<utString> a;
    a.at(256) = utString("last");
    EXPECT_EQ(a.size(), 257);
    EXPECT_EQ(a.blockCount(), 2);
    for (int i = 0; i < 256; ++i)
        ASSERT_TRUE(a.get(i).isNull()) << i;
    EXPECT_EQ(a.get(256).str(), "last");
    a.clear(false);
    EXPECT_EQ(a.size(), 0);
    EXPECT_EQ(a.blockCount(), 2) << "clearing without freeing keeps the blocks";
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
}

TEST(coPtrArray, GrowsByWholeSteps)
{
    struct Case {
        int capacity, step, ensure, expectedCapacity;
    } cases[] = {{5, 10, 5, 5}, {5, 10, 6, 15}, {5, 10, 16, 25}, {0, 4, 1, 4}, {0, 0, 3, 3}};
    for (const Case& c : cases) {
        coPtrArray p(c.capacity, c.step);
        EXPECT_TRUE(p.ensure(c.ensure));
        EXPECT_EQ(p.capacity(), c.expectedCapacity)
            << "capacity " << c.capacity << " step " << c.step << " ensure " << c.ensure;
    }
}
