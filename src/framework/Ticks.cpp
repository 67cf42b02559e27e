#include "framework/Ticks.h"

#include <chrono>

namespace vorix {

Ticks TicksFromMilliseconds(std::int64_t milliseconds) noexcept {
    // Through the unsigned word, so that a long uptime wraps instead of overflowing.
    return static_cast<Ticks>(static_cast<std::uint32_t>(milliseconds / kMillisecondsPerTick));
}

Ticks GetTicks() noexcept {
    using namespace std::chrono;
    // steady_clock is CLOCK_MONOTONIC on Linux: time since boot, never set back.
    const auto uptime = duration_cast<milliseconds>(steady_clock::now().time_since_epoch());
    return TicksFromMilliseconds(uptime.count());
}

}  // namespace vorix
