#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "hostlib/CPluginControl.h"

namespace vorix {

// A control of whole steps from `minimum` to `maximum`, spread evenly over the whole span of
// control values. Read-only after construction; any thread.
class CPluginControl_Discrete : public virtual CPluginControl {
  public:
    // What a value shows when its digits do not fit the caller's buffer.
    static constexpr std::string_view kOverflowText = "#";

    // Any thread. Throws AppFrame::BadParameter when `minimum` is above `maximum`; the default is
    // clamped into the range.
    CPluginControl_Discrete(std::int32_t id, std::string nameSet, std::int32_t minimum,
                            std::int32_t maximum, std::int32_t defaultValue, bool automatable);

    // CPluginControl's operations, as told there. Any thread; none changes the control.
    std::int32_t GetID() const override { return id_; }
    std::int32_t GetDefaultControlValue() const override { return ValueToControl(defaultValue_); }
    std::int32_t GetNumSteps() const override;
    // The leading whole number of the text, as `atol` reads it, clamped to the range; throws
    // AppFrame::BadParameter when the text holds no number.
    std::int32_t TextToControlValue(std::string_view text) const override;
    bool IsKeyValid(char key) const override;
    void GetName(char* buffer, std::int32_t maxChars) const override;
    int IsContinuous() const override { return 0; }
    void GetValueString(char* buffer, std::int32_t maxChars,
                        std::int32_t controlValue) const override;
    bool IsAutomatable() const override { return automatable_; }

    // The control value of a step, clamped into the range. Any thread.
    std::int32_t ValueToControl(std::int64_t value) const noexcept;
    // The step nearest to a control value. Any thread.
    std::int32_t ControlToValue(std::int32_t controlValue) const noexcept;

    // The construction arguments. Any thread.
    std::int32_t GetMinimum() const noexcept { return minimum_; }
    std::int32_t GetMaximum() const noexcept { return maximum_; }
    std::int32_t GetDefaultValue() const noexcept { return defaultValue_; }

  private:
    std::int32_t id_;
    std::string name_;
    std::int32_t minimum_;
    std::int32_t maximum_;
    std::int32_t defaultValue_;
    bool automatable_;
};

// A switch: the discrete control of the range 0 to 1.
class CPluginControl_OnOff : public CPluginControl_Discrete {
  public:
    // Any thread.
    CPluginControl_OnOff(std::int32_t id, std::string nameSet, bool defaultOn, bool automatable);
};

}  // namespace vorix
