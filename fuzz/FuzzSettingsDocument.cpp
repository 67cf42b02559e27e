// A filter settings document into a live engine. A document that fails must leave the engine's
// configuration exactly as it was; one that loads writes a document that settles within one more
// load (a value given beyond the range its type writes, such as a low pass's Q made from a
// bandwidth, is clamped when it comes back as that type's own parameter) and then reloads to itself;
// audio stays finite either way.

#include <cmath>
#include <vector>

#include "FuzzSupport.h"
#include "engine/Ombrel.h"

using namespace vorix;

namespace {

struct Engine {
    fuzz::QuietPlatform platform;
    std::unique_ptr<PluginCore> core;

    Engine() {
        fuzz::HoldMetaClass();
        core = GetMetaClass()->CreateCore(&platform, ChannelConfig{2, 2});
        core->SetSampleRate(48000.0f);
        core->SetBlockSize(256);
    }

    std::string Document() {
        std::string text;
        core->CaptureSettings(text);
        return text;
    }

    bool Load(const std::string& text) {
        try {
            core->LoadSettings(text);
            return true;
        } catch (const PluginCore::InvalidSettingsData&) {
            return false;
        }
    }

    void ExpectFiniteAudio() {
        std::vector<float> left(256, 0.5f), right(256, -0.25f);
        float* channels[2] = {left.data(), right.data()};
        core->Process(channels, channels, 256, false, 0);
        for (float sample : left) {
            if (!std::isfinite(sample)) fuzz::Broken("non-finite audio");
        }
    }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static Engine engine;
    const std::string before = engine.Document();
    const std::string text(fuzz::Text(data, size));
    if (engine.Load(text)) {
        if (!engine.Load(engine.Document())) fuzz::Broken("a written document does not load");
        const std::string settled = engine.Document();
        if (!engine.Load(settled)) fuzz::Broken("a written document does not load");
        if (engine.Document() != settled) fuzz::Broken("a written document changes when reloaded");
    } else if (engine.Document() != before) {
        fuzz::Broken("a failed load changed the configuration");
    }
    engine.ExpectFiniteAudio();
    engine.platform.messages.Clear();
    engine.platform.reports.clear();
    return 0;
}
