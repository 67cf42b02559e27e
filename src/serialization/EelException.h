#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace vorix::Eel {

// The serialization library's one failure type. Its text is always two lines: the failure's own
// words, then "Expression '<condition>' failed in <file>:<line>", naming the check that refused,
// so a report from the field points at the exact test that failed.
class Exception : public std::runtime_error {
  public:
    // Any thread; allocates the text. `file` may be a full path: only its last component is kept,
    // so that texts do not depend on where the product was built.
    Exception(std::string_view words, std::string_view condition, std::string_view file, int line);

    // The first line alone, for a display that shows the cause without the source place.
    // Any thread.
    const std::string& Words() const noexcept { return mWords; }

  private:
    std::string mWords;
};

}  // namespace vorix::Eel

// Raises `ExceptionClass(words, ...)` unless `condition` holds. Every guarded check of the
// serialization library goes through here; `words` is evaluated only on failure.
#define VORIX_EEL_CHECK(condition, ExceptionClass, words)                  \
    do {                                                                   \
        if (!(condition)) {                                                \
            throw ExceptionClass((words), #condition, __FILE__, __LINE__); \
        }                                                                  \
    } while (false)
