#pragma once

#include <memory>

#include "hostlib/CEffectType.h"
#include "hostlib/CProcessGroup.h"

namespace vorix {

// A group whose types render audio. It adds nothing to the process group's roles; it is the
// level at which processor-card plug-ins would differ.
class CDSPProcessGroup : public CProcessGroup {};

// The group of an effect plug-in: its types are effect types. A plug-in derives its group from
// this and builds the types in CreateEffectTypes. Main thread.
class CEffectGroup : public CDSPProcessGroup {
  public:
    // Main thread. Takes a configured effect type over and lists it; answers it, so that it can
    // serve as the model of a related type.
    CEffectType& AddEffectType(std::unique_ptr<CEffectType> type) {
        CEffectType& added = *type;
        AddProcessType(std::move(type));
        return added;
    }
};

}  // namespace vorix
