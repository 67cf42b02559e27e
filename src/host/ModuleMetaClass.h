#pragma once

#include <memory>

#include "core/ZORPluginMetaClass.h"

namespace vorix {

// The product a plug-in file carries: each file defines this once, beside its exported entries,
// and the attach step registers it as the maker of the process's description. Main thread.
std::unique_ptr<ZORPluginMetaClass> MakeModuleMetaClass();

}  // namespace vorix
