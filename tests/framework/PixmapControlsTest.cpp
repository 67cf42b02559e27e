// The pixmap controls under a user's mouse: presses, drags and releases at pixels of a headless
// editor, then the values the controls announce and the images they show. The artwork is a strip
// of small one-colour images made here, so that the image a button shows reads as one letter.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <vector>

#include "FrameworkFakes.h"
#include "core/EditorHarness.h"
#include "framework/CentralController.h"
#include "framework/IncDecControlGroup.h"
#include "framework/PixMapButton.h"
#include "framework/PixMapSlider.h"
#include "framework/RadioControlGroup.h"
#include "framework/Taper.h"
#include "framework/TextPixMapButton.h"

namespace vorix {
namespace {

using test::EditorTest;
using test::HeadlessEditor;
using test::Log;
using test::RecordingSubscriber;

// Images of 10 by 10 side by side, one colour each, named 'a' to 'h'; below them a grey band
// ('g') for the sliders' backgrounds.
constexpr std::int32_t kImage = 10;
constexpr std::array<RGBColor, 8> kImageColors{
    RGBColor{200, 0, 0},   RGBColor{0, 200, 0},   RGBColor{0, 0, 200},  RGBColor{200, 200, 0},
    RGBColor{200, 0, 200}, RGBColor{0, 200, 200}, RGBColor{90, 90, 90}, RGBColor{250, 150, 50}};

std::map<Pixel, char> ImageLegend() {
    std::map<Pixel, char> legend;
    for (std::size_t i = 0; i < kImageColors.size(); ++i)
        legend[PixelOf(kImageColors[i])] = static_cast<char>('a' + i);
    return legend;
}

// A slider's art without a disabled thumb or a mask.
SliderArt SliderOf(const DrawContext* pixmap, Point background, Point thumb, Point size) {
    SliderArt art;
    art.pixmap = pixmap;
    art.background = background;
    art.thumb = thumb;
    art.thumbSize = size;
    return art;
}

class PixmapControls : public EditorTest {
  protected:
    void SetUp() override {
        EditorTest::SetUp();
        strip.BeginDraw();
        for (std::int32_t i = 0; i < 8; ++i) {
            strip.SetForeColor(kImageColors[static_cast<std::size_t>(i)]);
            strip.FillRect({i * kImage, 0, (i + 1) * kImage, kImage});
        }
        strip.SetForeColor(kImageColors[6]);
        strip.FillRect({0, kImage, 8 * kImage, 2 * kImage});
        strip.EndDraw();
    }

    // The letter of the image a control shows, read at its centre.
    char Shown(const Frame& control) {
        const Rect& w = control.GetWindowRect();
        // The idle call paints what is queued, whether or not the mouse is held.
        editor->Idle();
        const Point c{(w.left + w.right) / 2, (w.top + w.bottom) / 2};
        return Shot({c.x, c.y, c.x + 1, c.y + 1}, ImageLegend())[0];
    }

    ButtonArt Art() { return {&strip, {0, 0}, {kImage, 0}}; }

