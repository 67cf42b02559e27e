#include "framework/ControlMapping.h"

#include <limits>

namespace vorix {
namespace {

// Truncation biases of the two directions; see the header.
constexpr double kToControllerBias = 1e-05;
constexpr double kFromControllerBias = 5e-10;

bool SameRange(ControlRange a, ControlRange b) {
    return a.minimum == b.minimum && a.maximum == b.maximum;
}

// The value's place in `from`, carried into `to`, plus the bias, truncated towards zero.
std::int32_t Rescale(std::int32_t value, ControlRange from, ControlRange to, double bias) {
    const double fromSpan = static_cast<double>(from.maximum) - from.minimum;
    if (fromSpan == 0.0) return to.minimum;
    const double toSpan = static_cast<double>(to.maximum) - to.minimum;
    const double scaled =
        (static_cast<double>(value) - from.minimum) / fromSpan * toSpan + to.minimum + bias;
    // Only a value outside its own range can leave the 32 bits; keep the conversion defined.
    constexpr double kLowest = std::numeric_limits<std::int32_t>::min();
    constexpr double kHighest = std::numeric_limits<std::int32_t>::max();
    if (scaled <= kLowest) return std::numeric_limits<std::int32_t>::min();
    if (scaled >= kHighest) return std::numeric_limits<std::int32_t>::max();
    return static_cast<std::int32_t>(scaled);
}

}  // namespace

std::int32_t MapToControllerValue(std::int32_t value, ControlRange control,
                                  ControlRange controller) noexcept {
    if (value == control.maximum) return controller.maximum;
    if (value == control.minimum) return controller.minimum;
    if (SameRange(control, controller)) return value;
    return Rescale(value, control, controller, kToControllerBias);
}

std::int32_t MapFromControllerValue(std::int32_t controllerValue, ControlRange controller,
                                    ControlRange control) noexcept {
    if (SameRange(controller, control)) return controllerValue;
    if (controllerValue == controller.maximum) return control.maximum;
    if (controllerValue == controller.minimum) return control.minimum;
    return Rescale(controllerValue, controller, control, kFromControllerBias);
}

}  // namespace vorix
