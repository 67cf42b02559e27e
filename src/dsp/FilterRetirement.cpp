#include "dsp/FilterRetirement.h"

#include <algorithm>

#include "dsp/FilterChainOps.h"

namespace vorix {
namespace {

void Reclaim(FilterPool* pool, FilterPool::Retired& entry) {
    if (entry.filter != nullptr) ReleaseFilter(nullptr, entry.filter);
    if (entry.chain != nullptr) {
        while (OpaqueFilterData* filter = FirstFilter(entry.chain))
            ReleaseFilter(entry.chain, filter);
        ReturnFilterChain(pool, entry.chain);
    }
    entry.sections.reset();
}

}  // namespace

void RetireFilter(FilterPool* pool, OpaqueFilterData* filter) {
    pool->retired.emplace_back().filter = filter;
}

void RetireChain(FilterPool* pool, FilterChain* chain) {
    if (chain != nullptr) pool->retired.emplace_back().chain = chain;
}

void RetireSections(FilterPool* pool, std::unique_ptr<FilterSectionList::Sections> sections) {
    if (sections != nullptr) pool->retired.emplace_back().sections = std::move(sections);
}

void ReclaimRetired(FilterPool* pool, uint64_t blocksEntered, uint64_t blocksLeft) {
    for (FilterPool::Retired& entry : pool->retired) {
        if (!entry.ticketed) {
            entry.ticket = blocksEntered;
            entry.ticketed = true;
        }
    }
    // Reclaimed in the order retired, so that a record goes back before a chain that followed it.
    auto passed = [blocksLeft](const FilterPool::Retired& entry) {
        return entry.ticket <= blocksLeft;
    };
    for (FilterPool::Retired& entry : pool->retired) {
        if (passed(entry)) Reclaim(pool, entry);
    }
    std::erase_if(pool->retired, passed);
}

std::size_t RetiredCount(const FilterPool* pool) {
    return pool->retired.size();
}

}  // namespace vorix
