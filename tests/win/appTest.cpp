// The application object: the message loop ends with WM_QUIT's code after idle time, the command line
// chooses between a new document and a named file, and start-up without a template fails cleanly.
#include "winTestApp.h"

#include "win/winCommandLineInfo.h"

#include <gtest/gtest.h>

namespace
{

class LoopApp : public wt::TestApp
{
public:
    std::vector<long> idleCalls;
    bool onIdle(long count) override
    {
        idleCalls.push_back(count);
        if (count == 2)
            PostQuitMessage(7);
        return count < 2;
    }
};

TEST(AppTest, TheLoopGivesIdleTimeAndEndsWithTheQuitCode)
{
    LoopApp app;
    EXPECT_EQ(app.run(), 7);
    EXPECT_EQ(app.idleCalls, (std::vector<long>{0, 1, 2}));
    EXPECT_EQ(app.exitInstance(), 7);
}

TEST(AppTest, ClosingTheMainFrameEndsTheLoop)
{
    wt::TestApp app(L"winTests-app");
    ASSERT_NE(app.openDocumentFile(L""), nullptr);
    PostMessageW(app.mainFrame()->hwnd(), WM_CLOSE, 0, 0);
    EXPECT_EQ(app.run(), 0);
    EXPECT_EQ(app.mainFrame()->hwnd(), nullptr);
}

struct ArgsCase {
    std::vector<std::wstring> args;
    winCommandLineInfo::ShellCommand command;
    std::wstring file;
};

TEST(AppTest, CommandLineChoosesNewOrOpen)
{
    const ArgsCase cases[] = {
        {{}, winCommandLineInfo::FileNew, L""},
        {{L"C:\\a b\\f.txt"}, winCommandLineInfo::FileOpen, L"C:\\a b\\f.txt"},
        {{L"-x", L"first", L"second"}, winCommandLineInfo::FileOpen, L"first"},
        {{L"/help"}, winCommandLineInfo::FileNew, L""},
    };
    for (size_t i = 0; i < std::size(cases); ++i) {
        winCommandLineInfo info;
        info.parse(cases[i].args);
        EXPECT_EQ(info.shellCommand, cases[i].command) << "case " << i;
        EXPECT_EQ(info.fileName, cases[i].file) << "case " << i;
    }
}

TEST(AppTest, SwitchesReachParseParamWithoutTheirMark)
{
    struct Recorder : winCommandLineInfo {
        std::vector<std::wstring> seen;
        void parseParam(const std::wstring& p, bool isSwitch, bool isLast) override
        {
            seen.push_back((isSwitch ? L"S:" : L"P:") + p + (isLast ? L"!" : L""));
        }
    } info;
    info.parse({L"-help", L"/logfile:\"x y\"", L"file.txt"});
    EXPECT_EQ(info.seen, (std::vector<std::wstring>{L"S:help", L"S:logfile:\"x y\"", L"P:file.txt!"}));
}

TEST(AppTest, ProcessShellCommandOpensTheNamedFile)
{
    std::wstring dir = wt::scratch("app-shell");
    std::wstring path = dir + L"\\named.txt";
    wt::writeWide(path, "named");
    wt::TestApp app(L"winTests-app");
    winCommandLineInfo info;
    info.parse({path});
    ASSERT_TRUE(app.processShellCommand(info));
    EXPECT_EQ(static_cast<wt::TestDocument*>(app.document())->bytes, "named");
    winCommandLineInfo missing;
    missing.parse({dir + L"\\missing.txt"});
    wt::TestApp second(L"winTests-app");
    EXPECT_FALSE(second.processShellCommand(missing)) << "the default document refuses a missing file";
    EXPECT_EQ(second.mainFrame(), nullptr) << "a failed first open leaves no window";
}

} // namespace
