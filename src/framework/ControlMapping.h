#pragma once

#include <cstdint>

namespace vorix {

// The range of a control's value, both ends included.
struct ControlRange {
    std::int32_t minimum;
    std::int32_t maximum;
};

// The two directions of the mapping between a following control and its controller. The ends of
// a range always land on the ends of the other, and the two rounding biases (a little up going
// to the controller, much less going back) keep a value that goes up and comes back from losing
// a step to truncation. Any thread; pure.

// A control's value in its controller's range.
std::int32_t MapToControllerValue(std::int32_t value, ControlRange control,
                                  ControlRange controller) noexcept;

// A controller's value in a following control's range.
std::int32_t MapFromControllerValue(std::int32_t controllerValue, ControlRange controller,
                                    ControlRange control) noexcept;

}  // namespace vorix
