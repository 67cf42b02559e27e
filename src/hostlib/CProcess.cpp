#include "hostlib/CProcess.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "framework/Exceptions.h"
#include "hostlib/CPlugInView.h"
#include "hostlib/CPluginControl.h"
#include "hostlib/CProcessGroup.h"
#include "hostlib/CProcessType.h"
#include "hostlib/HostEntryGuard.h"
#include "hostlib/ValueText.h"

namespace vorix {

CProcess::~CProcess() {
    if (group_ != nullptr) group_->RemoveProcess(*this);
}

void CProcess::Connect(CProcessType& type, const ProcessSetup& setup) {
    type_ = &type;
    group_ = type.GetGroup();
    host_ = setup.host;
    sampleRate_ = setup.sampleRate;
    nativeHost_ = setup.nativeHost;
    if (group_ != nullptr) group_->AddProcess(*this);
}

// ---- controls ----

CPluginControl* CProcess::GetControl(std::int32_t /*control*/) const noexcept {
    return nullptr;
}

CPluginControl& CProcess::ControlOrThrow(std::int32_t control) const {
    CPluginControl* found = GetControl(control);
    if (found == nullptr) VORIX_THROW(AppFrame::BadParameter);
    return *found;
}

std::int32_t CProcess::GetControlIndexFromID(std::int32_t id) const noexcept {
    for (std::int32_t control = 1; control <= GetNumControls(); ++control) {
        if (GetControl(control)->GetID() == id) return control;
    }
    return kNoControl;
}

std::int32_t CProcess::GetControlValue(std::int32_t control) const {
    return ControlOrThrow(control).GetControlValue();
}

void CProcess::SetControlValue(std::int32_t control, std::int32_t value) {
    ControlOrThrow(control).SetControlValue(value);
    UpdateControlValueInAlgorithm(control);
    if (host_ != nullptr) host_->ControlValueChanged(*this, control, value);
}

void CProcess::UpdateControlValueInAlgorithm(std::int32_t /*control*/) {}

void CProcess::TouchControl(std::int32_t control) {
    ControlOrThrow(control);
    if (host_ != nullptr) host_->ControlTouched(*this, control);
}

void CProcess::ReleaseControl(std::int32_t control) {
    ControlOrThrow(control);
    if (host_ != nullptr) host_->ControlReleased(*this, control);
}

void CProcess::DefineMasterBypassControlIndex(std::int32_t control) noexcept {
    masterBypass_ = control;
}

void CProcess::SetControlHighlightInfo(std::int32_t /*control*/, std::int16_t /*on*/,
                                       std::int16_t /*colour*/) {}

void CProcess::GetControlHighlightInfo(std::int32_t /*control*/, std::int16_t& on,
                                       std::int16_t& colour) {
    on = 0;
    colour = 0;
}

// ---- chunks ----

void CProcess::AddChunk(std::int32_t id, std::string name, std::int32_t sizeEstimate) {
    if (IsChunkRegistered(id)) VORIX_THROW(AppFrame::DuplicateEntry);
    // The control state is restored after every chunk of the plug-in's own, so the values the
    // host saved win over whatever a plug-in chunk reports while it loads.
    const auto controlsState =
        std::find_if(chunks_.begin(), chunks_.end(),
                     [](const ChunkEntry& entry) { return entry.id == kControlsStateChunkId; });
    chunks_.insert(controlsState, ChunkEntry{id, std::move(name), sizeEstimate});
}

bool CProcess::IsChunkRegistered(std::int32_t id) const noexcept {
    return FindChunk(id) != nullptr;
}

const CProcess::ChunkEntry* CProcess::FindChunk(std::int32_t id) const noexcept {
    for (const ChunkEntry& entry : chunks_) {
        if (entry.id == id) return &entry;
    }
    return nullptr;
}

std::int32_t CProcess::GetChunkSize(std::int32_t /*id*/, std::int32_t& size) {
    size = 0;
    return kErrUnknownChunk;
}

std::int32_t CProcess::GetChunk(std::int32_t /*id*/, PlugInChunk& /*chunk*/) {
    return kErrUnknownChunk;
}

std::int32_t CProcess::SetChunk(std::int32_t /*id*/, const PlugInChunk& /*chunk*/) {
    return kErrUnknownChunk;
}

PlugInChunk::Identity CProcess::ChunkIdentity(const ChunkEntry& entry) const noexcept {
    PlugInChunk::Identity identity{0, 0, 0, entry.id, entry.name};
    if (group_ != nullptr) identity.manufacturerId = group_->GetManufacturerID();
    if (type_ != nullptr) {
        identity.productId = type_->GetPlugInID();
        identity.plugInId = type_->GetTypeID();
    }
    return identity;
}

// ---- view ----

void CProcess::SetViewPort(void* window) {
    viewPort_ = window;
    if (window != nullptr && customView_ == nullptr) customView_ = CreateCustomPlugInView();
}

CPlugInView* CProcess::CreateCustomPlugInView() {
    return nullptr;
}

// ---- IProcess ----

void CProcess::Release() noexcept {
    ReleaseReference();
}

std::int32_t CProcess::FindControl(std::int32_t id) const noexcept {
    return GetControlIndexFromID(id);
}

std::int32_t CProcess::DescribeControl(std::int32_t control,
                                       ControlDescription& out) const noexcept {
    const CPluginControl* found = GetControl(control);
    if (found == nullptr) return kErrBadIndex;
    return GuardHostEntry([&] {
        out = ControlDescription{found->GetID(), found->GetNumSteps(),
                                 found->GetDefaultControlValue(), found->IsContinuous() != 0,
                                 found->IsAutomatable()};
        return kNoErr;
    });
}

std::int32_t CProcess::ControlName(std::int32_t control, char* buffer,
                                   std::int32_t maxChars) const noexcept {
    const CPluginControl* found = GetControl(control);
    if (found == nullptr) return kErrBadIndex;
    if (buffer == nullptr || maxChars <= 0) return kErrBadArgument;
    return GuardHostEntry([&] {
        found->GetName(buffer, maxChars);
        return kNoErr;
    });
}

std::int32_t CProcess::ReadControlValue(std::int32_t control, std::int32_t& value) const noexcept {
    const CPluginControl* found = GetControl(control);
    if (found == nullptr) return kErrBadIndex;
    value = found->GetControlValue();
    return kNoErr;
}

std::int32_t CProcess::WriteControlValue(std::int32_t control, std::int32_t value) noexcept {
    CPluginControl* found = GetControl(control);
    if (found == nullptr) return kErrBadIndex;
    return GuardHostEntry([&] {
        found->SetControlValue(value);
        UpdateControlValueInAlgorithm(control);
        return kNoErr;
    });
}

std::int32_t CProcess::ControlValueText(std::int32_t control, std::int32_t value, char* buffer,
                                        std::int32_t maxChars) const noexcept {
    const CPluginControl* found = GetControl(control);
    if (found == nullptr) return kErrBadIndex;
    if (buffer == nullptr || maxChars <= 0) return kErrBadArgument;
    return GuardHostEntry([&] {
        found->GetValueString(buffer, maxChars, value);
        return kNoErr;
    });
}

std::int32_t CProcess::ControlTextValue(std::int32_t control, const char* text,
                                        std::int32_t& value) const noexcept {
    const CPluginControl* found = GetControl(control);
    if (found == nullptr) return kErrBadIndex;
    if (text == nullptr) return kErrBadArgument;
    return GuardHostEntry([&] {
        try {
            value = found->TextToControlValue(text);
        } catch (const AppFrame::BadParameter&) {
            return static_cast<std::int32_t>(kErrBadText);
        }
        return static_cast<std::int32_t>(kNoErr);
    });
}

std::int32_t CProcess::HighlightControl(std::int32_t control, bool on,
                                        std::int32_t colour) noexcept {
    if (GetControl(control) == nullptr) return kErrBadIndex;
    const auto colourCode = static_cast<std::int16_t>(std::clamp(colour, -32768, 32767));
    return GuardHostEntry([&] {
        SetControlHighlightInfo(control, on ? 1 : 0, colourCode);
        return kNoErr;
    });
}

std::int32_t CProcess::CountChunks() const noexcept {
    return static_cast<std::int32_t>(chunks_.size());
}

std::int32_t CProcess::ChunkIdAt(std::int32_t position, std::int32_t& id) const noexcept {
    if (position < 0 || position >= CountChunks()) return kErrBadIndex;
    id = chunks_[static_cast<std::size_t>(position)].id;
    return kNoErr;
}

std::int32_t CProcess::MeasureChunk(std::int32_t id, std::int32_t& size) noexcept {
    size = 0;
    if (!IsChunkRegistered(id)) return kErrUnknownChunk;
    return GuardHostEntry([&] { return GetChunkSize(id, size); });
}

std::int32_t CProcess::SaveChunk(std::int32_t id, std::uint8_t* buffer, std::int32_t capacity,
                                 std::int32_t& size) noexcept {
    size = 0;
    const ChunkEntry* entry = FindChunk(id);
    if (entry == nullptr) return kErrUnknownChunk;
    if (capacity < 0 || (buffer == nullptr && capacity > 0)) return kErrBadArgument;
    return GuardHostEntry([&] {
        PlugInChunk chunk;
        if (const std::int32_t error = GetChunk(id, chunk); error != kNoErr) return error;
        chunk.SetIdentity(ChunkIdentity(*entry));
        size = chunk.GetSize();
        if (size > capacity) return static_cast<std::int32_t>(kErrBufferTooSmall);
        std::memcpy(buffer, chunk.Bytes().data(), static_cast<std::size_t>(size));
        return static_cast<std::int32_t>(kNoErr);
    });
}

std::int32_t CProcess::LoadChunk(std::int32_t id, const std::uint8_t* data,
                                 std::int32_t size) noexcept {
    if (!IsChunkRegistered(id)) return kErrUnknownChunk;
    if (data == nullptr || size < PlugInChunk::kHeaderSize) return kErrBadChunk;
    return GuardHostEntry([&] {
        PlugInChunk chunk;
        try {
            chunk = PlugInChunk::FromBytes({data, static_cast<std::size_t>(size)});
        } catch (const AppFrame::BadParameter&) {
            return static_cast<std::int32_t>(kErrBadChunk);
        }
        if (chunk.GetChunkId() != id) return static_cast<std::int32_t>(kErrBadChunk);
        return SetChunk(id, chunk);
    });
}

std::int32_t CProcess::AttachWindow(void* window) noexcept {
    return GuardHostEntry([&] {
        SetViewPort(window);
        return kNoErr;
    });
}

std::int32_t CProcess::ViewSize(std::int32_t& width, std::int32_t& height) noexcept {
    width = 0;
    height = 0;
    if (customView_ == nullptr) return kErrNoView;
    return GuardHostEntry([&] {
        customView_->GetSize(width, height);
        return kNoErr;
    });
}

std::int32_t CProcess::DrawView(std::int16_t left, std::int16_t top, std::int16_t right,
                                std::int16_t bottom) noexcept {
    if (customView_ == nullptr) return kErrNoView;
    return GuardHostEntry([&] {
        customView_->Draw(left, top, right, bottom);
        return kNoErr;
    });
}

std::int32_t CProcess::IdleView() noexcept {
    if (customView_ == nullptr) return kErrNoView;
    return GuardHostEntry([&] {
        customView_->Idle();
        return kNoErr;
    });
}

std::int32_t CProcess::ClickView(std::int16_t x, std::int16_t y) noexcept {
    if (customView_ == nullptr) return kErrNoView;
    return GuardHostEntry([&] {
        customView_->MouseDown(x, y);
        return kNoErr;
    });
}

}  // namespace vorix
