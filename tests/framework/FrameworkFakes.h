#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "framework/GenericControl.h"
#include "framework/MessageSubscriber.h"
#include "framework/MessagingServer.h"
#include "framework/PluginServices.h"
#include "framework/TimerManager.h"

namespace vorix::test {

using Log = std::vector<std::string>;

// The services of one test instance, on a clock that moves only when the test moves it.
class TestServices : public PluginServices {
  public:
    TestServices()
        : PluginServices(std::make_unique<TimerManager>([this] { return now; }),
                         std::make_unique<MessagingServer>()) {}

    // One beat of the editor's heartbeat at each clock reading: timers, then posted messages.
    void PumpAt(const std::vector<Ticks>& beats) {
        for (Ticks beat : beats) {
            now = beat;
            GetTimerManager().Tick();
            GetMessagingServer().DeliverPosted();
        }
    }

    Ticks now = 0;
};

// Writes what it hears into a shared log, "name=value" for a control's new value and
// "name:key:msgId" ("name:key:gone") otherwise, then runs its action.
class RecordingSubscriber : public MessageSubscriber<RecordingSubscriber> {
  public:
    // With a control, listens to the control's own class under key 0.
    RecordingSubscriber(PluginServices* services, std::string name, Log* log,
                        GenericControl* control = nullptr)
        : MessageSubscriber(services), name_(std::move(name)), log_(log) {
        if (control != nullptr) Listen(control->GetMsgClass(), 0);
    }

    void Listen(MsgClass* msgClass, std::int32_t key, bool replace = false) {
        Subscribe(msgClass, key, &RecordingSubscriber::OnMessage, replace);
    }

    void OnMessage(MsgId msgId) {
        if (msgId == kControlValueChanged) {
            log_->push_back(name_ + "=" + std::to_string(mCurParam1));
        } else {
            const std::string what = msgId == kMsgClassGone ? "gone" : std::to_string(msgId);
            log_->push_back(name_ + ":" + std::to_string(mCurKey) + ":" + what);
        }
        lastClass = mCurClass;
        lastParam1 = mCurParam1;
        lastParam2 = mCurParam2;
        if (action) action(msgId);
    }

    MsgClass* lastClass = nullptr;
    MsgParam lastParam1 = 0;
    MsgParam lastParam2 = 0;
    std::function<void(MsgId)> action;

  private:
    std::string name_;
    Log* log_;
};

}  // namespace vorix::test
