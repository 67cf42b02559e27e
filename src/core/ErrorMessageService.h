#pragma once

#include <cstdint>
#include <string_view>

namespace vorix {

// Where an instance's messages for the user go while no editor is open to show them: the command
// line prints them, the LV2 plug-in hands them to the host's log, the reference host and the tests
// keep them. Texts come as views so that a message can still be told when memory is short; an
// implementation copies what it keeps. An empty text means that the message has no such line.
class ErrorMessageService {
  public:
    virtual ~ErrorMessageService() = default;

    // Main thread. Shows one message once; may throw, the caller swallows it. Must not re-enter
    // the instance that reports.
    virtual void ShowError(std::string_view first, std::string_view second, std::string_view third,
                           std::int32_t kind) = 0;
};

// The process-wide service used by an instance whose platform names none: the one installed by
// SetDefaultErrorMessageService, or else a writer to the standard error stream. Any thread may
// ask; the service itself is used on the main thread.
ErrorMessageService& DefaultErrorMessageService() noexcept;

// Main thread. Installs the process-wide service; null brings back the standard error writer.
// The service is not owned and must outlive its installation.
void SetDefaultErrorMessageService(ErrorMessageService* service) noexcept;

}  // namespace vorix
