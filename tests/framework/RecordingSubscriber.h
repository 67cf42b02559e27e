#pragma once

#include <functional>
#include <string>
#include <vector>

#include "framework/GenericControl.h"
#include "framework/MessageSubscriber.h"

namespace vorix::test {

using Log = std::vector<std::string>;

// A subscriber that writes what it hears into a shared log: "name=value" for a control's new
// value, "name:key:gone" when a class goes, "name:key:msgId" otherwise; then runs its action.
class RecordingSubscriber : public MessageSubscriber<RecordingSubscriber> {
  public:
    RecordingSubscriber(PluginServices* services, std::string name, Log* log)
        : MessageSubscriber(services), name_(std::move(name)), log_(log) {}

    // Listens to a control's own class, under key 0.
    RecordingSubscriber(PluginServices* services, std::string name, GenericControl& control,
                        Log* log)
        : RecordingSubscriber(services, std::move(name), log) {
        Listen(control.GetMsgClass(), 0);
    }

    void Listen(MsgClass* msgClass, std::int32_t key, bool replace = false) {
        Subscribe(msgClass, key, &RecordingSubscriber::OnMessage, replace);
    }

    void OnMessage(MsgId msgId) {
        std::string entry = name_;
        if (msgId == kControlValueChanged) {
            entry.append("=").append(std::to_string(mCurParam1));
        } else {
            entry.append(":").append(std::to_string(mCurKey)).append(":");
            entry.append(msgId == kMsgClassGone ? "gone" : std::to_string(msgId));
        }
        log_->push_back(entry);
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
