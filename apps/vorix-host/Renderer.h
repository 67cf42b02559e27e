#pragma once

#include <cstdint>
#include <vector>

#include "vorix-host/AudioData.h"
#include "vorix-host/Insert.h"

namespace vorix {

// A host control change at a point of the track.
struct AutomationEvent {
    std::int64_t frame = 0;
    std::int32_t control = 0;
    std::int32_t value = 0;
};

// Plays `input` through `insert` as a host plays a track: processing started, one render call per
// block of `blockSize` samples (the last one shorter), processing stopped. An automation event
// is applied before the first block that starts at or after its frame. The input must have as
// many channels as the insert has inputs; the output has the insert's outputs. Throws HostError
// for a mismatch or a block the insert refuses. Main thread; the render calls come from it too,
// as an offline host makes them.
AudioData RenderThrough(Insert& insert, const AudioData& input, std::int32_t blockSize,
                        std::vector<AutomationEvent> automation = {});

}  // namespace vorix
