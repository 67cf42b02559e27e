#include "dsp/OutputGain.h"

#include <cmath>
#include <limits>

namespace vorix {

void ApplyOutputGain(GainSmoother& g, const float* work, float* output, int count) noexcept {
    const float keep = 1.0f - g.smoothing;
    const float pull = g.smoothing * g.target;
    float gain = g.gain;
    int i = 0;
    for (; i < count; ++i) {
        const float next = keep * gain + pull;
        output[i] = next * work[i];
        if (next == gain) {  // a fixed point of the smoother: the rest of the block is constant
            ++i;
            break;
        }
        gain = next;
    }
    for (; i < count; ++i) output[i] = gain * work[i];
    g.gain = gain;
}

void SilenceNonFinite(float* output, int count) noexcept {
    constexpr float kLargest = std::numeric_limits<float>::max();
    // A select rather than a branch, so that the loop runs in vector registers.
    for (int i = 0; i < count; ++i) {
        const float sample = output[i];
        output[i] = std::fabs(sample) <= kLargest ? sample : 0.0f;
    }
}

void ApplyOutputGainPlain(GainSmoother& g, const float* work, float* output, int count) noexcept {
    float gain = g.gain;
    for (int i = 0; i < count; ++i) {
        gain = (1.0f - g.smoothing) * gain + g.smoothing * g.target;
        output[i] = gain * work[i];
    }
    g.gain = gain;
}

void ApplyOutputGainFading(GainSmoother& g, const float* work, const float* dry, float* output,
                           int count, float r, float step) noexcept {
    const float keep = 1.0f - g.smoothing;
    const float pull = g.smoothing * g.target;
    float gain = g.gain;
    for (int i = 0; i < count; ++i) {
        gain = keep * gain + pull;
        output[i] = r * gain * work[i] + (1.0f - r) * dry[i];
        r += step;
    }
    g.gain = gain;
}

}  // namespace vorix
