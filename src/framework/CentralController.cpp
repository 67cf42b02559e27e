#include "framework/CentralController.h"

#include "framework/ScopeGuards.h"

namespace vorix {

CentralController::CentralController(PluginServices* services)
    : CentralController(services, 0, 1, 0, 0, nullptr) {}

CentralController::CentralController(PluginServices* services, Value minimum, Value maximum,
                                     Value defaultValue, std::uint32_t controlId,
                                     CentralController* controller)
    : GenericControl(services, minimum, maximum, defaultValue, controlId, controller) {}

void CentralController::SetValue(Value newValue) {
    if (newValue == value_ && !forceNext_) return;
    SetValueFrom(newValue, nullptr);
}

void CentralController::SetValueFrom(Value newValue, GenericControl* originatingControl) {
    if (announcing_) return;
    StoreValue(newValue);
    OnValueChanged();
    if (silent_) return;
    ScopedFlag announcing(announcing_);
    Announce(originatingControl != nullptr ? originatingControl->controllerSubscription_ : nullptr);
}

void CentralController::AddControl(GenericControl* control) {
    if (control == nullptr || control == this) VORIX_THROW(AppFrame::BadParameter);
    if (control->controller_ != nullptr) control->controller_->RemoveControl(control);
    MessagingServer& server = GetMessagingServer();
    control->controllerSubscription_ = server.AddSubscription(
        msgClass_, &GenericControl::DeliverFromController, control,
        static_cast<std::int32_t>(control->controlId_), &GenericControl::DetachFromController);
    control->controller_ = this;
    // The newcomer's own change would come straight back here; the flag ends it.
    ScopedFlag announcing(announcing_);
    server.SendToSubscription(msgClass_, control->controllerSubscription_, kControlValueChanged,
                              GetValue(), PointerParam(static_cast<GenericControl*>(this)));
}

void CentralController::RemoveControl(GenericControl* control) {
    if (control == nullptr || control->controller_ != this) return;
    GetMessagingServer().RemoveSubscription(msgClass_, control->controllerSubscription_);
    // The old subscription handle stays behind; nothing reads it without a controller.
    control->controller_ = nullptr;
}

void CentralController::OnValueChanged() {}

}  // namespace vorix
