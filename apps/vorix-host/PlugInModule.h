#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "hostlib/GroupInterfaces.h"
#include "hostlib/PlugInEntryPoints.h"
#include "vorix-host/HostEntries.h"

namespace vorix {

// One effect type as the host lists it.
struct EffectTypeInfo {
    std::int32_t id = 0;
    std::string nameSet;  // names of falling length, one per line
    std::string pageTables;
    std::int32_t inputs = 0;
    std::int32_t outputs = 0;
    bool realTime = false;

    // The longest name, the one a host shows with room to spare.
    std::string FirstName() const { return nameSet.substr(0, nameSet.find('\n')); }
};

// A plug-in file loaded into the host's process: its four entries, its open count as this host
// holds it, and its group while it is open. Inserts made from its types must be gone before the
// module is. Main thread.
class PlugInModule {
  public:
    // Main thread. Loads the file and finds its entries; throws HostError when the file does not
    // load, lacks one of them, or is loaded by this host already.
    explicit PlugInModule(std::string path);
    // Main thread. Closes what this host opened and unloads the file.
    ~PlugInModule();
    PlugInModule(const PlugInModule&) = delete;
    PlugInModule& operator=(const PlugInModule&) = delete;

    // Main thread. Opens the file with the host's version; throws HostError when the file
    // answers an error. Each Open needs a Close; the destructor closes what is left.
    void Open();
    void Close();
    // Main thread. How often this host has opened the file and not closed it yet.
    std::int32_t OpenCount() const noexcept { return openCount_; }

    // Main thread. Whether the file registered its open and close routines when it was loaded.
    bool RegisteredOpenAndClose() const noexcept { return procs_.open != nullptr; }

    // Main thread. The file's group, or null when none stands.
    IProcessGroup* Group() const noexcept;
    // Main thread. The types of the group, in its order; throws HostError when no group stands.
    std::vector<EffectTypeInfo> EffectTypes() const;
    // Main thread. The type of an id; throws HostError when there is none.
    IProcessType& FindType(std::int32_t id) const;

    // Main thread. A further entry of the file by its name, null when it has none.
    void* FindEntry(const char* name) const noexcept;
    const std::string& Path() const noexcept { return path_; }

  private:
    IProcessGroup& GroupOrThrow() const;

    std::string path_;
    void* handle_ = nullptr;
    PlugInOpenEntryProc open_ = nullptr;
    PlugInCloseEntryProc close_ = nullptr;
    RoutineDescriptorProc group_ = nullptr;
    RegisteredProcs procs_;
    std::int32_t openCount_ = 0;
};

}  // namespace vorix
