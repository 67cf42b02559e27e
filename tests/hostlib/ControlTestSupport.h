#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "hostlib/CPluginControl.h"
#include "hostlib/CPluginControl_Discrete.h"
#include "hostlib/PluginControls.h"

namespace vorix::test {

// The arguments of a continuous control over [minimum, maximum], default at the minimum.
inline ContinuousControlArgs Range(double minimum, double maximum, int digits = 1) {
    return ContinuousControlArgs{.id = 0x46726571,  // "Freq"
                                 .nameSet = "Frequency\nFreq\nF",
                                 .minimum = minimum,
                                 .maximum = maximum,
                                 .defaultValue = minimum,
                                 .automatable = true,
                                 .digits = digits};
}

inline CPluginControl_LogFrequency Frequency(int digits = 2) {
    return CPluginControl_LogFrequency(Range(16.0, 20000.0, digits), ControlStepCount{1000});
}

inline CPluginControl_LinearBoostCut BoostCut() {
    return CPluginControl_LinearBoostCut(Range(-18.0, 18.0), ControlStepSize{0.05});
}

// The text a control shows for a real value in a buffer of `maxChars`.
inline std::string TextOf(const CPluginControl_Continuous& control, double real, int maxChars) {
    char buffer[64] = "unchanged";
    control.GetValueString(buffer, maxChars, control.RealToControl(real));
    return buffer;
}

// The real value a typed text gives a control.
inline double RealOf(const CPluginControl_Continuous& control, const std::string& text) {
    return control.ControlToReal(control.TextToControlValue(text));
}

}  // namespace vorix::test
