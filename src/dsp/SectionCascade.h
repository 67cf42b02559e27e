#pragma once

#include "dsp/FilterRecord.h"

namespace vorix {

struct RampSchedule;

// One second-order section that a cascade runs: a single-section filter (its audio set), or one
// section of an External filter; exactly one of the two is set. A filter whose change is ramping
// in this block brings the ramp's schedule: its first samples run on the schedule's steps, the
// rest on its audio set, which holds the last step. (No default values: the chain walk gathers
// stages into arrays that it must not clear on every block.)
struct CascadeStage {
    SectionFilterData* filter;
    FilterSection* section;
    const RampSchedule* ramp;
};

// The instruction sets the cascades are built for. All give the same bits.
enum class CascadeIsa { Sse2, Avx2, Avx512 };

bool CascadeIsaSupported(CascadeIsa isa) noexcept;
// The fastest one the processor has, found once.
CascadeIsa BestCascadeIsa() noexcept;
// "sse2", "avx2", "avx512".
const char* CascadeIsaName(CascadeIsa isa) noexcept;

// Runs sections in cascade over a block, in place: the same bits, output and history, as running
// each section's plain recursion over the whole block in turn, but with many sections at once in
// the lanes of the instruction set's registers. `isa` must be supported. Audio thread; never
// allocates, locks or throws.
void ProcessSectionCascade(CascadeIsa isa, const CascadeStage* stages, int count, float* buffer,
                           int samples) noexcept;

// Two independent cascades, one per channel, side by side: left[j] and right[j] share registers.
// Audio thread.
void ProcessSectionCascadeStereo(CascadeIsa isa, const CascadeStage* left,
                                 const CascadeStage* right, int count, float* bufferLeft,
                                 float* bufferRight, int samples) noexcept;

}  // namespace vorix
