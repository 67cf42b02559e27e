#pragma once

#include "dsp/FilterPool.h"
#include "dsp/FilterRecord.h"

namespace vorix {

// Takes a record from the chain's pool, initialises it with the type's defaults and appends it,
// fully designed, with one pointer write. Null when the type has no records.
// Editor side; allocates a pool block at most.
OpaqueFilterData* CreateFilterInChain(FilterChain* chain, uint32_t flags, FilterType type);

// Takes the record out of `chain` with one pointer write and leaves it whole, its own links
// included: an audio block that holds it walks on into the chain. False, and nothing done, if it
// is not there. The record stays in use until it is released. Editor side.
bool UnlinkFilter(FilterChain* chain, OpaqueFilterData* filter);

// Unlinks the record from `chain` (false, and nothing else, if it is not there; a null chain skips
// the unlinking), gives back a harmonic filter's sub-filters and their chain, and frees the slot.
// Editor side.
bool ReleaseFilter(FilterChain* chain, OpaqueFilterData* filter);

// Chain walking, tolerant of null. Any thread: the audio thread walks while the editor appends.
inline OpaqueFilterData* FirstFilter(const FilterChain* chain) {
    return chain != nullptr ? chain->first.load(std::memory_order_acquire) : nullptr;
}
inline OpaqueFilterData* NextFilter(const OpaqueFilterData* filter) {
    return filter != nullptr ? filter->next.load(std::memory_order_acquire) : nullptr;
}

}  // namespace vorix
