// Where assertion and fatal reports go, and how the process ends: once with status 1, at once with
// status 2 when a second report comes while the first is being made, and back to the caller when that
// second report comes in pop-up mode.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>

#include "foundation/utAssert.h"
#include "testSupport.h"

#ifdef _WIN32
#include <windows.h>

#include <thread>
#endif

namespace
{

void assertWith(const char* mode)
{
    qt::ScopedEnv env;
    env.set("ORBA_ASSERT", mode);
    utAssertionFailed("nls/nlsDataBase", 450, "nlsDataBase failed - with error 33");
}

// Presses OK on the first "Fatal Error" box of this process, so that a pop-up report cannot hang the run;
// when none comes, ends the process with status 3 at once rather than wait for the run's time-out.
// Without a windowing system the pop-up is a line on standard error and there is nothing to press.
void closeFatalErrorBoxSoon()
{
#ifdef _WIN32
    std::thread([] {
        for (int i = 0; i < 200; ++i) {
            HWND box = nullptr;
            // only our own box: another process of the run may show one too
            while ((box = FindWindowExW(nullptr, box, nullptr, L"Fatal Error")) != nullptr) {
                DWORD pid = 0;
                GetWindowThreadProcessId(box, &pid);
                if (pid == GetCurrentProcessId())
                    break;
            }
            if (box) {
                wchar_t text[1024] = {};
                // the report is the box's static text: leave it where the parent can see it
                GetDlgItemTextW(box, 0xFFFF, text, 1024);
                std::fputws(text, stderr);
                std::fflush(stderr);
                PostMessageW(box, WM_COMMAND, IDOK, 0);
                return;
            }
            Sleep(50);
        }
        std::fputs("no Fatal Error box came up within 10 s\n", stderr);
        std::fflush(stderr);
        std::_Exit(3);
    }).detach();
#endif
}

TEST(AssertDeathTest, AnyOtherValueIsAFileAppendedTo)
{
    std::string dir = qt::scratchDir("assert-file");
    // "Popup" is not the pop-up mode: the comparison is exact, so it names a file; a name is UTF-8
    for (const char* name : {"Popup", "Bericht \xC3\xBC\xC3\x9F \xE6\x97\xA5.log"}) {
        std::string log = dir + "/" + name;
        qt::writeFile(log, "before\n");
        EXPECT_EXIT(assertWith(log.c_str()), testing::ExitedWithCode(1), "") << name;
        EXPECT_EQ(qt::readFile(log),
                  "before\nAssertion failure: nlsDataBase failed - with error 33\nFile: nls/nlsDataBase Line: 450\n")
            << name;
    }
}

TEST(AssertDeathTest, EmptyValueLosesTheReportButStillExitsWithOne)
{
    qt::ScopedEnv env;
    env.set("ORBA_ASSERT", "");
    if (!std::getenv("ORBA_ASSERT"))
        GTEST_SKIP() << "the C runtime removes a variable set to the empty text";
    EXPECT_EXIT(assertWith(""), testing::ExitedWithCode(1), "^$");
}

// A second report from an exit handler, while the first one ends the process.
void reportAgainAtExit()
{
    utFatal(false, stderr, "Fatal error:", "app/again", 2, "while exiting");
    std::fputs("the second report returned\n", stderr);
}

TEST(AssertDeathTest, ASecondReportEndsAtOnceOrReturnsInPopupMode)
{
    const struct {
        const char* mode;
        int status;
        bool returned;
    } cases[] = {
        // only the first report is made; status 2, and the handler never goes on
        {"stderr", 2, false},
        // the second report only breaks into a debugger, if any, and returns; the first one's exit stands
        {"popup", 1, true},
        {nullptr, 1, true}, // assertions default to the pop-up
    };
    using testing::HasSubstr;
    for (const auto& c : cases) {
        auto returned = HasSubstr("the second report returned");
        EXPECT_EXIT(
            {
                std::atexit(reportAgainAtExit);
                if (c.returned)
                    closeFatalErrorBoxSoon();
                assertWith(c.mode);
            },
            testing::ExitedWithCode(c.status),
            testing::AllOf(HasSubstr("Assertion failure: nlsDataBase failed - with error 33"),
                           testing::Not(HasSubstr("while exiting")),
                           c.returned ? testing::Matcher<const std::string&>(returned)
                                      : testing::Matcher<const std::string&>(testing::Not(returned))))
            << (c.mode ? c.mode : "unset");
    }
}

TEST(AssertTest, AnInstalledHookTakesTheFailureTheFullOneFirstAndTheProcessGoesOn)
{
    static std::string seen;
    utAssertHooks saved = utAssertionHooks();
    utAssertionHooks().plain = [](const char* file, int line, const char* message) {
        seen += std::string("plain ") + file + ":" + std::to_string(line) + ":" + message + ";";
    };
    utAssertionFailed("a.cpp", 3, "m");
    utAssertionHooks().full = [](utAssertHooks*, const char* file, int, const char*) {
        seen += std::string("full ") + file + ";";
    };
    utAssertionFailed("b.cpp", 4, "n");
    utAssertionHooks() = saved;
    EXPECT_EQ(seen, "plain a.cpp:3:m;full b.cpp;");
}

} // namespace
