#pragma once

// The pipelined cascade passes, compiled once per instruction set: SectionCascade.cpp builds them
// for the x86-64 baseline (SSE2, sixteen registers) and SectionCascadeAvx512.cpp with AVX-512VL
// (the same 128-bit arithmetic, with thirty-two registers, so more filters stay in flight without
// spilling). Everything here has internal linkage on purpose: each including file gets its own
// copy built for its own instruction set, and the linker can never mix the two.

#include <emmintrin.h>

#include "dsp/SectionKernel.h"

namespace vorix {
namespace {  // NOLINT(google-build-namespaces): one copy per instruction set, see above


// Arithmetic on one lane (mono) or two lanes (stereo), in the recursion's order.
inline double Mul(double a, double b) { return a * b; }
inline double Add(double a, double b) { return a + b; }
inline double Sub(double a, double b) { return a - b; }
inline double RoundToFloat(double y) { return static_cast<double>(static_cast<float>(y)); }

// Left in the low lane, right in the high lane. Wrapped so that it can be a template argument.
struct LanePair {
    __m128d v;
};
inline LanePair Mul(LanePair a, LanePair b) { return {_mm_mul_pd(a.v, b.v)}; }
inline LanePair Add(LanePair a, LanePair b) { return {_mm_add_pd(a.v, b.v)}; }
inline LanePair Sub(LanePair a, LanePair b) { return {_mm_sub_pd(a.v, b.v)}; }
inline LanePair RoundToFloat(LanePair y) { return {_mm_cvtps_pd(_mm_cvtpd_ps(y.v))}; }

// One filter of a pass, held in registers: coefficients and direct form I history.
template <typename V>
struct Stage {
    V b0, b1, b2, a1, a2;
    V x1, x2, y1, y2;

    V Step(V x) {
        const V y = Sub(Sub(Add(Add(Mul(b0, x), Mul(b1, x1)), Mul(b2, x2)), Mul(a1, y1)), Mul(a2, y2));
        x2 = x1;
        x1 = x;
        y2 = y1;
        y1 = y;
        return y;
    }
};

// Where a mono pass reads and writes, and how a lane moves between records and registers.
struct MonoIo {
    using V = double;
    float* buffer;

    V Load(int i) const { return buffer[i]; }
    void Store(int i, V y) const { buffer[i] = static_cast<float>(y); }

    static Stage<V> Enter(SectionFilterData* f) {
        const SectionCoefficients c = LoadAudioSet(f);
        const SectionState s = LoadState(f);
        return {c.b0, c.b1, c.b2, c.a1, c.a2, s.x1, s.x2, s.y1, s.y2};
    }
    static void Leave(const Stage<V>& st, SectionFilterData* f) {
        StoreState(f, {static_cast<float>(st.x1), static_cast<float>(st.x2), st.y1, st.y2});
    }
};

struct StereoIo {
    using V = LanePair;
    float* left;
    float* right;

    V Load(int i) const {
        return {_mm_cvtps_pd(_mm_unpacklo_ps(_mm_load_ss(left + i), _mm_load_ss(right + i)))};
    }
    void Store(int i, V y) const {
        const __m128 f = _mm_cvtpd_ps(y.v);
        _mm_store_ss(left + i, f);
        _mm_store_ss(right + i, _mm_shuffle_ps(f, f, 1));
    }

