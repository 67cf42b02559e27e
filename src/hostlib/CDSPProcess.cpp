#include "hostlib/CDSPProcess.h"

#include "hostlib/HostEntryGuard.h"

namespace vorix {

void CDSPProcess::GetDelaySamplesLatency(std::int32_t& samples) {
    samples = 0;
}

void CDSPProcess::GetChannelCounts(std::int32_t& inputs, std::int32_t& outputs) const noexcept {
    inputs = inputCount_;
    outputs = outputCount_;
}

std::int32_t CDSPProcess::ReadLatency(std::int32_t& samples) noexcept {
    samples = 0;
    return GuardHostEntry([&] {
        GetDelaySamplesLatency(samples);
        return kNoErr;
    });
}

}  // namespace vorix
