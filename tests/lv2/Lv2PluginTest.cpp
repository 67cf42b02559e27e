// The plug-ins running in a host: control changes mid-stream, the trims through the worker, the
// bypass, the meters, a run() that allocates nothing, and the threads a host runs it on.

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <deque>
#include <limits>
#include <map>
#include <mutex>
#include <thread>

#include "CoreRenderer.h"
#include "Lv2TestHost.h"
#include "support/AllocationHook.h"

namespace vorix::test {
namespace {

constexpr int kBlock = 256;

// Host parameters moved before the given blocks.
using Moves = std::map<int, std::vector<HostParameter>>;

class Lv2PluginRun : public ::testing::TestWithParam<int> {
  protected:
    Audio Signal() const { return TestSignal(GetParam(), 16 * kBlock); }

    Audio RunPlugin(Lv2TestInstance& plugin, const Moves& moves) {
        return plugin.Process(Signal(), kBlock, [&](int block) {
            if (moves.count(block) == 0) return;
            for (const HostParameter& p : moves.at(block))
                plugin.Set(p.symbol, p.value);
        });
    }
    Audio RunCore(const Moves& moves) {
        CoreRenderer core(GetParam(), 48000.0f, 2 * kBlock);
        return core.Process(Signal(), kBlock, [&](int block) {
            if (moves.count(block) != 0) core.Set(moves.at(block));
        });
    }
};

TEST_P(Lv2PluginRun, ControlChangesMidStreamSoundAsInTheCore) {
    const Moves moves = {{0, {{"prmControl_1_Gain", 6.0f}}},
                         {5, {{"prmControl_0_Gain", -9.0f}, {"prmControl_2_Freq", 4000.0f}}},
                         {9, {{"prmControl_1_Poly", 0.2f}}}};
    Lv2TestInstance plugin(GetParam());
    const Audio out = RunPlugin(plugin, moves);
    EXPECT_EQ(out, RunCore(moves));
    EXPECT_NE(out, Signal());
    EXPECT_TRUE(plugin.LogLines().empty());
}

// What a host or lv2apply may send beyond a parameter's range, infinities included, sounds as
// the range's end does in the core, where the host's controls hold every value to its range; a
// NaN moves nothing, the enable switch included. The audio stays finite throughout.
TEST_P(Lv2PluginRun, ValuesBeyondTheRangeSoundAsItsEndsAndANaNMovesNothing) {
    constexpr float kInf = std::numeric_limits<float>::infinity();
    constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
    const Moves sent = {
        {0,
         {{"prmControl_1_Freq", -5.0f}, {"prmControl_1_Gain", kInf}, {"prmControl_1_Poly", -kInf}}},
        {4,
         {{"prmControl_2_Freq", 1e30f},
          {"prmControl_0_Gain", -1e9f},
          {"prmControl_2_Gain", kNaN},
          {"prmLeftGain", -kInf}}},
        {9, {{"prmControl_1_Freq", kNaN}, {"enabled", kNaN}}},
        {11, {{"prmControl_1_Freq", 30000.0f}}}};
    const Moves held = {
        {0,
         {{"prmControl_1_Freq", 16.0f}, {"prmControl_1_Gain", 18.0f}, {"prmControl_1_Poly", 0.0f}}},
        {4, {{"prmControl_2_Freq", 20000.0f}, {"prmControl_0_Gain", -18.0f}}},
        {5, {{"prmLeftGain", -24.0f}}},  // through the worker, a block later
        {11, {{"prmControl_1_Freq", 20000.0f}}}};
    Lv2TestInstance plugin(GetParam());
    const Audio out = RunPlugin(plugin, sent);
    EXPECT_EQ(out, RunCore(held));
    for (const auto& channel : out) {
        EXPECT_TRUE(std::all_of(channel.begin(), channel.end(),
                                [](float sample) { return std::isfinite(sample); }));
    }
}

TEST_P(Lv2PluginRun, ATrimReachesTheEngineThroughTheWorkerByTheNextBlock) {
    Lv2TestInstance plugin(GetParam());
    EXPECT_EQ(RunPlugin(plugin, {{3, {{"prmLeftGain", 6.0f}}}}),
              RunCore({{4, {{"prmLeftGain", 6.0f}}}}));
}

TEST_P(Lv2PluginRun, WithoutAWorkerATrimActsBeforeItsBlock) {
    Lv2TestInstance plugin(GetParam(), 48000.0, {.worker = false});
    const Moves moves = {{3, {{"prmLeftGain", -7.5f}}}};
    EXPECT_EQ(RunPlugin(plugin, moves), RunCore(moves));
}

TEST_P(Lv2PluginRun, TheEnableSwitchBypassesWithTheCoresFades) {
    const Moves moves = {
        {0, {{"prmControl_1_Gain", 12.0f}}}, {4, {{"enabled", 0.0f}}}, {10, {{"enabled", 1.0f}}}};
    Lv2TestInstance plugin(GetParam());
    const Audio out = RunPlugin(plugin, moves);
    EXPECT_EQ(out, RunCore(moves));
    const std::size_t bypassed = 6 * kBlock;  // after the block that fades into bypass
    EXPECT_EQ(out[0][bypassed], Signal()[0][bypassed]);
}

TEST_P(Lv2PluginRun, MetersShowTheOutputPeakAndAnOverAsFullScale) {
    Lv2TestInstance plugin(GetParam());
    plugin.Process(Signal(), kBlock);
    EXPECT_NEAR(plugin.Get("out1"), 0.5f, 0.02f);
    Audio loud = Signal();
    for (auto& channel : loud)
        for (float& sample : channel)
            sample *= 3.0f;
    plugin.Process(loud, kBlock);
    EXPECT_EQ(plugin.Get("out1"), 1.0f);
    EXPECT_EQ(plugin.Get("latency"), 0.0f);
}

// Also in a host without a worker, where run() applies the trim itself.
TEST_P(Lv2PluginRun, RunAllocatesNothingAlsoWhenControlsMove) {
    if (!AllocationCounter::Available()) GTEST_SKIP() << "no allocation hook in this build";
    for (const bool worker : {true, false}) {
        Lv2TestInstance plugin(GetParam(), 48000.0, {.worker = worker});
        plugin.Process(Signal(), kBlock);
        const auto allocationsOfOneRun = [&] {
            AllocationCounter counter;
            plugin.RunOnce(kBlock);
            return counter.Count();
        };
        EXPECT_EQ(allocationsOfOneRun(), 0u);
        for (const char* symbol : {"prmControl_0_Freq", "prmControl_1_Gain", "prmLeftGain"})
            plugin.Set(symbol, 3.0f);
        plugin.Set("enabled", 0.0f);
        EXPECT_EQ(allocationsOfOneRun(), 0u) << "worker " << worker;
        EXPECT_EQ(plugin.QueuedWork(), worker ? 1u : 0u);  // the trim, for the worker
    }
}

INSTANTIATE_TEST_SUITE_P(MonoAndStereo, Lv2PluginRun, ::testing::Values(1, 2),
                         [](const auto& info) { return info.param == 1 ? "Mono" : "Stereo"; });

// Audio, worker and state save on three threads, as a host runs them; the sanitizer builds check
// that nothing they share is unprotected.
TEST(Lv2PluginThreads, TheWorkerAndStateSaveRunBesideTheAudio) {
    Lv2TestInstance plugin(2);
    std::mutex queueMutex;
    std::deque<Lv2TestInstance::Work> queue;
    std::atomic<bool> audioDone{false};
    std::atomic<int> saves{0};
    std::thread audio([&] {
        for (int n = 0;; ++n) {
            const bool last = n >= 300 && saves >= 3;
            plugin.Set("prmLeftGain", last ? 5.0f : n % 2 != 0 ? 3.0f : -3.0f);
            plugin.Set("prmControl_1_Gain", static_cast<float>(n % 7));
            plugin.RunOnce(64);
            const std::lock_guard lock(queueMutex);
            for (const auto& work : plugin.TakeQueuedWork())
                queue.push_back(work);
            if (last) break;
        }
        audioDone = true;
    });
    std::thread worker([&] {
        for (;;) {
            std::unique_lock lock(queueMutex);
            if (queue.empty() && audioDone) return;
            if (queue.empty()) continue;
            const Lv2TestInstance::Work work = queue.front();
            queue.pop_front();
            lock.unlock();
            plugin.DoWork(work);
        }
    });
    for (; !audioDone; ++saves) {
        EXPECT_NE(plugin.SaveSettingsValue().find("<vorix_filter_settings"), std::string::npos);
    }
    audio.join();
    worker.join();
    EXPECT_NE(plugin.SaveSettingsValue().find("<compensation_gain>5</compensation_gain>"),
              std::string::npos);
}

}  // namespace
}  // namespace vorix::test
