#include "engine/AudioPath.h"

#include <cmath>

#include "KernelTestHelpers.h"
#include "engine/DenormalGuard.h"
#include "engine/ExternalFilter.h"
#include "engine/OutputGain.h"
#include "support/AllocationHook.h"
#include "support/AudioPathFixture.h"

namespace vorix::test {
namespace {



// Records what the audio path hands the meters.
struct PeakLog final : PeakReceiver {
    void SetPeak(float peak) noexcept override { peaks.push_back(peak); }
    std::vector<float> peaks;
};

OpaqueFilterData* NthFilter(FilterChain* chain, int index) {
    OpaqueFilterData* f = FirstFilter(chain);
    while (index-- > 0 && f != nullptr) f = NextFilter(f);
    return f;
}

// Fills a fixture with a random mixture of everything the chain walk meets: all types, split
// pairs with different halves, disabled, deleted and out-of-range records, harmonic and External
// filters. The same seed builds the same engine.
void BuildRandomEngine(AudioPathFixture& fx, uint32_t seed) {
    std::mt19937 rng(seed);
    std::uniform_real_distribution<float> unit(0.0f, 1.0f);
    const int count = static_cast<int>(rng() % 15);
    for (int i = 0; i < count; ++i) {
        const uint32_t pick = rng() % 20;
        const FilterType type = pick < 14 ? static_cast<FilterType>(1 + pick % 9)
                                : pick < 17 ? (pick % 2 ? kHarmonic4 : kHarmonic8)
                                            : kExternalFilter;
        OpaqueFilterData* left = fx.Add(type);
        OpaqueFilterData* right = left->partner.load();
        for (OpaqueFilterData* f : {left, right}) {
            if (f == nullptr) continue;
            if (type == kExternalFilter) {
                FilterDescription d;
                for (int s = 0; s < 1 + static_cast<int>(rng() % 4); ++s) {
                    d.numerators.push_back({unit(rng), unit(rng) - 0.5f, 0.3f * unit(rng)});
                    d.denominators.push_back({1.0f, 1.2f * unit(rng) - 0.6f, 0.8f * unit(rng)});
                }
                LoadExternalSections(f, d);
                continue;
            }
            SetFilterParameter(f, FilterParameterId::Frequency, 0.45f * unit(rng) * unit(rng) + 0.0005f);
            SetFilterParameter(f, FilterParameterId::Gain, 40.0f * unit(rng) - 20.0f);
            SetFilterParameter(f, FilterParameterId::Bandwidth, 0.05f + 2.0f * unit(rng));
            SetFilterParameter(f, FilterParameterId::Q, 0.3f + 3.0f * unit(rng));
            SetFilterParameter(f, FilterParameterId::HarmonicComponents, static_cast<float>(rng() % 8));
            SetFilterParameter(f, FilterParameterId::ComponentGain, static_cast<float>(rng() % 2));
        }
        const uint32_t flagPick = rng() % 12;
        if (right != nullptr && flagPick == 0) {
            left->flags = FilterFlags::LeftOnly;
            right->flags = FilterFlags::RightOnly | FilterFlags::ChannelDeleted | FilterFlags::Disabled;
        } else if (right != nullptr && flagPick == 1) {
            left->flags = FilterFlags::LeftOnly | FilterFlags::Disabled;
            right->flags = FilterFlags::RightOnly;
        } else if (flagPick == 2) {
            left->flags = FilterFlags::OutOfRange;
            if (right != nullptr) right->flags = FilterFlags::OutOfRange;
        }
    }
    fx.state.configurations[0].compensationGain[0] = 0.5f + unit(rng);
    fx.state.configurations[0].compensationGain[1] = 0.5f + unit(rng);
}

// Changes one random parameter of one random record, in both fixtures alike.
void ChangeSomething(AudioPathFixture& a, AudioPathFixture& b, std::mt19937& rng) {
    const int lane = a.state.channels == 2 ? static_cast<int>(rng() % 2) : 0;
    const int index = static_cast<int>(rng() % 16);
    const FilterParameterId id = kAllFilterParameters[rng() % 8];
    const float value = static_cast<float>(rng() % 1000) / 2000.0f;
    for (AudioPathFixture* fx : {&a, &b}) {
        if (OpaqueFilterData* f = NthFilter(fx->chains[lane], index)) SetFilterParameter(f, id, value);
    }
}

TEST(AudioPath, FastChainsEqualReferenceChainsBitForBit) {
    for (int channels : {1, 2}) {
        for (uint32_t seed = 1; seed <= 40; ++seed) {
            SCOPED_TRACE(::testing::Message() << channels << " channels, engine " << seed);
            AudioPathFixture fast(channels, 1024), reference(channels, 1024);
            BuildRandomEngine(fast, seed);
            BuildRandomEngine(reference, seed);
            reference.state.kernels = ChainKernels::Reference;
            std::mt19937 rng(seed);
            for (int round = 0; round < 8; ++round) {
                const int count = static_cast<int>(rng() % 3 == 0 ? rng() % 17 : rng() % 700);
                const int mode = round % 4 == 3 ? kFadeToBypass : (round % 4 == 2 ? kFadeFromBypass : kProcessing);
                if (rng() % 2) ChangeSomething(fast, reference, rng);
                const Block in = MakeSignal(channels, count, seed * 100 + static_cast<uint32_t>(round));
                Block outFast = in, outReference = in;
                SetGuardNoiseSeed(seed);
                fast.Process(in, outFast, count, mode);
                SetGuardNoiseSeed(seed);
                reference.Process(in, outReference, count, mode);
                for (int c = 0; c < channels; ++c) {
                    ASSERT_TRUE(SameBits(outFast[c].data(), outReference[c].data(), count))
                        << "channel " << c << ", round " << round;
                    ASSERT_EQ(fast.state.gainState[c], reference.state.gainState[c]);
                }
            }
        }
    }
}

// Solo: a stereo engine with a loud filter on either side of the soloed one.
class SoloTest : public ::testing::Test {
protected:
    void SetUp() override {
        Boost(engine_.Add(kLowShelf), 24.0f);
        soloed_ = engine_.Add(kParametric);
        Boost(soloed_, 12.0f);
        Boost(engine_.Add(kHiShelf), 24.0f);
        Boost(alone_.Add(kParametric), 12.0f);
    }

