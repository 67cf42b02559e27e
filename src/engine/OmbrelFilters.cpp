// The engine's filter operations on the current configuration: new, add, delete, split, combine,
// enable, select, solo, and the announcement of parameter changes.

#include <new>

#include "core/ErrorDisplay.h"
#include "core/SettingsTexts.h"
#include "dsp/FilterChainOps.h"
#include "dsp/FilterParameters.h"
#include "dsp/FilterRetirement.h"
#include "engine/Ombrel.h"
#include "engine/OmbrelMessages.h"
#include "framework/MessageBatch.h"

namespace vorix {

namespace {

constexpr const char* kNewFilterFailedTitle = "Unable create new filter.";
constexpr const char* kNotEnoughMemoryText = "There is not enough memory available.";

constexpr float kDefaultQ = 0.70710677f;

// A new filter's parameters in the user's units; frequency in Hz. A parameter of the type's mask
// that the row leaves out starts at 0.
struct NewFilterDefaults {
    float frequencyHz;
    float q;
    float slope;
    float bandwidth;
    float components;
};

NewFilterDefaults DefaultsFor(FilterType type) {
    switch (type) {
        case kParametric: return {1000.0f, 0.0f, 0.0f, 1.0f, 0.0f};
        case kLowShelf: return {100.0f, 0.0f, 1.0f, 0.0f, 0.0f};
        case kHiShelf: return {10000.0f, 0.0f, 1.0f, 0.0f, 0.0f};
        case kLowShelf2: return {100.0f, kDefaultQ, 0.0f, 0.0f, 0.0f};
        case kHiShelf2: return {10000.0f, kDefaultQ, 0.0f, 0.0f, 0.0f};
        case kLowPass: return {10000.0f, kDefaultQ, 0.0f, 0.0f, 0.0f};
        case kHiPass: return {100.0f, kDefaultQ, 0.0f, 0.0f, 0.0f};
        case kBandpass: return {1000.0f, 0.0f, 0.0f, 2.0f, 0.0f};
        case kNotch: return {1000.0f, 0.0f, 0.0f, 0.125f, 0.0f};
        case kHarmonic4:
        case kHarmonic8: return {60.0f, 0.0f, 0.0f, 0.01f, 7.0f};
        default: return {1000.0f, 0.0f, 0.0f, 0.0f, 0.0f};
    }
}

float DefaultValue(const NewFilterDefaults& defaults, FilterParameterId id) {
    switch (id) {
        case FilterParameterId::Q: return defaults.q;
        case FilterParameterId::Slope: return defaults.slope;
        case FilterParameterId::Bandwidth: return defaults.bandwidth;
        case FilterParameterId::HarmonicComponents: return defaults.components;
        default: return 0.0f;
    }
}

uint32_t Flags(const OpaqueFilterData* filter) {
    return filter->flags.Load();
}

void SetFlags(OpaqueFilterData* filter, uint32_t set, uint32_t clear) {
    filter->flags = (Flags(filter) & ~clear) | set;
}

bool IsSplit(const OpaqueFilterData* filter) {
    return (Flags(filter) & (FilterFlags::LeftOnly | FilterFlags::RightOnly)) != 0;
}

OpaqueFilterData* PartnerOf(const OpaqueFilterData* filter) {
    return filter != nullptr ? filter->partner.load(std::memory_order_acquire) : nullptr;
}

}  // namespace

OpaqueFilterData* Ombrel::NewFilter(FilterType type) {
    OpaqueFilterData* filter = nullptr;
    ReclaimRetired();
    try {
        filter = CreateFilterInChain(Chain(0), 0, type);
    } catch (const std::bad_alloc&) {
        filter = nullptr;
    }
    if (filter == nullptr) {
        ReportError(this, kNewFilterFailedTitle, kNotEnoughMemoryText, nullptr, kSettingsErrorKind);
        return nullptr;
    }
    AddFilter(filter);
    return filter;
}

void Ombrel::ApplyFilterDefaults(OpaqueFilterData* filter) {
    const FilterType type = filter->type;
    const NewFilterDefaults defaults = DefaultsFor(type);
    const uint32_t mask = FilterParameterMask(type);
    if ((mask & Bit(FilterParameterId::Frequency)) != 0) {
        const float frequency = std::min(defaults.frequencyHz / GetSampleRate(), kFrequencyLimit);
        SetFilterParameter(filter, FilterParameterId::Frequency, frequency);
    }
    for (FilterParameterId id : kAllFilterParameters) {
        if (id == FilterParameterId::Frequency || (mask & Bit(id)) == 0) continue;
        SetFilterParameter(filter, id, DefaultValue(defaults, id));
    }
}

void Ombrel::AddFilter(OpaqueFilterData* filter) {
    if (filter == nullptr) return;
    ApplyFilterDefaults(filter);
    OpaqueFilterData* partner = nullptr;
    if (channels_ == 2) {
        ReclaimRetired();
        partner = CreateFilterInChain(Chain(1), 0, filter->type);
        if (partner != nullptr) {
            ApplyFilterDefaults(partner);
            partner->partner.store(filter, std::memory_order_release);
            filter->partner.store(partner, std::memory_order_release);
        }
    }
    AllocateFilterNumber(Current().numbering, filter, partner);
    AssignFreeSlot(filter);
    Send(kFilterMsgClass, kFilterAddedMsg, 0, PointerParam(filter), nullptr);
}

void Ombrel::AssignFreeSlot(OpaqueFilterData* filter) {
    if ((Flags(filter) & FilterFlags::OutOfRange) != 0) return;
    VorixExtFilterControlManager& controls = ControlManager();
    const int32_t slot = controls.FirstFreeSlot();
    if (slot < 0) return;
    const DepthGuard hold(controlEchoHold_);
    controls.AssignFilter(filter, slot);
}

void Ombrel::ClearSolo() {
    audio_.soloFilter.store(nullptr, std::memory_order_release);
    Send(kFilterMsgClass, kSoloMsg, 0, 0, nullptr);
}

void Ombrel::DeleteFilter(OpaqueFilterData* filter) {
    if (filter == nullptr) return;
    OpaqueFilterData* partner = PartnerOf(filter);
    if (Solo() == filter) ClearSolo();
    Configuration& configuration = Current();
    if (configuration.selectedFilter == filter) configuration.selectedFilter = nullptr;
    configuration.controls->DetachFilter(filter);
    if (IsSplit(filter) && partner != nullptr &&
        (Flags(partner) & FilterFlags::ChannelDeleted) == 0) {
        // The other half lives on; this one stays as a hollow place-holder, so that the chains
        // stay parallel.
        SetFlags(filter, FilterFlags::Disabled | FilterFlags::ChannelDeleted, 0);
        ResetFilterState(filter);
        Send(kFilterMsgClass, kChannelDeletedMsg, 0, PointerParam(filter), nullptr);
        return;
    }
    Send(kFilterMsgClass, kFilterDeletedMsg, 0, PointerParam(filter), nullptr);
    RemovePair(filter);
}

// Takes both records of a pair out of their chains and out of every table that names them.
void Ombrel::RemovePair(OpaqueFilterData* filter) {
    OpaqueFilterData* partner = PartnerOf(filter);
    Configuration& configuration = Current();
    if (partner != nullptr) {
        if (Solo() == partner) ClearSolo();
        if (configuration.selectedFilter == partner) configuration.selectedFilter = nullptr;
        configuration.controls->DetachFilter(partner);
    }
    ReleaseFilterNumber(configuration.numbering, filter, partner);
    RetireRecord(filter->chain, filter);
    if (partner != nullptr) RetireRecord(partner->chain, partner);
    ReclaimRetired();
}

// The record leaves its chain at once and goes back to the pool only once no audio block can
// still be inside it.
void Ombrel::RetireRecord(FilterChain* chain, OpaqueFilterData* filter) {
    if (UnlinkFilter(chain, filter)) RetireFilter(&pool_, filter);
}

void Ombrel::ReclaimRetired() {
    const uint64_t entered = AudioBlocksEntered();
    vorix::ReclaimRetired(&pool_, entered, AudioBlocksLeft());
}

void Ombrel::SplitFilter(OpaqueFilterData* filter, bool copy) {
    OpaqueFilterData* partner = PartnerOf(filter);
    if (partner == nullptr) return;
    if (!IsSplit(filter)) {
        SetFlags(filter, filter->chain == Chain(0) ? FilterFlags::LeftOnly : FilterFlags::RightOnly,
                 0);
    }
    if (copy) CopyFilterParameters(filter, partner);
    const uint32_t side = (Flags(filter) & FilterFlags::LeftOnly) != 0 ? FilterFlags::RightOnly
                                                                     : FilterFlags::LeftOnly;
    const uint32_t taken = Flags(filter) & (FilterFlags::Disabled | FilterFlags::Locks);
    SetFlags(partner, side | taken,
             FilterFlags::LeftOnly | FilterFlags::RightOnly | FilterFlags::Disabled |
                 FilterFlags::Locks | FilterFlags::ChannelDeleted);
    Send(kFilterMsgClass, kFilterSplitMsg, 0, PointerParam(partner), nullptr);
}

OpaqueFilterData* Ombrel::CombineFilter(OpaqueFilterData* filter) {
    OpaqueFilterData* partner = PartnerOf(filter);
    if (partner == nullptr) return nullptr;
    VorixExtFilterControlManager& controls = ControlManager();
    // The pair keeps a binding that either half had, the filter's own first.
    int32_t slot = controls.SlotOfFilter(filter);
    if (slot < 0) slot = controls.SlotOfFilter(partner);
    controls.DetachFilter(filter);
    controls.DetachFilter(partner);

    CopyFilterParameters(filter, partner);
    SetFlags(partner, Flags(filter) & (FilterFlags::Disabled | FilterFlags::Locks),
             FilterFlags::Disabled | FilterFlags::Locks);
    if ((Flags(partner) & FilterFlags::ChannelDeleted) != 0) {
        SetFlags(partner, 0, FilterFlags::ChannelDeleted);
        Send(kFilterMsgClass, kFilterSplitMsg, 0, PointerParam(partner), nullptr);
        SelectFilter(partner, true);
    }
    const uint32_t sides =
        FilterFlags::LeftOnly | FilterFlags::RightOnly | FilterFlags::ChannelDeleted;
    SetFlags(filter, 0, sides);
    SetFlags(partner, 0, sides);
    if (Solo() == partner) ClearSolo();
    Send(kFilterMsgClass, kFilterCombinedMsg, 0, PointerParam(filter), nullptr);

    OpaqueFilterData* left = filter->chain == Chain(0) ? filter : partner;
    if (slot >= 0) controls.AssignFilter(left, slot);
    return left == filter ? partner : filter;
}

void Ombrel::SetFilterEnabled(OpaqueFilterData* filter, bool enabled) {
    if (filter == nullptr) return;
    OpaqueFilterData* partner = IsSplit(filter) ? nullptr : PartnerOf(filter);
    for (OpaqueFilterData* record : {filter, partner}) {
        if (record == nullptr) continue;
        if (enabled) {
            SetFlags(record, 0, FilterFlags::Disabled);
        } else {
            SetFlags(record, FilterFlags::Disabled, 0);
            ResetFilterState(record);
        }
    }
    Send(kFilterMsgClass, kFilterEnabledMsg, 0, PointerParam(filter), nullptr);
}

void Ombrel::SelectFilter(OpaqueFilterData* filter, bool quiet) {
    // The selection of a both-channel pair is always its left record.
    if (filter != nullptr && !IsSplit(filter) && filter->chain != Chain(0)) {
        if (OpaqueFilterData* partner = PartnerOf(filter)) filter = partner;
    }
    if (filter != Solo()) ClearSolo();
    {
        const MessageBatch batch(*this, kFilterMsgClass);
        for (OpaqueFilterData* f = FirstFilter(Chain(0)); f != nullptr; f = NextFilter(f)) {
            for (OpaqueFilterData* record : {f, PartnerOf(f)}) {
                if (record == nullptr) continue;
                SetFlags(record, 0, FilterFlags::Selected);
                Send(kFilterMsgClass, kFilterSelectedMsg, 0, PointerParam(record), nullptr);
            }
        }
        if (filter != nullptr) {
            SetFlags(filter, FilterFlags::Selected, 0);
            Send(kFilterMsgClass, kFilterSelectedMsg, 1, PointerParam(filter), nullptr);
        }
    }
    Current().selectedFilter = filter;
    if (!quiet) Send(kFilterMsgClass, kFilterEditMsg, 0, PointerParam(filter), nullptr);
}

void Ombrel::SoloFilter(OpaqueFilterData* filter) {
    audio_.soloFilter.store(filter, std::memory_order_release);
    Send(kFilterMsgClass, kSoloMsg, 0, PointerParam(filter), nullptr);
}

bool Ombrel::IsFilterValid(const OpaqueFilterData* filter) const {
    if (filter == nullptr) return true;
    const OpaqueFilterData* partner = PartnerOf(filter);
    for (int32_t channel = 0; channel < channels_; ++channel) {
        const FilterChain* chain = Chain(channel);
        if (filter->chain == chain || (partner != nullptr && partner->chain == chain)) return true;
    }
    return false;
}

void Ombrel::NotifyFilterParameterChanged(OpaqueFilterData* filter, uint32_t bit, bool external) {
    if (!external) {
        const auto [index, value] = ControlManager().ControlOfFilter(filter, bit, GetSampleRate());
        if (index != VorixExtFilterControlManager::kNoControl) ReportControlValue(index, value);
    }
    Send(kFilterMsgClass, external ? kHostParameterMsg : kEditorParameterMsg,
         static_cast<MsgParam>(bit), PointerParam(filter), nullptr);
}

}  // namespace vorix
