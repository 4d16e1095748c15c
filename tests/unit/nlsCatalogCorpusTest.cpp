// Crafted bad catalogs, made from real msgfmt output in both byte orders: each is refused with
// "Catalog is corrupt" (513) and none makes the loader or a lookup leave the image (ASan natively).
#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <string>

#include "nls/nlsDataBase.h"
#include "testSupport.h"

namespace
{

// A catalog image with header and table words read and written in the file's own byte order.
struct Image {
    std::string bytes;
    bool big;

    uint32_t get(size_t at) const
    {
        uint32_t v = 0;
        for (int i = 0; i < 4; ++i) {
            uint32_t b = static_cast<unsigned char>(bytes[at + i]);
            v |= big ? b << (8 * (3 - i)) : b << (8 * i);
        }
        return v;
    }
    void set(size_t at, uint32_t v)
    {
        for (int i = 0; i < 4; ++i)
            bytes[at + i] = char(big ? v >> (8 * (3 - i)) : v >> (8 * i));
    }
    uint32_t size() const
    {
        return uint32_t(bytes.size());
    }
};

// Offsets of the header's words: message count, the two tables, and the hash table's size and offset.
enum : size_t { count = 8, sources = 12, translations = 16, hashSize = 20, hashTable = 24 };

Image load(const char* variant)
{
    std::string path = qt::dataPath(std::string("nls/") + variant + "/German/LC_MESSAGES/quillon.mo");
    return Image{qt::readFile(path), variant[0] == 'b'};
}

struct Corruption {
    const char* name;
    std::function<void(Image&)> apply;
};

const Corruption corruptions[] = {
    {"empty file", [](Image& m) { m.bytes.clear(); }},
    {"truncated header", [](Image& m) { m.bytes.resize(20); }},
    {"header only", [](Image& m) { m.bytes.resize(28); }},
    {"truncated in the tables", [](Image& m) { m.bytes.resize(m.get(translations) + 12); }},
    {"truncated in the strings", [](Image& m) { m.bytes.resize(m.size() - 9); }},
    {"huge count", [](Image& m) { m.set(count, 0xFFFFFFFF); }},
    {"count one past the table", [](Image& m) { m.set(count, (m.size() - m.get(sources)) / 8 + 1); }},
    {"source table past the end", [](Image& m) { m.set(sources, m.size() - 8); }},
    {"source table offset wraps", [](Image& m) { m.set(sources, 0xFFFFFFF8); }},
    {"translation table past the end", [](Image& m) { m.set(translations, m.size()); }},
    {"string offset past the end", [](Image& m) { m.set(m.get(sources) + 8 * 3 + 4, m.size()); }},
    {"string offset wraps", [](Image& m) { m.set(m.get(translations) + 8 * 2 + 4, 0xFFFFFFFF); }},
    {"string length past the end", [](Image& m) { m.set(m.get(sources) + 8 * 3, m.size()); }},
    {"string length wraps", [](Image& m) { m.set(m.get(translations) + 8 * 5, 0xFFFFFFFF); }},
    {"last string without its NUL",
     [](Image& m) {
         uint32_t at = m.get(m.get(translations) + 8 * (m.get(count) - 1) + 4),
                  len = m.get(m.get(translations) + 8 * (m.get(count) - 1));
         m.bytes[at + len] = 'x';
     }},
    {"source string without its NUL",
     [](Image& m) { m.bytes[m.get(m.get(sources) + 8 * 4 + 4) + m.get(m.get(sources) + 8 * 4)] = '!'; }},
    {"hash table past the end", [](Image& m) { m.set(hashTable, m.size() - 4); }},
    {"hash size past the end", [](Image& m) { m.set(hashSize, (m.size() - m.get(hashTable)) / 4 + 1); }},
    {"huge hash size", [](Image& m) { m.set(hashSize, 0xFFFFFFFF); }},
    {"hash slot beyond the count", [](Image& m) { m.set(m.get(hashTable) + 4 * 5, m.get(count) + 1); }},
    {"hash slot 0xFFFFFFFF", [](Image& m) { m.set(m.get(hashTable), 0xFFFFFFFF); }},
    {"full hash table without an empty slot",
     [](Image& m) {
         for (uint32_t i = 0; i < m.get(hashSize); ++i)
             if (m.get(m.get(hashTable) + 4 * i) == 0)
                 m.set(m.get(hashTable) + 4 * i, 1 + i % m.get(count));
     }},
};

TEST(nlsCatalogCorpus, EveryCraftedCatalogIsRefusedAsCorrupt)
{
    std::string dir = qt::scratchDir("nls-corpus");
    for (const char* variant : {"little", "big"}) {
        for (const Corruption& c : corruptions) {
            Image m = load(variant);
            ASSERT_GE(m.get(hashSize), 3u) << "the corpus starts from a hashed catalog";
            c.apply(m);
            std::string file = dir + "/" + variant + "-" + std::to_string(&c - corruptions) + ".mo";
            qt::writeFile(file, m.bytes);
            nlsDataBase db(qt::hostPath(file).c_str());
            EXPECT_EQ(db.code(), 513u) << variant << ": " << c.name;
            EXPECT_TRUE(db.failed()) << variant << ": " << c.name;
            EXPECT_STREQ(db.translate("Open"), "Open") << variant << ": " << c.name;
            nlsDataBase fromMemory(m.bytes.data(), m.bytes.size());
            EXPECT_EQ(fromMemory.code(), 513u) << variant << ": " << c.name << " (from memory)";
        }
    }
}

// A table of 4 slots (not a prime) where a key with an odd hash steps by 2 from slot 1 and so never
// reaches the empty slots 0 and 2: the probe must still end, as a miss.
TEST(nlsCatalogCorpus, AProbeCycleThatMissesTheEmptySlotsEndsAsAMiss)
{
    for (const char* variant : {"little", "big"}) {
        Image m = load(variant);
        m.set(hashSize, 4);
        for (uint32_t i = 0; i < 4; ++i)
            m.set(m.get(hashTable) + 4 * i, i % 2 ? 1 : 0);
        nlsDataBase db(m.bytes.data(), m.bytes.size());
        ASSERT_EQ(db.code(), 0u) << variant;
        const char* key = "a"; // hash 97: slot 1, step 2
        EXPECT_EQ(db.translate(key), key) << variant;
        EXPECT_STREQ(db.translate("q"), "q") << variant;
    }
}

// Hash sizes below 3 make the step meaningless; such catalogs, and one with no hash offset, fall back to
// the binary search and still translate.
TEST(nlsCatalogCorpus, SmallHashSizesOrNoHashOffsetUseTheBinarySearch)
{
    const struct {
        uint32_t size, offset;
    } cases[] = {{0, 1}, {1, 1}, {2, 1}, {37, 0}, {2, 0xFFFFFFFF}};
    for (const char* variant : {"little", "big"}) {
        for (const auto& c : cases) {
            Image m = load(variant);
            m.set(hashSize, c.size);
            if (c.offset != 1)
                m.set(hashTable, c.offset);
            nlsDataBase db(m.bytes.data(), m.bytes.size());
            ASSERT_EQ(db.code(), 0u) << variant << " S=" << c.size;
            EXPECT_FALSE(db.hashed());
            EXPECT_STREQ(db.translate("Print Preview"), "Seitenansicht") << variant << " S=" << c.size;
            EXPECT_STREQ(db.translate("Preview"), "Preview");
        }
    }
}

} // namespace
