// The string table as the product file fills it: placement and downward probing with wrap-around, growth
// at the load limit, the refused null key and the first of two values kept.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "foundation/utStringutStringcoTablePcoSet.h"

namespace
{

// Built by appending: GCC 12 warns falsely (-Wrestrict) on a literal + std::string at -O2.
std::string numbered(const char* prefix, int i)
{
    std::string s(prefix);
    s += std::to_string(i);
    return s;
}

using Table = utStringutStringcoTablePcoSet;

int slotOf(const Table& t, const char* key)
{
    for (uint32_t i = 0; i < t.slotCount(); ++i)
        if (t.slot(i).key == utString(key))
            return static_cast<int>(i);
    return -1;
}

TEST(coTable, PlacementAndProbingWrapFromSlotZeroToTheTop)
{
    // "f", "af" and "ao" all hash to slot 0 of 16; "a" to slot 15
    Table t(4, 50);
    struct Step {
        const char* key;
        int slot;
    } steps[] = {{"f", 0}, {"af", 15}, {"ao", 14}, {"a", 13}, {"name", 12}};
    for (const Step& s : steps)
        EXPECT_EQ(t.insert({utString(s.key), utString("v")}), nullptr) << s.key;
    ASSERT_EQ(t.slotCount(), 16u);
    for (const Step& s : steps) {
        EXPECT_EQ(slotOf(t, s.key), s.slot) << s.key;
        EXPECT_EQ(t.findValue(utString(s.key)).str(), "v") << s.key;
    }
    EXPECT_TRUE(t.findValue(utString("bc")).isNull()) << "a miss that probes through the wrapped chain";
}

TEST(coTable, GrowsWhenTheEighthKeyGoesIn)
{
    Table t(4, 50);
    std::vector<std::string> keys;
    for (int i = 0; i < 8; ++i) {
        keys.push_back(numbered("key", i));
        t.insert({utString::copyOf(keys.back()), utString::copyOf(numbered("value", i))});
        EXPECT_EQ(t.count(), static_cast<uint32_t>(i + 1));
        EXPECT_EQ(t.sizeBits(), i < 7 ? 4u : 5u) << "after " << i + 1 << " keys";
    }
    EXPECT_EQ(t.slotCount(), 32u);
    for (int i = 0; i < 8; ++i)
        EXPECT_EQ(t.findValue(utString(keys[static_cast<size_t>(i)].c_str())).str(), numbered("value", i));
    for (int i = 8; i < 200; ++i)
        t.insert({utString::copyOf(numbered("key", i)), utString("x")});
    EXPECT_EQ(t.count(), 200u);
    EXPECT_EQ(t.sizeBits(), 9u) << "200 keys stay under half of 512 slots";
    for (int i = 0; i < 200; ++i)
        EXPECT_FALSE(t.findValue(utString::copyOf(numbered("key", i))).isNull()) << i;
}

TEST(coTable, NullKeyIsRefusedEmptyKeyIsStoredAndTheFirstValueStays)
{
    Table t;
    EXPECT_TRUE(t.findValue(utString("k")).isNull()) << "a lookup before any store";
    EXPECT_EQ(&t.lookup({utString("k"), utString()}), &Table::emptyPair());
    EXPECT_EQ(t.insert({utString(), utString("v")}), nullptr);
    EXPECT_EQ(t.count(), 0u);
    EXPECT_EQ(t.slotCount(), 0u) << "a refused pair makes no slots";
    EXPECT_EQ(t.insert({utString(""), utString("empty")}), nullptr);
    EXPECT_EQ(t.count(), 1u);
    EXPECT_EQ(t.findValue(utString("")).str(), "empty");
    EXPECT_TRUE(t.findValue(utString()).isNull());
    EXPECT_TRUE(t.getOrAdd(utString()).isNull());
    EXPECT_EQ(t.count(), 1u) << "getOrAdd cannot add a null key";
    // a second insert of a key keeps the first value and hands it back
    EXPECT_EQ(t.insert({utString("k"), utString("first")}), nullptr);
    const utStringPair* there = t.insert({utString("k"), utString("second")});
    ASSERT_NE(there, nullptr);
    EXPECT_EQ(there->value.str(), "first");
    EXPECT_EQ(t.findValue(utString("k")).str(), "first");
    EXPECT_EQ(t.count(), 2u);
}

} // namespace
