#pragma once

#include <memory>
#include <string>
#include <vector>

#include "Lv2TestHost.h"
#include "core/PluginCore.h"
#include "core/ZORPluginMetaClass.h"

namespace vorix::test {

// One host parameter by its port symbol ("prmControl_1_Gain", or "enabled") and its value.
struct HostParameter {
    std::string symbol;
    float value;
};

// The product's core driven in-process as a host layer drives it, set up in the same order as
// the LV2 instance sets up its own: the reference that the plug-in must match bit for bit.
class CoreRenderer {
  public:
    CoreRenderer(int channels, float rate, int blockSize);

    // Host parameters in the order given; "enabled" is the master bypass.
    void Set(const std::vector<HostParameter>& parameters);
    void SetProgram(int number);
    // What the engine holds for a host parameter, as the core reports it.
    float Get(const std::string& symbol);

    // Runs the signal in calls of `block` frames; `beforeBlock(n)` may act before call n.
    template <typename BeforeBlock>
    Audio Process(Audio input, int block, BeforeBlock beforeBlock) {
        Audio output = input;
        const int frames = static_cast<int>(input[0].size());
        float* in[2] = {};
        float* out[2] = {};
        for (int start = 0, n = 0; start < frames; start += block, ++n) {
            for (std::size_t c = 0; c < input.size(); ++c) {
                in[c] = input[c].data() + start;
                out[c] = output[c].data() + start;
            }
            beforeBlock(n);
            core_->Process(in, out, std::min(block, frames - start), false, bypass_);
        }
        return output;
    }
    Audio Process(const Audio& audio, int block) {
        return Process(audio, block, [](int) {});
    }

  private:
    int IndexOf(const std::string& symbol);

    MetaClassReference metaClass_;
    std::unique_ptr<PluginCore> core_;
    int bypass_ = 0;
};

}  // namespace vorix::test
