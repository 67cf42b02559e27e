#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "dsp/PeakMeter.h"
#include "dsp/RelaxedAtomic.h"

namespace vorix {

class MeteringManager;

// Where a meter reads the time: the system's tick in the product, a hand-moved one in tests.
// Must be safe on the audio thread (no lock, no allocation).
using MeterTickSource = int32_t (*)() noexcept;

// One reader of a channel's peaks with its own hold: the highest peak between two reads survives
// until read, and a read after the hold has run out falls straight to the floor.
class MeterClient {
public:
    explicit MeterClient(MeteringManager* manager);

    // Editor's timer thread. The held value, as a linear ratio.
    float Read() noexcept;
    // Main thread, before audio runs or between reads. 0 holds nothing.
    void SetHold(int32_t ticks) noexcept { holdTicks_ = ticks; }

private:
    friend class MeteringManager;

    MeteringManager* manager_;
    RelaxedAtomic<float> value_;
    RelaxedAtomic<bool> read_{false};
    RelaxedAtomic<int32_t> holdTicks_{0};
    RelaxedAtomic<int32_t> lastTick_{0};
    float floor_;
};

// Hands a channel's block peaks from the audio thread to its meters without a lock: every word
// is read and written whole, so a race can at worst lose one peak of a display.
class MeteringManager final : public PeakReceiver {
public:
    // `linear`: peaks are linear ratios (floor 0); otherwise decibels (floor -1000).
    MeteringManager(bool linear, MeterTickSource ticks);

    // Audio thread; no allocation, lock or throw.
    void SetPeak(float peak) noexcept override;
    // Any thread that may race with SetPeak: every client takes the floor, no peak retained.
    void Reset() noexcept;
    // Main thread, before audio runs: the client belongs to the manager.
    MeterClient* AddClient();

    float Value() const noexcept { return value_; }
    bool IsLinear() const noexcept { return linear_; }
    float Floor() const noexcept { return linear_ ? 0.0f : -1000.0f; }
    int32_t Now() const noexcept { return ticks_(); }

private:
    void Give(MeterClient& client, float value, int32_t now) noexcept;

    RelaxedAtomic<float> value_{0.0f};
    bool linear_;
    MeterTickSource ticks_;
    std::vector<std::unique_ptr<MeterClient>> clients_;
};

}  // namespace vorix
