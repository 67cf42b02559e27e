#pragma once

#include <atomic>
#include <cstdint>

#include "hostlib/CProcess.h"

namespace vorix {

// A process that renders audio: its channel counts, its processing state and its latency.
class CDSPProcess : public CProcess {
  public:
    // Any thread. The channels of the insert, from its effect type.
    std::int32_t GetInputCount() const noexcept { return inputCount_; }
    std::int32_t GetOutputCount() const noexcept { return outputCount_; }
    // Any thread. Whether the host is between StartProcessing and StopProcessing.
    bool IsProcessing() const noexcept { return processing_.load(std::memory_order_relaxed); }

    // Main thread: the delay the plug-in adds to the audio, in samples; 0 here.
    virtual void GetDelaySamplesLatency(std::int32_t& samples);

    // IProcess, the host's entries.
    void GetChannelCounts(std::int32_t& inputs, std::int32_t& outputs) const noexcept override;
    std::int32_t ReadLatency(std::int32_t& samples) noexcept override;

  protected:
    CDSPProcess() = default;
    // Main thread.
    void SetProcessingFlag(bool processing) noexcept {
        processing_.store(processing, std::memory_order_relaxed);
    }

  private:
    friend class CEffectType;

    std::int32_t inputCount_ = 0;
    std::int32_t outputCount_ = 0;
    std::atomic<bool> processing_{false};
};

}  // namespace vorix
