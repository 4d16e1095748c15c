// Where the installation tree is found (its directories are proven by the runs from the installed tree).
#include <gtest/gtest.h>

#include "app/qwzInstallDir.h"

namespace
{

TEST(InstallDirTest, RootIsTwoLevelsAboveTheExecutablesFolder)
{
    struct {
        const char* exe;
        const char* root;
    } cases[] = {
        {"C:\\root\\sys\\exec\\app.exe", "C:\\root"},      {"C:\\root\\\\sys\\exec\\app.exe", "C:\\root"},
        {"C:/root/sys/exec/app.exe", "C:/root"},           {"C:\\a\\b/sys\\exec/quillon.exe", "C:\\a\\b"},
        {"/opt/quillon/sys/exec/quillon", "/opt/quillon"},
    };
    for (auto& c : cases)
        EXPECT_STREQ(qwzInstallRootOf(utString(c.exe)).c_str(), c.root) << c.exe;
}

TEST(InstallDirTest, TooShortAPathHasNoRoot)
{
    for (const char* exe : {"app.exe", "exec\\app.exe", "\\exec\\app.exe", "sys\\exec\\app.exe", ""})
        EXPECT_TRUE(qwzInstallRootOf(utString(exe)).isNull()) << exe;
}

} // namespace
