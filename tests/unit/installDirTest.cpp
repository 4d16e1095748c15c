// Where the installation tree is found and how its directories are named.
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

TEST(InstallDirTest, KindsHaveTheirSuffixes)
{
    utString root("C:\\Q");
    EXPECT_STREQ(installDir(Locale, root).c_str(), "C:\\Q\\lib\\locale");
    EXPECT_STREQ(installDir(Help, root).c_str(), "C:\\Q\\file\\help");
    EXPECT_STREQ(installDir(Exec, root).c_str(), "C:\\Q\\sys\\exec");
    EXPECT_STREQ(installDir(Install, root).c_str(), "C:\\Q\\sys\\install");
    EXPECT_STREQ(installDir(4, root).c_str(), "");
    EXPECT_STREQ(installDir(-1, root).c_str(), "");
}

} // namespace
