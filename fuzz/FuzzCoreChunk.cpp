// A host chunk into the core, as a whole program document (first byte even) or as a preset (odd).
// Whatever it holds, the core keeps working and its settings stay readable.

#include "FuzzSupport.h"
#include "core/PluginCore.h"

using namespace vorix;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static fuzz::QuietPlatform platform;
    static std::unique_ptr<PluginCore> core = [] {
        fuzz::HoldMetaClass();
        auto made = GetMetaClass()->CreateCore(&platform, ChannelConfig{1, 1});
        made->SetSampleRate(44100.0f);
        return made;
    }();
    if (size == 0) return 0;
    const bool preset = (data[0] & 1) != 0;
    core->SetChunk(data + 1, static_cast<std::int32_t>(size - 1), preset);
    void* chunk = nullptr;
    const std::int32_t written = core->GetChunk(&chunk, preset);
    if (written <= 0 || chunk == nullptr) fuzz::Broken("the core cannot write its settings");
    platform.messages.Clear();
    platform.reports.clear();
    return 0;
}
