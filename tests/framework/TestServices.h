#pragma once

#include <initializer_list>
#include <memory>

#include "framework/MessagingServer.h"
#include "framework/PluginServices.h"
#include "framework/Ticks.h"
#include "framework/TimerManager.h"

namespace vorix::test {

// The services of one test instance, on a clock that moves only when the test moves it.
class TestServices : public PluginServices {
  public:
    TestServices() : TestServices(std::make_shared<Ticks>(0)) {}

    void SetTicks(Ticks ticks) { *ticks_ = ticks; }
    void Advance(Ticks ticks) { *ticks_ += ticks; }
    // The clock as the system's uptime would give it after `milliseconds`.
    void SetMilliseconds(std::int64_t milliseconds) {
        *ticks_ = TicksFromMilliseconds(milliseconds);
    }

    // One beat of the editor's heartbeat: timers, then posted messages.
    void Pump() {
        GetTimerManager().Tick();
        GetMessagingServer().DeliverPosted();
    }

    // One beat at each of the given clock readings.
    void PumpAt(std::initializer_list<Ticks> beats) {
        for (Ticks beat : beats) {
            SetTicks(beat);
            Pump();
        }
    }

  private:
    explicit TestServices(std::shared_ptr<Ticks> ticks)
        : PluginServices(std::make_unique<TimerManager>([ticks] { return *ticks; }),
                         std::make_unique<MessagingServer>()),
          ticks_(std::move(ticks)) {}

    std::shared_ptr<Ticks> ticks_;
};

// Services of which the test chooses which exist.
class PartialServices : public PluginServices {
  public:
    PartialServices(bool withTimers, bool withMessaging)
        : PluginServices(withTimers ? std::make_unique<TimerManager>() : nullptr,
                         withMessaging ? std::make_unique<MessagingServer>() : nullptr) {}
};

}  // namespace vorix::test
