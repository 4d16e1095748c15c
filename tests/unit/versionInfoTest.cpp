// The version record as start-up builds it and as the product file changes it.
#include <gtest/gtest.h>

#include "app/qwzVersionInfo.h"
#include "testSupport.h"

namespace
{

TEST(VersionInfoTest, TheNameJoinsVersionAndBuildAndTheBuildDateIsInGmt)
{
    qwzVersionInfo v;
    EXPECT_STREQ(v.fullName.c_str(), "Quillon 4.3.4002");
    EXPECT_STREQ(v.displayName.c_str(), "Quillon 4.3.4002");
    // "Thu Sep 22 13:00:14 GMT 2011"
    EXPECT_EQ(v.buildDate.length(), 28) << v.buildDate.c_str();
    EXPECT_NE(v.buildDate.find(utString(" GMT ")), -1) << v.buildDate.c_str();
}

// Product files are found by a backslash path, as the installation tree spells it.
#ifdef _WIN32
TEST(VersionInfoTest, ProductFileNamesTheProduct)
{
    std::string dir = qt::scratchDir("product-ok");
    qt::writeFile(dir + "/product", "1\n|name|Quillon|\n|release|4.3|\n|type|Beta|\n");
    qwzVersionInfo v;
    v.readProductFile(utString::copyOf(dir));
    EXPECT_STREQ(v.fullName.c_str(), "Quillon 4.3 (64-bit)");
    EXPECT_STREQ(v.displayName.c_str(), "Quillon 4.3 (Beta 4.3.4002 64-bit)");
    EXPECT_STREQ(v.productName.c_str(), "Quillon");
}

TEST(VersionInfoTest, MissingOrBrokenProductFileMarksTheDisplayNameOnly)
{
    std::string dir = qt::scratchDir("product-bad");
    qwzVersionInfo missing;
    missing.readProductFile(utString::copyOf(dir));
    EXPECT_STREQ(missing.displayName.c_str(), "Quillon 4.3.4002 - No Product File");
    EXPECT_STREQ(missing.fullName.c_str(), "Quillon 4.3.4002");

    qt::writeFile(dir + "/product", "1\n|name|Quillon\n");
    qwzVersionInfo broken;
    broken.readProductFile(utString::copyOf(dir));
    EXPECT_STREQ(broken.displayName.c_str(), "Quillon 4.3.4002 - Product File Error");
    EXPECT_STREQ(broken.fullName.c_str(), "Quillon 4.3.4002");
}
#endif

} // namespace
