#include "host/ParameterControls.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "framework/Exceptions.h"
#include "framework/FourCC.h"
#include "host/ZORPluginControl_Discrete.h"
#include "hostlib/PluginControls.h"

namespace vorix {
namespace {

// Every parameter control's id begins with "ct"; two letters from 'a' count the index in 26s.
constexpr std::uint32_t kIdPrefix = FourCC("ctaa") & 0xFFFF0000u;
constexpr std::int32_t kLetters = 26;

// A plain continuous parameter is stepped in 512ths of its range, whatever its table step says.
constexpr double kPlainStepFraction = 0.001953125;

// Decimals a value is shown with: two for frequencies and the plain stepped types, one for the
// rest.
constexpr int kFrequencyDigits = 2;
constexpr int kSteppedDigits = 2;
constexpr int kDefaultDigits = 1;

// A real number as a whole number for the 32-bit fields of the library: truncated toward 0 and
// held inside the 32-bit range; what is not a number becomes 0.
std::int32_t TruncateToInt(double value) noexcept {
    if (std::isnan(value)) return 0;
    const double limit = std::numeric_limits<std::int32_t>::max();
    return static_cast<std::int32_t>(std::clamp(std::trunc(value), -limit - 1.0, limit));
}

// The number of steps across the range for the types stepped by count; never below one. The
// table's numbers are single precision and so is the division: a ratio of 1 to 20 in steps of
// 0.1 has 190 steps, where a double division of the same floats falls just short of it.
ControlStepCount StepCount(const ZORParameterInfo& info) {
    const float steps = (info.max - info.min) / info.step;
    return ControlStepCount{std::max(1, TruncateToInt(steps))};
}

int DigitsOf(std::int32_t type) {
    switch (type) {
        case kParamFrequency:
            return kFrequencyDigits;
        case kParamStepByCount:
        case kParamStepGiven:
            return kSteppedDigits;
        default:
            return kDefaultDigits;
    }
}

std::unique_ptr<CPluginControl> MakeContinuousControl(const ZORParameterInfo& info,
                                                      const ContinuousControlArgs& args) {
    const ControlStepSize givenStep{info.step};
    switch (info.type) {
        case kParamContinuous:
            return std::make_unique<CPluginControl_Linear>(
                args, ControlStepSize{(args.maximum - args.minimum) * kPlainStepFraction});
        case kParamLevelDb:
            return std::make_unique<CPluginControl_LinearLevel>(args, givenStep);
        case kParamBoostCutDb:
            return std::make_unique<CPluginControl_LinearBoostCut>(args, givenStep);
        case kParamFrequency:
            return std::make_unique<CPluginControl_LogFrequency>(args, StepCount(info));
        case kParamStepByCount:
            return std::make_unique<CPluginControl_Linear>(args, StepCount(info));
        case kParamStepGiven:
            return std::make_unique<CPluginControl_Linear>(args, givenStep);
        case kParamTimeLinear:
            return std::make_unique<CPluginControl_LinearTime>(args, givenStep);
        case kParamTimeLog:
            return std::make_unique<CPluginControl_LogTimeS>(args, StepCount(info));
        case kParamRatioLog:
            return std::make_unique<CPluginControl_LogRatio>(args, StepCount(info));
        default:
            VORIX_THROW(AppFrame::BadParameter);
    }
}

}  // namespace

std::int32_t ControlIdOfIndex(std::int32_t index) noexcept {
    const auto high = static_cast<std::uint32_t>('a' + index / kLetters);
    const auto low = static_cast<std::uint32_t>('a' + index % kLetters);
    return static_cast<std::int32_t>(kIdPrefix | (high << 8) | low);
}

std::int32_t ControlIdToIndex(std::int32_t id) noexcept {
    const auto word = static_cast<std::uint32_t>(id);
    const auto high = static_cast<std::int32_t>((word >> 8) & 0xFF) - 'a';
    const auto low = static_cast<std::int32_t>(word & 0xFF) - 'a';
    if ((word & 0xFFFF0000u) != kIdPrefix || high < 0 || high >= kLetters || low < 0 ||
        low >= kLetters) {
        return -1;
    }
    return high * kLetters + low;
}

std::unique_ptr<CPluginControl> MakeParameterControl(const ZORParameterInfo& info,
                                                     double startValue, std::string nameSet) {
    const std::int32_t id = ControlIdOfIndex(info.index);
    switch (info.type) {
        case kParamDiscrete:
        case kParamOnOff:
        case kParamInteger:
            return std::make_unique<ZORPluginControl_Discrete>(
                id, std::move(nameSet), TruncateToInt(info.min), TruncateToInt(info.max),
                TruncateToInt(startValue), info.automatable, info.labelsByValue);
        default:
            break;
    }
    const ContinuousControlArgs args{.id = id,
                                     .nameSet = std::move(nameSet),
                                     .minimum = info.min,
                                     .maximum = info.max,
                                     .defaultValue = startValue,
                                     .automatable = info.automatable,
                                     .digits = DigitsOf(info.type)};
    return MakeContinuousControl(info, args);
}

}  // namespace vorix
