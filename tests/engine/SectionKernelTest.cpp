#include "dsp/SectionKernel.h"

#include <bit>
#include <random>
#include <string>

#include "FilterTestHelpers.h"
#include "dsp/ExternalFilter.h"
#include "dsp/SectionCascade.h"

namespace vorix::test {
namespace {

// Parametric filters at 1 kHz, 48 kHz, settled at 0 dB with no ramp pending; every block reads
// the same noise.
class RampTest : public ::testing::Test {
  protected:
    SectionFilterData* Settled() {
        OpaqueFilterData* f = pc_.Add(kParametric);
        SetFilterParameter(f, P::Frequency, 1000.0f / 48000.0f);
        std::vector<float> settle(32, 0.0f);
        ProcessFilterBlock(f, settle.data(), settle.data(), 32);
        return AsSection(f);
    }

    std::vector<float> Run(OpaqueFilterData* f, int count, int offset = 0) {
        std::vector<float> out(static_cast<size_t>(count));
        ProcessFilterBlock(f, input_.data() + offset, out.data(), count);
        return out;
    }

    PoolWithChain pc_;
    std::vector<float> input_ = Noise(512, 9);
};

// A block of 16 ramps exactly as a long one does and a block of 15 no longer does: the ramp
// spans the first 16 samples, and the rest of the block runs on the last design. Two changes
// between blocks make one ramp, straight to the latest.
TEST_F(RampTest, OneRampToTheLatestTargetSpansTheFirstSixteenSamplesThenTheLastDesignRuns) {
    SectionFilterData* f[4] = {Settled(), Settled(), Settled(), Settled()};
    SetFilterParameter(f[3], P::Gain, -18.0f);  // then 12 dB like the others, before one block
    for (SectionFilterData* s : f)
        SetFilterParameter(s, P::Gain, 12.0f);
    const std::vector<float> whole = Run(f[0], 512);
    std::vector<float> split = Run(f[1], 16), rest = Run(f[1], 496, 16);
    split.insert(split.end(), rest.begin(), rest.end());
    EXPECT_TRUE(SameBits(whole, split) && SameBits(whole, Run(f[3], 512)));
    EXPECT_FALSE(SameBits(Run(f[2], 15), {whole.begin(), whole.begin() + 15}));
    EXPECT_NE(whole[0], input_[0]) << "from 0 dB the first step is already no wire";
    EXPECT_TRUE(!RampDue(f[0]) && f[0]->currentGain == f[0]->gain);
}

TEST_F(RampTest, AShortBlockRampsOverItsOwnLengthAndReachesTheTarget) {
    SectionFilterData* s = Settled();
    SetFilterParameter(s, P::Gain, -12.0f);
    SetFilterParameter(s, P::Frequency, 3000.0f / 48000.0f);
    Run(s, 5);
    EXPECT_TRUE(s->currentGain == s->gain && s->currentFrequency == s->frequency &&
                s->currentQ == s->q && !RampDue(s));
    for (int i = 0; i < 3; ++i) {  // the last of five steps lands on the target
        EXPECT_TRUE(std::fabs(s->b[i] - s->edit.b[i]) < 1e-5f &&
                    std::fabs(s->a[i] - s->edit.a[i]) < 1e-5f);
    }
}

TEST_F(RampTest, ABlockThatSeesAWriteUnderWayKeepsTheOldDesignAndTheNextBlockRamps) {
    SectionFilterData* f = Settled();
    SectionFilterData* untouched = Settled();
    f->changeStarted.fetch_add(1);  // a writer has opened its bracket and stored a target
    f->gain = 4.0f;
    EXPECT_TRUE(SameBits(Run(f, 64), Run(untouched, 64)));
    EXPECT_NE(f->changeApplied, f->changeStarted);
    f->changeFinished.store(f->changeStarted.load());
    Run(f, 64, 64);
    EXPECT_TRUE(f->changeApplied == f->changeStarted && f->currentGain == 4.0f);
}

// Zero samples take the change at once without designing; a frequency change at 0 dB ramps
// through identity designs, so the block passes unchanged.
TEST_F(RampTest, ZeroSamplesApplyAChangeAndAZeroDecibelRampIsAWire) {
    SectionFilterData* s = Settled();
    SetFilterParameter(s, P::Gain, 9.0f);
    ProcessFilterBlock(s, input_.data(), nullptr, 0);
    EXPECT_TRUE(s->currentGain == s->gain && !RampDue(s) && s->b[0] == 1.0f);
    SetFilterParameter(s, P::Gain, 0.0f);
    Run(s, 0);
    SetFilterParameter(s, P::Frequency, 5000.0f / 48000.0f);
    EXPECT_TRUE(RampDue(s));
    EXPECT_TRUE(SameBits(Run(s, 64), {input_.begin(), input_.begin() + 64}));
}

// A random cascade: single-section filters of every type 1 to 9 and, about one in four, a section
// of an External filter, each settled so that its history is not zero; about one filter in three
// has a change waiting, which ramps in the next block. The same seed gives the same cascade.
std::vector<CascadeStage> RandomStages(PoolWithChain& pc, int count, uint32_t seed) {
    std::mt19937 rng(seed);
    std::uniform_real_distribution<float> unit(0.0f, 1.0f);
    std::vector<float> warmUp = Noise(64, seed);
    std::vector<CascadeStage> stages;
    while (static_cast<int>(stages.size()) < count) {
        if (rng() % 4 == 0) {
            ExternalFilterData* e = pc.AddExternal();
            FilterDescription d;
            for (uint32_t k = 1 + rng() % 3; k > 0; --k) {
                d.numerators.push_back({unit(rng), unit(rng) - 0.5f, 0.3f * unit(rng)});
                d.denominators.push_back({1.0f, 1.2f * unit(rng) - 0.6f, 0.8f * unit(rng)});
            }
            LoadExternalSections(e, d);
            for (FilterSection& section : e->sections) {
                RunExternalSection(section, warmUp.data(), warmUp.data(), 64);
                if (static_cast<int>(stages.size()) < count) stages.push_back({nullptr, &section, nullptr});
            }
            continue;
        }
        OpaqueFilterData* f = pc.Add(static_cast<FilterType>(1 + rng() % 9));
        SetFilterParameter(f, P::Frequency, 0.001f + 0.4f * unit(rng) * unit(rng));
        SetFilterParameter(f, P::Gain, 48.0f * unit(rng) - 24.0f);
        SetFilterParameter(f, P::Bandwidth, 0.1f + 3.0f * unit(rng));
        SetFilterParameter(f, P::Q, 0.2f + 3.0f * unit(rng));
        SetFilterParameter(f, P::Slope, 0.4f + 0.6f * unit(rng));
        ProcessFilterBlock(f, warmUp.data(), warmUp.data(), 64);
        if (rng() % 3 == 0) SetFilterParameter(f, rng() % 2 ? P::Gain : P::Frequency, 0.1f * unit(rng));
        stages.push_back({AsSection(f), nullptr, nullptr});
    }
    return stages;
}

// The reference for a cascade: each filter through its own plain kernel (which ramps a waiting
// change by itself), each External section through the External kernel, over the whole block in
// turn.
void RunReference(const std::vector<CascadeStage>& stages, std::vector<float>& buffer) {
    const int samples = static_cast<int>(buffer.size());
    for (const CascadeStage& stage : stages) {
        if (stage.filter != nullptr) {
            ProcessFilterBlockPlain(stage.filter, buffer.data(), buffer.data(), samples);
        } else {
            RunExternalSection(*stage.section, buffer.data(), buffer.data(), samples);
        }
    }
}

// Lays out the ramps of the filters whose change is waiting, as the chain walk does.
void PrepareRamps(std::vector<CascadeStage>& stages, std::vector<RampSchedule>& schedules,
                  int samples) {
    schedules.resize(stages.size());
    for (size_t j = 0; j < stages.size(); ++j) {
        stages[j].ramp = nullptr;
        if (stages[j].filter != nullptr && PrepareRamp(stages[j].filter, samples, &schedules[j])) {
            stages[j].ramp = &schedules[j];
        }
    }
}

// Every word of the history, compared as bits: two floats and two doubles of a filter, all three
// of each of an External section.
std::vector<uint64_t> HistoryBits(const CascadeStage& stage) {
    std::vector<uint64_t> bits;
    auto add = [&](double v) { bits.push_back(std::bit_cast<uint64_t>(v)); };
    if (const SectionFilterData* f = stage.filter) {
        const SectionState s = LoadState(f);
        for (double v : {double(s.x1), double(s.x2), s.y1, s.y2}) add(v);
        // What a ramp leaves: the audio set, the current parameters, the change applied.
        for (int k = 0; k < 3; ++k) add(f->b[k]), add(f->a[k]);
        for (float v : {f->currentGain.Load(), f->currentFrequency.Load(), f->currentQ.Load()}) add(v);
        bits.push_back(f->changeApplied.load());
    } else {
        for (int i = 0; i < 3; ++i) add(stage.section->x[i]), add(stage.section->y[i]);
    }
    return bits;
}

std::vector<CascadeIsa> SupportedIsas() {
    std::vector<CascadeIsa> isas;
    for (CascadeIsa isa : {CascadeIsa::Sse2, CascadeIsa::Avx2, CascadeIsa::Avx512}) {
        if (CascadeIsaSupported(isa)) isas.push_back(isa);
    }
    return isas;
}

class SectionCascade : public ::testing::TestWithParam<CascadeIsa> {};

INSTANTIATE_TEST_SUITE_P(Isa, SectionCascade, ::testing::ValuesIn(SupportedIsas()),
                         [](const auto& info) { return std::string(CascadeIsaName(info.param)); });

// A mono cascade and a stereo pair of cascades of every length up to 40 (several passes on every
// instruction set, lanes left empty and not) and one longer than a kernel takes at once, with
// ramps in the first of two blocks in a row, against the filters' own plain kernels: output,
// history and what a ramp leaves in the record, over every short and some odd block lengths, so
// that blocks shorter than a pass's lead-in or than a ramp are covered too.
TEST_P(SectionCascade, MonoAndStereoEqualThePlainKernelsBitForBit) {
    std::vector<int> lengths;
    for (int n = 1; n <= 40; ++n) lengths.push_back(n);
    lengths.push_back(70);
    for (int stages : lengths) {
        for (int samples : OddBlockSizes()) {
            if (stages > 40 && samples % 2 == 0) continue;  // the long cascade needs fewer runs
            SCOPED_TRACE(::testing::Message() << stages << " stages, " << samples << " samples");
            PoolWithChain pc;
            std::vector<CascadeStage> fast[3], plain[3];  // mono, left, right
            std::vector<RampSchedule> schedules[3];
            std::vector<float> fastOut[3], plainOut[3];
            for (uint32_t lane = 0; lane < 3; ++lane) {
                const uint32_t seed = static_cast<uint32_t>(1000 * stages + 10 * samples) + lane;
                fast[lane] = RandomStages(pc, stages, seed);
                plain[lane] = RandomStages(pc, stages, seed);
                fastOut[lane] = plainOut[lane] = Noise(samples, seed);
            }
            for (int round = 0; round < 2; ++round) {
                for (int lane = 0; lane < 3; ++lane) PrepareRamps(fast[lane], schedules[lane], samples);
                ProcessSectionCascade(GetParam(), fast[0].data(), stages, fastOut[0].data(),
                                      samples);
                ProcessSectionCascadeStereo(GetParam(), fast[1].data(), fast[2].data(), stages,
                                            fastOut[1].data(), fastOut[2].data(), samples);
                for (int lane = 0; lane < 3; ++lane) {
                    RunReference(plain[lane], plainOut[lane]);
                    ASSERT_TRUE(SameBits(fastOut[lane], plainOut[lane])) << "lane " << lane;
                    for (int j = 0; j < stages; ++j) {
                        ASSERT_EQ(HistoryBits(fast[lane][j]), HistoryBits(plain[lane][j]))
                            << "lane " << lane << ", stage " << j;
                    }
                }
            }
        }
    }
}

}  // namespace
}  // namespace vorix::test