    static V Pair(double l, double r) { return {_mm_set_pd(r, l)}; }
    static double Lane(V v, int lane) {
        return lane == 0 ? _mm_cvtsd_f64(v.v) : _mm_cvtsd_f64(_mm_unpackhi_pd(v.v, v.v));
    }
    static Stage<V> Enter(SectionFilterData* l, SectionFilterData* r) {
        const SectionCoefficients cl = LoadAudioSet(l), cr = LoadAudioSet(r);
        const SectionState sl = LoadState(l), sr = LoadState(r);
        return {Pair(cl.b0, cr.b0), Pair(cl.b1, cr.b1), Pair(cl.b2, cr.b2), Pair(cl.a1, cr.a1),
                Pair(cl.a2, cr.a2), Pair(sl.x1, sr.x1), Pair(sl.x2, sr.x2), Pair(sl.y1, sr.y1),
                Pair(sl.y2, sr.y2)};
    }
    static void Leave(const Stage<V>& st, SectionFilterData* f, int lane) {
        StoreState(f, {static_cast<float>(Lane(st.x1, lane)), static_cast<float>(Lane(st.x2, lane)),
                       Lane(st.y1, lane), Lane(st.y2, lane)});
    }
};

// The steady part of a pass of G filters over samples [G-1, n): in iteration t filter j works on
// sample t - j, taking its input from what filter j - 1 produced in the previous iteration. The
// triangles before and after (filter j on its first G-1-j and last j samples) run elsewhere with
// the plain recursion. Needs n >= G.
template <int G, typename Io>
void RunStaggered(const Io& io, Stage<typename Io::V> (&stages)[G], int n) {
    using V = typename Io::V;
    V carry[G > 1 ? G - 1 : 1];  // carry[j]: filter j's last output, rounded, for filter j + 1
#pragma GCC unroll 8
    for (int j = 0; j + 1 < G; ++j) carry[j] = io.Load(G - 2 - j);
    for (int t = G - 1; t < n; ++t) {
        // Last stage first, so each stage reads its predecessor's carry before it is replaced.
        io.Store(t - (G - 1), stages[G - 1].Step(G == 1 ? io.Load(t) : carry[G > 1 ? G - 2 : 0]));
#pragma GCC unroll 8
        for (int j = G - 2; j >= 1; --j) carry[j] = RoundToFloat(stages[j].Step(carry[j - 1]));
        if constexpr (G > 1) carry[0] = RoundToFloat(stages[0].Step(io.Load(t)));
    }
#pragma GCC unroll 8
    for (int j = 0; j + 1 < G; ++j) io.Store(n - 1 - j, carry[j]);
}

void RunPlain(SectionFilterData* f, float* buffer, int count) noexcept {
    SectionState state = LoadState(f);
    RunRecursionPlain(LoadAudioSet(f), state, buffer, buffer, count);
    StoreState(f, state);
}

void RunUnrolled(SectionFilterData* f, float* buffer, int count) noexcept {
    SectionState state = LoadState(f);
    RunRecursion(LoadAudioSet(f), state, buffer, buffer, count);
    StoreState(f, state);
}

// Filter j's first G-1-j samples, in filter order: what the staggered loop expects done.
void RunLeadIn(SectionFilterData* const* filters, int g, float* buffer) noexcept {
    for (int j = 0; j + 1 < g; ++j) RunPlain(filters[j], buffer, g - 1 - j);
}

// Filter j's last j samples, in filter order: what the staggered loop left undone.
void RunLeadOut(SectionFilterData* const* filters, int g, float* buffer, int n) noexcept {
    for (int j = 1; j < g; ++j) RunPlain(filters[j], buffer + n - j, j);
}

template <int G>
void MonoPass(SectionFilterData* const* filters, float* buffer, int n) noexcept {
    RunLeadIn(filters, G, buffer);
    Stage<double> stages[G];
    for (int j = 0; j < G; ++j) stages[j] = MonoIo::Enter(filters[j]);
    RunStaggered<G>(MonoIo{buffer}, stages, n);
    for (int j = 0; j < G; ++j) MonoIo::Leave(stages[j], filters[j]);
    RunLeadOut(filters, G, buffer, n);
}

template <int G>
void StereoPass(SectionFilterData* const* left, SectionFilterData* const* right, float* bufferLeft,
                float* bufferRight, int n) noexcept {
    RunLeadIn(left, G, bufferLeft);
    RunLeadIn(right, G, bufferRight);
    Stage<LanePair> stages[G];
    for (int j = 0; j < G; ++j) stages[j] = StereoIo::Enter(left[j], right[j]);
    RunStaggered<G>(StereoIo{bufferLeft, bufferRight}, stages, n);
    for (int j = 0; j < G; ++j) {
        StereoIo::Leave(stages[j], left[j], 0);
        StereoIo::Leave(stages[j], right[j], 1);
    }
    RunLeadOut(left, G, bufferLeft, n);
    RunLeadOut(right, G, bufferRight, n);
}

// A cascade of any length as passes of at most kMaxStages filters each, cut into nearly equal
// passes so that ten filters run as 4, 3, 3 rather than 4, 4, 2.
template <int kMaxStages>
int NextPassSize(int remaining) {
    const int passes = (remaining + kMaxStages - 1) / kMaxStages;
    return (remaining + passes - 1) / passes;
}

template <int G, int kMaxStages>
void MonoPassUpTo(int g, SectionFilterData* const* filters, float* buffer, int n) noexcept {
    if constexpr (G < kMaxStages) {
        if (g != G) return MonoPassUpTo<G + 1, kMaxStages>(g, filters, buffer, n);
    }
    if constexpr (G == 1) {
        RunUnrolled(filters[0], buffer, n);
    } else {
        MonoPass<G>(filters, buffer, n);
    }
}

template <int G, int kMaxStages>
void StereoPassUpTo(int g, SectionFilterData* const* left, SectionFilterData* const* right,
                    float* bufferLeft, float* bufferRight, int n) noexcept {
    if constexpr (G < kMaxStages) {
        if (g != G) return StereoPassUpTo<G + 1, kMaxStages>(g, left, right, bufferLeft, bufferRight, n);
    }
    StereoPass<G>(left, right, bufferLeft, bufferRight, n);
}

template <int kMaxStages>
void RunMonoCascade(SectionFilterData* const* filters, int count, float* buffer, int n) noexcept {
    while (count > 0) {
        const int g = NextPassSize<kMaxStages>(count);
        if (n < g) {
            for (int j = 0; j < g; ++j) RunPlain(filters[j], buffer, n);
        } else {
            MonoPassUpTo<1, kMaxStages>(g, filters, buffer, n);
        }
        filters += g;
        count -= g;
    }
}

template <int kMaxStages>
void RunStereoCascade(SectionFilterData* const* left, SectionFilterData* const* right, int count,
                      float* bufferLeft, float* bufferRight, int n) noexcept {
    while (count > 0) {
        const int g = NextPassSize<kMaxStages>(count);
        if (n < g) {
            for (int j = 0; j < g; ++j) {
                RunPlain(left[j], bufferLeft, n);
                RunPlain(right[j], bufferRight, n);
            }
        } else {
            StereoPassUpTo<1, kMaxStages>(g, left, right, bufferLeft, bufferRight, n);
        }
        left += g;
        right += g;
        count -= g;
    }
}

}  // namespace
}  // namespace vorix
