#pragma once

#include <cstdint>

namespace vorix {

// A channel configuration: inputs and outputs.
struct ChannelConfig {
    int32_t inputs = 0;
    int32_t outputs = 0;

    friend bool operator==(const ChannelConfig&, const ChannelConfig&) = default;
};

}  // namespace vorix
