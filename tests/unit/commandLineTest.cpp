// How command lines end: usage text, a file to open, or a plain window; where the usage text goes.
#include <gtest/gtest.h>

#include "app/qwzCommandLine.h"

namespace
{

struct Case {
    std::vector<std::string> words;
    qwzCommandLine::Mode mode;
    const char* logFile;
    const char* fileName;
};

void PrintTo(const Case& c, std::ostream* os)
{
    for (const std::string& w : c.words)
        *os << "[" << w << "]";
}

class CommandLineTest : public testing::TestWithParam<Case>
{
};

TEST_P(CommandLineTest, ModeLogFileAndDocument)
{
    const Case& c = GetParam();
    qwzCommandLine line;
    line.parse(c.words);
    EXPECT_EQ(line.mode, c.mode);
    EXPECT_STREQ(line.logFile.c_str(), c.logFile);
    EXPECT_STREQ(line.fileName.c_str(), c.fileName);
}

INSTANTIATE_TEST_SUITE_P(
    Words, CommandLineTest,
    testing::Values(Case{{}, qwzCommandLine::None, "", ""}, Case{{"-help"}, qwzCommandLine::Help, "", ""},
                    Case{{"/help"}, qwzCommandLine::Help, "", ""}, Case{{"help"}, qwzCommandLine::Help, "", ""},
                    // exact and case-sensitive
                    Case{{"-Help"}, qwzCommandLine::UnknownSwitch, "", ""},
                    Case{{"-x"}, qwzCommandLine::UnknownSwitch, "", ""},
                    // a later help does not undo an unknown switch
                    Case{{"-x", "help"}, qwzCommandLine::UnknownSwitch, "", ""},
                    Case{{"-logfile:\"C:\\path\\out.txt\"", "-help"}, qwzCommandLine::Help, "C:\\path\\out.txt", ""},
                    Case{{"logfile:C:\\out.txt"}, qwzCommandLine::None, "C:\\out.txt", ""},
                    // only a value both begun and ended by a quote loses its quotes
                    Case{{"-logfile:\"C:\\out.txt"}, qwzCommandLine::None, "\"C:\\out.txt", ""},
                    Case{{"-logfile"}, qwzCommandLine::None, "", ""},
                    // the keyword is the first seven characters: anything may follow them
                    Case{{"-logfilex:a.txt"}, qwzCommandLine::None, "a.txt", ""},
                    Case{{"-logfile:a:b"}, qwzCommandLine::None, "a:b", ""},
                    Case{{"notes.txt"}, qwzCommandLine::OpenFile, "", "notes.txt"},
                    Case{{"C:\\logs\\run 1.log", "other.txt"}, qwzCommandLine::OpenFile, "", "C:\\logs\\run 1.log"},
                    Case{{"-help", "notes.txt"}, qwzCommandLine::OpenFile, "", "notes.txt"}));

} // namespace
