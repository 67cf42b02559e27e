#include "vorix-host/PlugInModule.h"

#include <dlfcn.h>

#include <set>

#include "vorix-host/FourCharacterIds.h"
#include "vorix-host/HostError.h"

namespace vorix {
namespace {

// The files this host holds: a second load of one would share its open count and group.
std::set<void*>& LoadedFiles() {
    static std::set<void*> files;
    return files;
}

template <typename Proc>
Proc FindProc(void* handle, const char* name) {
    return reinterpret_cast<Proc>(dlsym(handle, name));
}

std::string DlErrorText() {
    const char* text = dlerror();
    return text != nullptr ? text : "unknown reason";
}

}  // namespace

PlugInModule::PlugInModule(std::string path) : path_(std::move(path)) {
    TakeRegisteredProcs();  // nothing a file registered before belongs to this one
    handle_ = dlopen(path_.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (handle_ == nullptr) {
        throw HostError("The plug-in file " + path_ + " could not be loaded: " + DlErrorText() +
                        ".");
    }
    procs_ = TakeRegisteredProcs();
    open_ = FindProc<PlugInOpenEntryProc>(handle_, kPlugInOpenExport);
    close_ = FindProc<PlugInCloseEntryProc>(handle_, kPlugInCloseExport);
    group_ = FindProc<RoutineDescriptorProc>(handle_, kRoutineDescriptorExport);
    const bool complete = open_ != nullptr && close_ != nullptr && group_ != nullptr &&
                          FindProc<NewPlugInProc>(handle_, kNewPlugInExport) != nullptr;
    if (!complete || !LoadedFiles().insert(handle_).second) {
        dlclose(handle_);
        throw HostError(complete ? "The plug-in file " + path_ + " is loaded already."
                                 : "The file " + path_ + " is not a plug-in file.");
    }
}

PlugInModule::~PlugInModule() {
    while (openCount_ > 0)
        Close();
    LoadedFiles().erase(handle_);
    dlclose(handle_);
}

void PlugInModule::Open() {
    const std::int32_t answer = open_(kPlugInOpenVersion);
    if (answer != 0) {
        throw HostError("The plug-in file " + path_ + " could not be opened: error " +
                        std::to_string(answer) + ".");
    }
    ++openCount_;
}

void PlugInModule::Close() {
    if (openCount_ == 0) return;
    close_();
    --openCount_;
}

IProcessGroup* PlugInModule::Group() const noexcept {
    return group_(kHostProtocolVersion);
}

IProcessGroup& PlugInModule::GroupOrThrow() const {
    IProcessGroup* group = Group();
    if (group == nullptr) throw HostError("The plug-in file " + path_ + " is not open.");
    return *group;
}

std::vector<EffectTypeInfo> PlugInModule::EffectTypes() const {
    IProcessGroup& group = GroupOrThrow();
    std::vector<EffectTypeInfo> types;
    for (std::int32_t position = 0; position < group.CountEffectTypes(); ++position) {
        const IProcessType* type = group.GetEffectType(position);
        EffectTypeInfo info;
        info.id = type->GetTypeID();
        info.nameSet = type->GetNameSet();
        info.pageTables = type->GetDetails().GetPageTableName();
        type->GetChannelCounts(info.inputs, info.outputs);
        info.realTime = type->IsRealTime();
        types.push_back(std::move(info));
    }
    return types;
}

IProcessType& PlugInModule::FindType(std::int32_t id) const {
    IProcessGroup& group = GroupOrThrow();
    for (std::int32_t position = 0; position < group.CountEffectTypes(); ++position) {
        IProcessType* type = group.GetEffectType(position);
        if (type->GetTypeID() == id) return *type;
    }
    throw HostError("The plug-in file has no effect type " + IdText(id) + ".");
}

void* PlugInModule::FindEntry(const char* name) const noexcept {
    return dlsym(handle_, name);
}

}  // namespace vorix
