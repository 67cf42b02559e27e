// The frame tree as a user's editor lives it: frames queued by their changes and painted at the
// next idle beat, parents under children, floating panels over their siblings, overlays over
// their frames; presses at pixels reaching the deepest frame through nested offsets, drags that
// leave the frame held by the capture, hover, cursors and key focus.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "FrameworkFakes.h"
#include "core/EditorHarness.h"
#include "framework/FrameRoot.h"
#include "framework/PixMapDrawFrame.h"

namespace vorix {
namespace {

using test::EditorTest;
using test::HeadlessEditor;
using test::PaintedFrame;

constexpr RGBColor kRed{0xFF, 0, 0};
constexpr RGBColor kGreen{0, 0xFF, 0};
constexpr RGBColor kBlue{0, 0, 0xFF};
constexpr RGBColor kGrey{0x80, 0x80, 0x80};
const std::map<Pixel, char> kLegend{
    {PixelOf(kRed), 'r'}, {PixelOf(kGreen), 'g'}, {PixelOf(kBlue), 'b'}, {PixelOf(kGrey), '-'}};

// A frame that takes the mouse at a press and lets it go at the release, as every control does.
class HoldingFrame : public PaintedFrame {
  public:
    using PaintedFrame::PaintedFrame;
    void OnMouse(std::int32_t kind, std::int32_t x, std::int32_t y) override {
        PaintedFrame::OnMouse(kind, x, y);
        if (kind == kMouseDown) CaptureMouse();
        if (kind == kMouseUp) ReleaseMouse();
    }
};

// An overlay that marks the frame's top left pixel and logs when it draws.
class MarkOverlay : public FrameOverlay {
  public:
    explicit MarkOverlay(std::vector<std::string>* log) : log_(log) {}
    void Draw(Frame& /*frame*/, DrawContext& context, const Rect& /*rect*/) override {
        log_->push_back("overlay");
        context.SetForeColor(kBlue);
        context.FillRect({0, 0, 2, 2});
    }

  private:
    std::vector<std::string>* log_;
};

class FrameTree : public EditorTest {
  protected:
    // Parent A at (100, 50) holding A1 at (10, 20); B beside them.
    HeadlessEditor& OpenThree() {
        return OpenEditor([this](HeadlessEditor&, Frame& root) {
            a = new PaintedFrame(root, {100, 50, 160, 110}, kRed, "A", &log);
            a1 = new PaintedFrame(*a, {10, 20, 40, 50}, kGreen, "A1", &log);
            b = new PaintedFrame(root, {300, 50, 340, 90}, kBlue, "B", &log);
        });
    }
    void ForgetPaints() {
        log.clear();
        a->draws = a1->draws = b->draws = 0;
    }

