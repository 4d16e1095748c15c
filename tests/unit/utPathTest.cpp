// Environment references in paths (which every probe expands), the file-kind probes and opening by UTF-8
// name, against real files and directories. (Nothing calls the removal.)
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "foundation/utPath.h"
#include "foundation/utTextConversion.h"
#include "testSupport.h"

namespace
{

TEST(utExpandReferences, ResolvesOneReference)
{
    qt::ScopedEnv env;
    env.set("HOME", "/h");
    env.set("QV", "/a");
    env.set("QP", "QQ");
    env.set("QQ", "R");
    env.set("QS", "QT");
    env.set("QT", "1");
    env.set("QLOOP", "QLOOP2");
    env.set("QLOOP2", "QLOOP");
    env.set("QUNSET", nullptr);
    struct Case {
        const char* in;
        const char* expected;
    } cases[] = {
        {"~/x", "/h/x"},
        {"~", "/h"},
        {"$QV/x", "/a/x"},
        {"$QV", "/a"},
        {"$QUNSET/x", "/x"},
        {"$/x", "/x"},
        {"QP", "R"},  // QP -> QQ -> R, and R names nothing
        {"QS", "QT"}, // a one-character value that names nothing ends the chain
        {"QUNSET", "QUNSET"},
        {"plain/path", "plain/path"},
        {"", ""},
        {"a~b", "a~b"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(utExpandReferences(utString(c.in)).str(), c.expected) << c.in;
    // a loop of names stops after its bounded number of look-ups on one of the two names
    std::string loop = utExpandReferences(utString("QLOOP")).str();
    EXPECT_TRUE(loop == "QLOOP" || loop == "QLOOP2") << loop;
    EXPECT_TRUE(utExpandReferences(utString()).isNull());
    EXPECT_EQ(utExpandReferences("~/xyz", 3).str(), "/h/x") << "the length bounds the input";
}

TEST(utExpandReferences, LongInputsAndValuesFitWhateverTheirLength)
{
    std::string longValue(5000, 'v');
    qt::ScopedEnv env;
    env.set("QLONG", longValue.c_str());
    env.set("HOME", longValue.c_str());
    std::string longRest = "/" + std::string(3000, 'r');
    struct Case {
        std::string in, expected;
    } cases[] = {
        {"$QLONG" + longRest, longValue + longRest},
        {"~" + longRest, longValue + longRest},
        {std::string(4000, 'n'), std::string(4000, 'n')},
        {"QLONG", longValue},
    };
    for (const Case& c : cases) {
        utString got = utExpandReferences(c.in.c_str(), static_cast<int>(c.in.size()));
        EXPECT_EQ(got.length(), static_cast<int>(c.expected.size()));
        EXPECT_TRUE(got.str() == c.expected) << c.in.substr(0, 20);
    }
}

TEST(utFileProbe, KindsOfRealEntries)
{
    std::string dir = qt::scratchDir("utFileProbe");
    std::string file = dir + "/file.txt";
    qt::writeFile(file, "x");
    qt::ScopedEnv env;
    env.set("QPROBEDIR", dir.c_str());
    struct Case {
        std::string path;
        int probe; // -1: not checked
        bool regular, directory;
    } cases[] = {
        {file, utProbeRegular, true, false},
        {"$QPROBEDIR/file.txt", utProbeRegular, true, false},
        {dir, utProbeOtherKind, false, true},
        {dir + "/", utProbeOtherKind, false, true},
        {dir + "//", -1, false, true},
        {dir + "\\", -1, false, true},
        {dir + "/missing", utProbeFailed, false, false},
        {"", utProbeFailed, false, false},
    };
    for (const Case& c : cases) {
        utString path(c.path.c_str());
        // -1: trailing separators, where the raw status call differs between systems
        if (c.probe != -1) {
            EXPECT_EQ(utProbe(path), c.probe) << c.path;
        }
        EXPECT_EQ(utIsRegularFile(path), c.regular) << c.path;
        EXPECT_EQ(utIsDirectory(path), c.directory) << c.path;
    }
    EXPECT_FALSE(utIsDirectory(utString()));
    EXPECT_FALSE(utIsRegularFile(utString()));
}

// (Writing and reading back through a non-ASCII name is the file streams' test.)
TEST(utFileProbe, WideNamesWithNonAsciiCharacters)
{
    std::string dir = qt::scratchDir("utFileProbeWide");
    const std::string leaf = "Gr\xC3\xBC\xC3\x9F"
                             "e-\xE6\x97\xA5\xE6\x9C\xAC.txt";
    std::FILE* f = utOpenFile((dir + "/" + leaf).c_str(), "wb");
    ASSERT_NE(f, nullptr) << leaf;
    std::fclose(f);
    EXPECT_EQ(utOpenFile((dir + "/missing").c_str(), "rb"), nullptr);
    EXPECT_EQ(utOpenFile(nullptr, "rb"), nullptr);
    EXPECT_EQ(utProbe(utString((dir + "/" + leaf).c_str())), utProbeRegular);
    // the name on disk is the wide name, not an ANSI rendering of it
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(std::filesystem::path(dir))) {
        std::u8string found = entry.path().filename().u8string();
        names.emplace_back(found.begin(), found.end());
    }
    EXPECT_EQ(names, std::vector<std::string>{leaf});
}

} // namespace