    OGWorld strip{Rect{0, 0, 8 * kImage, 2 * kImage}};
    Log log;
};

// ---- The mouse protocol ----

TEST_F(PixmapControls, AModifierThatIsNotAllowedIgnoresThePressButTheFrameStillTells) {
    BooleanButton* button = nullptr;
    OpenEditor([&](HeadlessEditor&, Frame& root) {
        button = new BooleanButton(root, {100, 100, 110, 110}, 7, Art());
    });
    RecordingSubscriber control(core.get(), "value", &log, button);
    RecordingSubscriber frame(core.get(), "frame", &log);
    frame.Listen(button->Frame::GetMsgClass(), 1);

    for (auto [ctrl, shift, right] :
         {std::array{true, false, false}, std::array{false, true, false},
          std::array{true, true, false}, std::array{false, false, true}}) {
        editor->Keys(ctrl, shift, right);
        editor->Click(105, 105);
    }
    EXPECT_EQ(button->GetValue(), 0);
    EXPECT_EQ(editor->GetCaptureFrame(), nullptr);
    EXPECT_EQ(log, (Log{"frame:1:2", "frame:1:0", "frame:1:0", "frame:1:0", "frame:1:0"}))
        << "the raw press goes out, no control message";

    log.clear();
    button->SetAllowedModifiers(false, true, false, false);
    editor->Keys(true, false);
    editor->Click(105, 105);
    EXPECT_EQ(button->GetValue(), 1) << "an allowed Control press acts";
    editor->Keys(true, true);
    editor->Click(105, 105);
    EXPECT_EQ(button->GetValue(), 1) << "Control with Shift is a state of its own";
}

TEST_F(PixmapControls, AShiftClickWithResetOnShiftGoesToTheDefaultWithoutAPress) {
    PixMapSlider* slider = nullptr;
    OpenEditor([&](HeadlessEditor&, Frame& root) {
        slider = new PixMapSlider(root, {100, 100, 140, 110}, 3,
                                  SliderOf(&strip, {0, 0}, {10, 0}, {6, 10}), 0, 100, 40);
    });
    slider->SetValue(90);
    slider->SetResetOnShift(true);
    RecordingSubscriber control(core.get(), "v", &log, slider);
    editor->Keys(false, true);
    editor->Press(120, 105);
    EXPECT_EQ(slider->GetValue(), 40);
    EXPECT_EQ(log, Log{"v=40"}) << "no kControlPressed, and the mouse is not taken";
    EXPECT_EQ(editor->GetCaptureFrame(), nullptr);
    editor->Release(120, 105);
    EXPECT_EQ(slider->GetValue(), 40);
}

TEST_F(PixmapControls, APressThatASubscriberDisablesIsDropped) {
    BooleanButton* button = nullptr;
    OpenEditor([&](HeadlessEditor&, Frame& root) {
        button = new BooleanButton(root, {100, 100, 110, 110}, 7, Art());
    });
    RecordingSubscriber control(core.get(), "v", &log, button);
    control.action = [&](MsgId id) {
        if (id == kControlPressed) button->SetEnabled(false);
    };
    editor->Click(105, 105);
    EXPECT_EQ(log, Log{"v:0:" + std::to_string(kControlPressed)});
    EXPECT_FALSE(button->IsPressed());
    EXPECT_EQ(editor->GetCaptureFrame(), nullptr);
}

// ---- Buttons ----

TEST_F(PixmapControls, ABooleanButtonTogglesAtAReleaseInsideAndShowsItsPressedImage) {
    BooleanButton* button = nullptr;
    OpenEditor([&](HeadlessEditor&, Frame& root) {
        button = new BooleanButton(root, {100, 100, 110, 110}, 7, Art());
    });
    RecordingSubscriber control(core.get(), "v", &log, button);
    EXPECT_EQ(Shown(*button), 'a');
    editor->Press(105, 105);
    EXPECT_EQ(Shown(*button), 'b') << "pressed, it shows the state it would take";
    editor->Drag(150, 105);
    EXPECT_EQ(Shown(*button), 'a') << "dragged out, it shows its own state";
    editor->Release(150, 105);
    EXPECT_EQ(button->GetValue(), 0) << "a release outside cancels";

    editor->Press(105, 105);
    editor->Drag(150, 105);
    editor->Drag(104, 103);
    EXPECT_EQ(Shown(*button), 'b');
    editor->Release(104, 103);
    EXPECT_EQ(button->GetValue(), 1);
    EXPECT_EQ(Shown(*button), 'b');
    EXPECT_EQ(std::count(log.begin(), log.end(), "v=1"), 1) << "announced once";
}

TEST_F(PixmapControls, AnActionButtonAnnouncesOneAtTheReleaseAndIsQuietlyZeroAgain) {
    ActionButton* button = nullptr;
    OpenEditor([&](HeadlessEditor&, Frame& root) {
        button = new ActionButton(root, {100, 100, 110, 110}, 7, Art());
    });
    RecordingSubscriber control(core.get(), "v", &log, button);
    control.action = [&](MsgId id) {
        if (id == kControlValueChanged) log.push_back("now " + std::to_string(button->GetValue()));
    };
    editor->Press(105, 105);
    EXPECT_EQ(Shown(*button), 'b');
    editor->Release(105, 105);
    EXPECT_EQ(log, (Log{"v:0:" + std::to_string(kControlPressed), "v=1", "now 1",
                        "v:0:" + std::to_string(kControlReleased)}));
    EXPECT_EQ(button->GetValue(), 0);
    EXPECT_EQ(Shown(*button), 'a');
}

TEST_F(PixmapControls, AnInstantActionButtonActsAtThePressAndStaysDownUntilTheRelease) {
    InstantActionButton* button = nullptr;
    OpenEditor([&](HeadlessEditor&, Frame& root) {
        button = new InstantActionButton(root, {100, 100, 110, 110}, 7, Art());
    });
    RecordingSubscriber control(core.get(), "v", &log, button);
    editor->Press(105, 105);
    EXPECT_EQ(log, (Log{"v:0:" + std::to_string(kControlPressed), "v=1"}));
    editor->Drag(200, 200);
    EXPECT_TRUE(button->IsPressed()) << "the action happened: it stays down outside";
    EXPECT_EQ(Shown(*button), 'b');
    log.clear();
    editor->Release(200, 200);
    EXPECT_EQ(log, (Log{"v=0", "v:0:" + std::to_string(kControlReleased)}));
    EXPECT_FALSE(button->IsPressed());
}

TEST_F(PixmapControls, AMultiStateButtonRunsRoundItsStatesWithAnUpAndADownImageEach) {
    MultiStateButton* button = nullptr;
    OpenEditor([&](HeadlessEditor&, Frame& root) {
        button = new MultiStateButton(root, {100, 100, 110, 110}, 7, Art(), 0, 3, 0);
    });
    std::string values;
    std::string images;
    for (int click = 0; click < 5; ++click) {
        editor->Press(105, 105);
        images += Shown(*button);
        editor->Release(105, 105);
        images += Shown(*button);
        values += std::to_string(button->GetValue());
    }
    EXPECT_EQ(values, "12301");
    // Up image of state s is 2s, its down image 2s + 1.
    EXPECT_EQ(images, "bcdefghabc");
}

TEST_F(PixmapControls, ADisabledButtonShowsItsDisabledImageAndARangeOfOneDisablesIt) {
    PixMapButton* button = nullptr;
    OpenEditor([&](HeadlessEditor&, Frame& root) {
        button = new PixMapButton(root, {100, 100, 110, 110}, 7, Art(), 0, 1, 0);
    });
    button->SetDisabledImage({70, 0});
    button->SetRange(0, 0);
    EXPECT_FALSE(button->IsEnabled());
    EXPECT_EQ(Shown(*button), 'h');
    editor->Click(105, 105);
    EXPECT_EQ(button->GetValue(), 0);
    button->SetRange(0, 1);
    EXPECT_TRUE(button->IsEnabled());
    EXPECT_EQ(Shown(*button), 'a');
}

TEST_F(PixmapControls, AltImagesShowWhileAnAllowedModifierIsDown) {
    PixMapButton* button = nullptr;
    OpenEditor([&](HeadlessEditor&, Frame& root) {
        button = new PixMapButton(root, {100, 100, 110, 110}, 7, Art(), 0, 1, 0);
    });
    button->SetAllowedModifiers(false, false, false, true);
    button->SetAltImages({40, 0}, {10, 0});
    editor->Keys(false, true);
    editor->Hover(105, 105);
    editor->Hover(106, 105);
    EXPECT_EQ(Shown(*button), 'e');
    editor->Keys(false, false);
    editor->Hover(105, 106);
    EXPECT_EQ(Shown(*button), 'a');
}

TEST_F(PixmapControls, ATextButtonActsAtAReleaseInsideAndNeverStaysOn) {
    TextPixMapButton* button = nullptr;
    CentralController follower(Core());
    OpenEditor([&](HeadlessEditor&, Frame& root) {
        button = new TextPixMapButton(root, {100, 100, 140, 112}, 7, {&strip, {0, 0}, {0, 0}}, "Go",
                                      2, 0, &follower);
    });
    RecordingSubscriber control(core.get(), "v", &log, button);
    RecordingSubscriber followed(core.get(), "c", &log, &follower);
    editor->Click(120, 106);
    EXPECT_EQ(button->GetValue(), 0);
    EXPECT_EQ(log, (Log{"v:0:" + std::to_string(kControlPressed), "c=1", "v=1", "c=0",
                        "v:0:" + std::to_string(kControlReleased)}))
        << "the way back to 0 is unheard on the button's class, and heard by its controller";
    // White text centred over the image.
    const SoftwareWindowContext& w = editor->Window();
    std::int32_t inked = 0;
    for (std::int32_t x = 100; x < 140; ++x)
        for (std::int32_t y = 100; y < 112; ++y)
            inked += w.GetPixel(x, y) != PixelOf(kImageColors[0]) ? 1 : 0;
    EXPECT_GT(inked, 10);
}

// ---- Sliders ----

class Sliders : public PixmapControls {
  protected:
    // The background is the grey band, the thumb image 'c' of 6 by 10.
    SliderArt Thumb() { return SliderOf(&strip, {0, kImage}, {20, 0}, {6, 10}); }
};

TEST_F(Sliders, APressBesideTheThumbJumpsItsCentreToTheMouseAndOnItNothingMoves) {
    PixMapSlider* slider = nullptr;
    OpenEditor([&](HeadlessEditor&, Frame& root) {
        slider = new PixMapSlider(root, {100, 100, 140, 110}, 3, Thumb(), 0, 100, 0);
    });
    EXPECT_FALSE(slider->IsVertical());
    editor->Press(130, 105);
    EXPECT_EQ(slider->GetValue(), 79);  // the thumb's left at 27 of a 34-pixel run
    EXPECT_EQ(slider->ThumbRect(), (Rect{26, 0, 32, 10}));
    editor->Release(130, 105);
    BeatAt(1);
    EXPECT_EQ(Shot({125, 105, 134, 106}, ImageLegend()), "gccccccgg\n");

    editor->Press(128, 105);
    EXPECT_EQ(slider->GetValue(), 79) << "held by the thumb, it does not jump";
    EXPECT_EQ(slider->GetGrabOffset(), -1);
    editor->Drag(118, 105);
    EXPECT_EQ(slider->GetValue(), 47) << "and keeps its relation to the mouse: its left at 16";
    editor->Drag(300, 20);
    EXPECT_EQ(slider->GetValue(), 100) << "beyond the track, the end";
    editor->Drag(0, 105);
    EXPECT_EQ(slider->GetValue(), 0);
    editor->Release(0, 105);
    EXPECT_EQ(slider->GetGrabOffset(), 0);
}

TEST_F(Sliders, AVerticalSliderHasItsMaximumAtTheTop) {
    PixMapSlider* slider = nullptr;
    OpenEditor([&](HeadlessEditor&, Frame& root) {
        slider = new PixMapSlider(root, {100, 100, 110, 140}, 3,
                                  SliderOf(&strip, {0, 0}, {20, 0}, {10, 6}), -20, 20, 0);
    });
    EXPECT_TRUE(slider->IsVertical());
    editor->Press(105, 101);
    EXPECT_EQ(slider->GetValue(), 20);
    EXPECT_EQ(slider->ThumbRect(), (Rect{0, 0, 10, 6}));
    editor->Drag(105, 139);
    EXPECT_EQ(slider->GetValue(), -20);
    EXPECT_EQ(slider->ThumbRect(), (Rect{0, 34, 10, 40}));
    editor->Release(105, 139);
}

TEST_F(Sliders, WithATaperTheLowEndGetsMoreRoomAndTheThumbFollowsEveryValue) {
    PixMapSlider* slider = nullptr;
    OpenEditor([&](HeadlessEditor&, Frame& root) {
        slider = new PixMapSlider(root, {20, 100, 226, 110}, 3, Thumb(), 0, 100, 0);
    });
    slider->SetTaper(0.1f);
    // The thumb's centre half way along gives far less than half the range.
    editor->Press(123, 105);
    editor->Release(123, 105);
    EXPECT_LT(slider->GetValue(), 25);
    EXPECT_GT(slider->GetValue(), 0);
    // Wherever a value puts the thumb, the thumb's place gives the value back, less what the
    // whole pixels of the place lose where the taper is steep; and a greater value never puts
    // the thumb further left.
    std::int32_t lastLeft = -1;
    for (GenericControl::Value v = 0; v <= 100; ++v) {
        slider->SetValue(v);
        const Rect thumb = slider->ThumbRect();
        const auto back = slider->PixelToValue(thumb.left);
        ASSERT_LE(back, v) << "value " << v;
        ASSERT_GE(back, v - 3) << "value " << v;
        ASSERT_GE(thumb.left, lastLeft);
        lastLeft = thumb.left;
    }
}

TEST(Taper, ForwardAndInverseUndoEachOtherAndLeaveTheEnds) {
    for (double k : {0.01, 0.1, 1.0, 10.0}) {
        EXPECT_DOUBLE_EQ(ApplyTaper(k, false, 0.0), 0.0);
        EXPECT_DOUBLE_EQ(ApplyTaper(k, false, 1.0), 1.0);
        EXPECT_NEAR(ApplyTaper(k, true, 1.0), 1.0, 1e-12);
        for (int i = 0; i <= 1000; ++i) {
            const double f = i / 1000.0;
            ASSERT_NEAR(ApplyTaper(k, true, ApplyTaper(k, false, f)), f, 1e-9) << k << " " << f;
            ASSERT_LE(ApplyTaper(k, false, f), f + 1e-12) << "the low end gets the room";
        }
    }
    EXPECT_EQ(ApplyTaper(-1.0, false, 0.37), 0.37);
    EXPECT_EQ(ApplyTaper(0.0, true, 0.37), 0.37);
}

TEST_F(Sliders, ARangeLimitedSliderCountsUnitsFromTheRightEnd) {
    RangeLimitedSlider* slider = nullptr;
    OpenEditor([&](HeadlessEditor&, Frame& root) {
        slider = new RangeLimitedSlider(root, {100, 100, 150, 110}, 3, Thumb(), -20, 0, 0, 2.0f);
    });
    EXPECT_EQ(slider->ThumbRect(), (Rect{44, 0, 50, 10})) << "0 at the right end";
    editor->Press(120, 105);  // the thumb's right edge at 23: 27 pixels, 13 units from the end
    editor->Release(120, 105);
    EXPECT_EQ(slider->GetValue(), -13);
    editor->Press(101, 105);
    editor->Release(101, 105);
    EXPECT_EQ(slider->GetValue(), -20) << "clamped to the range";
}

// ---- Groups ----

TEST_F(PixmapControls, ARadioGroupSelectsTheClickedButtonAndKeepsTheSelectedOneOn) {
    std::array<BooleanButton*, 3> buttons{};
    auto* group = new RadioControlGroup(Core(), 0);
    OpenEditor([&](HeadlessEditor&, Frame& root) {
        for (std::int32_t i = 0; i < 3; ++i) {
            buttons[static_cast<std::size_t>(i)] =
                new BooleanButton(root, {100 + 20 * i, 100, 110 + 20 * i, 110}, 10 + i, Art());
        }
    });
    group->SetValue(2);
    for (std::int32_t i = 0; i < 3; ++i)
        group->AddButton(buttons[static_cast<std::size_t>(i)], i + 1);
    EXPECT_EQ(buttons[1]->GetValue(), 1) << "the selected id's button comes on as it joins";
    RecordingSubscriber heard(core.get(), "group", &log, group);

    editor->Click(145, 105);
    EXPECT_EQ(group->GetValue(), 3);
    EXPECT_EQ((std::string{Shown(*buttons[0]), Shown(*buttons[1]), Shown(*buttons[2])}), "aab");
    editor->Click(145, 105);
    EXPECT_EQ(buttons[2]->GetValue(), 1) << "a click on the selected button leaves it on";
    EXPECT_EQ(log, Log{"group=3"}) << "and tells nothing new";

    group->SetValue(1);
    EXPECT_EQ((std::string{Shown(*buttons[0]), Shown(*buttons[1]), Shown(*buttons[2])}), "baa");
    EXPECT_EQ(log, (Log{"group=3", "group=1"}));
    delete group;  // the buttons go with it
    EXPECT_TRUE(editor->GetRootFrame()->GetChildren().empty());
}

class IncDec : public PixmapControls {
  protected:
    void Open(bool wraps) {
        OpenEditor([&](HeadlessEditor& e, Frame& root) {
            up = new InstantActionButton(root, {100, 100, 110, 110}, 1, Art());
            down = new InstantActionButton(root, {100, 120, 110, 130}, 2, Art());
            target = std::make_unique<GenericControl>(e.GetCore(), 0, 9, 5, 3, nullptr);
            group = new IncDecControlGroup(e.GetCore(), up, down, target.get());
            group->SetWraps(wraps);
        });
    }
    void TearDown() override {
        editor.reset();
        target.reset();
        PixmapControls::TearDown();
    }

