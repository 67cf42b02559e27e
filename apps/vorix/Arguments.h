#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vorix::cli {

// One option a command accepts: "--block" with a value, "--float" without one. A repeatable option
// keeps every value in order; any other given twice is a usage error.
struct OptionDefinition {
    std::string_view name;
    bool takesValue = false;
    bool repeatable = false;
};

// The words of one command, sorted into positionals and options. Any thread; read-only once made.
class ParsedArguments {
  public:
    std::vector<std::string> positionals;

    // Whether the option was given.
    bool Has(std::string_view option) const { return values_.count(std::string(option)) != 0; }
    // The value of a single-valued option, if given.
    std::optional<std::string> Value(std::string_view option) const;
    // Every value of a repeatable option, in the order given.
    std::vector<std::string> Values(std::string_view option) const;

  private:
    friend ParsedArguments ParseArguments(std::span<const std::string>,
                                          std::span<const OptionDefinition>);
    std::map<std::string, std::vector<std::string>> values_;
};

// Sorts `words` by `definitions`. Options take their value as the next word or after "="; "--" ends
// the options. Throws UsageError for an unknown option, a missing value or a repeated option. Any
// thread; pure.
ParsedArguments ParseArguments(std::span<const std::string> words,
                               std::span<const OptionDefinition> definitions);

// The checks of values given on the command line; each throws UsageError with a sentence that
// names `what` and the accepted range. Any thread; pure.
std::int64_t ParseWholeNumber(std::string_view text, std::string_view what, std::int64_t lowest,
                              std::int64_t highest);
double ParseNumber(std::string_view text, std::string_view what, double lowest, double highest);
// A comma-separated list of numbers, each within the range.
std::vector<double> ParseNumberList(std::string_view text, std::string_view what, double lowest,
                                    double highest);

// Whether `text` is a whole decimal number and nothing else. Any thread; pure.
bool IsWholeNumber(std::string_view text);

}  // namespace vorix::cli
