#include "core/AudioLock.h"

#include <thread>

#include "core/PluginCore.h"
#include "framework/TimerManager.h"

namespace vorix {

AudioLock::AudioLock(PluginCore& core, const std::function<void()>& keepAlive) : core_(core) {
    core_.SuspendAudio(true);
    try {
        WaitForAudioThread(keepAlive);
    } catch (...) {
        core_.SuspendAudio(false);
        throw;
    }
}

AudioLock::~AudioLock() {
    core_.SuspendAudio(false);
}

void AudioLock::WaitForAudioThread(const std::function<void()>& keepAlive) {
    const TimerManager& clock = core_.GetTimerManager();
    const Ticks start = clock.Now();
    while (core_.IsInProcess()) {
        if (keepAlive) keepAlive();
        // Tick values wrap; their difference does not.
        if (static_cast<Ticks>(static_cast<std::uint32_t>(clock.Now()) -
                               static_cast<std::uint32_t>(start)) > kMaxWaitTicks) {
            VORIX_THROW(AppFrame::TimeOut);
        }
        std::this_thread::yield();
    }
}

void PluginCore::WaitForAudioToPass() const noexcept {
    const std::uint32_t entries = processEntries_.load(std::memory_order_seq_cst);
    if (!IsInProcess()) return;
    const TimerManager& clock = GetTimerManager();
    const Ticks start = clock.Now();
    // A block that began before the call has ended when the flag drops or a later block entered.
    while (IsInProcess() && processEntries_.load(std::memory_order_seq_cst) == entries) {
        if (static_cast<Ticks>(static_cast<std::uint32_t>(clock.Now()) -
                               static_cast<std::uint32_t>(start)) > AudioLock::kMaxWaitTicks) {
            return;
        }
        std::this_thread::yield();
    }
}

}  // namespace vorix
