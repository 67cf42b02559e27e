#pragma once

#include <cstdint>
#include <vector>

#include "framework/Geometry.h"

namespace vorix {

// One pixel of a software surface: 0x00RRGGBB. The top byte is always 0, so that two images
// with the same colours compare equal word for word.
using Pixel = std::uint32_t;

inline constexpr Pixel MakePixel(std::uint8_t red, std::uint8_t green, std::uint8_t blue) {
    return (Pixel{red} << 16) | (Pixel{green} << 8) | Pixel{blue};
}

// The low byte of each component, as the 8-bit surfaces take them.
inline constexpr Pixel PixelOf(const RGBColor& color) {
    return MakePixel(static_cast<std::uint8_t>(color.red), static_cast<std::uint8_t>(color.green),
                     static_cast<std::uint8_t>(color.blue));
}

inline constexpr RGBColor ColorOf(Pixel pixel) {
    return {static_cast<std::uint16_t>((pixel >> 16) & 0xFF),
            static_cast<std::uint16_t>((pixel >> 8) & 0xFF),
            static_cast<std::uint16_t>(pixel & 0xFF)};
}

// A rectangle of pixels, row after row from the top, without padding. Any thread; an image
// belongs to whoever holds it.
struct PixelImage {
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::vector<Pixel> pixels;

    PixelImage() = default;
    // A blank image: every pixel `fill`. Negative sizes count as 0.
    PixelImage(std::int32_t width, std::int32_t height, Pixel fill = 0)
        : width(width > 0 ? width : 0),
          height(height > 0 ? height : 0),
          pixels(static_cast<std::size_t>(this->width) * static_cast<std::size_t>(this->height),
                 fill) {}

    Pixel At(std::int32_t x, std::int32_t y) const {
        return pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                      static_cast<std::size_t>(x)];
    }
    Pixel* Row(std::int32_t y) {
        return pixels.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(width);
    }
    const Pixel* Row(std::int32_t y) const {
        return pixels.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(width);
    }
    Rect Bounds() const { return {0, 0, width, height}; }

    friend bool operator==(const PixelImage&, const PixelImage&) = default;
};

}  // namespace vorix
