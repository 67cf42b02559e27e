#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

#include "EngineTestSupport.h"
#include "dsp/ExternalFilter.h"
#include "engine/FactoryPrograms.h"

namespace vorix::test {
namespace {

// An External filter whose process function stops inside the audio block until the test lets it
// go, having taken its sections as the audio thread does. What it then reads must be what it saw.
struct Gate {
    std::atomic<bool> inside{false};
    std::atomic<bool> open{false};
    std::atomic<double> sumSeen{0.0};
    std::atomic<double> sumRead{0.0};
};
Gate* gGate = nullptr;

double SumOf(std::span<FilterSection> sections) {
    double sum = 0.0;
    for (const FilterSection& s : sections) sum += s.b[0] + s.b[1] + s.b[2] + s.a[1] + s.a[2];
    return sum;
}

void HeldProcess(OpaqueFilterData* filter, const float* input, float* output, int count) noexcept {
    const std::span<FilterSection> sections = AsExternal(filter)->sections.View();
    gGate->sumSeen = SumOf(sections);
    gGate->inside = true;
    while (!gGate->open.load()) std::this_thread::yield();
    gGate->sumRead = SumOf(sections);
    ProcessSectionsBlock(filter, input, output, count);
}

FilterDescription ExternalWith(int sections) {
    FilterDescription d;
    d.type = kExternalFilter;
    for (int i = 0; i < sections; ++i) {
        d.numerators.push_back({0.5f, 0.25f * static_cast<float>(i + 1), 0.125f});
        d.denominators.push_back({1.0f, -0.5f, 0.25f});
    }
    return d;
}

class HeldAudioBlock : public ::testing::Test {
  protected:
    void SetUp() override { gGate = &gate; }
    void TearDown() override {
        gate.open = true;
        if (audio.joinable()) audio.join();
        gGate = nullptr;
    }

    // Adds an External pair, holds the audio thread inside its left record and returns it.
    OpaqueFilterData* HoldInsideNewExternal(int sections) {
        OpaqueFilterData* held = h.engine->NewFilter(kExternalFilter);
        LoadExternalSections(held, ExternalWith(sections));
        LoadExternalSections(held->partner.load(), ExternalWith(sections));
        held->process = &HeldProcess;
        audio = std::thread([this] { h.Process(Block(2, std::vector<float>(64, 0.25f))); });
        while (!gate.inside.load()) std::this_thread::yield();
        return held;
    }

    void LoadProgram(int number) {
        const std::string all = FactoryProgramsDocument();
        const size_t start = all.find("<program number=\"" + std::to_string(number) + "\"");
        const size_t body = all.find('\n', start) + 1;
        h.engine->LoadSettings(all.substr(body, all.find("</program>", body) - body));
    }

    // Everything that takes records away or hands them out, while the audio thread is held.
    void RebuildEverything() {
        for (OpaqueFilterData* f : h.Filters()) h.engine->DeleteFilter(f);
        for (int i = 0; i < 12; ++i) h.engine->NewFilter(kExternalFilter);
        h.engine->ClearConfiguration(true);
        LoadProgram(2);
        h.engine->CopyConfiguration(0, 1);
        h.engine->SelectConfiguration(1, true);
        h.engine->ClearConfiguration(true);
        for (int i = 0; i < 12; ++i) h.engine->NewFilter(kExternalFilter);
    }

    EngineHarness h;
    Gate gate;
    std::thread audio;
};

TEST_F(HeldAudioBlock, NothingItHoldsIsReusedUntilTheBlockEnds) {
    OpaqueFilterData* held = HoldInsideNewExternal(3);
    OpaqueFilterData* after = held->next.load();
    RebuildEverything();
    EXPECT_EQ(held->inUse, 1);
    EXPECT_EQ(held->type, kExternalFilter);
    EXPECT_EQ(held->next.load(), after);
    EXPECT_EQ(AsExternal(held)->sections.size(), 3u);
    gate.open = true;
    audio.join();
    EXPECT_EQ(gate.sumRead.load(), gate.sumSeen.load());
    // The block has ended: the next edit gives the record back to the pool.
    h.engine->ClearConfiguration(false);
    EXPECT_EQ(held->inUse, 0);
}

TEST_F(HeldAudioBlock, ReplacedSectionsStayReadableUntilTheBlockEnds) {
    OpaqueFilterData* held = HoldInsideNewExternal(4);
    OpaqueFilterData* right = held->partner.load();
    h.engine->SplitFilter(held, false);
    LoadExternalSections(right, ExternalWith(1));
    // Combining from the right half copies its one section over the held left half's four.
    h.engine->CombineFilter(right);
    EXPECT_EQ(AsExternal(held)->sections.size(), 1u);
    gate.open = true;
    audio.join();
    EXPECT_EQ(gate.sumRead.load(), gate.sumSeen.load());
}

}  // namespace
}  // namespace vorix::test
