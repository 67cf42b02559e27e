// The reference host's command line.

#include <unistd.h>

#include <climits>
#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

#include "platform/EndingSignals.h"
#include "vorix-host/HostCommands.h"

namespace {

// The plug-in file's name, and where it stands relative to an installed host.
constexpr const char* kModuleName = "Vorix.so";
constexpr const char* kInstalledModuleDirectory = "../lib/vorix";

// The plug-in file beside the host, else the installed one, else the one built with it.
std::string DefaultModulePath() {
    std::error_code error;
    const std::filesystem::path self = std::filesystem::read_symlink("/proc/self/exe", error);
    if (!error) {
        for (const std::filesystem::path& candidate :
             {self.parent_path() / kModuleName,
              self.parent_path() / kInstalledModuleDirectory / kModuleName}) {
            if (std::filesystem::exists(candidate, error)) return candidate.lexically_normal();
        }
    }
    return VORIX_BUILT_MODULE_PATH;
}

}  // namespace

int main(int argc, char** argv) {
    vorix::InstallEndingSignalHandlers();
    const std::vector<std::string> args(argv + 1, argv + argc);
    return vorix::RunHostCommand(args, std::cout, std::cerr, DefaultModulePath());
}
