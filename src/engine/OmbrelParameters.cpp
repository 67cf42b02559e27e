// The engine's host parameters: the thirty automation slot parameters, the two compensation
// gains with their link, and the session-change counter.

#include <algorithm>
#include <cmath>

#include "dsp/FilterParameters.h"
#include "engine/Ombrel.h"
#include "engine/OmbrelMessages.h"
#include "engine/VorixParameterIds.h"

namespace vorix {

namespace {

bool IsSlotParameter(int32_t id) {
    return id >= 0 && id < kFilterControlIdCount;
}

}  // namespace

// The gain and link controls subscribe under their control ids.
void Ombrel::SubscribeToControls() {
    for (int32_t c = 0; c < kConfigurationCount; ++c) {
        Configuration& configuration = configurations_[static_cast<size_t>(c)];
        GenericControl* controls[3] = {configuration.gain[0].get(), configuration.gain[1].get(),
                                       configuration.gainLink.get()};
        for (GenericControl* control : controls) {
            if (control == nullptr) continue;
            Subscribe(control->GetMsgClass(), static_cast<int32_t>(control->GetControlId()),
                      &Ombrel::OnGainControl, false);
        }
    }
}

// A gain or link control moved, from the editor or from the host: the linked side follows, the
// audio takes the new ratios, and the host hears of the current configuration's gains.
void Ombrel::OnGainControl(MsgId msgId) {
    if (msgId != kControlValueChanged) return;
    const auto* changed = ParamPointer<GenericControl>(mCurParam2);
    for (int32_t c = 0; c < kConfigurationCount; ++c) {
        Configuration& configuration = configurations_[static_cast<size_t>(c)];
        int32_t channel = -1;
        if (changed == configuration.gain[0].get()) channel = 0;
        if (changed == configuration.gain[1].get()) channel = 1;
        if (changed == configuration.gainLink.get()) channel = 0;  // linking: right follows left
        if (channel < 0) continue;
        FollowGainLink(c, channel);
        UpdateAudioGains(c);
        if (c == CurrentConfiguration()) ReportGains(true);
        return;
    }
}

void Ombrel::FollowGainLink(int32_t configuration, int32_t changedChannel) {
    Configuration& target = configurations_[static_cast<size_t>(configuration)];
    if (target.gainLink == nullptr || target.gainLink->GetValue() == 0) return;
    const int32_t value = target.gain[changedChannel]->GetValue();
    target.gain[1 - changedChannel]->SetValue(value);
}

void Ombrel::UpdateAudioGains(int32_t configuration) {
    const Configuration& source = configurations_[static_cast<size_t>(configuration)];
    for (int32_t channel = 0; channel < 2; ++channel) {
        const float decibels =
            GainDecibels(source.gain[channel]->GetValue());
        audio_.configurations[configuration].compensationGain[channel] = DecibelsToRatio(decibels);
    }
}

void Ombrel::ReportGains(bool bothSides) {
    const Configuration& configuration = Current();
    ReportParameter(kLeftGainId,
                    GainDecibels(configuration.gain[0]->GetValue()),
                    false);
    if (bothSides && channels_ == 2) {
        ReportParameter(kRightGainId,
                        GainDecibels(configuration.gain[1]->GetValue()),
                        false);
    }
}

void Ombrel::ReportControlValue(int32_t index, float value) {
    ReportParameter(index, value, false);
}

double Ombrel::GetParameter(const ZORParameterInfo* info) {
    if (info == nullptr) return 0.0;
    const int32_t id = info->id;
    if (IsSlotParameter(id)) return ControlManager().GetControlValue(id, GetSampleRate());
    const Configuration& configuration = Current();
    if (id == kLeftGainId) return GainDecibels(configuration.gain[0]->GetValue());
    if (id == kRightGainId) return channels_ == 2 ? GainDecibels(configuration.gain[1]->GetValue()) : 0.0;
    if (id == kDirtyId) return DirtyCounter();
    return 0.0;
}

// A value that is not a number is refused whatever the parameter: it would reach the filter
// state through every path.
bool Ombrel::ApplyParameter(const ZORParameterInfo* info, float value) {
    if (info == nullptr || std::isnan(value)) return false;
    const int32_t id = info->id;
    if (IsSlotParameter(id)) {
        if (controlEchoHold_.IsRaised() || !std::isfinite(value)) return false;
        ControlManager().SetControlValue(id, value, GetSampleRate());
        return true;
    }
    if (id == kLeftGainId || id == kRightGainId) return ApplyGain(id, value);
    if (id == kDirtyId) {
        const double clamped = std::clamp(static_cast<double>(value), 0.0,
                                          static_cast<double>(kDirtyCounterLimit));
        dirtyCounter_.store(static_cast<int32_t>(clamped), std::memory_order_relaxed);
        return false;
    }
    return false;
}

int32_t Ombrel::GainSteps(float decibels) noexcept {
    if (std::isnan(decibels)) return 0;
    const float clamped = std::clamp(decibels, -kMaxCompensationDb, kMaxCompensationDb);
    return static_cast<int32_t>(clamped * kGainStepsPerDecibel);
}

// Gains arrive in decibels and are kept in half-decibel steps, truncated toward 0.
bool Ombrel::ApplyGain(int32_t id, float decibels) {
    Configuration& configuration = Current();
    const bool linked =
        configuration.gainLink != nullptr && configuration.gainLink->GetValue() != 0;
    if (id == kRightGainId && (channels_ == 1 || linked)) return false;
    configuration.gain[id == kLeftGainId ? 0 : 1]->SetValue(GainSteps(decibels));
    return true;
}

// The editor's half of a host change. Slot parameters are announced for the filters they moved;
// gains were set on the controls already, so only their value is brought in line, without
// messages.
void Ombrel::ApplyParameterToEditor(const ZORParameterInfo* info, float value) {
    if (info == nullptr) return;
    const int32_t id = info->id;
    if (IsSlotParameter(id)) {
        const auto [filter, bit] = ControlManager().FilterOfControl(id);
        if (filter != nullptr && bit != 0) {
            Send(kFilterMsgClass, kHostParameterMsg, static_cast<MsgParam>(bit),
                 PointerParam(filter), nullptr);
        }
        return;
    }
    if ((id != kLeftGainId && id != kRightGainId) || std::isnan(value)) return;
    Configuration& configuration = Current();
    MessagingServer& server = GetMessagingServer();
    GenericControl* gains[4] = {configurations_[0].gain[0].get(), configurations_[0].gain[1].get(),
                                configurations_[1].gain[0].get(), configurations_[1].gain[1].get()};
    for (GenericControl* gain : gains)
        server.SuspendMsgClass(gain->GetMsgClass(), true);
    const int32_t steps = GainSteps(value);
    const bool linked =
        configuration.gainLink != nullptr && configuration.gainLink->GetValue() != 0;
    if (id == kLeftGainId || linked) configuration.gain[0]->SetValue(steps);
    if (channels_ == 2 && (id == kRightGainId || linked)) configuration.gain[1]->SetValue(steps);
    for (GenericControl* gain : gains)
        server.SuspendMsgClass(gain->GetMsgClass(), false);
    UpdateAudioGains(CurrentConfiguration());
}

void Ombrel::SettingsChanged() {
    BumpDirtyCounter();
}

void Ombrel::BumpDirtyCounter() {
    int32_t count = dirtyCounter_.load(std::memory_order_relaxed) + 1;
    if (count > kDirtyCounterLimit) count = 0;
    dirtyCounter_.store(count, std::memory_order_relaxed);
    ReportParameter(kDirtyId, static_cast<float>(count), false);
}

void Ombrel::VorixDirtyMonitor::HandleFilterMessage(MsgId msgId) {
    switch (msgId) {
        case kFilterAddedMsg:
        case kFilterDeletedMsg:
        case kChannelDeletedMsg:
        case kFilterEnabledMsg:
        case kFilterSplitMsg:
        case kFilterCombinedMsg: engine_->BumpDirtyCounter(); break;
        default: break;
    }
}

}  // namespace vorix
