#pragma once

#include <cstdint>
#include <vector>

namespace vorix {

// Audio as the host holds a track: one buffer per channel, all of the same length.
struct AudioData {
    std::int32_t sampleRate = 48000;
    std::vector<std::vector<float>> channels;

    std::int64_t Frames() const noexcept {
        return channels.empty() ? 0 : static_cast<std::int64_t>(channels.front().size());
    }
    std::int32_t ChannelCount() const noexcept {
        return static_cast<std::int32_t>(channels.size());
    }
};

}  // namespace vorix
