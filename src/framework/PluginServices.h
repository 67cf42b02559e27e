#pragma once

#include <memory>

#include "framework/Exceptions.h"

namespace vorix {

class MessagingServer;
class TimerManager;

// The services of one plug-in instance: its timer manager and its message server. Several
// instances share a process and nothing of this kind is global, so every object of an instance
// reaches them through this locator. The engine's core derives from it and is the locator.
class PluginServices {
  public:
    // A service was asked for and the instance does not have it: a programming error, left for
    // the top-level handlers of the editor and the host entries.
    class PluginServicesNotReady : public AppFrame::Exception {
      public:
        using Exception::Exception;
    };

    // Main thread. Makes the timer manager on the system clock, then the message server. If memory
    // runs out a service stays absent and its accessor says so; nothing is raised here.
    PluginServices();

    // Main thread. Deletes the timer manager, then the message server; every timer client,
    // publisher and subscriber of the instance must be gone by then.
    virtual ~PluginServices();

    PluginServices(const PluginServices&) = delete;
    PluginServices& operator=(const PluginServices&) = delete;

    // Main thread only; raises PluginServicesNotReady when the instance has none.
    TimerManager& GetTimerManager() const;

    // Main thread only; raises PluginServicesNotReady when the instance has none.
    MessagingServer& GetMessagingServer() const;

    // Main thread. Raises PluginServicesNotReady when the timer manager is absent.
    void CheckTimerManager() const;

    // Main thread. Raises PluginServicesNotReady when the message server is absent.
    void CheckMessagingServer() const;

  protected:
    // Main thread. For an instance that brings its own services, such as timers on a clock of its
    // own; a null service leaves the instance not ready for it.
    PluginServices(std::unique_ptr<TimerManager> timerManager,
                   std::unique_ptr<MessagingServer> messagingServer) noexcept;

  private:
    std::unique_ptr<TimerManager> timerManager_;
    std::unique_ptr<MessagingServer> messagingServer_;
};

}  // namespace vorix
