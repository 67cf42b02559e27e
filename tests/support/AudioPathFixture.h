#pragma once

#include <cmath>
#include <cstdint>
#include <memory>
#include <random>
#include <vector>

#include "dsp/AudioPath.h"
#include "dsp/FilterChainOps.h"
#include "dsp/FilterParameters.h"
#include "dsp/FilterPool.h"

namespace vorix::test {

using Block = std::vector<std::vector<float>>;

// An audio path with its own pool and one configuration of chains, built through the engine's
// free functions the way the engine object builds them: parallel chains whose records at the same
// place are partners. Shared by the tests and the benchmarks.
class AudioPathFixture {
  public:
    explicit AudioPathFixture(int channels = 2, int maxBlock = 4096, double rate = 48000.0)
        : rate_(rate) {
        state.channels = channels;
        for (int c = 0; c < channels; ++c) {
            chains[c] = AcquireFilterChain(&pool);
            state.configurations[0].chains[c].store(chains[c]);
        }
        SetUpAudioBuffers(state, maxBlock, rate);
    }

    // Appends a both-channel filter (a partnered pair on stereo); returns the left record.
    OpaqueFilterData* Add(FilterType type, uint32_t flags = 0) {
        OpaqueFilterData* left = CreateFilterInChain(chains[0], flags, type);
        if (state.channels == 2) {
            OpaqueFilterData* right = CreateFilterInChain(chains[1], flags, type);
            left->partner.store(right);
            right->partner.store(left);
        }
        return left;
    }

    // Sets a parameter on a filter and on its partner, as a both-channel edit does.
    static void SetBoth(OpaqueFilterData* f, FilterParameterId id, float value) {
        SetFilterParameter(f, id, value);
        if (OpaqueFilterData* p = f->partner.load()) SetFilterParameter(p, id, value);
    }

    double Hz(double hz) const { return hz / rate_; }

    // `count` Parametric filters spread over the audible range with gains of a few decibels.
    void AddParametricSpread(int count, uint32_t seed = 7) {
        std::mt19937 rng(seed);
        std::uniform_real_distribution<float> gain(-9.0f, 9.0f);
        for (int i = 0; i < count; ++i) {
            OpaqueFilterData* f = Add(kParametric);
            const double hz = 40.0 * std::pow(350.0, (i + 0.5) / count);
            SetBoth(f, FilterParameterId::Frequency, static_cast<float>(Hz(hz)));
            SetBoth(f, FilterParameterId::Gain, gain(rng));
            SetBoth(f, FilterParameterId::Bandwidth, 0.5f + 0.1f * static_cast<float>(i % 10));
        }
    }

    void Process(const std::vector<std::vector<float>>& in, std::vector<std::vector<float>>& out,
                 int count, int mode = kProcessing) {
        // A channel the blocks do not both have goes in as null, as a host passes a missing one.
        const float* inputs[2] = {nullptr, nullptr};
        float* outputs[2] = {nullptr, nullptr};
        for (size_t c = 0; c < 2 && c < in.size() && c < out.size(); ++c) {
            inputs[c] = in[c].data();
            outputs[c] = out[c].data();
        }
        ProcessAudioPath(state, inputs, outputs, count, mode);
    }

    FilterPool pool;
    FilterChain* chains[2] = {nullptr, nullptr};
    AudioPathState state;

  private:
    double rate_;
};

// Noise with a touch of everything: broadband, loud and quiet passages.
inline std::vector<std::vector<float>> MakeSignal(int channels, int length, uint32_t seed = 1) {
    std::mt19937 rng(seed);
    std::normal_distribution<float> noise(0.0f, 0.25f);
    std::vector<std::vector<float>> signal(static_cast<size_t>(channels),
                                           std::vector<float>(static_cast<size_t>(length)));
    for (auto& channel : signal) {
        for (int i = 0; i < length; ++i) {
            const float envelope = (i / 97) % 3 == 0 ? 0.01f : 1.0f;
            channel[static_cast<size_t>(i)] = envelope * noise(rng);
        }
    }
    return signal;
}

}  // namespace vorix::test
