#include "engine/FilterPool.h"

#include <algorithm>
#include <vector>

#include <gtest/gtest.h>

#include "FilterTestHelpers.h"

namespace vorix {
namespace {

using test::P;

std::vector<OpaqueFilterData*> AddMany(test::PoolWithChain& pc, FilterType type, int count) {
    std::vector<OpaqueFilterData*> filters;
    for (int i = 0; i < count; ++i)
        filters.push_back(pc.Add(type));
    return filters;
}

std::vector<OpaqueFilterData*> Linked(const FilterChain* chain) {
    std::vector<OpaqueFilterData*> filters;
    for (OpaqueFilterData* f = FirstFilter(chain); f != nullptr; f = NextFilter(f)) {
        filters.push_back(f);
    }
    return filters;
}

TEST(FilterPoolTest, AnEleventhFilterOfOneTypeOpensASecondBlock) {
    test::PoolWithChain pc;
    const std::vector<OpaqueFilterData*> ten = AddMany(pc, kParametric, 10);
    pc.Add(kNotch);
    EXPECT_EQ(FilterPoolBlockCount(&pc.pool, kParametric), 1);
    EXPECT_EQ(FilterPoolBlockCount(&pc.pool, kNotch), 1);
    OpaqueFilterData* eleventh = pc.Add(kParametric);
    EXPECT_EQ(FilterPoolBlockCount(&pc.pool, kParametric), 2);
    EXPECT_EQ(std::count(ten.begin(), ten.end(), eleventh), 0);
    EXPECT_EQ(pc.chain->count, 12);
}

TEST(FilterPoolTest, AReleasedSlotIsTheNextOneUsedAndKeepsNothingOfItsFormerFilter) {
    test::PoolWithChain pc;
    const std::vector<OpaqueFilterData*> filters = AddMany(pc, kParametric, 11);
    OpaqueFilterData* fourth = filters[3];
    fourth->name = "Presence";
    SetFilterParameter(fourth, P::Gain, 9.0f);
    SetFilterParameter(fourth, P::Bandwidth, 3.0f);
    ASSERT_TRUE(ReleaseFilter(pc.chain, fourth));
    EXPECT_EQ(fourth->name, "Presence") << "the name stays until the slot is used again";

    OpaqueFilterData* reused = pc.Add(kParametric);
    EXPECT_EQ(reused, fourth);
    EXPECT_EQ(FilterPoolBlockCount(&pc.pool, kParametric), 2);
    EXPECT_TRUE(reused->name.empty());
    EXPECT_EQ(GetFilterParameter(reused, P::Gain), 0.0);
    EXPECT_EQ(GetFilterParameter(reused, P::Bandwidth), 1.0);
    EXPECT_EQ(Linked(pc.chain).back(), reused);
}

TEST(FilterPoolTest, ReleaseClearsLinksFlagsAndCountersButNotCoefficients) {
    test::PoolWithChain pc;
    OpaqueFilterData* first = pc.Add(kBandpass, FilterFlags::Selected | FilterFlags::LeftOnly);
    OpaqueFilterData* partner = pc.Add(kBandpass);
    first->partner.store(partner);
    SetFilterParameter(first, P::Frequency, 0.1f);
    first->changeApplied.store(1);
    const float b0 = AsSection(first)->edit.b[0];

    ASSERT_TRUE(ReleaseFilter(pc.chain, first));
    EXPECT_EQ(first->inUse, 0);
    EXPECT_EQ(first->next.load(), nullptr);
    EXPECT_EQ(first->partner.load(), nullptr);
    EXPECT_EQ(first->flags, 0u);
    EXPECT_EQ(first->chain, nullptr);
    EXPECT_EQ(first->changeStarted.load(), 0u);
    EXPECT_EQ(first->changeFinished.load(), 0u);
    EXPECT_EQ(first->changeApplied.load(), 0u);
    EXPECT_EQ(AsSection(first)->edit.b[0], b0);
    EXPECT_EQ(Linked(pc.chain), std::vector<OpaqueFilterData*>{partner});
}

TEST(FilterPoolTest, TypeZeroAndUnknownTypesHaveNoRecords) {
    test::PoolWithChain pc;
    for (FilterType type : {0, 12, -2}) {
        EXPECT_EQ(pc.Add(type), nullptr) << type;
        EXPECT_EQ(AllocateFilterRecord(&pc.pool, type), nullptr) << type;
    }
    EXPECT_EQ(pc.chain->count, 0);
    EXPECT_EQ(FirstFilter(pc.chain), nullptr);
}

TEST(FilterPoolTest, ReleasingARecordFromAChainThatDoesNotHoldItChangesNothing) {
    test::PoolWithChain pc;
    FilterChain* other = AcquireFilterChain(&pc.pool);
    OpaqueFilterData* f = pc.Add(kLowPass, FilterFlags::GainLock);
    SetFilterParameter(f, P::Q, 2.0f);

    EXPECT_FALSE(ReleaseFilter(other, f));
    EXPECT_EQ(f->inUse, 1);
    EXPECT_EQ(f->flags, FilterFlags::GainLock);
    EXPECT_EQ(f->chain, pc.chain);
    EXPECT_EQ(f->changeStarted.load(), 1u);
    EXPECT_EQ(pc.chain->count, 1);
    EXPECT_EQ(other->count, 0);
    EXPECT_EQ(Linked(pc.chain), std::vector<OpaqueFilterData*>{f});

    ASSERT_TRUE(ReleaseFilter(pc.chain, f));
    EXPECT_FALSE(ReleaseFilter(pc.chain, f)) << "a second release finds nothing";
    EXPECT_EQ(pc.chain->count, 0);
}

TEST(FilterPoolTest, ANullChainSkipsTheUnlinkingAndStillFreesTheSlot) {
    FilterPool pool;
    OpaqueFilterData* loose = AllocateFilterRecord(&pool, kNotch);
    EXPECT_TRUE(ReleaseFilter(nullptr, loose));
    EXPECT_EQ(AllocateFilterRecord(&pool, kNotch), loose);
}

TEST(FilterPoolTest, TheChainCountsAndKeepsOrderAcrossReleases) {
    test::PoolWithChain pc;
    const std::vector<OpaqueFilterData*> f = {pc.Add(kParametric), pc.Add(kLowShelf),
                                              pc.Add(kNotch), pc.Add(kParametric)};
    for (OpaqueFilterData* filter : f)
        EXPECT_EQ(filter->chain, pc.chain);
    EXPECT_EQ(pc.chain->count, 4);
    ReleaseFilter(pc.chain, f[2]);
    EXPECT_EQ(Linked(pc.chain), (std::vector<OpaqueFilterData*>{f[0], f[1], f[3]}));
    ReleaseFilter(pc.chain, f[0]);
    ReleaseFilter(pc.chain, f[3]);
    EXPECT_EQ(Linked(pc.chain), std::vector<OpaqueFilterData*>{f[1]});
    EXPECT_EQ(pc.chain->count, 1);
    ReleaseFilter(pc.chain, f[1]);
    EXPECT_EQ(pc.chain->count, 0);
    EXPECT_EQ(FirstFilter(pc.chain), nullptr);
}

TEST(FilterPoolTest, AReleasedHarmonicFilterGivesBackItsSubFiltersAndItsChain) {
    test::PoolWithChain pc;
    OpaqueFilterData* harmonic = pc.Add(kHarmonic8);
    FilterChain* subChain = AsHarmonic(harmonic)->subFilters;
    const std::vector<SectionFilterData*> subs = test::SubFilters(harmonic);
    ASSERT_EQ(subChain->count, 8);

    ASSERT_TRUE(ReleaseFilter(pc.chain, harmonic));
    for (const SectionFilterData* sub : subs)
        EXPECT_EQ(sub->inUse, 0);
    EXPECT_EQ(pc.pool.freeChains, subChain);
    EXPECT_EQ(pc.chain->count, 0);

    OpaqueFilterData* next = pc.Add(kHarmonic4);
    EXPECT_EQ(AsHarmonic(next)->subFilters.Load(), subChain);
    EXPECT_EQ(pc.pool.freeChains, nullptr);
    EXPECT_EQ(subChain->count, 4);
    const std::vector<SectionFilterData*> reused = test::SubFilters(next);
    EXPECT_TRUE(std::equal(reused.begin(), reused.end(), subs.begin()));
    EXPECT_EQ(FilterPoolBlockCount(&pc.pool, kParametric), 1);
}

}  // namespace
}  // namespace vorix
