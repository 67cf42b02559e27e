// Meters over simulated time and text frames under the user's mouse and keys, in a headless
// editor whose clock moves only when the test moves it.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

#include "FrameworkFakes.h"
#include "core/EditorHarness.h"
#include "framework/AudioMeter.h"
#include "framework/NRegionAudioMeter.h"
#include "framework/TextEditField.h"
#include "framework/TextFrame.h"

namespace vorix {
namespace {

using test::EditorTest;
using test::HeadlessEditor;
using test::Log;
using test::RecordingSubscriber;

constexpr RGBColor kLow{0, 200, 0};
constexpr RGBColor kWarn{220, 220, 0};
constexpr RGBColor kClip{250, 0, 0};
constexpr RGBColor kBack{20, 20, 40};
const std::map<Pixel, char> kMeterLegend{
    {PixelOf(kLow), 'l'}, {PixelOf(kWarn), 'w'}, {PixelOf(kClip), 'c'}, {PixelOf(kBack), '.'}};

class Meters : public EditorTest {
  protected:
    // A vertical meter of 100 pixels with a linear scale from -100 dB, at (100, 100).
    AudioMeter& Open(bool vertical = true) {
        OpenEditor([&](HeadlessEditor&, Frame& root) {
            meter = new AudioMeter(
                root, vertical ? Rect{100, 100, 110, 200} : Rect{100, 100, 200, 110}, 1, -100.0f);
            meter->SetTaper(0.0f);
            meter->SetColors(kBack, kLow, kWarn, kClip);
        });
        return *meter;
    }
    // Paints at `now` and counts the colours down the meter's middle column (or along its row).
    std::map<char, int> PaintAt(Ticks now) {
        ticks = now;
        meter->Refresh(nullptr, true);
        editor->Idle();
        const Rect& w = meter->GetWindowRect();
        const Rect line = meter->IsVerticalMeter() ? Rect{w.left + 5, w.top, w.left + 6, w.bottom}
                                                   : Rect{w.left, w.top + 5, w.right, w.top + 6};
        std::map<char, int> counts;
        for (char c : Shot(line, kMeterLegend))
            if (c != '\n') ++counts[c];
        return counts;
    }
    // The meter's middle column as text, top first.
    std::string Column() {
        std::string column;
        const Rect& w = meter->GetWindowRect();
        for (char c : Shot({w.left + 5, w.top, w.left + 6, w.bottom}, kMeterLegend))
            if (c != '\n') column += c;
        return column;
    }

