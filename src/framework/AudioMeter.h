#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "framework/Frame.h"
#include "framework/Ticks.h"

namespace vorix {

// A level meter: a bar in up to three colours (below the warning level, up to the clip level,
// from it) and a peak line that holds and then falls. The bar jumps up at once and falls at a
// fixed rate; all motion is worked out when the meter paints, against the root's clock, so
// ballistics cost nothing between paints and missed paints are made good by the elapsed ticks.
// Vertical when at least as tall as wide; paints through the offscreen buffer. Levels come from
// the engine's meters on the editor thread. Editor thread only.
class AudioMeter : public Frame {
  public:
    // The ballistics count a tick as a sixtieth of a second.
    static constexpr float kTicksPerSecond = 60.0f;
    static constexpr float kMaxLevel = 60.0f;

    enum Range : std::int32_t { kLow = 0, kWarn = 1, kClip = 2 };

    // Editor thread. Levels below `floorLevel` are held there.
    AudioMeter(Frame& parent, const Rect& place, std::int32_t id, float floorLevel,
               std::uint32_t flags = 0);

    void Draw(DrawContext& context, const Rect& rect) override;

    // ---- Virtual operations of the meter, in the order of the design ----
    // Editor thread. A new input in dB; the meter repaints.
    virtual void SetLevel(float dB);
    // Editor thread. The extent of the bar along its axis for a level.
    virtual std::int32_t LevelToPixels(float dB) const;
    // Editor thread. Moves the shown level towards `level` as the time since the last paint
    // allows; answers the level to show.
    virtual float UpdateBallistics(float level, Ticks nowTicks);
    virtual void DrawBackground(DrawContext& context, const Rect& rect, const Rect& dirty);
    virtual void DrawBar(DrawContext& context, const Rect& dirty, float level,
                         std::int32_t barPixels, std::int32_t peakPixels);
    virtual void DrawSegmentLow(DrawContext& context, const Rect& rect, const Rect& dirty);
    virtual void DrawSegmentWarn(DrawContext& context, const Rect& rect, const Rect& dirty);
    virtual void DrawSegmentClip(DrawContext& context, const Rect& rect, const Rect& dirty);

    // ---- Accessors; each repaints where it changes the picture ----
    void SetFallRate(float dBPerSecond);
    float GetFallRate() const { return fallRate_; }
    void SetTaper(float taper);
    float GetTaper() const { return taper_; }
    void SetShowPeak(bool show);
    void SetPeakOnly(bool peakOnly);
    void SetPeakHoldSeconds(float seconds);
    float GetPeakHoldSeconds() const;
    void SetPeakFallRate(float dBPerSecond);
    void SetPeakThickness(std::int16_t pixels);
    void SetScaleFloor(float dB);
    // Editor thread. A value that is not below 0 leaves its threshold as it was.
    void SetThresholds(float clip, float warn);
    void GetThresholds(float& clip, float& warn) const;
    void SetColors(const RGBColor& back, const RGBColor& low, const RGBColor& warn,
                   const RGBColor& clip);
    // Editor thread. Draw from a pixmap (not owned; null for colours): the background image and
    // one image per range, each as large as the frame.
    void SetImages(const DrawContext* pixmap, Point background, Point low, Point warn, Point clip);
    // Editor thread. The peak starts again from the floor, now.
    void ResetPeak();
    void SetReversed(bool reversed);
    void SetLevelOffset(float dB);
    void SetTickMarks(std::vector<float> dB, const RGBColor& color);
    void DisableTicks();

    float GetLevel() const { return level_; }
    float GetDisplayLevel() const { return displayLevel_; }
    float GetPeakLevel() const { return peakLevel_; }
    bool IsVerticalMeter() const { return vertical_; }

  private:
    // Draws the range's segment over `rect` (frame coordinates), mirrored when reversed.
    void DrawRange(DrawContext& context, Range range, const Rect& rect, const Rect& dirty);
    // The part of the bar from `start` to `end` pixels along it.
    Rect BarPart(std::int32_t start, std::int32_t end) const;
    Rect Mirrored(const Rect& rect) const;

    float level_;
    float displayLevel_;
    Ticks lastDrawTicks_;
    float fallRate_ = 48.0f;
    bool showPeak_ = true;
    Ticks peakHoldTicks_ = 180;
    Ticks peakStartTicks_;
    float peakLevel_;
    float lastPeakLevel_ = -100.0f;
    std::int16_t peakThickness_ = 1;
    float peakFallRate_ = 18.0f;
    float taper_ = 0.1f;
    float scaleFloor_ = -100.0f;
    float warnThreshold_ = -15.0f;
    float clipThreshold_ = -6.0f;
    std::vector<float> tickMarks_;
    bool drawTicks_ = false;
    RGBColor tickColor_;
    bool vertical_;
    RGBColor backColor_ = kBlack;
    std::array<RGBColor, 3> colors_{RGBColor{0, 0xC8, 0}, RGBColor{0xF0, 0xD0, 0},
                                    RGBColor{0xFF, 0x20, 0x20}};
    const DrawContext* pixmap_ = nullptr;
    Point backImage_;
    std::array<Point, 3> rangeImages_{};
    Rect barRect_;
    bool reversed_ = false;
    bool peakOnly_ = false;
    float levelOffset_ = 0.0f;
    float floorLevel_;
};

}  // namespace vorix
