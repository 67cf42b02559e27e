#include "framework/ControlContainer.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "RecordingSubscriber.h"
#include "TestServices.h"

namespace vorix {
namespace {

using test::Log;

// A container that writes its hooks into the shared log.
class RecordingContainer : public ControlContainer {
  public:
    RecordingContainer(PluginServices* services, Log* log)
        : ControlContainer(services, 0), log_(log) {}

    GenericControl* lastControl = nullptr;

  protected:
    void OnControlGone(std::int32_t id) override { log_->push_back("gone:" + std::to_string(id)); }
    void OnControlValueChanged(std::int32_t id, GenericControl::Value value,
                               GenericControl* control) override {
        log_->push_back("changed:" + std::to_string(id) + "=" + std::to_string(value));
        lastControl = control;
    }
    void OnControlMessage(std::int32_t id, MsgId msgId, MsgParam, MsgParam) override {
        log_->push_back("message:" + std::to_string(id) + ":" + std::to_string(msgId));
    }

  private:
    Log* log_;
};

// A control that notes its own destruction.
class MortalControl : public GenericControl {
  public:
    MortalControl(PluginServices* services, bool* destroyed)
        : GenericControl(services, 0, 10, 0, 1, nullptr), destroyed_(destroyed) {}
    ~MortalControl() override { *destroyed_ = true; }

  private:
    bool* destroyed_;
};

class ControlContainerTest : public ::testing::Test {
  protected:
    test::TestServices services;
    Log log;
    GenericControl control{&services, 0, 10, 0, 1, nullptr};
    test::RecordingSubscriber changeSignal{&services, "signal", &log};
    std::unique_ptr<RecordingContainer> container =
        std::make_unique<RecordingContainer>(&services, &log);
};

TEST_F(ControlContainerTest, ChildMessagesReachTheHooksAndChangesTheChangeSignal) {
    changeSignal.Listen(container->GetMsgClass(kContainerChangeRef), 0);
    container->AddControl(&control, 5, false);
    control.SetValue(3);
    services.GetMessagingServer().SendToClass(control.GetMsgClass(), kControlPressed, 0, 0,
                                              nullptr);
    EXPECT_EQ(log, (Log{"changed:5=3", "signal:0:0", "message:5:131073"}));
    EXPECT_EQ(changeSignal.lastParam1, 5);
    EXPECT_EQ(container->lastControl, &control);
}

TEST_F(ControlContainerTest, IdInUseIsRefusedAndChangesNothing) {
    GenericControl second(&services, 0, 10, 0, 2, nullptr);
    container->AddControl(&control, 5, false);
    EXPECT_THROW(container->AddControl(&second, 5, false), AppFrame::DuplicateEntry);
    EXPECT_EQ(container->GetControl(5), &control);
    EXPECT_EQ(MessagingServer::GetSubscriberCount(second.GetMsgClass()), 0);
    EXPECT_THROW(container->AddControl(nullptr, 6, false), AppFrame::BadParameter);
}

TEST_F(ControlContainerTest, DestroyedChildIsForgotten) {
    auto doomed = std::make_unique<GenericControl>(&services, 0, 10, 0, 2, nullptr);
    container->AddControl(doomed.get(), 7, false);
    doomed.reset();
    EXPECT_EQ(log, (Log{"gone:7"}));
    EXPECT_EQ(container->GetControl(7), nullptr);
}

TEST_F(ControlContainerTest, RemovedChildLivesOnUnheard) {
    container->AddControl(&control, 5, false);
    container->RemoveControl(5);
    container->RemoveControl(99);
    control.SetValue(4);
    EXPECT_TRUE(log.empty());
    EXPECT_EQ(container->GetControl(5), nullptr);
}

TEST_F(ControlContainerTest, DestructionDeletesOwnedChildrenAndReleasesTheOthers) {
    bool destroyed = false;
    container->AddControl(new MortalControl(&services, &destroyed), 1, true);
    container->AddControl(&control, 2, false);
    container.reset();
    EXPECT_TRUE(destroyed);
    EXPECT_EQ(MessagingServer::GetSubscriberCount(control.GetMsgClass()), 0);
    control.SetValue(4);
    EXPECT_TRUE(log.empty());
}

}  // namespace
}  // namespace vorix
