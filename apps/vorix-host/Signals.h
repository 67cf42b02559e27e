#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "vorix-host/AudioData.h"

namespace vorix {

// A sine of `frequency` Hz and peak `amplitude`, the same on every channel. Any thread.
AudioData GenerateSine(std::int32_t sampleRate, std::int32_t channels, std::int64_t frames,
                       double frequency, double amplitude);

// What the command line's "sine:HZ[:AMPLITUDE[:SECONDS]]" asks for.
struct SineSignal {
    double frequency = 1000.0;
    double amplitude = 0.5;
    double seconds = 2.0;
};

// The sine a text of that form asks for; none for text that does not begin with "sine:". Throws
// UsageError for a malformed or out-of-range sine. Any thread.
std::optional<SineSignal> ParseSineSignal(std::string_view text);

}  // namespace vorix
