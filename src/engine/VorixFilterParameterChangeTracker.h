#pragma once

#include <cstdint>
#include <utility>
#include <vector>

#include "engine/OmbrelMessageSubscriber.h"

namespace vorix {

struct OpaqueFilterData;

// Collects which parameters of which filters changed until a consumer (the plot, on its timer)
// takes them: one entry per filter with the bits ORed together, however many changes came in
// between. Editor changes, host changes, or both, as chosen at construction. Main thread only.
class VorixFilterParameterChangeTracker : public OmbrelMessageSubscriber {
  public:
    using Change = std::pair<OpaqueFilterData*, uint32_t>;

    VorixFilterParameterChangeTracker(Ombrel* engine, bool trackEditor, bool trackExternal);

    const std::vector<Change>& Changes() const { return changes_; }
    // Hands the changes over and starts afresh.
    std::vector<Change> TakeChanges() { return std::exchange(changes_, {}); }

  protected:
    void HandleFilterMessage(MsgId msgId) override;
    void HandleConfigMessage(MsgId /*msgId*/) override {}

  private:
    void Record(OpaqueFilterData* filter, uint32_t bit);
    void Forget(const OpaqueFilterData* filter);

    std::vector<Change> changes_;
    bool trackEditor_;
    bool trackExternal_;
};

}  // namespace vorix
