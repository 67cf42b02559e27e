#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "framework/FourCC.h"
#include "hostlib/CUnknown.h"
#include "hostlib/PlugInChunk.h"
#include "hostlib/ProcessInterfaces.h"

namespace vorix {

class CPlugInView;
class CPluginControl;
class CProcessGroup;
class CProcessType;

// The base of every process: one insert of the plug-in as the host drives it. It answers the
// host's calls (IProcess) on top of the operations a plug-in overrides: the controls and their
// values, the chunk registry, the view port. The controls themselves are kept by the effect
// process. Main thread, unless an operation says otherwise.
class CProcess : public DOA::CUnknown, public IProcess2, public IProcess {
  public:
    // A chunk whose size is not known before it is made.
    static constexpr std::int32_t kChunkSizeUnknown = -152;
    // What control lookups answer when there is no such control.
    static constexpr std::int32_t kNoControl = 0;

    // ---- connection ----
    // Main thread. The sample rate the host runs the process at.
    std::int32_t GetSampleRate() const noexcept { return sampleRate_; }
    // Main thread. False when the host's processing runs on external hardware.
    bool IsNativeHost() const noexcept { return nativeHost_; }
    // Main thread. The type that made the process, null before it is connected.
    CProcessType* GetProcessType() const noexcept { return type_; }

    // ---- controls, numbered from 1 ----
    // Main thread; must not throw.
    virtual std::int32_t GetNumControls() const noexcept { return 0; }
    // Main thread; null for a number without control. Must not throw.
    virtual CPluginControl* GetControl(std::int32_t control) const noexcept;
    // Main thread. The number of the control of an id, or kNoControl.
    std::int32_t GetControlIndexFromID(std::int32_t id) const noexcept;
    // Main thread. Throws AppFrame::BadParameter for a number without control.
    std::int32_t GetControlValue(std::int32_t control) const;
    // Main thread: the plug-in's own change of a control. The value is stored, the algorithm is
    // updated, and the host hears of it so that it can record automation. Throws
    // AppFrame::BadParameter for a number without control; lets the update's exceptions pass.
    void SetControlValue(std::int32_t control, std::int32_t value);
    // Main thread: the value of a control changed; the plug-in brings its algorithm up to date.
    // Must not call SetControlValue of the same control.
    virtual void UpdateControlValueInAlgorithm(std::int32_t control);
    // Main thread: the user began or ended an edit of a control; the host writes automation in
    // between. Throws AppFrame::BadParameter for a number without control.
    void TouchControl(std::int32_t control);
    void ReleaseControl(std::int32_t control);
    // Main thread. Which control is the master bypass (kNoControl for none); a restored control
    // state leaves it alone.
    void DefineMasterBypassControlIndex(std::int32_t control) noexcept;
    std::int32_t GetMasterBypassControlIndex() const noexcept { return masterBypass_; }
    // Main thread: a control surface's highlight of a control. The library keeps none itself.
    virtual void SetControlHighlightInfo(std::int32_t control, std::int16_t on,
                                         std::int16_t colour);
    virtual void GetControlHighlightInfo(std::int32_t control, std::int16_t& on,
                                         std::int16_t& colour);

    // ---- chunks ----
    // Main thread. Adds a chunk the host saves and restores with the insert; ids are unique
    // (AppFrame::DuplicateEntry). The control state always stays last in the list.
    void AddChunk(std::int32_t id, std::string name, std::int32_t sizeEstimate = kChunkSizeUnknown);
    bool IsChunkRegistered(std::int32_t id) const noexcept;
    // Main thread: the plug-in's part of saving and restoring a chunk. `size` and the chunk's
    // size include the 56-byte header; the library fills the header behind the size field. The
    // library's own handling answers kErrUnknownChunk. Exceptions reach the host as kErrFailed.
    virtual std::int32_t GetChunkSize(std::int32_t id, std::int32_t& size);
    virtual std::int32_t GetChunk(std::int32_t id, PlugInChunk& chunk);
    virtual std::int32_t SetChunk(std::int32_t id, const PlugInChunk& chunk);

