// The editor's root as the host and the user drive it: opening and closing, double clicks on
// the test's clock, the busy guard, the host's parameter highlights, error messages shown over
// the editor, the about panel, the heartbeat and the audio lock's wait.
#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <new>
#include <stdexcept>
#include <thread>

#include "EditorHarness.h"
#include "core/ErrorDisplay.h"
#include "core/ParameterHighlighter.h"
#include "framework/ErrorFrame.h"
#include "framework/FrameworkFakes.h"
#include "framework/MessagePublisher.h"
#include "framework/TimerClient.h"

namespace vorix {
namespace {

using test::EditorTest;
using test::HeadlessEditor;
using test::PaintedFrame;

constexpr RGBColor kGround{40, 40, 40};

// Parameter table positions of the test product, and their ids.
constexpr std::int32_t kFreqIndex = 0;
constexpr std::int32_t kGainIndex = 1;

class Root : public EditorTest {
  protected:
    // A ground over the whole editor holding a control-sized frame at (100, 100).
    HeadlessEditor& OpenSimple() {
        return OpenEditor([&](HeadlessEditor&, Frame& root) {
            ground = new PaintedFrame(root, {0, 0, 585, 450}, kGround, "ground", nullptr);
            control = new PaintedFrame(*ground, {100, 100, 120, 110}, kGround, "control", nullptr);
        });
    }

