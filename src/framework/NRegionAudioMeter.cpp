#include "framework/NRegionAudioMeter.h"

#include <algorithm>

#include "framework/FrameRoot.h"
#include "framework/Taper.h"

namespace vorix {
namespace {

Ticks Elapsed(Ticks now, Ticks then) {
    return static_cast<Ticks>(static_cast<std::uint32_t>(now) - static_cast<std::uint32_t>(then));
}

}  // namespace

NRegionAudioMeter::NRegionAudioMeter(Frame& parent, const Rect& place, std::int32_t id,
                                     std::vector<MeterRegion> regions, std::uint32_t flags)
    : Frame(parent, place.left, place.top, place.Width(), place.Height(), flags | kOffscreen, id),
      regions_(std::move(regions)),
      lastDrawTicks_(GetRoot().Now()),
      peakStartTicks_(lastDrawTicks_),
      vertical_(place.Height() >= place.Width()) {
    if (regions_.empty()) regions_.push_back({-100.0f, kWhite, 0, 0});
}

void NRegionAudioMeter::SetLevel(float dB) {
    // A NaN from outside is silence.
    level_ = dB >= kSilence ? std::min(dB, kMaxLevel) : kSilence;
    Refresh(nullptr, true);
}

std::int32_t NRegionAudioMeter::LevelToPixels(float dB) const {
    const float first = regions_.front().threshold;
    if (dB < first) return -1;
    const std::int32_t length = vertical_ ? GetHeight() : GetWidth();
    double t = (double{dB} - first) / -double{first};
    if (taper_ > 0.0f) t = ApplyTaper(taper_, false, t);
    return static_cast<std::int32_t>(t * length);
}

Rect NRegionAudioMeter::BarPart(std::int32_t start, std::int32_t end) const {
    if (vertical_) return {0, GetHeight() - end, GetWidth(), GetHeight() - start};
    return {start, 0, end, GetHeight()};
}

void NRegionAudioMeter::PaintRegion(DrawContext& context, const MeterRegion& region,
                                    std::int32_t start, std::int32_t end) const {
    if (end <= start) return;
    const Rect part = BarPart(start, end);
    if (pixmap_ != nullptr) {
        context.CopyBits(*pixmap_, part.Offset(region.imageX, region.imageY), {part.left, part.top},
                         true);
    } else {
        context.SetForeColor(region.color);
        context.FillRect(part);
    }
}

void NRegionAudioMeter::DrawBackground(DrawContext& context, const Rect& dirty) {
    if (pixmap_ != nullptr) {
        context.CopyBits(*pixmap_, dirty.Offset(backImage_.x, backImage_.y),
                         {dirty.left, dirty.top}, true);
        return;
    }
    context.SetForeColor(backColor_);
    context.FillRect(dirty);
}

void NRegionAudioMeter::Draw(DrawContext& context, const Rect& rect) {
    DrawBackground(context, rect);
    const Ticks now = GetRoot().Now();
    // The bar: at once up, at the fall rate down.
    float shown = level_;
    if (level_ < displayLevel_) {
        const float fall =
            static_cast<float>(Elapsed(now, lastDrawTicks_)) * fallRate_ * (1.0f / kTicksPerSecond);
        if (displayLevel_ - level_ > fall) shown = displayLevel_ - fall;
    }
    displayLevel_ = std::max(shown, kSilence);
    if (showPeak_) {
        if (level_ > peakLevel_) {
            peakLevel_ = level_;
            peakStartTicks_ = now;
        } else if (Elapsed(now, peakStartTicks_) >= peakHoldTicks_) {
            const float fall = static_cast<float>(Elapsed(now, lastDrawTicks_)) * peakFallRate_ *
                               (1.0f / kTicksPerSecond);
            peakLevel_ = std::max(level_, lastPeakLevel_ - fall);
        }
    }
    lastDrawTicks_ = now;
    lastPeakLevel_ = peakLevel_;

    const std::int32_t length = vertical_ ? GetHeight() : GetWidth();
    const std::int32_t bar = LevelToPixels(shown);
    std::int32_t start = 0;
    for (std::size_t i = 0; i < regions_.size() && start < bar; ++i) {
        // Each region ends at the pixel before the next region's threshold.
        const std::int32_t end =
            i + 1 < regions_.size() ? LevelToPixels(regions_[i + 1].threshold) - 1 : length;
        const std::int32_t cut = std::min(end, bar);
        PaintRegion(context, regions_[i], start, cut);
        start = std::max(start, cut);
    }

    if (showPeak_) {
        const MeterRegion* region = nullptr;
        for (const MeterRegion& r : regions_)
            if (r.threshold <= peakLevel_) region = &r;
        const std::int32_t peak = LevelToPixels(peakLevel_);
        if (region != nullptr && peak >= 0) {
            const std::int32_t end = std::clamp(peak, std::int32_t{peakThickness_}, length);
            PaintRegion(context, *region, end - peakThickness_, end);
        }
    }

    if (tickMarks_.empty()) return;
    context.SetForeColor(tickColor_);
    for (float mark : tickMarks_) {
        const std::int32_t p = LevelToPixels(mark);
        if (p < 0) continue;
        if (vertical_) {
            context.MoveTo({0, GetHeight() - p});
            context.LineTo({GetWidth(), GetHeight() - p});
        } else {
            context.MoveTo({p, 0});
            context.LineTo({p, GetHeight()});
        }
    }
}

void NRegionAudioMeter::SetTickMarks(std::vector<float> dB, const RGBColor& color) {
    tickMarks_ = std::move(dB);
    tickColor_ = color;
    Refresh(nullptr, true);
}

void NRegionAudioMeter::SetBackground(const RGBColor& color, const DrawContext* pixmap,
                                      Point image) {
    backColor_ = color;
    pixmap_ = pixmap;
    backImage_ = image;
    Refresh(nullptr, true);
}

void NRegionAudioMeter::SetTaper(float taper) {
    taper_ = taper;
    Refresh(nullptr, true);
}

void NRegionAudioMeter::SetShowPeak(bool show) {
    showPeak_ = show;
    Refresh(nullptr, true);
}

}  // namespace vorix
