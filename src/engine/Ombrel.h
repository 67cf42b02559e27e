#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <iosfwd>
#include <memory>
#include <string>

#include "core/DepthCounter.h"
#include "core/PluginCore.h"
#include "dsp/AudioPath.h"
#include "engine/FilterNumbering.h"
#include "dsp/FilterPool.h"
#include "engine/MeteringManager.h"
#include "engine/OmbrelMessageSubscriber.h"
#include "engine/VorixExtFilterControlManager.h"
#include "framework/BooleanController.h"
#include "framework/CentralController.h"
#include "framework/MessageSubscriber.h"

namespace vorix {

struct FilterSettingsDocument;

// The equalizer engine of one plug-in instance. It owns the filters, keeps two complete
// configurations for comparison (only the current one feeds the audio), owns the compensation
// gains, the meters and the automation slots, and announces every change on its class 'flrA'.
// The editor never edits a chain directly: it calls the operations below, or SetFilterParameter
// on a record the engine handed out, followed by NotifyFilterParameterChanged.
// Threads: every operation is main (editor or host) thread unless told; the audio thread enters
// only through Process. No operation here takes a lock: chains change by single pointer writes.
// The editor and a host's control thread both write filter records, so a host layer that delivers
// control changes on a thread of their own serialises them with the editor (the platform's mutex);
// the audio thread is never part of that.
class Ombrel : public PluginCore, public MessageSubscriber<Ombrel> {
  public:
    // The editor library makes the editor's frames; an engine built without it has no editor,
    // and the frame operations then answer null, which a host layer shows as "no view".
    using FrameMaker = Frame* (*)(Ombrel& engine, PluginUIRoot& root, Frame* parent);
    // Main thread, once, before any editor opens.
    static void SetFrameMakers(FrameMaker editor, FrameMaker about) noexcept;

    static constexpr int32_t kConfigurationCount = 2;
    // The hold of the meters, in ticks.
    static constexpr int32_t kMeterHoldTicks = 15;
    // Where the session-change counter starts again.
    static constexpr int32_t kDirtyCounterLimit = 1000000;
    // The compensation gain controls count half decibels.
    static constexpr int32_t kGainStepsPerDecibel = 2;
    static constexpr float kMaxCompensationDb = 24.0f;

    // Main thread. An engine for `platform` (not owned, may be null) with one channel for
    // (1, 1) and two otherwise; timers and meters run on the system's tick.
    Ombrel(PluginPlatform* platform, const ChannelConfig& config);
    // Main thread. The same with the timers and the meters on clocks of the caller's (tests,
    // offline tools).
    Ombrel(PluginPlatform* platform, const ChannelConfig& config, TickSource clock,
           MeterTickSource meterTicks);
    ~Ombrel() override;

    // Both bases reach the same services; the core's are the instance's own.
    using PluginCore::GetMessagingServer;
    using PluginCore::GetTimerManager;

    // ---- The core's operations ----
    void Start() override {}
    void ResetAudioState() override;
    Frame* CreateEditorFrame(PluginUIRoot& root, Frame* parent) override;
    Frame* CreateAboutFrame(PluginUIRoot& root, Frame* parent) override;
    EditorSize GetEditorSize() const override;
    bool WantsEditorIdle() const override { return false; }
    // Host or main thread. A parameter's value in host units.
    double GetParameter(const ZORParameterInfo* info) override;
    // Editor's timer thread. A meter's held peak as a linear ratio, -1 for an over, 0 for an
    // unknown meter.
    float GetMeterValue(int32_t meterId) override;
    void ResetClipIndicators() override;

    // ---- Filters of the current configuration ----

    // A new filter of `type` with its defaults (and its right half on stereo), announced; null
    // after telling the user when memory ran out or the type has no records.
    OpaqueFilterData* NewFilter(FilterType type);
    // Gives a record just appended to chain 0 its defaults, its partner, a number and a free
    // automation slot, and announces it.
    void AddFilter(OpaqueFilterData* filter);
    // Deletes a filter pair, or hollows out one half of a split pair whose other half lives on.
    void DeleteFilter(OpaqueFilterData* filter);
    // Makes a both-channel pair two independent halves; with `copy` the partner takes the
    // filter's parameters first.
    void SplitFilter(OpaqueFilterData* filter, bool copy);
    // Makes a split pair one both-channel filter with the parameters of `filter`; returns the
    // right-chain record.
    OpaqueFilterData* CombineFilter(OpaqueFilterData* filter);
    void SetFilterEnabled(OpaqueFilterData* filter, bool enabled);
    // Selects a filter (null selects none) and, unless `quiet`, makes it the one being edited.
    void SelectFilter(OpaqueFilterData* filter, bool quiet);
    // Solos a filter; null ends the solo.
    void SoloFilter(OpaqueFilterData* filter);
    // Whether a record (or its partner) stands in a chain of the current configuration; null is.
    bool IsFilterValid(const OpaqueFilterData* filter) const;
    // After the editor (or another path) changed parameter `bit` of `filter`: tells the host
    // through the filter's automation slot unless `external`, and announces the change.
    void NotifyFilterParameterChanged(OpaqueFilterData* filter, uint32_t bit, bool external);

    // ---- Configurations ----
    void SelectConfiguration(int32_t index, bool announce);
    // Empties the current configuration; with `notify` the session counts as changed.
    void ClearConfiguration(bool notify);
    // Rebuilds configuration `target` as a copy of `source`, numbers and slots included.
    void CopyConfiguration(int32_t source, int32_t target);
    int32_t CurrentConfiguration() const noexcept;

