#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <mutex>
#include <random>
#include <thread>

#include "EngineTestSupport.h"
#include "engine/FactoryPrograms.h"

namespace vorix::test {
namespace {

// Every structural operation of the editor, picked at random.
void EditAtRandom(EngineHarness& h, std::mt19937& rng) {
    Ombrel& engine = *h.engine;
    const std::vector<OpaqueFilterData*> filters = h.Filters();
    OpaqueFilterData* some =
        filters.empty() ? nullptr : filters[std::uniform_int_distribution<size_t>(0, filters.size() - 1)(rng)];
    switch (std::uniform_int_distribution<int>(0, 11)(rng)) {
        case 0:
        case 1: engine.NewFilter(std::uniform_int_distribution<FilterType>(1, kLastFilterType)(rng)); break;
        case 2: engine.DeleteFilter(some); break;
        case 3:
            if (some != nullptr) engine.SplitFilter(some, true);
            break;
        case 4:
            if (some != nullptr && some->partner.load() != nullptr) engine.CombineFilter(some);
            break;
        case 5: engine.SoloFilter(rng() % 2 != 0 ? some : nullptr); break;
        case 6: engine.SelectFilter(some, false); break;
        case 7:
            if (some != nullptr) {
                SetFilterParameter(some, FilterParameterId::Gain,
                                   std::uniform_real_distribution<float>(-30.0f, 30.0f)(rng));
                engine.NotifyFilterParameterChanged(some, Bit(FilterParameterId::Gain), false);
            }
            break;
        case 8: {
            const std::string all = FactoryProgramsDocument();
            const size_t start = all.find("<program number=\"" + std::to_string(rng() % 19) + "\"");
            const size_t body = all.find('\n', start) + 1;
            engine.LoadSettings(all.substr(body, all.find("</program>", body) - body));
            break;
        }
        case 9: engine.ClearConfiguration(true); break;
        case 10: engine.CopyConfiguration(static_cast<int32_t>(rng() % 2), static_cast<int32_t>(rng() % 2)); break;
        default: engine.SelectConfiguration(static_cast<int32_t>(rng() % 2), true); break;
    }
}

// The audio thread plays on, the editor thread rebuilds the filters, and a third thread automates
// the filter controls through the host's path, all at once. The host layer serialises its control
// thread with the editor, as the engine asks (the mutex stands for the platform's); the audio thread
// takes no lock. Under ThreadSanitizer this is the proof that audio shares nothing unguarded with
// either; in every build the audio stays finite.
TEST(OmbrelStressTest, AudioEditingAndAutomationRunSideBySide) {
    EngineHarness h;
    std::atomic<bool> stop{false};
    std::atomic<bool> finite{true};
    std::atomic<long> blocks{0};
    std::mutex host;
    std::thread audio([&] {
        Block input(2, std::vector<float>(128));
        for (size_t i = 0; i < 128; ++i)
            input[0][i] = input[1][i] = static_cast<float>(0.5 * std::sin(0.07 * static_cast<double>(i)));
        while (!stop.load()) {
            const Block out = h.Process(input);
            for (float sample : out[0]) {
                if (!std::isfinite(sample)) finite = false;
            }
            ++blocks;
        }
    });
    std::atomic<long> automated{0};
    std::thread automation([&] {
        std::mt19937 rng(11);
        while (!stop.load()) {
            ++automated;
            const int32_t id = static_cast<int32_t>(rng() % kFilterControlIdCount);
            const float value = id % 3 == 0 ? std::uniform_real_distribution<float>(20.0f, 20000.0f)(rng)
                                            : std::uniform_real_distribution<float>(-18.0f, 18.0f)(rng);
            const std::lock_guard<std::mutex> serialised(host);
            h.SetHost(id, id % 3 == 2 ? std::fabs(value) / 18.0f : value);
        }
    });
    std::mt19937 rng(5);
    for (int operation = 0; operation < 3000; ++operation) {
        const std::lock_guard<std::mutex> serialised(host);
        EditAtRandom(h, rng);
    }
    stop = true;
    audio.join();
    automation.join();
    EXPECT_TRUE(finite.load());
    EXPECT_GT(blocks.load(), 0);
    // The figures of the run, for the reliability report (--gtest_output=xml).
    RecordProperty("audio_blocks", static_cast<int>(blocks.load()));
    RecordProperty("host_automation_changes", static_cast<int>(automated.load()));
}

}  // namespace
}  // namespace vorix::test
