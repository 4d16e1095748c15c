// The application object: the message loop gives idle time and ends with WM_QUIT's code. (The loop's end
// when the frame closes is e2e test_frame's File > Exit; a file named on the command line, test_document's.)
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

} // namespace
