#pragma once

#include <array>
#include <cstdint>

namespace vorix {

// How the host asks for the audio call to be run.
enum BypassMode : std::int32_t {
    kBypassModeActive = 0,      // the engine processes
    kBypassModeEngineKept = 1,  // bypassed, the engine kept running so that it can fade
    kBypassModeCopy = 2,        // a straight copy of input to output; the engine stands still
};

// Where the engine's bypass stands; it sees the state of each block and crossfades in the
// blocks of states 3 and 4.
enum BypassState : std::int32_t {
    kBypassRunning = 0,
    kBypassBypassed = 1,
    kBypassReserved = 2,  // keeps itself whatever the host asks
    kBypassEntering = 3,  // lasts one block
    kBypassLeaving = 4,   // lasts one block
};

// The next state, by the present state and by whether the host asks for bypass.
inline constexpr std::array<std::array<std::int32_t, 2>, 5> kNextBypassState = {{
    // not bypassed     bypassed
    {kBypassRunning, kBypassEntering},   // running
    {kBypassLeaving, kBypassBypassed},   // bypassed
    {kBypassReserved, kBypassReserved},  // reserved
    {kBypassLeaving, kBypassBypassed},   // entering bypass
    {kBypassRunning, kBypassEntering},   // leaving bypass
}};

// Audio thread. The state that follows `state` in a block run in `bypassMode`; never allocates.
constexpr std::int32_t NextBypassState(std::int32_t state, std::int32_t bypassMode) noexcept {
    if (state < 0 || state >= static_cast<std::int32_t>(kNextBypassState.size())) return state;
    return kNextBypassState[static_cast<std::size_t>(state)][bypassMode != 0 ? 1 : 0];
}

}  // namespace vorix
