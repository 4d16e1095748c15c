// The file watch against real files in a scratch folder: what each kind of change by another program is
// taken for, the new bytes of a growing file, and that each change is found once.
#include <gtest/gtest.h>

#include <cerrno>
#include <cstdio>
#include <string>

#include "document/qwzFileWatch.h"
#include "foundation/utTextConversion.h"
#include "platform/platform.h"
#include "testSupport.h"

namespace
{

using Change = qwzFileWatch::Change;

void appendFile(const std::string& path, const std::string& bytes)
{
    std::FILE* f = std::fopen(path.c_str(), "ab");
    ASSERT_NE(f, nullptr) << path;
    ASSERT_EQ(std::fwrite(bytes.data(), 1, bytes.size(), f), bytes.size());
    std::fclose(f);
}

// Numbered lines, so that any two stretches of the text differ.
std::string lines(int first, int count)
{
    std::string text;
    for (int i = first; i < first + count; ++i)
        text += "line " + std::to_string(i) + " of the log\r\n";
    return text;
}

struct Watched {
    std::string path;
    qwzFileWatch watch;
    explicit Watched(const std::string& name, const std::string& bytes)
        : path(qt::scratchDir(name) + "/log.txt"), watch(utString(path.c_str()))
    {
        qt::writeFile(path, bytes);
        EXPECT_TRUE(watch.knowFromDisk());
    }
    Change look(std::string* added = nullptr)
    {
        std::string bytes;
        Change change = watch.look(bytes);
        if (added)
            *added = bytes;
        else
            EXPECT_EQ(bytes, "") << "bytes handed on for a change that is no growth";
        return change;
    }
};

TEST(qwzFileWatch, GrowingLogHandsOnEachNewStretchOnce)
{
    Watched w("grow", lines(0, 300));
    EXPECT_EQ(w.look(), Change::Unchanged);
    std::string added;
    // small appends, one bigger than the kept tail, and one that ends inside a UTF-8 character
    for (const std::string& more : {lines(300, 1), lines(301, 400), std::string("\xe6\x97"), std::string("\xa5\r\n")}) {
        appendFile(w.path, more);
        EXPECT_EQ(w.look(&added), Change::Grown);
        EXPECT_EQ(added, more);
        EXPECT_EQ(w.look(), Change::Unchanged);
    }
    EXPECT_EQ(w.watch.size(), static_cast<long long>(qt::readFile(w.path).size()));
}

TEST(qwzFileWatch, EmptyFileThatGrowsHandsOnAllOfIt)
{
    Watched w("empty", "");
    std::string added;
    EXPECT_EQ(w.look(), Change::Unchanged);
    appendFile(w.path, "first\r\n");
    EXPECT_EQ(w.look(&added), Change::Grown);
    EXPECT_EQ(added, "first\r\n");
}

// What the document showed at its load is the base, not the file as it is when the watch starts: bytes
// written between the load and the first look are found.
TEST(qwzFileWatch, KnownLoadIsTheBase)
{
    std::string path = qt::scratchDir("known") + "/log.txt";
    std::string shown = lines(0, 200);
    qt::writeFile(path, shown + lines(200, 3));
    qwzFileWatch watch{utString(path.c_str())};
    watch.know(static_cast<long long>(shown.size()), shown);
    std::string added;
    EXPECT_EQ(watch.look(added), Change::Grown);
    EXPECT_EQ(added, lines(200, 3));

    // a load whose last bytes are not the file's: the file was rewritten since
    qwzFileWatch other{utString(path.c_str())};
    other.know(static_cast<long long>(shown.size()), lines(1000, 200));
    added.clear();
    EXPECT_EQ(other.look(added), Change::Rewritten);
    EXPECT_EQ(added, "");

    // with the write time of the file as it is, the size and time say all: the file is not read
    qwzFileWatch timed{utString(path.c_str())};
    std::string whole = qt::readFile(path);
    timed.know(static_cast<long long>(whole.size()), lines(1000, 200),
               qwzFileWatch::writeTimeOf(utString(path.c_str())));
    EXPECT_EQ(timed.look(added), Change::Unchanged);
}

TEST(qwzFileWatch, RewritesAreFoundOnceAndBecomeTheNewBase)
{
    const std::string log = lines(0, 300);
    std::string changedInTail = log;
    changedInTail[log.size() - 10] = 'X';
    std::string changedAtTailStart = log;
    changedAtTailStart[log.size() - qwzFileWatch::tailSize] ^= 1;
    struct Case {
        const char* name;
        std::string after;
    } cases[] = {
        {"truncated", ""},
        {"shrank", log.substr(0, log.size() / 2)},
        {"rotated to a new, longer log", lines(5000, 400)},
        {"same size, one byte changed", changedInTail},
        {"the first byte of the kept tail changed, and grown", changedAtTailStart + "more\r\n"},
    };
    for (const Case& c : cases) {
        Watched w(std::string("rewrite-") + std::to_string(&c - cases), log);
        qt::writeFile(w.path, c.after);
        EXPECT_EQ(w.look(), Change::Rewritten) << c.name;
        EXPECT_EQ(w.look(), Change::Unchanged) << c.name << ": found twice";
        // growth after the rewrite is measured against the new file
        std::string added;
        appendFile(w.path, "next\r\n");
        EXPECT_EQ(w.look(&added), Change::Grown) << c.name;
        EXPECT_EQ(added, "next\r\n") << c.name;
    }
}

// Only the last tailSize bytes before the old end are compared: a change just before them is not seen.
TEST(qwzFileWatch, OnlyTheKeptTailIsCompared)
{
    const std::string log = lines(0, 300);
    Watched w("before-tail", log);
    std::string changed = log;
    changed[log.size() - qwzFileWatch::tailSize - 1] ^= 1;
    qt::writeFile(w.path, changed + "more\r\n");
    std::string added;
    EXPECT_EQ(w.look(&added), Change::Grown);
    EXPECT_EQ(added, "more\r\n");
}

TEST(qwzFileWatch, SameBytesWrittenAgainIsNoChange)
{
    Watched w("touched", lines(0, 10));
    qt::writeFile(w.path, lines(0, 10));
    EXPECT_EQ(w.look(), Change::Unchanged);
}

TEST(qwzFileWatch, GoneOnceThenComingBackIsMeasuredAgainstWhatWasKnown)
{
    const std::string log = lines(0, 50);
    Watched w("gone", log);
    std::string moved = w.path + ".1";
    ASSERT_EQ(std::rename(w.path.c_str(), moved.c_str()), 0);
    EXPECT_EQ(w.look(), Change::Gone);
    EXPECT_EQ(w.look(), Change::Unchanged) << "gone found twice";

    // back as it was: nothing to do; back longer: grown; deleted and back as another file: rewritten
    ASSERT_EQ(std::rename(moved.c_str(), w.path.c_str()), 0);
    EXPECT_EQ(w.look(), Change::Unchanged);
    ASSERT_EQ(std::remove(w.path.c_str()), 0);
    EXPECT_EQ(w.look(), Change::Gone);
    std::string added;
    qt::writeFile(w.path, log + "more\r\n");
    EXPECT_EQ(w.look(&added), Change::Grown);
    EXPECT_EQ(added, "more\r\n");
    ASSERT_EQ(std::remove(w.path.c_str()), 0);
    EXPECT_EQ(w.look(), Change::Gone);
    qt::writeFile(w.path, lines(900, 2));
    EXPECT_EQ(w.look(), Change::Rewritten);
}

TEST(qwzFileWatch, MissingFileIsKnownAsGone)
{
    std::string path = qt::scratchDir("missing") + "/none.txt";
    qwzFileWatch watch{utString(path.c_str())};
    EXPECT_FALSE(watch.knowFromDisk());
    std::string added;
    EXPECT_EQ(watch.look(added), Change::Unchanged);
}

// The watch reads through this: while it has the file open, a logger can still rotate it (rename, delete)
// and a save can still replace it.
TEST(qwzFileWatch, ItsReadNeverLocksTheFile)
{
    std::string dir = qt::scratchDir("shared");
    std::string path = dir + "/log.txt", rotated = dir + "/log.1.txt";
    qt::writeFile(path, "line\r\n");
    utUtf8ToUtf16 name{utString(path.c_str())};
    std::FILE* open = platform::fopenShared(name.c_str());
    ASSERT_NE(open, nullptr);
    EXPECT_EQ(std::rename(path.c_str(), rotated.c_str()), 0) << "renamed while the watch reads it";
    EXPECT_EQ(std::remove(rotated.c_str()), 0) << "deleted while the watch reads it";
    std::fclose(open);
    utUtf8ToUtf16 missing{utString(path.c_str())};
    EXPECT_EQ(platform::fopenShared(missing.c_str()), nullptr);
    EXPECT_EQ(errno, ENOENT);
}

} // namespace
