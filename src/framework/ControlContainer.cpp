#include "framework/ControlContainer.h"

namespace vorix {

ControlContainer::ControlContainer(PluginServices* services, std::int32_t argument)
    : MessagePublisher(services), argument_(argument) {
    Publish(kContainerChangeRef);
}

ControlContainer::~ControlContainer() {
    while (!entries_.empty()) {
        const auto [id, entry] = *entries_.begin();
        if (entry.owned) {
            // The control's class dies with it, and kMsgClassGone erases the entry; erasing here
            // as well keeps the loop finite should that message not arrive.
            delete entry.control;
            entries_.erase(id);
        } else {
            RemoveControl(id);
        }
    }
}

void ControlContainer::AddControl(GenericControl* control, std::int32_t id, bool owned) {
    if (control == nullptr) VORIX_THROW(AppFrame::BadParameter);
    if (entries_.contains(id)) VORIX_THROW(AppFrame::DuplicateEntry);
    MsgSubscription* subscription =
        GetMessagingServer().AddSubscription(control->GetMsgClass(), &Deliver, this, id, &Detach);
    entries_.emplace(id, ContainerEntry{control, subscription, owned});
}

GenericControl* ControlContainer::GetControl(std::int32_t id) const {
    const auto found = entries_.find(id);
    return found != entries_.end() ? found->second.control : nullptr;
}

void ControlContainer::RemoveControl(std::int32_t id) {
    const auto found = entries_.find(id);
    if (found == entries_.end()) return;
    const ContainerEntry entry = found->second;
    entries_.erase(found);
    GetMessagingServer().RemoveSubscription(entry.control->GetMsgClass(), entry.subscription);
}

void ControlContainer::OnControlGone(std::int32_t /*id*/) {}

void ControlContainer::OnControlValueChanged(std::int32_t /*id*/, GenericControl::Value /*value*/,
                                             GenericControl* /*control*/) {}

void ControlContainer::OnControlMessage(std::int32_t /*id*/, MsgId /*msgId*/, MsgParam /*param1*/,
                                        MsgParam /*param2*/) {}

void ControlContainer::ForgetEntry(std::int32_t id, MsgSubscription* subscription) {
    const auto found = entries_.find(id);
    if (found != entries_.end() && found->second.subscription == subscription) {
        entries_.erase(found);
    }
}

void ControlContainer::Deliver(MsgSubscription* subscription, void* subscriber, std::int32_t key,
                               MsgClass* /*msgClass*/, MsgId msgId, MsgParam param1,
                               MsgParam param2) {
    auto* self = static_cast<ControlContainer*>(subscriber);
    if (msgId == kMsgClassGone) {
        self->ForgetEntry(key, subscription);
        self->OnControlGone(key);
    } else if (msgId == kControlValueChanged) {
        self->OnControlValueChanged(key, static_cast<GenericControl::Value>(param1),
                                    ParamPointer<GenericControl>(param2));
        self->Send(kContainerChangeRef, 0, key, 0, nullptr);
    } else {
        self->OnControlMessage(key, msgId, param1, param2);
    }
}

void ControlContainer::Detach(MsgSubscription* subscription, void* subscriber, std::int32_t key) {
    // The control went while its subscription here was suspended: it is gone all the same.
    auto* self = static_cast<ControlContainer*>(subscriber);
    self->ForgetEntry(key, subscription);
    self->OnControlGone(key);
}

}  // namespace vorix
