#include "hostlib/CPluginControl_Continuous.h"

#include <algorithm>
#include <cmath>

#include "framework/Exceptions.h"
#include "hostlib/UnitPrefixes.h"
#include "hostlib/ValueText.h"

namespace vorix {
namespace {

bool IsCommonValueKey(char key) {
    return (key >= '0' && key <= '9') || key == '.' || key == '-' || key == '+' ||
           key == kKeyCursorLeft || key == kKeyCursorRight || key == kKeyBackspace;
}

}  // namespace

CPluginControl_Continuous::CPluginControl_Continuous(const ContinuousControlArgs& args)
    : prefixBegin_(kPrefixRowUnity),
      prefixEnd_(kPrefixRowLast),
      id_(args.id),
      name_(args.nameSet),
      minimum_(args.minimum),
      maximum_(args.maximum),
      defaultValue_(args.defaultValue),
      automatable_(args.automatable),
      digits_(std::clamp(args.digits, 0, 15)) {
    if (!std::isfinite(minimum_) || !std::isfinite(maximum_)) VORIX_THROW(AppFrame::BadParameter);
}

std::int32_t CPluginControl_Continuous::TextToControlValue(std::string_view text) const {
    const double real = TextToReal(text);
    if (std::isnan(real)) VORIX_THROW(AppFrame::BadParameter);
    return RealToControl(real);
}

bool CPluginControl_Continuous::IsKeyValid(char key) const {
    if (key != '\0' && UnitKeys().find(key) != std::string_view::npos) return true;
    if (IsCommonValueKey(key)) return true;
    for (int row = prefixBegin_; row <= prefixEnd_; ++row) {
        const char* prefix = kUnitPrefixes[static_cast<std::size_t>(row)].text;
        if (prefix[0] != '\0' && prefix[0] == key) return true;
    }
    return false;
}

void CPluginControl_Continuous::GetName(char* buffer, std::int32_t maxChars) const {
    CopyToBuffer(ChooseName(name_, maxChars), buffer, maxChars);
}

void CPluginControl_Continuous::GetValueString(char* buffer, std::int32_t maxChars,
                                               std::int32_t controlValue) const {
    CopyToBuffer(RealToText(ControlToReal(controlValue), maxChars), buffer, maxChars);
}

double CPluginControl_Continuous::TextToReal(std::string_view text) const {
    const auto number = ReadScaledNumber(text, 0, prefixBegin_, prefixEnd_);
    if (!number) VORIX_THROW(AppFrame::BadParameter);
    return number->value;
}

std::string CPluginControl_Continuous::RealToText(double real, std::int32_t maxChars) const {
    return FormatValue(real, digits_, UnitText(), maxChars, true, prefixBegin_, prefixEnd_);
}

double CPluginControl_Continuous::ClampToRange(double real) const noexcept {
    const double low = std::min(minimum_, maximum_);
    const double high = std::max(minimum_, maximum_);
    if (std::isnan(real)) return minimum_;
    return std::clamp(real, low, high);
}

}  // namespace vorix
