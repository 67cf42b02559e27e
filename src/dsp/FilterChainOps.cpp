#include "dsp/FilterChainOps.h"

#include "dsp/FilterParameters.h"

namespace vorix {
namespace {

// The link that points at `filter` in the chain, or null if it is not there.
std::atomic<OpaqueFilterData*>* FindLink(FilterChain* chain, const OpaqueFilterData* filter) {
    std::atomic<OpaqueFilterData*>* link = &chain->first;
    for (OpaqueFilterData* f = link->load(std::memory_order_relaxed); f != nullptr;
         f = link->load(std::memory_order_relaxed)) {
        if (f == filter) return link;
        link = &f->next;
    }
    return nullptr;
}

void ReleaseSubFilters(HarmonicFilterData* harmonic) {
    FilterChain* subFilters = harmonic->subFilters;
    if (subFilters == nullptr) return;
    while (OpaqueFilterData* sub = FirstFilter(subFilters)) ReleaseFilter(subFilters, sub);
    harmonic->subFilters = nullptr;
    ReturnFilterChain(subFilters->pool, subFilters);
}

}  // namespace

OpaqueFilterData* CreateFilterInChain(FilterChain* chain, uint32_t flags, FilterType type) {
    OpaqueFilterData* filter = AllocateFilterRecord(chain->pool, type);
    if (filter == nullptr) return nullptr;
    filter->flags = flags;
    InitFilterDefaults(filter, chain->pool);
    filter->chain = chain;

    std::atomic<OpaqueFilterData*>* link = &chain->first;
    while (OpaqueFilterData* f = link->load(std::memory_order_relaxed)) link = &f->next;
    link->store(filter, std::memory_order_release);  // the record is complete before it is seen
    ++chain->count;
    return filter;
}

bool UnlinkFilter(FilterChain* chain, OpaqueFilterData* filter) {
    std::atomic<OpaqueFilterData*>* link = FindLink(chain, filter);
    if (link == nullptr) return false;
    link->store(filter->next.load(std::memory_order_relaxed), std::memory_order_release);
    --chain->count;
    return true;
}

bool ReleaseFilter(FilterChain* chain, OpaqueFilterData* filter) {
    if (chain != nullptr && !UnlinkFilter(chain, filter)) return false;
    if (KindOf(filter) == FilterKind::Harmonic) ReleaseSubFilters(AsHarmonic(filter));
    filter->next.store(nullptr, std::memory_order_release);
    filter->partner.store(nullptr, std::memory_order_release);
    filter->flags = 0;
    filter->chain = nullptr;
    filter->changeStarted.store(0, std::memory_order_relaxed);
    filter->changeFinished.store(0, std::memory_order_relaxed);
    filter->changeApplied.store(0, std::memory_order_relaxed);
    filter->inUse = 0;
    return true;
}

}  // namespace vorix
