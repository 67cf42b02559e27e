#pragma once

#include <atomic>
#include <cstdint>
#include <string>

#include "core/PluginPlatform.h"

namespace vorix {

// The LV2 host as the plug-in core sees it. LV2 gives the rate and the largest block at
// instantiation and owns the control ports, so a parameter that the engine changes by itself (a
// loaded state binds new filters to the automation slots) cannot be pushed into the host's
// controls: such reports end here. The host's ports catch up when the user moves them.
class Lv2PluginPlatform final : public PluginPlatform {
  public:
    // Instantiation thread. `messages` is not owned and must outlive the platform.
    Lv2PluginPlatform(std::int32_t channels, float sampleRate, std::int32_t blockSize,
                      ErrorMessageService& messages) noexcept;

    // Any thread but audio (allocates). "LV2 Host": LV2 does not say which host loaded it.
    std::string GetHostName() const override;
    // Any thread. The latency last announced; run() copies it into the latency port.
    std::int32_t GetInitialDelay() const override {
        return latency_.load(std::memory_order_relaxed);
    }
    // Any thread. The rate and the core's block size, fixed at instantiation.
    float GetSampleRate() const override { return sampleRate_; }
    std::int32_t GetBlockSize() const override { return blockSize_; }
    // Main or worker thread. Both set the one latency number the plug-in reports.
    void SetInitialDelay(std::int32_t samples) override;
    void SetTailDelay(std::int32_t samples) override;
    // Any thread. An LV2 host connects every audio port, so every channel is connected.
    bool IsInputConnected(std::int32_t channel) const override;
    bool IsOutputConnected(std::int32_t channel) const override;
    std::int32_t GetOutputCount() const override { return channels_; }
    std::int32_t GetInputCount() const override { return channels_; }
    // Any thread. Set up, and activated by the host.
    bool IsHostInitialized() const override { return initialized_.load(); }
    bool IsHostProcessing() const override { return activated_.load(); }
    // Any thread. No editor runs in an LV2 host yet.
    bool IsEditorOpen() const override { return false; }
    // Main or worker thread. Dropped: the host owns the control ports.
    void ParameterChanged(std::int32_t /*index*/, float /*value*/) override {}
    // Any thread. The instance's log.
    ErrorMessageService* GetErrorMessageService() const override { return &messages_; }

    // Instantiation thread. The instance is set up; the host has activated or deactivated it.
    void SetInitialized() noexcept { initialized_.store(true); }
    void SetActivated(bool activated) noexcept { activated_.store(activated); }

  private:
    std::int32_t channels_;
    float sampleRate_;
    std::int32_t blockSize_;
    ErrorMessageService& messages_;
    std::atomic<std::int32_t> latency_{0};
    std::atomic<bool> initialized_{false};
    std::atomic<bool> activated_{false};
};

}  // namespace vorix
