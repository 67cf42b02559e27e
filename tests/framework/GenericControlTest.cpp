#include "framework/GenericControl.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "RecordingSubscriber.h"
#include "TestServices.h"

namespace vorix {
namespace {

using test::Log;

class GenericControlTest : public ::testing::Test {
  protected:
    test::TestServices services;
    Log log;
    GenericControl control{&services, 0, 10, 3, 77, nullptr};
    test::RecordingSubscriber watcher{&services, "w", control, &log};
};

TEST_F(GenericControlTest, PresentValueIsAnnouncedOnlyWhenForced) {
    EXPECT_EQ(MessagingServer::GetClassId(control.GetMsgClass()), 77u);
    control.SetValue(3);  // the default
    control.SetValue(5);
    control.SetValue(5);
    control.ForceValue(5);
    control.ResetToDefault();
    control.ResetToDefault();
    EXPECT_EQ(log, (Log{"w=5", "w=5", "w=3", "w=3"}));
    EXPECT_EQ(watcher.lastParam2, PointerParam(&control));
}

TEST_F(GenericControlTest, NewValueIsClampedAndThePreviousOneKept) {
    control.SetValue(50);
    EXPECT_EQ(control.GetValue(), 10);
    EXPECT_EQ(control.GetPreviousValue(), 3);
    control.SetValue(-5);
    EXPECT_EQ(control.GetValue(), 0);
    EXPECT_EQ(control.GetPreviousValue(), 10);
    EXPECT_EQ(log, (Log{"w=10", "w=0"}));
}

TEST_F(GenericControlTest, SilentChangeTellsNoSubscriberAndEndsWithTheCall) {
    control.SetValueSilently(7);
    EXPECT_EQ(control.GetValue(), 7);
    EXPECT_TRUE(log.empty());
    control.SetValue(8);
    EXPECT_EQ(log, (Log{"w=8"}));
}

TEST_F(GenericControlTest, NarrowedRangeMovesTheValueToTheNearerEndQuietly) {
    control.SetValue(5);
    log.clear();
    control.SetRange(6, 20);
    EXPECT_EQ(control.GetValue(), 6);
    control.SetRange(0, 4);
    EXPECT_EQ(control.GetValue(), 4);
    EXPECT_EQ(control.GetMinimum(), 0);
    EXPECT_EQ(control.GetMaximum(), 4);
    EXPECT_TRUE(log.empty());
}

// A control that keeps its value in a copy of its own, taken before the base clamps it.
class MirroredControl : public GenericControl {
  public:
    explicit MirroredControl(PluginServices* services)
        : GenericControl(services, 0, 10, 5, 1, nullptr), mirror(5) {}
    Value GetValue() const override { return mirror; }
    void SetValue(Value newValue) override {
        mirror = newValue;
        GenericControl::SetValue(newValue);
    }
    Value mirror;
};

TEST_F(GenericControlTest, ClampingResynchronisesAValueKeptElsewhere) {
    MirroredControl mirrored(&services);
    mirrored.SetRange(0, 2);
    EXPECT_EQ(mirrored.mirror, 2);
    mirrored.SetValue(9);
    EXPECT_EQ(mirrored.mirror, 2);
}

TEST_F(GenericControlTest, DestructionTellsSubscribersTheClassIsGone) {
    auto doomed = std::make_unique<GenericControl>(&services, 0, 1, 0, 5, nullptr);
    test::RecordingSubscriber doomedWatcher(&services, "d", *doomed, &log);
    doomed.reset();
    EXPECT_EQ(log, (Log{"d:0:gone"}));
}

}  // namespace
}  // namespace vorix
