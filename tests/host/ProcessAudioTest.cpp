#include <algorithm>
#include <array>
#include <atomic>
#include <cmath>
#include <numeric>
#include <thread>
#include <utility>

#include "HostTestSupport.h"
#include "support/AllocationHook.h"

namespace vorix::test {
namespace {

// Two channels of a block: the inputs count up from 1 (and from 1001 on the right), the outputs
// hold what the host left in them.
struct StereoBlock {
    explicit StereoBlock(std::size_t frames, float leftover = 0.0f)
        : in{std::vector<float>(frames), std::vector<float>(frames)},
          out{std::vector<float>(frames, leftover), std::vector<float>(frames, leftover)} {
        std::iota(in[0].begin(), in[0].end(), 1.0f);
        std::iota(in[1].begin(), in[1].end(), 1001.0f);
    }
    std::array<float*, 2> Inputs() { return {in[0].data(), in[1].data()}; }
    std::array<float*, 2> Outputs() { return {out[0].data(), out[1].data()}; }
    std::int32_t Frames() const { return static_cast<std::int32_t>(in[0].size()); }

    std::vector<float> in[2];
    std::vector<float> out[2];
};

class ProbeAudioTest : public ProbeFixture {
  protected:
    ProbeAudioTest() { insert_.StartProcessing(); }
    ~ProbeAudioTest() override { insert_.StopProcessing(); }

    std::int32_t Render(StereoBlock& block, bool bypass = false) {
        return insert_.Render(block.Inputs(), block.Outputs(), block.Frames(), bypass);
    }
    Insert& insert_ = MakeInsert("StRT");
};

TEST_F(ProbeAudioTest, CutsAHostBlockIntoPiecesOfTheEnginesBlockSize) {
    StereoBlock block(10000);
    EXPECT_EQ(Render(block), 10000);
    EXPECT_EQ(TakeCalls(), (Calls{{4096, 0}, {4096, 0}, {1808, 0}}));
    // Every piece went to its own place: each output sample is its own input sample.
    EXPECT_EQ(block.out[0], block.in[0]);
    EXPECT_EQ(block.out[1], block.in[1]);
}

TEST_F(ProbeAudioTest, RunsTheEngineBypassedWhileTheMasterBypassIsOn) {
    StereoBlock block(64);
    SetControl(insert_, "bypa", "1");
    Render(block);
    Render(block);
    SetControl(insert_, "bypa", "0");
    Render(block);
    Render(block);
    // The core's states: entering, bypassed, leaving, running.
    EXPECT_EQ(TakeCalls(), (Calls{{64, 3}, {64, 1}, {64, 4}, {64, 0}}));
}

TEST_F(ProbeAudioTest, CopiesTheInputsToTheOutputsBeforeTheEngineWhenTheHostBypasses) {
    StereoBlock bypassed(5000, 7.0f);
    Render(bypassed, true);
    StereoBlock running(5000, 7.0f);
    Render(running, false);
    // The probe adds its input to what the output holds.
    EXPECT_EQ(bypassed.out[1][4999], 2.0f * bypassed.in[1][4999]);
    EXPECT_EQ(bypassed.out[0][0], 2.0f);
    EXPECT_EQ(running.out[1][4999], 7.0f + running.in[1][4999]);
}

TEST_F(ProbeAudioTest, GivesUnconnectedChannelsSilenceAndASpareOutput) {
    StereoBlock block(9000, 7.0f);
    const std::array<float*, 2> inputs = {block.in[0].data(), nullptr};
    const std::array<float*, 2> outputs = {nullptr, block.out[1].data()};
    EXPECT_EQ(insert_.Render(inputs, outputs, block.Frames()), 9000);
    EXPECT_EQ(block.out[1], std::vector<float>(9000, 7.0f));
    const std::array<float*, 1> oneInput = {block.in[0].data()};
    EXPECT_EQ(insert_.Render(oneInput, block.Outputs(), block.Frames()), 9000);
    EXPECT_EQ(block.out[1][8999], 7.0f);
}

// The probe engine announces its session counter as its latency.
TEST_F(ProbeAudioTest, ReportsTheEnginesLatencyLessThirtyTwoSamples) {
    std::string latencies;
    for (const char* samples : {"0", "32", "33", "100"}) {
        SetControl(insert_, "ctbg", samples);
        latencies += std::to_string(insert_.ReadLatency()) + " ";
    }
    EXPECT_EQ(latencies, "0 0 1 68 ");
}

TEST_F(ProbeAudioTest, ReadsTheMetersByPositionWithClipsMarked) {
    const std::vector<MeterReading> meters = insert_.ReadMeters();
    std::string readings;
    for (const MeterReading& meter : meters) {
        readings +=
            meter.name + "=" + std::to_string(meter.value) + (meter.clipped ? "!" : "") + " ";
    }
    EXPECT_EQ(readings, "Clip=-1! Zero=0 Half=1073741824 Quarter=536870912 ");
    EXPECT_TRUE(insert_.IsClipIndicatorSet());
    insert_.ClearClipIndicators();
    EXPECT_FALSE(insert_.IsClipIndicatorSet());
}

using RealTimeAudioTest = HostFixture;

TEST_F(RealTimeAudioTest, RendersWithoutAllocating) {
    if (!AllocationCounter::Available()) GTEST_SKIP() << "no allocation hook in this build";
    Insert& insert = MakeInsert("StRT");
    insert.WriteControl(insert.FindControl("ctae"),
                        insert.ControlTextValue(insert.FindControl("ctae"), "6"));
    StereoBlock block(10000);
    insert.StartProcessing();
    const AllocationCounter counter;
    for (const bool bypass : {false, true, false}) {
        insert.Render(block.Inputs(), block.Outputs(), block.Frames(), bypass);
        insert.Render(block.Inputs(), block.Outputs(), 17, bypass);
    }
    EXPECT_EQ(counter.Count(), 0u);
    insert.StopProcessing();
}

// The host automates while its audio thread renders, as it does during playback.
TEST_F(RealTimeAudioTest, TakesControlChangesWhileTheAudioThreadRenders) {
    Insert& insert = MakeInsert("StRT");
    StereoBlock block(256);
    insert.StartProcessing();
    std::atomic<bool> allRendered{true};
    std::thread audio([&] {
        for (int k = 0; k < 300; ++k) {
            allRendered = allRendered && insert.Render(block.Inputs(), block.Outputs(), 256) == 256;
        }
    });
    for (int k = 0; k < 300; ++k) {
        SetControl(insert, "ctae", k % 2 == 0 ? "12" : "-12");
        SetControl(insert, "bypa", k % 7 == 0 ? "1" : "0");
        SetControl(insert, "ctbe", k % 3 == 0 ? "-6" : "0");
    }
    audio.join();
    insert.StopProcessing();
    EXPECT_TRUE(allRendered);
    EXPECT_TRUE(std::all_of(block.out[0].begin(), block.out[0].end(),
                            [](float x) { return std::isfinite(x); }));
}

}  // namespace
}  // namespace vorix::test