    AudioMeter* meter = nullptr;
};

TEST_F(Meters, ABarDropsAtItsFallRateAndThePeakHoldsThenFallsToTheLevel) {
    Open();
    meter->SetLevel(0.0f);
    PaintAt(0);
    // Clip, warning and low ranges from the top, the peak line in the clip colour on top.
    EXPECT_EQ(Column(), std::string(7, 'c') + std::string(9, 'w') + std::string(84, 'l'));
    meter->SetLevel(-60.0f);
    std::map<char, int> seen = PaintAt(30);
    EXPECT_NEAR(meter->GetDisplayLevel(), -24.0f, 1e-4f) << "48 dB a second for half a second";
    EXPECT_EQ(meter->GetPeakLevel(), 0.0f);
    // A sixtieth as a float leaves the bar a hair below -24 dB: 75 of the 76 pixels.
    EXPECT_EQ(seen['l'], 75);
    EXPECT_EQ(seen['c'], 1) << "the peak line at the top";
    EXPECT_EQ(Column()[0], 'c');

    for (Ticks t = 40; t <= 170; t += 10)
        PaintAt(t);
    EXPECT_EQ(meter->GetDisplayLevel(), -60.0f) << "the bar stops at the level";
    EXPECT_EQ(meter->GetPeakLevel(), 0.0f) << "held for 180 ticks";
    PaintAt(180);
    // Released, the peak falls from the last paint on: 10 ticks' worth at once.
    EXPECT_NEAR(meter->GetPeakLevel(), -3.0f, 1e-4f);
    for (Ticks t = 190; t <= 240; t += 10)
        PaintAt(t);
    EXPECT_NEAR(meter->GetPeakLevel(), -21.0f, 1e-3f) << "18 dB a second";
    for (Ticks t = 250; t <= 600; t += 10)
        PaintAt(t);
    EXPECT_EQ(meter->GetPeakLevel(), -60.0f) << "never below the level";
}

TEST_F(Meters, MissedPaintsAreMadeGoodByTheElapsedTicks) {
    Open();
    meter->SetLevel(0.0f);
    PaintAt(0);
    meter->SetLevel(-90.0f);
    PaintAt(45);
    EXPECT_NEAR(meter->GetDisplayLevel(), -36.0f, 1e-4f);
    PaintAt(60);
    EXPECT_NEAR(meter->GetDisplayLevel(), -48.0f, 1e-4f);
    meter->SetLevel(-10.0f);
    PaintAt(61);
    EXPECT_EQ(meter->GetDisplayLevel(), -10.0f) << "the attack is at once";
}

TEST_F(Meters, TheBarHasOneSegmentPerRangeItReaches) {
    Open();
    meter->SetLevel(-20.0f);
    std::map<char, int> seen = PaintAt(0);
    EXPECT_EQ(seen['l'], 80);
    EXPECT_EQ(seen.count('w') + seen.count('c'), 0u);

    meter->SetLevel(-14.0f);  // just above the warning level
    seen = PaintAt(1);
    EXPECT_EQ(seen['l'], 84);
    EXPECT_EQ(seen['w'], 2);
    EXPECT_EQ(seen.count('c'), 0u);

    meter->SetLevel(-6.0f);  // at the clip level
    seen = PaintAt(2);
    EXPECT_EQ(seen['l'], 84);
    EXPECT_EQ(seen['w'], 9);
    EXPECT_EQ(seen['c'], 1);
    EXPECT_EQ(seen['.'], 6);
}

TEST_F(Meters, APeakOnlyMeterDrawsNoBarAtAnyLevel) {
    Open();
    meter->SetPeakOnly(true);
    for (float level : {-80.0f, -10.0f, 0.0f}) {
        meter->SetLevel(level);
        std::map<char, int> seen = PaintAt(static_cast<Ticks>(100 + level));
        EXPECT_EQ(seen['.'], 99) << level;
    }
}

TEST_F(Meters, InputsAreHeldBetweenTheFloorAnd60dB) {
    Open();
    meter->SetLevel(-500.0f);
    EXPECT_EQ(meter->GetLevel(), -100.0f);
    meter->SetLevel(std::numeric_limits<float>::quiet_NaN());
    EXPECT_EQ(meter->GetLevel(), -100.0f);
    meter->SetLevel(1e9f);
    EXPECT_EQ(meter->GetLevel(), 60.0f);
    meter->SetLevelOffset(10.0f);
    meter->SetLevel(-5.0f);
    EXPECT_EQ(meter->GetLevel(), -15.0f);
}

TEST_F(Meters, ThresholdsThatAreNotBelowZeroAreLeftAlone) {
    Open();
    meter->SetThresholds(0.5f, -20.0f);
    float clip = 0.0f;
    float warn = 0.0f;
    meter->GetThresholds(clip, warn);
    EXPECT_EQ(clip, -6.0f);
    EXPECT_EQ(warn, -20.0f);
    meter->SetThresholds(-3.0f, 0.0f);
    meter->GetThresholds(clip, warn);
    EXPECT_EQ(clip, -3.0f);
    EXPECT_EQ(warn, -20.0f);
    meter->SetPeakHoldSeconds(1.5f);
    EXPECT_NEAR(meter->GetPeakHoldSeconds(), 1.5f, 1e-6f);
}

TEST_F(Meters, AReversedBarGrowsFromTheOtherEndAndAHorizontalOneRightward) {
    Open();
    meter->SetReversed(true);
    meter->SetShowPeak(false);
    meter->SetLevel(-50.0f);
    PaintAt(0);
    EXPECT_EQ(Column(), std::string(50, 'l') + std::string(50, '.'));
    editor.reset();

    Open(false);
    meter->SetShowPeak(false);
    meter->SetLevel(-75.0f);
    const Rect& w = meter->GetWindowRect();
    PaintAt(0);
    EXPECT_EQ(Shot({w.left, w.top + 5, w.left + 30, w.top + 6}, kMeterLegend),
              std::string(25, 'l') + std::string(5, '.') + "\n");
}

TEST_F(Meters, AMeterOfManyRegionsRunsThroughThemAndColoursItsPeakByRegion) {
    constexpr RGBColor kMid{0, 0, 250};
    NRegionAudioMeter* regions = nullptr;
    OpenEditor([&](HeadlessEditor&, Frame& root) {
        regions = new NRegionAudioMeter(root, {100, 100, 110, 160}, 1,
                                        {{-60.0f, kLow, 0, 0},
                                         {-20.0f, kMid, 0, 0},
                                         {-10.0f, kWarn, 0, 0},
                                         {-6.0f, kClip, 0, 0}});
        regions->SetTaper(0.0f);
        regions->SetBackground(kBack, nullptr, {});
    });
    auto column = [&] {
        std::string c;
        for (char p : Shot({105, 100, 106, 160}, {{PixelOf(kLow), 'l'},
                                                  {PixelOf(kMid), 'm'},
                                                  {PixelOf(kWarn), 'w'},
                                                  {PixelOf(kClip), 'c'},
                                                  {PixelOf(kBack), '.'}}))
            if (p != '\n') c += p;
        return c;
    };
    regions->SetLevel(-3.0f);
    BeatAt(1);
    // Each region ends on the pixel before the next one's threshold: 39, 10 and 4 pixels, then
    // the clip region up to the bar's 57.
    EXPECT_EQ(column(), std::string(3, '.') + std::string(4, 'c') + std::string(4, 'w') +
                            std::string(10, 'm') + std::string(39, 'l'));
    regions->SetLevel(-15.0f);
    BeatAt(31);
    EXPECT_NEAR(regions->GetDisplayLevel(), -15.0f, 1e-4f);
    EXPECT_EQ(column().substr(3, 1), "c") << "the peak holds, in the colour of its region";
    EXPECT_EQ(regions->LevelToPixels(-61.0f), -1);
    // The levels arrive at every beat, as the engine's meters give them.
    for (Ticks t = 40; t < 800; t += 20) {
        regions->SetLevel(-100.0f);
        BeatAt(t);
    }
    EXPECT_EQ(column(), std::string(60, '.')) << "below the first region nothing shows";
}

// ---- Text frames ----

// A text frame that takes only digits.
class DigitsFrame : public TextFrame {
  public:
    using TextFrame::TextFrame;
    bool IsTextValid(const std::string& text) override {
        return !text.empty() &&
               std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
    }
};

class TextFrames : public EditorTest {
  protected:
    TextFrame& Open(std::int32_t trigger) {
        OpenEditor([&](HeadlessEditor&, Frame& root) {
            text = new DigitsFrame(root, {100, 100, 160, 114}, 5, "42");
            text->SetEditTrigger(trigger);
            other = new test::PaintedFrame(root, {300, 300, 320, 320}, kWarn, "other", nullptr);
        });
        listener = std::make_unique<RecordingSubscriber>(Core(), "edit", &log);
        listener->Listen(text->GetTextClass(), 1);
        listener->action = [this](MsgId id) {
            if (id == TextFrame::kMsgEditDone) {
                const auto* result = ParamPointer<TextFrame::TextEditResult>(listener->lastParam2);
                log.push_back("text " + *result->text);
            }
        };
        return *text;
    }
    void TearDown() override {
        listener.reset();
        EditorTest::TearDown();
    }

