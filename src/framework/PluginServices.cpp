#include "framework/PluginServices.h"

#include <new>

#include "framework/MessagingServer.h"
#include "framework/TimerManager.h"

namespace vorix {

PluginServices::PluginServices()
    : timerManager_(new (std::nothrow) TimerManager()),
      messagingServer_(new (std::nothrow) MessagingServer()) {}

PluginServices::PluginServices(std::unique_ptr<TimerManager> timerManager,
                               std::unique_ptr<MessagingServer> messagingServer) noexcept
    : timerManager_(std::move(timerManager)), messagingServer_(std::move(messagingServer)) {}

PluginServices::~PluginServices() {
    // Timers first: nothing can fire and post while the server is being torn down.
    timerManager_.reset();
    messagingServer_.reset();
}

TimerManager& PluginServices::GetTimerManager() const {
    CheckTimerManager();
    return *timerManager_;
}

MessagingServer& PluginServices::GetMessagingServer() const {
    CheckMessagingServer();
    return *messagingServer_;
}

void PluginServices::CheckTimerManager() const {
    if (timerManager_ == nullptr) VORIX_THROW(PluginServicesNotReady);
}

void PluginServices::CheckMessagingServer() const {
    if (messagingServer_ == nullptr) VORIX_THROW(PluginServicesNotReady);
}

}  // namespace vorix
