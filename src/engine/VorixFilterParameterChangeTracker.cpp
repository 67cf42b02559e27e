#include "engine/VorixFilterParameterChangeTracker.h"

#include <algorithm>

#include "dsp/FilterRecord.h"
#include "engine/OmbrelMessages.h"

namespace vorix {

VorixFilterParameterChangeTracker::VorixFilterParameterChangeTracker(Ombrel* engine,
                                                                     bool trackEditor,
                                                                     bool trackExternal)
    : OmbrelMessageSubscriber(engine), trackEditor_(trackEditor), trackExternal_(trackExternal) {}

void VorixFilterParameterChangeTracker::HandleFilterMessage(MsgId msgId) {
    auto* filter = ParamPointer<OpaqueFilterData>(mCurParam2);
    const auto bit = static_cast<uint32_t>(mCurParam1);
    if ((msgId == kEditorParameterMsg && trackEditor_) ||
        (msgId == kHostParameterMsg && trackExternal_)) {
        Record(filter, bit);
    } else if (msgId == kFilterDeletedMsg || msgId == kChannelDeletedMsg) {
        // A record that goes away must not be looked at again through a stale entry; a deleted
        // pair takes its right half along.
        Forget(filter);
        if (msgId == kFilterDeletedMsg && filter != nullptr) {
            Forget(filter->partner.load(std::memory_order_acquire));
        }
    }
}

void VorixFilterParameterChangeTracker::Record(OpaqueFilterData* filter, uint32_t bit) {
    const auto entry = std::find_if(changes_.begin(), changes_.end(),
                                    [filter](const Change& change) { return change.first == filter; });
    if (entry != changes_.end()) {
        entry->second |= bit;
    } else {
        changes_.emplace_back(filter, bit);
    }
}

void VorixFilterParameterChangeTracker::Forget(const OpaqueFilterData* filter) {
    std::erase_if(changes_, [filter](const Change& change) { return change.first == filter; });
}

}  // namespace vorix
