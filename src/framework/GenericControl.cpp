#include "framework/GenericControl.h"

#include "framework/CentralController.h"
#include "framework/ControlMapping.h"
#include "framework/ScopeGuards.h"

namespace vorix {

GenericControl::GenericControl(PluginServices* services, Value minimum, Value maximum,
                               Value defaultValue, std::uint32_t controlId,
                               CentralController* controller)
    : PluginServicesClient(services),
      value_(defaultValue),
      previousValue_(defaultValue),
      maximum_(maximum),
      minimum_(minimum),
      defaultValue_(defaultValue),
      controlId_(controlId) {
    msgClass_ = GetMessagingServer().CreateMsgClass(controlId);
    if (controller == nullptr) return;
    try {
        controller->AddControl(this);
    } catch (...) {
        // No destructor runs for a half-built control: take back what it holds.
        LeaveController();
        GetMessagingServer().DestroyMsgClass(msgClass_);
        throw;
    }
}

GenericControl::~GenericControl() {
    LeaveController();
    if (msgClass_ != nullptr) GetMessagingServer().DestroyMsgClass(msgClass_);
}

GenericControl::Value GenericControl::GetValue() const {
    return value_;
}

void GenericControl::SetValue(Value newValue) {
    if (newValue == value_ && !forceNext_) return;
    StoreValue(newValue);
    if (controller_ != nullptr) controller_->SetValueFrom(ToControllerValue(), this);
    if (!silent_) Announce(nullptr);
}

void GenericControl::ForceValue(Value newValue) {
    forceNext_ = true;
    SetValue(newValue);
}

void GenericControl::SetValueSilently(Value newValue) {
    ScopedFlag silent(silent_);
    SetValue(newValue);
}

void GenericControl::ResetToDefault() {
    forceNext_ = true;
    SetValue(defaultValue_);
}

void GenericControl::SetRange(Value newMinimum, Value newMaximum) {
    minimum_ = newMinimum;
    maximum_ = newMaximum;
    value_ = Clamped(value_);
    if (GetValue() != value_) SetValue(value_);
}

void GenericControl::StoreValue(Value newValue) {
    previousValue_ = value_;
    value_ = newValue;
    forceNext_ = false;
    const Value seen = GetValue();
    value_ = Clamped(value_);
    if (seen != value_) SetValue(value_);
}

void GenericControl::Announce(MsgSubscription* excluded) {
    GetMessagingServer().SendToClass(msgClass_, kControlValueChanged, value_, PointerParam(this),
                                     excluded);
}

GenericControl::Value GenericControl::Clamped(Value value) const {
    // The upper end first, as the value model has always done: with a reversed range the lower
    // end wins.
    if (value > maximum_) value = maximum_;
    if (value < minimum_) value = minimum_;
    return value;
}

GenericControl::Value GenericControl::ToControllerValue() const {
    return MapToControllerValue(value_, {minimum_, maximum_},
                                {controller_->minimum_, controller_->maximum_});
}

GenericControl::Value GenericControl::FromControllerValue() const {
    return MapFromControllerValue(controller_->GetValue(),
                                  {controller_->minimum_, controller_->maximum_},
                                  {minimum_, maximum_});
}

void GenericControl::LeaveController() {
    if (controller_ != nullptr) controller_->RemoveControl(this);
}

void GenericControl::DeliverFromController(MsgSubscription* /*subscription*/, void* subscriber,
                                           std::int32_t /*key*/, MsgClass* /*msgClass*/,
                                           MsgId msgId, MsgParam /*param1*/, MsgParam /*param2*/) {
    auto* control = static_cast<GenericControl*>(subscriber);
    if (msgId == kMsgClassGone) {
        control->controller_ = nullptr;
        control->controllerSubscription_ = nullptr;
    } else if (msgId == kControlValueChanged && control->controller_ != nullptr) {
        control->SetValue(control->FromControllerValue());
    }
}

void GenericControl::DetachFromController(MsgSubscription* subscription, void* subscriber,
                                          std::int32_t key) {
    DeliverFromController(subscription, subscriber, key, nullptr, kMsgClassGone, 0, 0);
}

}  // namespace vorix
