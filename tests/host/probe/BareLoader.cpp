// A process that loads a plug-in file without offering it the open and close registration, as a
// tool that is no host does: the file must open itself at load, stand up its group, answer a
// balanced open and close, and close itself again when the process ends with the file still
// loaded. Exits 0 when it does.

#include <dlfcn.h>

#include <cstdio>

#include "hostlib/PlugInEntryPoints.h"

int main(int argc, char** argv) {
    if (argc != 2) return 2;
    void* file = dlopen(argv[1], RTLD_NOW | RTLD_LOCAL);
    if (file == nullptr) return 1;
    const auto group = reinterpret_cast<vorix::RoutineDescriptorProc>(
        dlsym(file, vorix::kRoutineDescriptorExport));
    const auto open =
        reinterpret_cast<vorix::PlugInOpenEntryProc>(dlsym(file, vorix::kPlugInOpenExport));
    const auto close =
        reinterpret_cast<vorix::PlugInCloseEntryProc>(dlsym(file, vorix::kPlugInCloseExport));
    bool stands = group(vorix::kHostProtocolVersion) != nullptr;
    stands = stands && open(vorix::kPlugInOpenVersion) == 0;
    close();
    stands = stands && group(vorix::kHostProtocolVersion) != nullptr;
    std::printf("%s\n", stands ? "the file opened itself" : "no group stands");
    return stands ? 0 : 1;
}
