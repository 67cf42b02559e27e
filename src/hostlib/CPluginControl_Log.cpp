#include "hostlib/CPluginControl_Log.h"

#include <algorithm>
#include <cmath>

#include "framework/Exceptions.h"

namespace vorix {
namespace {

double LogOfBound(double bound) {
    if (!(bound > 0.0)) VORIX_THROW(AppFrame::BadParameter);
    return std::log(bound);
}

}  // namespace

CPluginControl_Log::CPluginControl_Log(const ContinuousControlArgs& args, ControlStepCount steps)
    : CPluginControl_Continuous(args),
      numSteps_(std::max(steps.count, 1)),
      logMinimum_(LogOfBound(args.minimum)),
      logMaximum_(LogOfBound(args.maximum)) {}

std::int32_t CPluginControl_Log::RealToControl(double real) const {
    const double span = logMaximum_ - logMinimum_;
    if (span == 0.0) return kControlValueBottom;
    return FractionToControlValue((std::log(ClampToRange(real)) - logMinimum_) / span);
}

double CPluginControl_Log::ControlToReal(std::int32_t controlValue) const {
    // exp(log(x)) need not give x back, so the ends of the range are given as they are.
    if (controlValue == kControlValueBottom) return GetMinimum();
    if (controlValue == kControlValueTop) return GetMaximum();
    return std::exp((logMaximum_ - logMinimum_) * ControlValueToFraction(controlValue) +
                    logMinimum_);
}

}  // namespace vorix
