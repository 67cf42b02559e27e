#include "host/HostMessageService.h"

#include <dlfcn.h>

#include <string>

namespace vorix {

ShowPlugInMessageProc HostMessageService::FindHostEntry() noexcept {
    return reinterpret_cast<ShowPlugInMessageProc>(dlsym(RTLD_DEFAULT, kShowPlugInMessageExport));
}

void HostMessageService::ShowError(std::string_view first, std::string_view second,
                                   std::string_view third, std::int32_t kind) {
    const std::string texts[3] = {std::string(first), std::string(second), std::string(third)};
    entry_(&process_, texts[0].c_str(), texts[1].c_str(), texts[2].c_str(), kind);
}

}  // namespace vorix
