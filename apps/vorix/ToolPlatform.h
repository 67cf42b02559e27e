#pragma once

#include <cstdint>
#include <ostream>
#include <string>

#include "core/ErrorMessageService.h"
#include "core/PluginPlatform.h"

namespace vorix::cli {

// Shows the core's messages as the tool's other errors: one line on the error stream, behind the
// command's prefix ("vorix render: "). It counts what it showed, so that the tool can tell a
// settings load that the core refused (the core tells the user and carries on) from one that
// went through.
class ToolMessageService : public ErrorMessageService {
  public:
    // Main thread. Neither argument is owned; `err` must outlive the service.
    ToolMessageService(std::ostream& err, std::string prefix)
        : err_(err), prefix_(std::move(prefix)) {}

    // Main thread. Writes one line; must not be called from the audio thread.
    void ShowError(std::string_view first, std::string_view second, std::string_view third,
                   std::int32_t kind) override;
    // Main thread. How many messages were shown so far.
    int Count() const noexcept { return count_; }

  private:
    std::ostream& err_;
    std::string prefix_;
    int count_ = 0;
};

// The host that the tool is to the core: a fixed rate, block size and channel count, no editor,
// no automation to record (the host's control changes come from the command line, before any
// audio), and messages on the error stream.
class ToolPlatform : public PluginPlatform {
  public:
    // Main thread. `err` must outlive the platform.
    ToolPlatform(float sampleRate, std::int32_t blockSize, std::int32_t channels, std::ostream& err,
                 std::string messagePrefix);

    // Main thread, never the audio thread; the host's answers, as PluginPlatform describes them.
    std::string GetHostName() const override;
    std::int32_t GetInitialDelay() const override { return delay_; }
    float GetSampleRate() const override { return sampleRate_; }
    std::int32_t GetBlockSize() const override { return blockSize_; }
    void SetInitialDelay(std::int32_t samples) override { delay_ = samples; }
    void SetTailDelay(std::int32_t samples) override { delay_ = samples; }
    bool IsInputConnected(std::int32_t channel) const override;
    bool IsOutputConnected(std::int32_t channel) const override;
    std::int32_t GetOutputCount() const override { return channels_; }
    std::int32_t GetInputCount() const override { return channels_; }
    bool IsHostInitialized() const override { return true; }
    bool IsEditorOpen() const override { return false; }
    bool IsHostProcessing() const override { return processing_; }
    // Main thread. Nothing records automation here; the value is dropped.
    void ParameterChanged(std::int32_t index, float value) override;
    // Main thread. The line writer above, for every message of the instance.
    ErrorMessageService* GetErrorMessageService() const override { return &messages_; }

    // Main thread. Set while the render loop runs.
    void SetProcessing(bool processing) noexcept { processing_ = processing; }
    // Main thread. How many messages the core has shown so far.
    int MessageCount() const noexcept { return messages_.Count(); }

  private:
    float sampleRate_;
    std::int32_t blockSize_;
    std::int32_t channels_;
    std::int32_t delay_ = 0;
    bool processing_ = false;
    mutable ToolMessageService messages_;
};

}  // namespace vorix::cli