    DigitsFrame* text = nullptr;
    test::PaintedFrame* other = nullptr;
    std::unique_ptr<RecordingSubscriber> listener;
    Log log;
};

TEST_F(TextFrames, AClickOpensTheFieldOverTheFrameAndReturnTellsTheOwner) {
    Open(TextFrame::kEditOnClick);
    editor->Click(120, 105);
    ASSERT_NE(editor->GetEditField(), nullptr);
    EXPECT_EQ(editor->GetEditField()->GetWindowRect(), (Rect{99, 98, 160, 118}));
    EXPECT_EQ(editor->GetEditField()->GetText(), "42");
    EXPECT_EQ(log, Log{"edit:1:0"});
    editor->KeyDown(PluginUIRoot::kKeyBackspace);
    editor->KeyDown('7');
    editor->KeyDown(PluginUIRoot::kKeyReturn);
    EXPECT_EQ(log, (Log{"edit:1:0", "edit:1:1", "text 47"}));
    EXPECT_EQ(editor->GetEditField(), nullptr);
    EXPECT_EQ(text->GetText(), "42") << "the owner decides what the frame shows";
}

TEST_F(TextFrames, ATextTheFrameRefusesStaysInTheField) {
    Open(TextFrame::kEditOnClick);
    editor->Click(120, 105);
    editor->TypeText("x");
    editor->KeyDown(PluginUIRoot::kKeyReturn);
    ASSERT_NE(editor->GetEditField(), nullptr);
    EXPECT_EQ(log, Log{"edit:1:0"});
    editor->KeyDown(PluginUIRoot::kKeyBackspace);
    editor->KeyDown(PluginUIRoot::kKeyReturn);
    EXPECT_EQ(log, (Log{"edit:1:0", "edit:1:1", "text 42"}));
}

TEST_F(TextFrames, EscapeOrAPressElsewhereCancelsAndThePressGoesOn) {
    Open(TextFrame::kEditOnClick);
    editor->Click(120, 105);
    editor->KeyDown(PluginUIRoot::kKeyEscape);
    EXPECT_EQ(log, (Log{"edit:1:0", "edit:1:2"}));
    EXPECT_EQ(editor->GetEditField(), nullptr);

    log.clear();
    editor->Click(120, 105);
    editor->Click(120, 116);  // inside the field, below the frame: the field keeps it
    ASSERT_NE(editor->GetEditField(), nullptr);
    editor->Click(310, 310);
    EXPECT_EQ(log, (Log{"edit:1:0", "edit:1:2"}));
    EXPECT_EQ(editor->GetEditField(), nullptr);
    EXPECT_EQ(other->events.back().kind, Frame::kMouseDown);
}

TEST_F(TextFrames, ADoubleClickTriggerIgnoresASingleClickAndShiftOpensNothing) {
    Open(TextFrame::kEditOnDoubleClick);
    ticks = 100;
    editor->Click(120, 105);
    EXPECT_EQ(editor->GetEditField(), nullptr);
    ticks = 130;
    editor->Click(121, 104);
    EXPECT_EQ(editor->GetEditField(), nullptr) << "too late for a double click";
    ticks = 144;
    editor->Keys(false, true);
    editor->Click(120, 105);
    EXPECT_EQ(editor->GetEditField(), nullptr) << "with Shift";
    editor->Keys(false, false);
    ticks = 150;
    editor->Click(120, 105);
    ASSERT_NE(editor->GetEditField(), nullptr);
}

TEST_F(TextFrames, AFrameThatDiesWhileItsFieldIsOpenIsToldNothing) {
    Open(TextFrame::kEditOnClick);
    editor->Click(120, 105);
    listener.reset();
    delete text;
    editor->TypeText("9");
    editor->KeyDown(PluginUIRoot::kKeyReturn);
    EXPECT_EQ(editor->GetEditField(), nullptr) << "the field closes, reporting to nobody";
}

TEST_F(TextFrames, TheFieldHoldsAtMost64BytesAndNeverHalfACharacter) {
    Open(TextFrame::kEditOnClick);
    editor->Click(120, 105);
    editor->TypeText(std::string(61, '1'));
    editor->TypeText("\xC3\xA9\xC3\xA9");  // two two-byte characters: only one fits
    EXPECT_EQ(editor->GetEditField()->GetText(), "42" + std::string(61, '1'));
    editor->KeyDown(PluginUIRoot::kKeyBackspace);
    editor->TypeText("\xC3\xA9");
    EXPECT_EQ(editor->GetEditField()->GetText().size(), 64u);
    editor->KeyDown(PluginUIRoot::kKeyBackspace);
    EXPECT_EQ(editor->GetEditField()->GetText(), "42" + std::string(60, '1'));
}

TEST_F(TextFrames, TextIsPlacedByItsAlignmentOnItsBaseline) {
    TextFrame* left = nullptr;
    TextFrame* right = nullptr;
    TextFrame* centred = nullptr;
    OpenEditor([&](HeadlessEditor&, Frame& root) {
        left = new TextFrame(root, {0, 0, 80, 14}, 1, "Ill");
        right = new TextFrame(root, {0, 20, 80, 34}, 2, "Ill");
        centred = new TextFrame(root, {0, 40, 80, 54}, 3, "Ill");
        for (TextFrame* t : {left, right, centred})
            t->SetFont(1, kWhite);
        left->SetAlignment(TextFrame::kLeft, 4);
        right->SetAlignment(TextFrame::kRight, 4);
    });
    BeatAt(1);
    const SoftwareWindowContext& w = editor->Window();
    auto inkOf = [&](std::int32_t top) {
        Rect box{1000, 1000, -1, -1};
        for (std::int32_t y = top; y < top + 14; ++y) {
            for (std::int32_t x = 0; x < 80; ++x) {
                if (w.GetPixel(x, y) == 0) continue;
                box = {std::min(box.left, x), std::min(box.top, y), std::max(box.right, x + 1),
                       std::max(box.bottom, y + 1)};
            }
        }
        return box;
    };
    const Rect l = inkOf(0);
    const Rect r = inkOf(20);
    const Rect c = inkOf(40);
    EXPECT_GE(l.left, 4);
    EXPECT_LE(l.left, 6);
    EXPECT_LE(r.right, 76);
    EXPECT_GE(r.right, 73);
    EXPECT_NEAR((c.left + c.right) / 2.0, 40.0, 2.0);
    EXPECT_EQ(l.bottom, 12) << "letters end on the row above the baseline, 2 above the bottom";
}

}  // namespace
}  // namespace vorix
