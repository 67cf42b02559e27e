#include "core/ErrorMessageService.h"

#include <atomic>
#include <iostream>

#include "core/StreamErrorMessageService.h"

namespace vorix {
namespace {

std::atomic<ErrorMessageService*> installedService{nullptr};

// Trailing blanks and tabs are part of some texts' layout, not of what a line should show.
std::string_view WithoutTrailingBlanks(std::string_view text) {
    const auto last = text.find_last_not_of(" \t");
    return last == std::string_view::npos ? std::string_view{} : text.substr(0, last + 1);
}

}  // namespace

ErrorMessageService& DefaultErrorMessageService() noexcept {
    static StreamErrorMessageService standardError(std::cerr);
    ErrorMessageService* installed = installedService.load(std::memory_order_acquire);
    return installed != nullptr ? *installed : standardError;
}

void SetDefaultErrorMessageService(ErrorMessageService* service) noexcept {
    installedService.store(service, std::memory_order_release);
}

void StreamErrorMessageService::ShowError(std::string_view first, std::string_view second,
                                          std::string_view third, std::int32_t /*kind*/) {
    bool written = false;
    for (std::string_view text : {first, second, third}) {
        text = WithoutTrailingBlanks(text);
        if (text.empty()) continue;
        if (written) stream_ << ' ';
        stream_ << text;
        written = true;
    }
    if (written) stream_ << '\n' << std::flush;
}

}  // namespace vorix
