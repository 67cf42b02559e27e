#pragma once

#include <string_view>

namespace vorix::cli {

// The help of the tool (an empty command) or of one command; empty for a command the tool lacks.
// Any thread; pure.
std::string_view HelpFor(std::string_view command);

}  // namespace vorix::cli
