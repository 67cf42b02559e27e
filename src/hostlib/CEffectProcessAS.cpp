#include "hostlib/CEffectProcessAS.h"

namespace vorix {

void CEffectProcessAS::AnalyzeAudio() {}

std::int32_t CEffectProcessAS::GetExtra(std::int32_t /*selector*/) {
    return 0;
}

AudioConnection* CEffectProcessAS::GetInputConnection(std::int32_t connection) noexcept {
    if (connection < 0 || connection >= kMaxConnections) return nullptr;
    return &inputs_[static_cast<std::size_t>(connection)];
}

AudioConnection* CEffectProcessAS::GetOutputConnection(std::int32_t connection) noexcept {
    if (connection < 0 || connection >= kMaxConnections) return nullptr;
    return &outputs_[static_cast<std::size_t>(connection)];
}

}  // namespace vorix
