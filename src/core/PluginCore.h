#pragma once

#include <atomic>
#include <cstdint>
#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

#include "core/DepthCounter.h"
#include "core/PluginCoreInterface.h"
#include "core/SettingsLines.h"
#include "core/ZORPluginMetaClass.h"
#include "framework/Exceptions.h"
#include "framework/MessagePublisher.h"
#include "framework/PluginServices.h"
#include "framework/Ticks.h"

namespace vorix {

namespace Serialization {
class Archive;
}

class PluginPlatform;
class ZORPluginMetaClass;
class ZORPluginSettingsMetaData;

// The host-independent base of the plug-in's audio object. It carries parameters both ways between
// host and engine, wraps the audio call (bypass states, suspension, accumulation), keeps the
// program list with each program's settings text and turns it into chunks, and is the instance's
// service locator. The engine derives from it and supplies the audio, the parameter values and
// the settings text. Threads: see each operation; the audio thread enters only through Process.
class PluginCore : public PluginCoreInterface, public PluginServices, public MessagePublisher {
  public:
    // The engine's settings reader found a bad document.
    class InvalidSettingsData : public AppFrame::Exception {
      public:
        using Exception::Exception;
    };

    // A program document was refused after its failure had been shown to the user; settings
    // entries catch it without showing anything more.
    struct ProgramDocumentRefused {};

    // Holds the core's internal depth raised for a scope: the engine is changing its own state, and
    // nothing it reports may reach the host unless a report is forced. Main thread.
    class InternalChange {
      public:
        explicit InternalChange(PluginCore& core) noexcept : guard_(core.internalDepth_) {}

      private:
        DepthGuard guard_;
    };

    // Holds the audio suspended for a scope without waiting for the audio thread: a block that
    // starts meanwhile is silent. Main thread; AudioLock is the form that waits.
    class AudioSuspender {
      public:
        explicit AudioSuspender(PluginCore& core) noexcept : guard_(core.audioSuspendDepth_) {}

      private:
        DepthGuard guard_;
    };

    // The sentinel of a parameter value not known yet: the largest finite float, so that the
    // first real value always differs from it.
    static constexpr float kUnknownValue = 3.40282347e+38f;

    // No parameter report under way.
    static constexpr std::int32_t kNoParameter = -1;

    ~PluginCore() override;

    // The core is its own service locator; its services come from its PluginServices base.
    using PluginServices::GetMessagingServer;
    using PluginServices::GetTimerManager;

    // ---- PluginCoreInterface: threads and contracts as told there ----
    std::string GetHostName() const override;
    std::string GetPreferencesName() const override;
    void CaptureDefaultSettings() override;
    void Stop() override {}
    void SetProgramName(const char* name) override;
    const std::string& GetProgramName(std::int32_t index) const override;
    const std::string& GetCurrentProgramName() const override;
    std::int32_t GetProgram() const override { return currentProgram_; }
    void SetProgram(std::int32_t index) override;
    std::int32_t GetSettingsProgram() const override { return GetProgram(); }
    std::int32_t GetChunk(void** data, bool isPreset) override;
    void SetChunk(const void* data, std::int32_t size, bool isPreset) override;
    void WillLoadControlsState() override {}
    void Start() override {}
    void Process(float** inputs, float** outputs, std::int32_t samples, bool accumulate,
                 std::int32_t bypassMode) noexcept override;
    void SetSideChainInput(std::intptr_t input) override { sideChainInput_ = input; }
    std::intptr_t GetSideChainInput() const override { return sideChainInput_; }
    void ResetAudioState() override {}
    void SetInitialDelay(std::int32_t samples) override;
    void SetTailDelay(std::int32_t samples) override;
    void UnusedForward1() override;
    void UnusedForward2() override;
    std::int32_t GetInitialDelay() const override;
    float GetSampleRate() const override { return sampleRate_; }
    std::int32_t GetBlockSize() const override { return blockSize_; }
    const ChannelConfig* GetChannelConfig() const override { return &channelConfig_; }
    bool IsInputConnected(std::int32_t channel) const override;
    bool IsOutputConnected(std::int32_t channel) const override;
    bool IsHostInitialized() const override;
    bool IsHostProcessing() const override;
    void SetSampleRate(float rate) override;
    // Main thread; also while audio runs: the buffers of the audio call are rebuilt under an
    // AudioLock, which raises AppFrame::TimeOut if the audio thread does not leave in time. A
    // size below 1 raises AppFrame::BadParameter and changes nothing.
    void SetBlockSize(std::int32_t size) override;
    bool IsEditorOpen() const override;
    PluginUIRoot* GetEditor() const override { return editor_; }
    bool WantsEditorIdle() const override { return true; }
    void SetParameter(const ZORParameterInfo* info, float value) override;
    void SetParameterByIndex(std::int32_t index, float value) override;
    double GetParameterByIndex(std::int32_t index) override;
    void SetForceReport(bool force) override;
    float GetMeterValue(std::int32_t /*meterId*/) override { return 0.0f; }
    void ResetClipIndicators() override;

