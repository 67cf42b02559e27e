#pragma once

#include <cstdint>

#include "framework/FourCC.h"

namespace vorix {

// The ids of the product's parameters, which the engine switches on. The ten filter controls,
// lettered A to J, take ids 3n (frequency), 3n + 1 (gain) and 3n + 2 (shape) for n from 0 to 9.
constexpr int32_t kFilterControlCount = 10;
constexpr int32_t kIdsPerFilterControl = 3;
constexpr int32_t kFilterControlIdCount = kFilterControlCount * kIdsPerFilterControl;

enum class FilterControlRole : int32_t { Frequency = 0, Gain = 1, Shape = 2 };

constexpr int32_t FilterControlId(int32_t control, FilterControlRole role) {
    return control * kIdsPerFilterControl + static_cast<int32_t>(role);
}

// The output trims, and a counter that exists only to make the host mark the session changed.
constexpr int32_t kLeftGainId = static_cast<int32_t>(FourCC("LGan"));
constexpr int32_t kRightGainId = static_cast<int32_t>(FourCC("RGan"));
constexpr int32_t kDirtyId = static_cast<int32_t>(FourCC("dirt"));

// The meters shown to the host, one per output channel.
constexpr int32_t kFirstOutputMeterId = static_cast<int32_t>(FourCC("out1"));
constexpr int32_t kSecondOutputMeterId = static_cast<int32_t>(FourCC("out2"));

}  // namespace vorix
