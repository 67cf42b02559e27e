#pragma once

// The lane-packed cascade, written once over an instruction set's vector type and built once per
// instruction set: SectionCascadeSse2.cpp for the x86-64 baseline, SectionCascadeAvx2.cpp and
// SectionCascadeAvx512.cpp with their own flags. Everything here has internal linkage on purpose:
// each including file gets its own copy built for its own instruction set, and the linker can
// never mix them.
//
// A pass holds P sections of one or two channels in the lanes of G vectors: lane l of vector g
// holds position p = (gL + l) / C of channel (gL + l) % C, so a stereo pass keeps a section's left
// and right halves side by side and a mono pass fills the lanes with consecutive sections. In
// iteration t position p works on sample t - S p, taking as input what position p - 1 produced S
// iterations before, which is its own output history y[S]: so one vector computes the recursion
// of L / C sections at once, each lane in exactly the order of the plain recursion
// y = b0 x + b1 x1 + b2 x2 - a1 y1 - a2 y2. The skew S > 1 matters wherever a vector holds more
// than one position: the lane shift then closes a loop from a vector to itself, and S iterations
// of slack hide its latency (rounding, shift, one multiply and four additions).
//
// The first S (P - 1) iterations and the last S (P - 1) run masked: a lane that has not reached
// its first sample keeps its history, and a lane's history is taken as it stands after its last
// sample. In between, every lane is busy and nothing is masked. A lane whose filter ramps takes
// its coefficients from the ramp's schedule for its first samples; those iterations run with the
// masked ones. Passes are built per register count G, with the number of sections at run time.

#include <immintrin.h>

#include <utility>

#include "dsp/SectionCascadeVariants.h"

namespace vorix {
namespace {  // NOLINT(google-build-namespaces): one copy per instruction set, see above

using cascade_variants::StageValues;

// A lane that never starts: padding beyond the last position of a pass.
constexpr double kNeverIteration = 1e300;

template <class Isa, int C, int G, int S, bool kSingle>
class LanePass {
  public:
    using V = typename Isa::V;
    using M = typename Isa::M;
    using F = typename Isa::F;
    static constexpr int L = Isa::kLanes;
    static constexpr int D = S > 2 ? S : 2;  // output history kept: y1, y2 and the skew's carries
    static constexpr int kOut = G - 1;        // the register of the last position

    // stages[c][p] for c < C, p < positions; positions fill G registers (one position, alone in
    // a register, exactly when kSingle); samples >= 1.
    static void Run(StageValues* const* stages, int positions, float* const* buffers,
                    int n) noexcept {
        Memory m;
        Enter(m, stages, positions, n);
        const int lag = m.lag;
        // Iterations before this one have lanes that have not started or that ramp.
        const int settled = m.rampEnd > lag ? m.rampEnd : lag;
        const bool ramps = m.rampEnd > 0;
        if (n > settled) {
            if (ramps) {
                Masked<true, false, true>(m, buffers, n, 0, settled);
            } else {
                Masked<true, false, false>(m, buffers, n, 0, settled);
            }
            Main(m, buffers, settled, n);
            Masked<false, true, false>(m, buffers, n, n, n + lag);
        } else if (ramps) {
            Masked<true, true, true>(m, buffers, n, 0, n + lag);
        } else {
            Masked<true, true, false>(m, buffers, n, 0, n + lag);
        }
        Leave(m, stages);
    }

  private:
    enum Field { kB0, kB1, kB2, kA1, kA2, kX1, kX2, kY1 };
    static constexpr int kFields = kY1 + D;
    static constexpr int kKept = 4;  // x1, x2, y1, y2: what a section keeps between blocks

    // A pass between its phases. Each phase works on registers of its own (locals that nothing
    // else can reach, so that no store to the sample buffers can force them back to memory).
    struct Memory {
        alignas(64) double values[kFields][G][L];
        alignas(64) double kept[kKept][G][L];  // a lane's history as of its last sample
        alignas(64) double first[G][L];         // the iteration of a lane's first sample
        alignas(64) double last[G][L];          // and of its last
        // Ramps: a lane's coefficients, its schedule and how many samples that covers, and the
        // iteration by which every ramp of a group (rampEnds) and of the pass (rampEnd) is over.
        double steady[G][L][5];
        const double* ramp[G][L];
        int rampLength[G][L];
        int rampEnds[G];
        int rampEnd;
        // The pass's shape: the last position, the iterations from a sample's entry to its exit,
        // and the first of the last position's lanes, in the last register.
        int lastPosition, lag, outLane;
    };

