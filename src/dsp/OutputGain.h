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

// Turns every output sample that is not a finite number into silence: whatever a document or a
// host asked of the filters, the host never receives infinity or NaN. Audio thread.
void SilenceNonFinite(float* output, int count) noexcept;

// Sample-by-sample twin of ApplyOutputGain, for the tests. Audio thread.
void ApplyOutputGainPlain(GainSmoother& g, const float* work, float* output, int count) noexcept;

}  // namespace vorix
