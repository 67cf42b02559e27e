// The headless window: what it reports of the mouse and keys, and what it records for the
// platform that shows it.
#include <gtest/gtest.h>

#include "platform/SoftwareWindowContext.h"

namespace vorix {
namespace {

struct NullCapturer : DrawContext::MouseCapturer {
    void MouseMoved(Point) override {}
    void MouseUp(Point) override {}
    void Pump() override {}
};

// Control with Shift is its own state; the right button counts as Control; Option is never down.
TEST(SoftwareWindow, ModifierKeysFollowTheSecondaryClickRules) {
    struct Case {
        bool control, shift, right;
        bool controlDown, shiftDown, controlShiftDown;
    };
    const Case cases[] = {
        {false, false, false, false, false, false}, {true, false, false, true, false, false},
        {false, true, false, false, true, false},   {false, false, true, true, false, false},
        {true, true, false, false, false, true},    {true, true, true, false, false, true},
        {false, true, true, true, true, false},     {true, false, true, true, false, false},
    };
    SoftwareWindowContext window(10, 10);
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << c.control << c.shift << c.right);
        window.SetModifierKeys(c.control, c.shift, c.right);
        EXPECT_EQ(window.IsControlDown(), c.controlDown);
        EXPECT_EQ(window.IsShiftDown(), c.shiftDown);
        EXPECT_EQ(window.IsControlShiftDown(), c.controlShiftDown);
        EXPECT_FALSE(window.IsOptionDown());
    }
}

TEST(SoftwareWindow, TheCaptureTheCursorAndTheMouseAreKeptForThePlatform) {
    SoftwareWindowContext window(10, 10);
    NullCapturer capturer;
    EXPECT_EQ(window.GetMouseCapturer(), nullptr);
    window.SetMouseCapturer(&capturer);
    EXPECT_EQ(window.GetMouseCapturer(), &capturer);
    window.ClearMouseCapturer();
    EXPECT_EQ(window.GetMouseCapturer(), nullptr);

    EXPECT_FALSE(window.GetCursor().has_value());
    window.SetCursor(129);
    EXPECT_EQ(window.GetCursor(), 129);
    window.ResetCursor();
    EXPECT_FALSE(window.GetCursor().has_value());

    EXPECT_EQ(window.GetMousePoint(), (Point{0, 0}));
    window.SetMousePoint({7, 3});
    EXPECT_EQ(window.GetMousePoint(), (Point{7, 3}));
}

TEST(SoftwareWindow, RepaintRequestsGatherUntilThePlatformHasPainted) {
    SoftwareWindowContext window(20, 20);
    EXPECT_TRUE(window.GetInvalidRegion().IsEmpty());
    window.InvalidateRect({0, 0, 10, 10});
    window.InvalidateRect({5, 5, 15, 15});
    window.ValidateRect({0, 0, 6, 6});
    EXPECT_FALSE(window.GetInvalidRegion().Contains({2, 2}));
    EXPECT_TRUE(window.GetInvalidRegion().Contains({8, 2}));
    EXPECT_TRUE(window.GetInvalidRegion().Contains({14, 14}));
    EXPECT_EQ(window.GetInvalidRegion().GetBoundingRect(), (Rect{0, 0, 15, 15}));
    window.ClearInvalidRegion();
    EXPECT_TRUE(window.GetInvalidRegion().IsEmpty());
}

TEST(SoftwareWindow, WithoutAFileDialogLoadingAndSavingSettingsAnswerAsCancelled) {
    SoftwareWindowContext window(10, 10);
    std::string data = "kept";
    EXPECT_FALSE(window.LoadSettingsFile(data, ".vrx"));
    EXPECT_EQ(data, "kept");
    EXPECT_FALSE(window.SaveSettingsFile("<settings/>", "Vorix", ".vrx"));
}

}  // namespace
}  // namespace vorix
