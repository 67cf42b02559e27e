#pragma once

#include "dsp/FilterRecord.h"

namespace vorix {

// Starts a filter again from rest if its history has left what single precision can carry: a
// chain of legal boosts can overflow, and an overflowed history would otherwise turn every later
// sample, silence included, into infinity or NaN for good. Run once per block, after the filter
// has run, by both walks alike, so that the plain and the fast kernels stay bit for bit the same.
// Audio thread; a harmonic filter recovers sub-filter by sub-filter, an External one section by
// section.
void RecoverFilterState(OpaqueFilterData* filter) noexcept;

}  // namespace vorix
