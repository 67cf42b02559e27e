#pragma once

#include <cstdint>
#include <span>

#include "host/ZORPTProcess.h"
#include "hostlib/CEffectProcessAS.h"

namespace vorix {

// The concrete insert: the process with the render call. The group's factory makes it for every
// effect type, the real-time ones included, which reach it through the library's adaptor, so
// the audio takes the same road in every kind of insert.
class ZORPTProcessAS : public ZORPTProcess, public CEffectProcessAS {
  public:
    // The latency the engine may announce without the host compensating for it.
    static constexpr std::int32_t kUncompensatedLatency = 32;

    // Main thread.
    ZORPTProcessAS() = default;

    // Audio thread: renders the connections' samples through the engine in pieces of at most
    // the block size; answers the number of samples. Never allocates, locks or throws.
    std::int32_t ProcessAudio(bool bypass) noexcept override;

    // Main thread: the engine's latency less what goes uncompensated.
    void GetDelaySamplesLatency(std::int32_t& samples) override;
    // Main thread: the engine's meters in the host's order, a clip reading as -1 with its mark.
    void GetMeters(std::span<std::int32_t> values, std::span<bool> clipped) override;
    void ResetClipIndicators() override;
    // Main thread: the engine asks for the host's clip record to be cleared.
    void ClearClipState() override;

  private:
    // At most this many channels reach the engine.
    static constexpr std::int32_t kMaxChannels = 2;

    // Audio thread. The engine's input and output pointers for the block's channels, after the
    // host's bypass copy; an unconnected channel gets the zero or the scratch buffer.
    void ConnectChannels(std::int32_t channels, std::int32_t total, bool bypass, float** inputs,
                         float** outputs) noexcept;
};

}  // namespace vorix