    struct Registers {
        V values[kFields][G];

        [[gnu::always_inline]] void Load(const Memory& m) noexcept {
#pragma GCC unroll 64
            for (int k = 0; k < kFields; ++k) {
#pragma GCC unroll 64
                for (int g = 0; g < G; ++g) values[k][g] = Isa::Load(m.values[k][g]);
            }
        }
        [[gnu::always_inline]] void Store(Memory& m) const noexcept {
#pragma GCC unroll 64
            for (int k = kX1; k < kFields; ++k) {
#pragma GCC unroll 64
                for (int g = 0; g < G; ++g) Isa::Store(m.values[k][g], values[k][g]);
            }
        }
        // The recursion of group g on input x, in the plain kernel's order.
        [[gnu::always_inline]] V Recursion(int g, V x) const noexcept {
            const V(&v)[kFields][G] = values;
            return Isa::Sub(
                Isa::Sub(Isa::Add(Isa::Add(Isa::Mul(v[kB0][g], x), Isa::Mul(v[kB1][g], v[kX1][g])),
                                  Isa::Mul(v[kB2][g], v[kX2][g])),
                         Isa::Mul(v[kA1][g], v[kY1][g])),
                Isa::Mul(v[kA2][g], v[kY1 + 1][g]));
        }
    };

    // What group g's lanes take in: the input samples and the carries of the positions before.
    // A pass of one position takes the input alone, so that its register does not depend on its
    // own earlier values through lanes that hold nothing.
    [[gnu::always_inline]] static V Input(V in, const V (&carry)[G], int g) noexcept {
        if constexpr (kSingle) return in;
        return Isa::template ShiftIn<C>(g == 0 ? in : carry[g - 1], carry[g]);
    }

    // The last position's output lanes, already rounded, into the buffers at sample i.
    [[gnu::always_inline]] static void Output(const Memory& m, F narrow, float* const* buffers,
                                              int i) noexcept {
        alignas(32) float lanes[sizeof(F) / sizeof(float)];
        Isa::StoreFloats(lanes, narrow);
        buffers[0][i] = lanes[m.outLane];
        if constexpr (C == 2) buffers[1][i] = lanes[m.outLane + 1];
    }

    static void Enter(Memory& m, StageValues* const* stages, int positions, int n) noexcept {
        static constexpr StageValues kPadding{};
        m.lastPosition = positions - 1;
        m.lag = S * (positions - 1);
        m.outLane = (positions - 1) * C % L;
        m.rampEnd = 0;
        for (int g = 0; g < G; ++g) {
            m.rampEnds[g] = 0;
            for (int l = 0; l < L; ++l) {
                const int index = g * L + l, p = index / C;
                const StageValues& s = p < positions ? stages[index % C][p] : kPadding;
                const double values[kY1 + 2] = {s.b0, s.b1, s.b2, s.a1, s.a2, s.x1, s.x2, s.y1, s.y2};
                for (int k = 0; k < kFields; ++k) m.values[k][g][l] = k < kY1 + 2 ? values[k] : 0.0;
                for (int k = 0; k < kKept; ++k) m.kept[k][g][l] = values[kX1 + k];
                m.first[g][l] = p < positions ? S * p : kNeverIteration;
                m.last[g][l] = p < positions ? n - 1 + S * p : -1.0;
                if (s.ramp != nullptr && S * p + s.rampLength > m.rampEnds[g]) {
                    m.rampEnds[g] = S * p + s.rampLength;
                }
            }
            if (m.rampEnds[g] == 0) continue;  // what follows serves groups that ramp only
            for (int l = 0; l < L; ++l) {
                const int index = g * L + l, p = index / C;
                const StageValues& s = p < positions ? stages[index % C][p] : kPadding;
                const double steady[5] = {s.b0, s.b1, s.b2, s.a1, s.a2};
                for (int k = 0; k < 5; ++k) m.steady[g][l][k] = steady[k];
                m.ramp[g][l] = s.ramp != nullptr ? s.ramp[0] : nullptr;
                m.rampLength[g][l] = s.ramp != nullptr ? s.rampLength : 0;
            }
            if (m.rampEnds[g] > m.rampEnd) m.rampEnd = m.rampEnds[g];
        }
    }

