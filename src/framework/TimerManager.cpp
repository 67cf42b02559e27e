#include "framework/TimerManager.h"

#include <new>
#include <utility>

#include "framework/ScopeGuards.h"

namespace vorix {

struct Timer {
    static constexpr std::uint32_t kMarkedForRemoval = 1;

    Timer* next = nullptr;
    std::uint32_t flags = 0;
    TimerCallback callback = nullptr;
    void* client = nullptr;
    std::int32_t key = 0;
    void* clientData = nullptr;
    TimerMode mode = TimerMode::kRepeating;
    Ticks interval = 0;
    Ticks start = 0;
    Ticks lastFiring = 0;
    std::uint32_t firingCount = 0;
    bool suspended = false;
};

namespace {

// Ticks between two readings, correct across the wrap of the tick counter.
Ticks TicksSince(Ticks earlier, Ticks now) {
    return static_cast<Ticks>(static_cast<std::uint32_t>(now) -
                              static_cast<std::uint32_t>(earlier));
}

bool IsDue(const Timer& timer, Ticks now) {
    return !timer.suspended && (timer.flags & Timer::kMarkedForRemoval) == 0 &&
           TicksSince(timer.lastFiring, now) >= timer.interval;
}

}  // namespace

TimerManager::TimerManager() : clock_(&GetTicks) {}

TimerManager::TimerManager(TickSource clock) : clock_(std::move(clock)) {}

TimerManager::~TimerManager() {
    while (Timer* timer = head_) {
        head_ = timer->next;
        delete timer;
    }
}

Timer* TimerManager::AddTimer(TimerCallback callback, std::int32_t key, void* client,
                              TimerMode mode, Ticks interval) {
    if (callback == nullptr) VORIX_THROW(AppFrame::BadParameter);
    auto* timer = new (std::nothrow) Timer();
    if (timer == nullptr) return nullptr;
    timer->callback = callback;
    timer->client = client;
    timer->key = key;
    timer->mode = mode;
    timer->interval = interval;
    timer->start = timer->lastFiring = Now();
    // At the head, so that a walk in progress does not reach it.
    timer->next = head_;
    head_ = timer;
    ++count_;
    return timer;
}

void TimerManager::RemoveTimer(Timer* timer) {
    if (timer == nullptr) return;
    if (inTick_) {
        // The walk holds a link into the list: the record must survive until the walk ends.
        timer->flags |= Timer::kMarkedForRemoval;
        removalPending_ = true;
        return;
    }
    for (Timer** link = &head_; *link != nullptr; link = &(*link)->next) {
        if (*link == timer) {
            *link = timer->next;
            --count_;
            delete timer;
            return;
        }
    }
    VORIX_THROW(BadTimer);
}

void TimerManager::SetInterval(Timer* timer, Ticks interval) {
    if (timer == nullptr) return;
    timer->interval = interval;
    timer->start = timer->lastFiring = Now();
    timer->firingCount = 0;
}

Ticks TimerManager::GetInterval(const Timer* timer) const {
    return timer != nullptr ? timer->interval : 0;
}

void TimerManager::SetSuspended(Timer* timer, bool suspended) {
    if (timer != nullptr) timer->suspended = suspended;
}

bool TimerManager::IsSuspended(const Timer* timer) const {
    return timer != nullptr && timer->suspended;
}

void* TimerManager::GetClientData(const Timer* timer) {
    return timer != nullptr ? timer->clientData : nullptr;
}

void TimerManager::SetClientData(Timer* timer, void* clientData) {
    if (timer != nullptr) timer->clientData = clientData;
}

void TimerManager::Tick() {
    const Ticks now = Now();
    // A nested tick would end the outer walk's protection of the list under it.
    if (head_ == nullptr || inTick_) return;
    {
        ScopedFlag inTick(inTick_);
        for (Timer* timer = head_; timer != nullptr; timer = timer->next) {
            if (IsDue(*timer, now)) Fire(*timer, now);
        }
    }
    if (removalPending_) FreeMarkedTimers();
}

Ticks TimerManager::Now() const {
    return clock_();
}

void TimerManager::Fire(Timer& timer, Ticks now) {
    if (timer.mode == TimerMode::kOneShot) {
        if (timer.firingCount != 0) return;
        timer.firingCount = 1;
    } else {
        ++timer.firingCount;
    }
    try {
        timer.callback(&timer, timer.key, timer.client, TicksSince(timer.start, now));
    } catch (...) {
        // One failing client must not stop the heartbeat for every other timer.
    }
    // Missed intervals are dropped: a late timer fires once and does not catch up.
    timer.lastFiring = now;
}

void TimerManager::FreeMarkedTimers() {
    Timer** link = &head_;
    while (Timer* timer = *link) {
        if ((timer->flags & Timer::kMarkedForRemoval) != 0) {
            *link = timer->next;
            --count_;
            delete timer;
        } else {
            link = &timer->next;
        }
    }
    removalPending_ = false;
}

}  // namespace vorix
