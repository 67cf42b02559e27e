#include "lv2/Lv2ControlInputs.h"

#include "core/ZORPluginMetaClass.h"
#include "engine/VorixParameterIds.h"

namespace vorix {

Lv2ControlInputs::Lv2ControlInputs(const ZORPluginMetaClass& metaClass) {
    const std::int32_t count = metaClass.GetParameterCount();
    ports_.assign(static_cast<std::size_t>(count), nullptr);
    for (std::int32_t index = 0; index < count; ++index) {
        const ZORParameterInfo* info = metaClass.GetParameterInfo(index);
        acted_.push_back(info->defaultValue);
        audioSafe_.push_back(AppliesOnAudioThread(info->id));
    }
}

void Lv2ControlInputs::Connect(std::int32_t index, const float* port) noexcept {
    if (index >= 0 && static_cast<std::size_t>(index) < ports_.size()) {
        ports_[static_cast<std::size_t>(index)] = port;
    }
}

// The slots' values and the session counter are written with atomics only; anything else, the
// output trims among it, reaches controls and the message bus.
bool Lv2ControlInputs::AppliesOnAudioThread(std::int32_t id) noexcept {
    return (id >= 0 && id < kFilterControlIdCount) || id == kDirtyId;
}

}  // namespace vorix
