#include "hostlib/CPluginControl.h"

#include <algorithm>

namespace vorix {

CPluginControl::~CPluginControl() = default;

std::string_view CPluginControl::ChooseName(std::string_view nameSet, std::int32_t maxChars) {
    std::string_view last = nameSet;
    std::size_t start = 0;
    while (start <= nameSet.size()) {
        const std::size_t end = std::min(nameSet.find('\n', start), nameSet.size());
        last = nameSet.substr(start, end - start);
        if (maxChars > 0 && last.size() < static_cast<std::size_t>(maxChars)) return last;
        start = end + 1;
    }
    return last;
}

}  // namespace vorix
