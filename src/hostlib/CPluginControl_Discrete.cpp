#include "hostlib/CPluginControl_Discrete.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "framework/Exceptions.h"
#include "hostlib/ValueText.h"

namespace vorix {
namespace {

// `atol` without its undefined overflow: the leading whole number, saturated to 32 bits.
std::int64_t ReadWholeNumber(std::string_view text) {
    std::size_t pos = SkipBlanks(text, 0);
    bool negative = false;
    if (pos < text.size() && (text[pos] == '+' || text[pos] == '-')) {
        negative = text[pos] == '-';
        ++pos;
    }
    if (pos >= text.size() || text[pos] < '0' || text[pos] > '9') {
        VORIX_THROW(AppFrame::BadParameter);
    }
    std::int64_t value = 0;
    for (; pos < text.size() && text[pos] >= '0' && text[pos] <= '9'; ++pos) {
        value = std::min<std::int64_t>(value * 10 + (text[pos] - '0'), INT64_C(1) << 33);
    }
    return negative ? -value : value;
}

}  // namespace

CPluginControl_Discrete::CPluginControl_Discrete(std::int32_t id, std::string nameSet,
                                                 std::int32_t minimum, std::int32_t maximum,
                                                 std::int32_t defaultValue, bool automatable)
    : id_(id),
      name_(std::move(nameSet)),
      minimum_(minimum),
      maximum_(maximum),
      defaultValue_(minimum <= maximum ? std::clamp(defaultValue, minimum, maximum) : minimum),
      automatable_(automatable) {
    if (minimum > maximum) VORIX_THROW(AppFrame::BadParameter);
}

std::int32_t CPluginControl_Discrete::GetNumSteps() const {
    const std::int64_t steps = std::int64_t{maximum_} - minimum_ + 1;
    return static_cast<std::int32_t>(std::min<std::int64_t>(steps, INT32_MAX));
}

std::int32_t CPluginControl_Discrete::TextToControlValue(std::string_view text) const {
    return ValueToControl(ReadWholeNumber(text));
}

bool CPluginControl_Discrete::IsKeyValid(char key) const {
    return (key >= '0' && key <= '9') || key == '.' || key == '+' || key == '-' ||
           key == kKeyBackspace || key == kKeyCursorLeft || key == kKeyCursorRight;
}

void CPluginControl_Discrete::GetName(char* buffer, std::int32_t maxChars) const {
    CopyToBuffer(ChooseName(name_, maxChars), buffer, maxChars);
}

void CPluginControl_Discrete::GetValueString(char* buffer, std::int32_t maxChars,
                                             std::int32_t controlValue) const {
    const std::string digits = std::to_string(ControlToValue(controlValue));
    const bool fits = maxChars > 0 && digits.size() < static_cast<std::size_t>(maxChars);
    CopyToBuffer(fits ? std::string_view(digits) : kOverflowText, buffer, maxChars);
}

std::int32_t CPluginControl_Discrete::ValueToControl(std::int64_t value) const noexcept {
    if (maximum_ == minimum_) return kControlValueBottom;
    const std::int64_t clamped = std::clamp<std::int64_t>(value, minimum_, maximum_);
    const double steps = static_cast<double>(std::int64_t{maximum_} - minimum_);
    return FractionToControlValue(static_cast<double>(clamped - minimum_) / steps);
}

std::int32_t CPluginControl_Discrete::ControlToValue(std::int32_t controlValue) const noexcept {
    const double steps = static_cast<double>(std::int64_t{maximum_} - minimum_);
    const double step = std::floor(ControlValueToFraction(controlValue) * steps + 0.5);
    return static_cast<std::int32_t>(minimum_ + static_cast<std::int64_t>(step));
}

CPluginControl_OnOff::CPluginControl_OnOff(std::int32_t id, std::string nameSet, bool defaultOn,
                                           bool automatable)
    : CPluginControl_Discrete(id, std::move(nameSet), 0, 1, defaultOn ? 1 : 0, automatable) {}

}  // namespace vorix
