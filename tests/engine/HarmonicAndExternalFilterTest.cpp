#include <array>
#include <bit>
#include <cmath>
#include <vector>

#include "FilterTestHelpers.h"
#include "dsp/ExternalFilter.h"
#include "dsp/HarmonicFilter.h"

namespace vorix::test {
namespace {

float At44k(double hz) {
    return static_cast<float>(hz / 44100.0);
}

std::vector<int32_t> Flags(const OpaqueFilterData* h) {
    std::vector<int32_t> flags;
    for (const SectionFilterData* sub : SubFilters(h))
        flags.push_back(static_cast<int32_t>(sub->flags.Load()));
    return flags;
}

std::vector<double> Gains(const OpaqueFilterData* h) {
    std::vector<double> gains;
    for (const SectionFilterData* sub : SubFilters(h))
        gains.push_back(std::round(GetFilterParameter(sub, P::Gain) * 1e3) / 1e3);
    return gains;
}

TEST(HarmonicFilterTest, HarmonicsAtOrAboveTheLimitAreFlaggedAndRecoverWhenTheFundamentalFalls) {
    PoolWithChain pc;
    OpaqueFilterData* h = pc.Add(kHarmonic8);
    SetFilterParameter(h, P::Bandwidth, 0.006f);  // below a Parametric's range: stored unclamped
    SetFilterParameter(h, P::Frequency, At44k(9000.0));
    EXPECT_EQ(Flags(h), (std::vector<int32_t>{1, 2, -3, -4, -5, -6, -7, -8}));
    const std::vector<SectionFilterData*> subs = SubFilters(h);
    EXPECT_FLOAT_EQ(subs[1]->frequency, 2 * At44k(9000.0));
    for (int n = 3; n <= 8; ++n)
        EXPECT_FLOAT_EQ(subs[n - 1]->frequency, n * At44k(1000.0)) << n;

    SetFilterParameter(h, P::Frequency, At44k(2000.0));
    EXPECT_EQ(Flags(h), (std::vector<int32_t>{1, 2, 3, 4, 5, 6, 7, 8}));
    for (int n = 1; n <= 8; ++n) {  // one bandwidth: each one's width in Hz follows its frequency
        EXPECT_FLOAT_EQ(subs[n - 1]->frequency, n * At44k(2000.0));
        EXPECT_EQ(subs[n - 1]->bandwidth, 0.006f);
    }
    const float limit = std::bit_cast<float>(0x3EE83315u);  // 20000 Hz at 44100 Hz
    SetFilterParameter(h, P::Frequency, limit / 2.0f);
    EXPECT_EQ(Flags(h)[1], -2);
    SetFilterParameter(h, P::Frequency, std::nextafter(limit, 0.0f) / 2.0f);
    EXPECT_EQ(Flags(h)[1], 2);
}

// A skipped harmonic keeps its former values; the components change that selects it again
// brings it up to date.
TEST(HarmonicFilterTest, ComponentGainsDecayByHarmonicNumberAndSkippedHarmonicsKeepTheirs) {
    PoolWithChain pc;
    OpaqueFilterData* h = pc.Add(kHarmonic4);
    SetFilterParameter(h, P::Gain, -18.0f);
    SetFilterParameter(h, P::ReverseGainDecay, 1.0f);
    EXPECT_EQ(Gains(h), (std::vector<double>{-18, -18, -18, -18}))
        << "reverse alone changes nothing";
    SetFilterParameter(h, P::ComponentGain, 1.0f);
    EXPECT_EQ(Gains(h), (std::vector<double>{-4.5, -6, -9, -18}));
    SetFilterParameter(h, P::ReverseGainDecay, 0.0f);
    EXPECT_EQ(Gains(h), (std::vector<double>{-18, -9, -6, -4.5}));
    SetFilterParameter(h, P::HarmonicComponents, 1.0f);
    const uint32_t changes = SubFilters(h)[2]->changeStarted;
    SetFilterParameter(h, P::Gain, -12.0f);
    SetFilterParameter(h, P::Frequency, At44k(1500.0));
    EXPECT_EQ(Gains(h), (std::vector<double>{-12, -9, -6, -4.5}));
    EXPECT_TRUE(SubFilters(h)[2]->changeStarted == changes &&
                SubFilters(h)[2]->frequency == 3 * At44k(1000.0));
    SetFilterParameter(h, P::HarmonicComponents, 3.0f);  // odd harmonics return, even stay
    EXPECT_EQ(Gains(h), (std::vector<double>{-12, -9, -4, -4.5}));
    EXPECT_FLOAT_EQ(SubFilters(h)[2]->frequency, 3 * At44k(1500.0));
    SetFilterParameter(h, P::ComponentGain, 0.0f);
    EXPECT_EQ(Gains(h), (std::vector<double>{-12, -9, -12, -4.5}));
}

using Rows = std::vector<std::array<float, 3>>;

// Three sections as a document may give them: the last two with a0 other than 1.
const Rows kNumerators = {{0.2f, 0.4f, 0.2f}, {1.0f, -1.2f, 0.5f}, {0.5f, 0.1f, -0.3f}};
const Rows kDenominators = {{1.0f, -0.6f, 0.25f}, {2.0f, -1.1f, 0.4f}, {0.5f, -0.5f, 0.2f}};

ExternalFilterData* Load(ExternalFilterData* e, const Rows& numerators, const Rows& denominators) {
    LoadExternalSections(e, {.flags = 0,
                             .type = kExternalFilter,
                             .parameters = {},
                             .name = {},
                             .numerators = numerators,
                             .denominators = denominators});
    return e;
}

// The sections as a description gives them back.
bool HasSections(const ExternalFilterData* e, const Rows& b, const Rows& a) {
    const FilterDescription d = DescribeFilter(e);
    return d.numerators == b && d.denominators == a;
}

// Coefficients are kept as given, a0 included; sections that loading adds start silent; copying
// takes every section whatever the target held.
TEST(ExternalFilterTest, LoadingAndCopyingTakeTheSectionsAsGiven) {
    PoolWithChain pc;
    ExternalFilterData* e = Load(pc.AddExternal(), {kNumerators[1]}, {kDenominators[1]});
    EXPECT_TRUE(HasSections(e, {kNumerators[1]}, {kDenominators[1]}));
    std::vector<float> buffer = Noise(32, 1);
    ProcessSectionsBlock(e, buffer.data(), buffer.data(), 32);
    Load(e, {kNumerators[1], kNumerators[0]}, {kDenominators[1], kDenominators[0]});
    for (int k = 0; k < 3; ++k)
        EXPECT_TRUE(e->sections[1].x[k] == 0.0f && e->sections[1].y[k] == 0.0);

    ExternalFilterData* source = Load(pc.AddExternal(), kNumerators, kDenominators);
    ExternalFilterData* sameSize =
        Load(pc.AddExternal(), Rows(3, kNumerators[2]), Rows(3, kDenominators[2]));
    source->name = "Telephone";
    CopyExternalSections(source, e);
    CopyFilterParameters(source, sameSize);  // between two External filters: sections and name
    EXPECT_TRUE(HasSections(e, kNumerators, kDenominators));
    EXPECT_TRUE(HasSections(sameSize, kNumerators, kDenominators) && sameSize->name == "Telephone");
}

// Each section from silence straight from the difference equation in double precision, a0
// ignored, against the kernel run in place over uneven blocks.
TEST(ExternalFilterTest, InPlaceProcessingIsTheDirectCascadeIgnoringA0AcrossBlocks) {
    PoolWithChain pc;
    ExternalFilterData* e = Load(pc.AddExternal(), kNumerators, kDenominators);
    std::vector<float> expected = Noise(400, 7), output = expected;
    for (size_t i = 0; i < 3; ++i) {
        const std::array<float, 3>& b = kNumerators[i];
        const std::array<float, 3>& a = kDenominators[i];
        double x1 = 0, x2 = 0, y1 = 0, y2 = 0;
        for (float& sample : expected) {
            const double x = sample, y = b[0] * x + b[1] * x1 + b[2] * x2 - a[1] * y1 - a[2] * y2;
            x2 = x1, x1 = x, y2 = y1, y1 = y;
            sample = static_cast<float>(y);
        }
    }
    for (int done = 0; int block : {1, 17, 0, 64, 318}) {
        ProcessSectionsBlock(e, output.data() + done, output.data() + done, block);
        done += block;
    }
    EXPECT_TRUE(SameBits(output, expected));
}

}  // namespace
}  // namespace vorix::test
