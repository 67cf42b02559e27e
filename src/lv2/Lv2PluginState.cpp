// The instance's state: the settings document, the same text as the product's host chunk, kept
// under one key. Presets of the bundle are states of the same form.

#include <lv2/state/state.h>

#include <cstring>
#include <limits>
#include <mutex>
#include <string>

#include "lv2/Lv2Plugin.h"

namespace vorix {

namespace {

constexpr const char* kNoMapForSave =
    "The host offers no URID map, so the settings cannot be saved.";
constexpr const char* kNoMapForRestore =
    "The host offers no URID map, so the settings cannot be loaded.";
constexpr const char* kSaveFailed = "The settings could not be saved.";
constexpr const char* kRestoreFailed = "The settings could not be loaded.";
constexpr const char* kSettingsNotText = "The saved settings are not text; nothing was loaded.";
constexpr const char* kSettingsTooLarge = "The saved settings are too large; nothing was loaded.";

// A chunk's text: up to its first zero byte, never beyond the chunk.
std::string ChunkText(const void* data, std::int32_t size) {
    const auto* bytes = static_cast<const char*>(data);
    const auto length = static_cast<std::size_t>(size);
    const void* zero = std::memchr(bytes, '\0', length);
    return std::string(bytes, zero != nullptr ? static_cast<const char*>(zero) - bytes : length);
}

}  // namespace

LV2_State_Status Lv2Plugin::Save(LV2_State_Store_Function store, LV2_State_Handle handle) noexcept {
    if (settingsKey_ == 0) {
        log_.Error(kNoMapForSave);
        return LV2_STATE_ERR_NO_FEATURE;
    }
    try {
        std::string text;
        {
            const std::lock_guard lock(engineMutex_);
            void* data = nullptr;
            const std::int32_t size = core_->GetChunk(&data, true);
            // A failed chunk has been told to the user already.
            if (size <= 0 || data == nullptr) return LV2_STATE_ERR_UNKNOWN;
            text = ChunkText(data, size);
        }
        return store(handle, settingsKey_, text.c_str(), text.size() + 1, stringType_,
                     LV2_STATE_IS_POD | LV2_STATE_IS_PORTABLE);
    } catch (...) {
        log_.Error(kSaveFailed);
        return LV2_STATE_ERR_UNKNOWN;
    }
}

LV2_State_Status Lv2Plugin::Restore(LV2_State_Retrieve_Function retrieve,
                                    LV2_State_Handle handle) noexcept {
    if (settingsKey_ == 0) {
        log_.Error(kNoMapForRestore);
        return LV2_STATE_ERR_NO_FEATURE;
    }
    std::size_t size = 0;
    std::uint32_t type = 0;
    std::uint32_t flags = 0;
    const void* value = retrieve(handle, settingsKey_, &size, &type, &flags);
    // A state of port values alone leaves the filters as they are.
    if (value == nullptr) return LV2_STATE_SUCCESS;
    if (type != stringType_) {
        log_.Error(kSettingsNotText);
        return LV2_STATE_ERR_BAD_TYPE;
    }
    if (size > static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max())) {
        log_.Error(kSettingsTooLarge);
        return LV2_STATE_ERR_UNKNOWN;
    }
    try {
        // A bad document is told to the log by the core, which then keeps its filters.
        const std::lock_guard lock(engineMutex_);
        core_->SetChunk(value, static_cast<std::int32_t>(size), true);
    } catch (...) {
        log_.Error(kRestoreFailed);
        return LV2_STATE_ERR_UNKNOWN;
    }
    return LV2_STATE_SUCCESS;
}

}  // namespace vorix
