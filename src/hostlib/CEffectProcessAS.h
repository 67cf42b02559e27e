#pragma once

#include <array>
#include <cstdint>

#include "hostlib/CEffectProcess.h"

namespace vorix {

// One audio stream between the host and a process for the length of a render call: the
// samples, and how many of them are left (an input) or were written (an output).
struct AudioConnection {
    float* buffer = nullptr;
    std::int32_t sampleCount = 0;
};

// A process that renders from its input and output connections: the library fills them for
// each block and calls ProcessAudio. Offline inserts run this way, and real-time inserts reach
// it through the library's adaptor. Derive virtually, beside other virtual bases of the effect
// process.
class CEffectProcessAS : public virtual CEffectProcess {
  public:
    static constexpr std::int32_t kMaxConnections = 9;
    // The side-chain connection number when no side chain is connected.
    static constexpr std::int32_t kNoSideChainConnection = -42;

    // Main thread: an analysis pass before an offline render; none here.
    virtual void AnalyzeAudio();
    // Audio thread: renders the samples of the connections and answers how many. Must not
    // allocate, lock or throw.
    virtual std::int32_t ProcessAudio(bool bypass) noexcept = 0;
    // Main thread: a query the library keeps for extensions; 0 here.
    virtual std::int32_t GetExtra(std::int32_t selector);

    // Audio thread, inside ProcessAudio: the connection of a number, null beyond the nine.
    // A channel the host left unconnected has a null buffer.
    AudioConnection* GetInputConnection(std::int32_t connection) noexcept;
    AudioConnection* GetOutputConnection(std::int32_t connection) noexcept;
    // Audio thread, inside ProcessAudio: the input connection that carries the side chain, or
    // kNoSideChainConnection.
    std::int32_t GetSideChainConnectionNum() const noexcept { return sideChainConnection_; }

  private:
    friend class CAdaptorPlugIn;

    std::array<AudioConnection, kMaxConnections> inputs_{};
    std::array<AudioConnection, kMaxConnections> outputs_{};
    std::int32_t sideChainConnection_ = kNoSideChainConnection;
};

// A real-time process with a render routine of its own, which the host's render calls reach
// directly.
class CEffectProcessRTAS : public virtual CEffectProcess {
  public:
    std::int32_t RenderAudio(const RenderBlock& block) noexcept override = 0;
};

}  // namespace vorix