    static void Boost(OpaqueFilterData* f, float db) {
        AudioPathFixture::SetBoth(f, FilterParameterId::Gain, db);
    }

    static void Split(OpaqueFilterData* left) {
        left->flags = FilterFlags::LeftOnly;
        left->partner.load()->flags = FilterFlags::RightOnly;
    }

    // Processes the same block through the engine with solo and through `alone_`.
    void Run(Block& soloOut, Block& aloneOut) {
        soloOut = aloneOut = input_;
        SetGuardNoiseSeed(5);
        engine_.Process(input_, soloOut, 256);
        SetGuardNoiseSeed(5);
        alone_.Process(input_, aloneOut, 256);
    }

    // A dry channel: the raw input, no guard noise, at the smoothed gain from 1 to 1.
    ::testing::AssertionResult IsDry(const std::vector<float>& out, const std::vector<float>& in) {
        float g = 1.0f;
        const float k = engine_.state.gainSmoothing;
        for (size_t i = 0; i < out.size(); ++i) {
            g = (1.0f - k) * g + k * 1.0f;
            if (out[i] != g * in[i]) return ::testing::AssertionFailure() << "sample " << i;
        }
        return ::testing::AssertionSuccess();
    }

    AudioPathFixture engine_{2, 512}, alone_{2, 512};
    OpaqueFilterData* soloed_ = nullptr;
    Block input_ = MakeSignal(2, 256, 3);
};

TEST_F(SoloTest, BothChannelSoloRunsTheFilterAndItsPartnerOnly) {
    engine_.state.soloFilter = soloed_;
    Block soloOut, aloneOut;
    Run(soloOut, aloneOut);
    EXPECT_TRUE(SameBits(soloOut[0].data(), aloneOut[0].data(), 256));
    EXPECT_TRUE(SameBits(soloOut[1].data(), aloneOut[1].data(), 256));
}

TEST_F(SoloTest, SoloedLeftHalfLeavesTheRightChannelDry) {
    Split(soloed_);
    engine_.state.soloFilter = soloed_;
    Block soloOut, aloneOut;
    Run(soloOut, aloneOut);
    EXPECT_TRUE(SameBits(soloOut[0].data(), aloneOut[0].data(), 256));
    EXPECT_TRUE(IsDry(soloOut[1], input_[1]));
}

TEST_F(SoloTest, SoloedRightHalfLeavesTheLeftChannelDry) {
    Split(soloed_);
    engine_.state.soloFilter = soloed_->partner.load();
    Block soloOut, aloneOut;
    Run(soloOut, aloneOut);
    EXPECT_TRUE(IsDry(soloOut[0], input_[0]));
    EXPECT_TRUE(SameBits(soloOut[1].data(), aloneOut[1].data(), 256));
}

TEST_F(SoloTest, DisabledFilterStillSoundsWhenSoloed) {
    soloed_->flags = FilterFlags::Disabled;
    soloed_->partner.load()->flags = FilterFlags::Disabled;
    engine_.state.soloFilter = soloed_;
    Block soloOut, aloneOut;
    Run(soloOut, aloneOut);
    EXPECT_TRUE(SameBits(soloOut[0].data(), aloneOut[0].data(), 256));
}

// Bypass fades with the wet path silenced (gain 0), so the output is the dry share alone.
class FadeTest : public ::testing::Test {
protected:
    std::vector<float> Fade(int mode, int count) {
        AudioPathFixture fx(1, 512);
        fx.state.configurations[0].compensationGain[0] = 0.0f;
        fx.state.gainState[0] = 0.0f;
        Block in{std::vector<float>(static_cast<size_t>(count), 1.0f)};
        Block out = in;
        fx.Process(in, out, count, mode);
        return out[0];
    }
};

TEST_F(FadeTest, FadeToBypassStartsWetAndStopsOneStepShortOfDry) {
    const std::vector<float> out = Fade(kFadeToBypass, 100);
    EXPECT_EQ(0.0f, out[0]);
    EXPECT_NEAR(0.5f, out[50], 1e-5f);
    EXPECT_NEAR(1.0f - 1.0f / 100.0f, out[99], 1e-5f);  // r = 1/count on the last sample
}

TEST_F(FadeTest, FadeFromBypassStartsDry) {
    const std::vector<float> out = Fade(kFadeFromBypass, 64);
    EXPECT_EQ(1.0f, out[0]);
    EXPECT_NEAR(1.0f / 64.0f, out[63], 1e-5f);
}

TEST(AudioPathGain, CompensationGainGlidesWithATimeConstantOf600thOfASecond) {
    AudioPathFixture fx(1, 512, 48000.0);
    fx.state.configurations[0].compensationGain[0] = 0.5f;
    Block in{std::vector<float>(512, 1.0f)};
    Block out = in;
    fx.Process(in, out, 512);
    const double k = 600.0 / 48000.0;
    for (int n : {1, 10, 80, 400}) {  // 80 samples is one time constant
        EXPECT_NEAR(0.5 + 0.5 * std::pow(1.0 - k, n), out[0][static_cast<size_t>(n - 1)], 1e-4) << n;
    }
    EXPECT_NEAR(0.5 + 0.5 * std::pow(1.0 - k, 512), fx.state.gainState[0], 1e-5);
}

TEST(AudioPathGain, FastGainStageEqualsThePlainOneAcrossAFixedPoint) {
    for (float start : {1.0f, 0.25f, 0.5f}) {
        const std::vector<float> work = RandomBlock(300, 4);
        std::vector<float> fast(300), plain(300);
        GainSmoother a{start, 600.0f / 44100.0f, 0.5f}, b = a;
        for (int round = 0; round < 20; ++round) {
            ApplyOutputGain(a, work.data(), fast.data(), 300);
            ApplyOutputGainPlain(b, work.data(), plain.data(), 300);
            ASSERT_TRUE(SameBits(fast.data(), plain.data(), 300)) << "round " << round;
            ASSERT_EQ(a.gain, b.gain);
        }
    }
}

TEST(AudioPathGain, BypassLeavesTheGainWhereItWasAndFadesTrackIt) {
    AudioPathFixture fx(1, 512);
    fx.state.configurations[0].compensationGain[0] = 0.25f;
    Block in = MakeSignal(1, 256), out = in;
    fx.Process(in, out, 256, kBypass);
    EXPECT_EQ(1.0f, fx.state.gainState[0]);
    EXPECT_TRUE(SameBits(in[0].data(), out[0].data(), 256));
    fx.Process(in, out, 256, kFadeToBypass);
    EXPECT_LT(fx.state.gainState[0], 0.3f);
}

TEST(AudioPathLimits, CountAtTheLimitIsProcessedOneAboveIsDroppedUnmetered) {
    AudioPathFixture fx(1, 100);  // work buffers are never shorter than 2048
    PeakLog meter;
    fx.state.meters[0] = &meter;
    fx.AddParametricSpread(3);
    Block in = MakeSignal(1, 2049);
    Block out{std::vector<float>(2049, 7.0f)};
    fx.Process(in, out, 2049);
    EXPECT_EQ(7.0f, out[0][0]);
    EXPECT_TRUE(meter.peaks.empty());
    fx.Process(in, out, 2048);
    EXPECT_NE(7.0f, out[0][0]);
    EXPECT_EQ(7.0f, out[0][2048]);
    ASSERT_EQ(1u, meter.peaks.size());
}

TEST(AudioPathLimits, IdleAndUnknownModesWriteNothingButStillMeter) {
    AudioPathFixture fx(1, 512);
    PeakLog meter;
    fx.state.meters[0] = &meter;
    Block in = MakeSignal(1, 64);
    Block out{std::vector<float>(64, -0.75f)};
    for (int mode : {static_cast<int>(kIdle), 5, -1}) fx.Process(in, out, 64, mode);
    EXPECT_EQ(std::vector<float>(64, -0.75f), out[0]);
    EXPECT_EQ(std::vector<float>(3, 0.75f), meter.peaks);
}

TEST(AudioPathLimits, MeterTakesTheLargestMagnitudeAndPassesOverNaN) {
    std::vector<float> block = {0.1f, -0.9f, std::nanf(""), 0.3f, 0.2f, -0.4f, 0.95f};
    EXPECT_EQ(0.95f, CollectPeak(block.data(), 7));
    EXPECT_EQ(0.9f, CollectPeak(block.data(), 5));
    EXPECT_EQ(0.0f, CollectPeak(block.data(), 0));
}

TEST(AudioPathSignal, SilenceComesOutAsFilteredGuardNoiseNotZero) {
    AudioPathFixture fx(2, 512);
    fx.AddParametricSpread(10);
    Block in{std::vector<float>(512, 0.0f), std::vector<float>(512, 0.0f)}, out = in;
    fx.Process(in, out, 512);
    int nonZero = 0;
    for (const auto& channel : out) {
        for (float s : channel) {
            EXPECT_LT(std::fabs(s), 1e-15f);
            nonZero += s != 0.0f;
        }
    }
    EXPECT_GT(nonZero, 1000);
}

TEST(AudioPathSignal, InactiveChannelIsLeftAloneAndDrawsNoGuardNoise) {
    AudioPathFixture fx(2, 512);
    fx.state.channelActive[1] = false;
    Block in = MakeSignal(2, 100), out{in[0], std::vector<float>(100, 3.0f)};
    SetGuardNoiseSeed(9);
    fx.Process(in, out, 100);
    EXPECT_EQ(std::vector<float>(100, 3.0f), out[1]);
    uint32_t seed = 9;
    for (int i = 0; i < 100; ++i) DrawGuardValue(seed);
    EXPECT_EQ(seed, GuardNoiseSeed());
}

TEST(AudioPathRealTime, ProcessingAllocatesNothing) {
    if (!AllocationCounter::Available()) GTEST_SKIP() << "no allocation hook in this build";
    AudioPathFixture fx(2, 1024);
    BuildRandomEngine(fx, 3);
    fx.AddParametricSpread(12);
    fx.Add(kHarmonic8);
    Block in = MakeSignal(2, 1024), out = in;
    fx.Process(in, out, 1024);  // settle
    OpaqueFilterData* first = FirstFilter(fx.chains[0]);
    for (int mode : {kProcessing, kFadeToBypass, kBypass, kFadeFromBypass, kIdle}) {
        AudioPathFixture::SetBoth(first, FilterParameterId::Frequency, 0.01f * static_cast<float>(mode + 1));
        AllocationCounter allocations;
        fx.Process(in, out, 1024, mode);
        fx.state.soloFilter = first;
        fx.Process(in, out, 17, mode);
        fx.state.soloFilter = nullptr;
        EXPECT_EQ(0u, allocations.Count()) << "mode " << mode;
    }
}

}  // namespace
}  // namespace vorix::test
