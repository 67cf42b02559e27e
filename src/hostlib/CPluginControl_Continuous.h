#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "hostlib/CPluginControl.h"

namespace vorix {

// What every continuous control is made from. `nameSet`: names of falling length, one per line.
// `digits`: the decimals a value is shown with when there is room.
struct ContinuousControlArgs {
    std::int32_t id = 0;
    std::string nameSet;
    double minimum = 0.0;
    double maximum = 1.0;
    double defaultValue = 0.0;
    bool automatable = true;
    int digits = 1;
};

// A control over a real-valued range. The mapping branch (linear, log) supplies RealToControl and
// ControlToReal; the unit branch supplies the unit text, its keys and, where the unit needs it, its
// own text forms. The range may be given high to low. Read-only after construction; any thread.
class CPluginControl_Continuous : public virtual CPluginControl {
  public:
    // Any thread. Throws AppFrame::BadParameter for a range end that is not finite.
    explicit CPluginControl_Continuous(const ContinuousControlArgs& args);

    // CPluginControl's operations, as told there. Any thread; none changes the control.
    std::int32_t GetID() const override { return id_; }
    std::int32_t GetDefaultControlValue() const override { return RealToControl(defaultValue_); }
    std::int32_t TextToControlValue(std::string_view text) const override;
    bool IsKeyValid(char key) const override;
    void GetName(char* buffer, std::int32_t maxChars) const override;
    int IsContinuous() const override { return 1; }
    void GetValueString(char* buffer, std::int32_t maxChars,
                        std::int32_t controlValue) const override;
    bool IsAutomatable() const override { return automatable_; }

    // The control value of a real value; values outside the range land on its ends. Any thread.
    virtual std::int32_t RealToControl(double real) const = 0;
    // The real value of a control value; the ends of the span give the ends of the range exactly.
    // Any thread.
    virtual double ControlToReal(std::int32_t controlValue) const = 0;

    // The construction arguments. Any thread.
    double GetMinimum() const noexcept { return minimum_; }
    double GetMaximum() const noexcept { return maximum_; }
    double GetDefaultValue() const noexcept { return defaultValue_; }
    int GetDigits() const noexcept { return digits_; }

  protected:
    // The unit shown behind a value, and the keys its text needs beyond the common ones. Any
    // thread.
    virtual std::string_view UnitText() const { return {}; }
    virtual std::string_view UnitKeys() const { return {}; }

    // The real value a text stands for: a number, an optional prefix, and the unit ignored.
    // Throws AppFrame::BadParameter when there is no number. Any thread.
    virtual double TextToReal(std::string_view text) const;

    // The text of a real value in the plain form: FormatValue with the unit. Any thread.
    virtual std::string RealToText(double real, std::int32_t maxChars) const;

    // The real value clamped to the range, whichever way round its ends are given; NaN gives
    // the minimum. Any thread.
    double ClampToRange(double real) const noexcept;

    // The prefix rows values are shown and typed with.
    int prefixBegin_ = 0;
    int prefixEnd_ = 0;

  private:
    std::int32_t id_ = 0;
    std::string name_;
    double minimum_ = 0.0;
    double maximum_ = 1.0;
    double defaultValue_ = 0.0;
    bool automatable_ = false;
    int digits_ = 0;
};

}  // namespace vorix
