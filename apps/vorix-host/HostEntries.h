#pragma once

#include "core/ErrorMessageService.h"
#include "hostlib/PlugInEntryPoints.h"
#include "hostlib/ProcessInterfaces.h"

namespace vorix {

// The reference host's side of the entries it exports to the plug-in files it loads: the
// registration of a file's open and close routines, and the messages an insert shows the user.
// Main thread, all of them.

// The routines a file registered while it was being loaded.
struct RegisteredProcs {
    PlugInOpenProc open = nullptr;
    PlugInCloseProc close = nullptr;
};

// What was registered since the last call, which forgets it; none when nothing was.
RegisteredProcs TakeRegisteredProcs() noexcept;

// Messages of `process` go to `service` from now on; a null service forgets the process.
void RouteMessages(const IProcess* process, ErrorMessageService* service);
// Messages of a process that is not routed yet (one still being made) go to `service`; null
// sends them to the standard error stream.
void RouteUnknownMessages(ErrorMessageService* service) noexcept;

}  // namespace vorix
