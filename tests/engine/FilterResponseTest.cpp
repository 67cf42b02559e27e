#include "engine/FilterResponse.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <vector>

#include <gtest/gtest.h>

#include "FilterTestHelpers.h"
#include "engine/ExternalFilter.h"

namespace vorix {
namespace {

using test::Configure;
using test::P;
using test::ShapeOf;

// The engine's float evaluation against the complex reference: a few parts in a million.
::testing::AssertionResult MatchesReference(float engine, double reference) {
    if (std::fabs(engine - reference) <= 2e-6 * reference + 1e-7) {
        return ::testing::AssertionSuccess();
    }
    return ::testing::AssertionFailure() << engine << " vs reference " << reference;
}

// Three values that span the range of each type's shaping parameter.
std::vector<float> ShapesOf(FilterType type) {
    switch (ShapeOf(type)) {
        case P::Bandwidth:
            return {0.05f, 1.0f, 3.5f};
        case P::Slope:
            return {0.34f, 0.7f, 1.0f};
        default:
            return {0.3f, 0.70710677f, type >= kLowPass ? 8.0f : 3.5f};
    }
}

TEST(FilterResponseTest, EveryTypeMatchesTheDirectTransferFunctionAcrossTheAudibleRange) {
    const std::vector<double> frequencies = test::AudibleFrequencies();
    test::PoolWithChain pc;
    for (FilterType type = kParametric; type <= kNotch; ++type) {
        for (float gain : {-18.0f, 6.0f, 24.0f}) {
            for (double hz : {30.0, 1000.0, 15000.0}) {
                for (float shape : ShapesOf(type)) {
                    SectionFilterData* f = Configure(pc, type, gain, hz, shape);
                    for (double frequency : frequencies) {
                        ASSERT_TRUE(MatchesReference(test::EngineMagnitude(f, frequency),
                                                     test::EditSetMagnitude(f, frequency)))
                            << "type " << type << " gain " << gain << " at " << hz << " Hz, "
                            << FilterParameterKey(ShapeOf(type)) << " " << shape
                            << ", evaluated at " << frequency * 48000.0 << " Hz";
                    }
                }
            }
        }
    }
}

TEST(FilterResponseTest, APeakHasItsGainAtItsCentreAndUnityFarAway) {
    test::PoolWithChain pc;
    for (float gain : {-24.0f, -9.0f, 3.0f, 24.0f}) {
        for (double hz : {100.0, 1000.0, 12000.0}) {
            for (float bandwidth : {0.1f, 1.0f, 3.0f}) {
                SectionFilterData* f = Configure(pc, kParametric, gain, hz, bandwidth);
                const double expected = test::DecibelsToRatio(gain);
                EXPECT_NEAR(test::EditSetMagnitude(f, test::Normalised(hz)) / expected, 1.0, 1e-3)
                    << gain << " dB at " << hz << " Hz, bandwidth " << bandwidth;
                EXPECT_NEAR(test::EditSetMagnitude(f, hz < 5000.0 ? 0.5 : 0.0), 1.0, 1e-3);
            }
        }
    }
}

// Corners from 200 Hz: lower, the single-precision coefficients alone move DC gain and notch depth.
TEST(FilterResponseTest, PassAndRejectTypesMeetTheirDefiningValues) {
    test::PoolWithChain pc;
    for (double hz : {200.0, 1000.0, 10000.0}) {
        const double f0 = test::Normalised(hz);
        for (float q : {0.5f, 0.70710677f, 6.0f}) {
            SCOPED_TRACE(::testing::Message() << hz << " Hz, Q " << q);
            SectionFilterData* low = Configure(pc, kLowPass, 0.0f, hz, q);
            SectionFilterData* high = Configure(pc, kHiPass, 0.0f, hz, q);
            EXPECT_NEAR(test::EditSetMagnitude(low, 0.0), 1.0, 1e-3);
            EXPECT_NEAR(test::EditSetMagnitude(high, 0.5), 1.0, 1e-4);
            EXPECT_NEAR(test::EditSetMagnitude(low, f0) / q, 1.0, 2e-3) << "Q at the corner";
            EXPECT_NEAR(test::EditSetMagnitude(high, f0) / q, 1.0, 2e-3) << "Q at the corner";
        }
        for (float bandwidth : {0.05f, 1.0f, 3.0f}) {
            SCOPED_TRACE(::testing::Message() << hz << " Hz, bandwidth " << bandwidth);
            SectionFilterData* band = Configure(pc, kBandpass, 0.0f, hz, bandwidth);
            SectionFilterData* notch = Configure(pc, kNotch, 0.0f, hz, bandwidth);
            EXPECT_NEAR(test::EditSetMagnitude(band, f0), 1.0, 1e-3);
            EXPECT_LT(test::EditSetMagnitude(notch, f0), 1e-3);
            EXPECT_NEAR(test::EditSetMagnitude(notch, 0.0), 1.0, 1e-3);
            EXPECT_NEAR(test::EditSetMagnitude(notch, 0.5), 1.0, 1e-3);
        }
    }
}

TEST(FilterResponseTest, ShelvesReachTheirGainAtTheFarEndAndUnityAtTheOther) {
    test::PoolWithChain pc;
    for (FilterType type : {kLowShelf, kHiShelf, kLowShelf2, kHiShelf2}) {
        const bool low = type == kLowShelf || type == kLowShelf2;
        for (float gain : {-24.0f, -6.0f, 12.0f, 24.0f}) {
            for (float shape : ShapesOf(type)) {
                SectionFilterData* f = Configure(pc, type, gain, low ? 300.0 : 8000.0, shape);
                const double shelf = test::EditSetMagnitude(f, low ? 0.0 : 0.5);
                const double open = test::EditSetMagnitude(f, low ? 0.5 : 0.0);
                EXPECT_NEAR(shelf / test::DecibelsToRatio(gain), 1.0, 2e-3)
                    << "type " << type << " " << gain << " dB, shape " << shape;
                EXPECT_NEAR(open, 1.0, 2e-3) << "type " << type << " " << gain << " dB";
            }
        }
    }
}

// Single-precision coefficients bound how exactly two designs cancel when the corner is low, so
// the corners start at 200 Hz; any fault of the construction shows far above this tolerance.
TEST(FilterResponseTest, ShelfTwoCutAndBoostOfOneSizeAreReciprocalAtEveryFrequency) {
    test::PoolWithChain pc;
    for (FilterType type : {kLowShelf2, kHiShelf2}) {
        for (double hz : {200.0, 2000.0, 14000.0}) {
            for (float q : {0.2f, 0.70710677f, 4.0f}) {
                SectionFilterData* cut = Configure(pc, type, -6.0f, hz, q);
                SectionFilterData* boost = Configure(pc, type, 6.0f, hz, q);
                for (double frequency : test::AudibleFrequencies()) {
                    const std::complex<double> product =
                        test::TransferFunction(cut->edit.b, cut->edit.a, frequency) *
                        test::TransferFunction(boost->edit.b, boost->edit.a, frequency);
                    ASSERT_LT(std::abs(product - 1.0), 1e-3)
                        << "type " << type << " at " << hz << " Hz, Q " << q;
                    ASSERT_NEAR(test::EngineMagnitude(cut, frequency) *
                                    test::EngineMagnitude(boost, frequency),
                                1.0, 1e-3);
                }
            }
        }
    }
}

// What a harmonic filter's response must be: the product of the sub-filters its components
// select, harmonics above the limit excluded.
double ExpectedHarmonicMagnitude(const OpaqueFilterData* h, double frequency) {
    const int32_t components = AsHarmonic(h)->components;
    double magnitude = 1.0;
    int k = 1;
    for (const SectionFilterData* sub : test::SubFilters(h)) {
        const bool selected = k == 1 ? (components & 1) : (components & (k % 2 == 0 ? 4 : 2));
        if (selected && (k == 1 || test::HarmonicFlag(sub) > 0)) {
            magnitude *= test::EditSetMagnitude(sub, frequency);
        }
        ++k;
    }
    return magnitude;
}

TEST(FilterResponseTest, HarmonicResponseIsTheProductOfItsActiveSubFilters) {
    test::PoolWithChain pc;
    OpaqueFilterData* h = pc.Add(kHarmonic8);
    SetFilterParameter(h, P::Gain, -12.0f);
    SetFilterParameter(h, P::Bandwidth, 0.05f);
    // 5 kHz at 48 kHz: harmonics 5 to 8 lie above the limit and must not count.
    SetFilterParameter(h, P::Frequency, static_cast<float>(test::Normalised(5000.0)));
    for (int components = 0; components <= 7; ++components) {
        SetFilterParameter(h, P::HarmonicComponents, static_cast<float>(components));
        for (double frequency : test::AudibleFrequencies()) {
            const double expected = ExpectedHarmonicMagnitude(h, frequency);
            ASSERT_NEAR(test::EngineMagnitude(h, frequency), expected, 1e-5 * expected + 1e-7)
                << "components " << components << " at " << frequency * 48000.0 << " Hz";
            if (components == 0) {
                ASSERT_EQ(test::EngineMagnitude(h, frequency), 1.0f);
            }
        }
    }
}

OpaqueFilterData* ExternalWith(test::PoolWithChain& pc,
                               std::vector<std::array<float, 3>> numerators,
                               std::vector<std::array<float, 3>> denominators) {
    OpaqueFilterData* e = pc.Add(kExternalFilter);
    FilterDescription description;
    description.numerators = std::move(numerators);
    description.denominators = std::move(denominators);
    LoadExternalSections(e, description);
    return e;
}

TEST(FilterResponseTest, ExternalResponseIsTheProductOfItsSectionsWithTheirOwnA0) {
    test::PoolWithChain pc;
    OpaqueFilterData* empty = pc.Add(kExternalFilter);
    OpaqueFilterData* scaled = ExternalWith(pc, {{2.0f, 0.0f, 0.0f}}, {{2.0f, 0.0f, 0.0f}});
    OpaqueFilterData* cascade =
        ExternalWith(pc, {{0.2f, 0.4f, 0.2f}, {1.0f, -1.2f, 0.5f}, {0.5f, 0.1f, -0.3f}},
                     {{1.0f, -0.6f, 0.25f}, {1.0f, -1.1f, 0.4f}, {2.0f, -0.5f, 0.2f}});
    const ExternalFilterData* sections = AsExternal(cascade);
    for (double frequency : test::AudibleFrequencies()) {
        ASSERT_EQ(test::EngineMagnitude(empty, frequency), 1.0f);
        ASSERT_NEAR(test::EngineMagnitude(scaled, frequency), 1.0f, 1e-6f);
        double expected = 1.0;
        for (const FilterSection& s : sections->sections) {
            const float b[3] = {s.b[0], s.b[1], s.b[2]};
            const float a[3] = {s.a[0], s.a[1], s.a[2]};
            expected *= std::abs(test::TransferFunction(b, a, frequency));
        }
        ASSERT_TRUE(MatchesReference(test::EngineMagnitude(cascade, frequency), expected))
            << "at " << frequency * 48000.0 << " Hz";
    }
}

}  // namespace
}  // namespace vorix
