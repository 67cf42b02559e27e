#include "lv2/Lv2Names.h"

namespace vorix {

std::string Lv2PresetUri(std::int32_t channels, std::int32_t number) {
    return std::string(Lv2PluginUri(channels)) + "-preset-" + std::to_string(number);
}

}  // namespace vorix
