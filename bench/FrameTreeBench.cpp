// Repaints of an editor-sized frame tree on the software surface, as the frames issue them: a
// full repaint of a 585 by 450 tree of pixmap controls, meters and text, and the repaint of the
// meters alone that every heartbeat brings while audio plays.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "framework/AudioMeter.h"
#include "framework/FrameRoot.h"
#include "framework/MessagingServer.h"
#include "framework/PixMapButton.h"
#include "framework/PixMapDrawFrame.h"
#include "framework/PixMapSlider.h"
#include "framework/TextFrame.h"
#include "framework/TextPixMapButton.h"
#include "framework/TimerManager.h"
#include "platform/OGWorld.h"
#include "platform/SoftwareWindowContext.h"

namespace vorix {
namespace {

constexpr std::int32_t kWidth = 585;
constexpr std::int32_t kHeight = 450;

class BenchServices : public PluginServices {
  public:
    BenchServices()
        : PluginServices(std::make_unique<TimerManager>([this] { return now; }),
                         std::make_unique<MessagingServer>()) {}
    Ticks now = 0;
};

// The root of a tree without a host: the window surface and the shared buffer, nothing else.
class BenchRoot : public FrameRoot {
  public:
    explicit BenchRoot(PluginServices* services) : FrameRoot(services), window_(kWidth, kHeight) {}
    ~BenchRoot() override { top.reset(); }

    DrawContext* GetWindowContext() const override { return &window_; }
    DrawContext* GetOffscreen() const override { return buffer_.get(); }
    bool DeclinesOffscreen() const override { return false; }
    void GrowOffscreen(std::int32_t width, std::int32_t height) override {
        const Rect have = buffer_ != nullptr ? buffer_->GetBounds() : Rect{};
        if (width <= have.Width() && height <= have.Height()) return;
        buffer_ = std::make_unique<OGWorld>(
            Rect{0, 0, std::max(width, have.Width()), std::max(height, have.Height())});
    }
    void CaptureMouse(Frame* frame) override { captureFrame_ = frame; }
    void ReleaseMouse() override { captureFrame_ = nullptr; }
    void SetKeyFrame(Frame* frame) override { keyFrame_ = frame; }
    void EditText(const Rect&, std::string_view, TextEditDialogUser*) override {}

    std::unique_ptr<Frame> top;

