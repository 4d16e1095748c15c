// Catalog databases against real msgfmt output: both byte orders and both search paths translate alike,
// the shared list counts references, files that cannot be read give their codes, and crafted bad catalogs
// made from the real ones are refused as corrupt (513) without the loader or a lookup leaving the image
// (ASan natively). (A corrupt catalog's report and assertion are checked end to end, from the installation
// tree.)
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <fstream>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "nls/nlsDataBase.h"
#include "testSupport.h"

namespace
{

const char* const variants[] = {"little", "big", "little-nohash", "big-nohash"};

std::string catalogPath(const std::string& variant)
{
    return qt::dataPath("nls/" + variant + "/German/LC_MESSAGES/quillon.mo");
}

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

Image load(const std::string& variant)
{
    return Image{qt::readFile(catalogPath(variant)), variant[0] == 'b'};
}

std::string unquote(const std::string& line)
{
    std::string out;
    size_t start = line.find('"') + 1, end = line.rfind('"');
    for (size_t i = start; i < end; ++i) {
        if (line[i] == '\\' && i + 1 < end) {
            char c = line[++i];
            out += c == 'n' ? '\n' : c == 't' ? '\t' : c;
        } else {
            out += line[i];
        }
    }
    return out;
}

// The (msgid, msgstr) pairs of the test catalog's source, read from the .po file itself.
std::vector<std::pair<std::string, std::string>> sourcePairs()
{
    std::vector<std::pair<std::string, std::string>> pairs;
    std::ifstream po(qt::dataPath("nls/German.po"));
    std::string line, id;
    while (std::getline(po, line)) {
        if (line.rfind("msgid ", 0) == 0)
            id = unquote(line);
        else if (line.rfind("msgstr ", 0) == 0 && !id.empty())
            pairs.emplace_back(id, unquote(line));
    }
    return pairs;
}

// The keys whose probe in the catalog's hash table runs past the table's end and wraps to its start, read
// from the file with the format's own hash (hashpjw) and double hashing.
std::vector<std::string> wrappingKeys(const Image& m)
{
    const uint32_t n = m.get(count), size = m.get(hashSize), table = m.get(hashTable);
    std::vector<std::string> keys;
    for (uint32_t i = 0; i < n && size > 2; ++i) {
        std::string key = m.bytes.substr(m.get(m.get(sources) + 8 * i + 4), m.get(m.get(sources) + 8 * i));
        uint32_t h = 0;
        for (unsigned char c : key) {
            h = (h << 4) + c;
            if (uint32_t g = h & 0xF0000000u)
                h ^= (g >> 24) ^ g;
        }
        uint32_t index = h % size, step = 1 + h % (size - 2);
        bool wrapped = false;
        for (uint32_t probes = 0; m.get(table + 4 * index) != i + 1 && probes < size; ++probes) {
            wrapped = wrapped || index >= size - step;
            index = (index + step) % size;
        }
        if (wrapped)
            keys.push_back(key);
    }
    return keys;
}

TEST(nlsDataBase, EveryVariantTranslatesEveryMessageOfTheSource)
{
    // the byte-swapped catalog's lookups must reach the probe's wrap, or the swapped wrap goes untested
    EXPECT_FALSE(wrappingKeys(load("big")).empty()) << "the test catalog no longer wraps a probe";
    auto pairs = sourcePairs();
    ASSERT_GE(pairs.size(), 20u);
    for (const char* variant : variants) {
        nlsDataBase db(catalogPath(variant).c_str());
        ASSERT_EQ(db.code(), 0u) << variant;
        EXPECT_EQ(db.hashed(), std::strstr(variant, "nohash") == nullptr) << variant;
        EXPECT_EQ(db.messageCount(), pairs.size() + 1) << variant << ": the header entry counts too";
        for (const auto& [id, str] : pairs)
            EXPECT_STREQ(db.translate(id.c_str()), str.c_str()) << variant << ": \"" << id << "\"";
    }
}

TEST(nlsDataBase, AMissReturnsTheKeyItself)
{
    const char* misses[] = {"Opn", "Open ", "open", "Zoom!", "zzz", "\x7f", "A very long key that is nowhere"};
    for (const char* variant : variants) {
        nlsDataBase db(catalogPath(variant).c_str());
        for (const char* key : misses)
            EXPECT_EQ(db.translate(key), key) << variant << ": \"" << key << "\"";
        // the empty key is the header entry: found, and its translation is the header text
        EXPECT_NE(std::strstr(db.translate(""), "Project-Id-Version: quillon-tests"), nullptr) << variant;
        EXPECT_EQ(db.translate(nullptr), nullptr);
    }
}

TEST(nlsDataBase, FilesThatCannotBeReadGiveTheirCodes)
{
    std::string dir = qt::scratchDir("nls-db-codes");
    std::string good = qt::readFile(catalogPath("little"));
    std::string revision = good;
    revision[4] = 1;
    std::string magic = good;
    magic[0] = 0x12;
    qt::writeFile(dir + "/revision.mo", revision);
    qt::writeFile(dir + "/magic.mo", magic);
    const struct {
        std::string path;
        uint32_t code;
    } cases[] = {
        {qt::hostPath(dir + "/missing.mo"), 17},
        {qt::hostPath(dir + "/revision.mo"), 65},
        {qt::hostPath(dir + "/magic.mo"), 33},
    };
    for (const auto& c : cases) {
        nlsDataBase db(c.path.c_str());
        EXPECT_EQ(db.code(), c.code) << c.path;
        EXPECT_TRUE(db.failed());
        EXPECT_STREQ(db.translate("Open"), "Open");
    }
}

TEST(nlsDataBase, TheListSharesByPathAndCountsReferences)
{
    std::string path = catalogPath("little");
    ASSERT_EQ(nlsDataBase::find(path.c_str()), nullptr);
    uint32_t code = 99;
    nlsDataBase* db = nlsDataBase::open(path.c_str(), code);
    ASSERT_NE(db, nullptr);
    EXPECT_EQ(code, 0u);
    EXPECT_EQ(db->references(), 1);
    EXPECT_EQ(nlsDataBase::find(path.c_str()), db);
    EXPECT_EQ(db->references(), 2);
    nlsDataBase::release(db);
    EXPECT_EQ(db->references(), 1);
    EXPECT_EQ(nlsDataBase::first(), db);
    nlsDataBase::release(db);
    EXPECT_EQ(nlsDataBase::first(), nullptr);
    EXPECT_EQ(nlsDataBase::open(catalogPath("none").c_str(), code), nullptr);
    EXPECT_EQ(code, 17u);
    EXPECT_EQ(nlsDataBase::first(), nullptr) << "a failed database never enters the list";
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
