// Text on the software surface: the two faces, baseline-aligned strings, and boxed text.
#include <algorithm>

#include "platform/FontFace.h"
#include "platform/SoftwareContext.h"
#include "platform/TextLayout.h"

namespace vorix {
namespace {

// Where boxed text starts relative to its rectangle: the first baseline 12 rows below the top,
// the left edge 5 columns to the left. The editor's boxes are placed for this.
constexpr std::int32_t kBoxShiftX = -5;
constexpr std::int32_t kBoxShiftY = 12;

// `coverage` (0 to 255) of `color` over `under`, per component, rounded to nearest.
Pixel Blend(Pixel under, Pixel color, std::uint32_t coverage) {
    Pixel result = 0;
    for (int shift = 0; shift <= 16; shift += 8) {
        const std::uint32_t below = (under >> shift) & 0xFF;
        const std::uint32_t above = (color >> shift) & 0xFF;
        const std::uint32_t mixed = (below * (255 - coverage) + above * coverage + 127) / 255;
        result |= mixed << shift;
    }
    return result;
}

}  // namespace

FontFace& SoftwareContext::CurrentFace() {
    std::unique_ptr<FontFace>& face = faces_[static_cast<std::size_t>(fontKind_)];
    if (!face) {
        const std::int32_t points = fontKind_ == kSmallFont ? kSmallFacePoints : kNormalFacePoints;
        face = std::make_unique<FontFace>(PixelsForPoints(points));
    }
    return *face;
}

std::int32_t SoftwareContext::GetLineHeight() {
    return CurrentFace().GetLineHeight();
}

void SoftwareContext::SetFont(std::int32_t fontKind, const RGBColor& color) {
    if (fontKind == kNormalFont || fontKind == kSmallFont) fontKind_ = fontKind;
    SetForeColor(color);
}

std::int32_t SoftwareContext::GetStringWidth(std::string_view text) {
    return CurrentFace().MeasureText(DecodeText(text));
}

void SoftwareContext::DrawString(std::string_view text) {
    PaintText(DecodeText(text), pen_, CurrentFace(), foreColor_);
}

void SoftwareContext::DrawStringInRect(std::string_view text, const Rect& rect) {
    FontFace& face = CurrentFace();
    const Rect box = ToSurfaceRect(rect).Offset(kBoxShiftX, kBoxShiftY);
    const std::vector<std::u32string> lines =
        BreakIntoLines(DecodeText(text), box.Width(),
                       [&face](std::u32string_view line) { return face.MeasureText(line); });
    std::int32_t baseline = box.top;
    for (const std::u32string& line : lines) {
        PaintText(line, {box.left, baseline}, face, foreColor_);
        baseline += face.GetLineHeight();
    }
}

void SoftwareContext::PaintText(std::u32string_view text, Point pen, FontFace& face, Pixel pixel) {
    std::int32_t penX = pen.x;
    for (char32_t character : text) {
        const FontFace::Glyph& glyph = face.GetGlyph(character);
        const std::int32_t left = penX + glyph.left;
        const std::int32_t top = pen.y - glyph.top;
        penX += glyph.advance;
        const Rect area{left, top, left + glyph.width, top + glyph.rows};
        if (Intersection(area, clipBox_).IsEmpty()) continue;
        for (const Rect& clip : clip_) {
            const Rect visible = Intersection(area, clip);
            for (std::int32_t y = visible.top; y < visible.bottom; ++y) {
                const std::uint8_t* coverage =
                    glyph.coverage.data() + static_cast<std::size_t>(y - top) * glyph.width;
                Pixel* row = image_.Row(y);
                for (std::int32_t x = visible.left; x < visible.right; ++x) {
                    const std::uint32_t amount = coverage[x - left];
                    if (amount == 255) {
                        row[x] = pixel;
                    } else if (amount != 0) {
                        row[x] = Blend(row[x], pixel, amount);
                    }
                }
            }
        }
    }
}

}  // namespace vorix
