#pragma once

#include <cstdint>
#include <vector>

#include "framework/Frame.h"
#include "framework/Ticks.h"

namespace vorix {

// One colour range of a meter: from `threshold` dB up to the next region's, in a colour or
// copied from the pixmap at the image point.
struct MeterRegion {
    float threshold = 0.0f;
    RGBColor color;
    std::int32_t imageX = 0;
    std::int32_t imageY = 0;
};

// A level meter with any number of colour ranges instead of three: the first region's threshold
// is the floor of its scale, the top is 0 dB. Its ballistics are those of AudioMeter: the bar
// jumps up at once and falls at its rate, the peak holds and then falls, all worked out at paint
// time against the root's clock. Paints through the offscreen buffer. Editor thread.
class NRegionAudioMeter : public Frame {
  public:
    static constexpr float kTicksPerSecond = 60.0f;
    static constexpr float kSilence = -1000.0f;
    static constexpr float kMaxLevel = 60.0f;

    // Editor thread. `regions` in rising order of threshold; at least one.
    NRegionAudioMeter(Frame& parent, const Rect& place, std::int32_t id,
                      std::vector<MeterRegion> regions, std::uint32_t flags = 0);

    void Draw(DrawContext& context, const Rect& rect) override;

    // Editor thread. The background: the colour, or an image of the frame's size when a
    // pixmap is set.
    virtual void DrawBackground(DrawContext& context, const Rect& dirty);

    // Editor thread. A new input in dB, held between silence and 60 dB; the meter repaints.
    void SetLevel(float dB);
    // Editor thread. The extent along the bar of a level; -1 below the first region.
    std::int32_t LevelToPixels(float dB) const;
    void SetTickMarks(std::vector<float> dB, const RGBColor& color);
    void SetBackground(const RGBColor& color, const DrawContext* pixmap, Point image);
    void SetTaper(float taper);
    void SetShowPeak(bool show);

    float GetDisplayLevel() const { return displayLevel_; }
    float GetPeakLevel() const { return peakLevel_; }

  private:
    void PaintRegion(DrawContext& context, const MeterRegion& region, std::int32_t start,
                     std::int32_t end) const;
    Rect BarPart(std::int32_t start, std::int32_t end) const;

    std::vector<MeterRegion> regions_;
    float level_ = kSilence;
    float displayLevel_ = kSilence;
    float peakLevel_ = kSilence;
    float lastPeakLevel_ = -100.0f;
    Ticks lastDrawTicks_;
    Ticks peakStartTicks_;
    Ticks peakHoldTicks_ = 180;
    std::int16_t peakThickness_ = 1;
    float peakFallRate_ = 18.0f;
    float fallRate_ = 48.0f;
    float taper_ = 0.1f;
    bool showPeak_ = true;
    bool vertical_;
    std::vector<float> tickMarks_;
    RGBColor tickColor_;
    RGBColor backColor_ = kBlack;
    const DrawContext* pixmap_ = nullptr;
    Point backImage_;
};

}  // namespace vorix
