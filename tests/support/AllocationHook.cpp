#include "support/AllocationHook.h"

#include <cstdlib>
#include <new>

namespace vorix::test {
namespace {

thread_local std::size_t tAllocations = 0;

}  // namespace

AllocationCounter::AllocationCounter() : start_(tAllocations) {}


std::size_t AllocationCounter::Count() const { return tAllocations - start_; }

#ifdef VORIX_NO_ALLOCATION_HOOK

bool AllocationCounter::Available() { return false; }

}  // namespace vorix::test

#else

bool AllocationCounter::Available() { return true; }

namespace {

void* CountedAllocate(std::size_t size, std::size_t alignment) {
    ++tAllocations;
    if (size == 0) size = 1;
    void* p = alignment > alignof(std::max_align_t)
                  ? std::aligned_alloc(alignment, (size + alignment - 1) / alignment * alignment)
                  : std::malloc(size);
    if (p == nullptr) throw std::bad_alloc();
    return p;
}

void* CountedAllocateNoThrow(std::size_t size) noexcept {
    try {
        return CountedAllocate(size, 0);
    } catch (...) {
        return nullptr;
    }
}

}  // namespace
}  // namespace vorix::test

using vorix::test::CountedAllocate;
using vorix::test::CountedAllocateNoThrow;

// Every allocation of the test executable passes here and is counted for its thread.
void* operator new(std::size_t size) { return CountedAllocate(size, 0); }
void* operator new[](std::size_t size) { return CountedAllocate(size, 0); }
void* operator new(std::size_t size, std::align_val_t a) {
    return CountedAllocate(size, static_cast<std::size_t>(a));
}
void* operator new[](std::size_t size, std::align_val_t a) {
    return CountedAllocate(size, static_cast<std::size_t>(a));
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return CountedAllocateNoThrow(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return CountedAllocateNoThrow(size);
}
void operator delete(void* p) noexcept { std::free(p); }
void operator delete[](void* p) noexcept { std::free(p); }
void operator delete(void* p, std::size_t) noexcept { std::free(p); }
void operator delete[](void* p, std::size_t) noexcept { std::free(p); }
void operator delete(void* p, std::align_val_t) noexcept { std::free(p); }
void operator delete[](void* p, std::align_val_t) noexcept { std::free(p); }
void operator delete(void* p, std::size_t, std::align_val_t) noexcept { std::free(p); }
void operator delete[](void* p, std::size_t, std::align_val_t) noexcept { std::free(p); }

#endif  // VORIX_NO_ALLOCATION_HOOK
