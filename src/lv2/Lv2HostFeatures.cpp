#include "lv2/Lv2HostFeatures.h"

#include <lv2/atom/atom.h>
#include <lv2/buf-size/buf-size.h>
#include <lv2/options/options.h>

#include <cstring>

namespace vorix {

namespace {

const void* FindFeature(const LV2_Feature* const* features, const char* uri) noexcept {
    for (const LV2_Feature* const* f = features; f != nullptr && *f != nullptr; ++f) {
        if (std::strcmp((*f)->URI, uri) == 0) return (*f)->data;
    }
    return nullptr;
}

// The host's largest block, if its options name one as a 32-bit integer.
std::int32_t MaxBlockLength(const LV2_Options_Option* options, LV2_URID_Map* map) noexcept {
    if (options == nullptr || map == nullptr) return 0;
    const LV2_URID key = map->map(map->handle, LV2_BUF_SIZE__maxBlockLength);
    const LV2_URID intType = map->map(map->handle, LV2_ATOM__Int);
    for (const LV2_Options_Option* o = options; o->key != 0; ++o) {
        if (o->key == key && o->type == intType && o->size == sizeof(std::int32_t)) {
            std::int32_t length = 0;
            std::memcpy(&length, o->value, sizeof length);
            return length > 0 ? length : 0;
        }
    }
    return 0;
}

}  // namespace

Lv2HostFeatures Lv2HostFeatures::Read(const LV2_Feature* const* features) noexcept {
    Lv2HostFeatures found;
    found.map = static_cast<LV2_URID_Map*>(const_cast<void*>(FindFeature(features, LV2_URID__map)));
    found.log = static_cast<LV2_Log_Log*>(const_cast<void*>(FindFeature(features, LV2_LOG__log)));
    found.worker = static_cast<LV2_Worker_Schedule*>(
        const_cast<void*>(FindFeature(features, LV2_WORKER__schedule)));
    const auto* options =
        static_cast<const LV2_Options_Option*>(FindFeature(features, LV2_OPTIONS__options));
    found.maxBlockLength = MaxBlockLength(options, found.map);
    return found;
}

}  // namespace vorix
