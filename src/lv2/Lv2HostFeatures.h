#pragma once

#include <lv2/core/lv2.h>
#include <lv2/log/log.h>
#include <lv2/urid/urid.h>
#include <lv2/worker/worker.h>

#include <cstdint>

namespace vorix {

// What a host offers an instance, taken from the feature list at instantiation. Every feature is
// optional: a plain host (lv2apply) offers none, and the plug-in still runs there.
struct Lv2HostFeatures {
    LV2_URID_Map* map = nullptr;
    LV2_Log_Log* log = nullptr;
    LV2_Worker_Schedule* worker = nullptr;
    // The largest block the host will run, from its options; 0 when it does not say.
    std::int32_t maxBlockLength = 0;

    // Instantiation thread. Reads a host's null-terminated feature list; null reads as empty.
    static Lv2HostFeatures Read(const LV2_Feature* const* features) noexcept;
};

}  // namespace vorix
