#include "framework/PluginServices.h"

#include <gtest/gtest.h>

#include "TestServices.h"
#include "framework/MessagePublisher.h"
#include "framework/PluginServicesClient.h"

namespace vorix {
namespace {

using NotReady = PluginServices::PluginServicesNotReady;

TEST(PluginServices, ProductServicesAreReady) {
    PluginServices services;
    EXPECT_NO_THROW(services.CheckTimerManager());
    EXPECT_NO_THROW(services.CheckMessagingServer());
    PluginServicesClient client(&services);
    EXPECT_EQ(&client.GetTimerManager(), &services.GetTimerManager());
    EXPECT_EQ(&client.GetMessagingServer(), &services.GetMessagingServer());
}

TEST(PluginServices, AbsentServiceRaisesNotReady) {
    test::PartialServices noTimers(false, true);
    EXPECT_THROW(noTimers.CheckTimerManager(), NotReady);
    EXPECT_THROW(noTimers.GetTimerManager(), NotReady);
    EXPECT_NO_THROW(noTimers.GetMessagingServer());

    test::PartialServices noServer(true, false);
    EXPECT_THROW(noServer.CheckMessagingServer(), NotReady);
    EXPECT_THROW(PluginServicesClient(&noServer).GetMessagingServer(), NotReady);
}

TEST(PluginServices, ClientWithoutServicesRaisesNotReady) {
    PluginServicesClient client(nullptr);
    EXPECT_EQ(client.GetPluginServices(), nullptr);
    EXPECT_THROW(client.GetTimerManager(), NotReady);
    EXPECT_THROW(client.GetMessagingServer(), NotReady);
    EXPECT_THROW(MessagePublisher(nullptr).Publish(1), AppFrame::Exception);
}

void CountDelivery(MsgSubscription*, void* counter, std::int32_t, MsgClass*, MsgId, MsgParam,
                   MsgParam) {
    ++*static_cast<int*>(counter);
}

TEST(PluginServices, TwoInstancesDoNotHearEachOther) {
    test::TestServices first;
    test::TestServices second;
    ASSERT_NE(&first.GetMessagingServer(), &second.GetMessagingServer());
    int firstHeard = 0;
    int secondHeard = 0;
    MessagePublisher firstPublisher(&first);
    MessagePublisher secondPublisher(&second);
    first.GetMessagingServer().AddSubscription(firstPublisher.Publish(7), &CountDelivery,
                                               &firstHeard, 0);
    second.GetMessagingServer().AddSubscription(secondPublisher.Publish(7), &CountDelivery,
                                                &secondHeard, 0);
    firstPublisher.Send(7, 1, 0, 0, nullptr);
    EXPECT_EQ(firstHeard, 1);
    EXPECT_EQ(secondHeard, 0);
}

}  // namespace
}  // namespace vorix
