#pragma once

#include <cstdint>

#include "hostlib/CPluginControl_Continuous.h"
#include "hostlib/ControlSteps.h"

namespace vorix {

// The linear mapping: control values spread evenly over the real range. Usable on its own as a
// plain control without unit; any thread.
class CPluginControl_Linear : public virtual CPluginControl_Continuous {
  public:
    // Any thread. Throws AppFrame::BadParameter for a step size that is not a positive finite
    // number.
    CPluginControl_Linear(const ContinuousControlArgs& args, ControlStepSize step);
    CPluginControl_Linear(const ContinuousControlArgs& args, ControlStepCount steps);

    // The mapping, as told in CPluginControl_Continuous. Any thread.
    std::int32_t GetNumSteps() const override { return numSteps_; }
    std::int32_t RealToControl(double real) const override;
    double ControlToReal(std::int32_t controlValue) const override;

  private:
    std::int32_t numSteps_;
};

}  // namespace vorix