    // Group g's coefficients in iteration t, with lanes that ramp on the step of their sample.
    static void RampCoefficients(const Memory& m, int g, int t, V (&c)[5]) noexcept {
        const double* lanes[L];
        for (int l = 0; l < L; ++l) {
            const int sample = t - S * ((g * L + l) / C);
            const bool ramping = m.ramp[g][l] != nullptr && sample >= 0 && sample < m.rampLength[g][l];
            lanes[l] = ramping ? m.ramp[g][l] + 5 * sample : m.steady[g][l];
        }
        for (int k = 0; k < 5; ++k) c[k] = Isa::FromLanes(lanes, k);
    }

    static void Leave(const Memory& m, StageValues* const* stages) noexcept {
        for (int index = 0; index < (m.lastPosition + 1) * C; ++index) {
            const int g = index / L, l = index % L;
            StageValues& s = stages[index % C][index / C];
            s.x1 = m.kept[0][g][l];
            s.x2 = m.kept[1][g][l];
            s.y1 = m.kept[2][g][l];
            s.y2 = m.kept[3][g][l];
        }
    }

    // Iteration kPhase of a round of kRound in which the history trades registers instead of
    // moving: the j-th newest input (0 is x1) lives in field kX1 + (j - kPhase) mod 2 and the j-th
    // newest output (0 is y1) in kY1 + (j - kPhase) mod D; each new value takes the oldest's.
    static constexpr int kRound = D % 2 == 0 ? D : 2 * D;
    static constexpr int XSlot(int j, int phase) { return kX1 + ((j - phase) % 2 + 2) % 2; }
    static constexpr int YSlot(int j, int phase) { return kY1 + ((j - phase) % D + D) % D; }

    // Each of these iterations writes the last position's output of S iterations before, from the
    // carry that rounds it anyway.
    template <int kPhase>
    [[gnu::always_inline]] static void Step(const Memory& m, Registers& r, float* const* buffers,
                                            int t) noexcept {
        V(&v)[kFields][G] = r.values;
        V carry[G];
        F narrow[G];
#pragma GCC unroll 64
        for (int g = 0; g < G; ++g) {
            narrow[g] = Isa::Narrow(v[YSlot(S - 1, kPhase)][g]);
            carry[g] = Isa::Widen(narrow[g]);
        }
        const V in = Isa::template Input<C>(buffers, t);
#pragma GCC unroll 64
        for (int g = 0; g < G; ++g) {
            const V x = Input(in, carry, g);
            const V y = Isa::Sub(
                Isa::Sub(Isa::Add(Isa::Add(Isa::Mul(v[kB0][g], x), Isa::Mul(v[kB1][g], v[XSlot(0, kPhase)][g])),
                                  Isa::Mul(v[kB2][g], v[XSlot(1, kPhase)][g])),
                         Isa::Mul(v[kA1][g], v[YSlot(0, kPhase)][g])),
                Isa::Mul(v[kA2][g], v[YSlot(1, kPhase)][g]));
            v[XSlot(1, kPhase)][g] = x;
            v[YSlot(D - 1, kPhase)][g] = y;
        }
        Output(m, narrow[kOut], buffers, t - S - m.lag);
    }

    template <int... kPhases>
    [[gnu::always_inline]] static void Round(const Memory& m, Registers& r, float* const* buffers,
                                             int t, std::integer_sequence<int, kPhases...>) noexcept {
        (Step<kPhases>(m, r, buffers, t + kPhases), ...);
    }

    // Iterations from `from` to n - 1: every lane on a sample of its own, on its own coefficients.
    // The first S write their own output; the others that of S iterations before, and the last S
    // outputs are written at the end.
    static void Main(Memory& m, float* const* buffers, int from, int n) noexcept {
        Registers r;
        r.Load(m);
        V(&v)[kFields][G] = r.values;
        int t = from;
        for (; t < n && t < from + S; ++t) {
            const V y = Iteration(r, buffers, t);
            Output(m, Isa::Narrow(y), buffers, t - m.lag);
        }
        for (; t + kRound <= n; t += kRound) {
            Round(m, r, buffers, t, std::make_integer_sequence<int, kRound>{});
        }
        for (; t < n; ++t) {
            const F narrowOut = Isa::Narrow(v[kY1 + S - 1][kOut]);
            Iteration(r, buffers, t);
            Output(m, narrowOut, buffers, t - S - m.lag);
        }
        // The outputs of the last S iterations are still in the output history.
        for (int k = S - 1; k >= 0; --k) {
            if (n - 1 - k < from + S) continue;  // written by its own iteration
            Output(m, Isa::Narrow(v[kY1 + k][kOut]), buffers, n - 1 - k - m.lag);
        }
        r.Store(m);
#pragma GCC unroll 64
        for (int k = 0; k < kKept; ++k) {
#pragma GCC unroll 64
            for (int g = 0; g < G; ++g) Isa::Store(m.kept[k][g], v[kX1 + k][g]);
        }
    }

