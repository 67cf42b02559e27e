#include "dsp/DenormalGuard.h"

#include <atomic>
#include <bit>

namespace vorix {
namespace {

// A sample that is not a finite number plays as silence: one such sample would otherwise stay in
// every filter's history and turn all later output, silence included, into NaN.
inline float Playable(float sample) noexcept {
    return (std::bit_cast<uint32_t>(sample) & 0x7F800000u) != 0x7F800000u ? sample : 0.0f;
}

// Shared without protection by design: two instances on two threads may draw the same values,
// which matters to nobody. Relaxed atomic access keeps that free of undefined behaviour.
std::atomic<uint32_t> gSeed{1};

constexpr uint32_t kA = 1234567u;
constexpr uint32_t kC = 890123u;

// The generator advanced by 1 to 4 steps at once, so four draws need no chain of multiplies:
// s(n+k) = A^k s(n) + C (A^(k-1) + ... + 1), all modulo 2^32.
constexpr uint32_t kA2 = kA * kA, kA3 = kA2 * kA, kA4 = kA3 * kA;
constexpr uint32_t kC2 = kC * (kA + 1u), kC3 = kC * (kA2 + kA + 1u), kC4 = kC * (kA3 + kA2 + kA + 1u);

}  // namespace

void AddGuardNoise(const float* input, float* output, int count) noexcept {
    uint32_t seed = gSeed.load(std::memory_order_relaxed);
    int i = 0;
    for (; i + 4 <= count; i += 4) {
        const uint32_t s1 = seed * kA + kC, s2 = seed * kA2 + kC2, s3 = seed * kA3 + kC3,
                       s4 = seed * kA4 + kC4;
        output[i] = Playable(input[i]) + GuardValueOf(s1);
        output[i + 1] = Playable(input[i + 1]) + GuardValueOf(s2);
        output[i + 2] = Playable(input[i + 2]) + GuardValueOf(s3);
        output[i + 3] = Playable(input[i + 3]) + GuardValueOf(s4);
        seed = s4;
    }
    for (; i < count; ++i) output[i] = Playable(input[i]) + DrawGuardValue(seed);
    gSeed.store(seed, std::memory_order_relaxed);
}

void AddGuardNoisePlain(const float* input, float* output, int count) noexcept {
    uint32_t seed = gSeed.load(std::memory_order_relaxed);
    for (int i = 0; i < count; ++i) output[i] = Playable(input[i]) + DrawGuardValue(seed);
    gSeed.store(seed, std::memory_order_relaxed);
}

uint32_t GuardNoiseSeed() noexcept { return gSeed.load(std::memory_order_relaxed); }

void SetGuardNoiseSeed(uint32_t seed) noexcept { gSeed.store(seed, std::memory_order_relaxed); }

}  // namespace vorix
