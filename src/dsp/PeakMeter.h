#pragma once

namespace vorix {

// What the audio path hands each channel's block peak to: the channel's metering manager.
class PeakReceiver {
public:
    // Audio thread; must not allocate, lock or throw.
    virtual void SetPeak(float peak) noexcept = 0;

protected:
    ~PeakReceiver() = default;
};

// The largest absolute sample value of a block, from 0; NaN samples are passed over.
// Audio thread.
float CollectPeak(const float* samples, int count) noexcept;

}  // namespace vorix
