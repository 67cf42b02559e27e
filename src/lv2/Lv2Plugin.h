#pragma once

#include <lv2/state/state.h>
#include <lv2/worker/worker.h>

#include <array>
#include <atomic>
#include <cstdint>
#include <memory>
#include <vector>

#include "core/PluginCore.h"
#include "core/ZORPluginMetaClass.h"
#include "lv2/Lv2ControlInputs.h"
#include "lv2/Lv2HostFeatures.h"
#include "lv2/Lv2Log.h"
#include "lv2/Lv2PluginPlatform.h"
#include "lv2/Lv2PortLayout.h"
#include "platform/PlatformMutex.h"

namespace vorix {

// One instance of Vorix in an LV2 host: the product's core behind the host's ports.
//
// Threads, in LV2's terms. Instantiation, activation, state restore and destruction never overlap
// any other call on the instance but the worker's. run() is the audio thread: it writes the
// automation slots straight into the filters, hands the output trims to the worker, runs the
// core and fills the output ports; it never allocates, waits or throws, and in a host with a
// worker it never takes a lock or sends a message. The
// worker and state save may run beside run(); they, state restore and everything else that
// reaches the engine's message bus and controls take `engineMutex_`, so they never overlap each
// other. In a host without a worker (lv2apply) run() applies the trims itself, before the block,
// if the lock is free at once, and otherwise offers them again at the next run(): it never waits.
class Lv2Plugin {
  public:
    // The core's piece of audio: a host block beyond it is cut into pieces of this length.
    static constexpr std::int32_t kLongestPiece = 4096;

    // Instantiation thread. An instance with `channels` channels (1 or 2) at `sampleRate`, set
    // up as the product's host layer sets a core up; throws when the engine cannot be made. The
    // product's meta class maker must be registered first (the module's entry does it).
    Lv2Plugin(std::int32_t channels, double sampleRate, const Lv2HostFeatures& features);
    ~Lv2Plugin();
    Lv2Plugin(const Lv2Plugin&) = delete;
    Lv2Plugin& operator=(const Lv2Plugin&) = delete;

    // Audio or instantiation thread; never allocates. Points port `index` at the host's buffer;
    // an unknown index is ignored.
    void ConnectPort(std::uint32_t index, void* data) noexcept;
    // Instantiation thread. Activation clears the filters' and meters' memories.
    void Activate() noexcept;
    void Deactivate() noexcept;
    // Audio thread. Takes the moved controls, runs `samples` frames, fills the output ports.
    void Run(std::uint32_t samples) noexcept;

    // Worker thread. Applies one change that run() handed over.
    LV2_Worker_Status Work(std::uint32_t size, const void* data) noexcept;

    // State thread, possibly beside run(). Stores the settings document under the settings key,
    // and the values the control ports show under the port values key.
    LV2_State_Status Save(LV2_State_Store_Function store, LV2_State_Handle handle) noexcept;
    // Instantiation thread, possibly beside the worker. Loads the settings document of a state or
    // preset, and takes the port values it recorded as no change (Lv2ControlInputs); a bad
    // document is told to the host's log and leaves the instance as it was.
    LV2_State_Status Restore(LV2_State_Retrieve_Function retrieve,
                             LV2_State_Handle handle) noexcept;

  private:
    void ApplyParameter(std::int32_t index, float value) noexcept;
    bool DeferParameter(std::int32_t index, float value) noexcept;
    void WriteOutputPorts() noexcept;
    std::int32_t BypassMode() noexcept;
    void TakeRecordedPortValues(LV2_State_Retrieve_Function retrieve, LV2_State_Handle handle);
    LV2_State_Status StorePortValues(LV2_State_Store_Function store, LV2_State_Handle handle);

    MetaClassReference metaClass_;
    Lv2Log log_;
    Lv2PluginPlatform platform_;
    std::unique_ptr<PluginCore> core_;
    Lv2PortLayout layout_;
    Lv2ControlInputs controls_;
    LV2_Worker_Schedule* worker_;
    LV2_URID settingsKey_ = 0;
    LV2_URID portValuesKey_ = 0;
    LV2_URID stringType_ = 0;
    PlatformMutex engineMutex_;
    // Restores so far: a trim handed to the worker before the last one is out of date.
    std::atomic<std::uint32_t> restoreCount_{0};

    // The host's buffers, as connected.
    std::array<float*, 2> inputs_{};
    std::array<float*, 2> outputs_{};
    std::array<float*, 2> meters_{};
    const float* enabled_ = nullptr;
    bool enabledLast_ = true;  // the switch's last value that was a number
    float* latency_ = nullptr;
    std::vector<float*> parameterOutputs_;  // by table index; null for the host's inputs
    std::array<std::int32_t, 2> meterIds_{};
};

}  // namespace vorix
