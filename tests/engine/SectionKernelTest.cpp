#include "engine/SectionKernel.h"

#include <cmath>

#include "KernelTestHelpers.h"

namespace vorix::test {
namespace {

TEST(SectionKernel, UnrolledRecursionEqualsSampleBySampleOverOddSizes) {
    RandomSections sections(9, 42);
    for (int j = 0; j < sections.size(); ++j) {
        const SectionCoefficients c = LoadAudioSet(sections[static_cast<size_t>(j)]);
        for (int samples : OddBlockSizes()) {
            SectionState fastState = LoadState(sections[static_cast<size_t>(j)]);
            SectionState plainState = fastState;
            const std::vector<float> input = RandomBlock(samples, static_cast<uint32_t>(samples + j));
            std::vector<float> fast(input.size()), plain(input.size());
            RunRecursion(c, fastState, input.data(), fast.data(), samples);
            RunRecursionPlain(c, plainState, input.data(), plain.data(), samples);
            ASSERT_TRUE(SameBits(fast.data(), plain.data(), samples));
            ASSERT_EQ(0, std::memcmp(&fastState, &plainState, sizeof(SectionState)));
        }
    }
}

// A Parametric filter at 1 kHz, 48 kHz, settled with no ramp pending.
class RampTest : public ::testing::Test {
protected:
    OpaqueFilterData* MakeSettled(float gainDb) {
        OpaqueFilterData* f = CreateFilterInChain(chain_, 0, kParametric);
        SetFilterParameter(f, FilterParameterId::Frequency, 1000.0f / 48000.0f);
        SetFilterParameter(f, FilterParameterId::Gain, gainDb);
        std::vector<float> settle(32, 0.0f);
        ProcessFilterBlock(f, settle.data(), settle.data(), 32);
        return f;
    }

    std::vector<float> Run(OpaqueFilterData* f, const std::vector<float>& input, int offset, int count) {
        std::vector<float> out(static_cast<size_t>(count));
        ProcessFilterBlock(f, input.data() + offset, out.data(), count);
        return out;
    }

    static bool RampPending(const OpaqueFilterData* f) { return RampDue(f); }

    FilterPool pool_;
    FilterChain* chain_ = AcquireFilterChain(&pool_);
    std::vector<float> input_ = RandomBlock(512, 9);
};

TEST_F(RampTest, RampCoversTheFirstSixteenSamplesThenRunsOnTheLastDesign) {
    OpaqueFilterData* whole = MakeSettled(0.0f);
    OpaqueFilterData* split = MakeSettled(0.0f);
    SetFilterParameter(whole, FilterParameterId::Gain, 12.0f);
    SetFilterParameter(split, FilterParameterId::Gain, 12.0f);
    const std::vector<float> one = Run(whole, input_, 0, 512);
    std::vector<float> two = Run(split, input_, 0, 16);
    const std::vector<float> rest = Run(split, input_, 16, 496);
    two.insert(two.end(), rest.begin(), rest.end());
    EXPECT_TRUE(SameBits(one.data(), two.data(), 512));
    EXPECT_FALSE(RampPending(whole));
    EXPECT_EQ(AsSection(whole)->currentGain.Load(), AsSection(whole)->gain.Load());
}

TEST_F(RampTest, RampStartsOnTheFirstSampleEvenFromZeroDecibels) {
    OpaqueFilterData* f = MakeSettled(0.0f);
    SetFilterParameter(f, FilterParameterId::Gain, 12.0f);
    const std::vector<float> impulse = [] {
        std::vector<float> v(16, 0.0f);
        v[0] = 1.0f;
        return v;
    }();
    const std::vector<float> out = Run(f, impulse, 0, 16);
    // A wire would pass 1.0 through; the first of sixteen steps already boosts a little.
    EXPECT_GT(out[0], 1.0f);
    EXPECT_LT(out[0], 1.2f);
}

TEST_F(RampTest, ShortBlockRampsOverItsOwnLengthAndReachesTheTarget) {
    OpaqueFilterData* f = MakeSettled(0.0f);
    SetFilterParameter(f, FilterParameterId::Gain, -12.0f);
    SetFilterParameter(f, FilterParameterId::Frequency, 3000.0f / 48000.0f);
    Run(f, input_, 0, 5);
    SectionFilterData* s = AsSection(f);
    EXPECT_EQ(s->currentGain.Load(), s->gain.Load());
    EXPECT_EQ(s->currentFrequency.Load(), s->frequency.Load());
    EXPECT_EQ(s->currentQ.Load(), s->q.Load());
    for (int i = 0; i < 3; ++i) {  // the last of five steps lands on the target
        EXPECT_NEAR(s->b[i].Load(), s->edit.b[i], 1e-5f);
        EXPECT_NEAR(s->a[i].Load(), s->edit.a[i], 1e-5f);
    }
    EXPECT_FALSE(RampPending(f));
}

TEST_F(RampTest, TwoChangesBetweenBlocksMakeOneRampToTheLatest) {
    OpaqueFilterData* twice = MakeSettled(0.0f);
    OpaqueFilterData* once = MakeSettled(0.0f);
    SetFilterParameter(twice, FilterParameterId::Gain, 18.0f);
    SetFilterParameter(twice, FilterParameterId::Gain, -6.0f);
    SetFilterParameter(once, FilterParameterId::Gain, -6.0f);
    EXPECT_TRUE(SameBits(Run(twice, input_, 0, 64).data(), Run(once, input_, 0, 64).data(), 64));
}

TEST_F(RampTest, WriteUnderWayKeepsOldCoefficientsAndRampsInTheNextBlock) {
    OpaqueFilterData* f = MakeSettled(0.0f);
    OpaqueFilterData* untouched = MakeSettled(0.0f);
    // A writer on the editor side has opened its bracket and stored a new target.
    f->changeStarted.fetch_add(1);
    AsSection(f)->gain = 4.0f;
    const uint32_t appliedBefore = f->changeApplied.load();
    EXPECT_TRUE(SameBits(Run(f, input_, 0, 64).data(), Run(untouched, input_, 0, 64).data(), 64));
    EXPECT_EQ(appliedBefore, f->changeApplied.load());
    // The bracket closes: the next block ramps to the new target.
    f->changeFinished.store(f->changeStarted.load());
    Run(f, input_, 64, 64);
    EXPECT_EQ(f->changeStarted.load(), f->changeApplied.load());
    EXPECT_EQ(4.0f, AsSection(f)->currentGain.Load());
}

TEST_F(RampTest, ZeroSamplesApplyTheChangeWithoutDesigning) {
    OpaqueFilterData* f = MakeSettled(0.0f);
    SetFilterParameter(f, FilterParameterId::Gain, 9.0f);
    SectionFilterData* s = AsSection(f);
    const float b0Before = s->b[0];
    ProcessFilterBlock(f, input_.data(), nullptr, 0);
    EXPECT_EQ(s->gain.Load(), s->currentGain.Load());
    EXPECT_EQ(b0Before, s->b[0].Load());  // still the identity of 0 dB
    EXPECT_FALSE(RampPending(f));
}

TEST_F(RampTest, FrequencyChangeAtZeroDecibelsRampsThroughIdentityDesigns) {
    OpaqueFilterData* f = MakeSettled(0.0f);
    SetFilterParameter(f, FilterParameterId::Frequency, 5000.0f / 48000.0f);
    EXPECT_TRUE(RampPending(f));
    const std::vector<float> out = Run(f, input_, 0, 64);
    EXPECT_TRUE(SameBits(out.data(), input_.data(), 64));
    EXPECT_FALSE(RampPending(f));
}

}  // namespace
}  // namespace vorix::test
