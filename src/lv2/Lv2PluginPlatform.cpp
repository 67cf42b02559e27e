#include "lv2/Lv2PluginPlatform.h"

namespace vorix {

namespace {

// LV2 does not tell a plug-in which host loaded it.
constexpr const char* kLv2HostName = "LV2 Host";

}  // namespace

Lv2PluginPlatform::Lv2PluginPlatform(std::int32_t channels, float sampleRate,
                                     std::int32_t blockSize, ErrorMessageService& messages) noexcept
    : channels_(channels), sampleRate_(sampleRate), blockSize_(blockSize), messages_(messages) {}

std::string Lv2PluginPlatform::GetHostName() const {
    return kLv2HostName;
}

void Lv2PluginPlatform::SetInitialDelay(std::int32_t samples) {
    latency_.store(samples, std::memory_order_relaxed);
}

void Lv2PluginPlatform::SetTailDelay(std::int32_t samples) {
    latency_.store(samples, std::memory_order_relaxed);
}

bool Lv2PluginPlatform::IsInputConnected(std::int32_t channel) const {
    return channel >= 0 && channel < channels_;
}

bool Lv2PluginPlatform::IsOutputConnected(std::int32_t channel) const {
    return channel >= 0 && channel < channels_;
}

}  // namespace vorix
