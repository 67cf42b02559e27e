#include "framework/MessagePublisher.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>

#include "RecordingSubscriber.h"
#include "TestServices.h"

namespace vorix {
namespace {

using test::Log;

class MessagePublisherTest : public ::testing::Test {
  protected:
    test::TestServices services;
    Log log;
    test::RecordingSubscriber subscriber{&services, "s", &log};
    std::unique_ptr<MessagePublisher> publisher = std::make_unique<MessagePublisher>(&services);
};

TEST_F(MessagePublisherTest, PublishingARefTwiceFailsWithItsTextAndKeepsTheFirstClass) {
    MsgClass* first = publisher->Publish(5);
    subscriber.Listen(first, 1);
    try {
        publisher->Publish(5);
        FAIL() << "a second Publish of one ref must fail";
    } catch (const std::invalid_argument& failure) {
        EXPECT_STREQ(failure.what(), "MessagePublisher::Publish: msgClassRef is not unique.");
    }
    EXPECT_EQ(publisher->GetMsgClass(5), first);
    publisher->Send(5, 3, 0, 0, nullptr);
    EXPECT_EQ(log, (Log{"s:1:3"}));
}

TEST_F(MessagePublisherTest, UnknownRefIsABadParameter) {
    publisher->Publish(5);
    EXPECT_THROW(publisher->Send(6, 1, 0, 0, nullptr), MessagePublisher::BadMsgClassRef);
    EXPECT_THROW(publisher->Post(6, 1, 0, NewOwnedParam(1), true), AppFrame::BadParameter);
    EXPECT_THROW(publisher->SuspendClass(true, 6), MessagePublisher::BadMsgClassRef);
    EXPECT_THROW(publisher->Unpublish(6), MessagePublisher::BadMsgClassRef);
    EXPECT_EQ(publisher->GetMsgClass(6), nullptr);
}

TEST_F(MessagePublisherTest, SendPostAndSuspendReachTheClassOfTheRef) {
    subscriber.Listen(publisher->Publish(5), 1);
    subscriber.Listen(publisher->Publish(6), 2);
    publisher->Post(6, 20, 0, 0, false);
    publisher->Send(5, 10, 7, 8, nullptr);
    EXPECT_EQ(subscriber.lastParam1, 7);
    EXPECT_EQ(subscriber.lastParam2, 8);
    publisher->SuspendClass(true, 5);
    publisher->Send(5, 11, 0, 0, nullptr);
    services.Pump();
    EXPECT_EQ(log, (Log{"s:1:10", "s:2:20"}));
}

TEST_F(MessagePublisherTest, DestructionUnpublishesSmallestRefFirst) {
    for (MsgClassRef ref : {3, -2, 0x7fffffff, -0x7fffffff - 1}) {
        subscriber.Listen(publisher->Publish(ref), ref);
    }
    publisher.reset();
    EXPECT_EQ(log, (Log{"s:-2147483648:gone", "s:-2:gone", "s:3:gone", "s:2147483647:gone"}));
}

}  // namespace
}  // namespace vorix
