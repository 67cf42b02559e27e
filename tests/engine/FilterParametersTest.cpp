#include "engine/FilterParameters.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <iterator>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "FilterTestHelpers.h"
#include "engine/ExternalFilter.h"
#include "engine/HarmonicFilter.h"
#include "engine/SectionKernel.h"

namespace vorix {
namespace {

using test::P;
using test::ShapeOf;

bool SameCoefficients(const BiquadCoefficients& x, const BiquadCoefficients& y) {
    for (int i = 0; i < 3; ++i) {
        if (x.b[i] != y.b[i] || x.a[i] != y.a[i]) return false;
    }
    return true;
}

bool IsIdentity(const BiquadCoefficients& c) {
    return SameCoefficients(c, BiquadCoefficients{});
}

BiquadCoefficients AudioSet(const SectionFilterData* s) {
    BiquadCoefficients c;
    for (int i = 0; i < 3; ++i) {
        c.b[i] = s->b[i];
        c.a[i] = s->a[i];
    }
    return c;
}

TEST(FilterParametersTest, ZeroDecibelsIsTheExactIdentityInEveryGainType) {
    test::PoolWithChain pc;
    for (FilterType type = kParametric; type <= kHiShelf2; ++type) {
        SectionFilterData* f = pc.AddSection(type);
        EXPECT_TRUE(IsIdentity(f->edit) && IsIdentity(AudioSet(f))) << "new, type " << type;
        for (float frequency : {0.0005f, 0.05f, 0.3f, 0.45f}) {
            for (float shape : {0.34f, 0.7f, 1.0f, 3.9f}) {
                SetFilterParameter(f, P::Gain, 12.0f);
                SetFilterParameter(f, P::Frequency, frequency);
                SetFilterParameter(f, ShapeOf(type), shape);
                ASSERT_FALSE(IsIdentity(f->edit));
                SetFilterParameter(f, P::Gain, 0.0f);
                EXPECT_TRUE(IsIdentity(f->edit)) << type << " f " << frequency << " " << shape;
            }
        }
        SetFilterParameter(f, P::Gain, 0.001f);
        EXPECT_FALSE(IsIdentity(f->edit)) << "only exactly 0 dB is a wire; type " << type;
    }
}

struct ClampRow {
    FilterType type;
    FilterParameterId id;
    float value, expected, tolerance;  // expected as GetFilterParameter reads it back
};

TEST(FilterParametersTest, OutOfRangeValuesAreClampedAndInRangeValuesKept) {
    // clang-format off
    const ClampRow rows[] = {
        {2, P::Slope, 0.1f, 0.33333334f, 0},  {3, P::Slope, 2.0f, 1.0f, 0},
        {2, P::Slope, 0.5f, 0.5f, 0},         {4, P::Q, 0.01f, 0.1f, 0},
        {5, P::Q, 10.0f, 4.0f, 0},            {4, P::Q, 2.5f, 2.5f, 0},
        {6, P::Q, 0.01f, 0.1f, 0},            {7, P::Q, 50.0f, 10.0f, 0},
        {8, P::Q, 50.0f, 10.0f, 0},           {9, P::Q, 0.05f, 0.1f, 0},
        {6, P::Q, 7.0f, 7.0f, 0},             {1, P::Bandwidth, 0.001f, 0.02f, 0},
        {1, P::Bandwidth, 9.0f, 4.0f, 0},     {8, P::Bandwidth, 0.001f, 0.02f, 0},
        {9, P::Bandwidth, 9.0f, 4.0f, 0},     {1, P::Bandwidth, 2.5f, 2.5f, 0},
        {10, P::Bandwidth, 1.0f, 0.104f, 0},  {11, P::Bandwidth, 0.001f, 0.005f, 0},
        {11, P::Bandwidth, 0.05f, 0.05f, 0},  {1, P::Gain, -30.0f, -24.0f, 1e-4f},
        {3, P::Gain, 100.0f, 24.0f, 1e-4f},   {5, P::Gain, -100.0f, -24.0f, 1e-4f},
        {10, P::Gain, 30.0f, 24.0f, 1e-4f},   {2, P::Gain, -7.5f, -7.5f, 1e-4f},
    };
    // clang-format on
    test::PoolWithChain pc;
    for (const ClampRow& r : rows) {
        OpaqueFilterData* f = pc.Add(r.type);
        SetFilterParameter(f, r.id, r.value);
        EXPECT_NEAR(static_cast<float>(GetFilterParameter(f, r.id)), r.expected, r.tolerance)
            << "type " << r.type << " " << FilterParameterKey(r.id) << " " << r.value;
    }
}

TEST(FilterParametersTest, FrequencyRederivesQOnlyWhereBandwidthDefinesIt) {
    test::PoolWithChain pc;
    for (FilterType type : {1, 8, 9}) {
        SectionFilterData* f = pc.AddSection(type);
        SetFilterParameter(f, P::Bandwidth, 1.5f);
        for (float frequency : {0.001f, 0.2f, 0.4f}) {
            SetFilterParameter(f, P::Frequency, frequency);
            EXPECT_FLOAT_EQ(f->q, static_cast<float>(test::ExpectedQ(frequency, 1.5)));
            EXPECT_EQ(GetFilterParameter(f, P::Bandwidth), 1.5) << "type " << type;
        }
        EXPECT_LT(f->q, 0.7f * test::ExpectedQ(0.001, 1.5)) << "Q bends down at high frequency";
    }
    for (FilterType type : {2, 3, 4, 5, 6, 7}) {
        SectionFilterData* f = pc.AddSection(type);
        const float q = f->q;
        SetFilterParameter(f, P::Frequency, 0.4f);
        EXPECT_EQ(f->q, q) << "type " << type;
    }
}

TEST(FilterParametersTest, EveryWriteMovesBothCountersTogetherByOneExternalIncluded) {
    test::PoolWithChain pc;
    for (FilterType type = kExternalFilter; type <= kHarmonic8; ++type) {
        if (type == kNoFilterType) continue;
        OpaqueFilterData* f = pc.Add(type);
        for (FilterParameterId id : kAllFilterParameters) {
            const test::Counters before = test::CountersOf(f);
            SetFilterParameter(f, id, 0.3f);
            const test::Counters after = test::CountersOf(f);
            EXPECT_EQ(after.started, before.started + 1) << type << " " << FilterParameterKey(id);
            EXPECT_EQ(after.finished, after.started) << type << " " << FilterParameterKey(id);
        }
        if (type == kExternalFilter) {
            EXPECT_TRUE(AsExternal(f)->sections.empty());
        }
    }
}

// The ids each single-section type stores; any other id must still redesign.
uint32_t HeldIds(FilterType type) {
    if (type == kParametric) return 1 | 2 | 128;
    if (type == kLowShelf || type == kHiShelf) return 1 | 2 | 64;
    if (type == kLowShelf2 || type == kHiShelf2) return 1 | 2 | 4;
    return 2 | 4 | 128;
}

TEST(FilterParametersTest, AnIdTheTypeDoesNotHoldStoresNothingButStillRedesigns) {
    test::PoolWithChain pc;
    for (FilterType type = kParametric; type <= kNotch; ++type) {
        SectionFilterData* f = pc.AddSection(type);
        SetFilterParameter(f, P::Frequency, 0.05f);
        SetFilterParameter(f, P::Gain, 6.0f);
        const BiquadCoefficients designed = f->edit;
        for (FilterParameterId id : kAllFilterParameters) {
            if (HeldIds(type) & Bit(id)) continue;
            const float targets[] = {f->gain, f->frequency, f->q, f->bandwidth};
            f->edit.b[0] = 42.0f;
            SetFilterParameter(f, id, 0.3f);
            const float after[] = {f->gain, f->frequency, f->q, f->bandwidth};
            EXPECT_TRUE(std::equal(std::begin(targets), std::end(targets), after))
                << type << " " << FilterParameterKey(id);
            EXPECT_TRUE(SameCoefficients(f->edit, designed))
                << type << " " << FilterParameterKey(id);
        }
    }
}

// The ids GetFilterParameter answers: wider than the masks, so that a derived Q reads back.
uint32_t AnsweredIds(FilterType type) {
    if (type == 1 || type == 4 || type == 5) return 1 | 2 | 4 | 128;
    if (type == 2 || type == 3) return 1 | 2 | 64;
    if (type >= 6 && type <= 9) return 2 | 4 | 128;
    return (type == 10 || type == 11) ? 1 | 2 | 8 | 16 | 32 | 128 : 0;
}

TEST(FilterParametersTest, GetAnswersItsWiderIdSetPerTypeAndNothingForExternal) {
    test::PoolWithChain pc;
    for (FilterType type = kExternalFilter; type <= kHarmonic8; ++type) {
        if (type == kNoFilterType) continue;
        OpaqueFilterData* f = pc.Add(type);
        if (type != kExternalFilter) {  // every field nonzero, so that only answering tells
            ParametricFilterData* p = AsParametric(f);
            p->gain = 2.0f, p->frequency = 0.1f, p->q = 0.6f, p->bandwidth = 0.09f;
        }
        if (FilterKindOf(type) == FilterKind::Harmonic) {
            HarmonicFilterData* h = AsHarmonic(f);
            h->components = 5, h->decay = 1, h->reverse = 1;
        }
        uint32_t answered = 0;
        for (FilterParameterId id : kAllFilterParameters) {
            if (GetFilterParameter(f, id) != 0.0) answered |= Bit(id);
        }
        EXPECT_EQ(answered, AnsweredIds(type)) << "type " << type;
    }
}

TEST(FilterParametersTest, HarmonicWholeNumbersAreTruncatedAndReadBackWidened) {
    test::PoolWithChain pc;
    OpaqueFilterData* h = pc.Add(kHarmonic4);
    SetFilterParameter(h, P::HarmonicComponents, 5.9f);
    SetFilterParameter(h, P::ComponentGain, 1.7f);
    SetFilterParameter(h, P::ReverseGainDecay, -0.9f);
    EXPECT_EQ(GetFilterParameter(h, P::HarmonicComponents), 5.0);
    EXPECT_EQ(GetFilterParameter(h, P::ComponentGain), 1.0);
    EXPECT_EQ(GetFilterParameter(h, P::ReverseGainDecay), 0.0);
}

// A value within every type's range for each id.
float SourceValue(FilterParameterId id) {
    if (id == P::Frequency) return 0.1f;
    if (id == P::HarmonicComponents) return 5.0f;
    return (id == P::ComponentGain || id == P::ReverseGainDecay) ? 1.0f : 0.6f;
}

TEST(FilterParametersTest, CopyWritesOnlyTheParametersBothMasksHoldAndAlwaysTheName) {
    struct Case {
        FilterType source, target;
        uint32_t writes;  // the parameters both masks hold
    };
    const Case cases[] = {{1, 2, 2},  {1, 4, 2},   {6, 5, 2}, {1, 8, 2}, {2, 4, 2},
                          {1, -1, 0}, {10, 11, 6}, {9, 6, 1}, {-1, 1, 0}};
    test::PoolWithChain pc;
    for (const Case& c : cases) {
        SCOPED_TRACE(std::to_string(c.source) + " to " + std::to_string(c.target));
        OpaqueFilterData* source = pc.Add(c.source);
        OpaqueFilterData* target = pc.Add(c.target);
        source->name = "Hum cut";
        for (FilterParameterId id : kAllFilterParameters) {
            SetFilterParameter(source, id, SourceValue(id));
        }
        const uint32_t started = target->changeStarted;
        CopyFilterParameters(source, target);
        EXPECT_EQ(target->changeStarted - started, c.writes);
        EXPECT_EQ(target->name, "Hum cut");
        const uint32_t shared = FilterParameterMask(c.source) & FilterParameterMask(c.target);
        for (FilterParameterId id : kAllFilterParameters) {
            if (!(shared & Bit(id))) continue;
            EXPECT_NEAR(GetFilterParameter(target, id), GetFilterParameter(source, id), 1e-5)
                << FilterParameterKey(id);
        }
    }
}

TEST(FilterParametersTest, SubFilterBandwidthIsStoredUnclamped) {
    test::PoolWithChain pc;
    OpaqueFilterData* h = pc.Add(kHarmonic8);
    SetFilterParameter(h, P::Bandwidth, 0.006f);
    SectionFilterData* fundamental = test::SubFilters(h)[0];
    EXPECT_EQ(fundamental->bandwidth, 0.006f);
    for (float bandwidth : {0.001f, 9.0f}) {
        SetFilterParameter(fundamental, P::Bandwidth, bandwidth);
        EXPECT_EQ(fundamental->bandwidth, bandwidth);
    }
}

constexpr uint32_t k1000HzBits = 0x3CB9C278u;
constexpr uint32_t k100HzBits = 0x3B149B93u;

TEST(FilterParametersTest, NewSingleSectionFiltersTakeTheirTypesDefaults) {
    test::PoolWithChain pc;
    for (FilterType type = kParametric; type <= kNotch; ++type) {
        SCOPED_TRACE(type);
        SectionFilterData* f = pc.AddSection(type);
        const bool shelf = type >= kLowShelf && type <= kHiShelf2;
        EXPECT_EQ(std::bit_cast<uint32_t>(f->frequency.Load()), shelf ? k100HzBits : k1000HzBits);
        EXPECT_EQ(f->gain, 1.0f);
        if (type == kParametric || type == kBandpass || type == kNotch) {
            EXPECT_EQ(f->bandwidth, 1.0f);
            EXPECT_FLOAT_EQ(f->q, static_cast<float>(test::ExpectedQ(f->frequency, 1.0)));
        } else {
            EXPECT_EQ(f->q, 0.70710677f);
        }
        EXPECT_TRUE(f->currentGain == f->gain && f->currentFrequency == f->frequency &&
                    f->currentQ == f->q);
        EXPECT_TRUE(SameCoefficients(AudioSet(f), f->edit));
        EXPECT_EQ(f->process.Load(), &ProcessFilterBlock);
        EXPECT_TRUE(f->numerator == f->edit.b && f->denominator == f->edit.a);
    }
}

TEST(FilterParametersTest, NewHarmonicAndExternalFiltersTakeTheirDefaults) {
    test::PoolWithChain pc;
    for (FilterType type : {kHarmonic4, kHarmonic8}) {
        HarmonicFilterData* h = pc.AddHarmonic(type);
        const int n = type == kHarmonic4 ? 4 : 8;
        EXPECT_EQ(std::bit_cast<uint32_t>(h->frequency.Load()), k1000HzBits);
        EXPECT_TRUE(h->gain == 1.0f && h->bandwidth == 1.0f);
        EXPECT_TRUE(h->harmonicCount == n && h->components == 7 && h->decay == 0 &&
                    h->reverse == 0);
        EXPECT_EQ(h->process.Load(), &ProcessHarmonicBlock);
        const std::vector<SectionFilterData*> subs = test::SubFilters(h);
        ASSERT_EQ(subs.size(), static_cast<size_t>(n));
        EXPECT_EQ(h->subFilters.Load()->count, n);
        for (int k = 0; k < n; ++k) {
            EXPECT_EQ(subs[k]->type, kParametric);
            EXPECT_EQ(test::HarmonicFlag(subs[k]), k + 1);
            EXPECT_NE(subs[k]->subFilterBandwidth, 0);
            EXPECT_FLOAT_EQ(subs[k]->frequency, (k + 1) * h->frequency);
        }
    }
    ExternalFilterData* e = pc.AddExternal();
    EXPECT_TRUE(e->sections.empty());
    EXPECT_EQ(e->process.Load(), &ProcessSectionsBlock);
    EXPECT_EQ(e->design.Load(), nullptr);
}

void RunNoise(OpaqueFilterData* f) {
    std::vector<float> buffer(64);
    for (size_t i = 0; i < buffer.size(); ++i)
        buffer[i] = (i % 7 == 0) ? 0.9f : -0.2f;
    f->process.Load()(f, buffer.data(), buffer.data(), static_cast<int>(buffer.size()));
}

bool HistoryIsClear(const SectionFilterData* s) {
    return s->x1 == 0.0f && s->x2 == 0.0f && s->y1 == 0.0 && s->y2 == 0.0;
}

bool HistoryIsClear(const FilterSection& s) {
    return s.x[0] == 0.0f && s.x[1] == 0.0f && s.x[2] == 0.0f && s.y[0] == 0.0 && s.y[1] == 0.0 &&
           s.y[2] == 0.0;
}

TEST(FilterParametersTest, ResetClearsTheHistoryOfEveryKindAndKeepsCoefficients) {
    test::PoolWithChain pc;
    SectionFilterData* single = pc.AddSection(kBandpass);
    HarmonicFilterData* harmonic = pc.AddHarmonic(kHarmonic4);
    ExternalFilterData* external = pc.AddExternal();
    SetFilterParameter(harmonic, P::Gain, -12.0f);
    FilterDescription sections;
    sections.numerators = {{0.5f, 0.2f, 0.1f}, {1.0f, -0.3f, 0.2f}};
    sections.denominators = {{1.0f, -0.5f, 0.1f}, {1.0f, 0.2f, 0.05f}};
    LoadExternalSections(external, sections);
    OpaqueFilterData* const all[] = {single, harmonic, external};
    for (OpaqueFilterData* f : all)
        RunNoise(f);
    ASSERT_FALSE(HistoryIsClear(single) || HistoryIsClear(test::SubFilters(harmonic)[3]) ||
                 HistoryIsClear(external->sections[1]));
    for (OpaqueFilterData* f : all)
        ResetFilterState(f);
    EXPECT_TRUE(HistoryIsClear(single));
    for (SectionFilterData* sub : test::SubFilters(harmonic))
        EXPECT_TRUE(HistoryIsClear(sub));
    for (const FilterSection& s : external->sections)
        EXPECT_TRUE(HistoryIsClear(s));
    EXPECT_FALSE(IsIdentity(single->edit));
    EXPECT_TRUE(SameCoefficients(AudioSet(single), single->edit));
    EXPECT_FALSE(IsIdentity(AudioSet(test::SubFilters(harmonic)[0])));
    EXPECT_EQ(external->sections[1].a[1], 0.2f);
}

}  // namespace
}  // namespace vorix
