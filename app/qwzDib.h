// A 32-bit top-down bitmap held in memory, four bytes a pixel (blue, green, red, alpha), and what the
// toolbar makes its button images with: loading from the resources, the edge painter, composing over a
// colour, the recolouring for the disabled look and resampling for the display's scale. Pixels outside
// the bitmap are never touched.
#pragma once

#include <cstdint>
#include <vector>

#include "platform/platform.h"

class qwzDib
{
public:
    using Rgb = platform::Rgb;

    qwzDib() = default;
    // A `width` by `height` bitmap filled with `colour` at `alpha`; empty when either side is not positive.
    qwzDib(int width, int height, Rgb colour, std::uint8_t alpha = 255);

    // Loads the bitmap resource `resourceId`: 0 failed (the bitmap is then empty), 1 loaded, 2 loaded and
    // some pixel's alpha byte is not 0.
    int load(unsigned resourceId);

    int width() const
    {
        return width_;
    }
    int height() const
    {
        return height_;
    }
    // The pixels, row by row from the top; null when empty.
    const std::uint8_t* bits() const
    {
        return pixels_.empty() ? nullptr : pixels_.data();
    }
    // One pixel; the caller keeps (x, y) inside the bitmap.
    Rgb colour(int x, int y) const;
    std::uint8_t alpha(int x, int y) const;
    void setPixel(int x, int y, Rgb colour, std::uint8_t alpha = 255);

    // Paints the two-pixel frame, opaque, in frame style `style`: 0 the button face all round; 1 to 5
    // outer and inner lines from the system's three-dimensional colours; any other style paints nothing.
    void paintEdge(int style);

    // This bitmap blended onto a bitmap of the same size filled with `background` (source over, by each
    // pixel's alpha); the result is opaque.
    qwzDib composedOver(Rgb background) const;

    // The disabled look: bright pixels (at or above `threshold`) are spread between `middle` and `light`,
    // dark ones between `dark` and `middle`; pixels of the `key` colour stay as they are. A threshold of 0
    // becomes the brightness of `middle`. Integer arithmetic, truncating.
    void recolour(Rgb dark, Rgb middle, Rgb light, Rgb key, int threshold = 0);

    // (77 red + 151 green + 28 blue) / 256, rounded down.
    static int brightness(Rgb colour);

    // Resampled to `width` by `height` (bilinear, pixel centres aligned); for opaque images, since each
    // channel is interpolated on its own.
    qwzDib scaled(int width, int height) const;

private:
    std::uint8_t* at(int x, int y)
    {
        return pixels_.data() + (static_cast<size_t>(y) * static_cast<size_t>(width_) + static_cast<size_t>(x)) * 4;
    }
    const std::uint8_t* at(int x, int y) const
    {
        return pixels_.data() + (static_cast<size_t>(y) * static_cast<size_t>(width_) + static_cast<size_t>(x)) * 4;
    }

    int width_ = 0;
    int height_ = 0;
    std::vector<std::uint8_t> pixels_;
};
