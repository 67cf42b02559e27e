#pragma once

#include <string>
#include <string_view>

#include "hostlib/CPluginControl_Continuous.h"

namespace vorix {

// The unit branch of the control family: what a value's text says and which keys it needs beyond
// digits, signs, point and prefixes. Each meets a mapping branch in a concrete class. Any thread.

// Unit texts of the family.
inline constexpr std::string_view kUnitHertz = "Hz";
inline constexpr std::string_view kUnitDecibel = "dB";
inline constexpr std::string_view kUnitMilliseconds = "ms";
inline constexpr std::string_view kUnitSeconds = "s";

// Frequencies in hertz.
class CPluginControl_Frequency : public virtual CPluginControl_Continuous {
  protected:
    std::string_view UnitText() const override { return kUnitHertz; }
    std::string_view UnitKeys() const override { return "HhZz "; }
};

// Levels in decibels.
class CPluginControl_Level : public virtual CPluginControl_Continuous {
  protected:
    std::string_view UnitText() const override { return kUnitDecibel; }
    std::string_view UnitKeys() const override { return "dB "; }
};

// Boost and cut in decibels.
class CPluginControl_BoostCut : public virtual CPluginControl_Continuous {
  protected:
    std::string_view UnitText() const override { return kUnitDecibel; }
    std::string_view UnitKeys() const override { return "dB "; }
};

// Times in milliseconds.
class CPluginControl_Time : public virtual CPluginControl_Continuous {
  protected:
    std::string_view UnitText() const override { return kUnitMilliseconds; }
    std::string_view UnitKeys() const override { return "s "; }
};

// Times in milliseconds that reach into seconds: a second or more is shown in seconds, and a
// typed "s" behind the number means seconds.
class CPluginControl_TimeS : public virtual CPluginControl_Continuous {
  protected:
    std::string_view UnitText() const override { return kUnitMilliseconds; }
    std::string_view UnitKeys() const override { return "s "; }
    double TextToReal(std::string_view text) const override;
    std::string RealToText(double real, std::int32_t maxChars) const override;
};

// Ratios, shown as "4.0:1" above 1 and "1:4.0" below, and typed as a number or as two numbers
// with a colon or slash between them: "1:" brings in a divisor, ":1" closes a multiplier.
class CPluginControl_Ratio : public virtual CPluginControl_Continuous {
  protected:
    std::string_view UnitKeys() const override { return ":/"; }
    double TextToReal(std::string_view text) const override;
    std::string RealToText(double real, std::int32_t maxChars) const override;
};

}  // namespace vorix
