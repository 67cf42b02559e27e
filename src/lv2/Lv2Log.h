#pragma once

#include <lv2/log/log.h>
#include <lv2/urid/urid.h>

#include <atomic>
#include <cstdint>
#include <string>
#include <string_view>

#include "core/ErrorMessageService.h"

namespace vorix {

// Where an LV2 instance's messages for the user go: the host's log when the host offers one
// (and a URID map to name the entry type), else the standard error stream. Each message is one
// line, headed by the product's name so that it can be told apart in a host's shared log.
class Lv2Log final : public ErrorMessageService {
  public:
    // Instantiation thread. `log` and `map` come from the host's features; either may be null.
    Lv2Log(std::string productName, LV2_Log_Log* log, LV2_URID_Map* map);

    // Any thread but audio (allocates). The core's messages: the texts present, joined by a
    // blank, as one error line.
    void ShowError(std::string_view first, std::string_view second, std::string_view third,
                   std::int32_t kind) override;

    // Any thread but audio (allocates). A problem of the LV2 layer itself, as one error line.
    void Error(std::string_view text) noexcept;

    // Any thread. The core's messages so far: a load that adds one was refused.
    std::uint32_t ErrorCount() const noexcept { return shown_.load(std::memory_order_relaxed); }

  private:
    std::atomic<std::uint32_t> shown_{0};
    std::string productName_;
    LV2_Log_Log* log_ = nullptr;
    LV2_URID errorType_ = 0;
};

}  // namespace vorix
