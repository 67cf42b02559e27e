#pragma once

#include "dsp/FilterRecord.h"

namespace vorix {

// Evaluates c[0] z^N + c[1] z^(N-1) + ... + c[N] at z = e^(jw), accumulating in double precision
// with cos w and sin w computed once. Any thread; pure.
void EvaluatePolynomialOnUnitCircle(const float* c, int order, double w, float* re, float* im);

// A filter's magnitude and phase at a normalised frequency, from the edit set: what the user has
// set, even while the audio is still ramping towards it. Either output may be null. The phase
// keeps its historical form, plain arctangents with no quadrant handling; nothing reads it today.
// Editor side (the plot and the command line).
void EvaluateFilterResponse(const OpaqueFilterData* filter, double frequency, float* magnitude,
                            float* phase);

}  // namespace vorix
