// Output channels format texts of any length into their one buffer, a formatted NUL included. (Messages
// from the string table and the stream channels' output are the usage text's, checked end to end.)
#include <gtest/gtest.h>

#include <string>

#include "document/qwzStringOutput.h"

namespace
{

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

} // namespace
