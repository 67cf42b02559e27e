#pragma once

#include "engine/FilterDescription.h"
#include "engine/FilterRecord.h"

namespace vorix {

// Each section in turn over the whole block, reading `input` and writing `output`: a cascade
// where the two are the same buffer, which is how the engine always calls it. a[0] is ignored
// here, though the response evaluation uses it. Audio thread; must not allocate, lock or throw.
void ProcessSectionsBlock(OpaqueFilterData* filter, const float* input, float* output,
                          int count) noexcept;

// Gives the filter one section per entry of `numerators`, new sections starting silent, and
// copies the coefficients as they stand, without normalising. Editor side, before the record is
// linked (the section array may move).
void LoadExternalSections(OpaqueFilterData* filter, const FilterDescription& description);

// Copies the whole section array, history included. While the target is linked the caller must
// keep the audio thread out (the engine's audio lock) unless both have the same number of
// sections, in which case the array stays where it is and only its words change. Editor side.
void CopyExternalSections(const ExternalFilterData* source, ExternalFilterData* target);

}  // namespace vorix
