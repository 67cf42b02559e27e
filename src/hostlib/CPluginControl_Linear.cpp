#include "hostlib/CPluginControl_Linear.h"

#include <algorithm>
#include <cmath>

#include "framework/Exceptions.h"

namespace vorix {
namespace {

std::int32_t StepsOfSize(double range, double size) {
    if (!(size > 0.0) || !std::isfinite(size)) VORIX_THROW(AppFrame::BadParameter);
    const double steps = std::floor(std::fabs(range) / size + 0.5);
    return static_cast<std::int32_t>(std::clamp(steps, 1.0, 2147483647.0));
}

}  // namespace

CPluginControl_Linear::CPluginControl_Linear(const ContinuousControlArgs& args,
                                             ControlStepSize step)
    : CPluginControl_Continuous(args),
      numSteps_(StepsOfSize(args.maximum - args.minimum, step.size)) {}

CPluginControl_Linear::CPluginControl_Linear(const ContinuousControlArgs& args,
                                             ControlStepCount steps)
    : CPluginControl_Continuous(args), numSteps_(std::max(steps.count, 1)) {}

std::int32_t CPluginControl_Linear::RealToControl(double real) const {
    const double span = GetMaximum() - GetMinimum();
    if (span == 0.0) return kControlValueBottom;
    return FractionToControlValue((ClampToRange(real) - GetMinimum()) / span);
}

double CPluginControl_Linear::ControlToReal(std::int32_t controlValue) const {
    // The formula's own rounding could miss the ends of the range; the ends are given as they are.
    if (controlValue == kControlValueBottom) return GetMinimum();
    if (controlValue == kControlValueTop) return GetMaximum();
    return (GetMaximum() - GetMinimum()) * ControlValueToFraction(controlValue) + GetMinimum();
}

}  // namespace vorix
