#include "framework/TimerManager.h"

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <initializer_list>
#include <limits>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

namespace vorix {
namespace {

using Log = std::vector<std::string>;
constexpr Ticks kHighest = std::numeric_limits<Ticks>::max();
constexpr Ticks kLowest = std::numeric_limits<Ticks>::min();

class TimerManagerTest : public ::testing::Test {
  protected:
    // A timer's client: logs "name@now" at each firing, then runs its action.
    struct Probe {
        std::string name;
        TimerManagerTest* test = nullptr;
        Timer* timer = nullptr;
        Ticks lastElapsed = -1;
        std::function<void()> action;
    };

    static void Fire(Timer*, std::int32_t, void* client, Ticks elapsed) {
        auto& probe = *static_cast<Probe*>(client);
        probe.lastElapsed = elapsed;
        probe.test->log.push_back(probe.name + "@" + std::to_string(probe.test->now));
        if (probe.action) probe.action();
    }

    Probe& Start(const std::string& name, Ticks interval, TimerMode mode = TimerMode::kRepeating) {
        Probe& probe = probes[name];
        probe.name = name;
        probe.test = this;
        probe.timer = timers.AddTimer(&Fire, 0, &probe, mode, interval);
        return probe;
    }

    // One heartbeat at each of the given clock readings.
    void TickAt(std::initializer_list<Ticks> beats) {
        for (Ticks beat : beats) {
            now = beat;
            timers.Tick();
        }
    }

    Ticks now = 0;
    Log log;
    std::map<std::string, Probe> probes;
    TimerManager timers{[this] { return now; }};
};

TEST_F(TimerManagerTest, FirstFiringComesOneIntervalAfterTheStart) {
    now = 10;
    Probe& probe = Start("a", 5);
    TickAt({14, 15, 19, 20});
    EXPECT_EQ(log, (Log{"a@15", "a@20"}));
    EXPECT_EQ(probe.lastElapsed, 10);
}

TEST_F(TimerManagerTest, IntervalZeroFiresAtEveryBeat) {
    Start("a", 0);
    TickAt({0, 0, 1});
    EXPECT_EQ(log, (Log{"a@0", "a@0", "a@1"}));
}

TEST_F(TimerManagerTest, PeriodIsTheIntervalRoundedUpToTheHeartbeat) {
    Start("a", 20);  // 340 ms
    std::vector<int> firedAtMs;
    for (int ms = 30; ms <= 1100; ms += 30) {
        const auto before = log.size();
        TickAt({TicksFromMilliseconds(ms)});
        if (log.size() != before) firedAtMs.push_back(ms);
    }
    EXPECT_EQ(firedAtMs, (std::vector<int>{360, 720, 1080}));
}

TEST_F(TimerManagerTest, LateTimerFiresOnceWithoutCatchingUp) {
    Start("a", 5);
    TickAt({100, 101, 104, 105});
    EXPECT_EQ(log, (Log{"a@100", "a@105"}));
}

TEST_F(TimerManagerTest, CallbackMayRemoveItsOwnTimer) {
    Probe& probe = Start("a", 1);
    probe.action = [this, &probe] {
        timers.RemoveTimer(probe.timer);
        EXPECT_EQ(timers.GetTimerCount(), 1);  // the record lives until the walk ends
    };
    TickAt({1, 2});
    EXPECT_EQ(log, (Log{"a@1"}));
    EXPECT_EQ(timers.GetTimerCount(), 0);
}

TEST_F(TimerManagerTest, TimerRemovedByAnEarlierCallbackDoesNotFire) {
    Probe& later = Start("later", 1);
    Start("earlier", 1).action = [this, &later] {
        timers.RemoveTimer(later.timer);
        later.timer = nullptr;
    };
    TickAt({1, 2});
    EXPECT_EQ(log, (Log{"earlier@1", "earlier@2"}));
    EXPECT_EQ(timers.GetTimerCount(), 1);
}

TEST_F(TimerManagerTest, TimerStartedByACallbackWaitsForTheNextTick) {
    Start("a", 1).action = [this] {
        if (!probes.contains("new")) Start("new", 0);
    };
    TickAt({1});
    EXPECT_EQ(log, (Log{"a@1"}));
    TickAt({2});
    EXPECT_EQ(log, (Log{"a@1", "new@2", "a@2"}));
}

TEST_F(TimerManagerTest, OneShotFiresOnceUntilANewIntervalReArmsIt) {
    Probe& probe = Start("a", 5, TimerMode::kOneShot);
    TickAt({5, 10, 20});
    timers.SetInterval(probe.timer, 3);
    TickAt({22, 23, 30});
    EXPECT_EQ(log, (Log{"a@5", "a@23"}));
    EXPECT_EQ(timers.GetInterval(probe.timer), 3);
}

TEST_F(TimerManagerTest, ThrowingCallbackNeitherStopsOthersNorKeepsItsOldClock) {
    Start("steady", 5);
    Start("failing", 5).action = [] { throw std::runtime_error("client failed"); };
    EXPECT_NO_THROW(TickAt({5, 6, 10}));
    EXPECT_EQ(log, (Log{"failing@5", "steady@5", "failing@10", "steady@10"}));
}

TEST_F(TimerManagerTest, SuspendedTimerKeepsItsClockAndFiresAtTheNextTickWhenResumed) {
    Probe& probe = Start("a", 5);
    timers.SetSuspended(probe.timer, true);
    TickAt({5, 10});
    timers.SetSuspended(probe.timer, false);
    TickAt({11});
    EXPECT_EQ(log, (Log{"a@11"}));
    EXPECT_EQ(probe.lastElapsed, 11);
}

TEST_F(TimerManagerTest, RemovingATimerOfAnotherManagerFails) {
    TimerManager other{[] { return 0; }};
    Timer* foreign = other.AddTimer(&Fire, 0, nullptr, TimerMode::kRepeating, 1);
    EXPECT_THROW(timers.RemoveTimer(foreign), TimerManager::BadTimer);
    EXPECT_NO_THROW(timers.RemoveTimer(nullptr));
    EXPECT_EQ(other.GetTimerCount(), 1);
}

TEST_F(TimerManagerTest, TickFromACallbackIsIgnored) {
    Start("other", 0);
    Start("nested", 0).action = [this] { timers.Tick(); };
    TickAt({1});
    EXPECT_EQ(log, (Log{"nested@1", "other@1"}));
}

TEST_F(TimerManagerTest, TimersKeepTimeAcrossTheWrapOfTheTickCounter) {
    now = kHighest - 2;
    Probe& probe = Start("a", 5);
    TickAt({kLowest + 1});  // four ticks on
    EXPECT_TRUE(log.empty());
    TickAt({kLowest + 2});
    EXPECT_EQ(probe.lastElapsed, 5);
}

TEST(Ticks, SystemTicksAreMonotonicMillisecondsDividedBy17) {
    using namespace std::chrono;
    const auto uptimeMs = [] {
        return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
    };
    const Ticks before = TicksFromMilliseconds(uptimeMs());
    const Ticks ticks = GetTicks();
    EXPECT_GE(ticks, before);
    EXPECT_LE(ticks, TicksFromMilliseconds(uptimeMs()));
    EXPECT_EQ(TicksFromMilliseconds(339), 19);
    EXPECT_EQ(TicksFromMilliseconds(340), 20);
}

}  // namespace
}  // namespace vorix
