#pragma once

#include <cstdint>
#include <string>

#include "core/ChannelConfig.h"
#include "core/ZORParameterInfo.h"

namespace vorix {

class Frame;
class PluginUIRoot;

// The width and height of an editor, in pixels.
struct EditorSize {
    std::int32_t width = 0;
    std::int32_t height = 0;

    friend bool operator==(const EditorSize&, const EditorSize&) = default;
};

// The plug-in's audio object as the host layer sees it. The order of the operations is part of
// the design. Everything runs on the host's main thread except `Process`, which comes on the
// audio thread, and `SetParameter`/`SetParameterByIndex`, which come on the thread of the host's
// control changes.
class PluginCoreInterface {
  public:
    // Main thread.
    virtual ~PluginCoreInterface() = default;

    // Main thread. The host application's name.
    virtual std::string GetHostName() const = 0;
    // Main thread. The name under which the product keeps its preferences.
    virtual std::string GetPreferencesName() const = 0;
    // Main thread, once after construction. Keeps the engine's first state as the default
    // settings unless the factory programs gave some.
    virtual void CaptureDefaultSettings() = 0;
    // Main thread. The last call before the host layer destroys the object.
    virtual void Stop() = 0;
    // Main thread. Renames the current program; null is an empty name.
    virtual void SetProgramName(const char* name) = 0;
    // Main thread. The name of a program; an empty name for an index outside the list.
    virtual const std::string& GetProgramName(std::int32_t index) const = 0;
    virtual const std::string& GetCurrentProgramName() const = 0;
    // Main thread. The current program's index.
    virtual std::int32_t GetProgram() const = 0;
    // Main thread. Switches programs; loads settings, so never from the audio thread.
    virtual void SetProgram(std::int32_t index) = 0;
    // Main thread. The program whose stored text the chunks read and write.
    virtual std::int32_t GetSettingsProgram() const = 0;
    // Main thread. The settings as a chunk that the core owns until the next call; the size in
    // bytes, or 0 (with null data) after a failure that the user has been told of.
    virtual std::int32_t GetChunk(void** data, bool isPreset) = 0;
    // Main thread. Loads a chunk; a bad one is reported to the user once and changes nothing.
    virtual void SetChunk(const void* data, std::int32_t size, bool isPreset) = 0;
    // Main thread. The host is about to restore its own record of the control values.
    virtual void WillLoadControlsState() = 0;
    // Main thread. The last call of the host layer's initialisation.
    virtual void Start() = 0;
    // Audio thread. Runs one block; never allocates, locks, throws or reports.
    virtual void Process(float** inputs, float** outputs, std::int32_t samples, bool accumulate,
                         std::int32_t bypassMode) noexcept = 0;
    // Main thread. A word that the host layer keeps for the engine's side chain.
    virtual void SetSideChainInput(std::intptr_t input) = 0;
    virtual std::intptr_t GetSideChainInput() const = 0;
    // Main thread, while no audio runs. Clears all filter and meter memories.
    virtual void ResetAudioState() = 0;
    // Editor thread. The editor's root frame and the about frame, made for `root` under `parent`.
    virtual Frame* CreateEditorFrame(PluginUIRoot& root, Frame* parent) = 0;
    virtual Frame* CreateAboutFrame(PluginUIRoot& root, Frame* parent) = 0;
    // Any thread. The editor's size.
    virtual EditorSize GetEditorSize() const = 0;
    // Main thread. Both announce the latency to the host.
    virtual void SetInitialDelay(std::int32_t samples) = 0;
    virtual void SetTailDelay(std::int32_t samples) = 0;
    // Main thread. Forwards of calls that no host of this product acts on.
    virtual void UnusedForward1() = 0;
    virtual void UnusedForward2() = 0;
    // Main thread. The latency announced to the host.
    virtual std::int32_t GetInitialDelay() const = 0;
    // Main thread. The audio configuration as last set.
    virtual float GetSampleRate() const = 0;
    virtual std::int32_t GetBlockSize() const = 0;
    virtual const ChannelConfig* GetChannelConfig() const = 0;
    // Main thread. Whether the host connected the channel.
    virtual bool IsInputConnected(std::int32_t channel) const = 0;
    virtual bool IsOutputConnected(std::int32_t channel) const = 0;
    // Main thread. The host's own state.
    virtual bool IsHostInitialized() const = 0;
    virtual bool IsHostProcessing() const = 0;
    // Main thread. Send "cfg "/"srte" and "cfg "/"blok" to the instance. The core rebuilds the
    // audio call's buffers under an AudioLock; the engine's hooks guard what they rebuild.
    virtual void SetSampleRate(float rate) = 0;
    virtual void SetBlockSize(std::int32_t size) = 0;
    // Main thread. Whether the host shows the editor, and the editor, null if none.
    virtual bool IsEditorOpen() const = 0;
    virtual PluginUIRoot* GetEditor() const = 0;
    // Main thread. Whether the editor's idle pump should run for this engine.
    virtual bool WantsEditorIdle() const = 0;
    // Host control thread. A host automation change; never touches the editor.
    virtual void SetParameter(const ZORParameterInfo* info, float value) = 0;
    virtual void SetParameterByIndex(std::int32_t index, float value) = 0;
    // Main thread. A parameter's present value; 0 for an unknown index.
    virtual double GetParameter(const ZORParameterInfo* info) = 0;
    virtual double GetParameterByIndex(std::int32_t index) = 0;
    // Main thread. While raised, reports reach the host even during internal changes.
    virtual void SetForceReport(bool force) = 0;
    // Main thread. The level that the meter of `meterId` shows.
    virtual float GetMeterValue(std::int32_t meterId) = 0;
    // Main thread. Clears the clip indicators; sends "clip"/"clcl".
    virtual void ResetClipIndicators() = 0;
};

}  // namespace vorix
