// The audio call: straight copy, suspension, the bypass states and the accumulating output.
// Everything here runs on the audio thread: no allocation, no lock, no exception, no report.

#include <algorithm>
#include <cstring>

#include "core/BypassState.h"
#include "core/PluginCore.h"

namespace vorix {

void PluginCore::Process(float** inputs, float** outputs, std::int32_t samples, bool accumulate,
                         std::int32_t bypassMode) noexcept {
    if (outputs == nullptr || samples <= 0) return;
    if (bypassMode == kBypassModeCopy) {
        CopyThrough(inputs, outputs, samples);
        return;
    }
    // The flag goes up before the suspension is tested, and both are sequentially consistent, as
    // is the AudioLock's raise-then-watch on the other side: either the lock sees this call
    // inside, and waits, or this call sees the suspension, and stays out of the engine.
    inProcess_.store(true, std::memory_order_seq_cst);
    processEntries_.fetch_add(1, std::memory_order_seq_cst);
    std::atomic_thread_fence(std::memory_order_seq_cst);
    if (audioSuspendDepth_.IsRaised()) {
        if (!accumulate) WriteSilence(outputs, samples);
        LeaveProcess();
        return;
    }
    const std::int32_t pieceSize = blockSize_;
    if (samples <= pieceSize) {
        ProcessBlock(inputs, outputs, samples, accumulate, bypassMode);
    } else {
        ProcessPieces(inputs, outputs, samples, accumulate, bypassMode, pieceSize);
    }
    LeaveProcess();
}

// The exit count publishes, with release, that this block has read its last filter record.
void PluginCore::LeaveProcess() noexcept {
    processExits_.fetch_add(1, std::memory_order_release);
    inProcess_.store(false, std::memory_order_release);
}

// A block longer than the block size is the host layer's fault; it is run in pieces of the block
// size, as the host layer would have cut it, so that the saved output fits its buffers.
void PluginCore::ProcessPieces(float** inputs, float** outputs, std::int32_t samples,
                               bool accumulate, std::int32_t bypassMode,
                               std::int32_t pieceSize) noexcept {
    const std::size_t inputChannels =
        std::min(inputPieces_.size(), static_cast<std::size_t>(channelConfig_.inputs));
    const std::size_t outputChannels =
        std::min(outputPieces_.size(), static_cast<std::size_t>(channelConfig_.outputs));
    for (std::int32_t done = 0; done < samples; done += pieceSize) {
        const std::int32_t count = std::min(pieceSize, samples - done);
        for (std::size_t c = 0; c < inputChannels && inputs != nullptr; ++c) {
            inputPieces_[c] = inputs[c] != nullptr ? inputs[c] + done : nullptr;
        }
        for (std::size_t c = 0; c < outputChannels; ++c) {
            outputPieces_[c] = outputs[c] != nullptr ? outputs[c] + done : nullptr;
        }
        ProcessBlock(inputs != nullptr ? inputPieces_.data() : nullptr, outputPieces_.data(), count,
                     accumulate, bypassMode);
    }
}

void PluginCore::ProcessBlock(float** inputs, float** outputs, std::int32_t samples,
                              bool accumulate, std::int32_t bypassMode) noexcept {
    const auto count = static_cast<std::size_t>(samples);
    bypassState_ = NextBypassState(bypassState_, bypassMode);
    if (accumulate) {
        for (std::size_t c = 0; c < accumulateBuffers_.size(); ++c) {
            if (outputs[c] != nullptr) {
                std::memcpy(accumulateBuffers_[c].data(), outputs[c], count * sizeof(float));
            }
        }
    }
    ProcessAudio(inputs, outputs, samples, bypassState_);
    if (accumulate) {
        for (std::size_t c = 0; c < accumulateBuffers_.size(); ++c) {
            float* output = outputs[c];
            if (output == nullptr) continue;
            const float* saved = accumulateBuffers_[c].data();
            for (std::size_t i = 0; i < count; ++i)
                output[i] += saved[i];
        }
    }
}

void PluginCore::CopyThrough(float** inputs, float** outputs, std::int32_t samples) const noexcept {
    if (inputs == nullptr) return;
    // Only channels that exist on both sides: an input array has no entry beyond its count.
    const auto channels = static_cast<std::size_t>(
        std::max(0, std::min(channelConfig_.inputs, channelConfig_.outputs)));
    for (std::size_t c = 0; c < channels; ++c) {
        if (inputs[c] != nullptr && outputs[c] != nullptr && inputs[c] != outputs[c]) {
            std::memmove(outputs[c], inputs[c], static_cast<std::size_t>(samples) * sizeof(float));
        }
    }
}

void PluginCore::WriteSilence(float** outputs, std::int32_t samples) const noexcept {
    const auto channels = static_cast<std::size_t>(std::max(0, channelConfig_.outputs));
    for (std::size_t c = 0; c < channels; ++c) {
        if (outputs[c] != nullptr) std::fill_n(outputs[c], samples, 0.0f);
    }
}

}  // namespace vorix
