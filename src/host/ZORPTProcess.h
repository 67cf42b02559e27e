#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "core/ChannelConfig.h"
#include "core/PluginPlatform.h"
#include "core/ZORPluginMetaClass.h"
#include "hostlib/CEffectProcess.h"

namespace vorix {

class HostMessageService;
class PluginCore;

// One insert of the product as the host drives it, joined to one engine. Towards the host it is
// an effect process with controls, meters and chunks; towards the engine it is the platform. It
// holds no audio code: the render call is ZORPTProcessAS's, the class the group's factory makes.
// Main thread, unless an operation says otherwise.
class ZORPTProcess : public virtual CEffectProcess, public PluginPlatform {
  public:
    // The largest piece of audio the engine is given at once; its buffers are built to it.
    static constexpr std::int32_t kBlockSize = 4096;
    // The master bypass control.
    static constexpr std::int32_t kMasterBypassId = static_cast<std::int32_t>(FourCC("bypa"));
    static constexpr const char* kMasterBypassNameSet = "Master Bypass\nMstr Byp\nMByp\nByp";
    // The chunk that restores the controls, before which the engine is warned.
    static constexpr std::int32_t kControlsStateId = static_cast<std::int32_t>(FourCC("elck"));
    // What the engine is told the host is called; a host processing on external hardware gets
    // the suffix.
    static constexpr const char* kHostName = "Pro Tools";
    static constexpr const char* kExternalHardwareSuffix = " TDM";

    // Main thread. Takes a reference on the product's description and registers the product's
    // chunk, if it keeps one. Throws ZORPluginMetaClass::NoMetaClass without a description.
    ZORPTProcess();
    // Main thread, after the host's last render call: the engine is reset, stopped and deleted.
    ~ZORPTProcess() override;

    // ---- CEffectProcess: the host's side ----
    // Main thread: makes and starts the engine, then the controls and meters. Its exceptions
    // make the insert fail.
    void EffectInit() override;
    void EffectProcessStart() override;
    void EffectProcessEnd() override;
    // Main thread: a host control change, carried into the engine.
    void UpdateControlValueInAlgorithm(std::int32_t control) override;
    void GetDelaySamplesLatency(std::int32_t& samples) override;
    // Main thread: the product's chunk comes from and goes to the engine's settings; the
    // control state warns the engine first; the library keeps the rest.
    std::int32_t GetChunkSize(std::int32_t id, std::int32_t& size) override;
    std::int32_t GetChunk(std::int32_t id, PlugInChunk& chunk) override;
    std::int32_t SetChunk(std::int32_t id, const PlugInChunk& chunk) override;
    // Main thread: a control surface's highlight of a parameter's control; the master bypass
    // and numbers beyond the parameters are ignored, and read as off.
    void SetControlHighlightInfo(std::int32_t control, std::int16_t on,
                                 std::int16_t colour) override;
    void GetControlHighlightInfo(std::int32_t control, std::int16_t& on,
                                 std::int16_t& colour) override;

    // ---- PluginPlatform: the engine's side, main thread ----
    std::string GetHostName() const override { return hostName_; }
    std::int32_t GetInitialDelay() const override { return initialDelay_; }
    float GetSampleRate() const override { return static_cast<float>(sampleRate_); }
    std::int32_t GetBlockSize() const override { return blockSize_; }
    void SetInitialDelay(std::int32_t samples) override { initialDelay_ = samples; }
    void SetTailDelay(std::int32_t samples) override { initialDelay_ = samples; }
    bool IsInputConnected(std::int32_t /*channel*/) const override { return true; }
    bool IsOutputConnected(std::int32_t /*channel*/) const override { return true; }
    std::int32_t GetOutputCount() const override { return CDSPProcess::GetOutputCount(); }
    std::int32_t GetInputCount() const override { return CDSPProcess::GetInputCount(); }
    bool IsHostInitialized() const override { return hostInitialized_; }
    bool IsEditorOpen() const override { return GetCustomView() != nullptr; }
    bool IsHostProcessing() const override { return processing_; }
    // Main thread: the engine changed a parameter; its control takes the value and the host
    // hears of it. Never throws, so that a report cannot break the editor.
    void ParameterChanged(std::int32_t index, float value) override;
    ErrorMessageService* GetErrorMessageService() const override;

  protected:
    // The render call's view of the insert, for ZORPTProcessAS. Audio thread where told.
    PluginCore* Core() const noexcept { return core_.get(); }
    // Audio thread.
    bool IsMasterBypassed() const noexcept { return masterBypass_.load(std::memory_order_relaxed); }
    std::int32_t BlockSize() const noexcept { return blockSize_; }
    float* ZeroInput() noexcept { return zeroInput_.data(); }
    float* ScratchOutput() noexcept { return scratchOutput_.data(); }
    bool IsSideChainSupported() const noexcept { return sideChainSupported_; }
    // Main thread. The engine's meters, in the order the host lists them.
    const std::vector<std::int32_t>& MeterIds() const noexcept { return meterIds_; }

  private:
    void StartCore(ZORPluginMetaClass& metaClass);
    void AddParameterControls(ZORPluginMetaClass& metaClass);
    void AddMeters(const ZORPluginMetaClass& metaClass);
    bool IsPluginChunk(std::int32_t id) const noexcept { return hasPluginChunk_ && id == chunkId_; }
    // The engine's settings for the product's chunk, or an empty span when it could not make them
    // (it has told the user then).
    std::pair<const void*, std::int32_t> CoreChunk();
    void StopCore() noexcept;

    MetaClassReference metaClass_;
    ChannelConfig channels_;
    std::int32_t chunkId_ = 0;
    bool hasPluginChunk_ = false;
    // Written by the host's control changes, read by the render call.
    std::atomic<bool> masterBypass_{false};
    std::int32_t initialDelay_ = 0;
    std::int32_t sampleRate_ = 44100;
    std::int32_t blockSize_ = kBlockSize;
    bool processing_ = false;
    bool coreReady_ = false;
    bool hostInitialized_ = false;
    bool initDone_ = false;
    bool sideChainSupported_ = false;
    std::string hostName_;
    // Stand-ins for an unconnected input and output, made with the process so that rendering
    // never allocates.
    std::vector<float> zeroInput_;
    std::vector<float> scratchOutput_;
    std::unique_ptr<PluginCore> core_;
    // One (on, colour) pair per control number, the unused 0 and the master bypass included.
    std::vector<std::pair<std::int16_t, std::int16_t>> controlHighlights_;
    std::int32_t parameterCount_ = 0;
    std::vector<std::int32_t> meterIds_;
    std::unique_ptr<HostMessageService> messages_;
};

}  // namespace vorix
