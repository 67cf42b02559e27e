#pragma once

#include "framework/PluginServices.h"

namespace vorix {

// Base of every object that needs its instance's services. It holds the locator, set once at
// construction; the pointer may be null, and then each accessor raises PluginServicesNotReady.
class PluginServicesClient {
  public:
    // Main thread. `services` is not owned and must outlive this object.
    explicit PluginServicesClient(PluginServices* services) noexcept : services_(services) {}
    virtual ~PluginServicesClient() = default;

    // Main thread; the locator, or null.
    PluginServices* GetPluginServices() const noexcept { return services_; }

    // Main thread only; raises PluginServicesNotReady without a locator or a timer manager.
    TimerManager& GetTimerManager() const;

    // Main thread only; raises PluginServicesNotReady without a locator or a message server.
    MessagingServer& GetMessagingServer() const;

  private:
    PluginServices* services_;
};

}  // namespace vorix
