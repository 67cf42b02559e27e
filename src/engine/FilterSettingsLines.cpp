#include "engine/FilterSettingsLines.h"

#include <charconv>
#include <cmath>

#include "core/PluginCore.h"
#include "core/SettingsLines.h"

namespace vorix {

bool ReadSettingsLine(std::istream& in, std::string& line) {
    if (!std::getline(in, line)) return false;
    if (!line.empty() && line.back() == '\r') line.pop_back();
    return true;
}

float ParseSettingsNumber(std::string_view text) {
    text = NumberStart(text);
    if (text.empty()) return 0.0f;
    float value = 0.0f;
    const auto [end, error] =
        std::from_chars(text.data(), text.data() + text.size(), value, std::chars_format::general);
    (void)end;
    // "inf", "nan" and numbers beyond single precision would poison a filter design.
    if (error != std::errc{} || !std::isfinite(value)) return 0.0f;
    return value;
}

bool HasLineAttribute(std::string_view line, std::string_view name) {
    const std::size_t at = line.find(name);
    return at != std::string_view::npos &&
           line.find('"', at + name.size()) != std::string_view::npos;
}

std::string RequiredElementText(std::string_view line) {
    if (!Holds(line, ">")) VORIX_THROW(PluginCore::InvalidSettingsData);
    return GetLineElementText(line);
}

void RequireLineAttribute(std::string_view line, std::string_view name) {
    if (!HasLineAttribute(line, name)) VORIX_THROW(PluginCore::InvalidSettingsData);
}

}  // namespace vorix
