#include "framework/IncDecControlGroup.h"

#include <algorithm>
#include <cstdint>

namespace vorix {

IncDecControlGroup::IncDecControlGroup(PluginServices* services, GenericControl* incrementButton,
                                       GenericControl* decrementButton, GenericControl* target)
    : ControlContainer(services, 0),
      MessageSubscriber<IncDecControlGroup>(services),
      TimerClient<IncDecControlGroup>(services, this),
      incrementButton_(incrementButton),
      decrementButton_(decrementButton),
      target_(target) {
    AddControl(incrementButton, kIncrementId, true);
    AddControl(decrementButton, kDecrementId, true);
    // A second ear on each button, for its presses and releases.
    Subscribe(incrementButton->GetMsgClass(), kIncrementId, &IncDecControlGroup::OnButtonMessage,
              true);
    Subscribe(decrementButton->GetMsgClass(), kDecrementId, &IncDecControlGroup::OnButtonMessage,
              true);
}

void IncDecControlGroup::OnButtonMessage(MsgId msgId) {
    const std::int32_t key = MessageSubscriber<IncDecControlGroup>::mCurKey;
    if (msgId == kControlPressed) {
        pressStartTicks_ = TimerClient<IncDecControlGroup>::GetTimerManager().Now();
        StopTimer(key);
        StartTimer(TimerMode::kRepeating, kFirstRepeatTicks, &IncDecControlGroup::OnRepeat, key);
    } else if (msgId == kControlReleased) {
        StopTimer(key);
    }
}

void IncDecControlGroup::OnRepeat() {
    const std::int32_t key = TimerClient<IncDecControlGroup>::mCurKey;
    const Ticks held = static_cast<Ticks>(
        static_cast<std::uint32_t>(TimerClient<IncDecControlGroup>::GetTimerManager().Now()) -
        static_cast<std::uint32_t>(pressStartTicks_));
    SetTimerInterval(key, held < kFastAfterTicks ? kRepeatTicks : kFastRepeatTicks);
    Step(key);
}

void IncDecControlGroup::OnControlValueChanged(std::int32_t id, GenericControl::Value /*value*/,
                                               GenericControl* control) {
    // A click steps at once, through the button's value; the timer takes over while it is held.
    if (control != nullptr && control->GetValue() == 1) Step(id);
}

void IncDecControlGroup::Step(std::int32_t direction) {
    if (target_ == nullptr) return;
    std::int64_t next = std::int64_t{target_->GetValue()} + std::int64_t{stepSize_} * direction;
    if (wraps_) {
        if (next > target_->GetMaximum()) next = target_->GetMinimum();
        if (next < target_->GetMinimum()) next = target_->GetMaximum();
    }
    next = std::clamp<std::int64_t>(next, INT32_MIN, INT32_MAX);
    target_->SetValue(static_cast<GenericControl::Value>(next));
}

void IncDecControlGroup::OnControlGone(std::int32_t id) {
    if (id == kIncrementId) incrementButton_ = nullptr;
    if (id == kDecrementId) decrementButton_ = nullptr;
    // The group has no other owner: it goes with its last button.
    if (GetEntries().empty()) delete this;
}

}  // namespace vorix
