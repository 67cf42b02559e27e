#include "support/AllocationHook.h"

#include <cstdlib>
#include <new>

namespace vorix::test {
namespace {

thread_local std::size_t tAllocations = 0;
thread_local AllocationCounter* tInnermost = nullptr;

void* CountedAllocate(std::size_t size, std::size_t alignment) {
    ++tAllocations;
    if (size == 0) size = 1;
    void* p = alignment > alignof(std::max_align_t)
                  ? std::aligned_alloc(alignment, (size + alignment - 1) / alignment * alignment)
                  : std::malloc(size);
    if (p == nullptr) throw std::bad_alloc();
    return p;
}

}  // namespace

AllocationCounter::AllocationCounter() : start_(tAllocations), outer_(tInnermost) {
    tInnermost = this;
}

AllocationCounter::~AllocationCounter() { tInnermost = outer_; }

std::size_t AllocationCounter::Count() const { return tAllocations - start_; }

}  // namespace vorix::test

using vorix::test::CountedAllocate;

void* operator new(std::size_t size) { return CountedAllocate(size, 0); }
void* operator new[](std::size_t size) { return CountedAllocate(size, 0); }
void* operator new(std::size_t size, std::align_val_t a) {
    return CountedAllocate(size, static_cast<std::size_t>(a));
}
void* operator new[](std::size_t size, std::align_val_t a) {
    return CountedAllocate(size, static_cast<std::size_t>(a));
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    try {
        return CountedAllocate(size, 0);
    } catch (...) {
        return nullptr;
    }
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    try {
        return CountedAllocate(size, 0);
    } catch (...) {
        return nullptr;
    }
}
void operator delete(void* p) noexcept { std::free(p); }
void operator delete[](void* p) noexcept { std::free(p); }
void operator delete(void* p, std::size_t) noexcept { std::free(p); }
void operator delete[](void* p, std::size_t) noexcept { std::free(p); }
void operator delete(void* p, std::align_val_t) noexcept { std::free(p); }
void operator delete[](void* p, std::align_val_t) noexcept { std::free(p); }
void operator delete(void* p, std::size_t, std::align_val_t) noexcept { std::free(p); }
void operator delete[](void* p, std::size_t, std::align_val_t) noexcept { std::free(p); }
