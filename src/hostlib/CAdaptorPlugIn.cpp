#include "hostlib/CAdaptorPlugIn.h"

#include "hostlib/CEffectProcessAS.h"
#include "hostlib/LibraryErrors.h"

namespace vorix {
namespace {

bool IsValidSide(float* const* buffers, std::int32_t count) {
    return count >= 0 && count <= CEffectProcessAS::kMaxConnections &&
           (count == 0 || buffers != nullptr);
}

}  // namespace

std::int32_t CAdaptorPlugIn::Render(const RenderBlock& block) noexcept {
    if (block.frames < 0 || !IsValidSide(block.inputs, block.inputCount) ||
        !IsValidSide(block.outputs, block.outputCount)) {
        return kErrBadArgument;
    }
    for (std::int32_t c = 0; c < CEffectProcessAS::kMaxConnections; ++c) {
        // Every input counts the block's length, so that the length is known from connection 0
        // even when the host connects no input there.
        *process_.GetInputConnection(c) = {c < block.inputCount ? block.inputs[c] : nullptr,
                                           block.frames};
        *process_.GetOutputConnection(c) = {c < block.outputCount ? block.outputs[c] : nullptr, 0};
    }
    // The side chain takes the first connection behind the inputs, if one is free.
    process_.sideChainConnection_ = CEffectProcessAS::kNoSideChainConnection;
    if (block.sideChain != nullptr && block.inputCount < CEffectProcessAS::kMaxConnections) {
        *process_.GetInputConnection(block.inputCount) = {block.sideChain, block.frames};
        process_.sideChainConnection_ = block.inputCount;
    }
    return process_.ProcessAudio(block.bypass);
}

}  // namespace vorix
