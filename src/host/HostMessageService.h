#pragma once

#include <cstdint>
#include <string_view>

#include "core/ErrorMessageService.h"
#include "host/HostMessageHook.h"

namespace vorix {

// Hands an insert's messages to the host's message entry, naming the insert they come from.
// Main thread.
class HostMessageService : public ErrorMessageService {
  public:
    // Main thread. The host's entry as the loading process exports it; null when it has none.
    static ShowPlugInMessageProc FindHostEntry() noexcept;

    // Main thread. Messages of `process` go to `entry`, which must not be null.
    HostMessageService(IProcess& process, ShowPlugInMessageProc entry) noexcept
        : process_(process), entry_(entry) {}

    // Main thread. Copies the texts to terminate them; must not be called from the audio thread.
    void ShowError(std::string_view first, std::string_view second, std::string_view third,
                   std::int32_t kind) override;

  private:
    IProcess& process_;
    ShowPlugInMessageProc entry_;
};

}  // namespace vorix