    // ---- view ----
    // Main thread: the host's window for the editor, or null when it closes the editor. The
    // library keeps the port and, on the first window, asks for the custom view.
    virtual void SetViewPort(void* window);
    // Main thread: makes the plug-in's view. The plug-in owns it and deletes it before the
    // process goes; null for none.
    virtual CPlugInView* CreateCustomPlugInView();
    void* GetViewPort() const noexcept { return viewPort_; }
    CPlugInView* GetCustomView() const noexcept { return customView_; }

    // ---- IProcess, the host's entries: main thread, never throwing; see ProcessInterfaces.h ----
    void Release() noexcept override;
    IProcess2& GetRenderInterface() noexcept override { return *this; }
    std::int32_t CountControls() const noexcept override { return GetNumControls(); }
    std::int32_t MasterBypassControl() const noexcept override { return masterBypass_; }
    std::int32_t FindControl(std::int32_t id) const noexcept override;
    std::int32_t DescribeControl(std::int32_t control,
                                 ControlDescription& out) const noexcept override;
    std::int32_t ControlName(std::int32_t control, char* buffer,
                             std::int32_t maxChars) const noexcept override;
    std::int32_t ReadControlValue(std::int32_t control,
                                  std::int32_t& value) const noexcept override;
    std::int32_t WriteControlValue(std::int32_t control, std::int32_t value) noexcept override;
    std::int32_t ControlValueText(std::int32_t control, std::int32_t value, char* buffer,
                                  std::int32_t maxChars) const noexcept override;
    std::int32_t ControlTextValue(std::int32_t control, const char* text,
                                  std::int32_t& value) const noexcept override;
    std::int32_t HighlightControl(std::int32_t control, bool on,
                                  std::int32_t colour) noexcept override;
    std::int32_t CountChunks() const noexcept override;
    std::int32_t ChunkIdAt(std::int32_t position, std::int32_t& id) const noexcept override;
    std::int32_t MeasureChunk(std::int32_t id, std::int32_t& size) noexcept override;
    std::int32_t SaveChunk(std::int32_t id, std::uint8_t* buffer, std::int32_t capacity,
                           std::int32_t& size) noexcept override;
    std::int32_t LoadChunk(std::int32_t id, const std::uint8_t* data,
                           std::int32_t size) noexcept override;
    std::int32_t AttachWindow(void* window) noexcept override;
    std::int32_t ViewSize(std::int32_t& width, std::int32_t& height) noexcept override;
    std::int32_t DrawView(std::int16_t left, std::int16_t top, std::int16_t right,
                          std::int16_t bottom) noexcept override;
    std::int32_t IdleView() noexcept override;
    std::int32_t ClickView(std::int16_t x, std::int16_t y) noexcept override;

  protected:
    CProcess() = default;
    ~CProcess() override;

    // The id of the chunk that keeps the controls' values; the effect process handles it.
    static constexpr std::int32_t kControlsStateChunkId = static_cast<std::int32_t>(FourCC("elck"));

  private:
    friend class CEffectType;
    friend class CProcessGroup;

    struct ChunkEntry {
        std::int32_t id;
        std::string name;
        std::int32_t sizeEstimate;
    };

    // Called by the type that made the process, before EffectInit.
    void Connect(CProcessType& type, const ProcessSetup& setup);
    // Called by a group that goes while the process is still alive.
    void ForgetGroup() noexcept { group_ = nullptr; }
    CPluginControl& ControlOrThrow(std::int32_t control) const;
    const ChunkEntry* FindChunk(std::int32_t id) const noexcept;
    PlugInChunk::Identity ChunkIdentity(const ChunkEntry& entry) const noexcept;

    CProcessType* type_ = nullptr;
    CProcessGroup* group_ = nullptr;
    IHostCallbacks* host_ = nullptr;
    std::int32_t sampleRate_ = 44100;
    bool nativeHost_ = true;
    std::int32_t masterBypass_ = kNoControl;
    std::vector<ChunkEntry> chunks_;
    void* viewPort_ = nullptr;
    CPlugInView* customView_ = nullptr;
};

}  // namespace vorix
