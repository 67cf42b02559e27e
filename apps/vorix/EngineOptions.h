#pragma once

#include "vorix/Arguments.h"
#include "vorix/EngineSession.h"

namespace vorix::cli {

// The options that give an engine without an audio file its format: `--rate HZ` (44100 unless
// given) and `--channels 1|2` (2 unless given), shared by `response` and `show-program`.
inline constexpr OptionDefinition kRateOption{"--rate", true, false};
inline constexpr OptionDefinition kChannelsOption{"--channels", true, false};

// The setup with the rate and channels of the parsed options. Throws UsageError for a rate outside
// 1000 to 768000 Hz or a channel count other than 1 or 2. Any thread; pure.
EngineSetup ParseEngineFormat(const ParsedArguments& parsed);

}  // namespace vorix::cli
