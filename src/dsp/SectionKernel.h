#pragma once

#include "dsp/FilterRecord.h"

namespace vorix {

// A parameter change ramps over this many samples (fewer in a shorter block).
constexpr int kRampLength = 16;

// The audio set widened to double once per block: the recursion sums in double precision.
struct SectionCoefficients {
    double b0, b1, b2, a1, a2;
};

// Direct form I history: the ramp relies on it staying valid when coefficients change.
struct SectionState {
    float x1, x2;
    double y1, y2;
};

// One sample of the recursion, y = b0 x + b1 x1 + b2 x2 - a1 y1 - a2 y2, summed left to right in
// double precision. Every kernel of Vorix keeps exactly this order so that all give equal bits.
inline float RecursionStep(const SectionCoefficients& c, SectionState& s, float x) noexcept {
    const double y = c.b0 * x + c.b1 * s.x1 + c.b2 * s.x2 - c.a1 * s.y1 - c.a2 * s.y2;
    s.x2 = s.x1;
    s.x1 = x;
    s.y2 = s.y1;
    s.y1 = y;
    return static_cast<float>(y);
}

SectionCoefficients LoadAudioSet(const SectionFilterData* filter) noexcept;
SectionState LoadState(const SectionFilterData* filter) noexcept;
void StoreState(SectionFilterData* filter, const SectionState& state) noexcept;

// The recursion over a block, sample by sample: the reference every faster kernel must equal.
// Audio thread.
void RunRecursionPlain(const SectionCoefficients& c, SectionState& s, const float* input,
                       float* output, int count) noexcept;

// The same recursion unrolled by eight. Audio thread.
void RunRecursion(const SectionCoefficients& c, SectionState& s, const float* input, float* output,
                  int count) noexcept;

// The targets and ticket of a change that is complete and not yet applied.
struct PendingChange {
    float gain, frequency, q;
    uint32_t ticket;
};

// Reads the change counters as the seqlock reader: true if a change is complete and not yet
// applied, with its targets. A write under way reads as no change: the block keeps the old
// coefficients and the ramp waits for the next block. Audio thread.
bool ReadPendingChange(const SectionFilterData* filter, PendingChange* change) noexcept;

// Whether a ramp would start in the next block. Audio thread; a hint that may go stale.
bool RampDue(const OpaqueFilterData* filter) noexcept;

// The kernel of every single-section type: plain recursion on the audio set, or, after a
// change, a ramp over the first 16 samples (fewer in a shorter block) with a redesign on each,
// then the rest of the block on the last coefficients. Input and output may be the same buffer.
// Audio thread; must not allocate, lock or throw.
void ProcessFilterBlock(OpaqueFilterData* filter, const float* input, float* output,
                        int count) noexcept;

// A ramp laid out ahead of the samples it shapes: the audio set of each step, widened to double
// (b0, b1, b2, a1, a2), for the cascades to run in their lanes.
struct RampSchedule {
    double steps[kRampLength][5];
    int length;  // the smaller of kRampLength and the block
};

// If a change is complete and not yet applied, steps the filter to it exactly as ProcessFilterBlock
// would over a block of `count` samples, laying each step's design out in `schedule`, and returns
// true: the record is then as ProcessFilterBlock leaves it, history apart, and the last step's
// design is its audio set for the rest of the block. Audio thread.
bool PrepareRamp(OpaqueFilterData* filter, int count, RampSchedule* schedule) noexcept;

// The same for the two halves of a pair when both ramp from the same parameters to the same
// targets: each step is designed once, for both. Returns false, and changes nothing, otherwise.
// Audio thread.
bool PrepareRampPair(OpaqueFilterData* left, OpaqueFilterData* right, int count,
                     RampSchedule* schedule) noexcept;

// ProcessFilterBlock with the sample-by-sample recursion after the ramp: the reference twin.
// Audio thread.
void ProcessFilterBlockPlain(OpaqueFilterData* filter, const float* input, float* output,
                             int count) noexcept;

}  // namespace vorix
