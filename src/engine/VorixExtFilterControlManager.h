#pragma once

#include <array>
#include <cstdint>
#include <utility>

#include "engine/ExtFilterControl.h"
#include "framework/MessagePublisher.h"

namespace vorix {

class Ombrel;

// The ten automation slots of one configuration. A host automates a fixed list of parameters
// while filters come and go: slot n owns host parameters 3n (frequency), 3n + 1 (gain) and
// 3n + 2 (Q, slope or bandwidth), and a filter bound to it is moved by them and reports its own
// edits under them. Bindings are announced on the class 'gene'. Main thread, except where told.
class VorixExtFilterControlManager : public MessagePublisher {
  public:
    static constexpr int32_t kSlotCount = 10;
    // What ControlOfFilter answers for a filter or parameter without a host parameter.
    static constexpr int32_t kNoControl = -1;

    VorixExtFilterControlManager(PluginServices* services, Ombrel* engine);

    // Host control thread. A host value for parameter `index`; an index outside the slots does
    // nothing.
    void SetControlValue(int32_t index, float value, float sampleRate);
    // Any thread but audio. The host's view of parameter `index`: 0 for a free slot, a missing
    // parameter or an index outside the slots.
    float GetControlValue(int32_t index, float sampleRate) const;
    // The filter and parameter bit behind a host parameter: null and 0 where there is none.
    std::pair<OpaqueFilterData*, uint32_t> FilterOfControl(int32_t index) const;
    // The host parameter and its present value for a filter's parameter bit; kNoControl when the
    // filter holds no slot or the bit has no host parameter.
    std::pair<int32_t, float> ControlOfFilter(const OpaqueFilterData* filter, uint32_t bit,
                                              float sampleRate) const;
    // The slot that `filter` holds, or -1.
    int32_t SlotOfFilter(const OpaqueFilterData* filter) const;
    static constexpr int32_t SlotCount() { return kSlotCount; }
    // The filter of a slot; null when free or out of range.
    OpaqueFilterData* FilterOfSlot(int32_t slot) const;
    // The lowest free slot, or -1.
    int32_t FirstFreeSlot() const;

    // Binds `filter` to `slot`, moving it from a slot it held and evicting the slot's former
    // filter, and shows the host the new filter's values. Null or a slot out of range does nothing.
    void AssignFilter(OpaqueFilterData* filter, int32_t slot);
    // Frees the filter's slot, if it holds one.
    void DetachFilter(const OpaqueFilterData* filter);
    // Frees every slot.
    void ClearAll();
    // Reports every slot's three values to the host; without `all` free slots are left out.
    void RefreshHost(bool all);
    // Main thread. Whether automation moved the parameter since the last look; marks it seen.
    bool TakeChanged(int32_t index);

  private:
    ExtFilterControl* SlotOfIndex(int32_t index);
    const ExtFilterControl* SlotOfIndex(int32_t index) const;
    void ReportSlot(int32_t slot);

    std::array<ExtFilterControl, kSlotCount> controls_;
    Ombrel* engine_;
};

}  // namespace vorix
