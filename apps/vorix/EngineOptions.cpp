#include "vorix/EngineOptions.h"

namespace vorix::cli {
namespace {

constexpr double kLowestRate = 1000.0;
constexpr double kHighestRate = 768000.0;
constexpr float kDefaultRate = 44100.0f;

}  // namespace

EngineSetup ParseEngineFormat(const ParsedArguments& parsed) {
    EngineSetup setup;
    setup.sampleRate = kDefaultRate;
    if (auto rate = parsed.Value("--rate")) {
        setup.sampleRate =
            static_cast<float>(ParseNumber(*rate, "the rate", kLowestRate, kHighestRate));
    }
    if (auto channels = parsed.Value("--channels")) {
        setup.channels =
            static_cast<std::int32_t>(ParseWholeNumber(*channels, "the channel count", 1, 2));
    }
    return setup;
}

}  // namespace vorix::cli
