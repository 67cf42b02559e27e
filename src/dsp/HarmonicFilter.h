#pragma once

#include "dsp/FilterRecord.h"

namespace vorix {

// Propagates a harmonic filter's gain, frequency and bandwidth to its sub-filters, each through
// its own parameter write, so each ramps on its own. Harmonics at or above the frequency limit
// keep their frequency and are flagged with a negative harmonic number; they recover when the
// fundamental comes down. Editor side.
void DesignHarmonic(OpaqueFilterData* filter, uint8_t selector);

// Whether sub-filter number k (1 is the fundamental) takes part under `components`.
// Any thread.
inline bool HarmonicSelected(int32_t components, int k) {
    if (k == 1) return (components & 1) != 0;
    return (k % 2 == 0) ? (components & 4) != 0 : (components & 2) != 0;
}

// The sub-filters in cascade: the fundamental if selected, then each selected harmonic that lies
// within range. With none active nothing is written, which in place is a wire.
// Audio thread; must not allocate, lock or throw.
void ProcessHarmonicBlock(OpaqueFilterData* filter, const float* input, float* output,
                          int count) noexcept;

}  // namespace vorix
