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
    double value = 0.0;     // any finite number; held to the parameter's range when applied
    std::string valueText;  // as typed, for messages
};

// Splits NAME=VALUE and checks the name before the value: the name must be one of the product's
// for some channel layout (the layout of the work is not known yet), the value a finite number.
// Throws UsageError otherwise. Main thread.
ParameterSetting ParseParameterSetting(std::string_view text, const ZORPluginMetaClass& metaClass);

// The row of the product's table that `name` means: the internal name ("prmControl_1_Gain",
// "prmLeftGain") or the name the editor shows for the channel layout ("B: Gain", "Left Gain"),
// letter case aside. Throws UsageError naming the parameter when none fits. Main thread.
const ZORParameterInfo& FindParameterByName(const ZORPluginMetaClass& metaClass,
                                            std::string_view name, const ChannelConfig& config);

}  // namespace vorix::cli