    PaintedFrame* ground = nullptr;
    PaintedFrame* control = nullptr;
};

// ---- Opening and closing ----

TEST_F(Root, OpeningTwiceOpensOnceAndClosingAClosedEditorDoesNothing) {
    OpenSimple();
    Frame* first = editor->GetRootFrame();
    const auto frames = Frame::LiveFrameCount();
    EXPECT_TRUE(editor->Open());
    EXPECT_EQ(editor->GetRootFrame(), first);
    EXPECT_EQ(Frame::LiveFrameCount(), frames);
    EXPECT_EQ(core->GetEditor(), editor.get());

    editor->Close();
    EXPECT_FALSE(editor->IsOpen());
    EXPECT_EQ(core->GetEditor(), nullptr);
    EXPECT_EQ(Frame::LiveFrameCount(), frames - 3);
    editor->Close();
    editor->Idle();
    editor->MouseDown(110, 105);

    EXPECT_TRUE(editor->Open()) << "an editor opens again after closing";
    EXPECT_EQ(Frame::LiveFrameCount(), frames);
}

TEST_F(Root, AnEditorThatCannotBeBuiltSaysSoAndLeavesTheCoreWithoutOne) {
    editor = std::make_unique<HeadlessEditor>(
        Core(), &resources, [](HeadlessEditor&, Frame&) { throw std::runtime_error("no art"); });
    EXPECT_FALSE(editor->Open());
    EXPECT_FALSE(editor->IsOpen());
    EXPECT_EQ(core->GetEditor(), nullptr);
    ASSERT_EQ(Messages().size(), 1u);
    EXPECT_EQ(Messages()[0], (RecordedError{"Cannot open editor window.",
                                            "An unknown error has occurred.", "", 2}));

    platform.messages.Clear();
    editor = std::make_unique<HeadlessEditor>(
        Core(), &resources, [](HeadlessEditor&, Frame&) { throw std::bad_alloc(); });
    EXPECT_FALSE(editor->Open());
    ASSERT_EQ(Messages().size(), 1u);
    EXPECT_EQ(Messages()[0].second, "There is insufficient memory available.");
}

TEST_F(Root, IdleBringsTheHostsChangesOnlyOnceTheEditorHasBeenPainted) {
    OpenEditor([](HeadlessEditor&, Frame&) {}, false);
    core->SetParameterByIndex(kGainIndex, 3.0f);
    editor->Idle();
    EXPECT_TRUE(core->editorChanges.empty()) << "nothing before the window's first paint";
    editor->Expose();
    editor->Idle();
    ASSERT_EQ(core->editorChanges.size(), 1u);
    EXPECT_EQ(core->editorChanges[0].id, test::kGainId);
    EXPECT_EQ(core->editorChanges[0].value, 3.0f);
    EXPECT_EQ(core->editorChanges[0].internalDepth, 1) << "the editor's own change";
}

// ---- The mouse ----

TEST_F(Root, ADoubleClickIsASecondPressWithin14TicksAnd4PixelsEachWay) {
    OpenSimple();
    struct Case {
        Ticks gap;
        std::int32_t dx, dy;
        bool twice;
    };
    for (const Case& c : {Case{14, 4, -4, true}, Case{15, 0, 0, false}, Case{0, 5, 0, false},
                          Case{3, 0, -5, false}, Case{1, -4, 4, true}}) {
        ticks = 1000;
        editor->Click(200, 200);
        ticks = 1000 + c.gap;
        editor->Click(200 + c.dx, 200 + c.dy);
        EXPECT_EQ(editor->IsDoubleClick(), c.twice)
            << "gap " << c.gap << ", moved " << c.dx << ", " << c.dy;
        ticks = 5000;
        editor->Click(10, 10);  // far away and long after: the next case starts afresh
    }
}

TEST_F(Root, WhileBusyTheEditorTakesNoInputAndTouchesNoFrame) {
    OpenSimple();
    BeatAt(1);
    control->Refresh(nullptr, true);
    const int draws = control->draws;
    std::int32_t fired = 0;
    struct Counter : TimerClient<Counter> {
        Counter(PluginServices* s, std::int32_t* n) : TimerClient(s, this), n(n) {}
        void Fire() { ++*n; }
        std::int32_t* n;
    } counter(core.get(), &fired);
    counter.StartTimer(TimerMode::kRepeating, 1, &Counter::Fire, 0);
    {
        PluginUIRoot::BusyGuard busy(*editor);
        PluginUIRoot::BusyGuard nested(*editor);
        editor->Click(110, 105);
        BeatAt(10);
        editor->Draw({0, 0, 585, 450});
        editor->Pump();
        EXPECT_EQ(control->events.size(), 0u);
        EXPECT_EQ(control->draws, draws);
        EXPECT_EQ(editor->GetDirtyFrames(), std::vector<Frame*>{control});
        EXPECT_EQ(fired, 0);
    }
    EXPECT_EQ(editor->GetBusyDepth(), 0);
    BeatAt(11);
    EXPECT_EQ(fired, 1);
    EXPECT_EQ(control->draws, draws + 1);
}

TEST_F(Root, TheHeartbeatGoesToTheCaptureWhileTheMouseIsHeldAndKeepsItsPace) {
    OpenSimple();
    BeatAt(1);
    control->Refresh(nullptr, true);
    EXPECT_TRUE(editor->HeartbeatByElapsedTime(1000));
    EXPECT_FALSE(editor->HeartbeatByElapsedTime(1029)) << "not yet 30 ms";
    EXPECT_TRUE(editor->HeartbeatByElapsedTime(1030));
    EXPECT_TRUE(editor->GetDirtyFrames().empty());
}

TEST_F(Root, ADeactivatedWindowLetsGoOfTheMouseAndItsFramesHearIt) {
    struct Lit : PaintedFrame {
        using PaintedFrame::PaintedFrame;
        void OnActiveChanged(bool active) override { seen.push_back(active); }
        void OnMouse(std::int32_t kind, std::int32_t x, std::int32_t y) override {
            PaintedFrame::OnMouse(kind, x, y);
            if (kind == kMouseDown) CaptureMouse();
        }
        std::vector<bool> seen;
    };
    Lit* lit = nullptr;
    OpenEditor([&](HeadlessEditor&, Frame& root) {
        auto* group = new PaintedFrame(root, {0, 0, 100, 100}, kGround, "", nullptr);
        lit = new Lit(*group, {10, 10, 30, 30}, kGround, "", nullptr, Frame::kRepaintOnActivation);
    });
    BeatAt(1);
    editor->Press(20, 20);
    ASSERT_EQ(editor->GetCaptureFrame(), lit);
    editor->Activate(false);
    EXPECT_EQ(editor->GetCaptureFrame(), nullptr);
    EXPECT_EQ(editor->Window().GetMouseCapturer(), nullptr);
    EXPECT_FALSE(lit->IsActive());
    EXPECT_EQ(lit->seen, std::vector<bool>{false});
    EXPECT_EQ(editor->GetDirtyFrames(), std::vector<Frame*>{lit}) << "it repaints on the change";
    editor->Activate(true);
    EXPECT_TRUE(lit->IsActive());
    EXPECT_EQ(lit->seen, (std::vector<bool>{false, true}));
}

TEST_F(Root, KeysGoToTheKeyFrame) {
    struct KeyFrame : PaintedFrame {
        using PaintedFrame::PaintedFrame;
        bool OnKey(std::int32_t key) override {
            keys.push_back(key);
            return true;
        }
        void OnKeyFocus(bool focused) override { focus.push_back(focused); }
        std::vector<std::int32_t> keys;
        std::vector<bool> focus;
    };
    KeyFrame* keyed = nullptr;
    OpenEditor([&](HeadlessEditor&, Frame& root) {
        keyed = new KeyFrame(root, {0, 0, 10, 10}, kGround, "", nullptr);
    });
    editor->KeyDown('a');
    editor->SetKeyFrame(keyed);
    editor->KeyDown('b');
    editor->SetKeyFrame(nullptr);
    EXPECT_EQ(keyed->keys, std::vector<std::int32_t>{'b'});
    EXPECT_EQ(keyed->focus, (std::vector<bool>{true, false}));
}

// ---- Highlights ----

class Highlights : public Root {
  protected:
    // Ten control frames of 12 by 10 in a row, bound to the gain with corner codes 0 to 9.
    void OpenBound() {
        OpenEditor([&](HeadlessEditor& e, Frame& root) {
            new PaintedFrame(root, {0, 0, 585, 450}, kGround, "ground", nullptr);
            for (std::int32_t code = 0; code < 10; ++code) {
                auto* frame = new PaintedFrame(root, {20 * code, 0, 20 * code + 12, 10}, kGround,
                                               "", nullptr);
                frames.push_back(frame);
                e.BindParameterFrame(test::kGainId, frame, code);
            }
        });
    }
    // Which of the four corner pixels of frame `code` show `color`: "TL TR BL BR" as 1 and 0.
    std::string Corners(std::int32_t code, const RGBColor& color) {
        const Rect& w = frames[static_cast<std::size_t>(code)]->GetWindowRect();
        std::string marks;
        for (Point p : {Point{w.left, w.top}, Point{w.right - 1, w.top},
                        Point{w.left, w.bottom - 1}, Point{w.right - 1, w.bottom - 1}})
            marks += editor->Window().GetPixel(p.x, p.y) == PixelOf(color) ? '1' : '0';
        return marks;
    }

