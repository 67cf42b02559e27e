// What DrawContext itself does for every surface: the floating rectangles and the clip they make.
#include <gtest/gtest.h>

#include <optional>
#include <set>
#include <utility>
#include <vector>

#include "framework/DrawContext.h"

namespace vorix {
namespace {

using Pixels = std::set<std::pair<int, int>>;

Pixels PixelsOf(const Rect& rect) {
    Pixels pixels;
    for (int y = rect.top; y < rect.bottom; ++y) {
        for (int x = rect.left; x < rect.right; ++x)
            pixels.insert({x, y});
    }
    return pixels;
}

// A region as a plain set of pixels.
struct PixelRegion : DrawContext::Region {
    void Clear() override { pixels.clear(); }
    void SetRect(const Rect& rect) override { pixels = PixelsOf(rect); }
    void Union(const Region& other) override {
        for (auto p : Of(other))
            pixels.insert(p);
    }
    void Subtract(const Region& other) override {
        for (auto p : Of(other))
            pixels.erase(p);
    }
    void Intersect(const Region& other) override {
        Pixels common;
        for (auto p : Of(other)) {
            if (pixels.count(p)) common.insert(p);
        }
        pixels = std::move(common);
    }
    bool IsEmpty() const override { return pixels.empty(); }
    static const Pixels& Of(const Region& other) {
        return dynamic_cast<const PixelRegion&>(other).pixels;
    }
    Pixels pixels;
};

// A 16 by 8 surface that only records how it was asked to clip.
struct ClipRecorder : DrawContext {
    Rect GetBounds() const override { return {0, 0, 16, 8}; }
    void SetOrigin(Point o) override { origin = o; }
    Rect ToSurfaceRect(const Rect& r) const override { return r.Offset(-origin.x, -origin.y); }
    void SetClipRect(const Rect& rect) override {
        clipRect = rect;
        clipRegion.reset();
    }
    std::unique_ptr<Region> CreateRegion() override { return std::make_unique<PixelRegion>(); }
    void ApplyClipRegion(const Region& region) override {
        clipRegion = PixelRegion::Of(region);
        clipRect.reset();
    }

    void BeginDraw() override {}
    void EndDraw() override {}
    Point GetMousePoint() const override { return {}; }
    void SetCursor(std::int16_t) override {}
    void ResetCursor() override {}
    void SetForeColor(const RGBColor&) override {}
    void SetBackColor(const RGBColor&) override {}
    void MoveTo(Point) override {}
    void LineTo(Point) override {}
    void FillRect(const Rect&) override {}
    void FillOval(const Rect&) override {}
    void FrameOval(const Rect&) override {}
    void FrameRect(const Rect&) override {}
    void SetFont(std::int32_t, const RGBColor&) override {}
    void DrawString(std::string_view) override {}
    void DrawStringInRect(std::string_view, const Rect&) override {}
    std::int32_t GetStringWidth(std::string_view) override { return 0; }
    void DrawResource(std::int32_t, const Rect&) override {}
    void ResetCopyColors() override {}
    void CopyBits(const DrawContext&, const Rect&, Point, bool) override {}
    void CopyMaskedBits(const DrawContext&, const Rect&, const DrawContext&, Point, Point,
                        bool) override {}
    RGBColor GetPixelColor(Point) const override { return {}; }
    Rect ScrollBits(const Rect&, Point) override { return {}; }
    bool IsControlDown() const override { return false; }
    bool IsShiftDown() const override { return false; }
    bool IsControlShiftDown() const override { return false; }
    bool IsOptionDown() const override { return false; }
    void SetMouseCapturer(MouseCapturer*) override {}
    void ClearMouseCapturer() override {}
    void ValidateRect(const Rect&) override {}
    void InvalidateRect(const Rect&) override {}
    bool LoadSettingsFile(std::string&, std::string_view) override { return false; }
    bool SaveSettingsFile(std::string_view, std::string_view, std::string_view) override {
        return false;
    }
    void DeleteContext(DrawContext*) override {}

    Point origin;
    std::optional<Rect> clipRect;
    std::optional<Pixels> clipRegion;
};

class DrawContextTest : public ::testing::Test {
  protected:
    std::vector<const void*> Order() const {
        std::vector<const void*> ids;
        for (const auto& entry : surface.GetFloatingRects())
            ids.push_back(entry.id);
        return ids;
    }

