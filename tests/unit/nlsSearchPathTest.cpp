// The catalog search path: building it from ";" lists with "~" and duplicates, the absolute-name test,
// and which entry answers a lookup on real directories.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "nls/nlsSearchPath.h"
#include "testSupport.h"

namespace
{

std::vector<std::string> entries(const nlsSearchPath& path)
{
    std::vector<std::string> out;
    for (int32_t i = 0; i < path.count(); ++i)
        out.push_back(path.entry(i)->text());
    return out;
}

using List = std::vector<std::string>;

TEST(nlsSearchPath, ListsSkipEmptyPiecesAndDuplicates)
{
    nlsSearchPath path;
    EXPECT_EQ(path.addList("a;;b;", nlsSearchPath::Append), 0);
    EXPECT_EQ(entries(path), (List{"a", "b"}));
    EXPECT_EQ(path.addEntry("a", nlsSearchPath::Append), nlsSearchPath::Duplicate);
    EXPECT_EQ(path.addList("b;c;a", nlsSearchPath::Append), 0) << "the list call ignores what pieces gave";
    EXPECT_EQ(entries(path), (List{"a", "b", "c"}));
    EXPECT_EQ(path.addList(";", nlsSearchPath::Append), 0);
    EXPECT_EQ(path.addList(nullptr, nlsSearchPath::Append), 0);
    EXPECT_EQ(path.count(), 3);
}

// A directory holding ";" is one piece inside double quotes, and listOf writes any directory so.
TEST(nlsSearchPath, QuotesKeepASemicolonInsideOnePiece)
{
    nlsSearchPath path;
    path.addList("\"C:\\a;b\";D:\\c;\"\";x\"y;z\"", nlsSearchPath::Append);
    EXPECT_EQ(entries(path), (List{"C:\\a;b", "D:\\c", "xy;z"})) << "an empty quoted piece is skipped too";
    for (const char* directory : {"C:\\Tools;Old\\Quillon\\lib\\locale", "/opt/q", ";", "a;;b;"}) {
        nlsSearchPath one;
        one.addList(nlsSearchPath::listOf(directory).c_str(), nlsSearchPath::Append);
        EXPECT_EQ(entries(one), List{directory});
    }
    nlsSearchPath none;
    none.addList(nlsSearchPath::listOf("").c_str(), nlsSearchPath::Append);
    EXPECT_EQ(none.count(), 0);
}

TEST(nlsSearchPath, ATildeBecomesHome)
{
    qt::ScopedEnv env;
    env.set("HOME", "/home/q");
    nlsSearchPath path;
    EXPECT_EQ(path.addList("~/cat;~;/home/q/cat", nlsSearchPath::Append), 0);
    EXPECT_EQ(entries(path), (List{"/home/q/cat", "/home/q"})) << "the expanded twin is a duplicate";
    env.set("HOME", nullptr);
    EXPECT_EQ(path.addEntry("~/other", nlsSearchPath::Append), nlsSearchPath::NoHome);
    EXPECT_EQ(path.addList("~/other;plain", nlsSearchPath::Append), 0);
    EXPECT_EQ(entries(path), (List{"/home/q/cat", "/home/q", "plain"}));
}

TEST(nlsSearchPath, AbsoluteNames)
{
    const struct {
        const char* name;
        bool absolute;
    } cases[] = {
        {"C:\\x", true},  {"c:/x", true},  {"C:~", true},        {"C:x", false}, {"C:", false},
        {"/x", true},     {"\\x", true},   {"~/x", true},        {"x/y", false}, {"", false},
        {"1:\\x", false}, {".\\x", false}, {"\\\\srv\\s", true},
    };
    for (const auto& c : cases)
        EXPECT_EQ(nlsSearchPath::isAbsolute(c.name), c.absolute) << "\"" << c.name << "\"";
}

TEST(nlsSearchPath, TheFirstEntryHoldingTheNameAnswers)
{
    std::string root = qt::scratchDir("nls-search");
    for (const char* dir : {"/a", "/b", "/b/LC_MESSAGES", "/c"})
        std::filesystem::create_directories(root + dir);
    qt::writeFile(root + "/b/q.mo", "b");
    qt::writeFile(root + "/c/q.mo", "c");
    qt::writeFile(root + "/c/q", "c bare");
    qt::writeFile(root + "/a/q", "a bare");
    std::string a = qt::hostPath(root + "/a"), b = qt::hostPath(root + "/b"), c = qt::hostPath(root + "/c");
    nlsSearchPath path;
    path.addList((a + ";" + b + ";" + c).c_str(), nlsSearchPath::Append);
    EXPECT_STREQ(path.find("q.mo", nlsFILE).text(), (b + "/q.mo").c_str());
    EXPECT_STREQ(path.findWithSuffix("q", ".mo").text(), (b + "/q.mo").c_str()) << "the suffix is tried first";
    EXPECT_STREQ(path.findWithSuffix("q", ".po").text(), (a + "/q").c_str());
    EXPECT_STREQ(path.find("LC_MESSAGES", nlsDIRECTORY).text(), (b + "/LC_MESSAGES").c_str());
    EXPECT_TRUE(path.find("none", nlsFILE).empty());
    // an absolute name never uses the list
    std::string absolute = c + "/q.mo";
    EXPECT_STREQ(path.find(absolute.c_str(), nlsFILE).text(), absolute.c_str());
    EXPECT_TRUE(path.find(absolute.c_str(), nlsDIRECTORY).empty());
    nlsSearchPath empty;
    EXPECT_TRUE(empty.find("q.mo", nlsFILE).empty());
}

TEST(nlsSearchPath, FileKinds)
{
    std::string root = qt::scratchDir("nls-kinds");
    qt::writeFile(root + "/file", "x");
    std::string host = qt::hostPath(root);
    const struct {
        std::string path;
        nlsFileKind kind;
    } cases[] = {
        {host, nlsDIRECTORY},      {host + "/", nlsDIRECTORY},        {host + "\\", nlsDIRECTORY},
        {host + "/file", nlsFILE}, {host + "/missing", nlsNOT_FOUND}, {host + "/file/below", nlsNOT_FOUND},
    };
    for (const auto& c : cases)
        EXPECT_EQ(nlsProbeFile(c.path.c_str()), c.kind) << c.path;
    // a link that leads to itself: the system's "too many levels of links"
    std::error_code made;
    std::filesystem::create_symlink(root + "/loop", root + "/loop", made);
    if (!made) {
        EXPECT_EQ(nlsProbeFile((host + "/loop").c_str()), nlsLINK_ERROR);
    }
}

} // namespace
