// The toolbar's bitmap arithmetic against pixels computed by hand: the recolouring for the disabled
// look (integer arithmetic truncating toward zero), the edge painter's styles, composing over a colour.
#include <gtest/gtest.h>

#include "app/qwzDib.h"

namespace
{

using Rgb = qwzDib::Rgb;
using C = platform::SystemColour;

const Rgb magenta = {255, 0, 255};
const Rgb white = {255, 255, 255};

std::string show(Rgb c)
{
    return std::to_string(c.red) + "," + std::to_string(c.green) + "," + std::to_string(c.blue);
}

struct RecolourCase {
    const char* what;
    Rgb dark, middle, light;
    int threshold;
    Rgb in, out;
};

TEST(Dib, RecolourSpreadsBrightPixelsUpAndDarkPixelsDown)
{
    const Rgb grey128 = {128, 128, 128}, grey192 = {192, 192, 192};
    // with middle 192 grey the computed threshold is (77 + 151 + 28) * 192 / 256 = 192
    const RecolourCase cases[] = {
        {"magenta is the key", grey128, grey192, white, 0, magenta, magenta},
        {"black is the dark colour", grey128, grey192, white, 0, {0, 0, 0}, grey128},
        {"b 61: 128 + 61 * 64 / 192", grey128, grey192, white, 0, {100, 50, 20}, {148, 148, 148}},
        {"b exactly at the threshold becomes middle", grey128, grey192, white, 0, {255, 160, 200}, grey192},
        {"b 191 is still below", grey128, grey192, white, 0, {191, 191, 191}, {191, 191, 191}},
        {"white: 192 + 63 * 63 / 64", grey128, grey192, white, 0, white, {254, 254, 254}},
        // threshold (77 * 200 + 151 * 150 + 28 * 100) / 256 = 159, each channel on its own
        {"below, per channel", {10, 20, 30}, {200, 150, 100}, {250, 250, 250}, 0, {40, 40, 40}, {57, 52, 47}},
        {"above, per channel", {10, 20, 30}, {200, 150, 100}, {250, 250, 250}, 0, white, {249, 248, 248}},
        {"negative steps truncate toward zero",
         {0, 0, 0},
         {200, 150, 100},
         {100, 100, 100},
         0,
         {200, 200, 200},
         {158, 129, 100}},
        {"a given threshold is kept", grey128, grey192, white, 100, {100, 100, 100}, {192, 192, 192}},
        // a black middle computes threshold 0, and 256 - 0 is 0 modulo 256
        {"256 - t = 0 mod 256 gives grey 192", {50, 50, 50}, {0, 0, 0}, white, 0, {10, 200, 30}, grey192},
        {"the key still wins there", {50, 50, 50}, {0, 0, 0}, white, 0, magenta, magenta},
    };
    for (const RecolourCase& c : cases) {
        qwzDib dib(2, 1, c.in, 77);
        dib.recolour(c.dark, c.middle, c.light, magenta, c.threshold);
        EXPECT_EQ(show(dib.colour(1, 0)), show(c.out)) << c.what;
        EXPECT_EQ(dib.alpha(1, 0), 77) << c.what << ": alpha is left alone";
    }
}

TEST(Dib, EdgeStylesPaintTheTwoPixelFrameOnly)
{
    struct EdgeCase {
        int style;
        C outerTopLeft, outerBottomRight, innerTopLeft, innerBottomRight;
    };
    const EdgeCase styles[] = {
        {0, C::ButtonFace, C::ButtonFace, C::ButtonFace, C::ButtonFace},
        {1, C::ButtonHighlight, C::WindowFrame, C::ButtonFace, C::ButtonFace},
        {2, C::ButtonShadow, C::ButtonHighlight, C::ButtonFace, C::ButtonFace},
        {3, C::ButtonHighlight, C::WindowFrame, C::ButtonHighlight, C::ButtonShadow},
        {4, C::ButtonShadow, C::ButtonHighlight, C::WindowFrame, C::ButtonFace},
        {5, C::WindowFrame, C::WindowFrame, C::ButtonFace, C::ButtonFace},
    };
    const Rgb inside = {1, 2, 3};
    auto sys = [](C c) { return show(platform::systemColour(c)); };
    for (const EdgeCase& s : styles) {
        qwzDib dib(6, 6, inside, 9);
        dib.paintEdge(s.style);
        SCOPED_TRACE("style " + std::to_string(s.style));
        EXPECT_EQ(show(dib.colour(0, 0)), sys(s.outerTopLeft));
        EXPECT_EQ(show(dib.colour(0, 3)), sys(s.outerTopLeft));
        EXPECT_EQ(show(dib.colour(5, 5)), sys(s.outerBottomRight));
        EXPECT_EQ(show(dib.colour(5, 0)), sys(s.outerBottomRight)) << "the shared corner is the bottom-right's";
        EXPECT_EQ(show(dib.colour(1, 2)), sys(s.innerTopLeft));
        EXPECT_EQ(show(dib.colour(4, 4)), sys(s.innerBottomRight));
        EXPECT_EQ(dib.alpha(1, 1), 255);
        for (int y = 2; y < 4; ++y)
            for (int x = 2; x < 4; ++x)
                EXPECT_EQ(show(dib.colour(x, y)), show(inside)) << x << "," << y;
    }
    for (int style : {-1, 6, 1000}) {
        qwzDib dib(6, 6, inside, 9);
        dib.paintEdge(style);
        EXPECT_EQ(show(dib.colour(0, 0)), show(inside)) << "style " << style << " paints nothing";
        EXPECT_EQ(dib.alpha(5, 5), 9);
    }
}

TEST(Dib, ComposingBlendsByAlphaOntoAnOpaqueBackground)
{
    const Rgb face = {240, 240, 240};
    qwzDib dib(3, 1, Rgb{0, 0, 0}, 0);
    dib.setPixel(1, 0, {0, 100, 200}, 255);
    dib.setPixel(2, 0, {0, 100, 200}, 128);
    qwzDib out = dib.composedOver(face);
    EXPECT_EQ(show(out.colour(0, 0)), show(face)) << "transparent";
    EXPECT_EQ(show(out.colour(1, 0)), "0,100,200") << "opaque";
    // (s * 128 + 240 * 127 + 127) / 255
    EXPECT_EQ(show(out.colour(2, 0)), "120,170,220");
    EXPECT_EQ(out.alpha(2, 0), 255);
}

TEST(Dib, ScalingKeepsFlatAreasAndTheCorners)
{
    qwzDib dib(2, 2, Rgb{10, 10, 10});
    dib.setPixel(1, 1, {250, 250, 250});
    qwzDib big = dib.scaled(60, 60);
    ASSERT_EQ(big.width(), 60);
    ASSERT_EQ(big.height(), 60);
    EXPECT_EQ(show(big.colour(0, 0)), "10,10,10");
    EXPECT_EQ(show(big.colour(59, 59)), "250,250,250");
    EXPECT_EQ(qwzDib().scaled(4, 4).bits(), nullptr) << "nothing comes of an empty bitmap";
    EXPECT_EQ(qwzDib(0, 5, Rgb{}).bits(), nullptr);
}

} // namespace
