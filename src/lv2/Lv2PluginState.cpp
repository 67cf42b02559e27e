// The instance's state: the settings document, the same text as the product's host chunk, and the
// values the host's control ports showed, each under its own key. Presets of the bundle are
// states of the same form.

#include <lv2/state/state.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <mutex>
#include <string>
#include <vector>

#include "lv2/Lv2Plugin.h"
#include "lv2/Lv2PortRecord.h"

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
        const LV2_State_Status stored =
            store(handle, settingsKey_, text.c_str(), text.size() + 1, stringType_,
                  LV2_STATE_IS_POD | LV2_STATE_IS_PORTABLE);
        return stored == LV2_STATE_SUCCESS ? StorePortValues(store, handle) : stored;
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
        // A bad document is told to the log by the core, which then keeps its filters; the
        // port values recorded with it then say nothing about the engine. (The core tells a
        // refusal by its chunk checks once per instance: a second one goes unseen here, and
        // costs only that the recorded values count as no change.)
        const std::lock_guard lock(engineMutex_);
        const std::uint32_t errors = log_.ErrorCount();
        core_->SetChunk(value, static_cast<std::int32_t>(size), true);
        restoreCount_.fetch_add(1, std::memory_order_relaxed);
        if (log_.ErrorCount() == errors) TakeRecordedPortValues(retrieve, handle);
    } catch (...) {
        log_.Error(kRestoreFailed);
        return LV2_STATE_ERR_UNKNOWN;
    }
    return LV2_STATE_SUCCESS;
}

// The values each control port may show for the document saved, by symbol; a port with more
// than one has a line for each.
LV2_State_Status Lv2Plugin::StorePortValues(LV2_State_Store_Function store,
                                            LV2_State_Handle handle) {
    const std::vector<Lv2ControlInputs::QuietValues> quiet = controls_.Recordable();
    std::vector<Lv2PortValue> values;
    for (std::size_t index = 0; index < quiet.size(); ++index) {
        for (const float value : quiet[index]) {
            if (std::isnan(value)) continue;
            values.push_back(
                {metaClass_.get()->GetParameterInfo(static_cast<std::int32_t>(index))->name,
                 value});
        }
    }
    const std::string text = Lv2PortRecordText(values);
    return store(handle, portValuesKey_, text.c_str(), text.size() + 1, stringType_,
                 LV2_STATE_IS_POD | LV2_STATE_IS_PORTABLE);
}

// A state without port values (one saved before they were kept, or made by another tool) leaves
// the ports as they are: the values they show now stay no change.
void Lv2Plugin::TakeRecordedPortValues(LV2_State_Retrieve_Function retrieve,
                                       LV2_State_Handle handle) {
    std::size_t size = 0;
    std::uint32_t type = 0;
    std::uint32_t flags = 0;
    const void* value = retrieve(handle, portValuesKey_, &size, &type, &flags);
    if (value == nullptr || type != stringType_) return;
    const ZORPluginMetaClass& metaClass = *metaClass_.get();
    Lv2ControlInputs::QuietValues none;
    none.fill(std::numeric_limits<float>::quiet_NaN());
    std::vector<Lv2ControlInputs::QuietValues> recorded(
        static_cast<std::size_t>(metaClass.GetParameterCount()), none);
    std::vector<std::size_t> counts(recorded.size(), 0);
    const auto length = static_cast<std::int32_t>(
        std::min<std::size_t>(size, std::numeric_limits<std::int32_t>::max()));
    for (const Lv2PortValue& entry : ReadLv2PortRecord(ChunkText(value, length))) {
        for (std::size_t index = 0; index < recorded.size(); ++index) {
            if (entry.symbol !=
                    metaClass.GetParameterInfo(static_cast<std::int32_t>(index))->name ||
                counts[index] == Lv2ControlInputs::kQuietValues) {
                continue;
            }
            recorded[index][counts[index]++] = entry.value;
        }
    }
    controls_.Restored(recorded);
}

}  // namespace vorix
