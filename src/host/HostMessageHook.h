#pragma once

#include <cstdint>

#include "hostlib/ProcessInterfaces.h"

namespace vorix {

// The entry a host may export to show the user what an insert has to tell while no editor is
// open: a failed settings load, a save that ran out of memory. The insert looks it up in the
// loading process, as the file looks up the open and close registration; without it, messages
// go to the standard error stream. The texts are zero-terminated and may be empty; `kind` is the
// message's kind (2 for settings). Main thread; the host must not call back into the process
// from it.
inline constexpr const char* kShowPlugInMessageExport = "ShowPlugInMessage";
using ShowPlugInMessageProc = void (*)(IProcess* process, const char* first, const char* second,
                                       const char* third, std::int32_t kind);

}  // namespace vorix
