// Output channels: formatting of any length, messages from the string table, and the sinks.
#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "app/qwzAppCatalog.h"
#include "document/qwzStreamOutput.h"
#include "document/qwzStringOutput.h"
#include "nls/nlsDomainManager.h"
#include "resourceIds.h"

namespace
{

// Catalog state is process-wide and other tests leave languages behind: these expect the English texts.
class EnglishTexts : public testing::Test
{
protected:
    void SetUp() override
    {
        nlsDomainManager::setLanguageForAllDomains(nlsDomainManager::noTranslation());
    }
    void TearDown() override
    {
        qwzTheAppCatalog().stop();
        nlsDomainManager::setLanguageForAllDomains("");
        nlsDomainManager::clearSystemLanguage();
        nlsDomainManager::setLastCategory(0);
    }
};

TEST(OutputTest, StringChannelCollectsInOrder)
{
    qwzStringOutput out;
    out.write(utString("x"));
    out.write(utString("y"));
    out.write(utString()); // a null text adds nothing
    EXPECT_STREQ(out.text().c_str(), "xy");
}

TEST(OutputTest, FormattedTextLongerThanTheFirstBufferArrivesWhole)
{
    for (size_t n : {size_t(4191), size_t(4192), size_t(8384), size_t(40000)}) {
        std::string big(n, 'a');
        qwzStringOutput out;
        out.printf(0, "<%s|%d>", big.c_str(), 7);
        EXPECT_EQ(out.text().str(), "<" + big + "|7>") << n;
    }
    // a formatted NUL is a byte of the text like any other
    qwzStringOutput nul;
    nul.printf(0, "a%cb", 0);
    EXPECT_EQ(nul.text().str(), std::string("a\0b", 3));
}

TEST_F(EnglishTexts, MessagesComeFromTheStringTable)
{
    qwzStringOutput out;
    out.printMessage(0, IDS_FILE_NOT_FOUND, "C:\\x.txt");
    EXPECT_STREQ(out.text().c_str(), "Error: The file C:\\x.txt does not exist or could not be opened");
}

TEST_F(EnglishTexts, AnUnknownMessageIdWritesNothing)
{
    qwzStringOutput out;
    out.printMessage(0, 65000);
    EXPECT_STREQ(out.text().c_str(), "");
}

TEST(OutputTest, StreamChannelHonoursWidthOnceAndKeepsFailuresInTheStream)
{
    std::ostringstream s;
    qwzStreamOutput out(&s);
    s.width(5);
    s.fill('.');
    out.write(utString("ab"));
    out.write(utString("c"));
    EXPECT_EQ(s.str(), "...abc");

    s.setstate(std::ios_base::badbit);
    out.write(utString("lost"));
    EXPECT_EQ(s.str(), "...abc");
}

} // namespace
