#include "vorix/Interrupt.h"

#include <atomic>
#include <csignal>

namespace vorix::cli {
namespace {

// Lock-free, so that a signal handler may set it.
std::atomic<bool> gInterrupted{false};
static_assert(std::atomic<bool>::is_always_lock_free);

extern "C" void OnInterrupt(int /*signal*/) {
    RequestInterrupt();
}

}  // namespace

void InstallInterruptHandlers() {
    std::signal(SIGINT, OnInterrupt);
    std::signal(SIGTERM, OnInterrupt);
}

void RequestInterrupt() noexcept {
    gInterrupted.store(true, std::memory_order_relaxed);
}

void ClearInterrupt() noexcept {
    gInterrupted.store(false, std::memory_order_relaxed);
}

bool InterruptRequested() noexcept {
    return gInterrupted.load(std::memory_order_relaxed);
}

}  // namespace vorix::cli
