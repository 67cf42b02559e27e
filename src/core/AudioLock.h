#pragma once

#include <functional>

#include "framework/Ticks.h"

namespace vorix {

class PluginCore;

// Stops the audio thread from reading the engine for a scope: the audio suspension is raised, so
// that a block that starts meanwhile is silent (or leaves an accumulating output alone), and the
// constructor waits until a block under way has left the audio call. The caller may then change
// what the audio call reads. Main or editor thread; never on the audio thread, which it would wait
// for forever.
class AudioLock {
  public:
    // Ticks that the constructor waits at most for the audio thread, about five seconds.
    static constexpr Ticks kMaxWaitTicks = 300;

    // Raises the suspension and waits, running `keepAlive` (the editor's pump) on each turn of
    // the wait. The time is read from the core's timer manager. If more than kMaxWaitTicks pass,
    // the suspension is lowered again and AppFrame::TimeOut is raised.
    explicit AudioLock(PluginCore& core, const std::function<void()>& keepAlive = {});

    // Lowers the suspension: the audio thread runs the engine again from its next block.
    ~AudioLock();

    AudioLock(const AudioLock&) = delete;
    AudioLock& operator=(const AudioLock&) = delete;

  private:
    void WaitForAudioThread(const std::function<void()>& keepAlive);

    PluginCore& core_;
};

}  // namespace vorix