    std::vector<PaintedFrame*> frames;
};

TEST_F(Highlights, EachCornerCodeDrawsItsBracketsInTheHighlightColour) {
    OpenBound();
    editor->SetParameterHighlight(kGainIndex, true, 1);
    BeatAt(1);
    const RGBColor blue{18247, 35209, 65278};
    const std::vector<std::string> expected{"1111", "0000", "1000", "0100", "0010",
                                            "0001", "1010", "0101", "1100", "0011"};
    for (std::int32_t code = 0; code < 10; ++code)
        EXPECT_EQ(Corners(code, blue), expected[static_cast<std::size_t>(code)]) << code;
    EXPECT_EQ(frames[1]->GetOverlay(), nullptr) << "corner code 1 is skipped";
    // The bracket of the top left corner: 4 pixels each way from the corner.
    const std::map<Pixel, char> legend{{PixelOf(blue), '#'}, {PixelOf(kGround), '.'}};
    EXPECT_EQ(Shot({0, 0, 6, 5}, legend),
              test::Rows({"####..", "#.....", "#.....", "#.....", "......"}));
    EXPECT_EQ(Shot({6, 5, 12, 10}, legend),
              test::Rows({"......", ".....#", ".....#", ".....#", "..####"}));
}

TEST_F(Highlights, TheColourTableAndAHighlightThatEnds) {
    OpenBound();
    for (std::int32_t colour : {0, 2, 3, 7}) {
        editor->SetParameterHighlight(kGainIndex, true, colour);
        BeatAt(colour + 1);
        EXPECT_EQ(Corners(0, DefaultParameterHighlighter::ColorOf(colour)), "1111") << colour;
    }
    EXPECT_EQ(DefaultParameterHighlighter::ColorOf(0), (RGBColor{65535, 0, 0}));
    EXPECT_EQ(DefaultParameterHighlighter::ColorOf(2), (RGBColor{0, 65535, 0}));
    EXPECT_EQ(DefaultParameterHighlighter::ColorOf(3), (RGBColor{65535, 65535, 0}));
    EXPECT_EQ(DefaultParameterHighlighter::ColorOf(7), kBlack);
    editor->SetParameterHighlight(kGainIndex, false, 0);
    BeatAt(20);
    EXPECT_EQ(frames[0]->GetOverlay(), nullptr);
    EXPECT_EQ(Corners(0, kGround), "1111");
    EXPECT_FALSE(editor->GetHighlight(kGainIndex).on);
}

TEST_F(Highlights, AnIndexOutsideTheTableChangesNothing) {
    OpenBound();
    editor->SetParameterHighlight(-1, true, 0);
    editor->SetParameterHighlight(4, true, 0);
    editor->SetParameterHighlight(kFreqIndex, true, 0);
    for (PaintedFrame* frame : frames)
        EXPECT_EQ(frame->GetOverlay(), nullptr);
}

TEST_F(Highlights, ADyingControlTakesItsBindingWithItAndANewOneShowsTheHighlight) {
    OpenBound();
    editor->SetParameterHighlight(kGainIndex, true, 2);
    delete frames[0];
    EXPECT_EQ(editor->GetBindings(test::kGainId).size(), 9u);
    editor->SetParameterHighlight(kGainIndex, false, 0);
    editor->SetParameterHighlight(kGainIndex, true, 3);  // reaches no dead frame (ASan)

    auto* late =
        new PaintedFrame(*editor->GetRootFrame(), {300, 300, 320, 320}, kGround, "", nullptr);
    editor->BindParameterFrame(test::kGainId, late, 0);
    EXPECT_NE(late->GetOverlay(), nullptr);
    editor->UnbindFrame(late);
    EXPECT_EQ(editor->GetBindings(test::kGainId).size(), 9u);
}

TEST_F(Highlights, AControlWithItsOwnHighlightIsToldInsteadOfGivenAnOverlay) {
    struct OwnHighlight : PaintedFrame, ParameterHighlightTarget {
        using PaintedFrame::PaintedFrame;
        void ShowParameterHighlight(std::int32_t id, std::int32_t colour) override {
            told.push_back("show " + std::to_string(id) + " " + std::to_string(colour));
        }
        void ClearParameterHighlight() override { told.push_back("clear"); }
        std::vector<std::string> told;
    };
    OwnHighlight* row = nullptr;
    OpenEditor([&](HeadlessEditor& e, Frame& root) {
        row = new OwnHighlight(root, {0, 0, 50, 10}, kGround, "", nullptr);
        e.BindParameterFrame(test::kFreqId, row, 0);
    });
    editor->SetParameterHighlight(kFreqIndex, true, 3);
    editor->SetParameterHighlight(kFreqIndex, false, 3);
    EXPECT_EQ(row->told, (std::vector<std::string>{"show 0 3", "clear"}));
    EXPECT_EQ(row->GetOverlay(), nullptr);
}

// ---- Errors and the about panel ----

TEST_F(Root, AnErrorWithTheEditorOpenIsAPanelOverItThatAClickClosesAtTheNextBeat) {
    OpenSimple();
    ReportError(core.get(), "Unable to load settings.", "The file is damaged.", "", 2);
    EXPECT_TRUE(Messages().empty()) << "the editor shows it, not the host";
    ASSERT_EQ(editor->GetModalFrames().size(), 1u);
    auto* panel = dynamic_cast<ErrorFrame*>(editor->GetModalFrames()[0]);
    ASSERT_NE(panel, nullptr);
    EXPECT_EQ(panel->GetTitle(), "Unable to load settings.");
    EXPECT_EQ(panel->GetMessage(), "The file is damaged.");
    EXPECT_EQ(panel->GetWindowRect(), (Rect{157, 175, 427, 275}));
    BeatAt(1);
    EXPECT_EQ(editor->Window().GetPixel(160, 178), PixelOf(kWhite));

    editor->Click(110, 105);  // anywhere: the panel takes it
    EXPECT_TRUE(control->events.empty());
    EXPECT_EQ(editor->GetModalFrames().size(), 1u) << "not inside its own mouse handler";
    BeatAt(2);
    EXPECT_TRUE(editor->GetModalFrames().empty());
    BeatAt(3);
    EXPECT_EQ(editor->Window().GetPixel(160, 178), PixelOf(kGround)) << "the editor shows again";
    editor->Click(110, 105);
    EXPECT_FALSE(control->events.empty());

    editor->Close();
    ReportError(core.get(), "Closed.", "", "", 2);
    ASSERT_EQ(Messages().size(), 1u);
    EXPECT_EQ(Messages()[0].first, "Closed.");
}

TEST_F(Root, AFailingClickIsShownOverTheEditor) {
    struct Failing : PaintedFrame {
        using PaintedFrame::PaintedFrame;
        void OnMouse(std::int32_t, std::int32_t, std::int32_t) override { throw std::bad_alloc(); }
    };
    OpenEditor([&](HeadlessEditor&, Frame& root) {
        new Failing(root, {0, 0, 50, 50}, kGround, "", nullptr);
    });
    editor->Click(10, 10);
    ASSERT_EQ(editor->GetModalFrames().size(), 1u);
    auto* panel = dynamic_cast<ErrorFrame*>(editor->GetModalFrames()[0]);
    EXPECT_EQ(panel->GetTitle(), "Cannot handle mouse click.");
    EXPECT_EQ(panel->GetMessage(), "There is insufficient memory available.");
}

TEST_F(Root, TheAboutPanelIsMadeOnceAndAClickPutsItAway) {
    OpenSimple();
    editor->ShowAbout();
    Frame* about = editor->GetAboutFrame();
    ASSERT_NE(about, nullptr);
    EXPECT_EQ(editor->GetKeyFrame(), about);
    EXPECT_EQ(about->GetWindowRect(), (Rect{0, 0, 585, 450}));
    editor->Click(300, 300);
    EXPECT_FALSE(about->IsVisible());
    EXPECT_EQ(editor->GetKeyFrame(), nullptr);
    editor->ShowAbout();
    EXPECT_EQ(editor->GetAboutFrame(), about);
    EXPECT_TRUE(about->IsVisible());
    const auto& credits = dynamic_cast<AboutFrame*>(about)->GetCredits();
    EXPECT_EQ(credits.text, "Zorvane Sound Works - made for careful listening");
    EXPECT_EQ(credits.version, "Probe 1.0");
}

// ---- The audio lock ----

// A message that the pump delivers while the lock waits.
class Poster : public MessagePublisher {
  public:
    explicit Poster(PluginServices* services) : MessagePublisher(services) { Publish(1); }
};

// An audio block under way, held inside the engine until the test's gate opens.
class HeldBlock {
  public:
    explicit HeldBlock(test::TestCore& core) : core_(core) {
        core_.gate = &gate_;
        thread_ = std::thread([this] {
            float* inputs[2] = {in_.data(), in_.data() + 64};
            float* outputs[2] = {out_.data(), out_.data() + 64};
            core_.Process(inputs, outputs, 64, false, 0);
        });
        while (!core_.entered.load())
            std::this_thread::yield();
    }
    ~HeldBlock() {
        Open();
        thread_.join();
        core_.gate = nullptr;
    }
    void Open() { gate_ = true; }

