#pragma once

// An editor without a window: a PluginUIRoot on the software window surface, driven as a user
// would drive it (presses, drags and releases at pixels, the mouse resting somewhere, keys) on a
// clock that moves only when the test moves it. Shared by the frame, control and root suites.

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "CoreTestSupport.h"
#include "core/PluginUIRoot.h"
#include "core/StandardAboutFrame.h"
#include "framework/Frame.h"
#include "framework/TimerManager.h"
#include "platform/ImageResources.h"
#include "platform/OGWorld.h"
#include "platform/SoftwareWindowContext.h"
#include "platform/SurfacePicture.h"

namespace vorix::test {

// The editor of a test: its frames are made by `build` under the root frame.
class HeadlessEditor : public PluginUIRoot {
  public:
    using Builder = std::function<void(HeadlessEditor&, Frame& root)>;

    HeadlessEditor(PluginCore* core, const ImageResources* resources, Builder build)
        : PluginUIRoot(core), resources_(resources), build_(std::move(build)) {}
    ~HeadlessEditor() override { Close(); }

    SoftwareWindowContext& Window() const {
        return static_cast<SoftwareWindowContext&>(*GetWindowContext());
    }

    // The user's hand. Modifiers hold for the press and what follows it.
    void Keys(bool control, bool shift, bool rightButton = false) {
        Window().SetModifierKeys(control, shift, rightButton);
    }
    void Press(std::int32_t x, std::int32_t y) {
        Window().SetMousePoint({x, y});
        MouseDown(x, y);
    }
    // A move of the held mouse goes to whoever captured it, as a window sends it.
    void Drag(std::int32_t x, std::int32_t y) {
        Window().SetMousePoint({x, y});
        if (auto* capturer = Window().GetMouseCapturer()) capturer->MouseMoved({x, y});
    }
    void Release(std::int32_t x, std::int32_t y) {
        Window().SetMousePoint({x, y});
        if (auto* capturer = Window().GetMouseCapturer()) capturer->MouseUp({x, y});
    }
    void Click(std::int32_t x, std::int32_t y) {
        Press(x, y);
        Release(x, y);
    }
    // The mouse rests at (x, y) without a button, and the editor idles once.
    void Hover(std::int32_t x, std::int32_t y) {
        Window().SetMousePoint({x, y});
        Idle();
    }
    // The window's first paint, as the window system's first expose asks for it.
    void Expose() { Draw(GetRootFrame()->GetWindowRect()); }

  protected:
    void CreateRootFrame() override {
        if (build_) build_(*this, *GetRootFrame());
    }
    std::unique_ptr<DrawContext> CreateDrawContext() override {
        const EditorSize size = GetCore()->GetEditorSize();
        return std::make_unique<SoftwareWindowContext>(size.width, size.height, resources_);
    }
    std::unique_ptr<DrawContext> CreateRegion(const Rect& rect) override {
        if (declineOffscreen) return nullptr;
        return std::make_unique<OGWorld>(rect, resources_);
    }

  public:
    bool declineOffscreen = false;

  private:
    const ImageResources* resources_;
    Builder build_;
};

// A frame that counts its paints and fills what it paints with one colour, unless transparent,
// when it only frames its bounds. It logs its paints into a shared list of names.
class PaintedFrame : public Frame {
  public:
    PaintedFrame(Frame& parent, Rect place, RGBColor color, std::string name,
                 std::vector<std::string>* log, std::uint32_t flags = 0, std::int32_t id = 0)
        : Frame(parent, place.left, place.top, place.Width(), place.Height(), flags, id),
          color_(color),
          name_(std::move(name)),
          log_(log) {}

    void Draw(DrawContext& context, const Rect& rect) override {
        ++draws;
        lastRect = rect;
        if (log_ != nullptr) log_->push_back(name_);
        context.SetForeColor(color_);
        if ((GetFlags() & kTransparent) != 0) {
            context.FrameRect({-1, -1, GetWidth() + 1, GetHeight() + 1});
        } else {
            context.FillRect(GetBoundsRect());
        }
    }
    void OnMouse(std::int32_t kind, std::int32_t x, std::int32_t y) override {
        events.push_back({kind, x, y});
    }

    struct Event {
        std::int32_t kind, x, y;
        friend bool operator==(const Event&, const Event&) = default;
    };

    int draws = 0;
    Rect lastRect;
    std::vector<Event> events;

  private:
    RGBColor color_;
    std::string name_;
    std::vector<std::string>* log_;
};

// The test product's engine with the product's about panel.
class EditorCore : public TestCore {
  public:
    using TestCore::TestCore;
    Frame* CreateAboutFrame(PluginUIRoot& root, Frame* parent) override {
        return CreateStandardAboutFrame(root, parent);
    }
};

// A core of the test product, its clock moved by hand, and an editor over it.
class EditorTest : public CoreTest {
  protected:
    void TearDown() override {
        editor.reset();
        core.reset();
        CoreTest::TearDown();
    }

    // The engine under the editor, made on first use.
    EditorCore* Core() {
        if (core == nullptr) {
            SetMetaClassMaker(
                [product = setup] { return std::make_unique<TestMetaClass>(product); });
            core = std::make_unique<EditorCore>(&platform, ChannelConfig{2, 2},
                                                [this] { return ticks.load(); });
        }
        return core.get();
    }

    // Opens an editor whose frames `build` makes, and paints it once.
    HeadlessEditor& OpenEditor(HeadlessEditor::Builder build, bool expose = true) {
        editor = std::make_unique<HeadlessEditor>(Core(), &resources, std::move(build));
        EXPECT_TRUE(editor->Open());
        if (expose) editor->Expose();
        return *editor;
    }

    // Moves the clock to `now` and beats the heartbeat once.
    void BeatAt(Ticks now) {
        ticks = now;
        editor->Heartbeat();
    }

    // The window's pixels as a picture.
    std::string Shot(const Rect& area, const std::map<Pixel, char>& legend) const {
        return Picture(editor->Window(), area, legend);
    }

    ImageResources resources;
    std::unique_ptr<EditorCore> core;
    std::unique_ptr<HeadlessEditor> editor;
};

}  // namespace vorix::test