    std::vector<std::string> log;
    test::Log heard;
    PaintedFrame* a = nullptr;
    PaintedFrame* a1 = nullptr;
    PaintedFrame* b = nullptr;
};

TEST_F(FrameTree, TheFirstExposePaintsEveryFrameParentsFirst) {
    OpenThree();
    EXPECT_EQ(log, (std::vector<std::string>{"A", "A1", "B"}));
    EXPECT_EQ(Shot({108, 68, 114, 72}, kLegend),
              test::Rows({"rrrrrr", "rrrrrr", "rrgggg", "rrgggg"}));
    EXPECT_TRUE(editor->HasDrawnOnce());
}

TEST_F(FrameTree, AChangeWaitsForTheNextBeatAndPaintsOnlyThatFrame) {
    OpenThree();
    // The expose painted the queue's frames without emptying it: the first beat paints them.
    BeatAt(1);
    ForgetPaints();
    b->Refresh(nullptr, true);
    EXPECT_EQ(b->draws, 0) << "nothing paints on demand";
    EXPECT_EQ(editor->GetDirtyFrames(), std::vector<Frame*>{b});
    BeatAt(2);
    EXPECT_EQ(log, std::vector<std::string>{"B"});
    EXPECT_TRUE(editor->GetDirtyFrames().empty());
    BeatAt(3);
    EXPECT_EQ(log, std::vector<std::string>{"B"}) << "a painted queue stays empty";
}

TEST_F(FrameTree, TheWindowLearnsWhatWasPaintedSinceItLastLooked) {
    OpenThree();
    BeatAt(1);
    editor->TakePaintedArea();
    a1->Refresh(nullptr, true);
    b->Refresh(nullptr, true);
    BeatAt(2);
    EXPECT_EQ(editor->TakePaintedArea(), (Rect{110, 50, 340, 100})) << "the box round A1 and B";
    EXPECT_TRUE(editor->TakePaintedArea().IsEmpty());
}

TEST_F(FrameTree, AQueuedParentCoversItsChildButAQueuedChildStaysBeforeItsParent) {
    OpenThree();
    BeatAt(1);
    ForgetPaints();
    a->Refresh(nullptr, true);
    a1->Refresh(nullptr, true);
    a1->Refresh(nullptr, true);
    EXPECT_EQ(editor->GetDirtyFrames(), std::vector<Frame*>{a});
    BeatAt(2);
    EXPECT_EQ(log, (std::vector<std::string>{"A", "A1"}));

    ForgetPaints();
    a1->Refresh(nullptr, true);
    a->Refresh(nullptr, true);
    EXPECT_EQ(editor->GetDirtyFrames(), (std::vector<Frame*>{a1, a}));
    BeatAt(3);
    EXPECT_EQ(log, (std::vector<std::string>{"A1", "A", "A1"}));
}

TEST_F(FrameTree, UnderADrawLockARefreshPaintsAtOnceOnlyThePartAsked) {
    OpenThree();
    BeatAt(1);
    ForgetPaints();
    {
        DrawLock lock(*editor);
        const Rect part{0, 0, 5, 5};
        a->Refresh(&part, true);
    }
    EXPECT_EQ(a->lastRect, (Rect{0, 0, 5, 5}));
    EXPECT_EQ(a1->draws, 0) << "the child lies outside the part";
    EXPECT_TRUE(editor->GetDirtyFrames().empty());
}

TEST_F(FrameTree, ATransparentFramePaintsItsParentFirstAndShowsItThrough) {
    PaintedFrame* glass = nullptr;
    OpenEditor([&](HeadlessEditor&, Frame& root) {
        a = new PaintedFrame(root, {10, 10, 30, 30}, kRed, "A", &log);
        glass = new PaintedFrame(*a, {5, 5, 12, 12}, kGreen, "glass", &log, Frame::kTransparent);
    });
    BeatAt(1);
    log.clear();
    glass->Refresh(nullptr, true);
    BeatAt(2);
    EXPECT_EQ(log, (std::vector<std::string>{"A", "glass"}));
    EXPECT_EQ(a->lastRect, (Rect{5, 5, 12, 12})) << "only the part beneath the glass";
    EXPECT_EQ(Shot({14, 14, 23, 23}, kLegend),
              test::Rows({"rrrrrrrrr", "rgggggggr", "rgrrrrrgr", "rgrrrrrgr", "rgrrrrrgr",
                          "rgrrrrrgr", "rgrrrrrgr", "rgggggggr", "rrrrrrrrr"}));
}

TEST_F(FrameTree, AFloatingFrameLiesAboveItsYoungerSiblingsUntilItIsHidden) {
    PaintedFrame* panel = nullptr;
    OpenEditor([&](HeadlessEditor&, Frame& root) {
        new PaintedFrame(root, {0, 0, 100, 100}, kBlack, "ground", nullptr);
        panel = new PaintedFrame(root, {10, 10, 20, 20}, kRed, "panel", &log, Frame::kFloatingLow);
        b = new PaintedFrame(root, {15, 15, 30, 30}, kBlue, "B", &log);
    });
    const Rect overlap{14, 14, 22, 17};
    const std::string panelOnTop = test::Rows({"rrrrrr..", "rrrrrrbb", "rrrrrrbb"});
    EXPECT_EQ(Shot(overlap, kLegend), panelOnTop) << "painted after it, B is clipped by it";
    b->Refresh(nullptr, true);
    BeatAt(1);
    EXPECT_EQ(Shot(overlap, kLegend), panelOnTop) << "B repainting alone stays beneath";
    ASSERT_EQ(editor->Window().GetFloatingRects().size(), 1u);
    EXPECT_EQ(editor->Window().GetFloatingRects()[0].rect, (Rect{10, 10, 20, 20}));

    panel->SetVisible(false, false);
    EXPECT_TRUE(editor->Window().GetFloatingRects().empty());
    BeatAt(2);
    EXPECT_EQ(Shot(overlap, kLegend), test::Rows({"........", ".bbbbbbb", ".bbbbbbb"}));
}

TEST_F(FrameTree, AnOverlayDrawsAfterItsFrameAndGoesWithARepaint) {
    OpenThree();
    BeatAt(1);
    log.clear();
    a1->SetOverlay(std::make_unique<MarkOverlay>(&log));
    BeatAt(2);
    EXPECT_EQ(log, (std::vector<std::string>{"A1", "overlay"}));
    EXPECT_EQ(Shot({110, 70, 113, 71}, kLegend), "bbg\n");
    a1->RemoveOverlay();
    BeatAt(3);
    EXPECT_EQ(Shot({110, 70, 113, 71}, kLegend), "ggg\n");
}

TEST_F(FrameTree, APressReachesTheDeepestFrameInItsOwnCoordinates) {
    OpenThree();
    editor->Press(111, 71);
    editor->Release(111, 71);
    ASSERT_EQ(a1->events.size(), 2u) << "enter, then the press";
    EXPECT_EQ(a1->events[0], (PaintedFrame::Event{Frame::kMouseEntered, 1, 1}));
    EXPECT_EQ(a1->events[1], (PaintedFrame::Event{Frame::kMouseDown, 1, 1}));
    EXPECT_TRUE(a->events.empty());

    // The child's left column is its edge: the press falls through to the parent.
    editor->Press(110, 80);
    ASSERT_EQ(editor->GetHoverFrame(), a);
    EXPECT_EQ(a->events.back(), (PaintedFrame::Event{Frame::kMouseDown, 10, 30}));
    EXPECT_EQ(a1->events.back(), (PaintedFrame::Event{Frame::kMouseLeft, -1, -1}));
    // Its last column inside is still the child's; one beyond is the parent's.
    editor->Press(139, 80);
    ASSERT_EQ(editor->GetHoverFrame(), a1);
    EXPECT_EQ(a1->events.back(), (PaintedFrame::Event{Frame::kMouseDown, 29, 10}));
    editor->Press(140, 80);
    ASSERT_EQ(editor->GetHoverFrame(), a);
    EXPECT_EQ(a->events.back(), (PaintedFrame::Event{Frame::kMouseDown, 40, 30}));
    // So is the child's top row.
    editor->Press(120, 70);
    EXPECT_EQ(editor->GetHoverFrame(), a);
}

TEST_F(FrameTree, TheOldestOfOverlappingSiblingsTakesThePressAndHiddenFramesNone) {
    PaintedFrame* older = nullptr;
    PaintedFrame* younger = nullptr;
    OpenEditor([&](HeadlessEditor&, Frame& root) {
        older = new PaintedFrame(root, {10, 10, 50, 50}, kRed, "older", nullptr);
        younger = new PaintedFrame(root, {30, 30, 70, 70}, kBlue, "younger", nullptr);
    });
    EXPECT_EQ(editor->GetRootFrame()->FindFrameAt(40, 40, true), older);
    older->SetVisible(false, false);
    EXPECT_EQ(editor->GetRootFrame()->FindFrameAt(40, 40, true), younger);
    EXPECT_EQ(editor->GetRootFrame()->FindFrameAt(20, 20, true), editor->GetRootFrame());
}

TEST_F(FrameTree, AChildOffsetMovesEveryChildMadeAfterIt) {
    PaintedFrame* moved = nullptr;
    OpenEditor([&](HeadlessEditor&, Frame& root) {
        a = new PaintedFrame(root, {100, 100, 200, 200}, kRed, "A", nullptr);
        a->SetChildOffset(7, 9);
        moved = new PaintedFrame(*a, {0, 0, 10, 10}, kBlue, "moved", nullptr);
    });
    EXPECT_EQ(moved->GetPosition(), (Point{7, 9}));
    EXPECT_EQ(moved->GetWindowRect(), (Rect{107, 109, 117, 119}));
}

TEST_F(FrameTree, ADragThatLeavesTheFrameStaysWithItUntilTheRelease) {
    HoldingFrame* held = nullptr;
    OpenEditor([&](HeadlessEditor&, Frame& root) {
        held = new HoldingFrame(root, {50, 50, 70, 70}, kRed, "held", nullptr);
        b = new PaintedFrame(root, {200, 200, 260, 260}, kBlue, "B", nullptr);
    });
    editor->Press(55, 56);
    EXPECT_EQ(editor->GetCaptureFrame(), held);
    EXPECT_EQ(editor->Window().GetMouseCapturer(), editor.get());
    editor->Drag(120, 40);
    editor->Drag(230, 230);
    editor->Release(231, 232);
    ASSERT_EQ(held->events.size(), 5u);
    EXPECT_EQ(held->events[2], (PaintedFrame::Event{Frame::kMouseMoved, 70, -10}));
    EXPECT_EQ(held->events[3], (PaintedFrame::Event{Frame::kMouseMoved, 180, 180}));
    EXPECT_EQ(held->events[4], (PaintedFrame::Event{Frame::kMouseUp, 181, 182}));
    EXPECT_TRUE(b->events.empty()) << "the frame under the drag hears nothing";
    EXPECT_EQ(editor->GetCaptureFrame(), nullptr);
    EXPECT_EQ(editor->Window().GetMouseCapturer(), nullptr);
}

TEST_F(FrameTree, APressThatLostItsReleaseEndsBeforeTheNextPress) {
    HoldingFrame* held = nullptr;
    OpenEditor([&](HeadlessEditor&, Frame& root) {
        held = new HoldingFrame(root, {50, 50, 70, 70}, kRed, "held", nullptr);
    });
    editor->Press(55, 55);
    editor->Press(60, 60);  // the window never told of the release
    ASSERT_EQ(held->events.size(), 4u);
    EXPECT_EQ(held->events[2], (PaintedFrame::Event{Frame::kMouseUp, 0, 0}));
    EXPECT_EQ(held->events[3], (PaintedFrame::Event{Frame::kMouseDown, 10, 10}));
}

TEST_F(FrameTree, HoverEntersAndLeavesFramesAndShowsTheirCursor) {
    OpenThree();
    b->SetCursor(Frame::kHandCursor, false);
    editor->Hover(310, 60);
    EXPECT_EQ(b->events, (std::vector<PaintedFrame::Event>{{Frame::kMouseEntered, 10, 10}}));
    EXPECT_EQ(editor->Window().GetCursor(), Frame::kHandCursor);
    EXPECT_TRUE(b->IsMouseInside());
    editor->Hover(120, 60);
    EXPECT_EQ(b->events.back(), (PaintedFrame::Event{Frame::kMouseLeft, -1, -1}));
    EXPECT_EQ(a->events.back(), (PaintedFrame::Event{Frame::kMouseEntered, 20, 10}));
    EXPECT_FALSE(editor->Window().GetCursor().has_value());
    const auto seen = a->events.size();
    editor->Hover(120, 60);
    EXPECT_EQ(a->events.size(), seen) << "a mouse at rest sends nothing more";
}

TEST_F(FrameTree, ADisabledFrameTellsOfAPressButHearsNothing) {
    OpenThree();
    test::RecordingSubscriber listener(core.get(), "B", &heard);
    listener.Listen(b->GetMsgClass(), 1);
    b->SetEnabled(false);
    editor->Hover(310, 60);
    EXPECT_TRUE(b->IsMouseInside());
    editor->Click(310, 60);
    EXPECT_TRUE(b->events.empty());
    EXPECT_EQ(heard, (test::Log{"B:1:5"})) << "no enter, only a press on a disabled frame";
}

TEST_F(FrameTree, AnchoredChildrenFollowTheirParentsEdges) {
    PaintedFrame* moves = nullptr;
    PaintedFrame* stretches = nullptr;
    PaintedFrame* sinks = nullptr;
    OpenEditor([&](HeadlessEditor&, Frame& root) {
        a = new PaintedFrame(root, {0, 0, 100, 100}, kRed, "A", nullptr);
        moves = new PaintedFrame(*a, {70, 10, 90, 20}, kBlue, "", nullptr, Frame::kAnchorRight);
        stretches = new PaintedFrame(*a, {10, 30, 90, 40}, kBlue, "", nullptr,
                                     Frame::kAnchorLeft | Frame::kAnchorRight);
        sinks = new PaintedFrame(*a, {10, 80, 20, 90}, kBlue, "", nullptr,
                                 Frame::kAnchorTop | Frame::kAnchorBottom);
    });
    a->SetSize(150, 130, true);
    EXPECT_EQ(moves->GetPosition(), (Point{120, 10}));
    EXPECT_EQ(moves->GetWidth(), 20);
    EXPECT_EQ(stretches->GetPosition(), (Point{10, 30}));
    EXPECT_EQ(stretches->GetWidth(), 130);
    EXPECT_EQ(sinks->GetHeight(), 40);
    EXPECT_EQ(moves->GetWindowRect(), (Rect{120, 10, 140, 20}));
}

TEST_F(FrameTree, AMovedFrameRepaintsWhereItWasAndWhereItIs) {
    OpenEditor([&](HeadlessEditor&, Frame& root) {
        new PaintedFrame(root, {0, 0, 585, 450}, kBlack, "ground", nullptr);
        b = new PaintedFrame(root, {300, 50, 340, 90}, kBlue, "B", nullptr);
    });
    BeatAt(1);
    b->MoveTo(400, 50);
    BeatAt(2);
    EXPECT_EQ(Shot({300, 50, 302, 51}, kLegend), "..\n") << "its old place is cleared";
    EXPECT_EQ(Shot({400, 50, 402, 51}, kLegend), "bb\n");
}

TEST_F(FrameTree, AFrameThatPaintsOffscreenGivesTheSamePixels) {
    PaintedFrame* buffered = nullptr;
    OpenEditor([&](HeadlessEditor&, Frame& root) {
        a = new PaintedFrame(root, {10, 10, 60, 40}, kRed, "A", nullptr);
        buffered = new PaintedFrame(*a, {5, 5, 15, 12}, kGreen, "buf", nullptr,
                                    Frame::kOffscreen | Frame::kTransparent);
    });
    ASSERT_NE(editor->GetOffscreen(), nullptr);
    EXPECT_EQ(editor->GetOffscreen()->GetBounds(), (Rect{0, 0, 10, 7}));
    // Transparent, it starts from the parent's pixels: the outline over red.
    EXPECT_EQ(
        Shot({14, 14, 26, 23}, kLegend),
        test::Rows({"rrrrrrrrrrrr", "rggggggggggr", "rgrrrrrrrrgr", "rgrrrrrrrrgr", "rgrrrrrrrrgr",
                    "rgrrrrrrrrgr", "rgrrrrrrrrgr", "rggggggggggr", "rrrrrrrrrrrr"}));
}

TEST_F(FrameTree, ARootWithoutABufferHasFramesPaintStraight) {
    PaintedFrame* first = nullptr;
    PaintedFrame* later = nullptr;
    PaintedFrame* kept = nullptr;
    OpenEditor([&](HeadlessEditor& self, Frame& root) {
        self.declineOffscreen = true;
        first = new PaintedFrame(root, {0, 0, 10, 10}, kRed, "", nullptr, Frame::kOffscreen);
        later = new PaintedFrame(root, {10, 0, 20, 10}, kGreen, "", nullptr, Frame::kOffscreen);
        kept = new PaintedFrame(root, {20, 0, 30, 10}, kBlue, "", nullptr,
                                Frame::kOffscreen | Frame::kKeepOffscreen);
    });
    EXPECT_EQ(editor->GetOffscreen(), nullptr);
    EXPECT_TRUE(editor->DeclinesOffscreen()) << "the first frame's buffer could not be had";
    EXPECT_EQ(later->GetFlags() & Frame::kOffscreen, 0u);
    EXPECT_EQ(kept->GetFlags() & Frame::kOffscreen, Frame::kOffscreen);
    EXPECT_EQ(Shot({8, 4, 22, 5}, kLegend), "rrggggggggggbb\n");
    EXPECT_EQ(first->draws, 1);
}

TEST_F(FrameTree, KeyFocusMovesAndBothFramesRepaint) {
    OpenThree();
    BeatAt(1);
    editor->SetKeyFrame(a1);
    editor->SetKeyFrame(b);
    EXPECT_EQ(editor->GetKeyFrame(), b);
    EXPECT_EQ(editor->GetDirtyFrames(), (std::vector<Frame*>{a1, b}));
    delete b;
    EXPECT_EQ(editor->GetKeyFrame(), nullptr) << "a dying frame takes the focus with it";
}

TEST_F(FrameTree, ADyingFrameLeavesTheQueueTheCaptureAndItsParentRepaints) {
    HoldingFrame* held = nullptr;
    OpenEditor([&](HeadlessEditor&, Frame& root) {
        a = new PaintedFrame(root, {0, 0, 100, 100}, kRed, "A", &log);
        held = new HoldingFrame(*a, {10, 10, 30, 30}, kBlue, "held", &log);
    });
    BeatAt(1);
    editor->Press(15, 15);
    held->Refresh(nullptr, true);
    const auto before = Frame::LiveFrameCount();
    delete held;
    EXPECT_EQ(Frame::LiveFrameCount(), before - 1);
    EXPECT_EQ(editor->GetCaptureFrame(), nullptr);
    EXPECT_EQ(editor->GetDirtyFrames(), std::vector<Frame*>{a});
    log.clear();
    BeatAt(2);
    EXPECT_EQ(log, std::vector<std::string>{"A"});
    EXPECT_EQ(Shot({15, 15, 16, 16}, kLegend), "r\n");
}

// ---- Pixmap frames ----

// A 6 by 6 image: corners of 2 by 2 in red, edges between them green, the 2 by 2 inside blue.
// It lies at (1, 1) of a grey pixmap, so a copy that strays outside it shows.
class PixmapFrames : public EditorTest {
  protected:
    void SetUp() override {
        EditorTest::SetUp();
        art.BeginDraw();
        art.SetForeColor(kGrey);
        art.FillRect({0, 0, 8, 8});
        art.SetForeColor(kGreen);
        art.FillRect({1, 1, 7, 7});
        art.SetForeColor(kRed);
        for (Point c : {Point{1, 1}, Point{5, 1}, Point{1, 5}, Point{5, 5}})
            art.FillRect({c.x, c.y, c.x + 2, c.y + 2});
        art.SetForeColor(kBlue);
        art.FillRect({3, 3, 5, 5});
        art.EndDraw();
    }
    std::string ShotOf(const Frame& f) const { return Shot(f.GetWindowRect(), kLegend); }

