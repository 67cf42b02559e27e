#include "core/SettingsLines.h"

#include <charconv>
#include <limits>
#include <vector>

#include "core/SettingsTexts.h"

namespace vorix {
namespace {

constexpr std::string_view kAttributeDelimiters = "=,";

// The pieces of `text` between runs of delimiters; empty pieces do not exist.
std::vector<std::string_view> Tokens(std::string_view text, std::string_view delimiters) {
    std::vector<std::string_view> tokens;
    std::size_t start = text.find_first_not_of(delimiters);
    while (start != std::string_view::npos) {
        const std::size_t end = text.find_first_of(delimiters, start);
        tokens.push_back(text.substr(start, end == std::string_view::npos ? end : end - start));
        if (end == std::string_view::npos) break;
        start = text.find_first_not_of(delimiters, end);
    }
    return tokens;
}

}  // namespace

std::string_view NumberStart(std::string_view text) {
    const std::size_t start = text.find_first_not_of(" \t\n\v\f\r");
    if (start == std::string_view::npos) return {};
    text.remove_prefix(start);
    if (text.front() == '+') {
        text.remove_prefix(1);
        if (!text.empty() && text.front() == '-') return {};  // one sign only
    }
    return text;
}

std::int32_t ParseLineInteger(std::string_view text) {
    text = NumberStart(text);
    if (text.empty()) return 0;
    std::int64_t value = 0;
    const std::errc error = std::from_chars(text.data(), text.data() + text.size(), value).ec;
    if (error == std::errc::result_out_of_range) {
        return text.front() == '-' ? std::numeric_limits<std::int32_t>::min()
                                   : std::numeric_limits<std::int32_t>::max();
    }
    if (error != std::errc{}) return 0;
    if (value < std::numeric_limits<std::int32_t>::min()) {
        return std::numeric_limits<std::int32_t>::min();
    }
    if (value > std::numeric_limits<std::int32_t>::max()) {
        return std::numeric_limits<std::int32_t>::max();
    }
    return static_cast<std::int32_t>(value);
}

std::string GetLineAttribute(std::string_view line, std::string_view name) {
    const std::size_t at = line.find(name);
    if (at == std::string_view::npos) return {};
    const std::size_t opening = line.find('"', at);
    if (opening == std::string_view::npos) return {};
    const std::size_t closing = line.find('"', opening + 1);
    const std::size_t length =
        closing == std::string_view::npos ? std::string_view::npos : closing - opening - 1;
    return std::string(line.substr(opening + 1, length));
}

std::int32_t GetIntLineAttribute(std::string_view line, std::string_view name) {
    return ParseLineInteger(GetLineAttribute(line, name));
}

std::string GetLineElementText(std::string_view line) {
    const std::size_t opening = line.find('>');
    if (opening == std::string_view::npos) return {};
    const std::size_t closing = line.find('<', opening + 1);
    const std::size_t length =
        closing == std::string_view::npos ? std::string_view::npos : closing - opening - 1;
    return std::string(line.substr(opening + 1, length));
}

std::string FormatAttributeLine(const SettingsAttributes& attributes) {
    std::string line = kAttributesOpening;
    bool first = true;
    for (const auto& [key, value] : attributes) {
        if (!first) line += ',';
        line += key;
        line += '=';
        line += value;
        first = false;
    }
    line += kAttributesClosing;
    return line;
}

void ParseAttributeLine(std::string_view line, SettingsAttributes& attributes) {
    const std::string text = GetLineElementText(line);
    const std::vector<std::string_view> tokens = Tokens(text, kAttributeDelimiters);
    for (std::size_t i = 0; i + 1 < tokens.size(); i += 2) {
        attributes.insert_or_assign(std::string(tokens[i]), std::string(tokens[i + 1]));
    }
}

}  // namespace vorix
