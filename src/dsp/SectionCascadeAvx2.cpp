// Built with -mavx2 (and no FMA: contraction would change the bits); called only where the
// processor has AVX2. Four doubles to a register, sixteen registers.
#include <immintrin.h>

#include "dsp/SectionCascadeLanes.h"

namespace vorix::cascade_variants {
namespace {

struct Avx2 {
    using V = __m256d;
    using M = __m256d;
    static constexpr int kLanes = 4;

    static V Load(const double* p) { return _mm256_load_pd(p); }
    static void Store(double* p, V v) { _mm256_store_pd(p, v); }
    static V Zero() { return _mm256_setzero_pd(); }
    static V Set1(double x) { return _mm256_set1_pd(x); }
    static V Mul(V a, V b) { return _mm256_mul_pd(a, b); }
    static V Add(V a, V b) { return _mm256_add_pd(a, b); }
    static V Sub(V a, V b) { return _mm256_sub_pd(a, b); }
    static V Round(V v) { return _mm256_cvtps_pd(_mm256_cvtpd_ps(v)); }

    template <int C>
    static V Input(float* const* buffers, int i) {
        if constexpr (C == 1) {
            return _mm256_set1_pd(static_cast<double>(buffers[0][i]));
        } else {
            const __m128d pair = _mm_cvtps_pd(
                _mm_unpacklo_ps(_mm_load_ss(buffers[0] + i), _mm_load_ss(buffers[1] + i)));
            return _mm256_insertf128_pd(_mm256_castpd128_pd256(pair), pair, 1);
        }
    }

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

    template <int kLane, int C>
    static void Output(V y, float* const* buffers, int i) {
        const __m128 f = _mm256_cvtpd_ps(y);
        _mm_store_ss(buffers[0] + i, _mm_shuffle_ps(f, f, kLane));
        if constexpr (C == 2) _mm_store_ss(buffers[1] + i, _mm_shuffle_ps(f, f, kLane + 1));
    }

    static M GreaterEqual(V a, V b) { return _mm256_cmp_pd(a, b, _CMP_GE_OQ); }
    static M LessEqual(V a, V b) { return _mm256_cmp_pd(a, b, _CMP_LE_OQ); }
    static M And(M a, M b) { return _mm256_and_pd(a, b); }
    static V Select(M m, V a, V b) { return _mm256_blendv_pd(b, a, m); }
};

// Sixteen registers hold the history of three registers of sections; their coefficients come
// from memory.
constexpr int kStereoPositions = 6;
constexpr int kMonoPositions = 12;

}  // namespace

void CascadeAvx2(StageValues* const* stages, int channels, int count, float* const* buffers,
                 int samples) noexcept {
    if (channels == 2) {
        RunLaneCascade<Avx2, 2, 2, kStereoPositions>(stages, count, buffers, samples);
    } else {
        RunLaneCascade<Avx2, 1, 2, kMonoPositions>(stages, count, buffers, samples);
    }
}

}  // namespace vorix::cascade_variants
