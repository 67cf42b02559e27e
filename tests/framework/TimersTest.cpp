#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <limits>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "FrameworkFakes.h"
#include "framework/TimerClient.h"
#include "framework/TimerManager.h"

namespace vorix {
namespace {

using test::Log;

// Logs "key@now" at each firing of any of its timers, then runs its action.
class Blinker : public TimerClient<Blinker> {
  public:
    Blinker(test::TestServices* services, Log* log) : TimerClient(services, this), log(log) {}

    void Start(std::int32_t key, Ticks interval, TimerMode mode = TimerMode::kRepeating) {
        StartTimer(mode, interval, &Blinker::OnTimer, key);
    }
    void OnTimer() {
        log->push_back(std::to_string(mCurKey) + "@" + std::to_string(GetTimerManager().Now()));
        if (action) action(mCurKey);
    }

    Log* log;
    std::function<void(std::int32_t)> action;
};

class TimersTest : public ::testing::Test {
  protected:
    test::TestServices services;
    TimerManager& timers = services.GetTimerManager();
    Log log;
    Blinker blinker{&services, &log};
};

TEST_F(TimersTest, RepeatingTimerFiresAtTheFirstBeatAnIntervalAfterItsLastFiring) {
    constexpr Ticks kHighest = std::numeric_limits<Ticks>::max();
    constexpr Ticks kLowest = std::numeric_limits<Ticks>::min();
    struct Case {
        const char* what;
        Ticks start, interval;
        std::vector<Ticks> beats;
        Log fired;
    };
    const Case cases[] = {
        {"one interval from the start", 10, 5, {14, 15, 19, 20}, {"1@15", "1@20"}},
        {"interval 0: every beat", 0, 0, {0, 0, 1}, {"1@0", "1@0", "1@1"}},
        {"rounded up to the heartbeat", 0, 5, {2, 4, 6, 8, 10, 12}, {"1@6", "1@12"}},
        {"late: no catching up", 0, 5, {100, 101, 104, 105}, {"1@100", "1@105"}},
        {"across the wrap", kHighest - 2, 5, {kLowest + 1, kLowest + 2}, {"1@-2147483646"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        Log fired;
        services.now = c.start;
        Blinker timed(&services, &fired);
        timed.Start(1, c.interval);
        services.PumpAt(c.beats);
        EXPECT_EQ(fired, c.fired);
    }
}

void NoteElapsed(Timer*, std::int32_t, void* elapsed, Ticks ticks) {
    static_cast<std::vector<Ticks>*>(elapsed)->push_back(ticks);
}

// Elapsed time counts from the start, and a suspension leaves the timer's clock running.
TEST_F(TimersTest, SuspendedTimerFiresAtTheFirstBeatAfterItsResumption) {
    std::vector<Ticks> elapsed;
    Timer* timer = timers.AddTimer(&NoteElapsed, 0, &elapsed, TimerMode::kRepeating, 5);
    services.PumpAt({5});
    timers.SetSuspended(timer, true);
    services.PumpAt({10, 15});
    timers.SetSuspended(timer, false);
    services.PumpAt({16, 20, 21});
    EXPECT_EQ(elapsed, (std::vector<Ticks>{5, 16, 21}));
}

TEST_F(TimersTest, OneShotFiresOnceUntilANewIntervalReArmsIt) {
    blinker.Start(1, 5, TimerMode::kOneShot);
    services.PumpAt({5, 10, 20});
    blinker.SetTimerInterval(1, 3);
    services.PumpAt({22, 23, 30});
    EXPECT_EQ(log, (Log{"1@5", "1@23"}));
}

// Timers are walked newest first: 2 stops 1 before its turn comes, then itself.
TEST_F(TimersTest, CallbackMayStopTimersInTheMiddleOfABeat) {
    blinker.Start(1, 1);
    blinker.Start(2, 1);
    blinker.action = [this](std::int32_t key) {
        blinker.StopTimer(1);
        blinker.StopTimer(key);
        EXPECT_EQ(timers.GetTimerCount(), 2);  // the records live until the walk ends
    };
    services.PumpAt({1, 2});
    EXPECT_EQ(log, (Log{"2@1"}));
    EXPECT_EQ(timers.GetTimerCount(), 0);
}

TEST_F(TimersTest, CallbackMayStartATimerForTheNextBeatButNotBeatAgain) {
    blinker.Start(1, 1);
    blinker.action = [this](std::int32_t key) {
        if (key == 1 && !blinker.HasTimer(2)) blinker.Start(2, 0);
        timers.Tick();
    };
    services.PumpAt({1});
    EXPECT_EQ(log, (Log{"1@1"}));
    services.PumpAt({2});
    EXPECT_EQ(log, (Log{"1@1", "2@2", "1@2"}));
}

TEST_F(TimersTest, ThrowingCallbackStopsNeitherOthersNorItsOwnClock) {
    blinker.Start(1, 5);
    blinker.Start(2, 5);
    blinker.action = [](std::int32_t key) {
        if (key == 2) throw std::runtime_error("client failed");
    };
    EXPECT_NO_THROW(services.PumpAt({5, 6, 10}));
    EXPECT_EQ(log, (Log{"2@5", "1@5", "2@10", "1@10"}));
}

TEST_F(TimersTest, ClientRefusesAKeyInUseOrWithoutTimerAndStopsAllWhenDestroyed) {
    blinker.Start(1, 2);
    EXPECT_THROW(blinker.Start(1, 5), Blinker::BadTimerUserId);
    EXPECT_THROW(blinker.SetTimerInterval(2, 5), Blinker::BadTimerUserId);
    auto doomed = std::make_unique<Blinker>(&services, &log);
    doomed->Start(1, 1);
    doomed->Start(2, 1);
    doomed.reset();
    EXPECT_EQ(timers.GetTimerCount(), 1);
}

TEST_F(TimersTest, TimerOfAnotherManagerCannotBeRemoved) {
    TimerManager other{[] { return 0; }};
    Timer* foreign = other.AddTimer(&NoteElapsed, 0, nullptr, TimerMode::kRepeating, 1);
    EXPECT_THROW(timers.RemoveTimer(foreign), TimerManager::BadTimer);
}

TEST(Ticks, SystemTicksAreMonotonicMillisecondsDividedBy17) {
    using namespace std::chrono;
    const auto uptime = [] { return steady_clock::now().time_since_epoch() / 1ms; };
    const Ticks before = TicksFromMilliseconds(uptime());
    EXPECT_GE(GetTicks(), before);
    EXPECT_LE(GetTicks(), TicksFromMilliseconds(uptime()));
    EXPECT_EQ(TicksFromMilliseconds(339), 19);
    EXPECT_EQ(TicksFromMilliseconds(340), 20);
}

}  // namespace
}  // namespace vorix
