#include "dsp/SectionKernel.h"

#include <algorithm>
#include <atomic>
#include <bit>

namespace vorix {
namespace {

using RecursionFunction = void (*)(const SectionCoefficients&, SectionState&, const float*, float*,
                                   int) noexcept;

// Steps the current parameters towards the targets over n0 samples, redesigning the audio set
// before each, then runs the rest of the block on the last design. The currents end exactly on
// the targets so that rounding in the steps cannot accumulate over many changes.
void RampBlock(SectionFilterData* s, const PendingChange& change, const float* input, float* output,
               int count, RecursionFunction recursion) noexcept {
    s->changeApplied.store(change.ticket, std::memory_order_relaxed);
    const int n0 = std::min(kRampLength, count);
    if (n0 > 0) {
        float gain = s->currentGain, frequency = s->currentFrequency, q = s->currentQ;
        const float steps = static_cast<float>(n0);
        const float dGain = change.gain != gain ? (change.gain - gain) / steps : 0.0f;
        const float dFrequency = change.frequency != frequency ? (change.frequency - frequency) / steps : 0.0f;
        const float dQ = change.q != q ? (change.q - q) / steps : 0.0f;
        const FilterDesignFunction design = s->design;
        SectionState state = LoadState(s);
        SectionCoefficients c{};
        for (int i = 0; i < n0; ++i) {
            frequency += dFrequency;
            gain += dGain;
            q += dQ;
            s->currentFrequency = frequency;
            s->currentGain = gain;
            s->currentQ = q;
            design(s, kDesignAudioSet);
            c = LoadAudioSet(s);
            output[i] = RecursionStep(c, state, input[i]);
        }
        recursion(c, state, input + n0, output + n0, count - n0);
        StoreState(s, state);
    }
    s->currentGain = change.gain;
    s->currentFrequency = change.frequency;
    s->currentQ = change.q;
}

// Whether two filters ramping from the same place to the same targets: each design step of one is
// then the other's too (a design reads the type and the current parameters alone).
bool SameRamp(const SectionFilterData* a, const PendingChange& ca, const SectionFilterData* b,
              const PendingChange& cb) noexcept {
    auto same = [](float x, float y) { return std::bit_cast<uint32_t>(x) == std::bit_cast<uint32_t>(y); };
    return a->type == b->type && a->design.Load() == b->design.Load() &&
           same(a->currentGain, b->currentGain) && same(a->currentFrequency, b->currentFrequency) &&
           same(a->currentQ, b->currentQ) && same(ca.gain, cb.gain) &&
           same(ca.frequency, cb.frequency) && same(ca.q, cb.q);
}

// RampBlock for both halves of a pair at once: one design per step, copied to the other half.
void RampPair(SectionFilterData* const* s, const PendingChange* change, float* const* buffers,
              int count) noexcept {
    for (int k = 0; k < 2; ++k) s[k]->changeApplied.store(change[k].ticket, std::memory_order_relaxed);
    const int n0 = std::min(kRampLength, count);
    if (n0 > 0) {
        float gain = s[0]->currentGain, frequency = s[0]->currentFrequency, q = s[0]->currentQ;
        const float steps = static_cast<float>(n0);
        const PendingChange& to = change[0];
        const float dGain = to.gain != gain ? (to.gain - gain) / steps : 0.0f;
        const float dFrequency = to.frequency != frequency ? (to.frequency - frequency) / steps : 0.0f;
        const float dQ = to.q != q ? (to.q - q) / steps : 0.0f;
        const FilterDesignFunction design = s[0]->design;
        SectionState state[2] = {LoadState(s[0]), LoadState(s[1])};
        SectionCoefficients c{};
        for (int i = 0; i < n0; ++i) {
            frequency += dFrequency;
            gain += dGain;
            q += dQ;
            for (SectionFilterData* f : {s[0], s[1]}) {
                f->currentFrequency = frequency;
                f->currentGain = gain;
                f->currentQ = q;
            }
            design(s[0], kDesignAudioSet);
            for (int k = 0; k < 3; ++k) {
                s[1]->b[k] = s[0]->b[k].Load();
                s[1]->a[k] = s[0]->a[k].Load();
            }
            c = LoadAudioSet(s[0]);
            for (int k = 0; k < 2; ++k) buffers[k][i] = RecursionStep(c, state[k], buffers[k][i]);
        }
        for (int k = 0; k < 2; ++k) {
            RunRecursion(c, state[k], buffers[k] + n0, buffers[k] + n0, count - n0);
            StoreState(s[k], state[k]);
        }
    }
    for (int k = 0; k < 2; ++k) {
        s[k]->currentGain = change[k].gain;
        s[k]->currentFrequency = change[k].frequency;
        s[k]->currentQ = change[k].q;
    }
}

void ProcessWith(OpaqueFilterData* filter, const float* input, float* output, int count,
                 RecursionFunction recursion) noexcept {
    SectionFilterData* s = AsSection(filter);
    PendingChange change;
    if (ReadPendingChange(s, &change)) return RampBlock(s, change, input, output, count, recursion);
    SectionState state = LoadState(s);
    recursion(LoadAudioSet(s), state, input, output, count);
    StoreState(s, state);
}

}  // namespace

SectionCoefficients LoadAudioSet(const SectionFilterData* f) noexcept {
    return {f->b[0].Load(), f->b[1].Load(), f->b[2].Load(), f->a[1].Load(), f->a[2].Load()};
}

SectionState LoadState(const SectionFilterData* f) noexcept {
    return {f->x1.Load(), f->x2.Load(), f->y1.Load(), f->y2.Load()};
}

void StoreState(SectionFilterData* f, const SectionState& s) noexcept {
    f->x1 = s.x1;
    f->x2 = s.x2;
    f->y1 = s.y1;
    f->y2 = s.y2;
}

void RunRecursionPlain(const SectionCoefficients& c, SectionState& s, const float* input,
                       float* output, int count) noexcept {
    for (int i = 0; i < count; ++i) output[i] = RecursionStep(c, s, input[i]);
}

void RunRecursion(const SectionCoefficients& c, SectionState& s, const float* input, float* output,
                  int count) noexcept {
    SectionState local = s;  // kept in registers across the unrolled body
    int i = 0;
    for (; i + 8 <= count; i += 8) {
#pragma GCC unroll 8
        for (int k = 0; k < 8; ++k) output[i + k] = RecursionStep(c, local, input[i + k]);
    }
    for (; i < count; ++i) output[i] = RecursionStep(c, local, input[i]);
    s = local;
}

bool ReadPendingChange(const SectionFilterData* s, PendingChange* change) noexcept {
    const uint32_t finished = s->changeFinished.load(std::memory_order_acquire);
    change->gain = s->gain;
    change->frequency = s->frequency;
    change->q = s->q;
    std::atomic_thread_fence(std::memory_order_acquire);
    const uint32_t started = s->changeStarted.load(std::memory_order_relaxed);
    if (started != finished) return false;
    if (started == s->changeApplied.load(std::memory_order_relaxed)) return false;
    change->ticket = started;
    return true;
}

bool RampDue(const OpaqueFilterData* f) noexcept {
    const uint32_t finished = f->changeFinished.load(std::memory_order_acquire);
    const uint32_t started = f->changeStarted.load(std::memory_order_relaxed);
    return started == finished && started != f->changeApplied.load(std::memory_order_relaxed);
}

void ProcessFilterBlock(OpaqueFilterData* filter, const float* input, float* output,
                        int count) noexcept {
    ProcessWith(filter, input, output, count, &RunRecursion);
}

void ProcessFilterBlockPair(OpaqueFilterData* left, OpaqueFilterData* right, float* bufferLeft,
                            float* bufferRight, int count) noexcept {
    SectionFilterData* s[2] = {AsSection(left), AsSection(right)};
    PendingChange change[2];
    if (ReadPendingChange(s[0], &change[0]) && ReadPendingChange(s[1], &change[1]) &&
        SameRamp(s[0], change[0], s[1], change[1])) {
        float* buffers[2] = {bufferLeft, bufferRight};
        return RampPair(s, change, buffers, count);
    }
    ProcessFilterBlock(left, bufferLeft, bufferLeft, count);
    ProcessFilterBlock(right, bufferRight, bufferRight, count);
}

void ProcessFilterBlockPlain(OpaqueFilterData* filter, const float* input, float* output,
                             int count) noexcept {
    ProcessWith(filter, input, output, count, &RunRecursionPlain);
}

}  // namespace vorix
