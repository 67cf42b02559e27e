#pragma once

#include <cstdint>

#include "hostlib/ProcessInterfaces.h"

namespace vorix {

class CEffectProcessAS;

// Drives a connection-based process from the host's render call: each block's buffers become
// the process's input and output connections (the side chain taking the connection behind the
// inputs), and ProcessAudio renders them. This is how a real-time insert runs a process that has
// no render routine of its own. Audio thread, apart from construction.
class CAdaptorPlugIn {
  public:
    // Main thread.
    explicit CAdaptorPlugIn(CEffectProcessAS& process) noexcept : process_(process) {}

    // Audio thread: renders one block; answers ProcessAudio's count, or kErrBadArgument for a
    // block with a negative length, more than nine channels or missing buffer arrays. Does not
    // allocate, lock or throw.
    std::int32_t Render(const RenderBlock& block) noexcept;

  private:
    CEffectProcessAS& process_;
};

}  // namespace vorix
