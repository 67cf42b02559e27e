#pragma once

#include <string>
#include <vector>

#include "core/ErrorMessageService.h"

namespace vorix {

// One message as the display received it.
struct RecordedError {
    std::string first;
    std::string second;
    std::string third;
    std::int32_t kind = 0;

    friend bool operator==(const RecordedError&, const RecordedError&) = default;
};

// Keeps every message in order, for the reference host's report and for tests, which check that
// a failure shows exactly one message with exactly the expected texts.
class RecordingErrorMessageService : public ErrorMessageService {
  public:
    // Main thread; allocates, so not for the audio thread.
    void ShowError(std::string_view first, std::string_view second, std::string_view third,
                   std::int32_t kind) override {
        messages_.push_back(
            RecordedError{std::string(first), std::string(second), std::string(third), kind});
    }

    // Main thread. The messages so far, oldest first.
    const std::vector<RecordedError>& Messages() const noexcept { return messages_; }

    // Main thread. Forgets the messages so far.
    void Clear() noexcept { messages_.clear(); }

  private:
    std::vector<RecordedError> messages_;
};

}  // namespace vorix
