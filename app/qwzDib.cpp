// The toolbar's bitmap arithmetic. Every loop stays inside width x height; a bitmap that failed to load
// is empty and every operation on it does nothing.
#include "app/qwzDib.h"

#include <algorithm>
#include <cmath>

namespace
{

using Rgb = qwzDib::Rgb;

Rgb sys(platform::SystemColour which)
{
    return platform::systemColour(which);
}

// The frame styles: the colours of the outer and the inner line, each for its top and left sides and for
// its bottom and right sides (which are painted last, so they own the two corners they share).
struct EdgeStyle {
    platform::SystemColour outerTopLeft, outerBottomRight, innerTopLeft, innerBottomRight;
};

using C = platform::SystemColour;
const EdgeStyle edgeStyles[] = {
    {C::ButtonFace, C::ButtonFace, C::ButtonFace, C::ButtonFace},              // 0 flat: the button face
    {C::ButtonHighlight, C::WindowFrame, C::ButtonFace, C::ButtonFace},        // 1 thin raised
    {C::ButtonShadow, C::ButtonHighlight, C::ButtonFace, C::ButtonFace},       // 2 thin sunken
    {C::ButtonHighlight, C::WindowFrame, C::ButtonHighlight, C::ButtonShadow}, // 3 raised
    {C::ButtonShadow, C::ButtonHighlight, C::WindowFrame, C::ButtonFace},      // 4 sunken
    {C::WindowFrame, C::WindowFrame, C::ButtonFace, C::ButtonFace},            // 5 framed
};

int channel(const Rgb& c, int i)
{
    return i == 0 ? c.red : i == 1 ? c.green : c.blue;
}

} // namespace

qwzDib::qwzDib(int width, int height, Rgb colour, std::uint8_t alpha)
{
    if (width <= 0 || height <= 0)
        return;
    width_ = width;
    height_ = height;
    pixels_.resize(static_cast<size_t>(width) * static_cast<size_t>(height) * 4);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            setPixel(x, y, colour, alpha);
}

int qwzDib::load(unsigned resourceId)
{
    width_ = height_ = 0;
    pixels_.clear();
    int width = 0, height = 0;
    std::vector<std::uint8_t> pixels;
    if (!platform::loadBitmap(resourceId, width, height, pixels) || width <= 0 || height <= 0 ||
        pixels.size() != static_cast<size_t>(width) * static_cast<size_t>(height) * 4)
        return 0;
    width_ = width;
    height_ = height;
    pixels_ = std::move(pixels);
    for (size_t i = 3; i < pixels_.size(); i += 4)
        if (pixels_[i] != 0)
            return 2;
    return 1;
}

Rgb qwzDib::colour(int x, int y) const
{
    const std::uint8_t* p = at(x, y);
    return {p[2], p[1], p[0]};
}

std::uint8_t qwzDib::alpha(int x, int y) const
{
    return at(x, y)[3];
}

void qwzDib::setPixel(int x, int y, Rgb colour, std::uint8_t alpha)
{
    std::uint8_t* p = at(x, y);
    p[0] = colour.blue;
    p[1] = colour.green;
    p[2] = colour.red;
    p[3] = alpha;
}

void qwzDib::paintEdge(int style)
{
    if (style < 0 || style >= static_cast<int>(std::size(edgeStyles)))
        return;
    const EdgeStyle& s = edgeStyles[style];
    const C colours[2][2] = {{s.outerTopLeft, s.outerBottomRight}, {s.innerTopLeft, s.innerBottomRight}};
    for (int line = 0; line < 2; ++line) {
        int left = line, top = line, right = width_ - 1 - line, bottom = height_ - 1 - line;
        if (right < left || bottom < top)
            break;
        Rgb topLeft = sys(colours[line][0]), bottomRight = sys(colours[line][1]);
        for (int x = left; x <= right; ++x)
            setPixel(x, top, topLeft);
        for (int y = top; y <= bottom; ++y)
            setPixel(left, y, topLeft);
        for (int x = left; x <= right; ++x)
            setPixel(x, bottom, bottomRight);
        for (int y = top; y <= bottom; ++y)
            setPixel(right, y, bottomRight);
    }
}

qwzDib qwzDib::composedOver(Rgb background) const
{
    qwzDib out(width_, height_, background);
    for (int y = 0; y < height_; ++y)
        for (int x = 0; x < width_; ++x) {
            const std::uint8_t* s = at(x, y);
            std::uint8_t* d = out.at(x, y);
            int a = s[3];
            for (int i = 0; i < 3; ++i)
                d[i] = static_cast<std::uint8_t>((s[i] * a + d[i] * (255 - a) + 127) / 255);
        }
    return out;
}

int qwzDib::brightness(Rgb c)
{
    return (77 * c.red + 151 * c.green + 28 * c.blue) / 256;
}

void qwzDib::recolour(Rgb dark, Rgb middle, Rgb light, Rgb key, int threshold)
{
    int t = threshold == 0 ? brightness(middle) : threshold;
    for (int y = 0; y < height_; ++y)
        for (int x = 0; x < width_; ++x) {
            Rgb c = colour(x, y);
            if (c == key)
                continue;
            int b = brightness(c);
            int out[3];
            for (int i = 0; i < 3; ++i) {
                int lo = channel(dark, i), mid = channel(middle, i), hi = channel(light, i);
                if (b >= t)
                    out[i] = (256 - t) % 256 == 0 ? 192 : mid + (b - t) * (hi - mid) / (256 - t);
                else
                    out[i] = lo + b * (mid - lo) / t; // b < t, so t > 0 here
            }
            auto clamp = [](int v) { return static_cast<std::uint8_t>(std::clamp(v, 0, 255)); };
            setPixel(x, y, {clamp(out[0]), clamp(out[1]), clamp(out[2])}, alpha(x, y));
        }
}

qwzDib qwzDib::scaled(int width, int height) const
{
    if (pixels_.empty())
        return {};
    qwzDib out(width, height, Rgb{}, 0);
    if (out.pixels_.empty())
        return out;
    auto source = [](int i, int from, int to) {
        double s = (i + 0.5) * from / to - 0.5;
        return std::clamp(s, 0.0, static_cast<double>(from - 1));
    };
    for (int y = 0; y < height; ++y) {
        double sy = source(y, height_, height);
        int y0 = static_cast<int>(sy), y1 = std::min(y0 + 1, height_ - 1);
        double fy = sy - y0;
        for (int x = 0; x < width; ++x) {
            double sx = source(x, width_, width);
            int x0 = static_cast<int>(sx), x1 = std::min(x0 + 1, width_ - 1);
            double fx = sx - x0;
            std::uint8_t* d = out.at(x, y);
            for (int i = 0; i < 4; ++i) {
                double top = at(x0, y0)[i] * (1 - fx) + at(x1, y0)[i] * fx;
                double bottom = at(x0, y1)[i] * (1 - fx) + at(x1, y1)[i] * fx;
                d[i] = static_cast<std::uint8_t>(std::lround(top * (1 - fy) + bottom * fy));
            }
        }
    }
    return out;
}
