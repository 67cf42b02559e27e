#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <fstream>
#include <iterator>
#include <random>

#include "EngineTestSupport.h"
#include "dsp/DenormalGuard.h"
#include "dsp/FilterResponse.h"

namespace vorix::test {
namespace {

std::string RegressionDocument(const std::string& name) {
    std::ifstream file(std::string(VORIX_REGRESSIONS_DIR) + "/audio/" + name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

Block Sine(double hz, float amplitude, size_t frames, size_t start = 0) {
    Block block(2, std::vector<float>(frames));
    for (size_t i = 0; i < frames; ++i) {
        const double t = static_cast<double>(start + i) / 48000.0;
        block[0][i] = block[1][i] = static_cast<float>(amplitude * std::sin(6.283185307179586 * hz * t));
    }
    return block;
}

bool AllFinite(const Block& block) {
    for (const std::vector<float>& channel : block) {
        for (float sample : channel) {
            if (!std::isfinite(sample)) return false;
        }
    }
    return true;
}

bool SameBits(const Block& a, const Block& b) {
    for (size_t c = 0; c < a.size(); ++c) {
        if (std::memcmp(a[c].data(), b[c].data(), a[c].size() * sizeof(float)) != 0) return false;
    }
    return true;
}

// Both engines draw the same guard noise from the process-wide generator.
Block ProcessSeeded(EngineHarness& h, const Block& in, size_t block) {
    SetGuardNoiseSeed(static_cast<uint32_t>(block + 1));
    return h.Process(in);
}

// 34 legal boosts of 24 dB at one frequency ask for 816 dB, far beyond single precision. The host
// must never hear infinity or NaN, and once the boosts are taken back the chain plays again; the
// fast kernels keep giving the reference's bits throughout.
TEST(AudioSafety, AnOverflowingChainNeverReachesTheHostAndRecovers) {
    EngineHarness fast, reference;
    reference.engine->SetChainKernels(ChainKernels::Reference);
    for (EngineHarness* h : {&fast, &reference})
        h->engine->LoadSettings(RegressionDocument("thirty-four-boosts.vrx"));
    for (size_t block = 0; block < 40; ++block) {
        const Block in = Sine(1000.0, 0.5f, 512, block * 512);
        const Block out = ProcessSeeded(fast, in, block);
        ASSERT_TRUE(AllFinite(out)) << "block " << block;
        ASSERT_TRUE(SameBits(out, ProcessSeeded(reference, in, block))) << "block " << block;
    }
    for (EngineHarness* h : {&fast, &reference}) {
        for (int channel = 0; channel < 2; ++channel) {
            for (OpaqueFilterData* f : h->Filters(channel))
                SetFilterParameter(f, FilterParameterId::Gain, 0.0f);
        }
    }
    Block out;
    for (size_t block = 40; block < 44; ++block) {
        const Block in = Sine(1000.0, 0.5f, 512, block * 512);
        out = ProcessSeeded(fast, in, block);
        ASSERT_TRUE(SameBits(out, ProcessSeeded(reference, in, block)));
        if (block == 43) {
            for (size_t i = 0; i < 512; ++i) ASSERT_NEAR(out[0][i], in[0][i], 1e-4) << i;
        }
    }
}

// The peak level of one soloed filter over `seconds` of white noise, in its last half second.
float LatePeakOfNoise(EngineHarness& h, double seconds) {
    std::mt19937 rng(3);
    std::uniform_real_distribution<float> noise(-0.25f, 0.25f);
    const auto blocks = static_cast<size_t>(seconds * 48000.0 / 512.0);
    float peak = 0.0f;
    for (size_t block = 0; block < blocks; ++block) {
        Block in(2, std::vector<float>(512));
        for (float& sample : in[0]) sample = noise(rng);
        in[1] = in[0];
        const Block out = h.Process(in);
        if (block + 47 < blocks) continue;
        for (float sample : out[0]) peak = std::max(peak, std::isfinite(sample) ? std::fabs(sample) : 1e30f);
    }
    return peak;
}

// The gain a soloed filter gives a 1 kHz tone of amplitude 1, found by correlating its output
// with the tone over whole periods after four seconds, so that the slow ringing of a design at the
// bottom of the range hardly counts.
double MeasuredToneGain(EngineHarness& h) {
    constexpr size_t kBlock = 480;  // ten periods
    double inPhase = 0.0, quadrature = 0.0;
    size_t measured = 0;
    for (size_t block = 0; block < 500; ++block) {
        const Block out = h.Process(Sine(1000.0, 1.0f, kBlock, block * kBlock));
        if (block < 400) continue;
        for (size_t i = 0; i < kBlock; ++i) {
            const double phase = 6.283185307179586 * 1000.0 * static_cast<double>(block * kBlock + i) / 48000.0;
            inPhase += out[0][i] * std::sin(phase);
            quadrature += out[0][i] * std::cos(phase);
        }
        measured += kBlock;
    }
    return 2.0 * std::hypot(inPhase, quadrature) / static_cast<double>(measured);
}

// A frequency of 0, below 0 or no number at all is what a damaged or hand-made document can give
// any type (the reader takes the last two as 0), and what a caller that skips the frequency range
// can leave in a record. Every design stays stable, and what the response shows is what plays.
TEST(AudioSafety, FrequenciesAtOrBelowZeroMakeStableFiltersThatPlayWhatTheResponseShows) {
    for (const char* name : {"zero-frequency.vrx", "negative-frequency.vrx", "unreadable-frequency.vrx"}) {
      for (const bool setBelowZero : {false, true}) {
        EngineHarness h;
        h.engine->LoadSettings(RegressionDocument(name));
        ASSERT_EQ(h.Filters().size(), 11u) << name;
        for (OpaqueFilterData* f : h.Filters()) {
            SCOPED_TRACE(std::string(name) + ", " + FilterTypeName(f->type) +
                         (setBelowZero ? ", set to -5 Hz" : ""));
            if (setBelowZero) {
                for (OpaqueFilterData* record : {f, f->partner.load()})
                    SetFilterParameter(record, FilterParameterId::Frequency, -5.0f / 48000.0f);
            }
            h.engine->SoloFilter(f);
            h.engine->ResetAudioState();
            EXPECT_LT(LatePeakOfNoise(h, 3.0), 1000.0f);
            h.engine->ResetAudioState();
            float magnitude = 0.0f;
            EvaluateFilterResponse(f, 1000.0 / 48000.0, &magnitude, nullptr);
            EXPECT_NEAR(MeasuredToneGain(h), magnitude, 0.01 * magnitude + 1e-4);
        }
      }
    }
}

}  // namespace
}  // namespace vorix::test
