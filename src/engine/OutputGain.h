#pragma once

namespace vorix {

// The first-order smoother of the compensation gain, g = (1 - k) g + k t per sample, a time
// constant of 1/600 s at every rate (k is 600 over the sample rate, not an exponential).
struct GainSmoother {
    float gain;       // g, carried from block to block
    float smoothing;  // k
    float target;     // t

};

// out = g work, with g smoothed per sample. Audio thread.
void ApplyOutputGain(GainSmoother& g, const float* work, float* output, int count) noexcept;

// out = r g work + (1 - r) dry, r moving by `step` after each sample from `r`. Audio thread.
void ApplyOutputGainFading(GainSmoother& g, const float* work, const float* dry, float* output,
                           int count, float r, float step) noexcept;

// Sample-by-sample twin of ApplyOutputGain, for the tests. Audio thread.
void ApplyOutputGainPlain(GainSmoother& g, const float* work, float* output, int count) noexcept;

}  // namespace vorix
