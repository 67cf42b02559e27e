#pragma once

#include <cstdint>

#include "framework/Frame.h"

namespace vorix {

// A frame that shows a rectangle cut from a pixmap of the artwork: the frame's size, from the
// source point. The frame need not be the image's size; what lies off the pixmap is not copied.
// Editor thread.
class PixMapDrawFrame : public Frame {
  public:
    // Editor thread. `pixmap` is not owned and may be null (the frame then paints nothing).
    PixMapDrawFrame(Frame& parent, const Rect& place, std::uint32_t flags, std::int32_t id,
                    const DrawContext* pixmap, Point source);

    void Draw(DrawContext& context, const Rect& rect) override;

    // Editor thread. Another picture; the frame repaints.
    void SetSource(const DrawContext* pixmap, Point source);
    const DrawContext* GetPixmap() const { return pixmap_; }
    Point GetSource() const { return source_; }

  private:
    const DrawContext* pixmap_;
    Point source_;
};

// A frame that stretches a small image to its own size without scaling it: the corners are
// copied as they are, the edges and the inside are tiled. Editor thread.
class ScalablePmDrawFrame : public PixMapDrawFrame {
  public:
    // Editor thread. The image is `sourceSize` pixels at `source`; `cornerSize` pixels of each
    // corner stay as they are.
    ScalablePmDrawFrame(Frame& parent, const Rect& place, std::uint32_t flags, std::int32_t id,
                        const DrawContext* pixmap, Point source, Point sourceSize,
                        std::int16_t cornerSize);

    void Draw(DrawContext& context, const Rect& rect) override;

  private:
    // Copies `from` (source pixels) over `to` (frame pixels), tile by tile, each clipped by what
    // remains of `to`.
    void Tile(DrawContext& context, const Rect& from, const Rect& to) const;

    std::int16_t cornerSize_;
    std::int32_t sourceWidth_;
    std::int32_t sourceHeight_;
};

}  // namespace vorix
