#pragma once

#include "dsp/FilterPool.h"
#include "dsp/FilterRecord.h"

namespace vorix {

// A parameter as the editor, the host and documents see it: gain in decibels, frequency
// normalised, whole-number parameters widened. Ids the type does not answer, and any External
// filter, give 0. Any thread that may read the targets.
double GetFilterParameter(const OpaqueFilterData* filter, FilterParameterId id);

// Stores a parameter, clamped to the type's range (never refused), and redesigns the edit set,
// bracketed by the change counters so that the audio thread ramps to the result.
// Editor side: one writer per record at a time; never the audio thread.
void SetFilterParameter(OpaqueFilterData* filter, FilterParameterId id, float value);

// Copies every parameter both types hold, the sections of two External filters, and the name.
// Editor side.
void CopyFilterParameters(const OpaqueFilterData* source, OpaqueFilterData* target);

// Clears the delay state; coefficients stay. Editor side: the audio thread may see a block with
// partly cleared state, which is harmless.
void ResetFilterState(OpaqueFilterData* filter);

// Sets the type's defaults into targets and current parameters, the process and design
// functions, and both coefficient sets. A harmonic filter takes a sub-filter chain from `pool`.
// Editor side, before the record is linked; allocates for harmonic filters only.
void InitFilterDefaults(OpaqueFilterData* filter, FilterPool* pool);

// A gain in decibels as the linear ratio that records and the audio path hold: 10 to the power of
// (decibels times 0.05), worked in double and rounded once. Any thread.
float DecibelsToRatio(float decibels);

}  // namespace vorix
