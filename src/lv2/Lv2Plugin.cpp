// The instance's life and its audio: set-up as the product's host layer does it, the ports, the
// hand-off of control changes, and run().

#include "lv2/Lv2Plugin.h"

#include <lv2/atom/atom.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <mutex>
#include <stdexcept>
#include <vector>

#include "core/BypassState.h"
#include "lv2/Lv2Names.h"

namespace vorix {

namespace {

constexpr const char* kParameterNotApplied = "A parameter change could not be applied.";

// The block size the core is given: the host's largest block, but never beyond the longest piece
// the core is built for, and the longest piece when the host does not say.
std::int32_t CoreBlockSize(std::int32_t maxBlockLength) {
    if (maxBlockLength <= 0) return Lv2Plugin::kLongestPiece;
    return std::min(maxBlockLength, Lv2Plugin::kLongestPiece);
}

ChannelConfig ConfigOf(std::int32_t channels) {
    if (channels != 1 && channels != 2) throw std::invalid_argument("channels");
    return ChannelConfig{channels, channels};
}

// The engine reads an over as -1, its clip sign; a host's meter shows it as full scale.
float MeterPortValue(float level) noexcept {
    return level < 0.0f ? 1.0f : level;
}

}  // namespace

Lv2Plugin::Lv2Plugin(std::int32_t channels, double sampleRate, const Lv2HostFeatures& features)
    : log_(metaClass_.get()->GetProductName(), features.log, features.map),
      platform_(channels, static_cast<float>(sampleRate), CoreBlockSize(features.maxBlockLength),
                log_),
      core_(metaClass_.get()->CreateCore(&platform_, ConfigOf(channels))),
      layout_(channels, metaClass_.get()->GetParameterCount()),
      controls_(*metaClass_),
      worker_(features.worker) {
    if (features.map != nullptr) {
        settingsKey_ = features.map->map(features.map->handle, kLv2SettingsKeyUri);
        portValuesKey_ = features.map->map(features.map->handle, kLv2PortValuesKeyUri);
        stringType_ = features.map->map(features.map->handle, LV2_ATOM__String);
    }
    parameterOutputs_.assign(static_cast<std::size_t>(layout_.Parameters()), nullptr);
    std::vector<ZORMeterInfo> meters;
    metaClass_.get()->GetMeterNames(ConfigOf(channels), meters);
    for (std::size_t c = 0; c < meters.size() && c < meterIds_.size(); ++c)
        meterIds_[c] = meters[c].id;
    // The order in which the product's host layer sets a new core up.
    core_->CaptureDefaultSettings();
    core_->ResetAudioState();
    core_->SetSampleRate(platform_.GetSampleRate());
    core_->SetBlockSize(platform_.GetBlockSize());
    core_->Start();
    platform_.SetInitialized();
}

Lv2Plugin::~Lv2Plugin() {
    try {
        core_->ResetAudioState();
        core_->Stop();
    } catch (...) {
        // The instance goes anyway; the host has nobody left to tell.
    }
}

void Lv2Plugin::ConnectPort(std::uint32_t index, void* data) noexcept {
    auto* buffer = static_cast<float*>(data);
    const Lv2PortSlot slot = layout_.SlotOf(index);
    const auto number = static_cast<std::size_t>(slot.number);
    switch (slot.role) {
        case Lv2PortRole::AudioInput:
            inputs_[number] = buffer;
            break;
        case Lv2PortRole::AudioOutput:
            outputs_[number] = buffer;
            break;
        case Lv2PortRole::Parameter:
            if (Lv2ControlInputs::IsHostInput(*metaClass_.get()->GetParameterInfo(slot.number))) {
                controls_.Connect(slot.number, buffer);
            } else {
                parameterOutputs_[number] = buffer;
            }
            break;
        case Lv2PortRole::Enabled:
            enabled_ = buffer;
            break;
        case Lv2PortRole::Meter:
            meters_[number] = buffer;
            break;
        case Lv2PortRole::Latency:
            latency_ = buffer;
            break;
        case Lv2PortRole::None:
            break;
    }
}

void Lv2Plugin::Activate() noexcept {
    try {
        core_->ResetAudioState();
    } catch (...) {
        // Clearing memories does not fail; should it, the old ones ring out.
    }
    platform_.SetActivated(true);
}

void Lv2Plugin::Deactivate() noexcept {
    platform_.SetActivated(false);
}

void Lv2Plugin::Run(std::uint32_t samples) noexcept {
    controls_.Scan(
        [this](std::int32_t index, float value) { ApplyParameter(index, value); },
        [this](std::int32_t index, float value) { return DeferParameter(index, value); });
    const auto count = static_cast<std::int32_t>(
        std::min<std::uint32_t>(samples, std::numeric_limits<std::int32_t>::max()));
    core_->Process(inputs_.data(), outputs_.data(), count, false, BypassMode());
    WriteOutputPorts();
}

// Only parameters that Lv2ControlInputs lets through on the audio thread arrive here: the core's
// path for them is atomics and a seqlock write into the filter records.
void Lv2Plugin::ApplyParameter(std::int32_t index, float value) noexcept {
    try {
        core_->SetParameterByIndex(index, value);
    } catch (...) {
        // This path does not throw; a failure would leave the parameter where it was.
    }
}

// Without a worker the change is made here, if the engine is free at once; if a state save
// holds it, the port is offered again at the next run(), as when a worker's queue is full. So
// run() never waits, with a worker or without.
bool Lv2Plugin::DeferParameter(std::int32_t index, float value) noexcept {
    if (worker_ == nullptr) {
        std::unique_lock lock(engineMutex_, std::try_to_lock);
        if (!lock.owns_lock()) return false;
        try {
            core_->SetParameterByIndex(index, value);
        } catch (...) {
            // The trims' path does not throw; should it, the trim stays where it was.
        }
        return true;
    }
    const Lv2ParameterChange change{index, value, restoreCount_.load(std::memory_order_relaxed)};
    return worker_->schedule_work(worker_->handle, sizeof change, &change) == LV2_WORKER_SUCCESS;
}

LV2_Worker_Status Lv2Plugin::Work(std::uint32_t size, const void* data) noexcept {
    if (data == nullptr || size != sizeof(Lv2ParameterChange)) return LV2_WORKER_ERR_UNKNOWN;
    Lv2ParameterChange change{};
    std::memcpy(&change, data, sizeof change);
    try {
        const std::lock_guard lock(engineMutex_);
        // A state restored since run() handed this over replaced the engine's settings; the
        // port's value before it is no longer news.
        if (change.restoreCount != restoreCount_.load(std::memory_order_relaxed)) {
            return LV2_WORKER_SUCCESS;
        }
        core_->SetParameterByIndex(change.index, controls_.Clamp(change.index, change.value));
    } catch (...) {
        log_.Error(kParameterNotApplied);
    }
    return LV2_WORKER_SUCCESS;
}

// A switch that is not a number keeps its last position.
std::int32_t Lv2Plugin::BypassMode() noexcept {
    if (enabled_ != nullptr && !std::isnan(*enabled_)) enabledLast_ = *enabled_ > 0.5f;
    return enabledLast_ ? kBypassModeActive : kBypassModeEngineKept;
}

void Lv2Plugin::WriteOutputPorts() noexcept {
    for (std::int32_t c = 0; c < layout_.Channels(); ++c) {
        const auto channel = static_cast<std::size_t>(c);
        if (meters_[channel] != nullptr) {
            *meters_[channel] = MeterPortValue(core_->GetMeterValue(meterIds_[channel]));
        }
    }
    // The session counter, the one row that is an output, is an atomic load in the engine.
    for (std::size_t index = 0; index < parameterOutputs_.size(); ++index) {
        if (parameterOutputs_[index] == nullptr) continue;
        *parameterOutputs_[index] =
            static_cast<float>(core_->GetParameterByIndex(static_cast<std::int32_t>(index)));
    }
    if (latency_ != nullptr) *latency_ = static_cast<float>(platform_.GetInitialDelay());
}

}  // namespace vorix
