#include "vorix-host/ArgumentList.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <utility>

#include "vorix-host/HostError.h"

namespace vorix {

std::optional<std::string> ArgumentList::TakeOption(std::string_view name) {
    std::vector<std::string> values = TakeOptions(name);
    if (values.size() > 1)
        throw UsageError("The option " + std::string(name) + " may be given once.");
    if (values.empty()) return std::nullopt;
    return std::move(values.front());
}

std::vector<std::string> ArgumentList::TakeOptions(std::string_view name) {
    std::vector<std::string> values;
    for (auto word = words_.begin(); word != words_.end();) {
        if (*word != name) {
            ++word;
            continue;
        }
        if (word + 1 == words_.end())
            throw UsageError("The option " + std::string(name) + " needs a value.");
        values.push_back(*(word + 1));
        word = words_.erase(word, word + 2);
    }
    return values;
}

std::optional<std::string> ArgumentList::TakeCommand() {
    if (words_.empty() || words_.front().starts_with('-')) return std::nullopt;
    std::string command = std::move(words_.front());
    words_.erase(words_.begin());
    return command;
}

bool ArgumentList::TakeFlag(std::string_view name) {
    const auto found = std::find(words_.begin(), words_.end(), name);
    if (found == words_.end()) return false;
    words_.erase(found);
    return true;
}

std::vector<std::string> ArgumentList::TakePositionals() {
    for (const std::string& word : words_) {
        if (word.size() > 1 && word[0] == '-') throw UsageError("There is no option " + word + ".");
    }
    return std::exchange(words_, {});
}

std::int32_t ParseWholeNumber(std::string_view text, std::int32_t minimum, std::int32_t maximum,
                              std::string_view what) {
    std::int32_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || value < minimum ||
        value > maximum) {
        throw UsageError("The " + std::string(what) + " must be a whole number from " +
                         std::to_string(minimum) + " to " + std::to_string(maximum) + ".");
    }
    return value;
}

double ParseDecimal(std::string_view text, std::string_view what) {
    const std::string terminated(text);
    char* end = nullptr;
    const double value = std::strtod(terminated.c_str(), &end);
    if (terminated.empty() || end != terminated.c_str() + terminated.size() ||
        !std::isfinite(value)) {
        throw UsageError("The " + std::string(what) + " \"" + terminated + "\" is not a number.");
    }
    return value;
}

}  // namespace vorix
