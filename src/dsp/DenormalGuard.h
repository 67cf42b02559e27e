#pragma once

#include <bit>
#include <cstdint>

#include "dsp/SectionCascade.h"

namespace vorix {

// The guard against denormal arithmetic: each input sample gets its own tiny noise value of
// random sign, magnitude between 2^-67 and 2^-66, far below hearing, so the recursive sections
// never decay into denormals on silent input. The generator state is one word for the whole
// process, shared by every instance and channel; it starts at 1.

// The guard value of a generator state: the state's sign bit and seven mantissa bits, with the
// exponent always 60 (the mask's bits 25 to 28 coincide with the OR value).
inline float GuardValueOf(uint32_t seed) noexcept {
    return std::bit_cast<float>((seed & 0x9E7F0000u) | 0x1E000000u);
}

// Advances the generator one step and returns its value.
inline float DrawGuardValue(uint32_t& seed) noexcept {
    seed = seed * 1234567u + 890123u;
    return GuardValueOf(seed);
}

// out[i] = in[i] + the next guard value, advancing the process-wide seed by `count` steps. An input
// sample that is not finite (NaN, infinity) counts as 0, so it never reaches a filter's history.
// Draws many values at once in the registers of `isa`, which must be supported; every one gives
// the same values. Audio thread; in and out may be the same buffer.
void AddGuardNoise(const float* input, float* output, int count,
                   CascadeIsa isa = BestCascadeIsa()) noexcept;

// The same, one step at a time: the reference twin of AddGuardNoise.
void AddGuardNoisePlain(const float* input, float* output, int count) noexcept;

// The process-wide seed, for tests that pin the sequence down. Any thread.
uint32_t GuardNoiseSeed() noexcept;
void SetGuardNoiseSeed(uint32_t seed) noexcept;

}  // namespace vorix
