// Where assertion and fatal reports go, and how the process ends.
#include <gtest/gtest.h>

#include "foundation/utAssert.h"
#include "testSupport.h"

namespace
{

void assertWith(const char* mode)
{
    qt::setEnv("ORBA_ASSERT", mode);
    utAssertionFailed("nls/nlsDataBase", 450, "nlsDataBase failed - with error 33");
}

TEST(AssertDeathTest, StderrModeWritesTheReportAndExitsWithOne)
{
    EXPECT_EXIT(assertWith("stderr"), testing::ExitedWithCode(1),
                "Assertion failure: nlsDataBase failed - with error 33\nFile: nls/nlsDataBase Line: 450\n");
}

TEST(AssertDeathTest, AnyOtherValueIsAFileAppendedTo)
{
    std::string dir = qt::scratchDir("assert-file");
    std::string log = dir + "/Popup";
    qt::writeFile(log, "before\n");
    // "Popup" is not the pop-up mode: the comparison is exact, so it names a file
    EXPECT_EXIT(assertWith(log.c_str()), testing::ExitedWithCode(1), "");
    EXPECT_EQ(qt::readFile(log),
              "before\nAssertion failure: nlsDataBase failed - with error 33\nFile: nls/nlsDataBase Line: 450\n");
}

TEST(AssertDeathTest, EmptyValueLosesTheReportButStillExitsWithOne)
{
#ifdef _WIN32
    GTEST_SKIP() << "the C runtime removes a variable set to the empty text";
#endif
    EXPECT_EXIT(assertWith(""), testing::ExitedWithCode(1), "^$");
}

TEST(AssertDeathTest, FatalWithoutTheVariableWritesToTheGivenStream)
{
    qt::setEnv("ORBA_ASSERT", nullptr);
    EXPECT_EXIT(utFatal(false, stderr, "Fatal error:", "app/x", 7, "broken"), testing::ExitedWithCode(1),
                "Fatal error: broken\nFile: app/x Line: 7\n");
}

TEST(AssertTest, AnInstalledHookTakesTheFailureAndTheProcessGoesOn)
{
    static std::string seen;
    utAssertHooks saved = utAssertionHooks();
    utAssertionHooks().plain = [](const char* file, int line, const char* message) {
        seen = std::string(file) + ":" + std::to_string(line) + ":" + message;
    };
    utAssertionFailed("a.cpp", 3, "m");
    utAssertionHooks() = saved;
    EXPECT_EQ(seen, "a.cpp:3:m");
}

TEST(AssertTest, TheFullHookWinsOverThePlainOne)
{
    static int full = 0, plain = 0;
    utAssertHooks saved = utAssertionHooks();
    utAssertionHooks().full = [](utAssertHooks*, const char*, int, const char*) { ++full; };
    utAssertionHooks().plain = [](const char*, int, const char*) { ++plain; };
    utAssertionFailed("a.cpp", 3, "m");
    utAssertionHooks() = saved;
    EXPECT_EQ(full, 1);
    EXPECT_EQ(plain, 0);
}

} // namespace

#ifdef _WIN32
#include <windows.h>

#include <thread>

namespace
{

// Presses OK on the first "Fatal Error" box that appears, so that a pop-up report cannot hang the run.
void closeFatalErrorBoxSoon()
{
    std::thread([] {
        for (int i = 0; i < 400; ++i) {
            if (HWND box = FindWindowW(nullptr, L"Fatal Error")) {
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
    }).detach();
}

TEST(AssertDeathTest, PopupModeShowsARealMessageBox)
{
    EXPECT_EXIT(
        {
            closeFatalErrorBoxSoon();
            assertWith("popup");
        },
        testing::ExitedWithCode(1), "Assertion failure: nlsDataBase failed - with error 33");
}

TEST(AssertDeathTest, AssertionsDefaultToThePopup)
{
    EXPECT_EXIT(
        {
            qt::setEnv("ORBA_ASSERT", nullptr);
            closeFatalErrorBoxSoon();
            utAssertionFailed("x.cpp", 1, "default");
        },
        testing::ExitedWithCode(1), "Assertion failure: default");
}

} // namespace
#endif
