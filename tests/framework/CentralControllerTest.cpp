#include "framework/CentralController.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "RecordingSubscriber.h"
#include "TestServices.h"
#include "framework/BooleanController.h"

namespace vorix {
namespace {

using test::Log;
using test::RecordingSubscriber;

// A controller that notes its change hook in the shared log.
class HookedController : public CentralController {
  public:
    HookedController(PluginServices* services, Log* log)
        : CentralController(services, 0, 10, 0, 1, nullptr), log_(log) {}

  protected:
    void OnValueChanged() override { log_->push_back("hook=" + std::to_string(GetValue())); }

  private:
    Log* log_;
};

// A controller of range 0 to 10 with two followers, "fine" (0 to 100) and "finer" (0 to 1000),
// each watched on its own class, as is the controller.
class CentralControllerTest : public ::testing::Test {
  protected:
    test::TestServices services;
    Log log;
    HookedController controller{&services, &log};
    GenericControl fine{&services, 0, 100, 0, 2, &controller};
    GenericControl finer{&services, 0, 1000, 0, 3, &controller};
    RecordingSubscriber controllerWatcher{&services, "c", controller, &log};
    RecordingSubscriber fineWatcher{&services, "fine", fine, &log};
    RecordingSubscriber finerWatcher{&services, "finer", finer, &log};
};

TEST_F(CentralControllerTest, NewFollowerTakesThePresentValueInItsRange) {
    controller.SetValue(5);
    GenericControl late(&services, 0, 100, 7, 4, &controller);
    EXPECT_EQ(late.GetValue(), 50);
    EXPECT_EQ(late.GetController(), &controller);
}

TEST_F(CentralControllerTest, ChangeOfAFollowerMovesTheOthersButNotItself) {
    fine.SetValue(33);
    EXPECT_EQ(controller.GetValue(), 3);
    EXPECT_EQ(finer.GetValue(), 300);
    EXPECT_EQ(fine.GetValue(), 33);  // the controller's 3 would map back to 30
    EXPECT_EQ(log, (Log{"hook=3", "c=3", "finer=300", "fine=33"}));
}

TEST_F(CentralControllerTest, ChangeDuringAnAnnouncementIsIgnored) {
    controllerWatcher.action = [this](MsgId) { controller.SetValue(9); };
    controller.SetValue(5);
    EXPECT_EQ(controller.GetValue(), 5);
    EXPECT_EQ(fine.GetValue(), 50);
    EXPECT_EQ(log, (Log{"hook=5", "c=5", "finer=500", "fine=50"}));
}

TEST_F(CentralControllerTest, SilentChangeOfAFollowerStillReachesItsSiblings) {
    fine.SetValueSilently(70);
    EXPECT_EQ(controller.GetValue(), 7);
    EXPECT_EQ(finer.GetValue(), 700);
    EXPECT_EQ(log, (Log{"hook=7", "c=7", "finer=700"}));
}

TEST_F(CentralControllerTest, SilentChangeOfTheControllerRunsTheHookOnly) {
    controller.SetValueSilently(4);
    EXPECT_EQ(controller.GetValue(), 4);
    EXPECT_EQ(fine.GetValue(), 0);
    EXPECT_EQ(log, (Log{"hook=4"}));
}

TEST_F(CentralControllerTest, AddedControlLeavesItsFormerController) {
    CentralController other(&services, 0, 100, 40, 9, nullptr);
    other.AddControl(&fine);
    EXPECT_EQ(fine.GetController(), &other);
    EXPECT_EQ(fine.GetValue(), 40);
    controller.SetValue(10);
    EXPECT_EQ(fine.GetValue(), 40);
    EXPECT_EQ(MessagingServer::GetSubscriberCount(controller.GetMsgClass()), 2);  // finer, c
}

TEST_F(CentralControllerTest, RemovedControlNoLongerFollowsOrLeads) {
    controller.RemoveControl(&fine);
    EXPECT_EQ(fine.GetController(), nullptr);
    controller.SetValue(10);
    fine.SetValue(20);
    EXPECT_EQ(fine.GetValue(), 20);
    EXPECT_EQ(controller.GetValue(), 10);
}

TEST_F(CentralControllerTest, DestructionOnEitherSideUndoesTheLink) {
    auto doomedFollower = std::make_unique<GenericControl>(&services, 0, 100, 0, 9, &controller);
    doomedFollower.reset();
    EXPECT_EQ(MessagingServer::GetSubscriberCount(controller.GetMsgClass()), 3);
    auto doomedController = std::make_unique<CentralController>(&services, 0, 10, 0, 8, nullptr);
    doomedController->AddControl(&fine);
    doomedController.reset();
    EXPECT_EQ(fine.GetController(), nullptr);
    fine.SetValue(20);
    EXPECT_EQ(fine.GetValue(), 20);
}

TEST_F(CentralControllerTest, GuardsAreClearedWhenASubscriberThrows) {
    controllerWatcher.action = [](MsgId) { throw std::runtime_error("subscriber failed"); };
    EXPECT_THROW(fine.SetValueSilently(50), std::runtime_error);
    controllerWatcher.action = nullptr;
    log.clear();
    controller.SetValue(2);
    fine.SetValue(30);
    EXPECT_EQ(log, (Log{"hook=2", "c=2", "finer=200", "fine=20", "hook=3", "c=3", "finer=300",
                        "fine=30"}));
}

TEST(BooleanController, FollowersSeeOffOrOn) {
    test::TestServices services;
    BooleanController flag(&services);
    GenericControl level(&services, 0, 127, 0, 1, &flag);
    flag.SetValue(5);
    EXPECT_EQ(flag.GetValue(), 1);
    EXPECT_EQ(level.GetValue(), 127);
    level.SetValue(0);
    EXPECT_EQ(flag.GetValue(), 0);
}

}  // namespace
}  // namespace vorix