    // ---- Non-virtual operations ----

    // Main thread. The editor that is open on this instance, or null; not owned.
    void SetEditor(PluginUIRoot* editor) noexcept { editor_ = editor; }

    // Main thread. Shows the first message of the instance's life and no other: a bad chunk that
    // the host offers again does not pile up messages.
    void ShowErrorOnce(const char* first, const char* second, const char* third,
                       std::int32_t kind) noexcept;

    // Main thread. Raises (true) or lowers (false, never below 0) the audio suspension.
    void SuspendAudio(bool suspend) noexcept;

    // Any thread. Whether the audio thread is inside Process. Sequentially consistent, as the
    // audio lock's wait needs (see Process).
    bool IsInProcess() const noexcept { return inProcess_.load(std::memory_order_seq_cst); }

    // Main thread. The number of audio blocks that have entered the engine so far, read after
    // everything the calling thread wrote before: a block that this count leaves out entered
    // after those writes and sees them.
    std::uint64_t AudioBlocksEntered() const noexcept;

    // Any thread. The number of audio blocks that have left the engine; what a block read is
    // free once this count reaches the entries counted after it could no longer be reached.
    std::uint64_t AudioBlocksLeft() const noexcept {
        return processExits_.load(std::memory_order_acquire);
    }

    // Editor thread, from the editor's periodic pump. Brings the editor up to date with the host's
    // parameter changes since the last call; never touches the audio path.
    void DispatchPendingParameters();

    // Main thread. The engine's view options, which travel in its settings text. GetAttribute
    // makes an empty entry for a key it does not know.
    std::string& GetAttribute(const std::string& key);
    void SetAttribute(const std::string& key, const std::string& value);
    bool HasAttribute(const std::string& key) const;
    // Main thread. An attribute as a number: 0 when absent or not a number. Makes no entry.
    std::int32_t GetIntAttribute(const std::string& key) const;
    // Any thread. A number attribute of a settings line (GetIntLineAttribute).
    static std::int32_t GetIntAttribute(std::string_view line, std::string_view name);
    // Main thread. The attributes as their settings line, and read back from one.
    std::string FormatAttributes() const;
    void ParseAttributes(std::string_view line);

    // Main thread. Writes the engine's settings into `out` (WriteSettings and one line feed);
    // `out` is left alone when writing fails.
    void CaptureSettings(std::string& out);
    // Main thread. Loads a settings text into the engine, with the attributes emptied first and
    // no report reaching the host.
    void LoadSettings(const std::string& text);
    // Main thread. Reads a program document into the program names and settings. A document
    // without a header, or with a line too long for the format, is shown to the user and
    // refused with ProgramDocumentRefused; nothing is changed then.
    void LoadProgramDocument(const char* text);
    // Main thread. The program document of the names and settings as they are stored.
    std::string FormatProgramDocument() const;

    // Main thread. The host layer that owns this instance; null for an instance without one.
    PluginPlatform* GetPlatform() const noexcept { return platform_; }
    // Main thread. The product's description, held for the life of the instance.
    ZORPluginMetaClass& MetaClass() const noexcept { return *metaClass_.get(); }
    // Main thread. How many internal changes are under way.
    std::int32_t GetInternalDepth() const noexcept { return internalDepth_.Value(); }

  protected:
    // Main thread. A core for `platform` (not owned, may be null) with the channels of `config`;
    // its timers run on the system's clock.
    PluginCore(PluginPlatform* platform, const ChannelConfig& config);
    // Main thread. The same with timers, and the audio lock's wait, on `clock`: an offline tool's
    // or a test's.
    PluginCore(PluginPlatform* platform, const ChannelConfig& config, TickSource clock);

