#include "vorix/ToolErrors.h"

#include <cctype>
#include <cstring>

namespace vorix::cli {

std::string SystemReason(int errorNumber) {
    std::string reason = std::strerror(errorNumber);
    if (!reason.empty()) reason[0] = static_cast<char>(std::tolower(reason[0]));
    return reason;
}

}  // namespace vorix::cli