    ClipRecorder surface;
    int a = 0, b = 0, c = 0, d = 0, e = 0;
};

TEST_F(DrawContextTest, FloatingRectsAreOrderedByLayerAndEqualLayersKeepTheirArrival) {
    surface.AddFloatingRect(&a, {0, 0, 1, 1}, 2);
    surface.AddFloatingRect(&b, {0, 0, 1, 1}, 1);
    surface.AddFloatingRect(&c, {0, 0, 1, 1}, 2);
    surface.AddFloatingRect(&d, {0, 0, 1, 1}, 1);
    surface.AddFloatingRect(&e, {0, 0, 1, 1}, 3);
    EXPECT_EQ(Order(), (std::vector<const void*>{&b, &d, &a, &c, &e}));
    surface.RemoveFloatingRect(&a);
    surface.RemoveFloatingRect(&a);
    EXPECT_EQ(Order(), (std::vector<const void*>{&b, &d, &c, &e}));
    surface.ClearFloatingRects();
    EXPECT_TRUE(surface.GetFloatingRects().empty());
}

TEST_F(DrawContextTest, AddingAnIdThatIsPresentChangesNothing) {
    surface.AddFloatingRect(&a, {1, 1, 4, 4}, 1);
    surface.SuspendFloatingRect(&a, true);
    surface.AddFloatingRect(&a, {0, 0, 9, 9}, 7);
    ASSERT_EQ(surface.GetFloatingRects().size(), 1u);
    EXPECT_EQ(surface.GetFloatingRects()[0].rect, (Rect{1, 1, 4, 4}));
    EXPECT_EQ(surface.GetFloatingRects()[0].layer, 1);
    EXPECT_TRUE(surface.GetFloatingRects()[0].suspended);
}

TEST_F(DrawContextTest, WithNothingFloatingTheClipIsAPlainRectangleInDrawingCoordinates) {
    surface.SetOrigin({-2, -1});
    surface.SetClip({1, 1, 5, 3});
    EXPECT_EQ(surface.clipRect, (Rect{1, 1, 5, 3}));
    EXPECT_FALSE(surface.clipRegion);
}

// A floating frame that paints suspends its rectangle: it is clipped by what floats above it
// and not by itself or what lies beneath.
TEST_F(DrawContextTest, TheClipLeavesOutWhatFloatsAboveTheFirstSuspendedRectangle) {
    surface.AddFloatingRect(&a, {0, 0, 4, 8}, 1);
    surface.AddFloatingRect(&b, {4, 0, 8, 8}, 2);
    surface.AddFloatingRect(&c, {8, 0, 12, 8}, 3);
    surface.SetOrigin({-1, 0});

    surface.SetClip({-1, 0, 15, 8});  // nothing suspended: all three are left out
    ASSERT_TRUE(surface.clipRegion);
    EXPECT_EQ(*surface.clipRegion, PixelsOf({12, 0, 16, 8}));

    surface.SuspendFloatingRect(&b, true);
    surface.SetClip({0, 2, 15, 4});  // the surface's (1, 2) to (16, 4), less what is above b
    Pixels expected = PixelsOf({1, 2, 8, 4});
    for (auto p : PixelsOf({12, 2, 16, 4}))
        expected.insert(p);
    EXPECT_EQ(*surface.clipRegion, expected);

    surface.SuspendFloatingRect(&b, false);
    surface.SuspendFloatingRect(&c, true);  // the top layer paints: nothing above it
    surface.SetClip({0, 0, 3, 3});
    EXPECT_EQ(surface.clipRect, (Rect{0, 0, 3, 3}));

    surface.RemoveFloatingRect(&c);
    surface.SetClip({-1, 0, 15, 8});
    EXPECT_EQ(*surface.clipRegion, PixelsOf({8, 0, 16, 8}));
}

TEST_F(DrawContextTest, ClearingTheListReturnsToPlainRectangles) {
    surface.AddFloatingRect(&a, {0, 0, 4, 8}, 1);
    surface.ClearFloatingRects();
    surface.SetClip({0, 0, 3, 3});
    EXPECT_EQ(surface.clipRect, (Rect{0, 0, 3, 3}));
}

}  // namespace
}  // namespace vorix
