// A document's text is shown with "%%" as "%" and every other byte unchanged: no conversion reads an
// argument, whatever the file holds.
#include <gtest/gtest.h>

#include <random>
#include <string>

#include "document/qwzPercentRender.h"

namespace
{

struct RenderCase {
    std::string in;
    std::string out;
};

TEST(PercentRender, ConversionsStayAsTheyAreAndDoubledSignsCollapse)
{
    const RenderCase cases[] = {
        {"", ""},
        {"plain text\n", "plain text\n"},
        {"100%% sure", "100% sure"},
        {"%n%n%n%n", "%n%n%n%n"},
        {"%s %d %x %p %*.*f", "%s %d %x %p %*.*f"},
        {"%", "%"},
        {"%%", "%"},
        {"%%%", "%%"},
        {"%%%%", "%%"},
        {"%%%%%", "%%%"},
        {"a%%b%c%%%d", "a%b%c%%d"},
        {"trailing %", "trailing %"},
        {"%%leading", "%leading"},
        {std::string("nul\0%%\0byte", 11), std::string("nul\0%\0byte", 10)},
        {"\xC3\xA4%%\xE2\x82\xAC", "\xC3\xA4%\xE2\x82\xAC"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(qwzPercentRender::render(c.in), c.out) << "input: " << c.in;
    }
}

// Against a plain left-to-right model, on random texts made mostly of '%' so that runs of every length
// and every position occur.
TEST(PercentRender, InPlaceMatchesAPairwiseModelOnRandomTexts)
{
    std::mt19937 rng(20261122);
    const char alphabet[] = "%%%%ab\n\0";
    for (int round = 0; round < 2000; ++round) {
        std::string text(rng() % 64, ' ');
        for (char& c : text)
            c = alphabet[rng() % 8];
        std::string model;
        for (std::size_t i = 0; i < text.size(); ++i) {
            model += text[i];
            if (text[i] == '%' && i + 1 < text.size() && text[i + 1] == '%')
                ++i;
        }
        std::string buffer = text;
        std::size_t n = qwzPercentRender::renderInPlace(buffer.data(), buffer.size());
        ASSERT_EQ(buffer.substr(0, n), model) << "input: " << text;
    }
}

TEST(PercentRender, NullTextRendersAsEmpty)
{
    EXPECT_EQ(qwzPercentRender::renderInPlace(nullptr, 5), 0u);
}

} // namespace
