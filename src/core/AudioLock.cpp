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

std::uint64_t PluginCore::AudioBlocksEntered() const noexcept {
    // Pairs with the entry's sequentially consistent increment: either this load counts a block,
    // or that block's reads come after the caller's writes.
    std::atomic_thread_fence(std::memory_order_seq_cst);
    return processEntries_.load(std::memory_order_seq_cst);
}

}  // namespace vorix
