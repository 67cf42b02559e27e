#pragma once

#include <cstdint>

#include "hostlib/LibraryErrors.h"

namespace vorix {

// The host's side of one insert: what a host calls on a process and what the library calls back.
// Controls are numbered from 1, meters and chunk positions from 0. Every call returns 0 or a
// LibraryError and never throws. docs/hostlib.md tells the order of the calls.

class IProcess;

// What the library tells the host about a process. Main thread; must not throw.
class IHostCallbacks {
  public:
    // The plug-in changed a control itself (an edit in its editor, a restored state): the host
    // records it as automation while the control is touched.
    virtual void ControlValueChanged(IProcess& process, std::int32_t control,
                                     std::int32_t value) noexcept = 0;
    // The user began, or ended, an edit of a control in the plug-in's editor.
    virtual void ControlTouched(IProcess& process, std::int32_t control) noexcept = 0;
    virtual void ControlReleased(IProcess& process, std::int32_t control) noexcept = 0;

  protected:
    ~IHostCallbacks() = default;
};

// How a host connects a new process.
struct ProcessSetup {
    std::int32_t sampleRate = 44100;
    // False for a host whose processing runs on external hardware rather than on its own
    // processor; the plug-in may name the host differently then.
    bool nativeHost = true;
    // Null when the host wants no reports.
    IHostCallbacks* host = nullptr;
};

// What a host needs to know to show and automate a control.
struct ControlDescription {
    std::int32_t id = 0;
    std::int32_t numSteps = 0;
    std::int32_t defaultValue = 0;
    bool continuous = false;
    bool automatable = false;
};

// One block of audio. A null buffer in either array stands for an unconnected channel; an output
// may be the same buffer as an input. At most nine channels each way.
struct RenderBlock {
    float* const* inputs = nullptr;  // read only by the plug-in
    std::int32_t inputCount = 0;
    float* const* outputs = nullptr;
    std::int32_t outputCount = 0;
    float* sideChain = nullptr;  // an optional key input of `frames` samples
    std::int32_t frames = 0;
    bool bypass = false;  // the host's own bypass: outputs take a copy of the inputs
};

// The render interface of a process. Audio thread: must not allocate, lock or throw.
class IProcess2 {
  public:
    // Renders one block; answers the number of frames rendered, or a negative LibraryError.
    virtual std::int32_t Render(const RenderBlock& block) noexcept = 0;

  protected:
    ~IProcess2() = default;
};

// Everything else a host calls on a process. Main thread, never during Release; none of these
// may be called from the audio thread.
class IProcess {
  public:
    // Destroys the process. The host has stopped rendering it.
    virtual void Release() noexcept = 0;
    virtual IProcess2& GetRenderInterface() noexcept = 0;
    virtual void GetChannelCounts(std::int32_t& inputs, std::int32_t& outputs) const noexcept = 0;

    // Controls, numbered from 1.
    virtual std::int32_t CountControls() const noexcept = 0;
    // The number of the master bypass control, 0 when there is none.
    virtual std::int32_t MasterBypassControl() const noexcept = 0;
    // The number of the control of an id, 0 when there is none.
    virtual std::int32_t FindControl(std::int32_t id) const noexcept = 0;
    virtual std::int32_t DescribeControl(std::int32_t control,
                                         ControlDescription& out) const noexcept = 0;
    virtual std::int32_t ControlName(std::int32_t control, char* buffer,
                                     std::int32_t maxChars) const noexcept = 0;
    virtual std::int32_t ReadControlValue(std::int32_t control,
                                          std::int32_t& value) const noexcept = 0;
    // The host's own change of a control (automation, a control surface): no report comes back.
    virtual std::int32_t WriteControlValue(std::int32_t control, std::int32_t value) noexcept = 0;
    // The text of a value of a control, for a buffer of `maxChars` characters with terminator.
    virtual std::int32_t ControlValueText(std::int32_t control, std::int32_t value, char* buffer,
                                          std::int32_t maxChars) const noexcept = 0;
    // The value a typed text stands for; kErrBadText when it reads as none.
    virtual std::int32_t ControlTextValue(std::int32_t control, const char* text,
                                          std::int32_t& value) const noexcept = 0;
    // A control surface's highlight of a control: on or off, and a colour code.
    virtual std::int32_t HighlightControl(std::int32_t control, bool on,
                                          std::int32_t colour) noexcept = 0;

    // Around a run of Render calls.
    virtual std::int32_t StartProcessing() noexcept = 0;
    virtual std::int32_t StopProcessing() noexcept = 0;
    virtual std::int32_t ReadLatency(std::int32_t& samples) noexcept = 0;

    // Meters, numbered from 0. ReadMeters fills `count` values (0 to 2^31, or -1 for a clip) and
    // clip marks; `count` must be CountMeters().
    virtual std::int32_t CountMeters() const noexcept = 0;
    virtual std::int32_t MeterName(std::int32_t meter, char* buffer,
                                   std::int32_t maxChars) const noexcept = 0;
    virtual std::int32_t ReadMeters(std::int32_t* values, bool* clipped,
                                    std::int32_t count) noexcept = 0;
    virtual std::int32_t ClearClipIndicators() noexcept = 0;
    virtual bool IsClipIndicatorSet() const noexcept = 0;

    // Chunks, listed from position 0 in the order a host saves and restores them. SaveChunk
    // writes the whole chunk, 56-byte header first; with too small a buffer it answers
    // kErrBufferTooSmall and the size needed.
    virtual std::int32_t CountChunks() const noexcept = 0;
    virtual std::int32_t ChunkIdAt(std::int32_t position, std::int32_t& id) const noexcept = 0;
    virtual std::int32_t MeasureChunk(std::int32_t id, std::int32_t& size) noexcept = 0;
    virtual std::int32_t SaveChunk(std::int32_t id, std::uint8_t* buffer, std::int32_t capacity,
                                   std::int32_t& size) noexcept = 0;
    virtual std::int32_t LoadChunk(std::int32_t id, const std::uint8_t* data,
                                   std::int32_t size) noexcept = 0;

    // The editor: a window to open it in (null closes it), then drawing, idle calls and clicks.
    virtual std::int32_t AttachWindow(void* window) noexcept = 0;
    virtual std::int32_t ViewSize(std::int32_t& width, std::int32_t& height) noexcept = 0;
    virtual std::int32_t DrawView(std::int16_t left, std::int16_t top, std::int16_t right,
                                  std::int16_t bottom) noexcept = 0;
    virtual std::int32_t IdleView() noexcept = 0;
    virtual std::int32_t ClickView(std::int16_t x, std::int16_t y) noexcept = 0;

  protected:
    virtual ~IProcess() = default;
};

}  // namespace vorix
