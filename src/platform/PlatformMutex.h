#pragma once

#include <mutex>

namespace vorix {

// The platform's lock: what serialises the work of an instance that runs off the audio thread
// (a plug-in format's worker, its state calls, a UI) on the parts of the engine that are
// single-threaded, the message bus and the controls above all. A plain std::mutex. The audio
// thread never waits for it: where a host offers no worker, the LV2 plug-in's run() only tries
// it, once, and leaves a change it cannot apply for the next block. It also meets the standard's Lockable requirements, so that
// std::lock_guard and std::unique_lock hold it for a scope.
class PlatformMutex {
  public:
    PlatformMutex() = default;
    PlatformMutex(const PlatformMutex&) = delete;
    PlatformMutex& operator=(const PlatformMutex&) = delete;

    // With `tryOnly`, takes the lock only if it is free at once and answers whether it did (the
    // one form the audio thread may use); otherwise, on any thread but audio, waits for it and
    // answers true. Not re-entrant: a thread that holds
    // the lock must not take it again.
    bool Lock(bool tryOnly) {
        if (tryOnly) return mutex_.try_lock();
        mutex_.lock();
        return true;
    }

    // The thread that holds the lock. Releases it.
    void Unlock() { mutex_.unlock(); }

    // The standard spellings of the same operations.
    void lock() { Lock(false); }
    bool try_lock() { return Lock(true); }
    void unlock() { Unlock(); }

  private:
    std::mutex mutex_;
};

}  // namespace vorix
