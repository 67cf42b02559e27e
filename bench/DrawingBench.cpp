// The software surface under the editor's load: a full repaint of the 585 by 450 window, as the
// frames will issue it, must stay well under a millisecond; and its parts, to see where the time
// goes.
#include <benchmark/benchmark.h>

#include <array>
#include <cstdio>
#include <string>

#include "platform/OGWorld.h"
#include "platform/SoftwareWindowContext.h"

namespace vorix {
namespace {

constexpr std::int32_t kWindowWidth = 585;
constexpr std::int32_t kWindowHeight = 450;
constexpr Rect kPlot{158, 12, 158 + 410, 12 + 203};
constexpr Rect kList{12, 240, 12 + 300, 240 + 190};
constexpr Rect kPanel{330, 240, 570, 430};

// Artwork in the size of the editor's bitmap: the background and, below it, the controls.
void PaintArtwork(OGWorld& art) {
    for (std::int32_t y = 0; y < kWindowHeight + 80; y += 10) {
        art.SetForeColor({static_cast<std::uint16_t>(40 + y / 8), 60, 90});
        art.FillRect({0, y, kWindowWidth, y + 10});
    }
    art.SetForeColor(kWhite);
    art.FillRect({0, kWindowHeight, kWindowWidth, kWindowHeight + 80});  // masks: white...
    art.SetForeColor(kBlack);
    for (std::int32_t x = 0; x < 200; x += 20)
        art.FillOval({x, kWindowHeight, x + 16, kWindowHeight + 16});
}

// What Frame::BeginDraw does for a frame at `frame` in the window: local coordinates, clipped.
void BeginFrame(SoftwareWindowContext& window, const Rect& frame) {
    window.BeginDraw();
    window.SetOrigin({-frame.left, -frame.top});
    window.SetClip({0, 0, frame.Width(), frame.Height()});
}

void EndFrame(SoftwareWindowContext& window) {
    window.SetOrigin({0, 0});
    window.EndDraw();
}

std::int32_t CurveY(std::int32_t x) {
    const std::int32_t d = x - 205;
    return 101 - (60 * 900) / (900 + d * d / 4);
}

void PaintBackground(SoftwareWindowContext& window, const OGWorld& art) {
    BeginFrame(window, {0, 0, kWindowWidth, kWindowHeight});
    window.CopyBits(art, {0, 0, kWindowWidth, kWindowHeight}, {0, 0}, true);
    EndFrame(window);
}

// Twenty controls cut from the artwork, half of them with a masked thumb on top.
void PaintControls(SoftwareWindowContext& window, const OGWorld& art) {
    for (std::int32_t i = 0; i < 20; ++i) {
        const Rect frame{12 + (i % 4) * 36, 20 + (i / 4) * 40, 12 + (i % 4) * 36 + 32,
                         20 + (i / 4) * 40 + 24};
        BeginFrame(window, frame);
        window.CopyBits(art, {frame.left, kWindowHeight + 20, frame.right, kWindowHeight + 44},
                        {0, 0}, true);
        if (i % 2 == 0) {
            window.CopyMaskedBits(art, {0, 0, 16, 16}, art, {0, kWindowHeight}, {8, 4}, true);
        }
        EndFrame(window);
    }
}

// The plot as it paints with the compensation fill on: background, grid, a filled column and an
// edge per pixel column, a selected curve, handles, axis labels and readouts.
void PaintPlot(SoftwareWindowContext& window) {
    BeginFrame(window, kPlot);
    const std::int32_t width = kPlot.Width();
    const std::int32_t height = kPlot.Height();
    window.SetForeColor({66, 70, 91});
    window.FillRect({0, 0, width, height});
    window.SetForeColor({80, 82, 103});
    for (std::int32_t i = 0; i < 29; ++i) {
        window.MoveTo({i * 14, 0});
        window.LineTo({i * 14, height});
    }
    for (std::int32_t y = 11; y < height; y += 30) {
        window.MoveTo({0, y});
        window.LineTo({width, y});
    }
    for (std::int32_t x = 0; x < width; ++x) {
        const std::int32_t y = CurveY(x);
        window.SetForeColor({107, 103, 139});
        window.MoveTo({x, height});
        window.LineTo({x, y});
        window.SetForeColor(kBlack);
        window.MoveTo({x == 0 ? 0 : x - 1, CurveY(x == 0 ? 0 : x - 1)});
        window.LineTo({x, y});
    }
    window.SetForeColor(kWhite);
    window.MoveTo({0, 120});
    window.LineTo({0, 120});
    for (std::int32_t x = 1; x < width; ++x)
        window.LineTo({x, 120 - x / 8});
    for (std::int32_t i = 0; i < 8; ++i) {
        const Point h{30 + i * 45, CurveY(30 + i * 45)};
        window.SetForeColor({172, 173, 211});
        window.MoveTo({h.x, h.y - 1});
        window.LineTo({h.x, h.y - 2});
        window.MoveTo({h.x + 1, h.y});
        window.LineTo({h.x + 2, h.y});
        window.MoveTo({h.x, h.y + 1});
        window.LineTo({h.x, h.y + 2});
        window.MoveTo({h.x - 1, h.y});
        window.LineTo({h.x - 2, h.y});
        window.SetFont(1, {172, 173, 211});
        window.MoveTo({h.x + 6, h.y + 8});
        window.DrawString(std::to_string(i + 1));
    }
    static constexpr std::array<const char*, 12> kLabels = {"20",  "40", "60", "100", "200", "400",
                                                            "600", "1k", "2k", "4k",  "6k",  "10k"};
    window.SetFont(1, {195, 199, 219});
    for (std::size_t i = 0; i < kLabels.size(); ++i) {
        window.MoveTo({20 + static_cast<std::int32_t>(i) * 32, height - 1});
        window.DrawString(kLabels[i]);
    }
    window.SetFont(1, {255, 241, 0});
    window.MoveTo({20, 11});
    window.DrawString("1000 Hz");
    window.MoveTo({70, 11});
    window.DrawString("-3.50 dB");
    EndFrame(window);
}

// The filter list: eight rows of five cells of text; the parameter panel: ten readouts.
void PaintTexts(SoftwareWindowContext& window) {
    BeginFrame(window, kList);
    window.SetForeColor(kWhite);
    window.FillRect({0, 0, kList.Width(), kList.Height()});
    window.SetFont(1, kBlack);
    char text[32];
    for (std::int32_t row = 0; row < 8; ++row) {
        const std::int32_t baseline = 18 + row * 22;
        std::snprintf(text, sizeof text, "%d", row + 1);
        window.MoveTo({4, baseline});
        window.DrawString(text);
        window.MoveTo({24, baseline});
        window.DrawString("Parametric EQ");
        std::snprintf(text, sizeof text, "%.0f Hz", 31.25 * (1 << row));
        window.MoveTo({120, baseline});
        window.DrawString(text);
        std::snprintf(text, sizeof text, "%.2f dB", -6.0 + row * 1.5);
        window.MoveTo({190, baseline});
        window.DrawString(text);
        window.MoveTo({250, baseline});
        window.DrawString("1.41");
    }
    EndFrame(window);

    BeginFrame(window, kPanel);
    window.SetFont(0, kWhite);
    for (std::int32_t i = 0; i < 10; ++i) {
        std::snprintf(text, sizeof text, "%.1f", 12.5 * i);
        const std::int32_t width = window.GetStringWidth(text);
        window.MoveTo({(kPanel.Width() - width) / 2, 16 + i * 18});
        window.DrawString(text);
    }
    EndFrame(window);
}

void FullRepaint(benchmark::State& state) {
    OGWorld art({0, 0, kWindowWidth, kWindowHeight + 80});
    PaintArtwork(art);
    SoftwareWindowContext window(kWindowWidth, kWindowHeight);
    PaintTexts(window);  // the glyphs are rendered once, at the first paint of a session
    for (auto _ : state) {
        PaintBackground(window, art);
        PaintControls(window, art);
        PaintPlot(window);
        PaintTexts(window);
        benchmark::DoNotOptimize(window.GetImage().pixels.data());
    }
}
BENCHMARK(FullRepaint)->Unit(benchmark::kMicrosecond);

void FullWindowCopy(benchmark::State& state) {
    OGWorld art({0, 0, kWindowWidth, kWindowHeight + 80});
    PaintArtwork(art);
    SoftwareWindowContext window(kWindowWidth, kWindowHeight);
    for (auto _ : state) {
        PaintBackground(window, art);
        benchmark::DoNotOptimize(window.GetImage().pixels.data());
    }
}
BENCHMARK(FullWindowCopy)->Unit(benchmark::kMicrosecond);

void PlotWithFill(benchmark::State& state) {
    SoftwareWindowContext window(kWindowWidth, kWindowHeight);
    PaintPlot(window);
    for (auto _ : state) {
        PaintPlot(window);
        benchmark::DoNotOptimize(window.GetImage().pixels.data());
    }
}
BENCHMARK(PlotWithFill)->Unit(benchmark::kMicrosecond);

void ListAndPanelText(benchmark::State& state) {
    SoftwareWindowContext window(kWindowWidth, kWindowHeight);
    PaintTexts(window);
    for (auto _ : state) {
        PaintTexts(window);
        benchmark::DoNotOptimize(window.GetImage().pixels.data());
    }
}
BENCHMARK(ListAndPanelText)->Unit(benchmark::kMicrosecond);

// The first paint of a session: both faces made and every glyph rendered by FreeType.
void FirstTextPaint(benchmark::State& state) {
    for (auto _ : state) {
        SoftwareWindowContext window(kWindowWidth, kWindowHeight);
        PaintTexts(window);
        benchmark::DoNotOptimize(window.GetImage().pixels.data());
    }
}
BENCHMARK(FirstTextPaint)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace vorix

BENCHMARK_MAIN();
