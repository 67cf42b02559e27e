// Built with -mavx2 (and no FMA: contraction would change the bits); called only where the
// processor has AVX2. Four doubles to a register, sixteen registers.
#include <immintrin.h>

#include "dsp/SectionCascadeLanes.h"
#include "dsp/SectionCascadeYmm.h"

namespace vorix::cascade_variants {
namespace {

struct Avx2 : YmmDoubles {
    using M = __m256d;

    // Lane l of the result: cur[l - C], or prev[4 - C + l] for the first C lanes.
    template <int C>
    static V ShiftIn(V prev, V cur) {
        const V halves = _mm256_permute2f128_pd(prev, cur, 0x21);  // prev[2], prev[3], cur[0], cur[1]
        if constexpr (C == 2) {
            return halves;
        } else {
            return _mm256_shuffle_pd(halves, cur, 0x5);  // prev[3], cur[0], cur[1], cur[2]
        }
    }

    static M GreaterEqual(V a, V b) { return _mm256_cmp_pd(a, b, _CMP_GE_OQ); }
    static M Equal(V a, V b) { return _mm256_cmp_pd(a, b, _CMP_EQ_OQ); }
    static V Select(M m, V a, V b) { return _mm256_blendv_pd(b, a, m); }

    // The guard noise's lanes.
    using I = __m256i;
    static constexpr int kWords = 8;
    static I LoadWords(const uint32_t* p) { return _mm256_load_si256(reinterpret_cast<const I*>(p)); }
    static I Words(uint32_t w) { return _mm256_set1_epi32(static_cast<int>(w)); }
    static I NextStates(I s, I multiplier, I increment) {
        return _mm256_add_epi32(_mm256_mullo_epi32(s, multiplier), increment);
    }
    static uint32_t LastWord(I s) { return static_cast<uint32_t>(_mm256_extract_epi32(s, 7)); }
    static void AddGuard(const float* input, float* output, I states) {
        const __m256 in = _mm256_loadu_ps(input);
        const I exponent = Words(0x7F800000u);
        const I notFinite = _mm256_cmpeq_epi32(_mm256_and_si256(_mm256_castps_si256(in), exponent), exponent);
        const __m256 playable = _mm256_andnot_ps(_mm256_castsi256_ps(notFinite), in);
        const I guard = _mm256_or_si256(_mm256_and_si256(states, Words(0x9E7F0000u)), Words(0x1E000000u));
        _mm256_storeu_ps(output, _mm256_add_ps(playable, _mm256_castsi256_ps(guard)));
    }
};

// Passes of up to eight registers of sections (sixteen stereo, twenty-four mono): sixteen
// registers cannot hold all their history, but a spilled history costs less than more passes,
// each with its own lead-in and lead-out, and enough registers in flight hide the latency of the
// carries. Coefficients come from memory.
constexpr int kStereoPositions = 16;
constexpr int kMonoPositions = 24;

}  // namespace

void CascadeAvx2(StageValues* const* stages, int channels, int count, float* const* buffers,
                 int samples) noexcept {
    if (channels == 2) {
        RunLaneCascade<Avx2, 2, 2, kStereoPositions>(stages, count, buffers, samples);
    } else {
        RunLaneCascade<Avx2, 1, 2, kMonoPositions>(stages, count, buffers, samples);
    }
}

uint32_t GuardNoiseAvx2(const float* input, float* output, int count, uint32_t seed) noexcept {
    return RunGuardNoise<Avx2>(input, output, count, seed);
}

}  // namespace vorix::cascade_variants
