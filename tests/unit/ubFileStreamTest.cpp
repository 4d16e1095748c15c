// File streams on real files: the open-mode table, no-replace and at-end, and reading and writing through
// the standard operators with flushing (seeking and the character calls themselves are used by nothing).
#include <gtest/gtest.h>

#include <string>

#include "foundation/ubFileBuffer.h"
#include "foundation/ubIFStream.h"
#include "foundation/ubOFStream.h"
#include "testSupport.h"

namespace
{

// Local names for the flags (a using-directive would meet POSIX truncate()).
constexpr unsigned in = ubMode::in, out = ubMode::out, atEnd = ubMode::atEnd, append = ubMode::append,
                   truncate = ubMode::truncate, binary = ubMode::binary, noCreate = ubMode::noCreate,
                   noReplace = ubMode::noReplace;

TEST(ubFileBuffer, OpenModeTableOnRealFiles)
{
    struct Case {
        const char* name;
        unsigned mode;
        bool exists, opens;
        const char* after; // file contents after writing "new" (when the mode writes)
    } cases[] = {
        {"in", in, true, true, "old-old"},
        {"in, missing", in, false, false, nullptr},
        {"out", out, true, true, "new"},
        {"out, missing", out, false, true, "new"},
        {"out truncate", out | truncate, true, true, "new"},
        {"out append", out | append, true, true, "old-oldnew"},
        {"append implies out", append, true, true, "old-oldnew"},
        {"in append is a+", in | append, true, true, "old-oldnew"},
        {"in binary", in | binary, true, true, "old-old"},
        {"out binary", out | binary, true, true, "new"},
        {"out truncate binary", out | truncate | binary, true, true, "new"},
        {"out append binary", out | append | binary, true, true, "old-oldnew"},
        {"in out is r+", in | out, true, true, "new-old"},
        {"in out, missing", in | out, false, false, nullptr},
        {"in out truncate", in | out | truncate, true, true, "new"},
        {"in out append", in | out | append, true, true, "old-oldnew"},
        {"in out binary", in | out | binary, true, true, "new-old"},
        {"in out truncate binary", in | out | truncate | binary, true, true, "new"},
        {"in out append binary", in | out | append | binary, true, true, "old-oldnew"},
        {"truncate alone", truncate, true, false, "old-old"},
        {"in truncate", in | truncate, true, false, "old-old"},
        {"binary alone", binary, true, false, "old-old"},
        {"nothing", 0, true, false, "old-old"},
        {"out no-replace, existing", out | noReplace, true, false, "old-old"},
        {"out no-replace, missing", out | noReplace, false, true, "new"},
        {"in no-replace opens for reading", in | noReplace, true, true, "old-old"},
        {"no-create implies in", noCreate, false, false, nullptr},
        {"no-create out, missing", noCreate | out, false, false, nullptr},
        {"no-create out, existing is r+", noCreate | out, true, true, "new-old"},
        {"in out at-end writes at the end", in | out | atEnd, true, true, "old-oldnew"},
        {"out at-end truncates first", out | atEnd, true, true, "new"},
    };
    std::string dir = qt::scratchDir("ubFileBufferModes");
    int n = 0;
    for (const Case& c : cases) {
        std::string path = dir + "/f" + std::to_string(n++);
        if (c.exists)
            qt::writeFile(path, "old-old");
        ubFileBuffer b;
        EXPECT_EQ(b.open(path.c_str(), c.mode), c.opens) << c.name;
        EXPECT_EQ(b.isOpen(), c.opens) << c.name;
        if (c.opens && (c.mode & (out | append))) {
            EXPECT_EQ(b.sputn("new", 3), 3) << c.name;
        }
        EXPECT_EQ(b.close(), c.opens) << c.name;
        EXPECT_FALSE(b.isOpen()) << c.name;
        if (c.after)
            EXPECT_EQ(qt::readFile(path), c.after) << c.name;
        else
            EXPECT_FALSE(qt::fileExists(path)) << c.name << ": a failed open must not create the file";
    }
}

TEST(ubStreams, FailBitLinesAndNamesThroughTheStandardOperators)
{
    std::string dir = qt::scratchDir("ubStreams");
    std::string path = dir + "/lines.txt";
    {
        ubOFStream out(path.c_str(), truncate | binary);
        ASSERT_TRUE(out.good());
        out << "first " << 42 << "\n" << std::string(3000, 'x') << "\n";
        out.flush();
        EXPECT_EQ(qt::readFile(path).size(), 3010u) << "flush reaches the file before closing";
    }
    ubIFStream in(path.c_str());
    std::string word, line;
    int number = 0;
    EXPECT_EQ(in.peek(), 'f') << "a peeked character stays unread";
    in >> word >> number;
    EXPECT_EQ(word, "first");
    EXPECT_EQ(number, 42);
    std::getline(in, line);
    std::getline(in, line);
    EXPECT_EQ(line.size(), 3000u);
    EXPECT_EQ(in.peek(), std::char_traits<char>::eof());
    EXPECT_FALSE(std::getline(in, line));

    ubIFStream missing((dir + "/missing").c_str());
    EXPECT_TRUE(missing.fail());
    EXPECT_FALSE(missing.isOpen());
    ubOFStream refused(path.c_str(), noReplace);
    EXPECT_TRUE(refused.fail());
    ubOFStream later;
    later.open((dir + "/later").c_str(), std::ios_base::app);
    EXPECT_TRUE(later.good());
    later << "x";
    later.close();
    EXPECT_TRUE(later.good());
    later.close();
    EXPECT_TRUE(later.fail()) << "closing twice";
    EXPECT_EQ(qt::readFile(dir + "/later"), "x");

    // a non-ASCII name, for the existence test of no-replace too
    std::string wide = dir + "/Gr\xC3\xBC\xC3\x9F"
                             "e-\xE6\x97\xA5\xE6\x9C\xAC.txt";
    ubOFStream(wide.c_str(), binary) << "wide name";
    ubIFStream read(wide.c_str(), binary);
    ASSERT_TRUE(std::getline(read, line)) << wide;
    EXPECT_EQ(line, "wide name");
    EXPECT_TRUE(ubOFStream(wide.c_str(), noReplace).fail());
}

} // namespace
