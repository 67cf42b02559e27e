#include "engine/ExtFilterControl.h"

#include <algorithm>

#include "dsp/FilterParameters.h"
#include "dsp/FilterRecord.h"

namespace vorix {

namespace {

// The host's frequency range of a shelf: a low shelf stays at or below 1000 Hz, a high shelf at
// or above; other types take any frequency the host sends.
float ClampHostFrequency(FilterType type, float hz) {
    if (type == kLowShelf || type == kLowShelf2) return std::clamp(hz, 16.0f, 1000.0f);
    if (type == kHiShelf || type == kHiShelf2) return std::clamp(hz, 1000.0f, 20000.0f);
    return hz;
}

bool IsBothChannel(const OpaqueFilterData* filter) {
    return (filter->flags.Load() & (FilterFlags::LeftOnly | FilterFlags::RightOnly)) == 0;
}

}  // namespace

uint32_t SlotParameterBit(FilterType type, SlotParameter sub) {
    switch (sub) {
        case SlotParameter::Freq:
            return Bit(FilterParameterId::Frequency);
        case SlotParameter::Gain:
            return Bit(FilterParameterId::Gain);
        case SlotParameter::Poly: {
            const uint32_t mask = FilterParameterMask(type);
            for (FilterParameterId id :
                 {FilterParameterId::Q, FilterParameterId::Slope, FilterParameterId::Bandwidth}) {
                if ((mask & Bit(id)) != 0) return Bit(id);
            }
            return 0;
        }
    }
    return 0;
}

int32_t SlotParameterOfBit(uint32_t bit) {
    switch (static_cast<FilterParameterId>(bit)) {
        case FilterParameterId::Frequency:
            return static_cast<int32_t>(SlotParameter::Freq);
        case FilterParameterId::Gain:
            return static_cast<int32_t>(SlotParameter::Gain);
        case FilterParameterId::Q:
        case FilterParameterId::Slope:
        case FilterParameterId::Bandwidth:
            return static_cast<int32_t>(SlotParameter::Poly);
        default:
            return -1;
    }
}

void ExtFilterControl::Bind(OpaqueFilterData* filter) noexcept {
    for (Counters& counters : counters_)
        counters.seenCount.store(counters.changeCount.load(std::memory_order_relaxed),
                                 std::memory_order_relaxed);
    filter_.store(filter, std::memory_order_release);
}

void ExtFilterControl::SetValue(SlotParameter sub, float value, float sampleRate) {
    OpaqueFilterData* filter = Filter();
    if (filter == nullptr) return;
    const FilterType type = filter->type;
    const uint32_t bit = SlotParameterBit(type, sub);
    if (bit == 0) return;
    const auto id = static_cast<FilterParameterId>(bit);
    float applied = value;
    if (sub == SlotParameter::Freq) {
        applied = ClampHostFrequency(type, value) / sampleRate;
    } else if (sub == SlotParameter::Poly) {
        applied = FilterParameterToUnit(type, id, value, false);
    }
    SetFilterParameter(filter, id, applied);
    OpaqueFilterData* partner = filter->partner.load(std::memory_order_acquire);
    if (partner != nullptr && IsBothChannel(filter)) SetFilterParameter(partner, id, applied);
    counters_[static_cast<size_t>(sub)].changeCount.fetch_add(1, std::memory_order_relaxed);
}

float ExtFilterControl::GetValue(SlotParameter sub, float sampleRate) const {
    const OpaqueFilterData* filter = Filter();
    if (filter == nullptr) return 0.0f;
    const FilterType type = filter->type;
    const uint32_t bit = SlotParameterBit(type, sub);
    if (bit == 0) return 0.0f;
    const auto id = static_cast<FilterParameterId>(bit);
    const auto value = static_cast<float>(GetFilterParameter(filter, id));
    switch (sub) {
        case SlotParameter::Freq:
            return value * sampleRate;
        case SlotParameter::Gain:
            return value;
        case SlotParameter::Poly:
            return FilterParameterToUnit(type, id, value, true);
    }
    return 0.0f;
}

bool ExtFilterControl::TakeChanged(SlotParameter sub) noexcept {
    Counters& counters = counters_[static_cast<size_t>(sub)];
    const uint32_t changes = counters.changeCount.load(std::memory_order_relaxed);
    return counters.seenCount.exchange(changes, std::memory_order_relaxed) != changes;
}

}  // namespace vorix
