#include "framework/TimerClient.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "TestServices.h"

namespace vorix {
namespace {

using Log = std::vector<std::string>;

// Logs "key@ticks" at each firing of any of its timers, then runs its action.
class Blinker : public TimerClient<Blinker> {
  public:
    Blinker(test::TestServices* services, Log* log)
        : TimerClient(services, this), services_(services), log_(log) {}

    void Start(std::int32_t key, Ticks interval) {
        StartTimer(TimerMode::kRepeating, interval, &Blinker::OnTimer, key);
    }
    void OnTimer() {
        const Ticks now = services_->GetTimerManager().Now();
        log_->push_back(std::to_string(mCurKey) + "@" + std::to_string(now));
        if (action) action(mCurKey);
    }

    std::function<void(std::int32_t)> action;

  private:
    test::TestServices* services_;
    Log* log_;
};

class TimerClientTest : public ::testing::Test {
  protected:
    std::int32_t TimerCount() { return services.GetTimerManager().GetTimerCount(); }

    test::TestServices services;
    Log log;
    Blinker blinker{&services, &log};
};

TEST_F(TimerClientTest, EachTimerCallsTheHandlerUnderItsKey) {
    blinker.Start(1, 2);
    blinker.Start(-1, 3);
    services.PumpAt({2, 3, 4, 6});
    EXPECT_EQ(log, (Log{"1@2", "-1@3", "1@4", "-1@6", "1@6"}));
}

TEST_F(TimerClientTest, KeyInUseOrWithoutTimerIsRefused) {
    blinker.Start(1, 2);
    EXPECT_THROW(blinker.Start(1, 5), Blinker::BadTimerUserId);
    EXPECT_THROW(blinker.SetTimerInterval(2, 5), Blinker::BadTimerUserId);
    EXPECT_NO_THROW(blinker.SetTimerInterval(1, 5));
    EXPECT_NO_THROW(blinker.StopTimer(2));
    EXPECT_EQ(TimerCount(), 1);
}

TEST_F(TimerClientTest, HandlerMayStopItsOwnTimer) {
    blinker.Start(1, 1);
    blinker.action = [this](std::int32_t key) { blinker.StopTimer(key); };
    services.PumpAt({1, 2});
    EXPECT_EQ(log, (Log{"1@1"}));
    EXPECT_FALSE(blinker.HasTimer(1));
    EXPECT_EQ(TimerCount(), 0);
}

TEST_F(TimerClientTest, DestructionStopsEveryTimer) {
    auto doomed = std::make_unique<Blinker>(&services, &log);
    doomed->Start(1, 1);
    doomed->Start(2, 1);
    doomed.reset();
    EXPECT_EQ(TimerCount(), 0);
}

}  // namespace
}  // namespace vorix
