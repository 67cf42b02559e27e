#pragma once

#include <algorithm>
#include <cstdint>

namespace vorix {

// A place on a drawing surface, in pixels.
struct Point {
    std::int32_t x = 0;
    std::int32_t y = 0;

    friend bool operator==(const Point&, const Point&) = default;
};

// A rectangle of pixels. Right and bottom are exclusive: (0, 0, 10, 5) covers columns 0 to 9 and
// rows 0 to 4, and a rectangle whose right is not above its left (or bottom not below its top)
// covers nothing.
struct Rect {
    std::int32_t left = 0;
    std::int32_t top = 0;
    std::int32_t right = 0;
    std::int32_t bottom = 0;

    std::int32_t Width() const { return right - left; }
    std::int32_t Height() const { return bottom - top; }
    bool IsEmpty() const { return right <= left || bottom <= top; }
    bool Contains(Point p) const {
        return p.x >= left && p.x < right && p.y >= top && p.y < bottom;
    }
    Rect Offset(std::int32_t dx, std::int32_t dy) const {
        return {left + dx, top + dy, right + dx, bottom + dy};
    }

    friend bool operator==(const Rect&, const Rect&) = default;
};

// The pixels two rectangles share; empty rectangles share nothing, and the answer is then
// (0, 0, 0, 0) so that every empty result compares equal.
inline Rect Intersection(const Rect& a, const Rect& b) {
    Rect r{std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
           std::min(a.bottom, b.bottom)};
    return r.IsEmpty() ? Rect{} : r;
}

// A colour of three 16-bit components. Surfaces of 8 bits a component use the low byte of each,
// so (0xFFFF, 0x4444, 0) and (0xFF, 0x44, 0) paint alike.
struct RGBColor {
    std::uint16_t red = 0;
    std::uint16_t green = 0;
    std::uint16_t blue = 0;

    friend bool operator==(const RGBColor&, const RGBColor&) = default;
};

inline constexpr RGBColor kBlack{0, 0, 0};
inline constexpr RGBColor kWhite{0xFFFF, 0xFFFF, 0xFFFF};

}  // namespace vorix