  private:
    mutable SoftwareWindowContext window_;
    std::unique_ptr<OGWorld> buffer_;
};

std::string Text(const char* format, std::int32_t number) {
    char text[32];
    std::snprintf(text, sizeof text, format, number);
    return text;
}

// The artwork: the background of the whole editor in bands, a strip of button images, a slider
// track and thumb with its mask, meter images and a label background.
void PaintArtwork(OGWorld& art) {
    art.BeginDraw();
    for (std::int32_t y = 0; y < kHeight; y += 10) {
        art.SetForeColor({static_cast<std::uint16_t>(50 + y / 10), 54, 80});
        art.FillRect({0, y, kWidth, y + 10});
    }
    for (std::int32_t i = 0; i < 4; ++i) {
        art.SetForeColor({static_cast<std::uint16_t>(60 * i), 120, 200});
        art.FillOval({i * 20, 460, i * 20 + 20, 476});
    }
    art.SetForeColor({30, 30, 40});
    art.FillRect({100, 460, 200, 476});
    art.SetForeColor(kWhite);
    art.FillRect({230, 460, 242, 476});
    art.SetForeColor({220, 220, 230});
    art.FillOval({210, 460, 222, 476});
    art.SetForeColor(kBlack);
    art.FillOval({230, 460, 242, 476});
    art.SetForeColor({10, 10, 10});
    art.FillRect({250, 460, 262, 560});
    art.SetForeColor({0, 200, 0});
    art.FillRect({270, 460, 282, 560});
    art.SetForeColor({220, 200, 0});
    art.FillRect({290, 460, 302, 560});
    art.SetForeColor({240, 0, 0});
    art.FillRect({310, 460, 322, 560});
    art.SetForeColor({25, 25, 35});
    art.FillRect({340, 460, 420, 474});
    art.EndDraw();
}

struct Editor {
    Editor() : root(&services), art(Rect{0, 0, kWidth, 560}) {
        PaintArtwork(art);
        root.top = std::make_unique<Frame>(root, 0, 0, kWidth, kHeight, 0, 0);
        Frame& top = *root.top;
        new PixMapDrawFrame(top, {0, 0, kWidth, kHeight}, 0, 1, &art, {0, 0});
        const ButtonArt buttons{&art, {0, 460}, {20, 0}};
        std::int32_t id = 10;
        for (std::int32_t row = 0; row < 4; ++row) {
            for (std::int32_t column = 0; column < 10; ++column) {
                const Rect place{10 + column * 24, 10 + row * 20, 30 + column * 24, 26 + row * 20};
                new MultiStateButton(top, place, id++, buttons, 0, 1, (row + column) % 2);
            }
        }
        SliderArt slider;
        slider.pixmap = &art;
        slider.background = {100, 460};
        slider.thumb = {210, 460};
        slider.thumbSize = {12, 16};
        slider.mask = {230, 460};
        for (std::int32_t i = 0; i < 10; ++i)
            new PixMapSlider(top, {260, 10 + i * 20, 360, 26 + i * 20}, id++, slider, 0, 100,
                             i * 10);
        for (std::int32_t i = 0; i < 4; ++i) {
            auto* meter = new AudioMeter(top, {400 + i * 16, 10, 412 + i * 16, 110}, id++, -100.0f);
            meter->SetImages(&art, {250, 460}, {270, 460}, {290, 460}, {310, 460});
            meter->SetLevel(-12.0f - 4.0f * static_cast<float>(i));
            meters.push_back(meter);
        }
        for (std::int32_t i = 0; i < 25; ++i) {
            auto* label = new StaticTextPMFrame(
                top, {10 + (i % 5) * 90, 250 + (i / 5) * 18, 90 + (i % 5) * 90, 264 + (i / 5) * 18},
                id++, Text("Band %d 1.2 kHz", i + 1), &art, {340, 460});
            label->SetFont(1, kWhite);
        }
        for (std::int32_t i = 0; i < 25; ++i) {
            auto* text = new TextFrame(
                top, {10 + (i % 5) * 90, 350 + (i / 5) * 16, 90 + (i % 5) * 90, 364 + (i / 5) * 16},
                id++, Text("+%d.5 dB", i));
            text->SetAlignment(TextFrame::kRight, 2);
        }
        for (std::int32_t i = 0; i < 4; ++i)
            new TextPixMapButton(top, {480, 150 + i * 20, 560, 164 + i * 20}, id++,
                                 {&art, {340, 460}, {0, 0}}, Text("Action %d", i), 3);
        // The first paint makes the faces and renders the glyphs once.
        FullRepaint();
    }
    ~Editor() { root.top.reset(); }

    void FullRepaint() {
        DrawLock lock(root);
        root.top->Refresh(nullptr, true);
    }

    BenchServices services;
    BenchRoot root;
    OGWorld art;
    std::vector<AudioMeter*> meters;
};

void BM_FullRepaint(benchmark::State& state) {
    Editor editor;
    for (auto _ : state) {
        editor.FullRepaint();
        benchmark::ClobberMemory();
    }
    // What the repaint leaves in the window, so that a tree that paints nothing shows.
    const auto& window = static_cast<const SoftwareContext&>(*editor.root.GetWindowContext());
    std::int64_t background = 0;
    for (std::int32_t y = 0; y < kHeight; ++y)
        for (std::int32_t x = 0; x < kWidth; ++x)
            background += window.GetPixel(x, y) == editor.art.GetPixel(x, y) ? 1 : 0;
    state.counters["controls_px"] = static_cast<double>(kWidth * kHeight - background);
}
BENCHMARK(BM_FullRepaint)->Unit(benchmark::kMicrosecond);

// Each heartbeat: new levels for the four meters, which queue themselves, and the queue painted.
void BM_MeterRepaint(benchmark::State& state) {
    Editor editor;
    float level = -3.0f;
    for (auto _ : state) {
        editor.services.now += 2;
        level = level < -60.0f ? -3.0f : level - 1.0f;
        for (AudioMeter* meter : editor.meters)
            meter->SetLevel(level);
        DrawLock paint(editor.root, true);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(BM_MeterRepaint)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace vorix

BENCHMARK_MAIN();
