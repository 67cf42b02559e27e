#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "ControlTestSupport.h"
#include "framework/Exceptions.h"

namespace vorix {
namespace {

using test::Range;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

TEST(ContinuousMapping, EndsOfTheSpanGiveTheEndsOfTheRangeExactly) {
    // Bounds whose difference is not exact in binary, and a log range whose exp(log(x)) drifts.
    const CPluginControl_Linear linear(Range(0.1, 0.7), ControlStepCount{100});
    const CPluginControl_LogTimeS log(Range(0.3, 7000.0), ControlStepCount{100});
    for (const CPluginControl_Continuous* control :
         {static_cast<const CPluginControl_Continuous*>(&linear),
          static_cast<const CPluginControl_Continuous*>(&log)}) {
        EXPECT_EQ(control->ControlToReal(kControlValueBottom), control->GetMinimum());
        EXPECT_EQ(control->ControlToReal(kControlValueTop), control->GetMaximum());
        EXPECT_EQ(control->RealToControl(control->GetMinimum()), kControlValueBottom);
        EXPECT_EQ(control->RealToControl(control->GetMaximum()), kControlValueTop);
    }
}

TEST(ContinuousMapping, LinearMiddleFollowsTheFormula) {
    const CPluginControl_Linear control(Range(-18.0, 18.0), ControlStepCount{10});
    EXPECT_DOUBLE_EQ(control.ControlToReal(0), 36.0 * (2147483648.0 / 4294967295.0) - 18.0);
    // Zero dB sits half a step below the middle of the span, and rounds to it.
    EXPECT_EQ(control.RealToControl(0.0), 0);
    EXPECT_EQ(control.RealToControl(9.0), FractionToControlValue(0.75));
}

TEST(ContinuousMapping, LogMiddleIsTheGeometricMean) {
    const auto control = test::Frequency();
    const double middle = std::sqrt(16.0 * 20000.0);
    EXPECT_NEAR(control.ControlToReal(FractionToControlValue(0.5)), middle, 1e-6);
    EXPECT_NEAR(control.RealToControl(middle), FractionToControlValue(0.5), 1.0);
}

TEST(ContinuousMapping, RealsOutsideTheRangeLandOnItsEnds) {
    const auto low = test::Frequency();
    const CPluginControl_LinearLevel highToLow(Range(12.0, -60.0), ControlStepSize{0.5});
    EXPECT_EQ(low.RealToControl(1.0), kControlValueBottom);
    EXPECT_EQ(low.RealToControl(-5.0), kControlValueBottom);  // below zero on a log scale
    EXPECT_EQ(low.RealToControl(1e9), kControlValueTop);
    EXPECT_EQ(low.RealToControl(INFINITY), kControlValueTop);
    EXPECT_EQ(highToLow.RealToControl(100.0), kControlValueBottom);
    EXPECT_EQ(highToLow.RealToControl(-100.0), kControlValueTop);
    EXPECT_EQ(highToLow.ControlToReal(kControlValueTop), -60.0);
    EXPECT_EQ(low.RealToControl(kNaN), kControlValueBottom);
}

TEST(ContinuousMapping, RoundTripOfAControlValueKeepsIt) {
    const CPluginControl_Linear linear(Range(-24.0, 24.0), ControlStepCount{96});
    const auto log = test::Frequency();
    std::mt19937 random(7);
    std::uniform_int_distribution<std::int32_t> any(kControlValueBottom, kControlValueTop);
    for (int i = 0; i < 2000; ++i) {
        const std::int32_t value = any(random);
        ASSERT_EQ(linear.RealToControl(linear.ControlToReal(value)), value);
        ASSERT_NEAR(log.RealToControl(log.ControlToReal(value)), value, 1.0);
    }
}

TEST(ContinuousMapping, HighToLowAndEmptyRanges) {
    const CPluginControl_LogTimeS falling(Range(1000.0, 10.0), ControlStepCount{10});
    EXPECT_EQ(falling.ControlToReal(kControlValueBottom), 1000.0);
    EXPECT_NEAR(falling.ControlToReal(FractionToControlValue(0.5)), 100.0, 1e-6);
    EXPECT_EQ(falling.RealToControl(10.0), kControlValueTop);
    EXPECT_LT(falling.RealToControl(500.0), falling.RealToControl(50.0));
    const CPluginControl_Linear empty(Range(3.0, 3.0), ControlStepCount{1});
    EXPECT_EQ(empty.RealToControl(3.0), kControlValueBottom);
    EXPECT_EQ(empty.ControlToReal(12345), 3.0);
}

TEST(ContinuousMapping, StepsComeFromTheSizeOrTheCount) {
    EXPECT_EQ(CPluginControl_Linear(Range(0.0, 1.0), ControlStepSize{1.0 / 512}).GetNumSteps(),
              512);
    EXPECT_EQ(
        CPluginControl_LinearBoostCut(Range(18.0, -18.0), ControlStepSize{0.05}).GetNumSteps(),
        720);
    EXPECT_EQ(test::Frequency().GetNumSteps(), 1000);
    EXPECT_EQ(CPluginControl_Linear(Range(0.0, 1.0), ControlStepCount{0}).GetNumSteps(), 1);
}

TEST(ContinuousMapping, ImpossibleRangesAndStepsAreRefused) {
    EXPECT_THROW(CPluginControl_LogFrequency(Range(0.0, 100.0), ControlStepCount{10}),
                 AppFrame::BadParameter);
    EXPECT_THROW(CPluginControl_LogRatio(Range(4.0, -1.0), ControlStepCount{10}),
                 AppFrame::BadParameter);
    EXPECT_THROW(CPluginControl_Linear(Range(0.0, INFINITY), ControlStepCount{10}),
                 AppFrame::BadParameter);
    EXPECT_THROW(CPluginControl_LinearTime(Range(0.0, 10.0), ControlStepSize{0.0}),
                 AppFrame::BadParameter);
}

TEST(ContinuousMapping, DefaultAndStartingValue) {
    auto args = Range(-18.0, 18.0);
    args.defaultValue = 18.0;
    const CPluginControl_LinearBoostCut control(args, ControlStepSize{0.05});
    EXPECT_EQ(control.GetDefaultControlValue(), kControlValueTop);
    EXPECT_EQ(control.GetControlValue(), kControlValueBottom);  // until the process sets it
    EXPECT_EQ(control.IsContinuous(), 1);
}

TEST(DiscreteMapping, StepsSpreadEvenlyOverTheWholeSpan) {
    const CPluginControl_Discrete control(1, "Mode", -1, 2, 0, true);
    EXPECT_EQ(control.ValueToControl(-1), kControlValueBottom);
    EXPECT_EQ(control.ValueToControl(2), kControlValueTop);
    EXPECT_EQ(control.ValueToControl(0), FractionToControlValue(1.0 / 3.0));
    for (std::int32_t v = -1; v <= 2; ++v)
        EXPECT_EQ(control.ControlToValue(control.ValueToControl(v)), v);
    // Out-of-range values are clamped, and a control value between steps rounds to the nearest.
    EXPECT_EQ(control.ValueToControl(99), kControlValueTop);
    EXPECT_EQ(control.ValueToControl(-99), kControlValueBottom);
    EXPECT_EQ(control.ControlToValue(FractionToControlValue(0.49)), 0);
    EXPECT_EQ(control.ControlToValue(FractionToControlValue(0.51)), 1);
    EXPECT_EQ(control.GetNumSteps(), 4);
    EXPECT_EQ(control.IsContinuous(), 0);
}

TEST(DiscreteMapping, WidestAndSingleValueRanges) {
    const CPluginControl_Discrete widest(1, "W", INT32_MIN, INT32_MAX, 0, true);
    EXPECT_EQ(widest.ControlToValue(12345), 12345);
    EXPECT_EQ(widest.ValueToControl(INT32_MIN), kControlValueBottom);
    EXPECT_EQ(widest.GetNumSteps(), INT32_MAX);
    const CPluginControl_Discrete single(1, "S", 5, 5, 5, true);
    EXPECT_EQ(single.ControlToValue(kControlValueTop), 5);
    EXPECT_EQ(single.GetNumSteps(), 1);
    EXPECT_THROW(CPluginControl_Discrete(1, "R", 3, 2, 2, true), AppFrame::BadParameter);
}

TEST(DiscreteMapping, OnOffUsesBothEnds) {
    const CPluginControl_OnOff bypass(0x62797061, "Master Bypass", false, false);
    EXPECT_EQ(bypass.GetDefaultControlValue(), kControlValueBottom);
    EXPECT_EQ(bypass.ValueToControl(1), kControlValueTop);
    EXPECT_EQ(bypass.GetNumSteps(), 2);
    EXPECT_FALSE(bypass.IsAutomatable());
}

}  // namespace
}  // namespace vorix
