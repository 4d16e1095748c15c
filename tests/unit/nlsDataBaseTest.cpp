// Catalog databases against real msgfmt output: both byte orders and both search paths translate alike,
// the shared list counts references, and files that cannot be read give their codes. (A corrupt catalog's
// report and assertion are checked end to end, from the installation tree.)
#include <gtest/gtest.h>

#include <cstring>
#include <fstream>
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
std::vector<std::string> wrappingKeys(const std::string& path)
{
    std::string image = qt::readFile(path);
    auto word = [&](size_t at) {
        const auto* b = reinterpret_cast<const unsigned char*>(image.data() + at);
        bool little = image[0] == '\xde';
        return little ? uint32_t(b[0] | b[1] << 8 | b[2] << 16 | uint32_t(b[3]) << 24)
                      : uint32_t(uint32_t(b[0]) << 24 | b[1] << 16 | b[2] << 8 | b[3]);
    };
    const uint32_t n = word(8), sources = word(12), size = word(20), table = word(24);
    std::vector<std::string> keys;
    for (uint32_t i = 0; i < n && size > 2; ++i) {
        std::string key = image.substr(word(sources + 8 * i + 4), word(sources + 8 * i));
        uint32_t h = 0;
        for (unsigned char c : key) {
            h = (h << 4) + c;
            if (uint32_t g = h & 0xF0000000u)
                h ^= (g >> 24) ^ g;
        }
        uint32_t index = h % size, step = 1 + h % (size - 2);
        bool wrapped = false;
        for (uint32_t probes = 0; word(table + 4 * index) != i + 1 && probes < size; ++probes) {
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
    EXPECT_FALSE(wrappingKeys(catalogPath("big")).empty()) << "the test catalog no longer wraps a probe";
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

} // namespace
