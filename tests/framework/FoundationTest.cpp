#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

#include "framework/Exceptions.h"
#include "framework/FourCC.h"
#include "framework/MessagingServer.h"
#include "framework/PluginServices.h"
#include "framework/PluginServicesClient.h"
#include "framework/TimerManager.h"

namespace vorix {
namespace {

using NotReady = PluginServices::PluginServicesNotReady;

TEST(Exceptions, ConstructionRecordsThePlaceOfTheThrow) {
    EXPECT_THROW(VORIX_THROW(AppFrame::TimeOut), AppFrame::Exception);
    EXPECT_EQ(AppFrame::LastExceptionLine(), __LINE__ - 1);
    EXPECT_THAT(AppFrame::LastExceptionFile(), ::testing::HasSubstr("FoundationTest.cpp"));
}

TEST(FourCC, FirstCharacterIsTheHighByte) {
    EXPECT_EQ(FourCC("flrA"), 0x666c7241u);
    EXPECT_EQ(FourCC("\xff\x01\x02 "), 0xff010220u);
}

TEST(PluginServices, ClientsReachTheServicesOfTheirOwnInstance) {
    PluginServices first;
    PluginServices second;
    PluginServicesClient client(&first);
    EXPECT_EQ(&client.GetTimerManager(), &first.GetTimerManager());
    EXPECT_EQ(&client.GetMessagingServer(), &first.GetMessagingServer());
    EXPECT_NE(&first.GetTimerManager(), &second.GetTimerManager());
    EXPECT_NE(&first.GetMessagingServer(), &second.GetMessagingServer());
}

// Services of which the test chooses which exist.
class PartialServices : public PluginServices {
  public:
    PartialServices(bool withTimers, bool withMessaging)
        : PluginServices(withTimers ? std::make_unique<TimerManager>() : nullptr,
                         withMessaging ? std::make_unique<MessagingServer>() : nullptr) {}
};

TEST(PluginServices, AbsentServiceRaisesNotReady) {
    PartialServices noTimers(false, true);
    EXPECT_THROW(PluginServicesClient(&noTimers).GetTimerManager(), NotReady);
    EXPECT_NO_THROW(noTimers.CheckMessagingServer());
    PartialServices noServer(true, false);
    EXPECT_THROW(noServer.CheckMessagingServer(), NotReady);
    EXPECT_NO_THROW(noServer.GetTimerManager());
    EXPECT_THROW(PluginServicesClient(nullptr).GetTimerManager(), NotReady);
    EXPECT_THROW(PluginServicesClient(nullptr).GetMessagingServer(), NotReady);
}

}  // namespace
}  // namespace vorix
