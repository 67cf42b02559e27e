#include "lv2/Lv2ControlInputs.h"

#include "core/ZORPluginMetaClass.h"
#include "engine/VorixParameterIds.h"

namespace vorix {

namespace {

constexpr float kNone = std::numeric_limits<float>::quiet_NaN();

}  // namespace

Lv2ControlInputs::Lv2ControlInputs(const ZORPluginMetaClass& metaClass) {
    const std::int32_t count = metaClass.GetParameterCount();
    const auto size = static_cast<std::size_t>(count);
    ports_.assign(size, nullptr);
    published_ = std::make_unique<std::atomic<float>[]>(size * kQuietValues);
    for (std::int32_t index = 0; index < count; ++index) {
        const ZORParameterInfo& info = *metaClass.GetParameterInfo(index);
        Row row;
        row.min = info.min;
        row.max = info.max;
        row.audioSafe = AppliesOnAudioThread(info.id);
        row.values.fill(kNone);
        row.values[0] = info.defaultValue;
        rows_.push_back(row);
        if (IsHostInput(info)) {
            Publish(static_cast<std::size_t>(index));
        } else {
            for (std::size_t k = 0; k < kQuietValues; ++k)
                published_[static_cast<std::size_t>(index) * kQuietValues + k].store(kNone);
        }
    }
}

void Lv2ControlInputs::Connect(std::int32_t index, const float* port) noexcept {
    if (index >= 0 && static_cast<std::size_t>(index) < ports_.size()) {
        ports_[static_cast<std::size_t>(index)] = port;
    }
}

float Lv2ControlInputs::Clamp(std::int32_t index, float value) const noexcept {
    if (index < 0 || static_cast<std::size_t>(index) >= rows_.size() || std::isnan(value)) {
        return value;
    }
    const Row& row = rows_[static_cast<std::size_t>(index)];
    return std::clamp(value, row.min, row.max);
}

std::vector<Lv2ControlInputs::QuietValues> Lv2ControlInputs::Recordable() const {
    std::vector<QuietValues> values(rows_.size());
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        for (std::size_t k = 0; k < kQuietValues; ++k)
            values[i][k] = published_[i * kQuietValues + k].load(std::memory_order_relaxed);
    }
    return values;
}

// The recorded values first, then those of before the restore that are not among them, as many
// as there is room for; a recorded value the port could show before settles nothing.
void Lv2ControlInputs::Restored(const std::vector<QuietValues>& recorded) noexcept {
    for (std::size_t i = 0; i < rows_.size() && i < recorded.size(); ++i) {
        if (std::isnan(published_[i * kQuietValues].load(std::memory_order_relaxed))) continue;
        Row& row = rows_[i];
        Row next = row;
        next.values.fill(kNone);
        next.settles.fill(false);
        next.count = 0;
        const auto add = [&](float value, bool fromState) {
            if (std::isnan(value)) return;
            value = std::clamp(value, row.min, row.max);
            for (std::size_t k = 0; k < next.count; ++k) {
                if (next.values[k] != value) continue;
                next.settles[k] = next.settles[k] && fromState;
                return;
            }
            if (next.count == kQuietValues) return;
            next.values[next.count] = value;
            next.settles[next.count++] = fromState;
        };
        for (const float value : recorded[i])
            add(value, true);
        if (next.count == 0) continue;
        for (std::size_t k = 0; k < row.count; ++k)
            add(row.values[k], false);
        next.restorePending = true;
        row = next;
        Publish(i);
    }
}

void Lv2ControlInputs::Settle(std::size_t i, float value) noexcept {
    Row& row = rows_[i];
    row.values.fill(kNone);
    row.values[0] = value;
    row.settles.fill(false);
    row.count = 1;
    row.restorePending = false;
    Publish(i);
}

void Lv2ControlInputs::Publish(std::size_t i) noexcept {
    for (std::size_t k = 0; k < kQuietValues; ++k)
        published_[i * kQuietValues + k].store(rows_[i].values[k], std::memory_order_relaxed);
}

// The slots' values are written with atomics only; anything else, the output trims among it,
// reaches controls and the message bus.
bool Lv2ControlInputs::AppliesOnAudioThread(std::int32_t id) noexcept {
    return id >= 0 && id < kFilterControlIdCount;
}

}  // namespace vorix
