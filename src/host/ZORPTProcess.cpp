#include "host/ZORPTProcess.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <tuple>

#include "core/PluginCore.h"
#include "framework/Exceptions.h"
#include "framework/ScopeGuards.h"
#include "host/HostMessageService.h"
#include "host/ParameterControls.h"
#include "host/RTASPluginMetaClassInterface.h"
#include "hostlib/CPluginControl_Continuous.h"
#include "hostlib/CPluginControl_Discrete.h"

namespace vorix {
namespace {

const RTASPluginMetaClassInterface& HostDescriptionOf(const ZORPluginMetaClass& metaClass) {
    const auto* description = dynamic_cast<const RTASPluginMetaClassInterface*>(&metaClass);
    if (description == nullptr) VORIX_THROW(ZORPluginMetaClass::NoMetaClass);
    return *description;
}

// The host lists meters by where it shows them: those of position 0, then 2, then 1, each group
// in the product's order.
constexpr std::int32_t kMeterPositionOrder[] = {0, 2, 1};

// Beyond every step of a whole-number control, and inside the range of a 64-bit conversion.
constexpr double kWholeNumberLimit = 4294967296.0;

}  // namespace

ZORPTProcess::ZORPTProcess()
    : zeroInput_(static_cast<std::size_t>(kBlockSize), 0.0f),
      scratchOutput_(static_cast<std::size_t>(kBlockSize), 0.0f) {
    std::string chunkName;
    hasPluginChunk_ = HostDescriptionOf(*metaClass_).GetChunkInfo(chunkId_, chunkName);
    if (hasPluginChunk_) AddChunk(chunkId_, std::move(chunkName), kChunkSizeUnknown);
    if (const ShowPlugInMessageProc entry = HostMessageService::FindHostEntry()) {
        messages_ = std::make_unique<HostMessageService>(*this, entry);
    }
}

ZORPTProcess::~ZORPTProcess() {
    if (coreReady_) StopCore();
    hostInitialized_ = false;
    initDone_ = false;
}

void ZORPTProcess::StopCore() noexcept {
    try {
        core_->ResetAudioState();
        core_->Stop();
    } catch (...) {
        // The engine goes either way; nothing is left to tell the host.
    }
    core_.reset();
    coreReady_ = false;
}

// ---- lifecycle ----

void ZORPTProcess::EffectInit() {
    blockSize_ = kBlockSize;
    sampleRate_ = CProcess::GetSampleRate();
    channels_ = ChannelConfig{CDSPProcess::GetInputCount(), CDSPProcess::GetOutputCount()};
    hostName_ = kHostName;
    if (!IsNativeHost()) hostName_ += kExternalHardwareSuffix;

    const MetaClassReference metaClass;
    StartCore(*metaClass);
    sideChainSupported_ = HostDescriptionOf(*metaClass).HasSideChain();
    AddControl(
        std::make_unique<CPluginControl_OnOff>(kMasterBypassId, kMasterBypassNameSet, false, true));
    DefineMasterBypassControlIndex(kMasterBypassControl);
    AddParameterControls(*metaClass);
    AddMeters(*metaClass);
}

void ZORPTProcess::StartCore(ZORPluginMetaClass& metaClass) {
    if (coreReady_) StopCore();
    core_ = metaClass.CreateCore(this, channels_);
    if (core_ == nullptr) VORIX_THROW(AppFrame::ResAlloc);
    core_->CaptureDefaultSettings();
    coreReady_ = true;
    core_->ResetAudioState();
    core_->SetSampleRate(static_cast<float>(sampleRate_));
    core_->SetBlockSize(blockSize_);
    core_->Start();
    hostInitialized_ = true;
    initDone_ = true;
}

// Each parameter becomes control index + 2 and starts at the engine's value, or at the table's
// default when the engine's value lies outside the table's range.
void ZORPTProcess::AddParameterControls(ZORPluginMetaClass& metaClass) {
    parameterCount_ = metaClass.GetParameterCount();
    controlHighlights_.assign(static_cast<std::size_t>(parameterCount_ + 2), {0, 0});
    std::string nameSet;
    for (std::int32_t index = 0; index < parameterCount_; ++index) {
        const ZORParameterInfo* info = metaClass.GetParameterInfo(index);
        if (info == nullptr) VORIX_THROW(AppFrame::BadParameter);
        double value = core_->GetParameterByIndex(index);
        if (!(value >= info->min && value <= info->max)) value = info->defaultValue;
        metaClass.GetControlNameSet(nameSet, info->id, channels_);
        AddControl(MakeParameterControl(*info, value, nameSet));
    }
}

void ZORPTProcess::AddMeters(const ZORPluginMetaClass& metaClass) {
    std::vector<ZORMeterInfo> meters;
    metaClass.GetMeterNames(channels_, meters);
    for (const std::int32_t position : kMeterPositionOrder) {
        for (const ZORMeterInfo& meter : meters) {
            if (meter.position != position) continue;
            AddMeter(meter.name, meter.position, meter.kind);
            meterIds_.push_back(meter.id);
        }
    }
}

void ZORPTProcess::EffectProcessStart() {
    processing_ = true;
    CEffectProcess::EffectProcessStart();
}

void ZORPTProcess::EffectProcessEnd() {
    processing_ = false;
    CEffectProcess::EffectProcessEnd();
}

// ---- parameters both ways ----

void ZORPTProcess::UpdateControlValueInAlgorithm(std::int32_t control) {
    const std::int32_t index = control - kFirstParameterControl;
    if (control < kMasterBypassControl || index > parameterCount_ - 1 || core_ == nullptr) return;
    const CPluginControl* changed = GetControl(control);
    const auto* discrete = dynamic_cast<const CPluginControl_Discrete*>(changed);
    if (control == kMasterBypassControl) {
        if (discrete != nullptr) {
            masterBypass_.store(discrete->ControlToValue(changed->GetControlValue()) != 0,
                                std::memory_order_relaxed);
        }
        return;
    }
    float value = 0.0f;
    if (const auto* continuous = dynamic_cast<const CPluginControl_Continuous*>(changed)) {
        value = static_cast<float>(continuous->ControlToReal(changed->GetControlValue()));
    } else if (discrete != nullptr) {
        value = static_cast<float>(discrete->ControlToValue(changed->GetControlValue()));
    } else {
        return;
    }
    const MetaClassReference metaClass;
    core_->SetParameter((*metaClass).GetParameterInfo(index), value);
}

void ZORPTProcess::ParameterChanged(std::int32_t index, float value) {
    try {
        const std::int32_t control = index + kFirstParameterControl;
        CPluginControl* changed = GetControl(control);
        if (changed == nullptr || std::isnan(value)) return;
        std::int32_t controlValue = 0;
        if (const auto* continuous = dynamic_cast<const CPluginControl_Continuous*>(changed)) {
            controlValue = continuous->RealToControl(value);
        } else if (const auto* discrete = dynamic_cast<const CPluginControl_Discrete*>(changed)) {
            const double whole = std::trunc(static_cast<double>(value));
            controlValue = discrete->ValueToControl(static_cast<std::int64_t>(
                std::clamp(whole, -kWholeNumberLimit, kWholeNumberLimit)));
        } else {
            return;
        }
        SetControlValue(control, controlValue);
    } catch (...) {
        // A report that fails is lost; the editor that made it must go on.
    }
}

ErrorMessageService* ZORPTProcess::GetErrorMessageService() const {
    return messages_.get();
}

void ZORPTProcess::GetDelaySamplesLatency(std::int32_t& samples) {
    samples = initialDelay_;
}

// ---- chunks ----

std::pair<const void*, std::int32_t> ZORPTProcess::CoreChunk() {
    if (core_ == nullptr) return {nullptr, 0};
    void* data = nullptr;
    const std::int32_t size = core_->GetChunk(&data, true);
    if (data == nullptr || size < 1) return {nullptr, 0};
    return {data, size};
}

std::int32_t ZORPTProcess::GetChunkSize(std::int32_t id, std::int32_t& size) {
    if (!IsPluginChunk(id)) return CEffectProcess::GetChunkSize(id, size);
    const auto [data, length] = CoreChunk();
    if (data == nullptr) return kErrFailed;
    size = length + PlugInChunk::kHeaderSize;
    return kNoErr;
}

// The engine makes its settings text again: what the host measured a moment ago may have
// changed since.
std::int32_t ZORPTProcess::GetChunk(std::int32_t id, PlugInChunk& chunk) {
    if (!IsPluginChunk(id)) return CEffectProcess::GetChunk(id, chunk);
    const auto [data, length] = CoreChunk();
    if (data == nullptr) return kErrFailed;
    chunk.SetSize(length + PlugInChunk::kHeaderSize);
    std::memcpy(chunk.Payload().data(), data, static_cast<std::size_t>(length));
    return kNoErr;
}

// Restored settings stand as the engine read them, and the host's controls must show them: the
// engine's reports during the load, which a program load otherwise keeps to itself, go out to
// the controls. The host's echo of each report stops at the core, so the engine keeps its exact
// values rather than the controls' rounded ones.
std::int32_t ZORPTProcess::SetChunk(std::int32_t id, const PlugInChunk& chunk) {
    if (IsPluginChunk(id)) {
        const auto payload = chunk.Payload();
        if (core_ != nullptr) {
            core_->SetForceReport(true);
            const ScopeExit endOfReports([this] { core_->SetForceReport(false); });
            core_->SetChunk(payload.data(), static_cast<std::int32_t>(payload.size()), true);
        }
        return kNoErr;
    }
    if (id == kControlsStateId && core_ != nullptr) core_->WillLoadControlsState();
    return CEffectProcess::SetChunk(id, chunk);
}

// ---- highlights ----

void ZORPTProcess::SetControlHighlightInfo(std::int32_t control, std::int16_t on,
                                           std::int16_t colour) {
    if (control <= kMasterBypassControl || control > parameterCount_ + 1) return;
    controlHighlights_[static_cast<std::size_t>(control)] = {on, colour};
}

void ZORPTProcess::GetControlHighlightInfo(std::int32_t control, std::int16_t& on,
                                           std::int16_t& colour) {
    on = 0;
    colour = 0;
    if (control < 0 || control >= static_cast<std::int32_t>(controlHighlights_.size())) return;
    std::tie(on, colour) = controlHighlights_[static_cast<std::size_t>(control)];
}

}  // namespace vorix
