#pragma once

#include <ostream>

#include "core/RecordingErrorMessageService.h"
#include "core/StreamErrorMessageService.h"

namespace vorix {

// An insert's messages for the user: kept in order, and each also printed as one line when the
// host has somewhere to print it. Main thread.
class MessageLog : public RecordingErrorMessageService {
  public:
    // Main thread. `echo` may be null; it is not owned and must outlive the log.
    explicit MessageLog(std::ostream* echo) noexcept : echo_(echo) {}

    // Main thread. Keeps the message, then prints it.
    void ShowError(std::string_view first, std::string_view second, std::string_view third,
                   std::int32_t kind) override {
        RecordingErrorMessageService::ShowError(first, second, third, kind);
        if (echo_ != nullptr)
            StreamErrorMessageService(*echo_).ShowError(first, second, third, kind);
    }

  private:
    std::ostream* echo_;
};

}  // namespace vorix
