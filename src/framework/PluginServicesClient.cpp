#include "framework/PluginServicesClient.h"

namespace vorix {

TimerManager& PluginServicesClient::GetTimerManager() const {
    if (services_ == nullptr) VORIX_THROW(PluginServices::PluginServicesNotReady);
    return services_->GetTimerManager();
}

MessagingServer& PluginServicesClient::GetMessagingServer() const {
    if (services_ == nullptr) VORIX_THROW(PluginServices::PluginServicesNotReady);
    return services_->GetMessagingServer();
}

}  // namespace vorix
