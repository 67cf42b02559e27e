#include "hostlib/PluginControlUnits.h"

#include <cmath>

#include "framework/Exceptions.h"
#include "hostlib/ValueText.h"

namespace vorix {
namespace {

constexpr double kMillisecondsPerSecond = 1000.0;
constexpr std::string_view kRatioToOne = ":1";
constexpr std::string_view kOneToRatio = "1:";

bool IsRatioSeparator(char c) {
    return c == ':' || c == '/';
}

}  // namespace

double CPluginControl_TimeS::TextToReal(std::string_view text) const {
    const auto number = ReadScaledNumber(text, 0, prefixBegin_, prefixEnd_);
    if (!number) VORIX_THROW(AppFrame::BadParameter);
    const std::size_t unit = SkipBlanks(text, number->end);
    const bool seconds = text.substr(unit, kUnitSeconds.size()) == kUnitSeconds;
    return seconds ? number->value * kMillisecondsPerSecond : number->value;
}

std::string CPluginControl_TimeS::RealToText(double real, std::int32_t maxChars) const {
    if (std::fabs(real) >= kMillisecondsPerSecond) {
        return FormatValue(real / kMillisecondsPerSecond, GetDigits(), kUnitSeconds, maxChars, true,
                           prefixBegin_, prefixEnd_);
    }
    return FormatValue(real, GetDigits(), kUnitMilliseconds, maxChars, true, prefixBegin_,
                       prefixEnd_);
}

double CPluginControl_Ratio::TextToReal(std::string_view text) const {
    const auto first = ReadScaledNumber(text, 0, prefixBegin_, prefixEnd_);
    const std::size_t separator = SkipBlanks(text, first ? first->end : 0);
    const bool hasSeparator = separator < text.size() && IsRatioSeparator(text[separator]);
    if (!hasSeparator) {
        if (!first) VORIX_THROW(AppFrame::BadParameter);
        return first->value;
    }
    const auto second = ReadScaledNumber(text, separator + 1, prefixBegin_, prefixEnd_);
    if (!first && !second) VORIX_THROW(AppFrame::BadParameter);
    // A side left out is 1: "4:" is four to one, ":4" one to four.
    const double dividend = first ? first->value : 1.0;
    const double divisor = second ? second->value : 1.0;
    return dividend / divisor;
}

std::string CPluginControl_Ratio::RealToText(double real, std::int32_t maxChars) const {
    const std::int32_t room = maxChars - static_cast<std::int32_t>(kRatioToOne.size());
    std::string text;
    if (real >= 1.0 || real <= 0.0) {
        text = FormatValue(real, GetDigits(), {}, room, false, prefixBegin_, prefixEnd_);
        text.append(kRatioToOne);
    } else {
        text = std::string(kOneToRatio) +
               FormatValue(1.0 / real, GetDigits(), {}, room, false, prefixBegin_, prefixEnd_);
    }
    if (maxChars <= 0) return {};
    if (text.size() >= static_cast<std::size_t>(maxChars)) text.resize(maxChars - 1);
    return text;
}

}  // namespace vorix
