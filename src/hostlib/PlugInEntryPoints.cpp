#include "hostlib/PlugInEntryPoints.h"

#include <utility>

#include "framework/ScopeGuards.h"
#include "hostlib/CProcessGroupInterface.h"

namespace vorix {
namespace {

// The plug-in file's one group and resources file, for the life of the process.
CProcessGroupInterface* installedGroup = nullptr;
std::string& ResourceFile() {
    static std::string path;
    return path;
}

}  // namespace

void InstallPlugInGroup(std::unique_ptr<CProcessGroupInterface> group) noexcept {
    DestroyPlugInGroup();
    installedGroup = group.release();
}

CProcessGroupInterface* GetInstalledPlugInGroup() noexcept {
    return installedGroup;
}

void DestroyPlugInGroup() noexcept {
    CProcessGroupInterface* group = installedGroup;
    ScopeExit clear([] { installedGroup = nullptr; });
    delete group;
}

IProcessGroup* GetRoutineDescriptor(std::int32_t protocolVersion) noexcept {
    if (protocolVersion != kHostProtocolVersion) return nullptr;
    return installedGroup;
}

void RegisterResourceFile(std::string path) {
    ResourceFile() = std::move(path);
}

void ReleaseResourceFile() noexcept {
    ResourceFile().clear();
}

const std::string& GetResourceFile() noexcept {
    return ResourceFile();
}

}  // namespace vorix
