#include "dsp/DenormalGuard.h"

#include <atomic>
#include <bit>

#include <emmintrin.h>

#include "dsp/SectionCascadeVariants.h"

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

using cascade_variants::GuardIncrement;
using cascade_variants::GuardMultiplier;

// The low 32 bits of each lane's product, with the baseline's 32-by-32-to-64 multiply.
inline __m128i MultiplyLow(__m128i a, __m128i b) noexcept {
    const __m128i even = _mm_mul_epu32(a, b);
    const __m128i odd = _mm_mul_epu32(_mm_srli_epi64(a, 32), _mm_srli_epi64(b, 32));
    return _mm_unpacklo_epi32(_mm_shuffle_epi32(even, 0x08), _mm_shuffle_epi32(odd, 0x08));
}

// Four samples: the input made playable, plus the guard values of four generator states.
inline __m128 AddGuardValues(__m128 input, __m128i states) noexcept {
    const __m128i exponent = _mm_set1_epi32(0x7F800000);
    const __m128i notFinite = _mm_cmpeq_epi32(_mm_and_si128(_mm_castps_si128(input), exponent), exponent);
    const __m128 playable = _mm_andnot_ps(_mm_castsi128_ps(notFinite), input);
    const __m128i guard = _mm_or_si128(_mm_and_si128(states, _mm_set1_epi32(static_cast<int>(0x9E7F0000u))),
                                       _mm_set1_epi32(0x1E000000));
    return _mm_add_ps(playable, _mm_castsi128_ps(guard));
}

}  // namespace

void AddGuardNoise(const float* input, float* output, int count, CascadeIsa isa) noexcept {
    uint32_t seed = gSeed.load(std::memory_order_relaxed);
    if (isa != CascadeIsa::Sse2) {
        const cascade_variants::GuardNoiseKernel kernel = isa == CascadeIsa::Avx512
                                                              ? &cascade_variants::GuardNoiseAvx512
                                                              : &cascade_variants::GuardNoiseAvx2;
        gSeed.store(kernel(input, output, count, seed), std::memory_order_relaxed);
        return;
    }
    int i = 0;
    if (count >= 8) {
        // Lanes hold the states of draws i + 1 to i + 8; each round moves every lane 8 draws on.
        auto first = [seed](int k) { return static_cast<int>(seed * GuardMultiplier(k) + GuardIncrement(k)); };
        __m128i low = _mm_setr_epi32(first(1), first(2), first(3), first(4));
        __m128i high = _mm_setr_epi32(first(5), first(6), first(7), first(8));
        const __m128i multiplier = _mm_set1_epi32(static_cast<int>(GuardMultiplier(8)));
        const __m128i increment = _mm_set1_epi32(static_cast<int>(GuardIncrement(8)));
        for (;;) {
            _mm_storeu_ps(output + i, AddGuardValues(_mm_loadu_ps(input + i), low));
            _mm_storeu_ps(output + i + 4, AddGuardValues(_mm_loadu_ps(input + i + 4), high));
            seed = static_cast<uint32_t>(_mm_cvtsi128_si32(_mm_shuffle_epi32(high, 0xFF)));
            i += 8;
            if (i + 8 > count) break;
            low = _mm_add_epi32(MultiplyLow(low, multiplier), increment);
            high = _mm_add_epi32(MultiplyLow(high, multiplier), increment);
        }
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
