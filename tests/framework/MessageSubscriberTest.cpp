#include "framework/MessageSubscriber.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>

#include "RecordingSubscriber.h"
#include "TestServices.h"
#include "framework/MessagePublisher.h"
#include "framework/SubscriptionSuspender.h"

namespace vorix {
namespace {

using test::Log;
using test::RecordingSubscriber;

class MessageSubscriberTest : public ::testing::Test {
  protected:
    void Send(MsgClassRef ref, MsgId msgId) { publisher.Send(ref, msgId, 0, 0, nullptr); }

    test::TestServices services;
    Log log;
    RecordingSubscriber first{&services, "a", &log};
    RecordingSubscriber second{&services, "b", &log};
    MessagePublisher publisher{&services};
    MsgClass* one = publisher.Publish(1);
    MsgClass* two = publisher.Publish(2);
};

TEST_F(MessageSubscriberTest, KeyInUseIsRefusedUnlessReplaced) {
    first.Listen(one, 7);
    EXPECT_THROW(first.Listen(two, 7), RecordingSubscriber::BadSubRef);
    EXPECT_THROW(first.Listen(two, 7), AppFrame::BadParameter);
    first.Listen(two, 7, true);
    first.Listen(one, 8, true);  // a free key: a plain subscription
    first.Unsubscribe(9);        // unknown keys are ignored
    first.Suspend(9, true);
    first.MoveToEnd(9);
    Send(1, 1);
    Send(2, 2);
    EXPECT_EQ(log, (Log{"a:8:1", "a:7:2"}));
    EXPECT_EQ(first.lastClass, two);
}

TEST_F(MessageSubscriberTest, MoveToEndMakesTheSubscriberHearLast) {
    first.Listen(one, 1);
    second.Listen(one, 1);
    second.MoveToEnd(1);
    Send(1, 5);
    EXPECT_EQ(log, (Log{"a:1:5", "b:1:5"}));
}

TEST_F(MessageSubscriberTest, HandlerMayUnsubscribeItselfOthersStillHear) {
    first.Listen(one, 1);
    second.Listen(one, 1);
    second.action = [this](MsgId) { second.Unsubscribe(1); };
    Send(1, 5);
    Send(1, 6);
    EXPECT_EQ(log, (Log{"b:1:5", "a:1:5", "a:1:6"}));
    EXPECT_FALSE(second.IsSubscribed(1));
}

TEST_F(MessageSubscriberTest, ClassGoneFreesTheKeyEvenForTheHandler) {
    first.Listen(one, 3);
    first.action = [this](MsgId msgId) {
        if (msgId == kMsgClassGone && first.lastClass == one) first.Listen(two, 3);
    };
    publisher.Unpublish(1);
    Send(2, 4);
    EXPECT_EQ(log, (Log{"a:3:gone", "a:3:4"}));
}

TEST_F(MessageSubscriberTest, SuspendedSubscriptionOfADyingClassIsForgottenSilently) {
    first.Listen(one, 3);
    second.Listen(one, 3);
    {
        SubscriptionSuspender quiet(first, 3);
        publisher.Unpublish(1);
        EXPECT_FALSE(first.IsSubscribed(3));
    }
    first.Listen(two, 3);
    Send(2, 4);
    EXPECT_EQ(log, (Log{"b:3:gone", "a:3:4"}));
}

TEST_F(MessageSubscriberTest, DestructionRemovesEverySubscription) {
    auto doomed = std::make_unique<RecordingSubscriber>(&services, "d", &log);
    doomed->Listen(one, 1);
    doomed->Listen(two, 2);
    doomed.reset();
    Send(1, 1);
    Send(2, 1);
    EXPECT_TRUE(log.empty());
    EXPECT_EQ(MessagingServer::GetSubscriberCount(one) + MessagingServer::GetSubscriberCount(two),
              0);
}

TEST_F(MessageSubscriberTest, SuspendersNestAndResumeOnAnException) {
    first.Listen(one, 1);
    try {
        SubscriptionSuspender outer(first, 1);
        { SubscriptionSuspender inner(first, 1); }
        Send(1, 5);
        throw std::runtime_error("edit failed");
    } catch (const std::runtime_error&) {
    }
    Send(1, 6);
    EXPECT_EQ(log, (Log{"a:1:6"}));
}

}  // namespace
}  // namespace vorix
