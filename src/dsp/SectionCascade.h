#pragma once

#include "dsp/FilterRecord.h"

namespace vorix {

// Runs single-section filters with no ramp due in cascade over a block, in place: the same bits
// as running each filter's recursion over the whole block in turn, but with several filters in
// flight at once (filter j works on sample t - j while filter j - 1 works on t), so the cascade is
// bound by arithmetic throughput rather than by the latency of one recursion.
// Audio thread; must not allocate, lock or throw.
void ProcessSectionCascade(SectionFilterData* const* filters, int count, float* buffer,
                           int samples) noexcept;

// Two independent cascades, one per channel, carried side by side in one SIMD register: lane 0
// runs left[j], lane 1 runs right[j]. Audio thread.
void ProcessSectionCascadeStereo(SectionFilterData* const* left, SectionFilterData* const* right,
                                 int count, float* bufferLeft, float* bufferRight,
                                 int samples) noexcept;

// The instruction sets the cascades are built for; the best one the processor has is chosen
// once, at the first call. Both give the same bits.
enum class CascadeIsa { Sse2, Avx512 };

bool CascadeIsaSupported(CascadeIsa isa) noexcept;
CascadeIsa BestCascadeIsa() noexcept;

// The two kernels above on a given instruction set, which must be supported. Audio thread.
void ProcessSectionCascadeOn(CascadeIsa isa, SectionFilterData* const* filters, int count,
                             float* buffer, int samples) noexcept;
void ProcessSectionCascadeStereoOn(CascadeIsa isa, SectionFilterData* const* left,
                                   SectionFilterData* const* right, int count, float* bufferLeft,
                                   float* bufferRight, int samples) noexcept;

// The reference twin of both: each filter's plain recursion over the whole block in turn.
// Audio thread.
void ProcessSectionCascadePlain(SectionFilterData* const* filters, int count, float* buffer,
                                int samples) noexcept;

}  // namespace vorix
