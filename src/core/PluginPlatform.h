#pragma once

#include <cstdint>
#include <string>

namespace vorix {

class ErrorMessageService;

// The host as the plug-in core sees it: what the host layer (the Pro Tools process object, the LV2
// wrapper, the reference host, the command line) answers about itself, and the one way upward for
// a parameter change. The order of the operations is part of the design. Main thread for all
// operations; none may be called from the audio thread.
class PluginPlatform {
  public:
    virtual ~PluginPlatform() = default;

    // Main thread. The host application's name.
    virtual std::string GetHostName() const = 0;
    // Main thread. The latency that the plug-in has announced, in samples.
    virtual std::int32_t GetInitialDelay() const = 0;
    // Main thread. The host's sample rate and largest block.
    virtual float GetSampleRate() const = 0;
    virtual std::int32_t GetBlockSize() const = 0;
    // Main thread. Both announce the plug-in's latency; hosts keep one number for the two.
    virtual void SetInitialDelay(std::int32_t samples) = 0;
    virtual void SetTailDelay(std::int32_t samples) = 0;
    // Two calls that no host of this product acts on.
    virtual void UnusedHostCall1() {}
    virtual void UnusedHostCall2() {}
    // Main thread. Whether the host has a buffer behind the channel.
    virtual bool IsInputConnected(std::int32_t channel) const = 0;
    virtual bool IsOutputConnected(std::int32_t channel) const = 0;
    virtual std::int32_t GetOutputCount() const = 0;
    virtual std::int32_t GetInputCount() const = 0;
    // Main thread. Whether the host has finished setting the instance up.
    virtual bool IsHostInitialized() const = 0;
    // Main thread. Whether the instance's editor window is open.
    virtual bool IsEditorOpen() const = 0;
    // Main thread. Whether the host is running the audio of the instance.
    virtual bool IsHostProcessing() const = 0;
    // A call of two arguments that no host of this product acts on.
    virtual void UnusedHostCall3(std::int32_t /*first*/, std::int32_t /*second*/) {}
    // Main thread. The engine changed the parameter at table position `index`; the host records
    // it for automation and may answer at once with a control change (the echo).
    virtual void ParameterChanged(std::int32_t index, float value) = 0;
    // Main thread. Clears the host's record of clipping; most hosts keep none.
    virtual void ClearClipState() {}

    // Main thread. Where this host shows messages while no editor is open; null leaves them to the
    // process-wide default service.
    virtual ErrorMessageService* GetErrorMessageService() const { return nullptr; }
};

}  // namespace vorix
