#pragma once

#include <cstdint>

namespace vorix::test {

// The probe plug-in file's entries beyond the host's four.

// What the probe engine saw of one audio call: the samples it was given and the bypass state
// the core ran it in.
struct ProbeCall {
    std::int32_t samples;
    std::int32_t bypassState;
};

// Copies the calls since the last take (at most `capacity`) and answers how many there were.
inline constexpr const char* kProbeTakeCallsEntry = "ProbeTakeCalls";
using ProbeTakeCallsProc = std::int32_t (*)(ProbeCall* calls, std::int32_t capacity);

// The stand-in for an edit in the editor: the newest probe engine reports the parameter of the
// table's id to the host, as an edit does once it has changed the engine.
inline constexpr const char* kProbeReportEntry = "ProbeReport";
using ProbeReportProc = void (*)(std::int32_t id, float value);

}  // namespace vorix::test
