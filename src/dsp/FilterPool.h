#pragma once

#include <map>
#include <memory>
#include <vector>

#include "dsp/FilterRecord.h"

namespace vorix {

// Where every filter record and chain of one engine instance lives. Records come in blocks of
// ten per type; a block is never given back while the pool lives, so a record that the audio
// thread still holds after its release stays readable. Main thread only.
struct FilterPool {
    static constexpr int kBlockSize = 10;

    struct Block {
        OpaqueFilterData* slots[kBlockSize] = {};
        // The ten records, deleted as the type they were made as.
        std::unique_ptr<void, void (*)(void*)> storage{nullptr, nullptr};
        std::unique_ptr<Block> next;
    };

    FilterPool() = default;
    FilterPool(const FilterPool&) = delete;
    FilterPool& operator=(const FilterPool&) = delete;
    ~FilterPool();

    // What has left the audio thread's reach but may still be in its hands: a record, a chain
    // with its records, or an External filter's old section array. `ticket` is the count of audio
    // blocks entered when the entry was first looked at after its removal.
    struct Retired {
        OpaqueFilterData* filter = nullptr;
        FilterChain* chain = nullptr;
        std::unique_ptr<FilterSectionList::Sections> sections;
        uint64_t ticket = 0;
        bool ticketed = false;
    };

    std::map<FilterType, std::unique_ptr<Block>> blocks;
    FilterChain* freeChains = nullptr;
    std::vector<std::unique_ptr<FilterChain>> allChains;
    std::vector<Retired> retired;
};

// Takes the first free slot of the type's blocks, opening a new block when all are taken; marks
// it in use, sets its type and clears its name. Null for a type that has no records (0, unknown).
// Main thread; allocates a block at most.
OpaqueFilterData* AllocateFilterRecord(FilterPool* pool, FilterType type);

// A chain from the free list, or a new one; its pool, first and count are reset.
// Main thread.
FilterChain* AcquireFilterChain(FilterPool* pool);

// Puts an empty chain on the pool's free list. Main thread.
void ReturnFilterChain(FilterPool* pool, FilterChain* chain);

// The number of blocks the pool holds for a type. Main thread.
int FilterPoolBlockCount(const FilterPool* pool, FilterType type);

}  // namespace vorix
