// The two configurations: switching, clearing, copying, and putting a new set of chains in place
// while the audio runs.

#include "dsp/FilterChainOps.h"
#include "dsp/FilterDescription.h"
#include "dsp/FilterRetirement.h"
#include "engine/Ombrel.h"
#include "engine/OmbrelMessages.h"
#include "engine/VorixParameterIds.h"
#include "framework/MessageBatch.h"

namespace vorix {

namespace {

// The first shown filter with `flag` set (or clear). A hollow half of a split pair is never
// shown, so it is never the one selected, whatever flags it was given.
OpaqueFilterData* FirstWith(FilterChain* chain, uint32_t flag, bool set) {
    for (OpaqueFilterData* f = FirstFilter(chain); f != nullptr; f = NextFilter(f)) {
        const uint32_t flags = f->flags.Load();
        if ((flags & FilterFlags::ChannelDeleted) != 0) continue;
        if (((flags & flag) != 0) == set) return f;
    }
    return nullptr;
}

}  // namespace

void Ombrel::SelectConfiguration(int32_t index, bool announce) {
    if (announce) Send(kFilterMsgClass, kSaveAttributesMsg, 0, 0, nullptr);
    {
        const MessageBatch batch(*this, kFilterMsgClass);
        audio_.currentConfiguration.store(index & 1, std::memory_order_release);
        audio_.soloFilter.store(nullptr, std::memory_order_release);
        OpaqueFilterData* selected = FirstWith(Chain(0), FilterFlags::Selected, true);
        if (selected == nullptr) selected = FirstWith(Chain(1), FilterFlags::Selected, true);
        if (selected == nullptr) selected = FirstWith(Chain(0), FilterFlags::OutOfRange, false);
        SelectFilter(selected, true);
    }
    Send(kFilterMsgClass, kNewSetMsg, 0, 0, nullptr);
    Send(kFilterMsgClass, kFilterEditMsg, 0, PointerParam(SelectedFilter()), nullptr);
    ControlManager().RefreshHost(true);
    const BooleanController* link = GainLink(CurrentConfiguration());
    ReportGains(link != nullptr && link->GetValue() == 0);
}

void Ombrel::ClearConfiguration(bool notify) {
    Configuration& configuration = Current();
    if (configuration.gainLink != nullptr) configuration.gainLink->SetValue(1);
    configuration.gain[0]->SetValue(0);
    configuration.gain[1]->SetValue(0);
    configuration.selectedFilter = nullptr;
    configuration.controls->ClearAll();
    if (Solo() != nullptr) ClearSolo();
    for (int32_t channel = 0; channel < channels_; ++channel) {
        FilterChain* chain = Chain(channel);
        while (OpaqueFilterData* filter = FirstFilter(chain))
            RetireRecord(chain, filter);
    }
    ReclaimRetired();
    ClearFilterNumbers(configuration.numbering);
    Send(kFilterMsgClass, kNewSetMsg, 0, 0, nullptr);
    if (notify) SettingsChanged();
}

// The copy is built aside, record by record through each filter's description, and put in place
// in one step per channel, so that audio on the target never sees half a copy.
void Ombrel::CopyConfiguration(int32_t source, int32_t target) {
    source &= 1;
    target &= 1;
    if (source == target) return;
    Configuration& from = configurations_[static_cast<size_t>(source)];
    Configuration& to = configurations_[static_cast<size_t>(target)];
    ReclaimRetired();
    FilterChain* chains[2] = {AcquireFilterChain(&pool_),
                              channels_ == 2 ? AcquireFilterChain(&pool_) : nullptr};
    FilterNumbering numbering;
    std::vector<std::pair<OpaqueFilterData*, int32_t>> slots;
    try {
        for (OpaqueFilterData* f = FirstFilter(ChainOf(source, 0)); f != nullptr;
             f = NextFilter(f)) {
            OpaqueFilterData* copy[2] = {CreateFilterFromDescription(chains[0], DescribeFilter(f)),
                                         nullptr};
            OpaqueFilterData* partner = f->partner.load(std::memory_order_acquire);
            if (partner != nullptr && chains[1] != nullptr) {
                copy[1] = CreateFilterFromDescription(chains[1], DescribeFilter(partner));
                copy[0]->partner.store(copy[1], std::memory_order_release);
                copy[1]->partner.store(copy[0], std::memory_order_release);
            }
            AssignFilterNumber(numbering, copy[0], copy[1], FilterNumberOf(from.numbering, f));
            for (int32_t side = 0; side < 2; ++side) {
                const int32_t slot = from.controls->SlotOfFilter(side == 0 ? f : partner);
                if (slot >= 0 && copy[side] != nullptr) slots.emplace_back(copy[side], slot);
            }
            if (from.selectedFilter == f || from.selectedFilter == partner) {
                to.selectedFilter = from.selectedFilter == f ? copy[0] : copy[1];
            }
        }
    } catch (...) {
        ReleaseChains(chains);
        throw;
    }
    to.controls->ClearAll();
    InstallChains(target, chains);
    to.numbering = std::move(numbering);
    for (const auto& [filter, slot] : slots)
        to.controls->AssignFilter(filter, slot);
    if (target == CurrentConfiguration()) SelectConfiguration(target, false);
}

// Chains that the audio thread never saw go back at once.
void Ombrel::ReleaseChains(FilterChain* chains[2]) {
    for (int32_t channel = 0; channel < 2; ++channel) {
        FilterChain* chain = chains[channel];
        if (chain == nullptr) continue;
        while (OpaqueFilterData* filter = FirstFilter(chain))
            ReleaseFilter(chain, filter);
        ReturnFilterChain(&pool_, chain);
        chains[channel] = nullptr;
    }
}

// One pointer write per channel puts the new chains in place. The old chains are retired with
// their records, so that none of them is reused while an audio block may still walk them.
void Ombrel::InstallChains(int32_t configuration, FilterChain* chains[2]) {
    FilterChain* old[2] = {nullptr, nullptr};
    if (Solo() != nullptr && configuration == CurrentConfiguration()) ClearSolo();
    for (int32_t channel = 0; channel < channels_; ++channel) {
        old[channel] = audio_.configurations[configuration].chains[channel].exchange(
            chains[channel], std::memory_order_seq_cst);
    }
    Configuration& target = configurations_[static_cast<size_t>(configuration)];
    if (target.selectedFilter != nullptr && target.selectedFilter->chain != chains[0] &&
        target.selectedFilter->chain != chains[1]) {
        target.selectedFilter = nullptr;
    }
    for (FilterChain* chain : old)
        RetireChain(&pool_, chain);
    ReclaimRetired();
}

}  // namespace vorix
