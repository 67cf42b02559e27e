#include "engine/VorixExtFilterControlManager.h"

#include "engine/Ombrel.h"
#include "engine/OmbrelMessages.h"
#include "framework/MessageBatch.h"

namespace vorix {

namespace {

SlotParameter SubOfIndex(int32_t index) {
    return static_cast<SlotParameter>(index % kSlotParameterCount);
}

}  // namespace

VorixExtFilterControlManager::VorixExtFilterControlManager(PluginServices* services,
                                                           Ombrel* engine)
    : MessagePublisher(services), engine_(engine) {
    Publish(kControlSlotMsgClass);
}

ExtFilterControl* VorixExtFilterControlManager::SlotOfIndex(int32_t index) {
    if (index < 0 || index >= kSlotCount * kSlotParameterCount) return nullptr;
    return &controls_[static_cast<size_t>(index / kSlotParameterCount)];
}

const ExtFilterControl* VorixExtFilterControlManager::SlotOfIndex(int32_t index) const {
    return const_cast<VorixExtFilterControlManager*>(this)->SlotOfIndex(index);
}

void VorixExtFilterControlManager::SetControlValue(int32_t index, float value, float sampleRate) {
    ExtFilterControl* control = SlotOfIndex(index);
    if (control != nullptr) control->SetValue(SubOfIndex(index), value, sampleRate);
}

float VorixExtFilterControlManager::GetControlValue(int32_t index, float sampleRate) const {
    const ExtFilterControl* control = SlotOfIndex(index);
    return control != nullptr ? control->GetValue(SubOfIndex(index), sampleRate) : 0.0f;
}

std::pair<OpaqueFilterData*, uint32_t> VorixExtFilterControlManager::FilterOfControl(
    int32_t index) const {
    const ExtFilterControl* control = SlotOfIndex(index);
    OpaqueFilterData* filter = control != nullptr ? control->Filter() : nullptr;
    if (filter == nullptr) return {nullptr, 0};
    return {filter, SlotParameterBit(filter->type, SubOfIndex(index))};
}

std::pair<int32_t, float> VorixExtFilterControlManager::ControlOfFilter(
    const OpaqueFilterData* filter, uint32_t bit, float sampleRate) const {
    const int32_t slot = SlotOfFilter(filter);
    const int32_t sub = SlotParameterOfBit(bit);
    if (slot < 0 || sub < 0) return {kNoControl, 0.0f};
    const int32_t index = slot * kSlotParameterCount + sub;
    return {index, GetControlValue(index, sampleRate)};
}

int32_t VorixExtFilterControlManager::SlotOfFilter(const OpaqueFilterData* filter) const {
    if (filter == nullptr) return -1;
    for (int32_t slot = 0; slot < kSlotCount; ++slot) {
        if (controls_[static_cast<size_t>(slot)].Filter() == filter) return slot;
    }
    return -1;
}

OpaqueFilterData* VorixExtFilterControlManager::FilterOfSlot(int32_t slot) const {
    if (slot < 0 || slot >= kSlotCount) return nullptr;
    return controls_[static_cast<size_t>(slot)].Filter();
}

int32_t VorixExtFilterControlManager::FirstFreeSlot() const {
    for (int32_t slot = 0; slot < kSlotCount; ++slot) {
        if (controls_[static_cast<size_t>(slot)].Filter() == nullptr) return slot;
    }
    return -1;
}

void VorixExtFilterControlManager::AssignFilter(OpaqueFilterData* filter, int32_t slot) {
    if (filter == nullptr || slot < 0 || slot >= kSlotCount) return;
    const MessageBatch batch(*this, kControlSlotMsgClass);
    DetachFilter(filter);
    ExtFilterControl& control = controls_[static_cast<size_t>(slot)];
    OpaqueFilterData* former = control.Filter();
    control.Bind(filter);
    if (former != nullptr) {
        Send(kControlSlotMsgClass, kSlotAssignedMsg, -1, PointerParam(former), nullptr);
    }
    Send(kControlSlotMsgClass, kSlotAssignedMsg, slot, PointerParam(filter), nullptr);
    ReportSlot(slot);
}

void VorixExtFilterControlManager::DetachFilter(const OpaqueFilterData* filter) {
    const int32_t slot = SlotOfFilter(filter);
    if (slot < 0) return;
    controls_[static_cast<size_t>(slot)].Bind(nullptr);
    Send(kControlSlotMsgClass, kSlotAssignedMsg, -1,
         PointerParam(const_cast<OpaqueFilterData*>(filter)), nullptr);
}

void VorixExtFilterControlManager::ClearAll() {
    for (ExtFilterControl& control : controls_)
        control.Bind(nullptr);
    Send(kControlSlotMsgClass, kSlotsClearedMsg, -1, 0, nullptr);
}

void VorixExtFilterControlManager::RefreshHost(bool all) {
    for (int32_t slot = 0; slot < kSlotCount; ++slot) {
        if (all || FilterOfSlot(slot) != nullptr) ReportSlot(slot);
    }
}

bool VorixExtFilterControlManager::TakeChanged(int32_t index) {
    ExtFilterControl* control = SlotOfIndex(index);
    return control != nullptr && control->TakeChanged(SubOfIndex(index));
}

void VorixExtFilterControlManager::ReportSlot(int32_t slot) {
    const float sampleRate = engine_->GetSampleRate();
    for (int32_t sub = 0; sub < kSlotParameterCount; ++sub) {
        const int32_t index = slot * kSlotParameterCount + sub;
        engine_->ReportControlValue(index, GetControlValue(index, sampleRate));
    }
}

}  // namespace vorix
