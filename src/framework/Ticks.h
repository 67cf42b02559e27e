#pragma once

#include <cstdint>
#include <functional>

namespace vorix {

// The user interface's unit of time: 17 ms, about a sixtieth of a second. Tick values wrap
// modulo 2^32 and are compared by difference, so a wrap costs nothing.
using Ticks = std::int32_t;

inline constexpr std::int64_t kMillisecondsPerTick = 17;

// Where a timer manager reads the time; the system clock in the product, a hand-moved one in
// tests and offline tools.
using TickSource = std::function<Ticks()>;

// Milliseconds of a monotonic clock as ticks, in whole numbers. Any thread.
Ticks TicksFromMilliseconds(std::int64_t milliseconds) noexcept;

// The system's monotonic uptime in ticks. Any thread; never blocks.
Ticks GetTicks() noexcept;

}  // namespace vorix
