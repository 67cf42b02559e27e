// The engine's life: construction in its fixed order, buffers, sample rate and block size, meters,
// the editor's frames, and the audio call.

#include "engine/Ombrel.h"

#include <algorithm>
#include <sstream>

#include "core/AudioLock.h"
#include "dsp/FilterChainOps.h"
#include "dsp/FilterParameters.h"
#include "engine/OmbrelMessages.h"
#include "engine/VorixParameterIds.h"
#include "framework/MessageBatch.h"

namespace vorix {

namespace {

// The compensation gain controls of the two configurations, left and right, and their links.
constexpr uint32_t kGainControlIds[2][2] = {{FourCC("L1ga"), FourCC("R1ga")},
                                            {FourCC("L2ga"), FourCC("R2ga")}};
constexpr uint32_t kLinkControlIds[2] = {FourCC("g1Lk"), FourCC("g2Lk")};
constexpr int32_t kMaxGainSteps = 48;

// The editor's size, fixed by its artwork.
constexpr EditorSize kEditorSize{585, 450};

Ombrel::FrameMaker gEditorFrameMaker = nullptr;
Ombrel::FrameMaker gAboutFrameMaker = nullptr;

int32_t ChannelsOf(const ChannelConfig& config) {
    return config.outputs == 1 ? 1 : 2;
}

Ticks SystemMeterTicks() noexcept {
    return GetTicks();
}

}  // namespace

void Ombrel::SetFrameMakers(FrameMaker editor, FrameMaker about) noexcept {
    gEditorFrameMaker = editor;
    gAboutFrameMaker = about;
}

Ombrel::Ombrel(PluginPlatform* platform, const ChannelConfig& config)
    : PluginCore(platform, config),
      MessageSubscriber(static_cast<PluginServices*>(this)),
      channels_(ChannelsOf(config)) {
    Construct(&SystemMeterTicks);
}

Ombrel::Ombrel(PluginPlatform* platform, const ChannelConfig& config, TickSource clock,
               MeterTickSource meterTicks)
    : PluginCore(platform, config, std::move(clock)),
      MessageSubscriber(static_cast<PluginServices*>(this)),
      channels_(ChannelsOf(config)) {
    Construct(meterTicks);
}

void Ombrel::Construct(MeterTickSource meterTicks) {
    audio_.channels = channels_;
    const bool stereo = channels_ == 2;
    for (int32_t c = 0; c < kConfigurationCount; ++c) {
        Configuration& configuration = configurations_[static_cast<size_t>(c)];
        configuration.controls = std::make_unique<VorixExtFilterControlManager>(this, this);
        for (int32_t channel = 0; channel < 2; ++channel) {
            configuration.gain[channel] = std::make_unique<CentralController>(
                this, -kMaxGainSteps, kMaxGainSteps, 0, kGainControlIds[c][channel], nullptr);
        }
        if (stereo) {
            configuration.gainLink =
                std::make_unique<BooleanController>(this, 1, kLinkControlIds[c], nullptr);
        }
    }
    Publish(kFilterMsgClass);
    SubscribeToControls();
    FillDefaultFilters();
    SelectFilter(FirstFilter(Chain(0)), true);
    for (int32_t c = 0; c < channels_; ++c) {
        meters_[c] = std::make_unique<MeteringManager>(true, meterTicks);
        meterClients_[c] = meters_[c]->AddClient();
        meterClients_[c]->SetHold(kMeterHoldTicks);
        audio_.meters[c] = meters_[c].get();
    }
    SetUpBuffers();
    dirtyMonitor_ = std::make_unique<VorixDirtyMonitor>(this);
}

// Each configuration starts with a low shelf, a parametric and a high shelf.
void Ombrel::FillDefaultFilters() {
    for (int32_t c = 0; c < kConfigurationCount; ++c) {
        for (int32_t channel = 0; channel < channels_; ++channel) {
            audio_.configurations[c].chains[channel].store(AcquireFilterChain(&pool_),
                                                           std::memory_order_release);
        }
        audio_.currentConfiguration.store(c, std::memory_order_release);
        for (FilterType type : {kLowShelf, kParametric, kHiShelf})
            NewFilter(type);
    }
    audio_.currentConfiguration.store(0, std::memory_order_release);
}

Ombrel::~Ombrel() {
    // The subscribers go before the classes and controls they listen to.
    dirtyMonitor_.reset();
    for (int32_t c = 0; c < kConfigurationCount; ++c) {
        for (int32_t channel = 0; channel < 2; ++channel) {
            FilterChain* chain = ChainOf(c, channel);
            while (OpaqueFilterData* filter = FirstFilter(chain))
                ReleaseFilter(chain, filter);
        }
    }
}

// ---- Buffers, rate and block size ----

// The work buffers are rebuilt while the audio thread is held off.
void Ombrel::SetUpBuffers() {
    {
        const AudioLock lock(*this);
        SetUpAudioBuffers(audio_, GetBlockSize(), GetSampleRate());
    }
    Send(kFilterMsgClass, kNewSetMsg, 0, 0, nullptr);
}

// A filter keeps its frequency in Hz across a change of rate: both configurations go out as
// documents at the old rate and come back at the new one.
void Ombrel::WillChangeSampleRate(float /*rate*/) {
    Send(kFilterMsgClass, kSaveAttributesMsg, 0, 0, nullptr);
    const MessageBatch batch(*this, kFilterMsgClass);
    for (int32_t c = 0; c < kConfigurationCount; ++c) {
        std::ostringstream text;
        WriteConfiguration(text, c);
        configurations_[static_cast<size_t>(c)].textBuffer = std::move(text).str();
    }
}

void Ombrel::DidChangeSampleRate(float /*rate*/) {
    ClearConfiguration(false);
    SetUpBuffers();
}

void Ombrel::DidChangeSampleRateAndNotified() {
    {
        const MessageBatch batch(*this, kFilterMsgClass);
        for (int32_t c = 0; c < kConfigurationCount; ++c) {
            std::string& text = configurations_[static_cast<size_t>(c)].textBuffer;
            try {
                ReadConfiguration(text, c);
            } catch (...) {
                // Shown where it arose; the configuration stays as the clear left it.
            }
            std::string().swap(text);
        }
    }
    SelectConfiguration(CurrentConfiguration(), true);
}

void Ombrel::DidChangeBlockSize(int32_t /*size*/) {
    SetUpBuffers();
}

// ---- Audio state, meters and frames ----

void Ombrel::ResetAudioState() {
    for (int32_t c = 0; c < kConfigurationCount; ++c) {
        for (int32_t channel = 0; channel < channels_; ++channel) {
            for (OpaqueFilterData* f = FirstFilter(ChainOf(c, channel)); f != nullptr;
                 f = NextFilter(f)) {
                ResetFilterState(f);
            }
        }
    }
    for (int32_t c = 0; c < channels_; ++c)
        meters_[c]->Reset();
}

float Ombrel::GetMeterValue(int32_t meterId) {
    MeterClient* client = nullptr;
    if (meterId == kFirstOutputMeterId) client = meterClients_[0];
    if (meterId == kSecondOutputMeterId) client = meterClients_[1];
    if (client == nullptr) return 0.0f;
    const float value = client->Read();
    // An over reads as -1: the meter's clip sign.
    return value > 1.0f ? -1.0f : value;
}

void Ombrel::ResetClipIndicators() {
    PluginCore::ResetClipIndicators();
    for (int32_t c = 0; c < channels_; ++c)
        meters_[c]->Reset();
}

Frame* Ombrel::CreateEditorFrame(PluginUIRoot& root, Frame* parent) {
    return gEditorFrameMaker != nullptr ? gEditorFrameMaker(*this, root, parent) : nullptr;
}

Frame* Ombrel::CreateAboutFrame(PluginUIRoot& root, Frame* parent) {
    return gAboutFrameMaker != nullptr ? gAboutFrameMaker(*this, root, parent) : nullptr;
}

EditorSize Ombrel::GetEditorSize() const {
    return kEditorSize;
}

void Ombrel::ProcessAudio(float** inputs, float** outputs, int32_t samples,
                          int32_t bypassState) noexcept {
    ProcessAudioPath(audio_, inputs, outputs, samples, bypassState);
}

// ---- Views ----

int32_t Ombrel::CurrentConfiguration() const noexcept {
    return audio_.currentConfiguration.load(std::memory_order_relaxed) & 1;
}

Ombrel::Configuration& Ombrel::Current() const noexcept {
    return const_cast<Configuration&>(configurations_[static_cast<size_t>(CurrentConfiguration())]);
}

FilterChain* Ombrel::ChainOf(int32_t configuration, int32_t channel) const noexcept {
    if (channel < 0 || channel >= channels_) return nullptr;
    return audio_.configurations[configuration & 1].chains[channel].load(std::memory_order_acquire);
}

FilterChain* Ombrel::Chain(int32_t channel) const noexcept {
    return ChainOf(CurrentConfiguration(), channel);
}

OpaqueFilterData* Ombrel::SelectedFilter() const noexcept {
    return Current().selectedFilter;
}

OpaqueFilterData* Ombrel::Solo() const noexcept {
    return audio_.soloFilter.load(std::memory_order_relaxed);
}

int32_t Ombrel::FilterNumber(const OpaqueFilterData* filter) const {
    return FilterNumberOf(Current().numbering, filter);
}

VorixExtFilterControlManager& Ombrel::ControlManager() const noexcept {
    return *Current().controls;
}

CentralController& Ombrel::CompensationGain(int32_t configuration, int32_t channel) const {
    return *configurations_[static_cast<size_t>(configuration & 1)].gain[channel & 1];
}

BooleanController* Ombrel::GainLink(int32_t configuration) const {
    return configurations_[static_cast<size_t>(configuration & 1)].gainLink.get();
}

}  // namespace vorix
