#include "dsp/FilterDescription.h"

#include "dsp/ExternalFilter.h"
#include "dsp/FilterChainOps.h"
#include "dsp/FilterParameters.h"

namespace vorix {
namespace {

// Lends a chain of the pool for as long as a record is being built in it: a chain that the audio
// thread never walks, so the record may be half made there.
class WorkbenchChain {
  public:
    explicit WorkbenchChain(FilterPool* pool) : pool_(pool), chain_(AcquireFilterChain(pool)) {}
    WorkbenchChain(const WorkbenchChain&) = delete;
    WorkbenchChain& operator=(const WorkbenchChain&) = delete;
    ~WorkbenchChain() {
        if (OpaqueFilterData* leftover = FirstFilter(chain_)) ReleaseFilter(chain_, leftover);
        ReturnFilterChain(pool_, chain_);
    }

    FilterChain* Get() const noexcept { return chain_; }

    // Takes the finished record out of the bench and appends it to `target`: the release store
    // of the link publishes everything written to the record before it.
    void MoveTo(OpaqueFilterData* filter, FilterChain* target) noexcept {
        chain_->first.store(nullptr, std::memory_order_relaxed);
        chain_->count = 0;
        filter->chain = target;
        std::atomic<OpaqueFilterData*>* link = &target->first;
        while (OpaqueFilterData* f = link->load(std::memory_order_relaxed))
            link = &f->next;
        link->store(filter, std::memory_order_release);
        ++target->count;
    }

  private:
    FilterPool* pool_;
    FilterChain* chain_;
};

}  // namespace

FilterDescription DescribeFilter(const OpaqueFilterData* filter) {
    FilterDescription d;
    d.flags = filter->flags;
    d.type = filter->type;
    d.name = filter->name;
    const uint32_t mask = FilterParameterMask(d.type);
    for (FilterParameterId id : kAllFilterParameters) {
        if (mask & Bit(id)) {
            d.parameters.emplace_back(id, static_cast<float>(GetFilterParameter(filter, id)));
        }
    }
    if (d.type == kExternalFilter) {
        for (const FilterSection& s : AsExternal(filter)->sections) {
            d.numerators.push_back({s.b[0], s.b[1], s.b[2]});
            d.denominators.push_back({s.a[0], s.a[1], s.a[2]});
        }
    }
    return d;
}

OpaqueFilterData* CreateFilterFromDescription(FilterChain* chain, const FilterDescription& d) {
    WorkbenchChain bench(chain->pool);
    OpaqueFilterData* filter = CreateFilterInChain(bench.Get(), 0, d.type);
    if (filter == nullptr) return nullptr;
    // Every parameter given goes through SetFilterParameter with its clamps, whether the type's
    // mask names it or not: a low pass given a bandwidth takes the Q that bandwidth makes, and a
    // Notch takes a Q given as such. A parameter left out keeps the record's default.
    for (const auto& [id, value] : d.parameters)
        SetFilterParameter(filter, id, value);
    filter->name = d.name.substr(0, kMaxFilterNameLength);
    if (KindOf(filter) == FilterKind::External) LoadExternalSections(filter, d);
    filter->flags = d.flags;
    bench.MoveTo(filter, chain);
    return filter;
}

}  // namespace vorix
