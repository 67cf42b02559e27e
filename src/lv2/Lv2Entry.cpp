// The module's one exported symbol, lv2_descriptor, and the C callbacks behind it. Every callback
// forwards to Lv2Plugin; no exception crosses into the host.

#include <lv2/core/lv2.h>
#include <lv2/state/state.h>
#include <lv2/worker/worker.h>

#include <cstring>
#include <memory>

#include "host/ZORVorixMetaClass.h"
#include "lv2/Lv2HostFeatures.h"
#include "lv2/Lv2Log.h"
#include "lv2/Lv2Names.h"
#include "lv2/Lv2Plugin.h"

namespace vorix {

namespace {

constexpr const char* kInstantiationFailed = "The plug-in could not be set up.";

Lv2Plugin* PluginOf(LV2_Handle instance) {
    return static_cast<Lv2Plugin*>(instance);
}

// Instantiation thread. A new instance, or null after telling the host why.
LV2_Handle Instantiate(const LV2_Descriptor* descriptor, double sampleRate,
                       const char* /*bundlePath*/, const LV2_Feature* const* features) {
    const Lv2HostFeatures host = Lv2HostFeatures::Read(features);
    try {
        const std::int32_t channels = std::strcmp(descriptor->URI, kLv2MonoPluginUri) == 0 ? 1 : 2;
        SetMetaClassMaker([] { return std::make_unique<ZORVorixMetaClass>(); });
        return new Lv2Plugin(channels, sampleRate, host);
    } catch (...) {
        Lv2Log(kLv2BundleName, host.log, host.map).Error(kInstantiationFailed);
        return nullptr;
    }
}

// Instantiation thread.
void ConnectPort(LV2_Handle instance, uint32_t port, void* data) {
    PluginOf(instance)->ConnectPort(port, data);
}

// Instantiation thread.
void Activate(LV2_Handle instance) {
    PluginOf(instance)->Activate();
}

// Audio thread.
void Run(LV2_Handle instance, uint32_t samples) {
    PluginOf(instance)->Run(samples);
}

// Instantiation thread.
void Deactivate(LV2_Handle instance) {
    PluginOf(instance)->Deactivate();
}

// Instantiation thread.
void Cleanup(LV2_Handle instance) {
    delete PluginOf(instance);
}

// Worker thread.
LV2_Worker_Status Work(LV2_Handle instance, LV2_Worker_Respond_Function /*respond*/,
                       LV2_Worker_Respond_Handle /*handle*/, uint32_t size, const void* data) {
    return PluginOf(instance)->Work(size, data);
}

// Audio thread. The worker sends no answers.
LV2_Worker_Status WorkResponse(LV2_Handle /*instance*/, uint32_t /*size*/, const void* /*body*/) {
    return LV2_WORKER_SUCCESS;
}

// State thread, possibly beside run().
LV2_State_Status Save(LV2_Handle instance, LV2_State_Store_Function store, LV2_State_Handle handle,
                      uint32_t /*flags*/, const LV2_Feature* const* /*features*/) {
    return PluginOf(instance)->Save(store, handle);
}

// Instantiation thread.
LV2_State_Status Restore(LV2_Handle instance, LV2_State_Retrieve_Function retrieve,
                         LV2_State_Handle handle, uint32_t /*flags*/,
                         const LV2_Feature* const* /*features*/) {
    return PluginOf(instance)->Restore(retrieve, handle);
}

constexpr LV2_State_Interface kStateInterface = {Save, Restore};
constexpr LV2_Worker_Interface kWorkerInterface = {Work, WorkResponse, nullptr};

// Any thread.
const void* ExtensionData(const char* uri) {
    if (std::strcmp(uri, LV2_STATE__interface) == 0) return &kStateInterface;
    if (std::strcmp(uri, LV2_WORKER__interface) == 0) return &kWorkerInterface;
    return nullptr;
}

constexpr LV2_Descriptor kDescriptors[kLv2PluginCount] = {
    {kLv2StereoPluginUri, Instantiate, ConnectPort, Activate, Run, Deactivate, Cleanup,
     ExtensionData},
    {kLv2MonoPluginUri, Instantiate, ConnectPort, Activate, Run, Deactivate, Cleanup,
     ExtensionData},
};

}  // namespace

}  // namespace vorix

// Discovery thread. The stereo plug-in at index 0, the mono one at 1, then null.
LV2_SYMBOL_EXPORT const LV2_Descriptor* lv2_descriptor(uint32_t index) {
    return index < static_cast<uint32_t>(vorix::kLv2PluginCount) ? &vorix::kDescriptors[index]
                                                                 : nullptr;
}
