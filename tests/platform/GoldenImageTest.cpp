// Whole scenes drawn through the drawing contract alone, compared byte for byte with PNG files
// kept in tests/platform/golden. They catch any change of a pixel anywhere: of the rasteriser,
// the font's rendering, or the PNG writer. The exact-pixel tests beside them say what each rule
// is; these say that nothing else moved.
//
// After an intended change of the pixels, run the suite with VORIX_BLESS=1 in the environment:
// the files are rewritten from what is drawn now, and the change shows in the commit.
#include <gtest/gtest.h>

#include <string>

#include "framework/DrawContext.h"
#include "platform/OGWorld.h"
#include "platform/PngImage.h"
#include "platform/SoftwareWindowContext.h"
#include "support/GoldenImage.h"

namespace vorix {
namespace {

// The plot's colours, as the artwork gives them.
constexpr RGBColor kBackground{66, 70, 91};
constexpr RGBColor kGrid{80, 82, 103};
constexpr RGBColor kFill{107, 103, 139};
constexpr RGBColor kHover{255, 241, 0};
constexpr RGBColor kSelected{255, 255, 255};
constexpr RGBColor kLabels{195, 199, 219};
constexpr RGBColor kSolo{0, 255, 0};

constexpr std::int32_t kPlotWidth = 200;
constexpr std::int32_t kPlotHeight = 110;

void Line(DrawContext& c, Point from, Point to) {
    c.MoveTo(from);
    c.LineTo(to);
}

// A gentle bump, in whole numbers so that the scene is the same on every machine.
std::int32_t CurveY(std::int32_t x) {
    const std::int32_t d = x - 96;
    return 60 - (30 * 400) / (400 + d * d / 3);
}

// A round button and, beside it, its mask: black where the button is, white around it.
void PaintButtonArt(DrawContext& art) {
    art.SetForeColor(kWhite);
    art.FillRect({12, 0, 24, 10});
    art.SetForeColor(kBlack);
    art.FillOval({12, 0, 24, 10});
    art.SetForeColor({40, 120, 220});
    art.FillOval({0, 0, 12, 10});
    art.SetForeColor(kSelected);
    art.FrameOval({0, 0, 12, 10});
}

void PaintPlot(DrawContext& c, const DrawContext& buttonArt) {
    c.BeginDraw();
    c.SetForeColor(kBackground);
    c.FillRect({0, 0, kPlotWidth, kPlotHeight});
    c.SetForeColor(kGrid);
    for (std::int32_t x : {12, 30, 48, 66, 90, 120, 150, 180})
        Line(c, {x, 0}, {x, kPlotHeight});
    for (std::int32_t y : {15, 35, 55, 75, 95})
        Line(c, {0, y}, {kPlotWidth, y});

    // The combined curve over its fill, as the plot paints it: a column, then the black edge.
    for (std::int32_t x = 0; x < kPlotWidth; ++x) {
        c.SetForeColor(kFill);
        Line(c, {x, kPlotHeight}, {x, CurveY(x)});
        c.SetForeColor(kBlack);
        Line(c, {x == 0 ? 0 : x - 1, CurveY(x == 0 ? 0 : x - 1)}, {x, CurveY(x)});
    }
    // A selected filter's own curve, its first point a line to itself.
    c.SetForeColor(kSelected);
    c.MoveTo({0, 70});
    c.LineTo({0, 70});
    for (std::int32_t x = 1; x < kPlotWidth; ++x)
        c.LineTo({x, 70 - (x * x) / 1000});

    // Handles: crosses without a centre, with their labels.
    for (auto [x, y, color] : {std::tuple{96, CurveY(96), kHover}, std::tuple{150, 48, kSolo}}) {
        c.SetForeColor(color);
        Line(c, {x, y - 1}, {x, y - 2});
        Line(c, {x + 1, y}, {x + 2, y});
        Line(c, {x, y + 1}, {x, y + 2});
        Line(c, {x - 1, y}, {x - 2, y});
        c.SetFont(SoftwareContext::kSmallFont, color);
        c.MoveTo({x + 6, y + 8});
        c.DrawString(x == 96 ? "1" : "2A");
    }

    // Axis labels, readouts and the hover name.
    c.SetFont(SoftwareContext::kSmallFont, kLabels);
    const struct {
        std::int32_t x;
        const char* text;
    } labels[] = {{12, "20"}, {48, "100"}, {90, "1k"}, {150, "10k"}};
    for (const auto& label : labels) {
        c.SetForeColor(kBlack);
        Line(c, {label.x, kPlotHeight - 11}, {label.x, kPlotHeight - 10});
        c.SetFont(SoftwareContext::kSmallFont, kLabels);
        c.MoveTo({label.x + 1, kPlotHeight - 1});
        c.DrawString(label.text);
    }
    c.SetFont(SoftwareContext::kSmallFont, kHover);
    c.MoveTo({20, 11});
    c.DrawString("1000 Hz");
    c.MoveTo({70, 11});
    c.DrawString("-3.50 dB");
    c.SetFont(SoftwareContext::kNormalFont, kHover);
    const std::string name = "1 Parametric EQ";
    c.MoveTo({kPlotWidth - c.GetStringWidth(name) - 4, 26});
    c.DrawString(name);

    // A framed panel and a masked button over the curve, clipped to the plot's lower half.
    c.SetClip({0, 55, kPlotWidth, kPlotHeight});
    c.SetForeColor(kSelected);
    c.FrameRect({150, 60, 196, 100});
    c.CopyMaskedBits(buttonArt, {0, 0, 12, 10}, buttonArt, {12, 0}, {166, 50}, true);
    c.CopyMaskedBits(buttonArt, {0, 0, 12, 10}, buttonArt, {12, 0}, {166, 75}, true);
    c.EndDraw();
}

void PaintMessage(DrawContext& c) {
    c.BeginDraw();
    c.SetForeColor(kWhite);
    c.FillRect({0, 0, 260, 100});
    c.SetForeColor(kBlack);
    c.FrameRect({0, 0, 260, 100});
    c.SetFont(SoftwareContext::kSmallFont, kBlack);
    c.MoveTo({42, 17});
    c.DrawStringInRect(
        "Unable to load settings\n\nThere was an error reading from the file and the "
        "settings\t\t\t\t\t\t\tcould not be loaded. "
        "Supercalifragilisticexpialidocious-antidisestablishmentarianism",
        {42, 17, 255, 87});
    c.EndDraw();
}

TEST(GoldenImages, APlotWithGridCurvesHandlesLabelsAndAMaskedButton) {
    OGWorld art({0, 0, 24, 10});
    PaintButtonArt(art);
    SoftwareWindowContext window(kPlotWidth, kPlotHeight);
    PaintPlot(window, art);
    test::ExpectGolden(window.GetImage(), VORIX_GOLDEN_DIR, "plot");
}

TEST(GoldenImages, AMessageBoxWithWrappedText) {
    SoftwareWindowContext window(260, 100);
    PaintMessage(window);
    test::ExpectGolden(window.GetImage(), VORIX_GOLDEN_DIR, "message");
}

}  // namespace
}  // namespace vorix