    InstantActionButton* up = nullptr;
    InstantActionButton* down = nullptr;
    std::unique_ptr<GenericControl> target;
    IncDecControlGroup* group = nullptr;
};

TEST_F(IncDec, AClickStepsOnceAndTheEndsStopOrWrap) {
    Open(false);
    editor->Click(105, 105);
    EXPECT_EQ(target->GetValue(), 6);
    for (int i = 0; i < 5; ++i)
        editor->Click(105, 105);
    EXPECT_EQ(target->GetValue(), 9) << "without wrapping the range ends the run";
    editor->Click(105, 125);
    EXPECT_EQ(target->GetValue(), 8);

    group->SetWraps(true);
    target->SetValue(9);
    editor->Click(105, 105);
    EXPECT_EQ(target->GetValue(), 0);
    editor->Click(105, 125);
    EXPECT_EQ(target->GetValue(), 9);
}

TEST_F(IncDec, AHeldButtonRepeatsAfter20TicksThenEvery6AndAfter120AtEveryBeat) {
    Open(true);
    target->SetRange(0, 1000);
    target->SetValue(0);
    ticks = 1000;
    editor->Press(105, 105);
    std::vector<Ticks> stepsAt;
    GenericControl::Value last = target->GetValue();
    EXPECT_EQ(last, 1) << "the press steps at once";
    for (Ticks t = 1001; t <= 1130; ++t) {
        BeatAt(t);
        if (target->GetValue() != last) stepsAt.push_back(t - 1000);
        last = target->GetValue();
    }
    std::vector<Ticks> expected;
    for (Ticks t = 20; t < 120; t += 6)
        expected.push_back(t);
    expected.push_back(122);  // the last slow step comes 6 after 116
    for (Ticks t = 123; t <= 130; ++t)
        expected.push_back(t);
    EXPECT_EQ(stepsAt, expected);
    editor->Release(105, 105);
    const auto stopped = target->GetValue();
    for (Ticks t = 1131; t < 1200; ++t)
        BeatAt(t);
    EXPECT_EQ(target->GetValue(), stopped) << "the release stops the run";
}

TEST_F(IncDec, TheGroupGoesWithItsLastButton) {
    Open(false);
    RecordingSubscriber watcher(core.get(), "group", &log);
    watcher.Listen(group->GetMsgClass(kContainerChangeRef), 9);
    delete up;
    EXPECT_TRUE(log.empty());
    delete down;
    EXPECT_EQ(log, Log{"group:9:gone"});
}

}  // namespace
}  // namespace vorix
