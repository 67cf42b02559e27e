#include <algorithm>
#include <array>
#include <bit>
#include <climits>
#include <set>
#include <string>
#include <tuple>

#include "FilterTestHelpers.h"
#include "dsp/ExternalFilter.h"
#include "dsp/FilterParameters.h"
#include "dsp/FilterPool.h"

namespace vorix::test {
namespace {

TEST(FilterTypesTest, EveryRowHasItsNameKeyAndMaskAndOnlyItsKeyLeadsBack) {
    // clang-format off
    const std::tuple<FilterType, const char*, const char*, uint32_t> rows[] = {
        {-1, "External", "External", 0},           {1, "Parametric", "ParametricEQ", 131},
        {2, "Low Shelf", "LoShelfEQ", 67},         {3, "Hi Shelf", "HiShelfEQ", 67},
        {4, "Low Shelf II", "LoShelfEQ2", 7},      {5, "Hi Shelf II", "HiShelfEQ2", 7},
        {6, "Low Pass", "2ndOrdLowpass", 6},       {7, "Hi Pass", "2ndOrdHipass", 6},
        {8, "Bandpass", "2ndOrdBandpass", 130},    {9, "Notch", "2ndOrdBandReject", 130},
        {10, "Harmonic 4", "4HarmonicParEQ", 187}, {11, "Harmonic 8", "8HarmonicParEQ", 187},
        {0, "-ERROR-", "invalid", 0},              {12, "-ERROR-", "invalid", 0},
        {INT_MIN, "-ERROR-", "invalid", 0}};
    // clang-format on
    for (const auto& [type, name, key, mask] : rows) {
        EXPECT_STREQ(FilterTypeName(type), name);
        EXPECT_STREQ(FilterTypeKey(type), key);
        EXPECT_EQ(FilterParameterMask(type), mask) << type;
        EXPECT_EQ(FilterTypeFromKey(key), type > kLastFilterType || type < -1 ? 0 : type);
    }
    for (const char* key : {"", "parametriceq", "ParametricEQ ", "Parametric", "external"}) {
        EXPECT_EQ(FilterTypeFromKey(key), kNoFilterType) << key;
    }
}

TEST(FilterTypesTest, ParameterKeysAndTheWordForAnyOtherId) {
    const char* const keys[] = {
        "gain_db",        "frequency_hz",   "q_factor", "harmonic_components",
        "component_gain", "rev_gain_decay", "slope",    "bandwidth_oct"};
    for (uint32_t bit = 0; bit < 8; ++bit) {
        EXPECT_STREQ(FilterParameterKey(static_cast<FilterParameterId>(1u << bit)), keys[bit]);
    }
    EXPECT_STREQ(FilterParameterKey(static_cast<FilterParameterId>(3)), "invalid_param");
}

bool SameCoefficients(const BiquadCoefficients& x, const BiquadCoefficients& y) {
    return std::memcmp(&x, &y, sizeof x) == 0;
}

bool IsIdentity(const BiquadCoefficients& c) {
    return SameCoefficients(c, BiquadCoefficients{});
}

BiquadCoefficients AudioSet(const SectionFilterData* s) {
    return {{s->b[0], s->b[1], s->b[2]}, {s->a[0], s->a[1], s->a[2]}};
}

TEST(FilterParametersTest, ZeroDecibelsIsTheExactIdentityInEveryGainType) {
    PoolWithChain pc;
    for (FilterType type = kParametric; type <= kHiShelf2; ++type) {
        SectionFilterData* f = pc.AddSection(type);
        EXPECT_TRUE(IsIdentity(f->edit) && IsIdentity(AudioSet(f))) << "new, type " << type;
        for (auto [frequency, shape] : {std::pair{0.0005f, 0.34f}, {0.05f, 1.0f}, {0.45f, 3.9f}}) {
            SetFilterParameter(f, P::Gain, 12.0f);
            SetFilterParameter(f, P::Frequency, frequency);
            SetFilterParameter(f, ShapeOf(type), shape);
            ASSERT_FALSE(IsIdentity(f->edit));
            SetFilterParameter(f, P::Gain, 0.0f);
            EXPECT_TRUE(IsIdentity(f->edit)) << type << " at " << frequency << ", " << shape;
        }
        SetFilterParameter(f, P::Gain, 0.001f);
        EXPECT_FALSE(IsIdentity(f->edit)) << "only exactly 0 dB is a wire; type " << type;
    }
}

// A write outside the type's range is clamped into it, and the controls map the same range
// linearly to 0..1 and back, clamped both ways; gain passes that mapping unchanged.
TEST(FilterParametersTest, WritesAreClampedToEachTypesRangeAndTheUnitMappingSpansIt) {
    // clang-format off
    const std::tuple<FilterType, FilterParameterId, float, float> ranges[] = {
        {1, P::Gain, -24.0f, 24.0f},        {3, P::Gain, -24.0f, 24.0f},
        {5, P::Gain, -24.0f, 24.0f},        {10, P::Gain, -24.0f, 24.0f},
        {1, P::Bandwidth, 0.02f, 4.0f},     {8, P::Bandwidth, 0.02f, 4.0f},
        {9, P::Bandwidth, 0.02f, 4.0f},     {10, P::Bandwidth, 0.005f, 0.104f},
        {11, P::Bandwidth, 0.005f, 0.104f}, {2, P::Slope, 0.33333334f, 1.0f},
        {3, P::Slope, 0.33333334f, 1.0f},   {4, P::Q, 0.1f, 4.0f},
        {5, P::Q, 0.1f, 4.0f},              {6, P::Q, 0.1f, 10.0f},
        {7, P::Q, 0.1f, 10.0f},             {8, P::Q, 0.1f, 10.0f},
        {9, P::Q, 0.1f, 10.0f}};
    // clang-format on
    PoolWithChain pc;
    for (const auto& [type, id, lower, upper] : ranges) {
        SCOPED_TRACE(std::to_string(type) + " " + FilterParameterKey(id));
        OpaqueFilterData* f = pc.Add(type);
        const float span = upper - lower, inside = lower + 0.25f * span;
        const float writes[][2] = {{lower - span, lower}, {upper + span, upper}, {inside, inside}};
        for (auto [value, kept] : writes) {
            SetFilterParameter(f, id, value);
            EXPECT_NEAR(GetFilterParameter(f, id), kept, id == P::Gain ? 1e-4 : 0.0) << value;
        }
        const bool gain = id == P::Gain;  // passes the unit mapping unchanged
        EXPECT_EQ(FilterParameterToUnit(type, id, 1.5f, false), gain ? 1.5f : upper);
        EXPECT_EQ(FilterParameterToUnit(type, id, -1e3f, true), gain ? -1e3f : 0.0f);
        EXPECT_NEAR(FilterParameterToUnit(type, id, inside, true), gain ? inside : 0.25f, 1e-6f);
    }
}

std::array<float, 4> Targets(const SectionFilterData* s) {
    return {s->gain, s->frequency, s->q, s->bandwidth};
}

TEST(FilterParametersTest, EveryWriteIsOneBracketedChangeThatRedesignsTheEditSet) {
    PoolWithChain pc;
    for (FilterType type = kExternalFilter; type <= kHarmonic8; ++type) {
        OpaqueFilterData* f = pc.Add(type);
        if (f == nullptr) continue;  // type 0
        SectionFilterData* s = KindOf(f) == FilterKind::SingleSection ? AsSection(f) : nullptr;
        for (FilterParameterId id : kAllFilterParameters) {
            SCOPED_TRACE(std::to_string(type) + " " + FilterParameterKey(id));
            const uint32_t started = f->changeStarted;
            const std::array<float, 4> before = s ? Targets(s) : std::array<float, 4>{};
            if (s) s->edit.b[0] = 42.0f;
            SetFilterParameter(f, id, 0.3f);
            EXPECT_TRUE(f->changeStarted == started + 1 && f->changeFinished == started + 1);
            if (!s) continue;
            EXPECT_NE(s->edit.b[0], 42.0f);
            // Pass and reject types take Q and bandwidth alike; any other id stores nothing.
            const uint32_t held = FilterParameterMask(type) | (type >= kLowPass ? 4 | 128 : 0);
            EXPECT_TRUE((held & Bit(id)) || Targets(s) == before);
        }
    }
}

// Defaults; a Q derived from bandwidth follows the frequency and reads back, though Q is not in
// those types' masks; a slope reads back as slope only.
TEST(FilterParametersTest, NewFiltersTakeTheirTypesDefaultsAndReadBackTheirQ) {
    constexpr uint32_t k1000Hz = 0x3CB9C278u, k100Hz = 0x3B149B93u;  // at 44100 Hz
    PoolWithChain pc;
    for (FilterType type = kParametric; type <= kNotch; ++type) {
        SCOPED_TRACE(type);
        SectionFilterData* f = pc.AddSection(type);
        const bool slope = ShapeOf(type) == P::Slope, fromBandwidth = ShapeOf(type) == P::Bandwidth;
        EXPECT_EQ(std::bit_cast<uint32_t>(f->frequency.Load()),
                  type >= kLowShelf && type <= kHiShelf2 ? k100Hz : k1000Hz);
        EXPECT_TRUE(f->gain == 1.0f && (!fromBandwidth || f->bandwidth == 1.0f));
        EXPECT_TRUE(f->currentGain == f->gain && f->currentFrequency == f->frequency &&
                    f->currentQ == f->q);
        EXPECT_TRUE(SameCoefficients(AudioSet(f), f->edit) && f->numerator == f->edit.b);
        SetFilterParameter(f, P::Frequency, 0.4f);
        EXPECT_FLOAT_EQ(f->q, fromBandwidth ? ExpectedQ(0.4, 1.0) : 0.70710677f);
        EXPECT_EQ(GetFilterParameter(f, P::Q), slope ? 0.0 : double(f->q));
        EXPECT_EQ(GetFilterParameter(f, P::Slope), slope ? double(f->q) : 0.0);
    }
    for (FilterType type : {kHarmonic4, kHarmonic8}) {
        HarmonicFilterData* h = pc.AddHarmonic(type);
        EXPECT_EQ(std::bit_cast<uint32_t>(h->frequency.Load()), k1000Hz);
        EXPECT_TRUE(h->gain == 1.0f && h->bandwidth == 1.0f && h->components == 7 &&
                    h->decay == 0 && h->reverse == 0);
        EXPECT_EQ(SubFilters(h).size(), type == kHarmonic4 ? 4u : 8u);
        SetFilterParameter(h, P::HarmonicComponents, 5.9f);
        EXPECT_EQ(GetFilterParameter(h, P::HarmonicComponents), 5.0) << "truncated";
    }
    ExternalFilterData* e = pc.AddExternal();
    EXPECT_TRUE(e->sections.empty() && GetFilterParameter(e, P::Frequency) == 0.0);
}

TEST(FilterParametersTest, CopyWritesOnlyTheParametersBothMasksHoldAndAlwaysTheName) {
    // Source type, target type, and the number of parameters both masks hold.
    const int cases[][3] = {{1, 2, 2},   {1, 4, 2}, {6, 5, 2},  {1, 8, 2},
                            {10, 11, 6}, {9, 6, 1}, {1, -1, 0}, {-1, 1, 0}};
    PoolWithChain pc;
    for (const auto& [sourceType, targetType, writes] : cases) {
        SCOPED_TRACE(std::to_string(sourceType) + " to " + std::to_string(targetType));
        OpaqueFilterData* source = pc.Add(sourceType);
        OpaqueFilterData* target = pc.Add(targetType);
        source->name = "Hum cut";
        for (FilterParameterId id : kAllFilterParameters) {
            SetFilterParameter(source, id, id == P::Frequency ? 0.1f : 1.0f);
        }
        const uint32_t started = target->changeStarted;
        CopyFilterParameters(source, target);
        EXPECT_TRUE(target->changeStarted - started == uint32_t(writes) &&
                    target->name == "Hum cut");
        const uint32_t shared = FilterParameterMask(sourceType) & FilterParameterMask(targetType);
        for (FilterParameterId id : kAllFilterParameters) {
            const double copied = GetFilterParameter(target, id),
                         held = GetFilterParameter(source, id);
            EXPECT_TRUE(!(shared & Bit(id)) || std::fabs(copied - held) < 1e-5)
                << FilterParameterKey(id);
        }
    }
}

bool HistoryIsClear(const SectionFilterData* s) {
    return s->x1 == 0.0f && s->x2 == 0.0f && s->y1 == 0.0 && s->y2 == 0.0;
}

TEST(FilterParametersTest, ResetClearsTheHistoryOfEveryKindAndKeepsCoefficients) {
    PoolWithChain pc;
    SectionFilterData* single = pc.AddSection(kBandpass);
    HarmonicFilterData* harmonic = pc.AddHarmonic(kHarmonic4);
    ExternalFilterData* external = pc.AddExternal();
    SetFilterParameter(harmonic, P::Gain, -12.0f);
    FilterDescription d;
    d.numerators = d.denominators = {{1.0f, -0.5f, 0.1f}, {1.0f, 0.2f, 0.05f}};
    LoadExternalSections(external, d);
    OpaqueFilterData* const all[] = {single, harmonic, external};
    std::vector<float> buffer = Noise(64);
    for (OpaqueFilterData* f : all)
        f->process.Load()(f, buffer.data(), buffer.data(), 64);
    const FilterSection& s = external->sections[1];
    ASSERT_FALSE(HistoryIsClear(single) || HistoryIsClear(SubFilters(harmonic)[3]) ||
                 s.y[1] == 0.0);
    for (OpaqueFilterData* f : all)
        ResetFilterState(f);
    EXPECT_TRUE(HistoryIsClear(single) && SameCoefficients(AudioSet(single), single->edit));
    for (SectionFilterData* sub : SubFilters(harmonic))
        EXPECT_TRUE(HistoryIsClear(sub));
    EXPECT_FALSE(IsIdentity(single->edit) || IsIdentity(AudioSet(SubFilters(harmonic)[0])));
    EXPECT_TRUE(s.x[0] == 0.0f && s.x[1] == 0.0f && s.x[2] == 0.0f && s.y[0] == 0.0 &&
                s.y[1] == 0.0 && s.y[2] == 0.0 && s.a[1] == 0.2f);
}

std::vector<OpaqueFilterData*> Linked(const FilterChain* chain) {
    std::vector<OpaqueFilterData*> filters;
    for (OpaqueFilterData* f = FirstFilter(chain); f != nullptr; f = NextFilter(f))
        filters.push_back(f);
    return filters;
}

// Ten records of one type fill a block; the eleventh opens a second one, and a released slot is
// the next one used, with nothing of its former filter.
TEST(FilterPoolTest, BlocksOfTenGrowPerTypeAndReleaseFreesASlotThatIsTheNextOneUsed) {
    PoolWithChain pc;
    for (int i = 0; i < 11; ++i)
        pc.Add(kParametric, FilterFlags::Selected);
    pc.Add(kNotch);
    for (FilterType type : {0, 12, -2})
        EXPECT_EQ(pc.Add(type), nullptr) << type;
    const std::vector<OpaqueFilterData*> linked = Linked(pc.chain);
    EXPECT_EQ(std::set<OpaqueFilterData*>(linked.begin(), linked.end()).size(), 12u);
    EXPECT_EQ(pc.chain->count, 12);
    EXPECT_EQ(FilterPoolBlockCount(&pc.pool, kParametric), 2);
    EXPECT_EQ(FilterPoolBlockCount(&pc.pool, kNotch), 1);

    OpaqueFilterData* fourth = linked[3];
    fourth->name = "Presence";
    fourth->partner.store(linked[0]);
    SetFilterParameter(fourth, P::Gain, 9.0f);
    fourth->changeApplied.store(1);
    const float b0 = AsSection(fourth)->edit.b[0];
    FilterChain* other = AcquireFilterChain(&pc.pool);
    EXPECT_FALSE(ReleaseFilter(other, fourth)) << "not in that chain: nothing changes";
    EXPECT_TRUE(fourth->inUse == 1 && fourth->flags == FilterFlags::Selected &&
                pc.chain->count == 12);
    ASSERT_TRUE(ReleaseFilter(pc.chain, fourth));
    EXPECT_FALSE(ReleaseFilter(pc.chain, fourth)) << "a second release finds nothing";
    std::vector<OpaqueFilterData*> rest = linked;
    rest.erase(rest.begin() + 3);
    EXPECT_TRUE(Linked(pc.chain) == rest && pc.chain->count == 11);
    EXPECT_TRUE(fourth->inUse == 0 && fourth->next.load() == nullptr &&
                fourth->partner.load() == nullptr);
    EXPECT_TRUE(fourth->flags == 0u && fourth->chain == nullptr && fourth->changeStarted == 0u &&
                fourth->changeFinished == 0u && fourth->changeApplied == 0u);
    EXPECT_TRUE(AsSection(fourth)->edit.b[0] == b0 && fourth->name == "Presence")
        << "a walker that still holds the record reads on; the name stays until the slot is reused";
    EXPECT_EQ(pc.Add(kParametric), fourth);
    EXPECT_EQ(FilterPoolBlockCount(&pc.pool, kParametric), 2);
    EXPECT_TRUE(fourth->name.empty() && GetFilterParameter(fourth, P::Gain) == 0.0);
    EXPECT_EQ(Linked(pc.chain).back(), fourth);
    OpaqueFilterData* loose = AllocateFilterRecord(&pc.pool, kNotch);  // in no chain
    EXPECT_TRUE(ReleaseFilter(nullptr, loose) && AllocateFilterRecord(&pc.pool, kNotch) == loose);
}

TEST(FilterPoolTest, AReleasedHarmonicFilterGivesBackItsSubFiltersAndItsChain) {
    PoolWithChain pc;
    OpaqueFilterData* harmonic = pc.Add(kHarmonic8);
    FilterChain* subChain = AsHarmonic(harmonic)->subFilters;
    const std::vector<SectionFilterData*> subs = SubFilters(harmonic);
    ASSERT_TRUE(ReleaseFilter(pc.chain, harmonic));
    for (const SectionFilterData* sub : subs)
        EXPECT_EQ(sub->inUse, 0);
    EXPECT_EQ(pc.pool.freeChains, subChain);
    OpaqueFilterData* next = pc.Add(kHarmonic4);
    EXPECT_TRUE(AsHarmonic(next)->subFilters == subChain && pc.pool.freeChains == nullptr);
    const std::vector<SectionFilterData*> reused = SubFilters(next);
    EXPECT_TRUE(reused.size() == 4 && std::equal(reused.begin(), reused.end(), subs.begin()));
    EXPECT_EQ(FilterPoolBlockCount(&pc.pool, kParametric), 1);
}

}  // namespace
}  // namespace vorix::test
