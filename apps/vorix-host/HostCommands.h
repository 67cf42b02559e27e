#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace vorix {

// The exit statuses of the reference host.
inline constexpr int kExitSuccess = 0;
inline constexpr int kExitFailure = 2;
inline constexpr int kExitUsage = 1;

// Runs the reference host's command line (the arguments after the program's name): "types",
// "controls" and "render", each with "--help". Results go to `out`; each error is one sentence
// on `err`, and so is each message an insert shows. `defaultModule` is the plug-in file used
// without "--module". Answers the exit status. Main thread.
int RunHostCommand(const std::vector<std::string>& args, std::ostream& out, std::ostream& err,
                   const std::string& defaultModule);

}  // namespace vorix
