#include "host/PlugInFileEntries.h"

#include <dlfcn.h>

#include <new>
#include <string>
#include <utility>

#include "host/ZORGroup.h"
#include "hostlib/PlugInEntryPoints.h"

namespace vorix {
namespace {

// The host's resources file sits beside the plug-in file, with this behind its name.
constexpr const char* kResourceFileSuffix = ".rsr";

struct PlugInFileState {
    std::int32_t openCount = 0;
    bool groupStands = false;
    bool registeredWithHost = false;  // the host took the open and close routines
    std::string filePath;
};

PlugInFileState& State() {
    static PlugInFileState state;
    return state;
}

// Closes the file when it is unloaded from a process that opened it through the attach step.
struct CloseAtUnload {
    ~CloseAtUnload() { PlugInClose(); }
};

// The low 16 bits of an answer, as the host reads them.
std::int32_t LowWord(std::int32_t answer) noexcept {
    return static_cast<std::int16_t>(static_cast<std::uint16_t>(answer & 0xFFFF));
}

}  // namespace

std::int32_t NewPlugInGroup(std::int32_t /*unused*/) noexcept {
    try {
        InstallPlugInGroup(std::make_unique<ZORGroup>());
    } catch (const std::bad_alloc&) {
        return kErrOutOfMemory;
    } catch (...) {
        return kErrInitFailed;
    }
    return GetInstalledPlugInGroup()->Initialize();
}

std::int32_t OpenPlugInFile(std::int32_t version) noexcept {
    if (version != kPlugInOpenVersion) return -1;
    return PlugInOpen();
}

void ClosePlugInFile() noexcept {
    PlugInClose();
}

std::int32_t PlugInOpen() noexcept {
    PlugInFileState& state = State();
    if (++state.openCount != 1) return 0;
    try {
        RegisterResourceFile(state.filePath + kResourceFileSuffix);
    } catch (...) {
        --state.openCount;
        return LowWord(kErrOutOfMemory);
    }
    const std::int32_t answer = NewPlugInGroup(0);
    if (LowWord(answer) == 0) {
        state.groupStands = true;
        return 0;
    }
    // A failed open leaves nothing behind, so that the host may try again.
    DestroyPlugInGroup();
    ReleaseResourceFile();
    --state.openCount;
    return LowWord(answer);
}

void PlugInClose() noexcept {
    PlugInFileState& state = State();
    if (state.openCount == 0) return;
    if (--state.openCount != 0 || !state.groupStands) return;
    DestroyPlugInGroup();
    ReleaseResourceFile();
    state.groupStands = false;
}

void AttachPlugInFile(MetaClassMaker maker, const void* addressInFile) noexcept {
    PlugInFileState& state = State();
    try {
        SetMetaClassMaker(std::move(maker));
        Dl_info info{};
        if (dladdr(addressInFile, &info) != 0 && info.dli_fname != nullptr) {
            state.filePath = info.dli_fname;
        }
    } catch (...) {
        // Without a description or a path the group cannot stand; the host learns it at open.
    }
    const auto registerProcs = reinterpret_cast<SetPlugInOpenAndCloseProcsProc>(
        dlsym(RTLD_DEFAULT, kSetOpenAndCloseProcsExport));
    state.registeredWithHost = registerProcs != nullptr;
    if (state.registeredWithHost) {
        registerProcs(&PlugInOpen, &PlugInClose);
        return;
    }
    PlugInOpen();
    // Made after every process-wide object the close needs, so that the unload destroys it, and
    // closes the file, while they still stand.
    static const CloseAtUnload closeAtUnload;
}

}  // namespace vorix