    // ---- What the editor and the host layer read ----
    int32_t Channels() const noexcept { return channels_; }
    // The chain of `channel` in the current configuration; null for a channel the engine lacks.
    FilterChain* Chain(int32_t channel) const noexcept;
    OpaqueFilterData* SelectedFilter() const noexcept;
    OpaqueFilterData* Solo() const noexcept;
    // The number by which the user knows the filter's pair; 0 for a record without one.
    int32_t FilterNumber(const OpaqueFilterData* filter) const;
    // The automation slots of the current configuration.
    VorixExtFilterControlManager& ControlManager() const noexcept;
    // The compensation gain control of a configuration and channel, in half decibels.
    CentralController& CompensationGain(int32_t configuration, int32_t channel) const;
    // The gain link of a configuration; null on a mono engine.
    BooleanController* GainLink(int32_t configuration) const;
    // Any thread. The session-change counter.
    int32_t DirtyCounter() const noexcept { return dirtyCounter_.load(std::memory_order_relaxed); }
    // The next document read adds its filters to the current configuration instead of
    // replacing them; one load only.
    void SetMergeOnLoad(bool merge) noexcept { mergeOnLoad_ = merge; }
    // Main thread, before audio runs. Which kernels run the chains (both give the same bits).
    void SetChainKernels(ChainKernels kernels) noexcept { audio_.kernels = kernels; }
    // Tells the host of an automation slot's value (parameter index 0 to 29). Main thread.
    void ReportControlValue(int32_t index, float value);

  protected:
    // The filter settings document of the current configuration.
    void WriteSettings(std::ostream& stream) override;
    // Replaces the current configuration by a document (or adds to it, see SetMergeOnLoad). A
    // bad document is shown to the user and raises InvalidSettingsData; the previous filters
    // then keep working untouched.
    void ReadSettings(const std::string& text) override;
    bool ApplyParameter(const ZORParameterInfo* info, float value) override;
    void ApplyParameterToEditor(const ZORParameterInfo* info, float value) override;
    void WillChangeSampleRate(float rate) override;
    void DidChangeSampleRate(float rate) override;
    void DidChangeSampleRateAndNotified() override;
    void DidChangeBlockSize(int32_t size) override;
    void ProcessAudio(float** inputs, float** outputs, int32_t samples,
                      int32_t bypassState) noexcept override;
    // The session changed in a way the host's parameters do not show: counts it and tells the
    // host through 'dirt'.
    virtual void SettingsChanged();

  private:
    // Turns the structural changes of the filters into the host-visible session counter.
    class VorixDirtyMonitor : public OmbrelMessageSubscriber {
      public:
        explicit VorixDirtyMonitor(Ombrel* engine) : OmbrelMessageSubscriber(engine) {}

      protected:
        void HandleFilterMessage(MsgId msgId) override;
        void HandleConfigMessage(MsgId /*msgId*/) override {}
    };

    // What one configuration holds besides its chains, which live in the audio state.
    struct Configuration {
        std::unique_ptr<CentralController> gain[2];
        std::unique_ptr<BooleanController> gainLink;  // stereo only
        FilterNumbering numbering;
        OpaqueFilterData* selectedFilter = nullptr;
        std::unique_ptr<VorixExtFilterControlManager> controls;
        std::string textBuffer;  // the document kept across a change of sample rate
    };

    void Construct(MeterTickSource meterTicks);
    void SubscribeToControls();
    void FillDefaultFilters();
    void SetUpBuffers();
    Configuration& Current() const noexcept;
    FilterChain* ChainOf(int32_t configuration, int32_t channel) const noexcept;

    void ApplyFilterDefaults(OpaqueFilterData* filter);
    void AssignFreeSlot(OpaqueFilterData* filter);
    void RemovePair(OpaqueFilterData* filter);
    void ClearSolo();
    void ReleaseChains(FilterChain* chains[2]);
    void InstallChains(int32_t configuration, FilterChain* chains[2]);
    void RetireRecord(FilterChain* chain, OpaqueFilterData* filter);
    void ReclaimRetired();

    void WriteConfiguration(std::ostream& stream, int32_t configuration);
    void ReadConfiguration(const std::string& text, int32_t configuration);
    void BuildConfiguration(const FilterSettingsDocument& document, int32_t configuration,
                            bool merge);
    void ApplyDocumentGains(const FilterSettingsDocument& document, int32_t configuration);

    // A gain in the controls' half-decibel steps: clamped to the range, truncated toward 0, and 0
    // for what is not a number.
    static int32_t GainSteps(float decibels) noexcept;
    static float GainDecibels(int32_t steps) noexcept {
        return static_cast<float>(steps) / kGainStepsPerDecibel;
    }
    bool ApplyGain(int32_t id, float decibels);
    void OnGainControl(MsgId msgId);
    void FollowGainLink(int32_t configuration, int32_t changedChannel);
    void UpdateAudioGains(int32_t configuration);
    void ReportGains(bool bothSides);
    void BumpDirtyCounter();

    int32_t channels_;
    std::array<Configuration, kConfigurationCount> configurations_;
    FilterPool pool_;
    AudioPathState audio_;
    std::unique_ptr<MeteringManager> meters_[2];
    MeterClient* meterClients_[2] = {nullptr, nullptr};
    std::atomic<int32_t> dirtyCounter_{0};
    bool mergeOnLoad_ = false;
    // Held while the engine binds a new filter to a slot: the host's answers to the reports are
    // echoes, not automation.
    DepthCounter controlEchoHold_;
    std::unique_ptr<VorixDirtyMonitor> dirtyMonitor_;
};

}  // namespace vorix
