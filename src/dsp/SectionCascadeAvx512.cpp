// Built with -mavx512f -mavx512vl; called only where the processor has them.

// GCC 12 warns inside its own AVX-512 intrinsics, some of which start from an undefined register
// on purpose; the warning says nothing about this file.
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#endif

#include <immintrin.h>

#include "dsp/SectionCascadeLanes.h"
#include "dsp/SectionCascadeYmm.h"

namespace vorix::cascade_variants {
namespace {

// The guard noise in sixteen lanes of 32 bits.
struct Avx512Words {
    using I = __m512i;
    static constexpr int kWords = 16;
    static I LoadWords(const uint32_t* p) { return _mm512_load_si512(p); }
    static I Words(uint32_t w) { return _mm512_set1_epi32(static_cast<int>(w)); }
    static I NextStates(I s, I multiplier, I increment) {
        return _mm512_add_epi32(_mm512_mullo_epi32(s, multiplier), increment);
    }
    static uint32_t LastWord(I s) {
        return static_cast<uint32_t>(_mm_extract_epi32(_mm512_extracti32x4_epi32(s, 3), 3));
    }
    static void AddGuard(const float* input, float* output, I states) {
        const __m512 in = _mm512_loadu_ps(input);
        const __mmask16 notFinite =
            _mm512_cmpeq_epi32_mask(_mm512_and_si512(_mm512_castps_si512(in), Words(0x7F800000u)),
                                    Words(0x7F800000u));
        const __m512 playable = _mm512_mask_blend_ps(notFinite, in, _mm512_setzero_ps());
        const I guard = _mm512_or_si512(_mm512_and_si512(states, Words(0x9E7F0000u)), Words(0x1E000000u));
        _mm512_storeu_ps(output, _mm512_add_ps(playable, _mm512_castsi512_ps(guard)));
    }
};

// The cascades: four doubles to a register with AVX-512VL, thirty-two registers and mask
// registers, at a width that leaves fewer lanes empty than eight doubles would (ten stereo
// sections fill five registers of four, but three of eight).
struct Avx512Ymm : YmmDoubles {
    using M = __mmask8;

    template <int C>
    static V ShiftIn(V prev, V cur) {
        return _mm256_castsi256_pd(
            _mm256_alignr_epi64(_mm256_castpd_si256(cur), _mm256_castpd_si256(prev), 4 - C));
    }

    static M GreaterEqual(V a, V b) { return _mm256_cmp_pd_mask(a, b, _CMP_GE_OQ); }
    static M Equal(V a, V b) { return _mm256_cmp_pd_mask(a, b, _CMP_EQ_OQ); }
    static V Select(M m, V a, V b) { return _mm256_mask_blend_pd(m, b, a); }
};

// Passes of up to six registers of four doubles stereo, four mono: with thirty-two registers
// their history stays in registers. Mono skews by three: its passes have fewer registers in
// flight to hide the carries' latency.
constexpr int kStereoPositions = 12;
constexpr int kMonoPositions = 16;

}  // namespace

void CascadeAvx512(StageValues* const* stages, int channels, int count, float* const* buffers,
                   int samples) noexcept {
    if (channels == 2) {
        RunLaneCascade<Avx512Ymm, 2, 2, kStereoPositions>(stages, count, buffers, samples);
    } else {
        RunLaneCascade<Avx512Ymm, 1, 3, kMonoPositions>(stages, count, buffers, samples);
    }
}

uint32_t GuardNoiseAvx512(const float* input, float* output, int count, uint32_t seed) noexcept {
    return RunGuardNoise<Avx512Words>(input, output, count, seed);
}

}  // namespace vorix::cascade_variants
