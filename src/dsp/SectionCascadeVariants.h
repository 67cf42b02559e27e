#pragma once

// The cascade kernels of each instruction set, behind the dispatch of SectionCascade.cpp. They see
// plain numbers only: the dispatch reads the records before and writes them back after, so the
// files built with wider instruction sets never touch a record or an inline function of another
// header (whose out-of-line copy the linker could otherwise pick for code that runs anywhere).
#include <cstdint>

namespace vorix::cascade_variants {

// One second-order section as a kernel carries it: the coefficients widened to double, and the
// direct form I history (the input history holds single-precision values).
struct StageValues {
    double b0, b1, b2, a1, a2;
    double x1, x2, y1, y2;
    // A ramp: the coefficients (b0, b1, b2, a1, a2) of the first rampLength samples, one row of
    // five each; the rest of the block runs on those above. Null and 0 for a steady section.
    const double (*ramp)[5];
    int rampLength;
};

// Runs `count` sections in cascade over `samples` samples of each of `channels` buffers (1 or 2),
// in place: stages[c][j] is section j of channel c, and its history is updated. Audio thread.
using CascadeKernel = void (*)(StageValues* const* stages, int channels, int count,
                               float* const* buffers, int samples) noexcept;

void CascadeSse2(StageValues* const* stages, int channels, int count, float* const* buffers,
                 int samples) noexcept;
void CascadeAvx2(StageValues* const* stages, int channels, int count, float* const* buffers,
                 int samples) noexcept;
void CascadeAvx512(StageValues* const* stages, int channels, int count, float* const* buffers,
                   int samples) noexcept;

// Adds the guard noise of the generator that stands at `seed` (its next `count` states) to the
// playable input, and returns the state after the last draw; the sequence of DenormalGuard.h, in
// the lanes of wider registers. Audio thread.
using GuardNoiseKernel = uint32_t (*)(const float* input, float* output, int count,
                                      uint32_t seed) noexcept;

uint32_t GuardNoiseAvx2(const float* input, float* output, int count, uint32_t seed) noexcept;
uint32_t GuardNoiseAvx512(const float* input, float* output, int count, uint32_t seed) noexcept;

// The generator's constants, and the generator advanced by k steps at once:
// s(n + k) = A^k s(n) + C (A^(k-1) + ... + 1), all modulo 2^32.
constexpr uint32_t kGuardMultiplier = 1234567u;
constexpr uint32_t kGuardIncrement = 890123u;
constexpr uint32_t GuardMultiplier(int k) {
    return k == 0 ? 1u : kGuardMultiplier * GuardMultiplier(k - 1);
}
constexpr uint32_t GuardIncrement(int k) {
    return k == 0 ? 0u : GuardIncrement(k - 1) * kGuardMultiplier + kGuardIncrement;
}

}  // namespace vorix::cascade_variants
