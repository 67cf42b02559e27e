#pragma once

#include "hostlib/CPluginControl_Linear.h"
#include "hostlib/CPluginControl_Log.h"
#include "hostlib/PluginControlUnits.h"

namespace vorix {

// The concrete continuous controls: one mapping branch and one unit branch each. Any thread.

class CPluginControl_LogFrequency : public CPluginControl_Log, public CPluginControl_Frequency {
  public:
    // Any thread; refuses what its mapping branch refuses.
    CPluginControl_LogFrequency(const ContinuousControlArgs& args, ControlStepCount steps)
        : CPluginControl_Continuous(args), CPluginControl_Log(args, steps) {}
};

class CPluginControl_LinearBoostCut : public CPluginControl_Linear, public CPluginControl_BoostCut {
  public:
    // Any thread; refuses what its mapping branch refuses.
    CPluginControl_LinearBoostCut(const ContinuousControlArgs& args, ControlStepSize step)
        : CPluginControl_Continuous(args), CPluginControl_Linear(args, step) {}
};

class CPluginControl_LinearLevel : public CPluginControl_Linear, public CPluginControl_Level {
  public:
    // Any thread; refuses what its mapping branch refuses.
    CPluginControl_LinearLevel(const ContinuousControlArgs& args, ControlStepSize step)
        : CPluginControl_Continuous(args), CPluginControl_Linear(args, step) {}
};

class CPluginControl_LinearTime : public CPluginControl_Linear, public CPluginControl_Time {
  public:
    // Any thread; refuses what its mapping branch refuses.
    CPluginControl_LinearTime(const ContinuousControlArgs& args, ControlStepSize step)
        : CPluginControl_Continuous(args), CPluginControl_Linear(args, step) {}
};

class CPluginControl_LogRatio : public CPluginControl_Log, public CPluginControl_Ratio {
  public:
    // Any thread; refuses what its mapping branch refuses.
    CPluginControl_LogRatio(const ContinuousControlArgs& args, ControlStepCount steps)
        : CPluginControl_Continuous(args), CPluginControl_Log(args, steps) {}
};

class CPluginControl_LogTimeS : public CPluginControl_Log, public CPluginControl_TimeS {
  public:
    // Any thread; refuses what its mapping branch refuses.
    CPluginControl_LogTimeS(const ContinuousControlArgs& args, ControlStepCount steps)
        : CPluginControl_Continuous(args), CPluginControl_Log(args, steps) {}
};

}  // namespace vorix
