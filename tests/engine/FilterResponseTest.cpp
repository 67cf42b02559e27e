#include "dsp/FilterResponse.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <vector>

#include "FilterTestHelpers.h"
#include "dsp/ExternalFilter.h"

namespace vorix::test {
namespace {

double Ratio(double decibels) {
    return std::pow(10.0, decibels / 20.0);
}

// Each type's evaluation against the complex reference, a few parts in a million at every
// audible frequency, and each design at the points that define it: its gain at the centre or on
// the shelf, unity far away, Q at a pass filter's corner, nothing at the notch. Corners from
// 200 Hz: lower, the single-precision coefficients alone move DC gain and notch depth.
TEST(FilterResponseTest, EveryTypeMatchesTheDirectTransferFunctionAndItsDefiningValues) {
    struct Point {
        FilterType type;
        float gain;
        double hz;
        float shape;
        double atHz, expected;
    };
    // clang-format off
    const Point points[] = {
        {1, -9, 1000, 1, 1000, Ratio(-9)},      {1, 24, 12000, 0.1f, 12000, Ratio(24)},
        {1, -24, 30, 3, 30, Ratio(-24)},        {1, 24, 100, 3, 24000, 1},
        {2, -24, 300, 0.34f, 0, Ratio(-24)},    {2, 12, 30, 1, 24000, 1},
        {3, 24, 8000, 0.7f, 24000, Ratio(24)},  {3, -6, 15000, 1, 0, 1},
        {4, 24, 300, 3.5f, 0, Ratio(24)},       {4, -6, 30, 0.3f, 24000, 1},
        {5, -24, 8000, 0.3f, 24000, Ratio(-24)}, {5, 12, 15000, 3.5f, 0, 1},
        {6, 0, 200, 0.5f, 0, 1},                {6, 0, 1000, 8, 1000, 8},
        {7, 0, 15000, 0.70710677f, 24000, 1},   {7, 0, 200, 0.3f, 200, 0.3},
        {8, 0, 1000, 0.05f, 1000, 1},           {8, 0, 15000, 3.5f, 15000, 1},
        {9, 0, 1000, 1, 1000, 0},               {9, 0, 200, 0.05f, 24000, 1},
        {9, 0, 10000, 3.5f, 0, 1},
    };
    // clang-format on
    PoolWithChain pc;
    for (const Point& p : points) {
        SCOPED_TRACE(::testing::Message()
                     << "type " << p.type << " " << p.gain << " dB at " << p.hz);
        SectionFilterData* f = Configure(pc, p.type, p.gain, p.hz, p.shape);
        const double at = EditSetMagnitude(f, Normalised(p.atHz));
        EXPECT_NEAR(at, p.expected, 2e-3 * std::max(p.expected, 1.0)) << "seen at " << p.atHz;
        for (double frequency : AudibleFrequencies()) {
            const double reference = EditSetMagnitude(f, frequency);
            ASSERT_NEAR(EngineMagnitude(f, frequency), reference, 2e-6 * reference + 1e-7)
                << "at " << frequency * 48000.0 << " Hz";
        }
    }
}

// Single-precision coefficients bound how exactly two designs cancel when the corner is low, so
// the corners start at 200 Hz; any fault of the construction shows far above this tolerance.
TEST(FilterResponseTest, ShelfTwoCutAndBoostOfOneSizeAreReciprocalAtEveryFrequency) {
    PoolWithChain pc;
    for (FilterType type : {kLowShelf2, kHiShelf2}) {
        for (double hz : {200.0, 2000.0, 14000.0}) {
            for (float q : {0.2f, 0.70710677f, 4.0f}) {
                SectionFilterData* cut = Configure(pc, type, -6.0f, hz, q);
                SectionFilterData* boost = Configure(pc, type, 6.0f, hz, q);
                for (double frequency : AudibleFrequencies()) {
                    const std::complex<double> product =
                        TransferFunction(cut->edit.b, cut->edit.a, frequency) *
                        TransferFunction(boost->edit.b, boost->edit.a, frequency);
                    ASSERT_LT(std::abs(product - 1.0), 1e-3)
                        << type << " at " << hz << " Hz, Q " << q;
                }
            }
        }
    }
}

// The product of the sub-filters its components select, harmonics above the limit excluded; with
// components 1 a single Parametric at the fundamental.
TEST(FilterResponseTest, HarmonicResponseIsTheProductOfItsActiveSubFilters) {
    PoolWithChain pc;
    OpaqueFilterData* h = pc.Add(kHarmonic8);
    OpaqueFilterData* single = pc.Add(kParametric);
    for (OpaqueFilterData* f : {h, single}) {
        SetFilterParameter(f, P::Gain, -12.0f);
        SetFilterParameter(f, P::Bandwidth, 0.05f);
        // 5 kHz at 48 kHz: harmonics 5 to 8 lie above the limit and must not count.
        SetFilterParameter(f, P::Frequency, static_cast<float>(Normalised(5000.0)));
    }
    const std::vector<SectionFilterData*> subs = SubFilters(h);
    for (int components = 0; components <= 7; ++components) {
        SetFilterParameter(h, P::HarmonicComponents, static_cast<float>(components));
        for (double frequency : AudibleFrequencies()) {
            double expected = components == 1 ? EngineMagnitude(single, frequency) : 1.0;
            for (int k = 1; k <= 4 && components != 1; ++k) {
                if (components & (k == 1 ? 1 : k % 2 == 0 ? 4 : 2))
                    expected *= EditSetMagnitude(subs[k - 1], frequency);
            }
            ASSERT_NEAR(EngineMagnitude(h, frequency), expected, 1e-5 * expected + 1e-7)
                << "components " << components << " at " << frequency * 48000.0 << " Hz";
        }
    }
}

TEST(FilterResponseTest, ExternalResponseIsTheProductOfItsSectionsWithTheirOwnA0) {
    PoolWithChain pc;
    ExternalFilterData* empty = pc.AddExternal();
    ExternalFilterData* cascade = pc.AddExternal();
    FilterDescription d;
    d.numerators = {{0.2f, 0.4f, 0.2f}, {1.0f, -1.2f, 0.5f}, {0.5f, 0.1f, -0.3f}};
    d.denominators = {{1.0f, -0.6f, 0.25f}, {1.0f, -1.1f, 0.4f}, {2.0f, -0.5f, 0.2f}};
    LoadExternalSections(cascade, d);
    for (double frequency : AudibleFrequencies()) {
        ASSERT_EQ(EngineMagnitude(empty, frequency), 1.0f);
        double expected = 1.0;
        for (size_t s = 0; s < 3; ++s) {
            expected *= std::abs(
                TransferFunction(d.numerators[s].data(), d.denominators[s].data(), frequency));
        }
        ASSERT_NEAR(EngineMagnitude(cascade, frequency), expected, 2e-6 * expected + 1e-7);
    }
}

}  // namespace
}  // namespace vorix::test
