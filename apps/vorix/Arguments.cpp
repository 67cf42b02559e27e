#include "vorix/Arguments.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <sstream>

#include "vorix/ToolErrors.h"

namespace vorix::cli {
namespace {

const OptionDefinition* FindDefinition(std::span<const OptionDefinition> definitions,
                                       std::string_view name) {
    const auto found =
        std::find_if(definitions.begin(), definitions.end(),
                     [&](const OptionDefinition& definition) { return definition.name == name; });
    return found != definitions.end() ? &*found : nullptr;
}

// Numbers in messages: as short as they read, never in exponent form for the ranges used here.
std::string NumberText(double value) {
    std::ostringstream text;
    text << value;
    return text.str();
}

}  // namespace

std::optional<std::string> ParsedArguments::Value(std::string_view option) const {
    const auto found = values_.find(std::string(option));
    if (found == values_.end() || found->second.empty()) return std::nullopt;
    return found->second.back();
}

std::vector<std::string> ParsedArguments::Values(std::string_view option) const {
    const auto found = values_.find(std::string(option));
    return found != values_.end() ? found->second : std::vector<std::string>{};
}

ParsedArguments ParseArguments(std::span<const std::string> words,
                               std::span<const OptionDefinition> definitions) {
    ParsedArguments parsed;
    bool optionsEnded = false;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::string& word = words[i];
        if (optionsEnded || word.size() < 2 || word[0] != '-' || IsWholeNumber(word)) {
            parsed.positionals.push_back(word);
            continue;
        }
        if (word == "--") {
            optionsEnded = true;
            continue;
        }
        const std::size_t equals = word.find('=');
        const std::string name = word.substr(0, equals);
        const OptionDefinition* definition = FindDefinition(definitions, name);
        if (definition == nullptr) throw UsageError("there is no option " + name);
        std::vector<std::string>& values = parsed.values_[name];
        if (!values.empty() && !definition->repeatable) {
            throw UsageError("the option " + name + " is given twice");
        }
        if (!definition->takesValue) {
            if (equals != std::string::npos) throw UsageError(name + " takes no value");
            values.emplace_back();
        } else if (equals != std::string::npos) {
            values.push_back(word.substr(equals + 1));
        } else if (i + 1 < words.size()) {
            values.push_back(words[++i]);
        } else {
            throw UsageError("the option " + name + " needs a value");
        }
    }
    return parsed;
}

bool IsWholeNumber(std::string_view text) {
    if (!text.empty() && (text[0] == '-' || text[0] == '+')) text.remove_prefix(1);
    return !text.empty() &&
           std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

std::int64_t ParseWholeNumber(std::string_view text, std::string_view what, std::int64_t lowest,
                              std::int64_t highest) {
    const std::string range =
        "a whole number from " + std::to_string(lowest) + " to " + std::to_string(highest);
    if (!IsWholeNumber(text)) {
        throw UsageError(std::string(what) + " must be " + range + ", not \"" + std::string(text) +
                         "\"");
    }
    errno = 0;
    const long long value = std::strtoll(std::string(text).c_str(), nullptr, 10);
    if (errno == ERANGE || value < lowest || value > highest) {
        throw UsageError(std::string(what) + " must be " + range + ", not " + std::string(text));
    }
    return value;
}

double ParseNumber(std::string_view text, std::string_view what, double lowest, double highest) {
    const std::string copy(text);
    char* end = nullptr;
    errno = 0;
    const double value = std::strtod(copy.c_str(), &end);
    const bool whole = !copy.empty() && end == copy.c_str() + copy.size() && errno != ERANGE;
    if (!whole || !std::isfinite(value) || value < lowest || value > highest) {
        throw UsageError(std::string(what) + " must be a number from " + NumberText(lowest) +
                         " to " + NumberText(highest) + ", not \"" + copy + "\"");
    }
    return value;
}

std::vector<double> ParseNumberList(std::string_view text, std::string_view what, double lowest,
                                    double highest) {
    std::vector<double> values;
    std::size_t start = 0;
    while (start <= text.size()) {
        const std::size_t comma = std::min(text.find(',', start), text.size());
        values.push_back(ParseNumber(text.substr(start, comma - start), what, lowest, highest));
        start = comma + 1;
    }
    return values;
}

}  // namespace vorix::cli
