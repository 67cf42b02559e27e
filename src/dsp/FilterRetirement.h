#pragma once

#include <cstdint>
#include <memory>

#include "dsp/FilterPool.h"

namespace vorix {

// Nothing that the audio thread may still hold goes back to the pool at once. What an edit takes
// out of the audio thread's reach is retired here, and reclaimed only after every audio block that
// had begun by the time of its removal has ended. The engine counts the blocks; the pool keeps the
// list. Main thread, all of them.

// A record already unlinked from its chain. Its links stay intact, so that an audio block that
// holds it walks on into the chain it left.
void RetireFilter(FilterPool* pool, OpaqueFilterData* filter);

// A chain that no configuration points at any more, with all its records.
void RetireChain(FilterPool* pool, FilterChain* chain);

// An External filter's section array that a new one has replaced.
void RetireSections(FilterPool* pool, std::unique_ptr<FilterSectionList::Sections> sections);

// Gives back to the pool what no audio block can still hold. `blocksEntered` must be read after
// the removals it is to cover, and `blocksLeft` after `blocksEntered`: an entry first seen here
// takes `blocksEntered` as its ticket, and an entry whose ticket `blocksLeft` has reached is
// reclaimed. With the audio thread idle, the two counts agree and everything goes back at once.
void ReclaimRetired(FilterPool* pool, uint64_t blocksEntered, uint64_t blocksLeft);

// The number of entries waiting. Main thread.
std::size_t RetiredCount(const FilterPool* pool);

}  // namespace vorix
