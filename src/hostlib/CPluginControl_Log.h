#pragma once

#include <cstdint>

#include "hostlib/CPluginControl_Continuous.h"
#include "hostlib/ControlSteps.h"

namespace vorix {

// The logarithmic mapping: control values spread evenly over the logarithm of the range, as
// frequencies, times and ratios are heard. Both ends must be above zero. Any thread.
class CPluginControl_Log : public virtual CPluginControl_Continuous {
  public:
    // Any thread. Throws AppFrame::BadParameter for an end of the range at or below zero.
    CPluginControl_Log(const ContinuousControlArgs& args, ControlStepCount steps);

    // The mapping, as told in CPluginControl_Continuous. Any thread.
    std::int32_t GetNumSteps() const override { return numSteps_; }
    std::int32_t RealToControl(double real) const override;
    double ControlToReal(std::int32_t controlValue) const override;

  private:
    std::int32_t numSteps_;
    double logMinimum_;
    double logMaximum_;
};

}  // namespace vorix
