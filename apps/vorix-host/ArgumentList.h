#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vorix {

// The words of a command line, taken option by option; what is left at the end are the
// positional arguments. Options may stand anywhere. Errors are UsageError. Main thread.
class ArgumentList {
  public:
    explicit ArgumentList(std::vector<std::string> words) : words_(std::move(words)) {}

    // "--name VALUE" once at most; none when absent.
    std::optional<std::string> TakeOption(std::string_view name);
    // Every "--name VALUE", in order.
    std::vector<std::string> TakeOptions(std::string_view name);
    // The first word, when it is not an option: a command.
    std::optional<std::string> TakeCommand();
    // "--name" without a value.
    bool TakeFlag(std::string_view name);
    // The words left, which must not look like options.
    std::vector<std::string> TakePositionals();

  private:
    std::vector<std::string> words_;
};

// A whole number of the command line within [minimum, maximum]; `what` names it in the error.
std::int32_t ParseWholeNumber(std::string_view text, std::int32_t minimum, std::int32_t maximum,
                              std::string_view what);
// A finite decimal number; `what` names it in the error.
double ParseDecimal(std::string_view text, std::string_view what);

}  // namespace vorix
