#pragma once

#include <string_view>

namespace vorix {

// The help text of a command of the reference host ("" for the host as a whole); null for a
// word that is no command. Any thread.
const char* HelpFor(std::string_view command) noexcept;

}  // namespace vorix
