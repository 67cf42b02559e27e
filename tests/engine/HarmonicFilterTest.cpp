#include "engine/HarmonicFilter.h"

#include <bit>
#include <cmath>
#include <cstring>
#include <vector>

#include <gtest/gtest.h>

#include "FilterTestHelpers.h"
#include "engine/SectionKernel.h"

namespace vorix {
namespace {

using test::P;

constexpr double kRate44k = 44100.0;

float At44k(double hz) {
    return static_cast<float>(hz / kRate44k);
}

std::vector<int32_t> Flags(const OpaqueFilterData* h) {
    std::vector<int32_t> flags;
    for (const SectionFilterData* sub : test::SubFilters(h))
        flags.push_back(test::HarmonicFlag(sub));
    return flags;
}

std::vector<double> SubGains(const OpaqueFilterData* h) {
    std::vector<double> gains;
    for (const SectionFilterData* sub : test::SubFilters(h)) {
        gains.push_back(GetFilterParameter(sub, P::Gain));
    }
    return gains;
}

void ExpectGains(const OpaqueFilterData* h, const std::vector<double>& expected) {
    const std::vector<double> gains = SubGains(h);
    ASSERT_EQ(gains.size(), expected.size());
    for (size_t i = 0; i < gains.size(); ++i) {
        EXPECT_NEAR(gains[i], expected[i], 1e-4) << "harmonic " << i + 1;
    }
}

TEST(HarmonicFilterTest, HarmonicsAboveTheLimitAreFlaggedAndRecoverWhenTheFundamentalFalls) {
    test::PoolWithChain pc;
    OpaqueFilterData* h = pc.Add(kHarmonic8);
    SetFilterParameter(h, P::Frequency, At44k(9000.0));
    EXPECT_EQ(Flags(h), (std::vector<int32_t>{1, 2, -3, -4, -5, -6, -7, -8}));
    const std::vector<SectionFilterData*> subs = test::SubFilters(h);
    EXPECT_FLOAT_EQ(subs[1]->frequency, 2 * At44k(9000.0));
    for (int n = 3; n <= 8; ++n) {
        EXPECT_FLOAT_EQ(subs[n - 1]->frequency, n * At44k(1000.0)) << "keeps its frequency";
    }

    SetFilterParameter(h, P::Frequency, At44k(2000.0));
    EXPECT_EQ(Flags(h), (std::vector<int32_t>{1, 2, 3, 4, 5, 6, 7, 8}));
    for (int n = 1; n <= 8; ++n)
        EXPECT_FLOAT_EQ(subs[n - 1]->frequency, n * At44k(2000.0));
}

TEST(HarmonicFilterTest, AHarmonicAtTheLimitIsOutAndOneJustBelowItIsIn) {
    test::PoolWithChain pc;
    OpaqueFilterData* h = pc.Add(kHarmonic4);
    const float limit = std::bit_cast<float>(0x3EE83315u);  // 20000 Hz at 44100 Hz
    SetFilterParameter(h, P::Frequency, limit / 2.0f);
    EXPECT_EQ(Flags(h)[1], -2);
    SetFilterParameter(h, P::Frequency, std::nextafter(limit, 0.0f) / 2.0f);
    EXPECT_EQ(Flags(h)[1], 2);
}

OpaqueFilterData* HumFilter(test::PoolWithChain& pc, int components) {
    OpaqueFilterData* h = pc.Add(kHarmonic8);
    SetFilterParameter(h, P::Gain, -12.0f);
    SetFilterParameter(h, P::Bandwidth, 0.05f);
    SetFilterParameter(h, P::Frequency, At44k(4500.0));  // 2nd to 4th in range, 5th to 8th not
    SetFilterParameter(h, P::HarmonicComponents, static_cast<float>(components));
    return h;
}

TEST(HarmonicFilterTest, ProcessingCascadesOnlyTheSelectedSubFiltersWithinRange) {
    test::PoolWithChain pc;
    OpaqueFilterData* h = HumFilter(pc, 6);  // odd and even harmonics, no fundamental
    OpaqueFilterData* twin = HumFilter(pc, 6);
    const std::vector<float> input = test::Noise(300);
    std::vector<float> expected = input;
    const std::vector<SectionFilterData*> twinSubs = test::SubFilters(twin);
    for (SectionFilterData* sub : {twinSubs[1], twinSubs[2], twinSubs[3]}) {
        ProcessFilterBlock(sub, expected.data(), expected.data(), 300);
    }
    std::vector<float> output(300, 0.0f);
    ProcessHarmonicBlock(h, input.data(), output.data(), 300);
    EXPECT_EQ(std::memcmp(output.data(), expected.data(), 300 * sizeof(float)), 0);
    EXPECT_EQ(input, test::Noise(300)) << "the input stays untouched";

    SetFilterParameter(h, P::HarmonicComponents, 0.0f);
    std::vector<float> untouched(300, 7.0f);
    ProcessHarmonicBlock(h, input.data(), untouched.data(), 300);
    EXPECT_EQ(untouched, std::vector<float>(300, 7.0f)) << "no component writes nothing";
}

TEST(HarmonicFilterTest, DecayingGainsFallWithHarmonicNumberOrRiseWhenReversed) {
    test::PoolWithChain pc;
    OpaqueFilterData* h = pc.Add(kHarmonic4);
    SetFilterParameter(h, P::Gain, -18.0f);
    SetFilterParameter(h, P::ReverseGainDecay, 1.0f);
    ExpectGains(h, {-18.0, -18.0, -18.0, -18.0});  // reverse alone changes nothing
    SetFilterParameter(h, P::ComponentGain, 1.0f);
    ExpectGains(h, {-4.5, -6.0, -9.0, -18.0});
    SetFilterParameter(h, P::HarmonicComponents, 1.0f);
    EXPECT_NEAR(SubGains(h)[0], -4.5, 1e-4) << "whatever the components, the fundamental's share";
    SetFilterParameter(h, P::HarmonicComponents, 7.0f);
    SetFilterParameter(h, P::ReverseGainDecay, 0.0f);
    ExpectGains(h, {-18.0, -9.0, -6.0, -4.5});
    SetFilterParameter(h, P::ComponentGain, 0.0f);
    ExpectGains(h, {-18.0, -18.0, -18.0, -18.0});
}

TEST(HarmonicFilterTest, ComponentsOneIsASingleParametricAtTheFundamental) {
    test::PoolWithChain pc;
    for (FilterType type : {kHarmonic4, kHarmonic8}) {
        OpaqueFilterData* h = pc.Add(type);
        OpaqueFilterData* single = pc.Add(kParametric);
        for (OpaqueFilterData* f : {h, single}) {
            SetFilterParameter(f, P::HarmonicComponents, 1.0f);
            SetFilterParameter(f, P::Gain, -10.0f);
            SetFilterParameter(f, P::Bandwidth, 0.05f);
            SetFilterParameter(f, P::Frequency, static_cast<float>(test::Normalised(700.0)));
        }
        for (double frequency : test::AudibleFrequencies()) {
            const float expected = test::EngineMagnitude(single, frequency);
            ASSERT_NEAR(test::EngineMagnitude(h, frequency), expected, 1e-6f * expected)
                << "type " << type << " at " << frequency * 48000.0 << " Hz";
        }
    }
}

TEST(HarmonicFilterTest, ASkippedHarmonicKeepsItsStaleValuesUntilItsComponentReturns) {
    test::PoolWithChain pc;
    OpaqueFilterData* h = pc.Add(kHarmonic8);
    const std::vector<SectionFilterData*> subs = test::SubFilters(h);
    SetFilterParameter(h, P::HarmonicComponents, 1.0f);
    const test::Counters third = test::CountersOf(subs[2]);
    const test::Counters fundamental = test::CountersOf(subs[0]);

    SetFilterParameter(h, P::Gain, -6.0f);
    SetFilterParameter(h, P::Frequency, At44k(1500.0));
    EXPECT_FLOAT_EQ(subs[0]->frequency, At44k(1500.0));
    EXPECT_GT(test::CountersOf(subs[0]).finished, fundamental.finished) << "the fundamental ramps";
    EXPECT_FLOAT_EQ(subs[2]->frequency, 3 * At44k(1000.0));
    EXPECT_NEAR(GetFilterParameter(subs[2], P::Gain), 0.0, 1e-6);
    EXPECT_EQ(test::CountersOf(subs[2]).started, third.started)
        << "a skipped harmonic is left alone";

    SetFilterParameter(h, P::HarmonicComponents, 3.0f);  // odd harmonics return
    EXPECT_FLOAT_EQ(subs[2]->frequency, 3 * At44k(1500.0));
    EXPECT_NEAR(GetFilterParameter(subs[2], P::Gain), -6.0, 1e-4);
    EXPECT_EQ(test::CountersOf(subs[2]).finished, test::CountersOf(subs[2]).started);
    EXPECT_GT(test::CountersOf(subs[2]).finished, third.finished);
    EXPECT_FLOAT_EQ(subs[1]->frequency, 2 * At44k(1000.0)) << "even harmonics still skipped";
}

TEST(HarmonicFilterTest, EachSubFiltersBandwidthInHertzFollowsItsOwnFrequency) {
    test::PoolWithChain pc;
    OpaqueFilterData* h = pc.Add(kHarmonic8);
    SetFilterParameter(h, P::Bandwidth, 0.05f);
    double previousWidth = 0.0;
    for (const SectionFilterData* sub : test::SubFilters(h)) {
        EXPECT_EQ(sub->bandwidth, 0.05f);
        EXPECT_FLOAT_EQ(sub->q, static_cast<float>(test::ExpectedQ(sub->frequency, 0.05)));
        const double widthHz = sub->frequency * kRate44k / sub->q;
        EXPECT_GT(widthHz, previousWidth * 1.05) << "harmonic " << test::HarmonicFlag(sub);
        previousWidth = widthHz;
    }
}

}  // namespace
}  // namespace vorix
