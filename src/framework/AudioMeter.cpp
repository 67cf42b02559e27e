#include "framework/AudioMeter.h"

#include <algorithm>

#include "framework/FrameRoot.h"
#include "framework/Taper.h"

namespace vorix {
namespace {

// Tick values wrap; their difference does not.
Ticks Elapsed(Ticks now, Ticks then) {
    return static_cast<Ticks>(static_cast<std::uint32_t>(now) - static_cast<std::uint32_t>(then));
}

}  // namespace

AudioMeter::AudioMeter(Frame& parent, const Rect& place, std::int32_t id, float floorLevel,
                       std::uint32_t flags)
    : Frame(parent, place.left, place.top, place.Width(), place.Height(), flags | kOffscreen, id),
      level_(floorLevel),
      displayLevel_(floorLevel),
      lastDrawTicks_(GetRoot().Now()),
      peakStartTicks_(lastDrawTicks_),
      peakLevel_(floorLevel),
      vertical_(place.Height() >= place.Width()),
      barRect_(GetBoundsRect()),
      floorLevel_(floorLevel) {}

void AudioMeter::SetLevel(float dB) {
    float level = dB - levelOffset_;
    // A NaN from outside is taken as silence.
    if (!(level >= floorLevel_)) level = floorLevel_;
    if (level >= kMaxLevel) level = kMaxLevel;
    level_ = level;
    Refresh(nullptr, true);
}

std::int32_t AudioMeter::LevelToPixels(float dB) const {
    const std::int32_t length = vertical_ ? barRect_.Height() : barRect_.Width();
    if (dB < scaleFloor_) return length + 1000;
    double t = (double{dB} - scaleFloor_) / -double{scaleFloor_};
    if (taper_ > 0.0f) t = ApplyTaper(taper_, false, t);
    return static_cast<std::int32_t>(t * length);
}

float AudioMeter::UpdateBallistics(float level, Ticks nowTicks) {
    float shown = level;
    if (level < displayLevel_) {
        const float fall = static_cast<float>(Elapsed(nowTicks, lastDrawTicks_)) * fallRate_ *
                           (1.0f / kTicksPerSecond);
        if (displayLevel_ - level > fall) shown = displayLevel_ - fall;
    }
    displayLevel_ = shown < floorLevel_ ? floorLevel_ : shown;
    return shown;
}

void AudioMeter::Draw(DrawContext& context, const Rect& rect) {
    DrawBackground(context, GetBoundsRect(), rect);
    const Ticks now = GetRoot().Now();
    const float shown = UpdateBallistics(level_, now);
    if (showPeak_ || peakOnly_) {
        if (level_ > peakLevel_) {
            peakLevel_ = level_;
            peakStartTicks_ = now;
        } else if (Elapsed(now, peakStartTicks_) >= peakHoldTicks_) {
            const float fall = static_cast<float>(Elapsed(now, lastDrawTicks_)) * peakFallRate_ *
                               (1.0f / kTicksPerSecond);
            peakLevel_ = std::max(level_, lastPeakLevel_ - fall);
        }
    }
    DrawBar(context, rect, shown, LevelToPixels(shown), LevelToPixels(peakLevel_));
    lastPeakLevel_ = peakLevel_;
    lastDrawTicks_ = now;

    if (!drawTicks_) return;
    context.SetForeColor(tickColor_);
    const Rect& b = GetBoundsRect();
    for (float mark : tickMarks_) {
        const std::int32_t p = LevelToPixels(mark - levelOffset_);
        if (vertical_) {
            context.MoveTo({0, b.bottom - p});
            context.LineTo({GetWidth(), b.bottom - p});
        } else {
            context.MoveTo({b.left + p, 0});
            context.LineTo({b.left + p, GetHeight()});
        }
    }
}

Rect AudioMeter::BarPart(std::int32_t start, std::int32_t end) const {
    if (vertical_)
        return {barRect_.left, barRect_.bottom - end, barRect_.right, barRect_.bottom - start};
    return {barRect_.left + start, barRect_.top, barRect_.left + end, barRect_.bottom};
}

Rect AudioMeter::Mirrored(const Rect& rect) const {
    if (vertical_) {
        return {rect.left, barRect_.top + (barRect_.bottom - rect.bottom), rect.right,
                barRect_.top + (barRect_.bottom - rect.top)};
    }
    return {barRect_.left + (barRect_.right - rect.right), rect.top,
            barRect_.left + (barRect_.right - rect.left), rect.bottom};
}

void AudioMeter::DrawBar(DrawContext& context, const Rect& dirty, float level,
                         std::int32_t barPixels, std::int32_t peakPixels) {
    if (level >= scaleFloor_ && !peakOnly_) {
        const std::int32_t warnStart = LevelToPixels(warnThreshold_) - 1;
        const std::int32_t clipStart = LevelToPixels(clipThreshold_) - 1;
        DrawRange(context, kLow, BarPart(0, std::min(warnStart, barPixels)), dirty);
        if (level >= warnThreshold_)
            DrawRange(context, kWarn, BarPart(warnStart, std::min(clipStart, barPixels)), dirty);
        if (level >= clipThreshold_) {
            DrawRange(context, kClip, BarPart(clipStart, std::min(LevelToPixels(0.0f), barPixels)),
                      dirty);
        }
    }
    if (!(showPeak_ || peakOnly_) || peakLevel_ < scaleFloor_) return;
    Rect peak;
    if (vertical_) {
        const std::int32_t top = std::max(0, barRect_.bottom - peakPixels);
        peak = {barRect_.left, top, barRect_.right, top + peakThickness_};
    } else {
        const std::int32_t end = std::min(barRect_.left + peakPixels, GetWidth() - 1);
        peak = {end - peakThickness_, barRect_.top, end, barRect_.bottom};
    }
    const Range range = peakLevel_ >= clipThreshold_   ? kClip
                        : peakLevel_ >= warnThreshold_ ? kWarn
                                                       : kLow;
    DrawRange(context, range, peak, dirty);
}

void AudioMeter::DrawRange(DrawContext& context, Range range, const Rect& rect, const Rect& dirty) {
    if (rect.IsEmpty()) return;
    const Rect place = reversed_ ? Mirrored(rect) : rect;
    switch (range) {
        case kLow:
            DrawSegmentLow(context, place, dirty);
            break;
        case kWarn:
            DrawSegmentWarn(context, place, dirty);
            break;
        case kClip:
            DrawSegmentClip(context, place, dirty);
            break;
    }
}

namespace {

void PaintSegment(DrawContext& context, const DrawContext* pixmap, Point image,
                  const RGBColor& color, const Rect& rect) {
    if (pixmap != nullptr) {
        context.CopyBits(*pixmap, rect.Offset(image.x, image.y), {rect.left, rect.top}, true);
    } else {
        context.SetForeColor(color);
        context.FillRect(rect);
    }
}

}  // namespace

void AudioMeter::DrawSegmentLow(DrawContext& context, const Rect& rect, const Rect& /*dirty*/) {
    PaintSegment(context, pixmap_, rangeImages_[kLow], colors_[kLow], rect);
}

void AudioMeter::DrawSegmentWarn(DrawContext& context, const Rect& rect, const Rect& /*dirty*/) {
    PaintSegment(context, pixmap_, rangeImages_[kWarn], colors_[kWarn], rect);
}

void AudioMeter::DrawSegmentClip(DrawContext& context, const Rect& rect, const Rect& /*dirty*/) {
    PaintSegment(context, pixmap_, rangeImages_[kClip], colors_[kClip], rect);
}

void AudioMeter::DrawBackground(DrawContext& context, const Rect& /*rect*/, const Rect& dirty) {
    PaintSegment(context, pixmap_, backImage_, backColor_, dirty);
}

void AudioMeter::SetFallRate(float dBPerSecond) {
    fallRate_ = dBPerSecond;
}

void AudioMeter::SetTaper(float taper) {
    taper_ = taper;
    Refresh(nullptr, true);
}

void AudioMeter::SetShowPeak(bool show) {
    showPeak_ = show;
    Refresh(nullptr, true);
}

void AudioMeter::SetPeakOnly(bool peakOnly) {
    peakOnly_ = peakOnly;
    Refresh(nullptr, true);
}

void AudioMeter::SetPeakHoldSeconds(float seconds) {
    peakHoldTicks_ = static_cast<Ticks>(seconds * kTicksPerSecond);
}

float AudioMeter::GetPeakHoldSeconds() const {
    return static_cast<float>(peakHoldTicks_) * (1.0f / kTicksPerSecond);
}

void AudioMeter::SetPeakFallRate(float dBPerSecond) {
    peakFallRate_ = dBPerSecond;
}

void AudioMeter::SetPeakThickness(std::int16_t pixels) {
    peakThickness_ = pixels;
    Refresh(nullptr, true);
}

void AudioMeter::SetScaleFloor(float dB) {
    scaleFloor_ = dB;
    Refresh(nullptr, true);
}

void AudioMeter::SetThresholds(float clip, float warn) {
    if (clip < 0.0f) clipThreshold_ = clip;
    if (warn < 0.0f) warnThreshold_ = warn;
    Refresh(nullptr, true);
}

void AudioMeter::GetThresholds(float& clip, float& warn) const {
    clip = clipThreshold_;
    warn = warnThreshold_;
}

void AudioMeter::SetColors(const RGBColor& back, const RGBColor& low, const RGBColor& warn,
                           const RGBColor& clip) {
    backColor_ = back;
    colors_ = {low, warn, clip};
    Refresh(nullptr, true);
}

void AudioMeter::SetImages(const DrawContext* pixmap, Point background, Point low, Point warn,
                           Point clip) {
    pixmap_ = pixmap;
    backImage_ = background;
    rangeImages_ = {low, warn, clip};
    Refresh(nullptr, true);
}

void AudioMeter::ResetPeak() {
    peakLevel_ = floorLevel_;
    peakStartTicks_ = GetRoot().Now();
    Refresh(nullptr, true);
}

void AudioMeter::SetReversed(bool reversed) {
    reversed_ = reversed;
    Refresh(nullptr, true);
}

void AudioMeter::SetLevelOffset(float dB) {
    levelOffset_ = dB;
    Refresh(nullptr, true);
}

void AudioMeter::SetTickMarks(std::vector<float> dB, const RGBColor& color) {
    tickMarks_ = std::move(dB);
    tickColor_ = color;
    drawTicks_ = true;
    Refresh(nullptr, true);
}

void AudioMeter::DisableTicks() {
    drawTicks_ = false;
    Refresh(nullptr, true);
}

}  // namespace vorix
