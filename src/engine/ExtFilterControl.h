#pragma once

#include <array>
#include <atomic>
#include <cstdint>

#include "dsp/FilterTypes.h"

namespace vorix {

struct OpaqueFilterData;

// What a host parameter of an automation slot stands for: frequency in Hz, gain in decibels, or
// the filter's third parameter (Q, slope or bandwidth) as a unit value from 0 to 1.
enum class SlotParameter : int32_t { Freq = 0, Gain = 1, Poly = 2 };

inline constexpr int32_t kSlotParameterCount = 3;

// The parameter bit behind a slot parameter for a filter of `type`; 0 for none.
uint32_t SlotParameterBit(FilterType type, SlotParameter sub);
// Back from a parameter bit: 0 for frequency, 1 for gain, 2 for Q, slope and bandwidth, -1 for
// any other bit.
int32_t SlotParameterOfBit(uint32_t bit);

// One automation slot: the filter bound to it, and per host parameter a pair of counters that tell
// a reader whether automation moved it since the reader last looked. Main and host control
// threads; the counters are only advisory.
class ExtFilterControl {
  public:
    OpaqueFilterData* Filter() const noexcept { return filter_.load(std::memory_order_acquire); }
    // Binds `filter` (null frees the slot) and marks every counter as seen.
    void Bind(OpaqueFilterData* filter) noexcept;

    // Host control thread. Applies a host value in the parameter's own unit; nothing for a free
    // slot or a parameter the filter does not have.
    void SetValue(SlotParameter sub, float value, float sampleRate);
    // Any thread but audio. The host's view of the value; 0 for a free slot or a missing parameter.
    float GetValue(SlotParameter sub, float sampleRate) const;
    // Main thread. Whether the parameter moved since the last call, and marks it as seen.
    bool TakeChanged(SlotParameter sub) noexcept;

  private:
    // Written by the host control thread and the main thread; advisory, so relaxed.
    struct Counters {
        std::atomic<uint32_t> changeCount{0};
        std::atomic<uint32_t> seenCount{0};
    };

    // Bound on the main thread by one pointer write, read by the host control thread.
    std::atomic<OpaqueFilterData*> filter_{nullptr};
    std::array<Counters, kSlotParameterCount> counters_{};
};

}  // namespace vorix
