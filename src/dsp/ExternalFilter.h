#pragma once

#include "dsp/FilterDescription.h"
#include "dsp/FilterRecord.h"

namespace vorix {

// Each section in turn over the whole block, reading `input` and writing `output`: a cascade
// where the two are the same buffer, which is how the engine always calls it. a[0] is ignored
// here, though the response evaluation uses it. Audio thread; must not allocate, lock or throw.
// One section of an External filter over a block: the recursion of every section kernel, with the
// section's history left as [0] the last input and output, [1] and [2] the two before.
// Audio thread.
void RunExternalSection(FilterSection& section, const float* input, float* output,
                        int count) noexcept;

void ProcessSectionsBlock(OpaqueFilterData* filter, const float* input, float* output,
                          int count) noexcept;

// Gives the filter one section per entry of `numerators`, new sections starting silent, and
// copies the coefficients as they stand, without normalising. The old array is retired in the
// pool of the record's chain. Editor side.
void LoadExternalSections(OpaqueFilterData* filter, const FilterDescription& description);

// Copies the whole section array, history included. With as many sections on both sides only the
// words change; otherwise a new array replaces the target's and the old one is retired in the
// pool of the target's chain, so a linked target is safe to copy into. Editor side.
void CopyExternalSections(const ExternalFilterData* source, ExternalFilterData* target);

}  // namespace vorix
