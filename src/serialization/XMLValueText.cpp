#include "serialization/XMLValueText.h"

#include <locale.h>

#include <algorithm>
#include <charconv>
#include <cinttypes>
#include <climits>
#include <cstdio>
#include <cstdlib>

#include "serialization/XMLArchiveTexts.h"

namespace vorix::Serialization {
namespace {

constexpr char kHexDigits[] = "0123456789ABCDEF";

// The value as a zero-terminated copy: the loaded text is not terminated where a value ends.
std::string Terminated(std::string_view text) {
    return std::string(text);
}

bool IsSpace(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\v' || c == '\f';
}

// A "C" numeric locale, made once. The host may have set a locale whose decimal point is a
// comma; archives always use a full stop.
locale_t ClassicNumericLocale() {
    static const locale_t locale = newlocale(LC_NUMERIC_MASK, "C", static_cast<locale_t>(0));
    return locale;
}

}  // namespace

std::string FormatFixed16(double value) {
    char buffer[400];  // the largest double in fixed notation with 16 places fits
    const auto result =
        std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, 16);
    return std::string(buffer, result.ptr);
}

std::string FormatPaddedId(std::uint64_t id) {
    char buffer[32];
    const int length = std::snprintf(buffer, sizeof buffer, "%010" PRIu64, id);
    return std::string(buffer, static_cast<std::size_t>(length));
}

void AppendHex(std::string& text, const std::uint8_t* bytes, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        text += kHexDigits[bytes[i] >> 4];
        text += kHexDigits[bytes[i] & 0x0F];
    }
}

std::int32_t ParseIntBase0(std::string_view text) {
    const long long value = std::strtoll(Terminated(text).c_str(), nullptr, 0);
    return static_cast<std::int32_t>(std::clamp<long long>(value, INT32_MIN, INT32_MAX));
}

std::int64_t ParseInt64Base0(std::string_view text) {
    return std::strtoll(Terminated(text).c_str(), nullptr, 0);
}

std::uint64_t ParseUnsignedBase0(std::string_view text) {
    return std::strtoull(Terminated(text).c_str(), nullptr, 0);
}

std::int64_t ParseDecimal(std::string_view text) {
    return std::strtoll(Terminated(text).c_str(), nullptr, 10);
}

double ParseFloat(std::string_view text) {
    const std::string copy = Terminated(text);
    const locale_t classic = ClassicNumericLocale();
    if (classic == static_cast<locale_t>(0)) return std::strtod(copy.c_str(), nullptr);
    const locale_t previous = uselocale(classic);
    const double value = std::strtod(copy.c_str(), nullptr);
    uselocale(previous);
    return value;
}

bool HasSpecialCharacter(std::string_view value) {
    return value.find_first_of(XMLArchiveTexts::kSpecialCharacters) != std::string_view::npos;
}

std::size_t DecodeHex(std::string_view text, std::uint8_t* bytes, std::size_t size) {
    std::size_t filled = 0;
    bool haveHigh = false;
    int high = 0;
    for (const char c : text) {
        if (filled == size) break;
        if (IsSpace(c)) continue;
        const int digit = c < ':' ? c - '0' : c - '7';
        if (!haveHigh) {
            high = digit;
            haveHigh = true;
            continue;
        }
        bytes[filled++] = static_cast<std::uint8_t>((high * 16 + digit) & 0xFF);
        haveHigh = false;
    }
    return filled;
}

}  // namespace vorix::Serialization
