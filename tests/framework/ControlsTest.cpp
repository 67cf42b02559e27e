#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <random>
#include <stdexcept>
#include <string>

#include "FrameworkFakes.h"
#include "framework/BooleanController.h"
#include "framework/CentralController.h"
#include "framework/ControlContainer.h"
#include "framework/ControlMapping.h"

namespace vorix {
namespace {

using test::Log;
using test::RecordingSubscriber;

TEST(ControlMapping, EndsLandExactlyOnEnds) {
    std::mt19937 random(17);
    std::uniform_int_distribution<std::int32_t> start(-100000, 100000);
    std::uniform_int_distribution<std::int32_t> span(1, 0x10000);
    for (int i = 0; i < 1000; ++i) {
        const std::int32_t a = start(random);
        const std::int32_t c = start(random);
        const ControlRange control{a, a + span(random)};
        const ControlRange controller{c, c + span(random)};
        EXPECT_EQ(MapToControllerValue(control.minimum, control, controller), controller.minimum);
        EXPECT_EQ(MapToControllerValue(control.maximum, control, controller), controller.maximum);
        EXPECT_EQ(MapFromControllerValue(controller.minimum, controller, control), control.minimum);
        EXPECT_EQ(MapFromControllerValue(controller.maximum, controller, control), control.maximum);
    }
}

// Whenever one span is a whole multiple of the other, a value that goes across and comes back
// keeps its step: the biases beat the truncation of products like 0.29 * 100.
TEST(ControlMapping, RoundTripsKeepEveryStep) {
    std::mt19937 random(5);
    std::uniform_int_distribution<std::int32_t> start(0, 1000);
    std::uniform_int_distribution<std::int32_t> span(1, 300);
    std::uniform_int_distribution<std::int32_t> factor(1, 60);
    for (int i = 0; i < 2000; ++i) {
        const std::int32_t steps = span(random);
        const std::int32_t a = start(random);
        const std::int32_t b = start(random);
        const ControlRange narrow{a, a + steps};
        const ControlRange wide{b, b + steps * factor(random)};
        for (std::int32_t v = narrow.minimum; v <= narrow.maximum; ++v) {
            // A narrow control under a wide controller, then a wide control under a narrow one.
            ASSERT_EQ(MapFromControllerValue(MapToControllerValue(v, narrow, wide), wide, narrow),
                      v);
            ASSERT_EQ(MapToControllerValue(MapFromControllerValue(v, narrow, wide), wide, narrow),
                      v);
        }
    }
}

TEST(ControlMapping, BiasesIdentityAndTheWidestRange) {
    constexpr ControlRange kWidest{std::numeric_limits<std::int32_t>::min(),
                                   std::numeric_limits<std::int32_t>::max()};
    EXPECT_EQ(MapToControllerValue(999995, {0, 1000000}, {0, 1}), 1);  // up by 1e-05
    EXPECT_EQ(MapToControllerValue(999985, {0, 1000000}, {0, 1}), 0);
    EXPECT_EQ(MapFromControllerValue(-1, kWidest, {0, 2}), 1);  // back by 5e-10
    EXPECT_EQ(MapFromControllerValue(-2, kWidest, {0, 2}), 0);
    EXPECT_EQ(MapToControllerValue(0, kWidest, {0, 2}), 1);
    EXPECT_EQ(MapFromControllerValue(1, {0, 2}, kWidest), 0);
    // Identical ranges pass values through untouched by either bias.
    EXPECT_EQ(MapToControllerValue(-12, {-50, 50}, {-50, 50}), -12);
    EXPECT_EQ(MapFromControllerValue(-12, {-50, 50}, {-50, 50}), -12);
}

// A control that keeps its value in a copy of its own, as a view of a value kept elsewhere does.
class MirroredControl : public GenericControl {
  public:
    MirroredControl(PluginServices* services) : GenericControl(services, 0, 10, 3, 77, nullptr) {}
    Value GetValue() const override { return mirror; }
    void SetValue(Value newValue) override {
        mirror = newValue;
        GenericControl::SetValue(newValue);
    }
    Value mirror = 3;
};

// A controller that notes its change hook in the shared log.
class HookedController : public CentralController {
  public:
    HookedController(PluginServices* services, Log* log)
        : CentralController(services, 0, 10, 0, 1, nullptr), log(log) {}
    void OnValueChanged() override { log->push_back("hook=" + std::to_string(GetValue())); }
    Log* log;
};

// A lone control "s" (0 to 10, default 3, id 77); a controller "c" (0 to 10) with two followers,
// "fine" (0 to 100) and "finer" (0 to 1000). Each is watched on its own class.
class ControlsTest : public ::testing::Test {
  protected:
    test::TestServices services;
    Log log;
    MirroredControl solo{&services};
    HookedController controller{&services, &log};
    GenericControl fine{&services, 0, 100, 0, 2, &controller};
    GenericControl finer{&services, 0, 1000, 0, 3, &controller};
    RecordingSubscriber soloWatcher{&services, "s", &log, &solo};
    RecordingSubscriber controllerWatcher{&services, "c", &log, &controller};
    RecordingSubscriber fineWatcher{&services, "fine", &log, &fine};
    RecordingSubscriber finerWatcher{&services, "finer", &log, &finer};
};

TEST_F(ControlsTest, OnlyANewValueIsAnnouncedUnlessForcedOrSilent) {
    solo.SetValue(3);  // the default
    solo.SetValue(5);
    solo.SetValue(5);
    solo.ForceValue(5);
    solo.SetValueSilently(7);
    EXPECT_EQ(solo.GetValue(), 7);
    solo.ResetToDefault();
    solo.ResetToDefault();
    EXPECT_EQ(log, (Log{"s=5", "s=5", "s=3", "s=3"}));
    EXPECT_EQ(MessagingServer::GetClassId(solo.GetMsgClass()), 77u);
}

// The value seen through the control's own GetValue follows every clamp.
TEST_F(ControlsTest, ValueIsClampedLoudlyByChangesAndQuietlyByTheRange) {
    solo.SetValue(50);
    solo.SetValue(-5);
    EXPECT_EQ(solo.GetValue(), 0);
    EXPECT_EQ(solo.GetPreviousValue(), 10);
    solo.SetRange(6, 20);
    EXPECT_EQ(solo.GetValue(), 6);
    solo.SetRange(0, 4);
    EXPECT_EQ(solo.GetValue(), 4);
    EXPECT_EQ(log, (Log{"s=10", "s=0"}));
}

TEST_F(ControlsTest, ChangeOfAFollowerMovesTheOthersButNotItself) {
    fine.SetValue(33);
    EXPECT_EQ(controller.GetValue(), 3);
    EXPECT_EQ(fine.GetValue(), 33);  // the controller's 3 would map back to 30
    EXPECT_EQ(log, (Log{"hook=3", "c=3", "finer=300", "fine=33"}));
}

TEST_F(ControlsTest, ChangeDuringAnAnnouncementIsIgnored) {
    controllerWatcher.action = [this](MsgId) { controller.SetValue(9); };
    controller.SetValue(5);
    EXPECT_EQ(log, (Log{"hook=5", "c=5", "finer=500", "fine=50"}));
}

TEST_F(ControlsTest, SilentChangeOfAFollowerReachesItsSiblingsOfTheControllerOnlyItsHook) {
    fine.SetValueSilently(70);
    EXPECT_EQ(log, (Log{"hook=7", "c=7", "finer=700"}));
    log.clear();
    controller.SetValueSilently(4);
    EXPECT_EQ(fine.GetValue(), 70);
    EXPECT_EQ(log, (Log{"hook=4"}));
}

TEST_F(ControlsTest, GuardsAreClearedWhenASubscriberThrows) {
    controllerWatcher.action = [](MsgId) { throw std::runtime_error("subscriber failed"); };
    EXPECT_THROW(fine.SetValueSilently(50), std::runtime_error);
    controllerWatcher.action = nullptr;
    log.clear();
    fine.SetValue(30);
    EXPECT_EQ(log, (Log{"hook=3", "c=3", "finer=300", "fine=30"}));
}

// A follower has one controller at a time, whose value it takes at once in its own range; the
// link ends when the follower moves on or either side is destroyed.
TEST_F(ControlsTest, FollowerLinkEndsWhenEitherSideLetsGo) {
    auto other = std::make_unique<CentralController>(&services, 0, 10, 4, 9, nullptr);
    auto doomed = std::make_unique<GenericControl>(&services, 0, 1, 0, 8, &controller);
    other->AddControl(&fine);
    EXPECT_EQ(fine.GetValue(), 40);
    controller.SetValue(10);
    EXPECT_EQ(fine.GetValue(), 40);
    other.reset();
    doomed.reset();
    fine.SetValue(20);
    EXPECT_EQ(fine.GetController(), nullptr);
    EXPECT_EQ(controller.GetValue(), 10);
    EXPECT_EQ(MessagingServer::GetSubscriberCount(controller.GetMsgClass()), 2);  // finer, c
}

TEST_F(ControlsTest, BooleanFollowersSeeOffOrOn) {
    BooleanController flag(&services);
    GenericControl level(&services, 0, 127, 0, 1, &flag);
    flag.SetValue(5);
    EXPECT_EQ(level.GetValue(), 127);
    level.SetValue(0);
    EXPECT_EQ(flag.GetValue(), 0);
}

// A container that writes its hooks into the shared log.
class RecordingContainer : public ControlContainer {
  public:
    RecordingContainer(PluginServices* services, Log* log)
        : ControlContainer(services, 0), log(log) {}
    void OnControlGone(std::int32_t id) override { log->push_back("gone:" + std::to_string(id)); }
    void OnControlValueChanged(std::int32_t id, GenericControl::Value value,
                               GenericControl* control) override {
        log->push_back("changed:" + std::to_string(id) + "=" + std::to_string(value) + "@" +
                       std::to_string(control->GetControlId()));
    }
    void OnControlMessage(std::int32_t id, MsgId msgId, MsgParam, MsgParam) override {
        log->push_back("message:" + std::to_string(id) + ":" + std::to_string(msgId));
    }
    Log* log;
};

TEST_F(ControlsTest, ContainerTurnsChildMessagesIntoHooksAndChangesIntoItsSignal) {
    RecordingContainer container(&services, &log);
    RecordingSubscriber signal(&services, "signal", &log);
    signal.Listen(container.GetMsgClass(kContainerChangeRef), 0);
    container.AddControl(&solo, 5, false);
    EXPECT_THROW(container.AddControl(&fine, 5, false), AppFrame::DuplicateEntry);
    EXPECT_THROW(container.AddControl(nullptr, 6, false), AppFrame::BadParameter);
    solo.SetValue(4);
    services.GetMessagingServer().SendToClass(solo.GetMsgClass(), kControlPressed, 0, 0, nullptr);
    EXPECT_EQ(log, (Log{"changed:5=4@77", "signal:0:0", "s=4", "message:5:131073", "s:0:131073"}));
    EXPECT_EQ(signal.lastParam1, 5);
    EXPECT_EQ(container.GetControl(5), &solo);
    EXPECT_EQ(MessagingServer::GetSubscriberCount(fine.GetMsgClass()), 1);  // its watcher only
}

TEST_F(ControlsTest, ContainerForgetsWhatGoesAndDeletesWhatItOwns) {
    auto container = std::make_unique<RecordingContainer>(&services, &log);
    auto doomed = std::make_unique<GenericControl>(&services, 0, 10, 0, 8, nullptr);
    auto* owned = new GenericControl(&services, 0, 10, 0, 9, nullptr);
    RecordingSubscriber ownedWatcher(&services, "owned", &log, owned);
    container->AddControl(doomed.get(), 7, false);
    container->AddControl(owned, 1, true);
    container->AddControl(&solo, 5, false);
    container->AddControl(&fine, 6, false);
    doomed.reset();
    container->RemoveControl(5);
    solo.SetValue(4);
    EXPECT_EQ(container->GetControl(7), nullptr);
    EXPECT_EQ(container->GetControl(5), nullptr);
    container.reset();
    EXPECT_EQ(log, (Log{"gone:7", "s=4", "owned:0:gone"}));
    EXPECT_EQ(MessagingServer::GetSubscriberCount(fine.GetMsgClass()), 1);  // its watcher only
}

}  // namespace
}  // namespace vorix
