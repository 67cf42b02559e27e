#include "dsp/SectionKernel.h"

#include <algorithm>
#include <atomic>
#include <bit>

namespace vorix {
namespace {

using RecursionFunction = void (*)(const SectionCoefficients&, SectionState&, const float*, float*,
                                   int) noexcept;

// Steps the current parameters of `s` towards the targets over n0 samples, redesigning the audio
// set before each step and handing step i to `use`; a `twin` that ramps from the same place to
// the same targets takes each design as a copy. The currents end exactly on the targets, so that
// rounding in the steps cannot accumulate over many changes.
template <typename Use>
void StepRamp(SectionFilterData* s, SectionFilterData* twin, const PendingChange& change, int n0,
              Use use) noexcept {
    if (n0 > 0) {
        float gain = s->currentGain, frequency = s->currentFrequency, q = s->currentQ;
        const float steps = static_cast<float>(n0);
        const float dGain = change.gain != gain ? (change.gain - gain) / steps : 0.0f;
        const float dFrequency = change.frequency != frequency ? (change.frequency - frequency) / steps : 0.0f;
        const float dQ = change.q != q ? (change.q - q) / steps : 0.0f;
        const FilterDesignFunction design = s->design;
        for (int i = 0; i < n0; ++i) {
            frequency += dFrequency;
            gain += dGain;
            q += dQ;
            s->currentFrequency = frequency;
            s->currentGain = gain;
            s->currentQ = q;
            design(s, kDesignAudioSet);
            if (twin != nullptr) {
                twin->currentFrequency = frequency;
                twin->currentGain = gain;
                twin->currentQ = q;
                for (int k = 0; k < 3; ++k) {
                    twin->b[k] = s->b[k].Load();
                    twin->a[k] = s->a[k].Load();
                }
            }
            use(i);
        }
    }
    for (SectionFilterData* f : {s, twin}) {
        if (f == nullptr) continue;
        f->currentGain = change.gain;
        f->currentFrequency = change.frequency;
        f->currentQ = change.q;
    }
}

// The ramp over the first n0 samples, sample by sample on each step's design, then the rest of
// the block on the last design.
void RampBlock(SectionFilterData* s, const PendingChange& change, const float* input, float* output,
               int count, RecursionFunction recursion) noexcept {
    s->changeApplied.store(change.ticket, std::memory_order_relaxed);
    const int n0 = std::min(kRampLength, count);
    SectionState state = LoadState(s);
    SectionCoefficients c{};
    StepRamp(s, nullptr, change, n0, [&](int i) {
        c = LoadAudioSet(s);
        output[i] = RecursionStep(c, state, input[i]);
    });
    if (n0 > 0) {
        recursion(c, state, input + n0, output + n0, count - n0);
        StoreState(s, state);
    }
}

// Whether two filters ramp from the same place to the same targets: each design step of one is
// then the other's too (a design reads the type and the current parameters alone).
bool SameRamp(const SectionFilterData* a, const PendingChange& ca, const SectionFilterData* b,
              const PendingChange& cb) noexcept {
    auto same = [](float x, float y) { return std::bit_cast<uint32_t>(x) == std::bit_cast<uint32_t>(y); };
    return a->type == b->type && a->design.Load() == b->design.Load() &&
           same(a->currentGain, b->currentGain) && same(a->currentFrequency, b->currentFrequency) &&
           same(a->currentQ, b->currentQ) && same(ca.gain, cb.gain) &&
           same(ca.frequency, cb.frequency) && same(ca.q, cb.q);
}

// Lays out a ramp of n0 steps: each step's audio set, widened, in the schedule.
void ScheduleRamp(SectionFilterData* s, SectionFilterData* twin, const PendingChange& change,
                  int count, RampSchedule* schedule) noexcept {
    schedule->length = std::min(kRampLength, count);
    StepRamp(s, twin, change, schedule->length, [&](int i) {
        // Word by word: a structure built through memory and read back wider would stall.
        double* step = schedule->steps[i];
        step[0] = s->b[0].Load(), step[1] = s->b[1].Load(), step[2] = s->b[2].Load();
        step[3] = s->a[1].Load(), step[4] = s->a[2].Load();
    });
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

bool PrepareRamp(OpaqueFilterData* filter, int count, RampSchedule* schedule) noexcept {
    SectionFilterData* s = AsSection(filter);
    PendingChange change;
    if (!ReadPendingChange(s, &change)) return false;
    s->changeApplied.store(change.ticket, std::memory_order_relaxed);
    ScheduleRamp(s, nullptr, change, count, schedule);
    return true;
}

bool PrepareRampPair(OpaqueFilterData* left, OpaqueFilterData* right, int count,
                     RampSchedule* schedule) noexcept {
    SectionFilterData* s[2] = {AsSection(left), AsSection(right)};
    PendingChange change[2];
    if (!ReadPendingChange(s[0], &change[0]) || !ReadPendingChange(s[1], &change[1]) ||
        !SameRamp(s[0], change[0], s[1], change[1])) {
        return false;
    }
    for (int k = 0; k < 2; ++k) s[k]->changeApplied.store(change[k].ticket, std::memory_order_relaxed);
    ScheduleRamp(s[0], s[1], change[0], count, schedule);
    return true;
}

void ProcessFilterBlockPlain(OpaqueFilterData* filter, const float* input, float* output,
                             int count) noexcept {
    ProcessWith(filter, input, output, count, &RunRecursionPlain);
}

}  // namespace vorix
