// The x86-64 baseline build of the lane-packed cascade: two doubles to a register, sixteen
// registers.
#include <emmintrin.h>

#include "dsp/SectionCascadeLanes.h"

namespace vorix::cascade_variants {
namespace {

struct Sse2 {
    using V = __m128d;
    using M = __m128d;
    static constexpr int kLanes = 2;

    static V Load(const double* p) { return _mm_load_pd(p); }
    static void Store(double* p, V v) { _mm_store_pd(p, v); }
    static V Zero() { return _mm_setzero_pd(); }
    static V Set1(double x) { return _mm_set1_pd(x); }
    static V Mul(V a, V b) { return _mm_mul_pd(a, b); }
    static V Add(V a, V b) { return _mm_add_pd(a, b); }
    static V Sub(V a, V b) { return _mm_sub_pd(a, b); }
    static V FromLanes(const double* const* lanes, int k) { return _mm_set_pd(lanes[1][k], lanes[0][k]); }
    using F = __m128;
    static F Narrow(V v) { return _mm_cvtpd_ps(v); }
    static V Widen(F f) { return _mm_cvtps_pd(f); }
    static void StoreFloats(float* p, F f) { _mm_store_ps(p, f); }

    // The samples that enter position 0, repeated in every group of C lanes.
    template <int C>
    static V Input(float* const* buffers, int i) {
        if constexpr (C == 1) {
            return _mm_set1_pd(static_cast<double>(buffers[0][i]));
        } else {
            return _mm_cvtps_pd(_mm_unpacklo_ps(_mm_load_ss(buffers[0] + i), _mm_load_ss(buffers[1] + i)));
        }
    }

    // Lane l of the result: cur[l - C], or prev[kLanes - C + l] for the first C lanes.
    template <int C>
    static V ShiftIn(V prev, V cur) {
        if constexpr (C == 2) {
            return prev;
        } else {
            return _mm_shuffle_pd(prev, cur, 1);
        }
    }

    static M GreaterEqual(V a, V b) { return _mm_cmpge_pd(a, b); }
    static M Equal(V a, V b) { return _mm_cmpeq_pd(a, b); }
    static V Select(M m, V a, V b) { return _mm_or_pd(_mm_and_pd(m, a), _mm_andnot_pd(m, b)); }
};

// Stereo holds one section per register, so no register feeds itself and no skew is needed;
// mono holds two and needs the skew. Sixteen registers keep four stereo registers' worth of
// sections, or five mono ones.
constexpr int kStereoPositions = 4;
constexpr int kMonoPositions = 10;

}  // namespace

void CascadeSse2(StageValues* const* stages, int channels, int count, float* const* buffers,
                 int samples) noexcept {
    if (channels == 2 && count < kStereoPositions) {
        RunLaneCascade<Sse2, 2, 1, kStereoPositions>(stages, count, buffers, samples);
    } else if (channels == 2) {
        // Two sections of one channel to a register beat one section of both channels once the
        // cascade is long enough to fill a mono pass: the mono pass has more in flight.
        for (int c = 0; c < 2; ++c) {
            RunLaneCascade<Sse2, 1, 2, kMonoPositions>(stages + c, count, buffers + c, samples);
        }
    } else {
        RunLaneCascade<Sse2, 1, 2, kMonoPositions>(stages, count, buffers, samples);
    }
}

}  // namespace vorix::cascade_variants
