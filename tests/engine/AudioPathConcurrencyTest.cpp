#include <atomic>
#include <cmath>
#include <thread>

#include "KernelTestHelpers.h"
#include "support/AudioPathFixture.h"

namespace vorix::test {
namespace {

// The audio thread processes while the editor side edits parameters, appends filters, solos
// and changes gains, as it does in the product. Under ThreadSanitizer this proves the sharing
// race-free in C++ terms; everywhere it proves the output stays finite.
TEST(AudioPathConcurrency, EditingWhileProcessingStaysFiniteAndRaceFree) {
    AudioPathFixture fx(2, 256);
    fx.AddParametricSpread(6);
    fx.Add(kHarmonic4);
    std::atomic<bool> editing{true};
    std::atomic<int> nonFinite{0};

    std::thread audio([&] {
        Block in = MakeSignal(2, 256, 11), out = in;
        for (int block = 0; editing.load() || block < 200; ++block) {
            fx.Process(in, out, 64 + block % 193);
            for (const auto& channel : out) {
                for (float s : channel) nonFinite += !std::isfinite(s);
            }
        }
    });

    std::mt19937 rng(1);
    for (int edit = 0; edit < 3000; ++edit) {
        OpaqueFilterData* f = FirstFilter(fx.chains[0]);
        for (int k = static_cast<int>(rng() % 7); k > 0 && NextFilter(f) != nullptr; --k) f = NextFilter(f);
        AudioPathFixture::SetBoth(f, FilterParameterId::Frequency, 0.001f + 0.0001f * static_cast<float>(rng() % 3000));
        AudioPathFixture::SetBoth(f, FilterParameterId::Gain, static_cast<float>(rng() % 48) - 24.0f);
        if (edit % 300 == 0) fx.Add(static_cast<FilterType>(1 + edit / 300 % 9));
        if (edit % 500 == 250) fx.state.soloFilter = f;
        if (edit % 500 == 0) fx.state.soloFilter = nullptr;
        fx.state.configurations[0].compensationGain[edit % 2] = 0.5f + 0.001f * static_cast<float>(edit % 100);
    }
    editing = false;
    audio.join();
    EXPECT_EQ(0, nonFinite.load());
}

}  // namespace
}  // namespace vorix::test
