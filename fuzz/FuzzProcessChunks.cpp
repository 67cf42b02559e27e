// The insert's own chunks as the host hands them back on opening a session: the first byte picks
// "zorc" (even) or "elck" (odd), the rest is the chunk as the host stores it, header included. The
// plug-in file is loaded and driven through its exported entries. After any chunk the insert still
// renders finite audio, and its chunks still save and load again.

#include <cmath>
#include <span>
#include <vector>

#include "FuzzSupport.h"
#include "framework/FourCC.h"
#include "vorix-host/Insert.h"
#include "vorix-host/PlugInModule.h"

using namespace vorix;

namespace {

struct Host {
    PlugInModule module{VORIX_MODULE_PATH};
    std::unique_ptr<Insert> insert;

    Host() {
        module.Open();
        insert = std::make_unique<Insert>(module.FindType(static_cast<std::int32_t>(FourCC("StRT"))),
                                          InsertSetup{});
        insert->StartProcessing();
    }

    void ExpectFiniteAudio() {
        std::vector<float> left(512, 0.5f), right(512, -0.5f);
        float* channels[2] = {left.data(), right.data()};
        insert->Render(std::span<float* const>(channels, 2), std::span<float* const>(channels, 2),
                       512, false);
        for (float sample : left) {
            if (!std::isfinite(sample)) fuzz::Broken("non-finite audio after a chunk");
        }
    }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static Host host;
    if (size == 0) return 0;
    SavedChunk chunk;
    chunk.id = static_cast<std::int32_t>(FourCC((data[0] & 1) != 0 ? "elck" : "zorc"));
    chunk.bytes.assign(data + 1, data + size);
    host.insert->LoadChunk(chunk);
    host.ExpectFiniteAudio();
    for (const SavedChunk& saved : host.insert->SaveChunks()) {
        if (host.insert->LoadChunk(saved) != 0) fuzz::Broken("a saved chunk does not load again");
    }
    return 0;
}
