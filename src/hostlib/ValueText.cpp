#include "hostlib/ValueText.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <system_error>

#include "hostlib/UnitPrefixes.h"

namespace vorix {
namespace {

bool FitsIn(std::size_t length, std::int32_t maxChars) {
    return maxChars > 0 && length < static_cast<std::size_t>(maxChars);
}

bool IsValidRowRange(int begin, int end) {
    return begin >= 0 && begin <= end && end < static_cast<int>(kUnitPrefixes.size());
}

// The row whose prefix the value is shown with: the largest factor in the range not above it.
const UnitPrefix& ChoosePrefix(double real, int prefixBegin, int prefixEnd) {
    static constexpr UnitPrefix kNone{"", 1.0};
    if (!IsValidRowRange(prefixBegin, prefixEnd)) return kNone;
    const UnitPrefix* chosen = &kUnitPrefixes[static_cast<std::size_t>(prefixBegin)];
    if (real == 0.0) return *chosen;
    const double magnitude = std::fabs(real);
    for (int row = prefixBegin; row <= prefixEnd; ++row) {
        const UnitPrefix& candidate = kUnitPrefixes[static_cast<std::size_t>(row)];
        if (!(magnitude >= candidate.factor)) break;
        chosen = &candidate;
    }
    return *chosen;
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

}  // namespace

std::string FixedText(double value, int decimals) {
    if (!std::isfinite(value)) return std::isnan(value) ? "nan" : (value < 0 ? "-inf" : "inf");
    // A double in fixed notation has at most 309 integer digits.
    char buffer[400];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value,
                                      std::chars_format::fixed, std::clamp(decimals, 0, 60));
    if (result.ec != std::errc{}) return "nan";
    return std::string(buffer, result.ptr);
}

std::string FormatValue(double real, int digits, std::string_view unit, std::int32_t maxChars,
                        bool showUnit, int prefixBegin, int prefixEnd) {
    const UnitPrefix& prefix = ChoosePrefix(real, prefixBegin, prefixEnd);
    const std::size_t prefixLength = std::strlen(prefix.text);
    const double scaled = real / prefix.factor;

    std::string text;
    for (int precision = std::max(digits, 0);; --precision) {
        text = FixedText(scaled, precision);
        if (FitsIn(text.size() + prefixLength, maxChars) || precision == 0) break;
    }
    // With no unit there is nothing for the blank to separate.
    if (showUnit && !unit.empty() &&
        FitsIn(text.size() + 1 + prefixLength + unit.size(), maxChars)) {
        text.append(" ").append(prefix.text).append(unit);
    } else {
        text.append(prefix.text);
    }
    if (maxChars <= 0) return {};
    if (text.size() >= static_cast<std::size_t>(maxChars)) text.resize(maxChars - 1);
    return text;
}

void CopyToBuffer(std::string_view text, char* buffer, std::int32_t maxChars) noexcept {
    if (buffer == nullptr || maxChars <= 0) return;
    const std::size_t length = std::min(text.size(), static_cast<std::size_t>(maxChars - 1));
    std::memcpy(buffer, text.data(), length);
    buffer[length] = '\0';
}

std::size_t SkipBlanks(std::string_view text, std::size_t pos) noexcept {
    while (pos < text.size() && (text[pos] == ' ' || text[pos] == '\t'))
        ++pos;
    return pos;
}

std::optional<ReadNumberResult> ReadNumber(std::string_view text, std::size_t pos) {
    pos = SkipBlanks(text, pos);
    bool negative = false;
    if (pos < text.size() && (text[pos] == '+' || text[pos] == '-')) {
        negative = text[pos] == '-';
        ++pos;
    }
    const std::size_t start = pos;
    std::size_t digits = 0;
    while (pos < text.size() && IsDigit(text[pos]))
        ++pos, ++digits;
    if (pos < text.size() && text[pos] == '.') {
        ++pos;
        while (pos < text.size() && IsDigit(text[pos]))
            ++pos, ++digits;
    }
    if (digits == 0) return std::nullopt;

    double value = 0.0;
    const auto result =
        std::from_chars(text.data() + start, text.data() + pos, value, std::chars_format::fixed);
    // Only a value beyond the range of a double fails here: it reads as the largest one.
    if (result.ec == std::errc::result_out_of_range) value = HUGE_VAL;
    return ReadNumberResult{negative ? -value : value, pos};
}

std::optional<ReadNumberResult> ReadScaledNumber(std::string_view text, std::size_t pos,
                                                 int prefixBegin, int prefixEnd) {
    auto number = ReadNumber(text, pos);
    if (!number || !IsValidRowRange(prefixBegin, prefixEnd)) return number;
    const std::size_t at = SkipBlanks(text, number->end);
    if (at >= text.size()) return number;
    for (int row = prefixBegin; row <= prefixEnd; ++row) {
        const UnitPrefix& prefix = kUnitPrefixes[static_cast<std::size_t>(row)];
        if (prefix.text[0] != '\0' && prefix.text[0] == text[at]) {
            return ReadNumberResult{number->value * prefix.factor, at + 1};
        }
    }
    return number;
}

}  // namespace vorix