    OGWorld art{Rect{0, 0, 8, 8}};
};

TEST_F(PixmapFrames, APixMapFrameCopiesItsSizeFromTheSourcePoint) {
    PixMapDrawFrame* frame = nullptr;
    OpenEditor([&](HeadlessEditor&, Frame& root) {
        frame = new PixMapDrawFrame(root, {20, 20, 24, 23}, 0, 0, &art, {3, 2});
    });
    EXPECT_EQ(ShotOf(*frame), test::Rows({"ggrr", "bbgg", "bbgg"}));
}

TEST_F(PixmapFrames, AScalableFrameOfTheSourceSizeIsAPlainCopy) {
    ScalablePmDrawFrame* frame = nullptr;
    OpenEditor([&](HeadlessEditor&, Frame& root) {
        frame = new ScalablePmDrawFrame(root, {20, 20, 26, 26}, 0, 0, &art, {1, 1}, {6, 6}, 2);
    });
    EXPECT_EQ(ShotOf(*frame),
              test::Rows({"rrggrr", "rrggrr", "ggbbgg", "ggbbgg", "rrggrr", "rrggrr"}));
}

TEST_F(PixmapFrames, AScalableFrameKeepsItsCornersAndTilesEdgesAndInside) {
    ScalablePmDrawFrame* frame = nullptr;
    OpenEditor([&](HeadlessEditor&, Frame& root) {
        frame = new ScalablePmDrawFrame(root, {20, 20, 29, 27}, 0, 0, &art, {1, 1}, {6, 6}, 2);
    });
    EXPECT_EQ(ShotOf(*frame), test::Rows({"rrgggggrr", "rrgggggrr", "ggbbbbbgg", "ggbbbbbgg",
                                          "ggbbbbbgg", "rrgggggrr", "rrgggggrr"}));
}

TEST_F(PixmapFrames, AScalableFrameBelowTwiceItsCornerOverlapsCornersAndHasNoEdges) {
    ScalablePmDrawFrame* frame = nullptr;
    OpenEditor([&](HeadlessEditor&, Frame& root) {
        frame = new ScalablePmDrawFrame(root, {20, 20, 23, 23}, 0, 0, &art, {1, 1}, {6, 6}, 2);
    });
    EXPECT_EQ(ShotOf(*frame), test::Rows({"rrr", "rrr", "rrr"}));
}

}  // namespace
}  // namespace vorix
