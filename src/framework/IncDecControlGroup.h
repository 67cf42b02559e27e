#pragma once

#include <cstdint>

#include "framework/ControlContainer.h"
#include "framework/GenericControl.h"
#include "framework/MessageSubscriber.h"
#include "framework/TimerClient.h"

namespace vorix {

// Two buttons that step a control up and down: a click steps once, and a held button repeats
// after 340 ms, then every 102 ms, and after about two seconds at every heartbeat. With wrapping
// the value runs round from one end of the range to the other. The group lives and dies with its
// buttons: when the last one is destroyed, the group deletes itself. Editor thread.
class IncDecControlGroup : public ControlContainer,
                           public MessageSubscriber<IncDecControlGroup>,
                           public TimerClient<IncDecControlGroup> {
  public:
    static constexpr std::int32_t kIncrementId = 1;
    static constexpr std::int32_t kDecrementId = -1;
    // The wait before the first repeat, the fast pace for the next two seconds, then one tick.
    static constexpr Ticks kFirstRepeatTicks = 20;
    static constexpr Ticks kRepeatTicks = 6;
    static constexpr Ticks kFastAfterTicks = 120;
    static constexpr Ticks kFastRepeatTicks = 1;

    // Editor thread. Must be made with new: it deletes itself with its last button. The buttons'
    // entries are owned; `target` is not.
    IncDecControlGroup(PluginServices* services, GenericControl* incrementButton,
                       GenericControl* decrementButton, GenericControl* target);

    // Editor thread. The size of one step, 1 at first; whether the value wraps round.
    void SetStepSize(std::int32_t stepSize) { stepSize_ = stepSize; }
    void SetWraps(bool wraps) { wraps_ = wraps; }
    std::int32_t GetStepSize() const { return stepSize_; }
    bool Wraps() const { return wraps_; }

  protected:
    void OnControlGone(std::int32_t id) override;
    void OnControlValueChanged(std::int32_t id, GenericControl::Value value,
                               GenericControl* control) override;

  private:
    ~IncDecControlGroup() override = default;

    void OnButtonMessage(MsgId msgId);
    void OnRepeat();
    void Step(std::int32_t direction);

    GenericControl* incrementButton_;
    GenericControl* decrementButton_;
    GenericControl* target_;
    std::int32_t stepSize_ = 1;
    Ticks pressStartTicks_ = 0;
    bool wraps_ = false;
};

}  // namespace vorix
