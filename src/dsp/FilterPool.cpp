#include "dsp/FilterPool.h"

namespace vorix {
namespace {

template <typename Record>
std::unique_ptr<FilterPool::Block> MakeBlock() {
    auto block = std::make_unique<FilterPool::Block>();
    Record* records = new Record[FilterPool::kBlockSize];
    block->storage = {records, [](void* p) { delete[] static_cast<Record*>(p); }};
    for (int i = 0; i < FilterPool::kBlockSize; ++i) block->slots[i] = &records[i];
    return block;
}

std::unique_ptr<FilterPool::Block> MakeBlockFor(FilterType type) {
    switch (FilterKindOf(type)) {
        case FilterKind::SingleSection: return MakeBlock<SectionFilterData>();
        case FilterKind::Harmonic: return MakeBlock<HarmonicFilterData>();
        case FilterKind::External: return MakeBlock<ExternalFilterData>();
        case FilterKind::None: break;
    }
    return nullptr;
}

OpaqueFilterData* TakeSlot(OpaqueFilterData* slot, FilterType type) {
    slot->inUse = 1;
    slot->type = type;
    slot->name.clear();
    return slot;
}

}  // namespace

FilterPool::~FilterPool() {
    // Unlink long block lists iteratively rather than through nested destructors.
    for (auto& [type, head] : blocks) {
        while (head) head = std::move(head->next);
    }
}

OpaqueFilterData* AllocateFilterRecord(FilterPool* pool, FilterType type) {
    if (FilterKindOf(type) == FilterKind::None) return nullptr;
    std::unique_ptr<FilterPool::Block>* link = &pool->blocks[type];
    for (; *link; link = &(*link)->next) {
        for (OpaqueFilterData* slot : (*link)->slots) {
            if (slot->inUse == 0) return TakeSlot(slot, type);
        }
    }
    *link = MakeBlockFor(type);
    return TakeSlot((*link)->slots[0], type);
}

FilterChain* AcquireFilterChain(FilterPool* pool) {
    FilterChain* chain = pool->freeChains;
    if (chain != nullptr) {
        pool->freeChains = chain->next;
    } else {
        pool->allChains.push_back(std::make_unique<FilterChain>());
        chain = pool->allChains.back().get();
    }
    chain->next = nullptr;
    chain->pool = pool;
    chain->first.store(nullptr, std::memory_order_release);
    chain->count = 0;
    return chain;
}

void ReturnFilterChain(FilterPool* pool, FilterChain* chain) {
    chain->next = pool->freeChains;
    pool->freeChains = chain;
}

int FilterPoolBlockCount(const FilterPool* pool, FilterType type) {
    auto it = pool->blocks.find(type);
    if (it == pool->blocks.end()) return 0;
    int count = 0;
    for (const FilterPool::Block* b = it->second.get(); b != nullptr; b = b->next.get()) ++count;
    return count;
}

}  // namespace vorix
