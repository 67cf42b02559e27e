#include "hostlib/CEffectProcess.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

#include "framework/Exceptions.h"
#include "hostlib/CAdaptorPlugIn.h"
#include "hostlib/CPluginControl.h"
#include "hostlib/HostEntryGuard.h"
#include "hostlib/ValueText.h"

namespace vorix {
namespace {

// The name a control's value is filed under: its id's four characters, high byte first, up to a
// zero byte.
std::string ItemName(std::int32_t id) {
    std::string name;
    for (int shift = 24; shift >= 0; shift -= 8) {
        const char c = static_cast<char>((static_cast<std::uint32_t>(id) >> shift) & 0xFF);
        if (c == '\0') break;
        name.push_back(c);
    }
    return name;
}

// The control value an item stands for; none for a value that is not a number.
std::optional<std::int32_t> ItemControlValue(const ChunkDataParser::Item& item) {
    if (std::isnan(item.value)) return std::nullopt;
    const double rounded = std::floor(item.value + 0.5);
    return static_cast<std::int32_t>(std::clamp(rounded, -2147483648.0, 2147483647.0));
}

}  // namespace

CEffectProcess::CEffectProcess() {
    AddChunk(kControlsStateChunkId, kControlsStateChunkName);
}

CEffectProcess::~CEffectProcess() = default;

// ---- lifecycle ----

void CEffectProcess::EffectInit() {}

void CEffectProcess::EffectProcessStart() {
    SetProcessingFlag(true);
}

void CEffectProcess::EffectProcessEnd() {
    SetProcessingFlag(false);
}

// ---- controls ----

std::int32_t CEffectProcess::AddControl(std::unique_ptr<CPluginControl> control) {
    if (control == nullptr) VORIX_THROW(AppFrame::BadParameter);
    if (GetControlIndexFromID(control->GetID()) != kNoControl) {
        VORIX_THROW(AppFrame::DuplicateEntry);
    }
    control->SetControlValue(control->GetDefaultControlValue());
    controls_.push_back(std::move(control));
    return static_cast<std::int32_t>(controls_.size());
}

std::int32_t CEffectProcess::GetNumControls() const noexcept {
    return static_cast<std::int32_t>(controls_.size());
}

CPluginControl* CEffectProcess::GetControl(std::int32_t control) const noexcept {
    if (control < 1 || control > GetNumControls()) return nullptr;
    return controls_[static_cast<std::size_t>(control - 1)].get();
}

// ---- meters ----

void CEffectProcess::AddMeter(std::string name, std::int32_t position, std::int32_t kind) {
    meters_.push_back(MeterInfo{std::move(name), position, kind});
}

std::int32_t CEffectProcess::GetNumMeters() const noexcept {
    return static_cast<std::int32_t>(meters_.size());
}

const MeterInfo& CEffectProcess::GetMeterInfo(std::int32_t meter) const {
    if (meter < 0 || meter >= GetNumMeters()) VORIX_THROW(AppFrame::BadParameter);
    return meters_[static_cast<std::size_t>(meter)];
}

void CEffectProcess::GetMeters(std::span<std::int32_t> values, std::span<bool> clipped) {
    std::fill(values.begin(), values.end(), 0);
    std::fill(clipped.begin(), clipped.end(), false);
}

void CEffectProcess::ResetClipIndicators() {
    ClearClipIndicator();
}

bool CEffectProcess::IsClipIndicatorSet() const noexcept {
    return clipped_.load(std::memory_order_relaxed);
}

// ---- chunks ----

std::int32_t CEffectProcess::GetChunkSize(std::int32_t id, std::int32_t& size) {
    if (id != kControlsStateChunkId) return CDSPProcess::GetChunkSize(id, size);
    CollectControlsState();
    size = static_cast<std::int32_t>(parser_.GetChunkDataSize()) + PlugInChunk::kHeaderSize;
    return kNoErr;
}

std::int32_t CEffectProcess::GetChunk(std::int32_t id, PlugInChunk& chunk) {
    if (id != kControlsStateChunkId) return CDSPProcess::GetChunk(id, chunk);
    CollectControlsState();
    chunk.SetSize(static_cast<std::int32_t>(parser_.GetChunkDataSize()) + PlugInChunk::kHeaderSize);
    parser_.WriteChunkData(chunk.Payload());
    return kNoErr;
}

std::int32_t CEffectProcess::SetChunk(std::int32_t id, const PlugInChunk& chunk) {
    if (id != kControlsStateChunkId) return CDSPProcess::SetChunk(id, chunk);
    if (!parser_.ParseChunkData(chunk.Payload())) return kErrBadChunk;
    ApplyControlsState();
    return kNoErr;
}

void CEffectProcess::CollectControlsState() {
    parser_.Clear();
    for (const auto& control : controls_) {
        const std::string name = ItemName(control->GetID());
        if (control->IsContinuous() != 0) {
            parser_.AddDouble(name, control->GetControlValue());
        } else {
            parser_.AddLong(name, control->GetControlValue());
        }
    }
}

void CEffectProcess::ApplyControlsState() {
    for (std::int32_t control = 1; control <= GetNumControls(); ++control) {
        if (control == GetMasterBypassControlIndex()) continue;
        const auto item = parser_.Find(ItemName(GetControl(control)->GetID()));
        if (!item) continue;
        if (const auto value = ItemControlValue(*item)) SetControlValue(control, *value);
    }
}

// ---- render ----

std::int32_t CEffectProcess::RenderAudio(const RenderBlock& /*block*/) noexcept {
    return kErrNoRenderer;
}

void CEffectProcess::AttachAdaptor(std::unique_ptr<CAdaptorPlugIn> adaptor) noexcept {
    adaptor_ = std::move(adaptor);
}

// ---- IProcess and IProcess2 ----

std::int32_t CEffectProcess::Render(const RenderBlock& block) noexcept {
    return adaptor_ != nullptr ? adaptor_->Render(block) : RenderAudio(block);
}

std::int32_t CEffectProcess::StartProcessing() noexcept {
    return GuardHostEntry([&] {
        EffectProcessStart();
        return kNoErr;
    });
}

std::int32_t CEffectProcess::StopProcessing() noexcept {
    return GuardHostEntry([&] {
        EffectProcessEnd();
        return kNoErr;
    });
}

std::int32_t CEffectProcess::MeterName(std::int32_t meter, char* buffer,
                                       std::int32_t maxChars) const noexcept {
    if (meter < 0 || meter >= GetNumMeters()) return kErrBadIndex;
    if (buffer == nullptr || maxChars <= 0) return kErrBadArgument;
    CopyToBuffer(meters_[static_cast<std::size_t>(meter)].name, buffer, maxChars);
    return kNoErr;
}

std::int32_t CEffectProcess::ReadMeters(std::int32_t* values, bool* clipped,
                                        std::int32_t count) noexcept {
    if (count != GetNumMeters()) return kErrBadArgument;
    if (count > 0 && (values == nullptr || clipped == nullptr)) return kErrBadArgument;
    const auto size = static_cast<std::size_t>(count);
    return GuardHostEntry([&] {
        GetMeters(std::span(values, size), std::span(clipped, size));
        return kNoErr;
    });
}

std::int32_t CEffectProcess::ClearClipIndicators() noexcept {
    return GuardHostEntry([&] {
        ResetClipIndicators();
        return kNoErr;
    });
}

}  // namespace vorix
