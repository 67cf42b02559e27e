#pragma once

#include <cmath>
#include <cstdint>
#include <vector>

namespace vorix {

class ZORPluginMetaClass;

// A host parameter change that leaves the audio thread for the worker: plain bytes, so that the
// host can copy it.
struct Lv2ParameterChange {
    std::int32_t index;  // position in the parameter table
    float value;
};

// The control ports of the host parameters, as run() reads them. A port acts on the engine when
// its value differs from the one it held the last time it acted, the table's default at first;
// so a host that sets every port to its default at start leaves the engine as it is, and a
// restored state is not overwritten by ports that nobody moved. A NaN is ignored.
//
// Parameters come in two kinds. Most are written straight into the engine from the audio
// thread: an automation slot's value is a seqlock write into the filter records, and the
// session counter is an atomic store, so neither allocates, locks or sends a message. The output
// trims go through the engine's gain controls, which publish messages; they are handed to a
// non-real-time context instead.
class Lv2ControlInputs {
  public:
    // Instantiation thread. Ports for every row of the product's table, none connected yet;
    // allocates.
    explicit Lv2ControlInputs(const ZORPluginMetaClass& metaClass);

    // Instantiation thread (the host's connect_port). A null port is not read.
    void Connect(std::int32_t index, const float* port) noexcept;

    // Audio thread. For each port that moved, in table order: `apply(index, value)` for a
    // parameter the audio thread may write, `defer(index, value)` for one it must hand on. A
    // deferral that answers false (the hand-off was full) is offered again at the next call.
    // Never allocates, locks or throws.
    template <typename Apply, typename Defer>
    void Scan(Apply&& apply, Defer&& defer) noexcept {
        for (std::size_t i = 0; i < ports_.size(); ++i) {
            if (ports_[i] == nullptr) continue;
            const float value = *ports_[i];
            if (std::isnan(value) || value == acted_[i]) continue;
            const auto index = static_cast<std::int32_t>(i);
            if (audioSafe_[i]) {
                apply(index, value);
            } else if (!defer(index, value)) {
                continue;
            }
            acted_[i] = value;
        }
    }

    // Whether the engine takes the parameter of `id` on the audio thread. Any thread.
    static bool AppliesOnAudioThread(std::int32_t id) noexcept;

  private:
    std::vector<const float*> ports_;
    std::vector<float> acted_;     // the value each port last acted with
    std::vector<bool> audioSafe_;  // by table index
};

}  // namespace vorix
