#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "hostlib/GroupInterfaces.h"

namespace vorix {

class CProcessGroupInterface;

// ---- The plug-in file's exported entry points, as a host looks them up ----

// The version a host passes to the open entry.
inline constexpr std::int32_t kPlugInOpenVersion = 73;
// The version of the C++ protocol of ProcessInterfaces.h and GroupInterfaces.h.
inline constexpr std::int32_t kHostProtocolVersion = 1;

inline constexpr const char* kNewPlugInExport = "NewPlugIn";
inline constexpr const char* kRoutineDescriptorExport = "_PI_GetRoutineDescriptor";
inline constexpr const char* kPlugInOpenExport = "WinPlugInOpen";
inline constexpr const char* kPlugInCloseExport = "WinPlugInClose";
// What the host itself offers a loading plug-in file, so that the file's own open and close
// routines run when the host opens and closes it.
inline constexpr const char* kSetOpenAndCloseProcsExport = "SetPlugInOpenAndCloseProcs";

using NewPlugInProc = std::int32_t (*)(std::int32_t);
using RoutineDescriptorProc = IProcessGroup* (*)(std::int32_t protocolVersion);
using PlugInOpenEntryProc = std::int32_t (*)(std::int32_t version);
using PlugInCloseEntryProc = void (*)();
using PlugInOpenProc = std::int32_t (*)();
using PlugInCloseProc = void (*)();
using SetPlugInOpenAndCloseProcsProc = void (*)(PlugInOpenProc, PlugInCloseProc);

// ---- The library's side of those entries, for the file's exports to call ----

// Main thread. Stores the file's one group; a group already there is destroyed first.
void InstallPlugInGroup(std::unique_ptr<CProcessGroupInterface> group) noexcept;
// Main thread. The stored group, or null.
CProcessGroupInterface* GetInstalledPlugInGroup() noexcept;
// Main thread. Destroys the stored group, if any; the slot is empty afterwards whatever the
// group's destructor does.
void DestroyPlugInGroup() noexcept;

// Main thread. The group for a host of a protocol version; null when no group stands or the
// version is not this library's.
IProcessGroup* GetRoutineDescriptor(std::int32_t protocolVersion) noexcept;

// Main thread. The resources file that goes with the plug-in file, registered at open and
// released at the last close.
void RegisterResourceFile(std::string path);
void ReleaseResourceFile() noexcept;
const std::string& GetResourceFile() noexcept;

}  // namespace vorix