  private:
    test::TestCore& core_;
    std::atomic<bool> gate_{false};
    std::array<float, 128> in_{};
    std::array<float, 128> out_{};
    std::thread thread_;
};

TEST_F(Root, TheAudioLockKeepsThePumpRunningWhileItWaitsForTheAudioThread) {
    OpenSimple();
    Poster poster(core.get());
    test::Log log;
    test::RecordingSubscriber listener(core.get(), "pump", &log);
    listener.Listen(poster.GetMsgClass(1), 0);
    HeldBlock block(*core);
    // The block ends only when the editor's pump delivers this message.
    listener.action = [&](MsgId) { block.Open(); };
    poster.Post(1, 7, 0, 0, false);
    {
        PluginUIRoot::AudioLock lock(*editor);
        EXPECT_FALSE(core->IsInProcess());
        EXPECT_EQ(log, test::Log{"pump:0:7"});
    }
}

TEST_F(Root, TheAudioLockGivesUpAfter300Ticks) {
    OpenSimple();
    Poster poster(core.get());
    test::Log log;
    test::RecordingSubscriber listener(core.get(), "pump", &log);
    listener.Listen(poster.GetMsgClass(1), 0);
    HeldBlock block(*core);
    listener.action = [&](MsgId) { ticks = ticks + 301; };
    poster.Post(1, 7, 0, 0, false);
    EXPECT_THROW(PluginUIRoot::AudioLock lock(*editor), AppFrame::TimeOut);
    EXPECT_EQ(log.size(), 1u);
}

}  // namespace
}  // namespace vorix
