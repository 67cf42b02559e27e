#pragma once

#include <atomic>
#include <cstdint>

namespace vorix {

// A re-entrancy counter that never goes below 0, so a surplus release is harmless. It is an
// atomic with sequentially consistent operations: the audio suspension depth is one of these,
// and the audio thread's test of it must be ordered against its own flag that says it is inside
// the audio call (see PluginCore::Process). On x86-64 a load costs a plain move.
// Any thread; never blocks, never allocates.
class DepthCounter {
  public:
    DepthCounter() noexcept = default;
    DepthCounter(const DepthCounter&) = delete;
    DepthCounter& operator=(const DepthCounter&) = delete;

    // Any thread. Adds 1.
    void Raise() noexcept { depth_.fetch_add(1); }

    // Any thread. Subtracts 1 unless the counter is at 0 already.
    void Lower() noexcept {
        std::int32_t depth = depth_.load();
        while (depth > 0 && !depth_.compare_exchange_weak(depth, depth - 1)) {
        }
    }

    // Any thread. The present depth.
    std::int32_t Value() const noexcept { return depth_.load(); }

    // Any thread. Whether the counter is above 0.
    bool IsRaised() const noexcept { return Value() > 0; }

  private:
    std::atomic<std::int32_t> depth_{0};
};

// Holds a depth counter raised for the length of a scope, an exception's passage included.
// The thread of the counter's owner; never allocates.
class DepthGuard {
  public:
    explicit DepthGuard(DepthCounter& counter) noexcept : counter_(counter) { counter_.Raise(); }
    ~DepthGuard() { counter_.Lower(); }
    DepthGuard(const DepthGuard&) = delete;
    DepthGuard& operator=(const DepthGuard&) = delete;

  private:
    DepthCounter& counter_;
};

}  // namespace vorix
