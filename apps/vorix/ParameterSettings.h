#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/ChannelConfig.h"

namespace vorix {
class ZORPluginMetaClass;
struct ZORParameterInfo;
}  // namespace vorix

namespace vorix::cli {

// One host parameter change given as NAME=VALUE on the command line, still unresolved.
struct ParameterSetting {
    std::string name;
    float value = 0.0f;
    std::string text;  // as typed, for messages
};

// Splits NAME=VALUE. Throws UsageError when the "=" or the number is missing. Any thread; pure.
ParameterSetting ParseParameterSetting(std::string_view text);

// The row of the product's table that `name` means: the internal name ("prmControl_1_Gain",
// "prmLeftGain") or the name the editor shows for the channel layout ("B: Gain", "Left Gain"),
// letter case aside. Throws UsageError naming the parameter when none fits. Main thread.
const ZORParameterInfo& FindParameterByName(const ZORPluginMetaClass& metaClass,
                                            std::string_view name, const ChannelConfig& config);

}  // namespace vorix::cli
