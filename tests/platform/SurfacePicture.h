#pragma once

#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "platform/PixelImage.h"
#include "platform/SoftwareContext.h"

namespace vorix::test {

inline constexpr Pixel kPaper = 0;  // a new surface is black
inline constexpr Pixel kInk = MakePixel(0xFF, 0xFF, 0xFF);
inline constexpr RGBColor kInkColor = kWhite;

// The pixels of `area` as text, one line per row: '.' paper, '#' ink, and the characters of
// `legend` for other colours; '?' for any colour not named. Pixel tests compare pictures, so a
// failure shows the shape that was drawn.
inline std::string Picture(const SoftwareContext& surface, const Rect& area,
                           const std::map<Pixel, char>& legend = {}) {
    std::string picture;
    for (std::int32_t y = area.top; y < area.bottom; ++y) {
        for (std::int32_t x = area.left; x < area.right; ++x) {
            const Pixel pixel = surface.GetPixel(x, y);
            auto named = legend.find(pixel);
            if (named != legend.end()) {
                picture += named->second;
            } else if (pixel == kPaper) {
                picture += '.';
            } else if (pixel == kInk) {
                picture += '#';
            } else {
                picture += '?';
            }
        }
        picture += '\n';
    }
    return picture;
}

inline std::string Picture(const SoftwareContext& surface) {
    return Picture(surface, surface.GetBounds());
}

// Rows of a picture joined, so that an expectation reads as the picture itself.
inline std::string Rows(const std::vector<std::string>& rows) {
    std::string picture;
    for (const std::string& row : rows)
        picture += row + '\n';
    return picture;
}

// The places of the pixels that are not paper.
inline std::vector<Point> InkedPixels(const SoftwareContext& surface) {
    std::vector<Point> inked;
    const Rect bounds = surface.GetBounds();
    for (std::int32_t y = bounds.top; y < bounds.bottom; ++y) {
        for (std::int32_t x = bounds.left; x < bounds.right; ++x) {
            if (surface.GetPixel(x, y) != kPaper) inked.push_back({x, y});
        }
    }
    return inked;
}

// The smallest rectangle around every pixel that is not paper; empty when there is none.
inline Rect InkBox(const SoftwareContext& surface) {
    Rect box;
    bool any = false;
    for (Point p : InkedPixels(surface)) {
        if (!any) {
            box = {p.x, p.y, p.x + 1, p.y + 1};
            any = true;
            continue;
        }
        box.left = std::min(box.left, p.x);
        box.top = std::min(box.top, p.y);
        box.right = std::max(box.right, p.x + 1);
        box.bottom = std::max(box.bottom, p.y + 1);
    }
    return box;
}

}  // namespace vorix::test
