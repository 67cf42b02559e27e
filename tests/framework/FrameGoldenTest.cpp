// Two small editors painted by their frames, compared byte for byte with PNG files kept in
// tests/framework/golden: a panel of pixmap controls, a meter and text with a highlighted
// control; and an error message over a text field that is being edited. The exact-pixel tests
// beside them pin each rule; these catch whatever else moves.
//
// After an intended change of the pixels, re-bless with
//   VORIX_BLESS=1 ./build/release/tests/framework/vorix_frames_tests --gtest_filter='FrameGolden*'
// and look at every image before committing it.
#include <gtest/gtest.h>

#include <string>

#include "core/EditorHarness.h"
#include "framework/AudioMeter.h"
#include "framework/PixMapButton.h"
#include "framework/PixMapDrawFrame.h"
#include "framework/PixMapSlider.h"
#include "framework/TextFrame.h"
#include "framework/TextPixMapButton.h"
#include "platform/PngImage.h"
#include "support/GoldenImage.h"

namespace vorix {
namespace {

using test::EditorTest;
using test::HeadlessEditor;

constexpr RGBColor kPanel{58, 62, 84};
constexpr RGBColor kPanelEdge{96, 100, 128};
constexpr RGBColor kPanelCorner{140, 146, 180};
constexpr RGBColor kButtonOff{70, 74, 98};
constexpr RGBColor kButtonOn{250, 190, 60};
constexpr RGBColor kTrack{30, 32, 44};
constexpr RGBColor kThumb{215, 220, 235};
constexpr RGBColor kLabel{195, 199, 219};

void Fill(DrawContext& c, const RGBColor& color, const Rect& rect) {
    c.SetForeColor(color);
    c.FillRect(rect);
}

// The artwork of the panel, drawn here as the product's artwork will be cut: a 12-pixel panel
// tile with corners of 4, button images of 16 by 12 (off, off pressed, on, on pressed), a slider
// track of 80 by 12 with a round thumb of 10 by 12 and its mask, and a label background.
void PaintArtwork(DrawContext& art) {
    art.BeginDraw();
    Fill(art, kWhite, {0, 0, 200, 60});
    // Panel tile at (0, 0).
    Fill(art, kPanelEdge, {0, 0, 12, 12});
    Fill(art, kPanel, {1, 1, 11, 11});
    for (Point p : {Point{0, 0}, Point{10, 0}, Point{0, 10}, Point{10, 10}})
        Fill(art, kPanelCorner, {p.x, p.y, p.x + 2, p.y + 2});
    // Buttons at (20, 0), each 16 wide.
    const RGBColor faces[4] = {kButtonOff, kPanelEdge, kButtonOn, kPanelCorner};
    for (std::int32_t i = 0; i < 4; ++i) {
        const Rect r{20 + 16 * i, 0, 36 + 16 * i, 12};
        Fill(art, kTrack, r);
        art.SetForeColor(faces[i]);
        art.FillOval({r.left + 1, r.top + 1, r.right - 1, r.bottom - 1});
    }
    // Slider track at (0, 20), thumb at (90, 20), its mask at (110, 20).
    Fill(art, kPanel, {0, 20, 80, 32});
    Fill(art, kTrack, {4, 25, 76, 27});
    Fill(art, kThumb, {90, 20, 100, 32});
    Fill(art, kWhite, {110, 20, 120, 32});
    art.SetForeColor(kThumb);
    art.FillOval({90, 20, 100, 32});
    art.SetForeColor(kBlack);
    art.FillOval({110, 20, 120, 32});
    // Label background at (0, 40).
    Fill(art, kTrack, {0, 40, 60, 54});
    art.EndDraw();
}

// The window's `area` against its golden file.
void ExpectGolden(const SoftwareContext& window, const Rect& area, const std::string& name) {
    PixelImage image(area.Width(), area.Height());
    for (std::int32_t y = 0; y < area.Height(); ++y)
        for (std::int32_t x = 0; x < area.Width(); ++x)
            image.Row(y)[x] = window.GetPixel(area.left + x, area.top + y);
    test::ExpectGolden(image, VORIX_GOLDEN_DIR, name);
}

class FrameGolden : public EditorTest {
  protected:
    void SetUp() override {
        EditorTest::SetUp();
        PaintArtwork(art);
    }
    OGWorld art{Rect{0, 0, 200, 60}};
};

TEST_F(FrameGolden, APanelOfControlsAMeterAndText) {
    PixMapSlider* slider = nullptr;
    AudioMeter* meter = nullptr;
    OpenEditor([&](HeadlessEditor& e, Frame& root) {
        auto* panel =
            new ScalablePmDrawFrame(root, {10, 10, 190, 110}, 0, 1, &art, {0, 0}, {12, 12}, 4);
        const ButtonArt buttons{&art, {20, 0}, {16, 0}};
        auto* on = new MultiStateButton(*panel, {10, 10, 26, 22}, 2, buttons, 0, 1, 1);
        new MultiStateButton(*panel, {30, 10, 46, 22}, 3, buttons, 0, 1, 0);
        SliderArt thumb;
        thumb.pixmap = &art;
        thumb.background = {0, 20};
        thumb.thumb = {90, 20};
        thumb.thumbSize = {10, 12};
        thumb.mask = {110, 20};
        slider = new PixMapSlider(*panel, {10, 30, 90, 42}, 4, thumb, 0, 100, 65);
        meter = new AudioMeter(*panel, {160, 10, 168, 90}, 5, -100.0f);
        meter->SetTickMarks({-6.0f, -15.0f, -40.0f}, kLabel);
        auto* label = new TextFrame(*panel, {10, 50, 90, 64}, 6, "Output gain");
        label->SetFont(1, kLabel);
        label->SetAlignment(TextFrame::kLeft, 0);
        auto* value = new StaticTextPMFrame(*panel, {10, 66, 70, 80}, 7, "-3.5 dB", &art, {0, 40});
        value->SetFont(0, kWhite);
        value->SetAlignment(TextFrame::kRight, 3);
        auto* go = new TextPixMapButton(*panel, {100, 66, 150, 80}, 8, {&art, {0, 40}, {0, 0}},
                                        "Apply", 3);
        go->SetTextColors(kButtonOn, kWhite);
        e.BindParameterFrame(test::kGainId, slider, 0);
        e.BindParameterFrame(test::kGainId, on, 8);
    });
    meter->SetLevel(-10.0f);
    BeatAt(1);
    meter->SetLevel(-30.0f);
    editor->SetParameterHighlight(1, true, 3);
    BeatAt(21);
    ExpectGolden(editor->Window(), {0, 0, 200, 120}, "controls_panel");
}

TEST_F(FrameGolden, AnErrorOverATextFieldBeingEdited) {
    PixelImage icon(24, 24, PixelOf(kWhite));
    for (std::int32_t y = 2; y < 22; ++y)
        for (std::int32_t x = 12 - (y - 2) / 2; x <= 12 + (y - 2) / 2; ++x)
            icon.Row(y)[x] = MakePixel(240, 180, 0);
    resources.AddImage(8001, std::move(icon));
    OpenEditor([&](HeadlessEditor&, Frame& root) {
        auto* panel =
            new ScalablePmDrawFrame(root, {140, 150, 445, 300}, 0, 1, &art, {0, 0}, {12, 12}, 4);
        auto* name = new TextFrame(*panel, {20, 3, 120, 17}, 2, "Bright vocal");
        name->SetFont(1, kWhite);
        name->SetEditTrigger(TextFrame::kEditOnClick);
    });
    editor->Click(200, 160);
    ASSERT_NE(editor->GetEditField(), nullptr);
    editor->TypeText(" take 2");
    editor->ShowError("Unable to load settings.", "The file does not hold Vorix settings.", "", 2);
    BeatAt(1);
    ExpectGolden(editor->Window(), {140, 150, 445, 300}, "error_over_edit");
}

}  // namespace
}  // namespace vorix
