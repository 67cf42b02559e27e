#pragma once

#include <atomic>

namespace vorix {

// A word that the audio thread and the editor side share without ordering: each read and write
// is whole, so a reader sees the old or the new value, never a torn one. On x86-64 every access
// is a plain move; what orders a parameter change is the pair of change counters around it.
// Copying reads the source once; a copy is never shared while it is being made.
template <typename T>
class RelaxedAtomic {
public:
    constexpr RelaxedAtomic() noexcept : value_(T{}) {}
    constexpr RelaxedAtomic(T value) noexcept : value_(value) {}  // NOLINT: implicit by design
    RelaxedAtomic(const RelaxedAtomic& other) noexcept : value_(other.Load()) {}
    RelaxedAtomic& operator=(const RelaxedAtomic& other) noexcept {
        Store(other.Load());
        return *this;
    }
    RelaxedAtomic& operator=(T value) noexcept {
        Store(value);
        return *this;
    }

    operator T() const noexcept { return Load(); }  // NOLINT: implicit by design
    T Load() const noexcept { return value_.load(std::memory_order_relaxed); }
    void Store(T value) noexcept { value_.store(value, std::memory_order_relaxed); }

private:
    static_assert(std::atomic<T>::is_always_lock_free, "shared audio words must be lock-free");
    std::atomic<T> value_;
};

}  // namespace vorix
