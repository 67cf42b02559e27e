#include "hostlib/ControlValueRange.h"

#include <cmath>

namespace vorix {
namespace {

constexpr double kBottom = 2147483648.0;
constexpr double kSpan = 2147483647.0 + 2147483648.0;

}  // namespace

double ControlValueToFraction(std::int32_t controlValue) noexcept {
    return (static_cast<double>(controlValue) + kBottom) / kSpan;
}

std::int32_t FractionToControlValue(double fraction) noexcept {
    if (!(fraction > 0.0)) return kControlValueBottom;
    if (fraction >= 1.0) return kControlValueTop;
    const double steps = std::floor(fraction * kSpan + 0.5);
    return static_cast<std::int32_t>(static_cast<std::int64_t>(steps) - INT64_C(2147483648));
}

}  // namespace vorix
