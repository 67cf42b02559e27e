// The engine's settings document: one configuration written out, and read back by building the
// new chains aside and putting them in place only when the whole document has been understood.

#include <algorithm>
#include <new>
#include <sstream>

#include "core/ErrorDisplay.h"
#include "dsp/FilterChainOps.h"
#include "dsp/FilterDescription.h"
#include "dsp/FilterRetirement.h"
#include "engine/FilterSettingsDocument.h"
#include "engine/FilterSettingsReader.h"
#include "engine/FilterSettingsTexts.h"
#include "engine/FilterSettingsWriter.h"
#include "engine/Ombrel.h"
#include "engine/OmbrelMessages.h"

namespace vorix {

namespace {

// A both-channel pair is bound through its left record; the right record of an element holds a
// slot of its own only as the working half of a split pair.
bool HoldsOwnSlot(const FilterSettingsSlot& slot, int32_t channel) {
    const uint32_t flags = slot.description.flags;
    if ((flags & FilterFlags::ChannelDeleted) != 0) return false;
    return channel == 0 || (flags & FilterFlags::RightOnly) != 0;
}

bool Has(const OpaqueFilterData* filter, uint32_t flag) {
    return filter != nullptr && (filter->flags.Load() & flag) != 0;
}

// A filter as the document holds it: its description with its flags, and its automation slot.
FilterSettingsSlot SlotOf(const OpaqueFilterData* filter, const VorixExtFilterControlManager& slots) {
    FilterSettingsSlot slot;
    slot.description = DescribeFilter(filter);
    slot.controlSlot = slots.SlotOfFilter(filter);
    slot.filled = true;
    return slot;
}

}  // namespace

void Ombrel::WriteSettings(std::ostream& stream) {
    Send(kFilterMsgClass, kSaveAttributesMsg, 0, 0, nullptr);
    WriteConfiguration(stream, CurrentConfiguration());
}

// A hollow half is never written; the right half of a pair only when the pair is split.
void Ombrel::WriteConfiguration(std::ostream& stream, int32_t configuration) {
    const Configuration& source = configurations_[static_cast<size_t>(configuration)];
    FilterSettingsDocument document;
    document.hasAttributes = true;
    document.attributesLine = FormatAttributes();
    document.leftGain = GainDecibels(source.gain[0]->GetValue());
    document.rightGain = GainDecibels(source.gain[1]->GetValue());
    document.gainsUnlinked = source.gainLink != nullptr && source.gainLink->GetValue() == 0;
    for (OpaqueFilterData* f = FirstFilter(ChainOf(configuration, 0)); f != nullptr;
         f = NextFilter(f)) {
        FilterSettingsElement element;
        // The writer leaves a hollow record out but reads its side from it.
        element.slots[0] = SlotOf(f, *source.controls);
        const OpaqueFilterData* partner = f->partner.load(std::memory_order_acquire);
        if (Has(f, FilterFlags::LeftOnly | FilterFlags::RightOnly) && partner != nullptr &&
            !Has(partner, FilterFlags::ChannelDeleted)) {
            element.slots[1] = SlotOf(partner, *source.controls);
        }
        document.elements.push_back(std::move(element));
    }
    WriteFilterSettingsDocument(stream, document, GetSampleRate());
}

void Ombrel::ReadSettings(const std::string& text) {
    ReadConfiguration(text, CurrentConfiguration());
    SelectConfiguration(CurrentConfiguration(), false);
}

// Everything that can fail happens before the first change to the engine: the document is read
// whole, then the records are built in chains of their own. A failure shows its message and
// leaves the configuration exactly as it was.
void Ombrel::ReadConfiguration(const std::string& text, int32_t configuration) {
    const bool merge = mergeOnLoad_;
    mergeOnLoad_ = false;
    std::string failureText = kFilterSettingsCorrupted;
    try {
        if (merge) Send(kFilterMsgClass, kSaveAttributesMsg, 0, 0, nullptr);
        std::istringstream stream(text);
        const FilterSettingsDocument document =
            ReadFilterSettingsDocument(stream, GetSampleRate(), channels_, failureText);
        BuildConfiguration(document, configuration, merge);
    } catch (const std::bad_alloc&) {
        ReportError(this, kFilterSettingsFailureTitle, kNoMemoryForFilterSettings, nullptr,
                    kSettingsErrorKind);
        VORIX_THROW(InvalidSettingsData);
    } catch (const InvalidSettingsData&) {
        ReportError(this, kFilterSettingsFailureTitle, failureText.c_str(), nullptr,
                    kSettingsErrorKind);
        throw;
    }
}

void Ombrel::BuildConfiguration(const FilterSettingsDocument& document, int32_t configuration,
                                bool merge) {
    Configuration& target = configurations_[static_cast<size_t>(configuration)];
    FilterChain* chains[2] = {nullptr, nullptr};
    FilterNumbering numbering = merge ? target.numbering : FilterNumbering{};
    std::vector<std::pair<OpaqueFilterData*, int32_t>> slots;
    std::vector<OpaqueFilterData*> created;
    ReclaimRetired();
    for (int32_t channel = 0; channel < channels_; ++channel) {
        chains[channel] = merge ? ChainOf(configuration, channel) : AcquireFilterChain(&pool_);
    }
    try {
        for (const FilterSettingsElement& element : document.elements) {
            if (element.slots[0].description.type == kNoFilterType) continue;
            OpaqueFilterData* records[2] = {nullptr, nullptr};
            for (int32_t channel = 0; channel < channels_; ++channel) {
                const FilterSettingsSlot& slot = element.slots[channel];
                records[channel] = CreateFilterFromDescription(chains[channel], slot.description);
                if (records[channel] == nullptr) VORIX_THROW(InvalidSettingsData);
                created.push_back(records[channel]);
                if (slot.controlSlot != -1 && HoldsOwnSlot(slot, channel)) {
                    slots.emplace_back(records[channel], slot.controlSlot);
                }
            }
            if (records[1] != nullptr) {
                records[0]->partner.store(records[1], std::memory_order_release);
                records[1]->partner.store(records[0], std::memory_order_release);
            }
            AllocateFilterNumber(numbering, records[0], records[1]);
        }
    } catch (...) {
        // Built aside, the new chains go back whole; merged records leave the live chains again.
        if (merge) {
            for (OpaqueFilterData* record : created)
                RetireRecord(record->chain, record);
            ReclaimRetired();
        } else {
            ReleaseChains(chains);
        }
        throw;
    }
    if (!merge) {
        if (document.hasAttributes) ParseAttributes(document.attributesLine);
        target.controls->ClearAll();
        target.selectedFilter = nullptr;
        InstallChains(configuration, chains);
        ApplyDocumentGains(document, configuration);
    }
    target.numbering = std::move(numbering);
    for (const auto& [filter, slot] : slots)
        target.controls->AssignFilter(filter, slot);
}

// The link goes first: while it is on, the right gain follows the left.
void Ombrel::ApplyDocumentGains(const FilterSettingsDocument& document, int32_t configuration) {
    Configuration& target = configurations_[static_cast<size_t>(configuration)];
    if (target.gainLink != nullptr) target.gainLink->SetValue(document.gainsUnlinked ? 0 : 1);
    target.gain[0]->SetValue(GainSteps(document.leftGain));
    if (channels_ == 2) {
        target.gain[1]->SetValue(GainSteps(document.rightGain));
    }
}

}  // namespace vorix
