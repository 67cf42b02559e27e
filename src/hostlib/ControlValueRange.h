#pragma once

#include <cstdint>

namespace vorix {

// A control value spans the whole signed 32-bit range: the bottom stands for a control's minimum
// and the top for its maximum, whatever the control.
inline constexpr std::int32_t kControlValueBottom = INT32_MIN;
inline constexpr std::int32_t kControlValueTop = INT32_MAX;

// The position of a control value in its span, from 0 at the bottom to 1 at the top. Any thread.
double ControlValueToFraction(std::int32_t controlValue) noexcept;

// The control value nearest to a position in the span; positions outside 0 to 1 land on the
// ends, and an undefined one (NaN) on the bottom. Any thread.
std::int32_t FractionToControlValue(double fraction) noexcept;

}  // namespace vorix