    // Main thread. Tells the host of a parameter change that the engine made, clamped into the
    // parameter's range; silent during internal changes unless forced, and silent for a value the
    // host has already heard unless `force` is set.
    virtual void ReportParameter(std::int32_t id, float value, bool force);
    // Main thread. The framework's own settings form: an XML archive with the settings metadata
    // and whatever WriteExtraSettings adds. An engine with a text of its own replaces both.
    virtual void WriteSettings(std::ostream& stream);
    virtual void ReadSettings(const std::string& text);
    // Host control thread. Applies a host change to the engine; true if the editor must follow.
    virtual bool ApplyParameter(const ZORParameterInfo* info, float value) = 0;
    // Editor thread. The editor's half of a host change.
    virtual void ApplyParameterToEditor(const ZORParameterInfo* info, float value) = 0;
    // Main thread. Hooks of SetSampleRate, in the order of the call.
    virtual void WillChangeSampleRate(float /*rate*/) {}
    virtual void DidChangeSampleRate(float /*rate*/) {}
    virtual void DidChangeSampleRateAndNotified() {}
    // Main thread. Hooks of SetBlockSize, in the order of the call.
    virtual void DidChangeBlockSize(std::int32_t /*size*/) {}
    virtual void DidChangeBlockSizeAndNotified() {}
    // Audio thread. The engine's audio: `samples` is at most the block size; never allocates,
    // locks, throws or reports.
    virtual void ProcessAudio(float** inputs, float** outputs, std::int32_t samples,
                              std::int32_t bypassState) noexcept = 0;
    // Main thread. What a product adds to, and reads from, the framework's settings archive.
    virtual void WriteExtraSettings(Serialization::Archive& /*archive*/) {}
    virtual void ReadExtraSettings(Serialization::Archive& /*archive*/,
                                   ZORPluginSettingsMetaData& /*metadata*/) {}

  private:
    // A reference to the process-wide meta class for the life of the instance.

    // One parameter's host value: the latest that the host sent, and the one the editor has.
    struct PendingValue {
        float applied = kUnknownValue;             // editor thread only
        std::atomic<float> latest{kUnknownValue};  // written by the control thread
    };

    PluginCore(PluginPlatform* platform, const ChannelConfig& config,
               std::unique_ptr<TimerManager> timers);
    void NameProgramsForProduct();
    void LoadFactoryPrograms();
    void ResetParameterRecords();
    void BuildAccumulateBuffers();
    bool HasProgramBank() const;
    std::string* SettingsTarget(std::string& local);
    std::int32_t ProgramCount() const noexcept;
    void LoadDocumentInto(const char* text, std::vector<std::string>& names,
                          std::vector<std::string>& settings);
    void ProcessBlock(float** inputs, float** outputs, std::int32_t samples, bool accumulate,
                      std::int32_t bypassMode) noexcept;
    void LeaveProcess() noexcept;
    void ProcessPieces(float** inputs, float** outputs, std::int32_t samples, bool accumulate,
                       std::int32_t bypassMode, std::int32_t pieceSize) noexcept;
    void CopyThrough(float** inputs, float** outputs, std::int32_t samples) const noexcept;
    void WriteSilence(float** outputs, std::int32_t samples) const noexcept;

    MetaClassReference metaClass_;

    // The fields of the core, in the order of its description.
    std::vector<std::string> programNames_;
    bool errorShown_ = false;
    std::unique_ptr<char[]> chunkBuffer_;  // the block last handed out by GetChunk
    std::vector<std::string> programSettings_;
    std::string defaultSettings_;
    std::int32_t currentProgram_ = 0;
    std::string productName_ = "<unset>";
    std::string preferencesName_;
    SettingsAttributes attributes_;
    PluginPlatform* platform_;
    std::int32_t blockSize_ = 1024;  // read by the audio thread only outside an AudioLock
    float sampleRate_ = 44100.0f;
    PluginUIRoot* editor_ = nullptr;
    std::int32_t pendingSeen_ = 0;  // editor thread only
    // Host parameter writes: the control thread publishes `latest` with a release increment, the
    // editor thread reads it after an acquire load.
    std::atomic<std::int32_t> pendingCount_{0};
    std::unique_ptr<PendingValue[]> pendingValues_;
    // Reported values; relaxed atomics, since the control thread resets them while the main
    // thread reports.
    std::unique_ptr<std::atomic<float>[]> lastReported_;
    std::int32_t parameterCount_ = 0;
    DepthCounter internalDepth_;
    DepthCounter forceReportDepth_;
    std::atomic<std::int32_t> echoParameter_{kNoParameter};
    DepthCounter audioSuspendDepth_;
    std::atomic<bool> inProcess_{false};
    std::atomic<std::uint64_t> processEntries_{0};  // counts the entries into the engine
    std::atomic<std::uint64_t> processExits_{0};    // and the exits from it
    std::int32_t bypassState_ = 0;  // audio thread only
    std::intptr_t sideChainInput_ = 0;
    std::vector<std::vector<float>> accumulateBuffers_;

    ChannelConfig channelConfig_;
    // Channel pointers for a block cut into pieces; sized at construction, so that Process never
    // allocates.
    std::vector<float*> inputPieces_;
    std::vector<float*> outputPieces_;
};

}  // namespace vorix
