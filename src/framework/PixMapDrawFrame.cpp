#include "framework/PixMapDrawFrame.h"

#include <algorithm>

namespace vorix {

PixMapDrawFrame::PixMapDrawFrame(Frame& parent, const Rect& place, std::uint32_t flags,
                                 std::int32_t id, const DrawContext* pixmap, Point source)
    : Frame(parent, place.left, place.top, place.Width(), place.Height(), flags, id),
      pixmap_(pixmap),
      source_(source) {}

void PixMapDrawFrame::Draw(DrawContext& context, const Rect& rect) {
    if (pixmap_ == nullptr) return;
    const Rect part = Intersection(rect, {0, 0, GetWidth(), GetHeight()});
    if (part.IsEmpty()) return;
    context.ResetCopyColors();
    context.CopyBits(*pixmap_, part.Offset(source_.x, source_.y), {part.left, part.top}, false);
}

void PixMapDrawFrame::SetSource(const DrawContext* pixmap, Point source) {
    pixmap_ = pixmap;
    source_ = source;
    Refresh(nullptr, true);
}

ScalablePmDrawFrame::ScalablePmDrawFrame(Frame& parent, const Rect& place, std::uint32_t flags,
                                         std::int32_t id, const DrawContext* pixmap, Point source,
                                         Point sourceSize, std::int16_t cornerSize)
    : PixMapDrawFrame(parent, place, flags, id, pixmap, source),
      cornerSize_(cornerSize),
      sourceWidth_(sourceSize.x),
      sourceHeight_(sourceSize.y) {}

void ScalablePmDrawFrame::Draw(DrawContext& context, const Rect& rect) {
    const DrawContext* pixmap = GetPixmap();
    if (pixmap == nullptr) return;
    const std::int32_t w = GetWidth();
    const std::int32_t h = GetHeight();
    if (w == sourceWidth_ && h == sourceHeight_) {
        PixMapDrawFrame::Draw(context, rect);
        return;
    }
    context.ResetCopyColors();
    const Point s = GetSource();
    const std::int32_t c = cornerSize_;
    if (c > 0) {
        const std::int32_t sw = sourceWidth_;
        const std::int32_t sh = sourceHeight_;
        // Corners: top left, top right, bottom left, bottom right.
        context.CopyBits(*pixmap, {s.x, s.y, s.x + c, s.y + c}, {0, 0}, false);
        context.CopyBits(*pixmap, {s.x + sw - c, s.y, s.x + sw, s.y + c}, {w - c, 0}, false);
        context.CopyBits(*pixmap, {s.x, s.y + sh - c, s.x + c, s.y + sh}, {0, h - c}, false);
        context.CopyBits(*pixmap, {s.x + sw - c, s.y + sh - c, s.x + sw, s.y + sh}, {w - c, h - c},
                         false);
        // Edges, tiled one source span at a time: top and bottom, then left and right.
        const std::int32_t spanX = sw - 2 * c;
        for (std::int32_t x = c; spanX > 0 && x < w - c; x += spanX) {
            const std::int32_t n = std::min(spanX, w - c - x);
            context.CopyBits(*pixmap, {s.x + c, s.y, s.x + c + n, s.y + c}, {x, 0}, false);
            context.CopyBits(*pixmap, {s.x + c, s.y + sh - c, s.x + c + n, s.y + sh}, {x, h - c},
                             false);
        }
        const std::int32_t spanY = sh - 2 * c;
        for (std::int32_t y = c; spanY > 0 && y < h - c; y += spanY) {
            const std::int32_t n = std::min(spanY, h - c - y);
            context.CopyBits(*pixmap, {s.x, s.y + c, s.x + c, s.y + c + n}, {0, y}, false);
            context.CopyBits(*pixmap, {s.x + sw - c, s.y + c, s.x + sw, s.y + c + n}, {w - c, y},
                             false);
        }
    }
    Tile(context, {s.x + c, s.y + c, s.x + sourceWidth_ - c, s.y + sourceHeight_ - c},
         {c, c, w - c, h - c});
}

void ScalablePmDrawFrame::Tile(DrawContext& context, const Rect& from, const Rect& to) const {
    if (from.IsEmpty() || to.IsEmpty()) return;
    for (std::int32_t y = to.top; y < to.bottom; y += from.Height()) {
        const std::int32_t rows = std::min(from.Height(), to.bottom - y);
        for (std::int32_t x = to.left; x < to.right; x += from.Width()) {
            const std::int32_t columns = std::min(from.Width(), to.right - x);
            context.CopyBits(*GetPixmap(),
                             {from.left, from.top, from.left + columns, from.top + rows}, {x, y},
                             false);
        }
    }
}

}  // namespace vorix
