// The entries the host finds in the plug-in file, and the step that runs when the file is loaded
// into the host's process. Nothing else of the file is visible outside it.

#include <cstdint>

#include "host/ModuleMetaClass.h"
#include "host/PlugInFileEntries.h"
#include "hostlib/PlugInEntryPoints.h"

#define VORIX_EXPORT __attribute__((visibility("default")))

extern "C" {

// Main thread: makes the file's group; the low 16 bits of the answer are the error.
VORIX_EXPORT std::int32_t NewPlugIn(std::int32_t unused) {
    return vorix::NewPlugInGroup(unused);
}

// Main thread: the group's dispatch for a host of the protocol version; null when no group
// stands or the version differs.
VORIX_EXPORT vorix::IProcessGroup* _PI_GetRoutineDescriptor(std::int32_t protocolVersion) {
    return vorix::GetRoutineDescriptor(protocolVersion);
}

// Main thread: the host opens the file; -1 for a version other than the host's.
VORIX_EXPORT std::int32_t WinPlugInOpen(std::int32_t version) {
    return vorix::OpenPlugInFile(version);
}

// Main thread: the host closes the file; the last close destroys the group.
VORIX_EXPORT void WinPlugInClose() {
    vorix::ClosePlugInFile();
}

}  // extern "C"

namespace {

// An address inside the file, by which the file finds its own path.
const char fileAnchor = 0;

// Load time, inside the host's call that loads the file.
__attribute__((constructor)) void AttachToHost() {
    vorix::AttachPlugInFile(&vorix::MakeModuleMetaClass, &fileAnchor);
}

}  // namespace
