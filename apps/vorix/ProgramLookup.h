#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vorix {
class ZORPluginMetaClass;
}

namespace vorix::cli {

// The factory programs as the user names them on the command line: by number, by full name, or by
// a prefix of the name that fits one program only, letter case aside.
class ProgramCatalog {
  public:
    // Main thread. The names of the product's factory document, in program order.
    explicit ProgramCatalog(const ZORPluginMetaClass& metaClass);

    // Any thread. The names by program number.
    const std::vector<std::string>& Names() const noexcept { return names_; }

    // Main thread. The program number that `text` names. Throws UsageError for a number outside
    // the list, for a name that fits none (the sentence lists the names that come close) and for
    // a prefix that fits several (the sentence lists them).
    std::int32_t Resolve(std::string_view text) const;

    // Any thread. The sample rate that a program's fixed coefficients were made for; none for a
    // program whose filters follow the rate.
    static std::optional<float> MadeForRate(std::string_view programName);

  private:
    std::int32_t ResolveName(std::string_view text) const;
    std::vector<std::string> NearNames(std::string_view text) const;

    std::vector<std::string> names_;
};

}  // namespace vorix::cli
