#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "hostlib/CDSPProcess.h"
#include "hostlib/ChunkDataParser.h"

namespace vorix {

class CAdaptorPlugIn;
class CPluginControl;

// One meter a process shows the host.
struct MeterInfo {
    std::string name;
    std::int32_t position;  // where the host shows it
    std::int32_t kind;      // 0 or 1
};

// The process an effect plug-in derives from: it owns the controls and the meters, keeps the
// "Complete Controls State" chunk for every process, and reaches its render routine through an
// adaptor or its own. A plug-in overrides EffectInit, UpdateControlValueInAlgorithm, the chunk
// operations for its own chunks, GetMeters and the render routine. Main thread unless told.
class CEffectProcess : public CDSPProcess {
  public:
    static constexpr std::int32_t kControlsStateChunkId = CProcess::kControlsStateChunkId;
    static constexpr const char* kControlsStateChunkName = "Complete Controls State";

    // Main thread. Registers the control-state chunk.
    CEffectProcess();
    ~CEffectProcess() override;

    // ---- lifecycle ----
    // Main thread: called once the process is connected, before any other host call. Makes the
    // controls and meters. Its exceptions make the insert fail.
    virtual void EffectInit();
    // Main thread: around a run of render calls.
    virtual void EffectProcessStart();
    virtual void EffectProcessEnd();

    // ---- controls ----
    // Main thread. Adds an owned control as the next number and sets it to its default;
    // answers its number. A second control of the same id throws AppFrame::DuplicateEntry.
    std::int32_t AddControl(std::unique_ptr<CPluginControl> control);
    std::int32_t GetNumControls() const noexcept override;
    CPluginControl* GetControl(std::int32_t control) const noexcept override;

    // ---- meters ----
    // Main thread. Adds a meter as the next position of the list.
    void AddMeter(std::string name, std::int32_t position, std::int32_t kind);
    std::int32_t GetNumMeters() const noexcept;
    // Main thread. Throws AppFrame::BadParameter for a meter beyond the list.
    const MeterInfo& GetMeterInfo(std::int32_t meter) const;
    // Main thread: one value per meter (0 to 2^31, or -1 for a clip) and its clip mark, both
    // spans as long as the meter list. None of the meters moves here.
    virtual void GetMeters(std::span<std::int32_t> values, std::span<bool> clipped);
    // Main thread: the host cleared its clip lights; the library clears its clip flag.
    virtual void ResetClipIndicators();
    // Any thread. Whether a meter has clipped since the last reset.
    bool IsClipIndicatorSet() const noexcept override;
    void SetClipIndicator() noexcept { clipped_.store(true, std::memory_order_relaxed); }
    void ClearClipIndicator() noexcept { clipped_.store(false, std::memory_order_relaxed); }

    // ---- chunks: the control state here, every other id is the plug-in's. Main thread. ----
    std::int32_t GetChunkSize(std::int32_t id, std::int32_t& size) override;
    std::int32_t GetChunk(std::int32_t id, PlugInChunk& chunk) override;
    std::int32_t SetChunk(std::int32_t id, const PlugInChunk& chunk) override;
    // Main thread. The parser of the control state, as last built or read.
    ChunkDataParser& GetChunkDataParser() noexcept { return parser_; }

    // ---- render ----
    // Audio thread: the render routine of a process that has its own; none here. Must not
    // allocate, lock or throw.
    virtual std::int32_t RenderAudio(const RenderBlock& block) noexcept;
    // Main thread, before rendering: the adaptor that drives an offline-style process.
    void AttachAdaptor(std::unique_ptr<CAdaptorPlugIn> adaptor) noexcept;

    // ---- IProcess and IProcess2, the host's entries ----
    // Audio thread: through the adaptor, or the process's own routine. Does not allocate, lock
    // or throw.
    std::int32_t Render(const RenderBlock& block) noexcept override;
    // Main thread, never throwing; see ProcessInterfaces.h.
    std::int32_t StartProcessing() noexcept override;
    std::int32_t StopProcessing() noexcept override;
    std::int32_t CountMeters() const noexcept override { return GetNumMeters(); }
    std::int32_t MeterName(std::int32_t meter, char* buffer,
                           std::int32_t maxChars) const noexcept override;
    std::int32_t ReadMeters(std::int32_t* values, bool* clipped,
                            std::int32_t count) noexcept override;
    std::int32_t ClearClipIndicators() noexcept override;

  private:
    // Fills the parser with every control's value, in control order.
    void CollectControlsState();
    // Gives each control with an item, but the master bypass, the item's value.
    void ApplyControlsState();

    std::vector<std::unique_ptr<CPluginControl>> controls_;
    std::vector<MeterInfo> meters_;
    ChunkDataParser parser_;
    std::unique_ptr<CAdaptorPlugIn> adaptor_;
    std::atomic<bool> clipped_{false};
};

}  // namespace vorix
