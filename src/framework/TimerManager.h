#pragma once

#include <cstdint>

#include "framework/Exceptions.h"
#include "framework/Ticks.h"

namespace vorix {

// Handle of a timer record; only the manager looks inside.
struct Timer;

enum class TimerMode : std::int32_t {
    kRepeating = 0,
    kOneShot = 1,  // fires once, then idles until SetInterval re-arms it
};

// Fires one timer: the timer, its key, the client object given to AddTimer, and the ticks since
// the timer started.
using TimerCallback = void (*)(Timer* timer, std::int32_t key, void* client, Ticks elapsed);

// One instance's timers. Nothing here runs by itself: the editor's heartbeat calls Tick, and
// every timer is measured against the clock read at that moment, so the period of a timer is its
// interval rounded up to the heartbeat. Main thread only; nothing here may be touched from the
// audio thread.
class TimerManager {
  public:
    // RemoveTimer of a timer that is not this manager's.
    class BadTimer : public AppFrame::Exception {
      public:
        using Exception::Exception;
    };

    // Main thread. Timers on the system's uptime (GetTicks).
    TimerManager();

    // Main thread. Timers on another clock: an offline tool's or a test's.
    explicit TimerManager(TickSource clock);

    // Main thread. Frees every timer left; their clients must be gone.
    ~TimerManager();

    TimerManager(const TimerManager&) = delete;
    TimerManager& operator=(const TimerManager&) = delete;

    // Main thread; also from a callback, and then the new timer waits for the next tick. The
    // first firing comes one interval from now. Null when memory is short; a null callback
    // raises AppFrame::BadParameter.
    Timer* AddTimer(TimerCallback callback, std::int32_t key, void* client, TimerMode mode,
                    Ticks interval);

    // Main thread; also from a callback, and then the record goes at the end of the tick. A null
    // timer is a no-op; outside a tick, a timer that is not listed raises BadTimer.
    void RemoveTimer(Timer* timer);

    // Main thread. Restarts the timer on the new interval: its clock starts now, and a one-shot
    // that has fired is armed again. Null is a no-op.
    void SetInterval(Timer* timer, Ticks interval);

    // Main thread. The interval in ticks; 0 for null.
    Ticks GetInterval(const Timer* timer) const;

    // Main thread. A suspended timer keeps its place and its clock; resumed late, it fires at the
    // next tick. Null is a no-op.
    void SetSuspended(Timer* timer, bool suspended);
    bool IsSuspended(const Timer* timer) const;

    // Main thread. The word a client attaches to its timer.
    static void* GetClientData(const Timer* timer);
    static void SetClientData(Timer* timer, void* clientData);

    // Main thread, from the heartbeat only. Fires every due timer once; a callback's exception is
    // swallowed. A nested call from a callback does nothing.
    void Tick();

    // Main thread. The manager's clock, in ticks.
    Ticks Now() const;

    // Main thread. The number of timers, those marked for removal in a tick included.
    std::int32_t GetTimerCount() const { return count_; }

  private:
    void Fire(Timer& timer, Ticks now);
    void FreeMarkedTimers();

    TickSource clock_;
    Timer* head_ = nullptr;
    std::int32_t count_ = 0;
    bool removalPending_ = false;
    bool inTick_ = false;
};

}  // namespace vorix
