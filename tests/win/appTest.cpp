// The application object: the message loop gives idle time and ends with WM_QUIT's code, or when the main
// frame closes. (Quillon reads its own command line; a file named on it is opened end to end.)
#include "winTestApp.h"

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

} // namespace
