// The audio call: straight copy, the bypass states, suspension, the accumulating output, and the
// lock that stops the audio thread for a change.

#include <thread>
#include <vector>

#include "CoreTestSupport.h"
#include "core/AudioLock.h"
#include "core/BypassState.h"
#include "support/AllocationHook.h"

namespace vorix::test {
namespace {

// Two channels of audio for one call, input and output apart.
struct StereoBlock {
    explicit StereoBlock(std::size_t samples, float input = 0.5f, float output = 9.0f)
        : in{std::vector<float>(samples, input), std::vector<float>(samples, input)},
          out{std::vector<float>(samples, output), std::vector<float>(samples, output)} {}

    std::vector<float> in[2];
    std::vector<float> out[2];
    float* inputs[2] = {in[0].data(), in[1].data()};
    float* outputs[2] = {out[0].data(), out[1].data()};
};

// An audio thread that runs one block and holds it inside the engine until the gate opens.
class HeldBlock {
  public:
    explicit HeldBlock(TestCore& core) : core_(core) {
        core_.gate = &gate_;
        core_.entered = false;
        thread_ = std::thread([this] { core_.Process(nullptr, block_.outputs, 16, false, 0); });
        while (!core_.entered.load())
            std::this_thread::yield();
    }
    ~HeldBlock() { Release(); }
    void Release() {
        gate_.store(true);
        if (thread_.joinable()) thread_.join();
        core_.gate = nullptr;
    }

  private:
    TestCore& core_;
    std::atomic<bool> gate_{false};
    StereoBlock block_{16};
    std::thread thread_;
};

class PluginCoreAudio : public CoreTest {
  protected:
    // Runs one block in `mode`; answers the bypass state the engine saw, or -1 if it did not run.
    static std::int32_t Block(TestCore& core, std::int32_t mode = kBypassModeActive) {
        StereoBlock block(8);
        const std::size_t before = core.blocks;
        core.Process(block.inputs, block.outputs, 8, false, mode);
        return core.blocks > before ? core.blockStates[before] : -1;
    }
};

TEST_F(PluginCoreAudio, CopyModeCopiesInputOrNothingInPlaceAndLeavesTheEngineStill) {
    auto core = MakeCore();
    StereoBlock block(16);
    core->Process(block.inputs, block.outputs, 16, false, kBypassModeCopy);
    EXPECT_EQ(block.out[1], block.in[1]);
    EXPECT_EQ(core->blocks, 0u);
    EXPECT_EQ(Block(*core, kBypassModeEngineKept), kBypassEntering);
    block.out[0].assign(16, 9.0f);
    core->Process(block.outputs, block.outputs, 16, false, kBypassModeCopy);
    EXPECT_EQ(block.out[0], std::vector<float>(16, 9.0f));
    EXPECT_EQ(Block(*core, kBypassModeEngineKept), kBypassBypassed);  // entering was kept
}

TEST_F(PluginCoreAudio, BypassIsEnteredAndLeftThroughOneBlockEach) {
    auto core = MakeCore();
    const std::int32_t on = kBypassModeEngineKept, off = kBypassModeActive;
    std::vector<std::int32_t> seen;
    for (std::int32_t mode : {off, on, on, on, off, off, on, off, on, on})
        seen.push_back(Block(*core, mode));
    EXPECT_EQ(seen, (std::vector<std::int32_t>{kBypassRunning, kBypassEntering, kBypassBypassed,
                                               kBypassBypassed, kBypassLeaving, kBypassRunning,
                                               kBypassEntering, kBypassLeaving, kBypassEntering,
                                               kBypassBypassed}));
}

TEST_F(PluginCoreAudio, SuspendedAudioIsExactSilenceOrLeavesAnAccumulatingOutputAlone) {
    auto core = MakeCore();
    core->SuspendAudio(false);  // a surplus resume does not outweigh the suspension below
    {
        const PluginCore::AudioSuspender suspended(*core);
        StereoBlock replacing(32), accumulating(32);
        core->Process(replacing.inputs, replacing.outputs, 32, false, kBypassModeActive);
        core->Process(accumulating.inputs, accumulating.outputs, 32, true, kBypassModeActive);
        EXPECT_EQ(replacing.out[1], std::vector<float>(32, 0.0f));
        EXPECT_EQ(accumulating.out[1], std::vector<float>(32, 9.0f));
        EXPECT_EQ(core->blocks, 0u);
    }
    EXPECT_EQ(Block(*core), kBypassRunning);
}

TEST_F(PluginCoreAudio, AccumulateAddsTheEngineOutputInPiecesOfTheBlockSize) {
    auto core = MakeCore();
    StereoBlock replacing(10, 0.5f, 10.0f), pieces(10, 0.5f, 10.0f), whole(2048, 0.5f, 10.0f);
    core->Process(replacing.inputs, replacing.outputs, 10, false, kBypassModeActive);
    EXPECT_EQ(replacing.out[1], std::vector<float>(10, 1.5f));
    core->SetBlockSize(4);
    core->Process(pieces.inputs, pieces.outputs, 10, true, kBypassModeActive);
    ASSERT_EQ(core->blocks, 4u);
    EXPECT_EQ(core->blockSizes[3], 2);
    EXPECT_EQ(pieces.out[1], std::vector<float>(10, 11.5f));
    core->SetBlockSize(2048);  // beyond the first scratch size
    core->Process(whole.inputs, whole.outputs, 2048, true, kBypassModeActive);
    EXPECT_EQ(core->blocks, 5u);
    EXPECT_EQ(whole.out[1], std::vector<float>(2048, 11.5f));
}

TEST_F(PluginCoreAudio, ProcessAllocatesNothing) {
    if (!AllocationCounter::Available()) GTEST_SKIP() << "no allocation hook in this build";
    auto core = MakeCore();
    core->SetBlockSize(64);
    StereoBlock block(200);
    const AllocationCounter counter;
    for (std::int32_t mode : {kBypassModeActive, kBypassModeEngineKept, kBypassModeCopy}) {
        core->Process(block.inputs, block.outputs, 200, true, mode);
        core->Process(block.inputs, block.outputs, 64, false, mode);
    }
    core->SuspendAudio(true);
    core->Process(block.inputs, block.outputs, 200, false, kBypassModeActive);
    EXPECT_EQ(counter.Count(), 0u);
}

TEST_F(PluginCoreAudio, LockWaitsForTheBlockUnderWayAndHoldsTheEngineUntilReleased) {
    auto core = MakeCore();
    int turns = 0;
    {
        HeldBlock block(*core);
        const AudioLock lock(*core, [&] {
            if (++turns == 3) block.Release();
        });
        EXPECT_FALSE(core->IsInProcess());
        EXPECT_EQ(turns, 3);
        EXPECT_EQ(Block(*core), -1);
    }
    EXPECT_EQ(Block(*core), kBypassRunning);
    HeldBlock block(*core);
    turns = 0;
    const auto slowPump = [&] {
        ++turns;
        ticks.fetch_add(100);
    };
    EXPECT_THROW((AudioLock{*core, slowPump}), AppFrame::TimeOut);
    EXPECT_EQ(turns, 4);  // 100, 200 and 300 ticks are within the limit; 400 is not
    block.Release();
    EXPECT_EQ(Block(*core), kBypassRunning);  // the lock lifted its suspension
}

}  // namespace
}  // namespace vorix::test
