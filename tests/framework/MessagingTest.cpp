#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>

#include "FrameworkFakes.h"
#include "framework/MessagePublisher.h"
#include "framework/MessagingServer.h"
#include "framework/SubscriptionSuspender.h"

namespace vorix {
namespace {

using test::Log;
using test::RecordingSubscriber;

void Count(MsgSubscription*, void* counter, std::int32_t, MsgClass*, MsgId, MsgParam, MsgParam) {
    ++*static_cast<int*>(counter);
}

// Subscribers a, b and c; the publisher's classes 1 and 2.
class MessagingTest : public ::testing::Test {
  protected:
    void Send(MsgClassRef ref, MsgId msgId) { publisher.Send(ref, msgId, 0, 0, nullptr); }
    void ListenAll(MsgClass* msgClass, std::int32_t key) {
        for (RecordingSubscriber* subscriber : {&a, &b, &c})
            subscriber->Listen(msgClass, key);
    }

    int excludedHeard = 0;
    test::TestServices services;
    MessagingServer& server = services.GetMessagingServer();
    Log log;
    RecordingSubscriber a{&services, "a", &log};
    RecordingSubscriber b{&services, "b", &log};
    RecordingSubscriber c{&services, "c", &log};
    MessagePublisher publisher{&services};
    MsgClass* one = publisher.Publish(1);
    MsgClass* two = publisher.Publish(2);
};

TEST_F(MessagingTest, NewestSubscriberHearsFirstUntilMovedToTheEnd) {
    ListenAll(one, 1);
    Send(1, 5);
    c.MoveToEnd(1);
    Send(1, 6);
    EXPECT_EQ(log, (Log{"c:1:5", "b:1:5", "a:1:5", "b:1:6", "a:1:6", "c:1:6"}));
}

TEST_F(MessagingTest, ExcludedSubscriptionAloneMissesTheMessage) {
    a.Listen(one, 1);
    publisher.Send(1, 5, 0, 0, server.AddSubscription(one, &Count, &excludedHeard, 0));
    EXPECT_EQ(excludedHeard, 0);
    EXPECT_EQ(log, (Log{"a:1:5"}));
}

TEST_F(MessagingTest, HandlerMayUnsubscribeItselfOthersStillHear) {
    ListenAll(one, 1);
    b.action = [this](MsgId) { b.Unsubscribe(1); };
    Send(1, 5);
    Send(1, 6);
    EXPECT_EQ(log, (Log{"c:1:5", "b:1:5", "a:1:5", "c:1:6", "a:1:6"}));
    EXPECT_EQ(MessagingServer::GetSubscriberCount(one), 2);
}

TEST_F(MessagingTest, SuspensionsNestEndWithTheirScopeAndSurplusResumesAreHarmless) {
    a.Listen(one, 1);
    try {
        SubscriptionSuspender outer(a, 1);
        { SubscriptionSuspender inner(a, 1); }
        Send(1, 5);
        throw std::runtime_error("edit failed");
    } catch (const std::runtime_error&) {
    }
    a.Suspend(1, false);
    Send(1, 6);
    a.Suspend(1, true);
    Send(1, 7);
    EXPECT_EQ(log, (Log{"a:1:6"}));
}

TEST_F(MessagingTest, HandlerSuspendingTheClassSilencesTheRestOfTheWalk) {
    ListenAll(one, 1);
    b.action = [this](MsgId) { publisher.SuspendClass(true, 1); };
    Send(1, 5);
    EXPECT_EQ(log, (Log{"c:1:5", "b:1:5"}));
}

// A failing message is lost alone, so that it cannot come back at every beat.
TEST_F(MessagingTest, PostedMessagesArriveInOrderAtThePumpAndFailAlone) {
    int seen = 0;
    a.Listen(two, 1);
    a.action = [this, &seen](MsgId msgId) {
        if (msgId == 6) throw std::runtime_error("handler failed");
        if (msgId != 5) return;
        seen = *ParamPointer<int>(a.lastParam2);
        publisher.Post(2, 9, 0, 0, false);  // comes in the same run, behind the queue
    };
    publisher.Post(2, 5, 0, NewOwnedParam(42), true);
    publisher.Post(2, 6, 0, NewOwnedParam(43), true);
    EXPECT_TRUE(log.empty());
    EXPECT_THROW(services.PumpAt({0}), std::runtime_error);
    services.PumpAt({0});
    EXPECT_EQ(log, (Log{"a:1:5", "a:1:6", "a:1:9"}));
    EXPECT_EQ(seen, 42);
}

// The sanitizer build's leak checker sees whether the owned blocks are freed.
TEST_F(MessagingTest, UndeliveredMessagesGoWithTheirOwnedParameters) {
    a.Listen(one, 1);
    publisher.Post(1, 5, 0, NewOwnedParam(5), true);
    publisher.SuspendClass(true, 1);  // suspension is judged at delivery
    services.PumpAt({0});
    publisher.SuspendClass(false, 1);
    services.PumpAt({0});
    EXPECT_TRUE(log.empty());
    publisher.Post(1, 6, 0, NewOwnedParam(6), true);  // left for the server's destruction
}

// The class's destruction frees every key on it, whether its subscription heard the news or was
// suspended, so that the key can be bound anew, even from the handler, but not to the dying class.
TEST_F(MessagingTest, DyingClassFreesTheKeysOfItsSubscribers) {
    ListenAll(one, 3);
    b.action = [this](MsgId msgId) {
        if (msgId == kMsgClassGone && b.lastClass == one) b.Listen(two, 3);
    };
    c.action = [this](MsgId) { EXPECT_THROW(c.Listen(one, 4), AppFrame::BadParameter); };
    {
        SubscriptionSuspender quiet(a, 3);
        publisher.Unpublish(1);
    }
    a.Listen(two, 3);
    Send(2, 4);
    EXPECT_EQ(log, (Log{"c:3:gone", "b:3:gone", "a:3:4", "b:3:4"}));
}

TEST_F(MessagingTest, ForeignClassIsRefusedBeforeAnyoneHears) {
    MessagingServer other;
    MsgClass* foreign = other.CreateMsgClass(1);
    a.Listen(foreign, 1);
    EXPECT_THROW(server.DestroyMsgClass(foreign), MessagingServer::BadMsgClassId);
    EXPECT_TRUE(log.empty());
}

TEST_F(MessagingTest, PublisherTakesEachRefOnceAndRefusesUnknownOnes) {
    EXPECT_THAT([this] { publisher.Publish(1); },
                ::testing::ThrowsMessage<std::invalid_argument>(
                    ::testing::StrEq("MessagePublisher::Publish: msgClassRef is not unique.")));
    EXPECT_EQ(publisher.GetMsgClass(1), one);
    EXPECT_THROW(publisher.Send(6, 1, 0, 0, nullptr), MessagePublisher::BadMsgClassRef);
    EXPECT_THROW(publisher.Post(6, 1, 0, NewOwnedParam(1), true), AppFrame::BadParameter);
    EXPECT_THROW(publisher.SuspendClass(true, 6), MessagePublisher::BadMsgClassRef);
    EXPECT_THROW(publisher.Unpublish(6), MessagePublisher::BadMsgClassRef);
}

TEST_F(MessagingTest, PublisherDestructionUnpublishesSmallestRefFirst) {
    auto doomed = std::make_unique<MessagePublisher>(&services);
    for (MsgClassRef ref : {3, -2, 0x7fffffff, -0x7fffffff - 1})
        a.Listen(doomed->Publish(ref), ref);
    doomed.reset();
    EXPECT_EQ(log, (Log{"a:-2147483648:gone", "a:-2:gone", "a:3:gone", "a:2147483647:gone"}));
}

TEST_F(MessagingTest, SubscriberRefusesAKeyInUseUnlessReplaced) {
    a.Listen(one, 7);
    EXPECT_THROW(a.Listen(two, 7), RecordingSubscriber::BadSubRef);
    a.Listen(two, 7, true);
    a.Listen(one, 8, true);  // a free key: a plain subscription
    a.Unsubscribe(9);        // unknown keys are ignored
    a.Suspend(9, true);
    a.MoveToEnd(9);
    Send(1, 1);
    Send(2, 2);
    EXPECT_EQ(log, (Log{"a:8:1", "a:7:2"}));
}

TEST_F(MessagingTest, SubscriberDestructionRemovesEverySubscription) {
    auto doomed = std::make_unique<RecordingSubscriber>(&services, "d", &log);
    doomed->Listen(one, 1);
    doomed->Listen(two, 2);
    doomed.reset();
    EXPECT_EQ(MessagingServer::GetSubscriberCount(one) + MessagingServer::GetSubscriberCount(two),
              0);
}

}  // namespace
}  // namespace vorix
