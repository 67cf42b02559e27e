#pragma once

#include <cstdint>

#include "framework/GraphicControl.h"

namespace vorix {

// Where a slider's images lie in its pixmap.
struct SliderArt {
    const DrawContext* pixmap = nullptr;  // not owned
    Point background;                     // the frame's size
    Point thumb;                          // thumbSize
    Point thumbSize;
    Point disabledThumb{-1, -1};  // none when -1
    Point mask;                   // the thumb's mask in the same pixmap; (0, 0) for none
};

// A slider cut from the artwork: a background and a thumb that moves along a track, horizontal
// when the frame is wider than tall. The value follows the thumb's place through the taper, so
// that a level slider can give the low end more room. A press on the thumb keeps the thumb's
// relation to the mouse; a press beside it jumps the thumb's centre to the mouse. Editor thread.
class PixMapSlider : public GraphicControl {
  public:
    PixMapSlider(Frame& parent, const Rect& place, std::int32_t id, const SliderArt& art,
                 Value minimum, Value maximum, Value defaultValue, std::uint32_t flags = 0,
                 CentralController* controller = nullptr);

    void Draw(DrawContext& context, const Rect& rect) override;
    void TrackMouse(std::int32_t phase, std::int32_t x, std::int32_t y, bool inside) override;

    // ---- Virtual operations of the slider, in the order of the design ----
    virtual void DrawBackground(DrawContext& context, const Rect& rect);
    virtual void DrawThumb(DrawContext& context, const Rect& rect);
    // Editor thread. The value of a thumb place: the track's left (or top) edge of the thumb.
    virtual Value PixelToValue(std::int32_t pixel);
    // Editor thread. The thumb's right edge (horizontal) or top edge (vertical) for `value`.
    virtual std::int32_t ValueToPixel(Value value);
    virtual double ApplyTaper(bool inverse, double fraction);
    // Editor thread. The thumb place that puts the thumb's centre on the mouse.
    virtual std::int32_t PointToPixel(std::int32_t x, std::int32_t y);

    // Editor thread. Where the thumb is now, in the frame's coordinates.
    Rect ThumbRect();

    // Editor thread. Each repaints where it changes the picture.
    void SetTrack(const Rect& track);
    void SetTaper(float taper);
    void SetShowThumb(bool show);
    const Rect& GetTrack() const { return track_; }
    bool IsVertical() const { return vertical_; }
    float GetTaper() const { return taper_; }
    std::int32_t GetGrabOffset() const { return grabOffset_; }

  protected:
    const SliderArt& Art() const { return art_; }
    // The pixel clamped to the track along the slider's axis, less the grab offset.
    std::int32_t ClampToTrack(std::int32_t pixel) const;

  private:
    std::int32_t grabOffset_ = 0;
    SliderArt art_;
    Rect track_;
    bool showThumb_ = true;
    bool vertical_;
    float taper_ = -1.0f;
};

// A horizontal slider counted in units of a fixed number of pixels from the track's right end,
// whose range may be cut short: the part of the track beyond the lower limit shows a limit image.
// Editor thread.
class RangeLimitedSlider : public PixMapSlider {
  public:
    RangeLimitedSlider(Frame& parent, const Rect& place, std::int32_t id, const SliderArt& art,
                       Value minimum, Value maximum, Value defaultValue, float pixelsPerUnit,
                       std::uint32_t flags = 0, CentralController* controller = nullptr);

    void DrawBackground(DrawContext& context, const Rect& rect) override;
    Value PixelToValue(std::int32_t pixel) override;
    std::int32_t ValueToPixel(Value value) override;
    std::int32_t PointToPixel(std::int32_t x, std::int32_t y) override;

    // Editor thread. The image laid over the cut-off part, with its mask; (-1, -1) for none.
    void SetLimitImage(Point image, Point mask);
    float GetPixelsPerUnit() const { return pixelsPerUnit_; }

  private:
    Point limitImage_{-1, -1};
    Point limitMask_;
    float pixelsPerUnit_;
};

}  // namespace vorix
