#include "host/ZORPTProcessAS.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>

#include "core/PluginCore.h"

namespace vorix {
namespace {

// The engine's meter range 0 to 1 spans the host's 0 to 2^31.
constexpr double kMeterScale = 2147483648.0;
// What the engine reads for a clip, and what the host is given for it.
constexpr double kEngineClip = -1.0;
constexpr std::int32_t kHostClip = -1;

std::int32_t HostMeterValue(double engineValue) noexcept {
    const double scaled = engineValue * kMeterScale;
    if (!(scaled > 0.0)) return 0;  // silence, and a value that is not a number
    return scaled >= kMeterScale ? INT32_MAX : static_cast<std::int32_t>(scaled);
}

}  // namespace

std::int32_t ZORPTProcessAS::ProcessAudio(bool bypass) noexcept {
    PluginCore* core = Core();
    const std::int32_t key = GetSideChainConnectionNum();
    float* sideChain = nullptr;
    if (IsSideChainSupported() && key != kNoSideChainConnection) {
        sideChain = GetInputConnection(key)->buffer;
    }
    const std::int32_t total = std::max(0, GetInputConnection(0)->sampleCount);
    const std::int32_t channels = std::min(
        kMaxChannels, std::max(CDSPProcess::GetInputCount(), CDSPProcess::GetOutputCount()));
    float* inputs[kMaxChannels] = {nullptr, nullptr};
    float* outputs[kMaxChannels] = {nullptr, nullptr};
    ConnectChannels(channels, total, bypass, inputs, outputs);
    const std::int32_t mode = IsMasterBypassed() ? 1 : 0;
    if (core != nullptr && sideChain != nullptr) {
        core->SetSideChainInput(reinterpret_cast<std::intptr_t>(sideChain));
    }
    for (std::int32_t done = 0; core != nullptr && done < total;) {
        const std::int32_t n = std::min(BlockSize(), total - done);
        core->Process(inputs, outputs, n, false, mode);
        done += n;
        for (std::int32_t c = 0; c < channels; ++c) {
            if (inputs[c] != ZeroInput()) inputs[c] += n;
            if (outputs[c] != ScratchOutput()) outputs[c] += n;
        }
        if (sideChain != nullptr && done < total) {
            sideChain += n;
            core->SetSideChainInput(reinterpret_cast<std::intptr_t>(sideChain));
        }
    }
    for (std::int32_t c = 0; c < kMaxConnections; ++c) {
        GetInputConnection(c)->sampleCount = 0;
        GetOutputConnection(c)->sampleCount = total;
    }
    return total;
}

void ZORPTProcessAS::ConnectChannels(std::int32_t channels, std::int32_t total, bool bypass,
                                     float** inputs, float** outputs) noexcept {
    const auto count = static_cast<std::size_t>(total);
    for (std::int32_t c = 0; c < channels; ++c) {
        float* in = GetInputConnection(c)->buffer;
        float* out = GetOutputConnection(c)->buffer;
        if (out != nullptr && bypass && in != out) {
            if (in != nullptr) {
                std::memmove(out, in, count * sizeof(float));
            } else {
                std::fill_n(out, count, 0.0f);
            }
        }
        inputs[c] = in != nullptr ? in : ZeroInput();
        outputs[c] = out != nullptr ? out : ScratchOutput();
    }
}

void ZORPTProcessAS::GetDelaySamplesLatency(std::int32_t& samples) {
    ZORPTProcess::GetDelaySamplesLatency(samples);
    samples = samples > kUncompensatedLatency ? samples - kUncompensatedLatency : 0;
}

void ZORPTProcessAS::GetMeters(std::span<std::int32_t> values, std::span<bool> clipped) {
    const std::vector<std::int32_t>& ids = MeterIds();
    const std::size_t count = std::min({ids.size(), values.size(), clipped.size()});
    for (std::size_t k = 0; k < count; ++k) {
        const double value = Core() != nullptr ? Core()->GetMeterValue(ids[k]) : 0.0;
        clipped[k] = value == kEngineClip;
        values[k] = clipped[k] ? kHostClip : HostMeterValue(value);
        if (clipped[k]) SetClipIndicator();
    }
}

void ZORPTProcessAS::ResetClipIndicators() {
    CEffectProcess::ResetClipIndicators();
    if (Core() != nullptr) Core()->ResetClipIndicators();
}

void ZORPTProcessAS::ClearClipState() {
    ClearClipIndicator();
}

}  // namespace vorix
