#include "core/ParameterHighlighter.h"

#include <array>

namespace vorix {
namespace {

enum Corner : std::uint32_t { kTopLeft = 1, kTopRight = 2, kBottomLeft = 4, kBottomRight = 8 };

// By corner code, 0 to 9.
constexpr std::array<std::uint32_t, 10> kCornerTable{
    kTopLeft | kTopRight | kBottomLeft | kBottomRight,  // 0: all four
    0,                                                  // 1: none
    kTopLeft,                                           // 2
    kTopRight,                                          // 3
    kBottomLeft,                                        // 4
    kBottomRight,                                       // 5
    kTopLeft | kBottomLeft,                             // 6
    kTopRight | kBottomRight,                           // 7
    kTopLeft | kTopRight,                               // 8
    kBottomLeft | kBottomRight,                         // 9
};

// By colour index, 0 to 3, in 16-bit components.
constexpr std::array<RGBColor, 4> kColourTable{
    RGBColor{65535, 0, 0},
    RGBColor{18247, 35209, 65278},
    RGBColor{0, 65535, 0},
    RGBColor{65535, 65535, 0},
};

// How far a bracket's arms reach from the corner: 4 pixels, the corner's included.
constexpr std::int32_t kArm = 3;

void Line(DrawContext& context, Point from, Point to) {
    context.MoveTo(from);
    context.LineTo(to);
}

}  // namespace

std::uint32_t DefaultParameterHighlighter::CornersOf(std::int32_t cornerCode) noexcept {
    if (cornerCode < 0 || cornerCode >= static_cast<std::int32_t>(kCornerTable.size())) return 0;
    return kCornerTable[static_cast<std::size_t>(cornerCode)];
}

RGBColor DefaultParameterHighlighter::ColorOf(std::int32_t colourIndex) noexcept {
    if (colourIndex < 0 || colourIndex >= static_cast<std::int32_t>(kColourTable.size()))
        return kBlack;
    return kColourTable[static_cast<std::size_t>(colourIndex)];
}

DefaultParameterHighlighter::DefaultParameterHighlighter(std::int32_t colourIndex,
                                                         std::int32_t cornerCode) noexcept
    : colourIndex_(colourIndex), cornerCode_(cornerCode) {}

RGBColor DefaultParameterHighlighter::GetColor() const {
    return ColorOf(colourIndex_);
}

void DefaultParameterHighlighter::Draw(Frame& frame, DrawContext& context, const Rect& /*rect*/) {
    const std::uint32_t corners = CornersOf(cornerCode_);
    if (corners == 0) return;
    const Rect& b = frame.GetBoundsRect();
    // The last pixel column and row of the frame.
    const std::int32_t l = b.left;
    const std::int32_t t = b.top;
    const std::int32_t r = b.right - 1;
    const std::int32_t bt = b.bottom - 1;
    context.SetForeColor(GetColor());
    if ((corners & kTopLeft) != 0) {
        Line(context, {l, t}, {l + kArm, t});
        Line(context, {l, t}, {l, t + kArm});
    }
    if ((corners & kTopRight) != 0) {
        Line(context, {r, t}, {r - kArm, t});
        Line(context, {r, t}, {r, t + kArm});
    }
    if ((corners & kBottomLeft) != 0) {
        Line(context, {l, bt}, {l + kArm, bt});
        Line(context, {l, bt}, {l, bt - kArm});
    }
    if ((corners & kBottomRight) != 0) {
        Line(context, {r, bt}, {r - kArm, bt});
        Line(context, {r, bt}, {r, bt - kArm});
    }
}

}  // namespace vorix
