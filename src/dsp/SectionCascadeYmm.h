#pragma once

// The arithmetic of four doubles to a 256-bit register that the AVX2 and the AVX-512VL cascades
// share. Included only by files built with those instruction sets; the anonymous namespace gives
// each of them a copy of its own, compiled with its own flags.
#include <immintrin.h>

namespace vorix::cascade_variants {
namespace {

struct YmmDoubles {
    using V = __m256d;
    static constexpr int kLanes = 4;

    static V Load(const double* p) { return _mm256_load_pd(p); }
    static void Store(double* p, V v) { _mm256_store_pd(p, v); }
    static V Zero() { return _mm256_setzero_pd(); }
    static V Set1(double x) { return _mm256_set1_pd(x); }
    static V Mul(V a, V b) { return _mm256_mul_pd(a, b); }
    static V Add(V a, V b) { return _mm256_add_pd(a, b); }
    static V Sub(V a, V b) { return _mm256_sub_pd(a, b); }
    static V FromLanes(const double* const* lanes, int k) {
        return _mm256_set_pd(lanes[3][k], lanes[2][k], lanes[1][k], lanes[0][k]);
    }
    using F = __m128;
    static F Narrow(V v) { return _mm256_cvtpd_ps(v); }
    static V Widen(F f) { return _mm256_cvtps_pd(f); }
    static void StoreFloats(float* p, F f) { _mm_store_ps(p, f); }

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

};

}  // namespace
}  // namespace vorix::cascade_variants
