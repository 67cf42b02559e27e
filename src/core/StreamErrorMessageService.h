#pragma once

#include <ostream>

#include "core/ErrorMessageService.h"

namespace vorix {

// Writes each message as one line of plain text to a stream: the texts that are present, joined
// by a blank, without the blanks that trail a sentence. The command line's form of the display.
class StreamErrorMessageService : public ErrorMessageService {
  public:
    // Main thread. `stream` is not owned and must outlive the service.
    explicit StreamErrorMessageService(std::ostream& stream) noexcept : stream_(stream) {}

    // Main thread. Writes and flushes one line; must not be called from the audio thread.
    void ShowError(std::string_view first, std::string_view second, std::string_view third,
                   std::int32_t kind) override;

  private:
    std::ostream& stream_;
};

}  // namespace vorix
