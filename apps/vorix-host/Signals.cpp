#include "vorix-host/Signals.h"

#include <cmath>
#include <numbers>

#include "vorix-host/ArgumentList.h"
#include "vorix-host/HostError.h"

namespace vorix {
namespace {

constexpr std::string_view kSinePrefix = "sine:";
// Beyond this a generated signal would not fit the host's memory as one track.
constexpr double kLongestSeconds = 3600.0;

}  // namespace

AudioData GenerateSine(std::int32_t sampleRate, std::int32_t channels, std::int64_t frames,
                       double frequency, double amplitude) {
    AudioData audio;
    audio.sampleRate = sampleRate;
    std::vector<float> wave(static_cast<std::size_t>(frames));
    const double step = 2.0 * std::numbers::pi * frequency / sampleRate;
    for (std::int64_t i = 0; i < frames; ++i) {
        wave[static_cast<std::size_t>(i)] =
            static_cast<float>(amplitude * std::sin(step * static_cast<double>(i)));
    }
    audio.channels.assign(static_cast<std::size_t>(channels), wave);
    return audio;
}

std::optional<SineSignal> ParseSineSignal(std::string_view text) {
    if (!text.starts_with(kSinePrefix)) return std::nullopt;
    text.remove_prefix(kSinePrefix.size());
    SineSignal sine;
    double* fields[] = {&sine.frequency, &sine.amplitude, &sine.seconds};
    const char* names[] = {"sine's frequency", "sine's amplitude", "sine's length"};
    for (std::size_t k = 0; k < 3 && !text.empty(); ++k) {
        const std::size_t colon = text.find(':');
        *fields[k] = ParseDecimal(text.substr(0, colon), names[k]);
        text = colon == std::string_view::npos ? std::string_view() : text.substr(colon + 1);
        if (colon != std::string_view::npos && text.empty()) {
            throw UsageError("A sine's last field is missing after its colon.");
        }
    }
    if (!text.empty())
        throw UsageError("A sine takes at most a frequency, an amplitude and a length.");
    if (sine.frequency <= 0.0 || sine.seconds <= 0.0 || sine.seconds > kLongestSeconds) {
        throw UsageError("A sine needs a frequency above 0 Hz and a length of up to an hour.");
    }
    return sine;
}

}  // namespace vorix
