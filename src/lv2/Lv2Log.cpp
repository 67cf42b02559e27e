#include "lv2/Lv2Log.h"

#include <cstdio>
#include <sstream>

#include "core/StreamErrorMessageService.h"

namespace vorix {

Lv2Log::Lv2Log(std::string productName, LV2_Log_Log* log, LV2_URID_Map* map)
    : productName_(std::move(productName)) {
    // An entry type needs a URID; without a map the host's log cannot be addressed.
    if (log != nullptr && map != nullptr) {
        log_ = log;
        errorType_ = map->map(map->handle, LV2_LOG__Error);
    }
}

void Lv2Log::ShowError(std::string_view first, std::string_view second, std::string_view third,
                       std::int32_t kind) {
    shown_.fetch_add(1, std::memory_order_relaxed);
    std::ostringstream line;
    StreamErrorMessageService(line).ShowError(first, second, third, kind);
    std::string text = std::move(line).str();
    if (!text.empty() && text.back() == '\n') text.pop_back();
    if (!text.empty()) Error(text);
}

void Lv2Log::Error(std::string_view text) noexcept {
    try {
        const std::string line = productName_ + ": " + std::string(text) + "\n";
        if (log_ != nullptr) {
            log_->printf(log_->handle, errorType_, "%s", line.c_str());
        } else {
            std::fputs(line.c_str(), stderr);
        }
    } catch (...) {
        // Out of memory while telling of a problem: there is nowhere left to tell it.
    }
}

}  // namespace vorix
