#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace vorix {
class ZORPluginMetaClass;
}

namespace vorix::cli {

// Exit statuses of the tool.
inline constexpr int kExitSuccess = 0;
inline constexpr int kExitUsage = 1;
inline constexpr int kExitFailure = 2;

// What a command works with: the product's description, held for the whole command; `out` for its
// result, `err` for messages and the progress bar, which is drawn only when `errIsTerminal` says
// that a person watches.
struct ToolContext {
    ZORPluginMetaClass& product;
    std::ostream& out;
    std::ostream& err;
    bool errIsTerminal = false;
};

// Runs one whole command of the tool, `args` being the words after the program's name, and returns
// the exit status. Every error is caught here and told as one line on `err`. Main thread; one
// call at a time per process, since the product's description and the guard noise are the
// process's.
int RunVorix(const std::vector<std::string>& args, std::ostream& out, std::ostream& err,
             bool errIsTerminal = false);

}  // namespace vorix::cli
