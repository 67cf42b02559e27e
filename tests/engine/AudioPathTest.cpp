#include "dsp/AudioPath.h"

#include <algorithm>
#include <atomic>
#include <bit>
#include <cmath>
#include <random>
#include <thread>

#include "FilterTestHelpers.h"
#include "dsp/DenormalGuard.h"
#include "dsp/ExternalFilter.h"
#include "support/AllocationHook.h"
#include "support/AudioPathFixture.h"

namespace vorix::test {
namespace {

// The generator in the registers of every instruction set, and one step at a time, against the
// sequence worked out here in 64-bit arithmetic, over odd sizes so that the wide steps and the
// tails are all exercised; input that is not a number plays as silence plus the guard value.
TEST(DenormalGuard, FastAndPlainGuardNoiseFollowTheGeneratorFromAnySeed) {
    for (CascadeIsa isa : {CascadeIsa::Sse2, CascadeIsa::Avx2, CascadeIsa::Avx512}) {
        if (!CascadeIsaSupported(isa)) continue;
        std::vector<int> sizes = OddBlockSizes();
        sizes.push_back(35);
        for (int samples : sizes) {
            SCOPED_TRACE(::testing::Message() << CascadeIsaName(isa) << ", " << samples);
            // An input this small lets every guard value show in the sum.
            std::vector<float> input(static_cast<size_t>(samples), 0x1p-66f);
            for (int i = 5; i < samples; i += 11) input[static_cast<size_t>(i)] = i % 2 ? NAN : -INFINITY;
            std::vector<float> fast(input.size()), plain(input.size());
            const uint32_t start = 77u + static_cast<uint32_t>(samples);
            SetGuardNoiseSeed(start);
            AddGuardNoise(input.data(), fast.data(), samples, isa);
            const uint32_t fastSeed = GuardNoiseSeed();
            SetGuardNoiseSeed(start);
            AddGuardNoisePlain(input.data(), plain.data(), samples);
            ASSERT_TRUE(SameBits(fast, plain));
            uint64_t seed = start;
            for (int i = 0; i < samples; ++i) {
                seed = (seed * 1234567u + 890123u) % (uint64_t{1} << 32);
                const uint32_t bits = (static_cast<uint32_t>(seed) & 0x9E7F0000u) | 0x1E000000u;
                const float playable = std::isfinite(input[i]) ? input[i] : 0.0f;
                ASSERT_EQ(plain[i], playable + std::bit_cast<float>(bits)) << "draw " << i;
            }
            ASSERT_EQ(GuardNoiseSeed(), seed);
            ASSERT_EQ(fastSeed, seed);
        }
    }
}

// Records what the audio path hands the meters.
struct PeakLog final : PeakReceiver {
    void SetPeak(float peak) noexcept override { peaks.push_back(peak); }
    std::vector<float> peaks;
};

// A random mixture of everything the chain walk meets: all types, split pairs with different
// halves, disabled, deleted and out-of-range records, harmonic and External filters. The same
// seed builds the same engine.
void BuildRandomEngine(AudioPathFixture& fx, uint32_t seed) {
    using F = FilterFlags;
    const uint32_t flagPairs[][2] = {{F::LeftOnly, F::RightOnly | F::ChannelDeleted | F::Disabled},
                                     {F::LeftOnly | F::Disabled, F::RightOnly},
                                     {F::OutOfRange, F::OutOfRange}};
    std::mt19937 rng(seed);
    std::uniform_real_distribution<float> unit(0.0f, 1.0f);
    for (int i = static_cast<int>(rng() % 15); i > 0; --i) {
        const uint32_t pick = rng() % 20, flags = rng() % 12;
        const FilterType type = pick < 14   ? static_cast<FilterType>(1 + pick % 9)
                                : pick < 17 ? kHarmonic4 + static_cast<FilterType>(pick % 2)
                                            : kExternalFilter;
        OpaqueFilterData* pair[2] = {fx.Add(type), nullptr};
        pair[1] = pair[0]->partner.load();
        for (int c = 0; c < 2 && pair[c] != nullptr; ++c) {
            FilterDescription d;
            d.numerators.assign(1 + rng() % 4, {unit(rng), unit(rng) - 0.5f, 0.3f * unit(rng)});
            d.denominators.assign(d.numerators.size(),
                                  {1.0f, 1.2f * unit(rng) - 0.6f, 0.8f * unit(rng)});
            if (type == kExternalFilter) LoadExternalSections(pair[c], d);
            SetFilterParameter(pair[c], P::Frequency, 0.45f * unit(rng) * unit(rng) + 0.0005f);
            SetFilterParameter(pair[c], P::Gain, 40.0f * unit(rng) - 20.0f);
            SetFilterParameter(pair[c], P::Bandwidth, 0.05f + 2.0f * unit(rng));
            SetFilterParameter(pair[c], P::Q, 0.3f + 3.0f * unit(rng));
            SetFilterParameter(pair[c], P::HarmonicComponents, static_cast<float>(rng() % 8));
            SetFilterParameter(pair[c], P::ComponentGain, static_cast<float>(rng() % 2));
            if (flags < 3) pair[c]->flags = flagPairs[flags][c];
        }
    }
    fx.state.configurations[0].compensationGain[0] = 0.5f + unit(rng);
    fx.state.configurations[0].compensationGain[1] = 0.5f + unit(rng);
}

// Blocks of random lengths, ramps from random parameter changes (of one half, or of both halves of
// a pair alike, which share their designs) and fades, mono and stereo, through the lane-packed
// cascades of every instruction set the processor has and through the reference walk of each
// filter's own process function.
TEST(AudioPath, FastChainsEqualReferenceChainsBitForBit) {
    for (CascadeIsa isa : {CascadeIsa::Sse2, CascadeIsa::Avx2, CascadeIsa::Avx512}) {
        if (!CascadeIsaSupported(isa)) continue;
        for (uint32_t seed = 1; seed <= 80; ++seed) {
            const int channels = 1 + static_cast<int>(seed % 2);
            SCOPED_TRACE(::testing::Message() << CascadeIsaName(isa) << ", " << channels
                                              << " channels, engine " << seed);
            AudioPathFixture fast(channels, 1024), reference(channels, 1024);
            BuildRandomEngine(fast, seed);
            BuildRandomEngine(reference, seed);
            fast.state.cascadeIsa = isa;
            reference.state.kernels = ChainKernels::Reference;
            std::mt19937 rng(seed);
            for (uint32_t round = 0; round < 8; ++round) {
                const int count = static_cast<int>(rng() % 3 == 0 ? rng() % 17 : rng() % 700);
                const int mode = round % 4 == 3   ? kFadeToBypass
                                 : round % 4 == 2 ? kFadeFromBypass
                                                  : kProcessing;
                const uint32_t lane = rng() % 2 % static_cast<uint32_t>(channels),
                               index = rng() % 16, id = rng() % 8;
                const float value = static_cast<float>(rng() % 1000) / 2000.0f;
                for (AudioPathFixture* fx : {&fast, &reference}) {  // one parameter of one record
                    OpaqueFilterData* f = FirstFilter(fx->chains[lane]);
                    for (uint32_t k = index; k > 0 && f != nullptr; --k)
                        f = NextFilter(f);
                    if (f == nullptr || round % 2 == 0) continue;
                    SetFilterParameter(f, kAllFilterParameters[id], value);
                    OpaqueFilterData* partner = f->partner.load();
                    if (round % 4 == 1 && partner != nullptr) {
                        SetFilterParameter(partner, kAllFilterParameters[id], value);
                    }
                }
                const Block in = MakeSignal(channels, count, seed * 100 + round);
                Block outFast = in, outReference = in;
                SetGuardNoiseSeed(seed);
                fast.Process(in, outFast, count, mode);
                SetGuardNoiseSeed(seed);
                reference.Process(in, outReference, count, mode);
                for (int c = 0; c < channels; ++c) {
                    ASSERT_TRUE(SameBits(outFast[c], outReference[c]))
                        << "channel " << c << ", round " << round;
                    ASSERT_EQ(fast.state.gainState[c], reference.state.gainState[c]);
                }
            }
        }
    }
}

// Both-channel pairs whose halves ramp together share each design step; halves that part (a change
// to one of them, or one ramp under way in a half that another change reaches first) ramp on their
// own. Either way the fast walk gives the reference's bits.
TEST(AudioPath, PairsThatRampTogetherEqualTheReference) {
    for (CascadeIsa isa : {CascadeIsa::Sse2, CascadeIsa::Avx2, CascadeIsa::Avx512}) {
        if (!CascadeIsaSupported(isa)) continue;
        SCOPED_TRACE(CascadeIsaName(isa));
        AudioPathFixture fast(2, 512), reference(2, 512);
        for (AudioPathFixture* fx : {&fast, &reference}) {
            fx->AddParametricSpread(6);
            AudioPathFixture::SetBoth(fx->Add(kLowShelf2), P::Gain, 6.0f);
        }
        fast.state.cascadeIsa = isa;
        reference.state.kernels = ChainKernels::Reference;
        for (int round = 0; round < 12; ++round) {
            const FilterParameterId id = round % 3 == 0 ? P::Frequency : P::Gain;
            const float value = id == P::Frequency ? 0.002f * static_cast<float>(round + 1)
                                                   : static_cast<float>(round % 5) * 3.0f - 6.0f;
            for (AudioPathFixture* fx : {&fast, &reference}) {
                OpaqueFilterData* f = FirstFilter(fx->chains[0]);
                for (int k = round % 7; k > 0; --k) f = NextFilter(f);
                if (round % 4 == 3) {
                    SetFilterParameter(f, id, value);  // the left half alone
                } else {
                    AudioPathFixture::SetBoth(f, id, value);
                }
            }
            const int count = round % 2 == 0 ? 9 : 300;
            const Block in = MakeSignal(2, count, 50u + static_cast<uint32_t>(round));
            Block outFast = in, outReference = in;
            SetGuardNoiseSeed(3);
            fast.Process(in, outFast, count);
            SetGuardNoiseSeed(3);
            reference.Process(in, outReference, count);
            for (int c = 0; c < 2; ++c) {
                ASSERT_TRUE(SameBits(outFast[c], outReference[c])) << "channel " << c << ", round " << round;
            }
        }
    }
}

// The output gain as the plain recurrence g = (1 - k) g + k t computes it, sample by sample.
std::vector<float> PlainGain(const std::vector<float>& work, float k, float gain, float target) {
    std::vector<float> out;
    for (float x : work)
        out.push_back((gain = (1.0f - k) * gain + k * target) * x);
    return out;
}

// A stereo engine with loud shelves around the soloed Parametric, against that Parametric alone;
// a channel the solo leaves out is the raw input, without guard noise, at the output gain.
TEST(AudioPath, SoloRunsTheSoloedFilterOnItsChannelsAndLeavesTheOtherDry) {
    enum Solo { kBoth, kLeftHalf, kRightHalf, kDisabled };
    for (Solo solo : {kBoth, kLeftHalf, kRightHalf, kDisabled}) {
        AudioPathFixture engine(2, 512), alone(2, 512);
        AudioPathFixture::SetBoth(engine.Add(kLowShelf), P::Gain, 24.0f);
        OpaqueFilterData* left = engine.Add(kParametric);
        OpaqueFilterData* right = left->partner.load();
        AudioPathFixture::SetBoth(engine.Add(kHiShelf), P::Gain, 24.0f);
        AudioPathFixture::SetBoth(left, P::Gain, 12.0f);
        AudioPathFixture::SetBoth(alone.Add(kParametric), P::Gain, 12.0f);
        const bool split = solo == kLeftHalf || solo == kRightHalf;
        left->flags = split ? FilterFlags::LeftOnly : solo == kDisabled ? FilterFlags::Disabled : 0;
        right->flags = split ? FilterFlags::RightOnly : left->flags.Load();
        engine.state.soloFilter = solo == kRightHalf ? right : left;
        const Block in = MakeSignal(2, 256, 3);
        Block soloOut = in, aloneOut = in;
        for (AudioPathFixture* fx : {&engine, &alone}) {
            fx->state.configurations[0].compensationGain[0] =
                fx->state.configurations[0].compensationGain[1] = 0.5f;
            SetGuardNoiseSeed(5);
            fx->Process(in, fx == &engine ? soloOut : aloneOut, 256);
        }
        for (int c = 0; c < 2; ++c) {
            const bool dry = (solo == kLeftHalf && c == 1) || (solo == kRightHalf && c == 0);
            const std::vector<float> expected =
                dry ? PlainGain(in[c], engine.state.gainSmoothing, 1.0f, 0.5f) : aloneOut[c];
            EXPECT_TRUE(SameBits(soloOut[c], expected)) << "solo " << solo << ", channel " << c;
        }
    }
}

// Bit for bit the plain recurrence, across the point where the gain settles and the fast stage
// stops recomputing it; held through bypass; tracked through a fade. With the wet path silenced a
// fade leaves the dry share alone: r runs from 1 to 1/count towards bypass, so that the following
// bypass block completes it, and from 0 the other way.
TEST(AudioPath, CompensationGainGlidesHoldsInBypassAndFadesCrossOverABlock) {
    AudioPathFixture fx(1, 512, 48000.0);
    fx.state.configurations[0].compensationGain[0] = 0.5f;
    ASSERT_FLOAT_EQ(fx.state.gainSmoothing, 600.0f / 48000.0f);  // a time constant of 1/600 s
    const Block ones(1, std::vector<float>(512, 1.0f));
    Block out = ones;
    float gain = 1.0f;
    for (int block = 0; block < 6; ++block) {
        fx.Process(ones, out, 512);
        const std::vector<float> expected = PlainGain(ones[0], fx.state.gainSmoothing, gain, 0.5f);
        ASSERT_TRUE(SameBits(out[0], expected)) << "block " << block;
        gain = expected.back();
    }
    fx.state.configurations[0].compensationGain[0] = 0.25f;
    fx.Process(ones, out, 512, kBypass);
    EXPECT_TRUE(out == ones && fx.state.gainState[0] == gain);
    fx.Process(ones, out, 512, kFadeToBypass);
    EXPECT_EQ(out[0][0], PlainGain({1.0f}, fx.state.gainSmoothing, gain, 0.25f)[0]);
    fx.state.configurations[0].compensationGain[0] = fx.state.gainState[0] = 0.0f;
    for (int mode : {kFadeToBypass, kFadeFromBypass}) {
        fx.Process(ones, out, 100, mode);
        const bool toBypass = mode == kFadeToBypass;
        EXPECT_TRUE(out[0][0] == (toBypass ? 0.0f : 1.0f) && std::fabs(out[0][50] - 0.5f) < 1e-5f);
        EXPECT_NEAR(out[0][99], toBypass ? 0.99f : 0.01f, 1e-5f);
    }
}

TEST(AudioPath, ACountAboveTheLimitIsDroppedUnmeteredAndUnknownModesOnlyMeter) {
    AudioPathFixture fx(1, 100);  // work buffers are never shorter than 2048
    PeakLog meter;
    fx.state.meters[0] = &meter;
    fx.AddParametricSpread(3);
    const Block in = MakeSignal(1, 2049);
    Block out(1, std::vector<float>(2049, -7.0f));
    for (int mode : {static_cast<int>(kIdle), 5, -1})
        fx.Process(in, out, 2048, mode);
    fx.Process(in, out, 2049);
    EXPECT_EQ(out[0], std::vector<float>(2049, -7.0f));
    EXPECT_EQ(meter.peaks, std::vector<float>(3, 7.0f));
    fx.Process(in, out, 2048);
    EXPECT_TRUE(out[0][0] != -7.0f && out[0][2048] == -7.0f && meter.peaks.size() == 4u);
    const float block[] = {0.1f, -0.9f, std::nanf(""), 0.3f, 0.2f, -0.4f, 0.95f};
    EXPECT_TRUE(CollectPeak(block, 7) == 0.95f && CollectPeak(block, 5) == 0.9f)
        << "NaN passed over";
}

TEST(AudioPath, SilenceComesOutAsFilteredGuardNoiseAndAnInactiveChannelIsLeftAlone) {
    AudioPathFixture fx(2, 512);
    fx.AddParametricSpread(10);
    fx.state.channelActive[1] = false;
    const Block in{std::vector<float>(512, 0.0f), std::vector<float>(512, 0.0f)};
    Block out{in[0], std::vector<float>(512, 3.0f)};
    SetGuardNoiseSeed(9);
    fx.Process(in, out, 512);
    EXPECT_EQ(out[1], std::vector<float>(512, 3.0f));
    EXPECT_TRUE(
        std::all_of(out[0].begin(), out[0].end(), [](float s) { return std::fabs(s) < 1e-15f; }));
    EXPECT_GT(std::count_if(out[0].begin(), out[0].end(), [](float s) { return s != 0.0f; }), 500);
    uint32_t seed = 9;
    for (int i = 0; i < 512; ++i)
        DrawGuardValue(seed);
    EXPECT_EQ(GuardNoiseSeed(), seed) << "one draw per sample of the active channel only";
}

TEST(AudioPath, ProcessingAllocatesNothing) {
    if (!AllocationCounter::Available()) GTEST_SKIP() << "no allocation hook in this build";
    AudioPathFixture fx(2, 1024);
    BuildRandomEngine(fx, 3);
    fx.AddParametricSpread(12);
    fx.Add(kHarmonic8);
    Block in = MakeSignal(2, 1024), out = in;
    fx.Process(in, out, 1024);  // settle
    OpaqueFilterData* first = FirstFilter(fx.chains[0]);
    for (int mode : {kProcessing, kFadeToBypass, kBypass, kFadeFromBypass, kIdle}) {
        AudioPathFixture::SetBoth(first, P::Frequency, 0.01f * static_cast<float>(mode + 1));
        AllocationCounter allocations;
        fx.Process(in, out, 1024, mode);
        fx.state.soloFilter = first;
        fx.Process(in, out, 17, mode);
        fx.state.soloFilter = nullptr;
        EXPECT_EQ(allocations.Count(), 0u) << "mode " << mode;
    }
}

// The audio thread processes while the editor side edits parameters, appends filters, solos and
// changes gains. Under ThreadSanitizer this proves the sharing race-free in C++ terms; everywhere
// it proves the output stays finite.
TEST(AudioPathConcurrency, EditingWhileProcessingStaysFiniteAndRaceFree) {
    AudioPathFixture fx(2, 256);
    fx.AddParametricSpread(6);
    fx.Add(kHarmonic4);
    std::atomic<bool> editing{true};
    int nonFinite = 0;
    std::thread audio([&] {
        Block in = MakeSignal(2, 256, 11), out = in;
        for (int block = 0; editing.load() || block < 200; ++block) {
            fx.Process(in, out, 64 + block % 193);
            for (const auto& c : out) {
                nonFinite +=
                    std::count_if(c.begin(), c.end(), [](float s) { return !std::isfinite(s); });
            }
        }
    });
    std::mt19937 rng(1);
    for (int edit = 0; edit < 3000; ++edit) {
        OpaqueFilterData* f = FirstFilter(fx.chains[0]);
        for (int k = static_cast<int>(rng() % 7); k > 0 && NextFilter(f) != nullptr; --k)
            f = NextFilter(f);
        AudioPathFixture::SetBoth(f, P::Frequency,
                                  0.001f + 0.0001f * static_cast<float>(rng() % 3000));
        AudioPathFixture::SetBoth(f, P::Gain, static_cast<float>(rng() % 48) - 24.0f);
        if (edit % 300 == 0) fx.Add(static_cast<FilterType>(1 + edit / 300 % 9));
        if (edit % 500 == 250) fx.state.soloFilter = f;
        if (edit % 500 == 0) fx.state.soloFilter = nullptr;
        fx.state.configurations[0].compensationGain[edit % 2] =
            0.5f + 0.001f * static_cast<float>(edit % 100);
    }
    editing = false;
    audio.join();
    EXPECT_EQ(nonFinite, 0);
}

}  // namespace
}  // namespace vorix::test