    // One iteration with the history in its home fields; returns the last register's y.
    [[gnu::always_inline]] static V Iteration(Registers& r, float* const* buffers, int t) noexcept {
        V(&v)[kFields][G] = r.values;
        V carry[G];
#pragma GCC unroll 64
        for (int g = 0; g < G; ++g) carry[g] = Isa::Widen(Isa::Narrow(v[kY1 + S - 1][g]));
        const V in = Isa::template Input<C>(buffers, t);
        V out = in;
#pragma GCC unroll 64
        for (int g = 0; g < G; ++g) {
            const V x = Input(in, carry, g);
            const V y = r.Recursion(g, x);
            v[kX2][g] = v[kX1][g];
            v[kX1][g] = x;
#pragma GCC unroll 8
            for (int k = kFields - 1; k > kY1; --k) v[k][g] = v[k - 1][g];
            v[kY1][g] = y;
            out = y;
        }
        return out;
    }

    // Iterations [from, to) with lanes that have not started (kStarting) or have finished
    // (kEnding), or that ramp (kRamps). A lane that has not started keeps its history; one that
    // has finished runs on (nobody reads it any more), and its history as it stood after its last
    // sample is kept. Only a group with lanes on both sides of such an edge needs a mask: with
    // two or four positions to a group, that is at most one or two groups in any iteration.
    template <bool kStarting, bool kEnding, bool kRamps>
    static void Masked(Memory& m, float* const* buffers, int n, int from, int to) noexcept {
        Registers r;
        r.Load(m);
        V(&v)[kFields][G] = r.values;
        for (int t = from; t < to; ++t) {
            const V now = Isa::Set1(static_cast<double>(t));
            V carry[G];
#pragma GCC unroll 64
            for (int g = 0; g < G; ++g) carry[g] = Isa::Widen(Isa::Narrow(v[kY1 + S - 1][g]));
            const V in = t < n ? Isa::template Input<C>(buffers, t) : Isa::Zero();
            V out = in;
#pragma GCC unroll 64
            for (int g = 0; g < G; ++g) {
                const int low = g * L / C;
                const int high = (g * L + L - 1) / C < m.lastPosition ? (g * L + L - 1) / C : m.lastPosition;
                // A group none of whose lanes has started has nothing to do, nor has one whose
                // last lane has finished and handed its last output on: that output reaches the
                // next position S - 1 iterations after it was made.
                if (t < S * low || t > n - 2 + S * (high + 1)) continue;
                const V x = Input(in, carry, g);
                V y;
                if (kRamps && t < m.rampEnds[g]) {
                    V c[5];
                    RampCoefficients(m, g, t, c);
                    y = Isa::Sub(Isa::Sub(Isa::Add(Isa::Add(Isa::Mul(c[0], x), Isa::Mul(c[1], v[kX1][g])),
                                                   Isa::Mul(c[2], v[kX2][g])),
                                          Isa::Mul(c[3], v[kY1][g])),
                                 Isa::Mul(c[4], v[kY1 + 1][g]));
                } else {
                    y = r.Recursion(g, x);
                }
                if (kStarting && t < S * high) {
                    const M started = Isa::GreaterEqual(now, Isa::Load(m.first[g]));
                    v[kX2][g] = Isa::Select(started, v[kX1][g], v[kX2][g]);
                    v[kX1][g] = Isa::Select(started, x, v[kX1][g]);
#pragma GCC unroll 8
                    for (int k = kFields - 1; k > kY1; --k) {
                        v[k][g] = Isa::Select(started, v[k - 1][g], v[k][g]);
                    }
                    v[kY1][g] = Isa::Select(started, y, v[kY1][g]);
                } else {
                    v[kX2][g] = v[kX1][g];
                    v[kX1][g] = x;
#pragma GCC unroll 8
                    for (int k = kFields - 1; k > kY1; --k) v[k][g] = v[k - 1][g];
                    v[kY1][g] = y;
                }
                if (g == kOut) out = y;
                if (kEnding && t >= n - 1 + S * low && t <= n - 1 + S * high) {
                    const M finishing = Isa::Equal(now, Isa::Load(m.last[g]));
#pragma GCC unroll 4
                    for (int k = 0; k < kKept; ++k) {
                        double* at = m.kept[k][g];
                        Isa::Store(at, Isa::Select(finishing, v[kX1 + k][g], Isa::Load(at)));
                    }
                }
            }
            if (t >= m.lag) Output(m, Isa::Narrow(out), buffers, t - m.lag);
        }
        r.Store(m);
    }
};

// Runs a pass of `positions` sections in G = kGroups down to 1 registers: the compile-time pass
// for a run-time size.
template <class Isa, int C, int S, int kGroups>
void RunPass(int positions, StageValues* const* stages, float* const* buffers, int n) noexcept {
    constexpr int kPerVector = Isa::kLanes / C;
    if constexpr (kGroups > 1) {
        if ((positions + kPerVector - 1) / kPerVector != kGroups) {
            return RunPass<Isa, C, S, kGroups - 1>(positions, stages, buffers, n);
        }
        LanePass<Isa, C, kGroups, S, false>::Run(stages, positions, buffers, n);
    } else if (positions == 1) {
        LanePass<Isa, C, 1, S, true>::Run(stages, positions, buffers, n);
    } else {
        LanePass<Isa, C, 1, S, false>::Run(stages, positions, buffers, n);
    }
}

// A cascade of any length as passes of at most kMaxPositions sections. Passes take whole vectors
// and share them out evenly (so ten stereo sections in vectors of two run as six and four rather
// than eight and two); only the last pass may leave lanes empty.
template <class Isa, int C, int S, int kMaxPositions>
void RunLaneCascade(StageValues* const* stages, int count, float* const* buffers,
                    int n) noexcept {
    if (n <= 0) return;
    constexpr int kPerVector = Isa::kLanes / C;
    constexpr int kMaxVectors = kMaxPositions / kPerVector;
    static_assert(kMaxVectors * kPerVector == kMaxPositions, "passes hold whole vectors");
    const int vectors = (count + kPerVector - 1) / kPerVector;
    const int passes = (vectors + kMaxVectors - 1) / kMaxVectors;
    StageValues* at[2] = {stages[0], C == 2 ? stages[1] : nullptr};
    for (int pass = 0; pass < passes; ++pass) {
        const int share = vectors / passes + (pass < vectors % passes ? 1 : 0);
        const int positions = share * kPerVector < count ? share * kPerVector : count;
        RunPass<Isa, C, S, kMaxVectors>(positions, at, buffers, n);
        for (int c = 0; c < C; ++c) at[c] += positions;
        count -= positions;
    }
}

// Guard noise in lanes of 32-bit integers and floats, Isa::kWords at a time: each lane draws the
// state of its own sample, and every round moves all lanes on by kWords draws. The tail runs one
// draw at a time. Returns the generator's state after the last draw.
template <class Isa>
uint32_t RunGuardNoise(const float* input, float* output, int count, uint32_t seed) noexcept {
    using cascade_variants::GuardIncrement;
    using cascade_variants::GuardMultiplier;
    constexpr int W = Isa::kWords;
    int i = 0;
    if (count >= W) {
        alignas(64) uint32_t first[W];
        for (int k = 0; k < W; ++k) first[k] = seed * GuardMultiplier(k + 1) + GuardIncrement(k + 1);
        typename Isa::I states = Isa::LoadWords(first);
        const typename Isa::I multiplier = Isa::Words(GuardMultiplier(W));
        const typename Isa::I increment = Isa::Words(GuardIncrement(W));
        for (;;) {
            Isa::AddGuard(input + i, output + i, states);
            i += W;
            if (i + W > count) break;
            states = Isa::NextStates(states, multiplier, increment);
        }
        seed = Isa::LastWord(states);
    }
    for (; i < count; ++i) {
        seed = seed * cascade_variants::kGuardMultiplier + cascade_variants::kGuardIncrement;
        uint32_t bits;
        __builtin_memcpy(&bits, input + i, sizeof bits);
        const float playable = (bits & 0x7F800000u) != 0x7F800000u ? input[i] : 0.0f;
        const uint32_t guardBits = (seed & 0x9E7F0000u) | 0x1E000000u;
        float guard;
        __builtin_memcpy(&guard, &guardBits, sizeof guard);
        output[i] = playable + guard;
    }
    return seed;
}

}  // namespace
}  // namespace vorix
