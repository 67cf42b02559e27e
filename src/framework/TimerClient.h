#pragma once

#include <cstdint>
#include <map>

#include "framework/Exceptions.h"
#include "framework/PluginServicesClient.h"
#include "framework/Ticks.h"
#include "framework/TimerManager.h"

namespace vorix {

// Base of an object whose timers call member functions of its own class T, each timer under a
// key of T's choosing; while a handler runs, mCurKey names its timer. All operations are main
// thread only and must not be used from the audio thread.
template <typename T>
class TimerClient : public PluginServicesClient {
  public:
    using Handler = void (T::*)();

    // StartTimer with a key in use, or SetTimerInterval with a key that has no timer.
    class BadTimerUserId : public AppFrame::Exception {
      public:
        using Exception::Exception;
    };

    struct TimerEntry {
        std::int32_t key;
        Timer* timer;
        Handler handler;
    };

    // Main thread. `owner` is the object whose handlers the timers call; null silences them.
    TimerClient(PluginServices* services, T* owner) noexcept
        : PluginServicesClient(services), owner_(owner) {}

    // Main thread. Stops every timer, in key order.
    ~TimerClient() override {
        while (!timers_.empty())
            StopTimer(timers_.begin()->first);
    }

    TimerClient(const TimerClient&) = delete;
    TimerClient& operator=(const TimerClient&) = delete;

    // Main thread; also from a handler, and then the timer first fires at a later tick. Raises
    // BadTimerUserId for a key in use.
    void StartTimer(TimerMode mode, Ticks interval, Handler handler, std::int32_t key) {
        if (timers_.contains(key)) VORIX_THROW(BadTimerUserId);
        Timer* timer = GetTimerManager().AddTimer(&Fire, key, this, mode, interval);
        auto& entry = timers_[key];
        entry = TimerEntry{key, timer, handler};
        TimerManager::SetClientData(timer, &entry);
    }

    // Main thread; also from a handler, its own timer included. An unknown key is a no-op.
    void StopTimer(std::int32_t key) {
        const auto found = timers_.find(key);
        if (found == timers_.end()) return;
        Timer* timer = found->second.timer;
        timers_.erase(found);
        GetTimerManager().RemoveTimer(timer);
    }

    // Main thread. Restarts the timer of `key` on a new interval; raises BadTimerUserId for an
    // unknown key.
    void SetTimerInterval(std::int32_t key, Ticks interval) {
        const auto found = timers_.find(key);
        if (found == timers_.end()) VORIX_THROW(BadTimerUserId);
        GetTimerManager().SetInterval(found->second.timer, interval);
    }

    // Main thread. Whether `key` names a running timer.
    bool HasTimer(std::int32_t key) const { return timers_.contains(key); }

  protected:
    std::int32_t mCurKey = 0;

  private:
    // The elapsed ticks are dropped: a handler that wants them keeps its own start time.
    static void Fire(Timer* timer, std::int32_t key, void* client, Ticks /*elapsed*/) {
        auto* self = static_cast<TimerClient*>(client);
        if (self == nullptr || self->owner_ == nullptr) return;
        const auto* entry = static_cast<const TimerEntry*>(TimerManager::GetClientData(timer));
        self->mCurKey = key;
        if (entry != nullptr && entry->handler != nullptr) (self->owner_->*(entry->handler))();
    }

    T* owner_;
    std::map<std::int32_t, TimerEntry> timers_;
};

}  // namespace vorix
