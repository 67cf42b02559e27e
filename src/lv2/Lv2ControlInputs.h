#pragma once

#include <algorithm>
#include <array>
#include <atomic>
#include <cmath>
#include <cstdint>
#include <limits>
#include <memory>
#include <vector>

#include "core/ZORParameterInfo.h"

namespace vorix {

class ZORPluginMetaClass;

// A host parameter change that leaves the audio thread for the worker: plain bytes, so that the
// host can copy it. `restoreCount` tells a change made before the last state restore, which the
// restored document has replaced.
struct Lv2ParameterChange {
    std::int32_t index;  // position in the parameter table
    float value;         // held to the parameter's range already
    std::uint32_t restoreCount;
};

// The control ports of the host parameters, as run() reads them.
//
// Every value enters held to the parameter table's range, as the product's host controls hold
// theirs; an infinity is the nearest end, and a NaN is ignored (the port keeps acting with its
// last value). A port acts on the engine when its held value differs from the one it last acted
// with, the table's default at first; so a host that sets every port to its default at start
// leaves the engine as it is.
//
// A restored state brings the values the host's port could show for its document without that
// being a change: what the port showed when the state was saved (two or more values, if it was
// saved right after a restore, before the host had set the port or not). Those, and the values
// the port could show before the restore (the stale values of a host that restores ports after
// the state, or not at all), are no change. Once the port shows a recorded value that it could
// not have shown before, the host has restored it: the port settles there, and from then on
// only a move acts. So a session sounds as it was saved whatever order the host restores ports
// and state in. Hosts print port values in fewer digits than a float has: while a restore is
// pending, a value within one part in 10^5 of one of these counts as the same.
//
// Parameters come in two kinds. Most are written straight into the engine from the audio
// thread: an automation slot's value is a seqlock write into the filter records, so it neither
// allocates, locks nor sends a message. The output trims go through the engine's gain controls,
// which publish messages; they are handed to a non-real-time context instead.
class Lv2ControlInputs {
  public:
    // The most values a port may show for one document without acting.
    static constexpr std::size_t kQuietValues = 4;
    using QuietValues = std::array<float, kQuietValues>;  // NaN where there are fewer

    // Instantiation thread. Ports for every row of the product's table, none connected yet;
    // allocates.
    explicit Lv2ControlInputs(const ZORPluginMetaClass& metaClass);

    // Audio or instantiation thread (the host's connect_port). A null port is not read; a row
    // that is no host input is never connected.
    void Connect(std::int32_t index, const float* port) noexcept;

    // Audio thread. For each port that moved, in table order: `apply(index, value)` for a
    // parameter the audio thread may write, `defer(index, value)` for one it must hand on, with
    // the value held to the parameter's range. A deferral that answers false (the hand-off was
    // full) is offered again at the next call. Never allocates, locks or throws.
    template <typename Apply, typename Defer>
    void Scan(Apply&& apply, Defer&& defer) noexcept {
        for (std::size_t i = 0; i < ports_.size(); ++i) {
            if (ports_[i] == nullptr) continue;
            const float raw = *ports_[i];
            if (std::isnan(raw)) continue;
            const float value = std::clamp(raw, rows_[i].min, rows_[i].max);
            if (!Moved(i, value)) continue;
            const auto index = static_cast<std::int32_t>(i);
            if (rows_[i].audioSafe) {
                apply(index, value);
            } else if (!defer(index, value)) {
                continue;
            }
            Settle(i, value);
        }
    }

    // Any thread. `value` held to the range of row `index`; NaN stays NaN.
    float Clamp(std::int32_t index, float value) const noexcept;

    // State thread, possibly beside Scan(). By table index, the values each port may show for
    // the engine's present document without acting: the one it last acted with or showed, and
    // while a restore is pending the others; all NaN for rows that are no host input. A state
    // saved now records them. Allocates.
    std::vector<QuietValues> Recordable() const;

    // Instantiation thread, after the engine took a restored document. By table index, the
    // values the state recorded for each port, NaN where it does not say.
    void Restored(const std::vector<QuietValues>& recorded) noexcept;

    // Whether row `info` is a host input; the rest (the session counter, which nobody may
    // automate) are output ports that show the engine's value. Any thread.
    static bool IsHostInput(const ZORParameterInfo& info) noexcept { return info.automatable; }
    // Whether the engine takes the parameter of `id` on the audio thread. Any thread.
    static bool AppliesOnAudioThread(std::int32_t id) noexcept;

  private:
    struct Row {
        float min = 0.0f;
        float max = 0.0f;
        bool audioSafe = false;
        // The values that are no change, [0, count); showing one whose `settles` is set (it
        // came with the restored state, and the port could not show it before) settles the port
        // on it. Once settled, values[0] alone: the value the port last acted with or settled on.
        QuietValues values{};
        std::array<bool, kQuietValues> settles{};
        std::size_t count = 1;
        bool restorePending = false;
    };

    // Whether `value` on port `i` is a change the engine must hear of. Audio thread.
    bool Moved(std::size_t i, float value) noexcept {
        const Row& row = rows_[i];
        if (!row.restorePending) return value != row.values[0];
        for (std::size_t k = 0; k < row.count; ++k) {
            if (!SameShown(value, row.values[k])) continue;
            if (row.settles[k]) Settle(i, value);
            return false;
        }
        return true;
    }
    static bool SameShown(float a, float b) noexcept {
        return a == b || std::fabs(a - b) <= 1e-5f * std::max(std::fabs(a), std::fabs(b));
    }
    // Port `i` now stands at `value`, its one quiet value. Audio or instantiation thread.
    void Settle(std::size_t i, float value) noexcept;
    void Publish(std::size_t i) noexcept;

    std::vector<const float*> ports_;
    std::vector<Row> rows_;
    // Each row's quiet values as Recordable() reads them, kQuietValues per row.
    std::unique_ptr<std::atomic<float>[]> published_;
};

}  // namespace vorix
