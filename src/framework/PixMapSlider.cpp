#include "framework/PixMapSlider.h"

#include <algorithm>

#include "framework/Taper.h"

namespace vorix {

PixMapSlider::PixMapSlider(Frame& parent, const Rect& place, std::int32_t id, const SliderArt& art,
                           Value minimum, Value maximum, Value defaultValue, std::uint32_t flags,
                           CentralController* controller)
    : GraphicControl(parent, place, flags, id, minimum, maximum, defaultValue, controller),
      art_(art),
      track_{0, 0, place.Width(), place.Height()},
      vertical_(place.Height() > place.Width()) {}

void PixMapSlider::Draw(DrawContext& context, const Rect& rect) {
    DrawBackground(context, rect);
    DrawThumb(context, rect);
}

void PixMapSlider::DrawBackground(DrawContext& context, const Rect& /*rect*/) {
    if (art_.pixmap == nullptr) return;
    context.ResetCopyColors();
    const Point b = art_.background;
    context.CopyBits(*art_.pixmap, {b.x, b.y, b.x + GetWidth(), b.y + GetHeight()}, {0, 0}, false);
}

void PixMapSlider::DrawThumb(DrawContext& context, const Rect& /*rect*/) {
    if (art_.pixmap == nullptr || !showThumb_) return;
    Point source = art_.thumb;
    if (!IsEnabled() && art_.disabledThumb.x != -1 && art_.disabledThumb.y != -1)
        source = art_.disabledThumb;
    const Rect from{source.x, source.y, source.x + art_.thumbSize.x, source.y + art_.thumbSize.y};
    const Rect thumb = ThumbRect();
    context.ResetCopyColors();
    if (art_.mask.x != 0 || art_.mask.y != 0) {
        context.CopyMaskedBits(*art_.pixmap, from, *art_.pixmap, art_.mask, {thumb.left, thumb.top},
                               false);
    } else {
        context.CopyBits(*art_.pixmap, from, {thumb.left, thumb.top}, false);
    }
}

Rect PixMapSlider::ThumbRect() {
    Rect thumb = track_;
    if (vertical_) {
        thumb.top = ValueToPixel(GetValue());
        thumb.bottom = thumb.top + art_.thumbSize.y;
    } else {
        thumb.right = ValueToPixel(GetValue());
        thumb.left = thumb.right - art_.thumbSize.x;
    }
    return thumb;
}

double PixMapSlider::ApplyTaper(bool inverse, double fraction) {
    return vorix::ApplyTaper(taper_ == -1.0f ? 0.0 : taper_, inverse, fraction);
}

std::int32_t PixMapSlider::ClampToTrack(std::int32_t pixel) const {
    pixel -= grabOffset_;
    return vertical_ ? std::clamp(pixel, track_.top, std::max(track_.top, track_.bottom))
                     : std::clamp(pixel, track_.left, std::max(track_.left, track_.right));
}

PixMapSlider::Value PixMapSlider::PixelToValue(std::int32_t pixel) {
    pixel = ClampToTrack(pixel);
    double fraction = 0.0;
    if (vertical_) {
        const double length = track_.bottom - art_.thumbSize.y - track_.top;
        // The top of the track is the maximum.
        fraction = length > 0 ? (length - (pixel - track_.top)) / length : 0.0;
    } else {
        const double length = track_.right - art_.thumbSize.x - track_.left;
        fraction = length > 0 ? (pixel - track_.left) / length : 0.0;
    }
    const double span = static_cast<double>(GetMaximum()) - GetMinimum();
    return static_cast<Value>(ApplyTaper(false, fraction) * span + GetMinimum());
}

std::int32_t PixMapSlider::ValueToPixel(Value value) {
    const double span = static_cast<double>(GetMaximum()) - GetMinimum();
    if (span <= 0.0)
        return vertical_ ? track_.bottom - art_.thumbSize.y : track_.left + art_.thumbSize.x;
    const double v =
        static_cast<Value>(ApplyTaper(true, (value - GetMinimum()) / span) * span + GetMinimum());
    const double share = (v - GetMinimum()) / span;
    if (vertical_) {
        const double length = track_.bottom - art_.thumbSize.y - track_.top;
        return static_cast<std::int32_t>(track_.bottom - length * share - art_.thumbSize.y);
    }
    const double length = track_.right - art_.thumbSize.x - track_.left;
    return static_cast<std::int32_t>(length * share + art_.thumbSize.x + track_.left);
}

std::int32_t PixMapSlider::PointToPixel(std::int32_t x, std::int32_t y) {
    return vertical_ ? y - art_.thumbSize.y / 2 : x - art_.thumbSize.x / 2;
}

void PixMapSlider::TrackMouse(std::int32_t phase, std::int32_t x, std::int32_t y, bool /*inside*/) {
    if (phase == kTrackPress) {
        const Rect thumb = ThumbRect();
        if (x > thumb.left && x < thumb.right && y > thumb.top && y < thumb.bottom) {
            // Held by the thumb: it keeps its relation to the mouse and does not jump.
            grabOffset_ = vertical_ ? y - art_.thumbSize.y / 2 - thumb.top
                                    : x - art_.thumbSize.x / 2 - thumb.left;
            return;
        }
        grabOffset_ = 0;
        phase = kTrackDrag;
    }
    if (phase == kTrackDrag) {
        SetValue(PixelToValue(PointToPixel(x, y)));
    } else if (phase == kTrackRelease) {
        grabOffset_ = 0;
    }
}

void PixMapSlider::SetTrack(const Rect& track) {
    track_ = track;
    Refresh(nullptr, true);
}

void PixMapSlider::SetTaper(float taper) {
    taper_ = taper;
    Refresh(nullptr, true);
}

void PixMapSlider::SetShowThumb(bool show) {
    showThumb_ = show;
    Refresh(nullptr, true);
}

RangeLimitedSlider::RangeLimitedSlider(Frame& parent, const Rect& place, std::int32_t id,
                                       const SliderArt& art, Value minimum, Value maximum,
                                       Value defaultValue, float pixelsPerUnit, std::uint32_t flags,
                                       CentralController* controller)
    : PixMapSlider(parent, place, id, art, minimum, maximum, defaultValue, flags, controller),
      pixelsPerUnit_(pixelsPerUnit) {}

void RangeLimitedSlider::SetLimitImage(Point image, Point mask) {
    limitImage_ = image;
    limitMask_ = mask;
    Refresh(nullptr, true);
}

RangeLimitedSlider::Value RangeLimitedSlider::PixelToValue(std::int32_t pixel) {
    pixel = ClampToTrack(pixel);
    if (IsVertical() || pixelsPerUnit_ == 0.0f) return 0;
    const double units = GetMaximum() - (GetTrack().right - pixel) / double{pixelsPerUnit_};
    return static_cast<Value>(ApplyTaper(false, units));
}

std::int32_t RangeLimitedSlider::ValueToPixel(Value value) {
    if (IsVertical()) return value;
    return static_cast<std::int32_t>(value * double{pixelsPerUnit_} + GetTrack().right);
}

std::int32_t RangeLimitedSlider::PointToPixel(std::int32_t x, std::int32_t y) {
    // Counted from the right end, the thumb's place is its right edge: half a thumb on.
    return IsVertical() ? y + Art().thumbSize.y / 2 : x + Art().thumbSize.x / 2;
}

void RangeLimitedSlider::DrawBackground(DrawContext& context, const Rect& rect) {
    PixMapSlider::DrawBackground(context, rect);
    const SliderArt& art = Art();
    if (art.pixmap == nullptr || limitImage_.x == -1 || limitImage_.y == -1) return;
    const std::int32_t w = GetWidth();
    const auto offset = static_cast<std::int32_t>(-GetMinimum() * double{pixelsPerUnit_});
    const Rect from{limitImage_.x + w - art.thumbSize.x - offset, limitImage_.y, limitImage_.x + w,
                    limitImage_.y + GetHeight()};
    context.CopyMaskedBits(*art.pixmap, from, *art.pixmap, limitMask_,
                           {w - art.thumbSize.x - offset, 0}, false);
}

}  // namespace vorix
