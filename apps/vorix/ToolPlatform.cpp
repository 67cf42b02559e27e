#include "vorix/ToolPlatform.h"

#include <sstream>

#include "core/StreamErrorMessageService.h"

namespace vorix::cli {
namespace {

constexpr const char* kHostName = "vorix command line";

}  // namespace

void ToolMessageService::ShowError(std::string_view first, std::string_view second,
                                   std::string_view third, std::int32_t kind) {
    // The core's texts are joined into one line by the plain stream form, then prefixed.
    std::ostringstream line;
    StreamErrorMessageService(line).ShowError(first, second, third, kind);
    if (line.str().empty()) return;
    err_ << prefix_ << line.str() << std::flush;
    ++count_;
}

ToolPlatform::ToolPlatform(float sampleRate, std::int32_t blockSize, std::int32_t channels,
                           std::ostream& err, std::string messagePrefix)
    : sampleRate_(sampleRate),
      blockSize_(blockSize),
      channels_(channels),
      messages_(err, std::move(messagePrefix)) {}

std::string ToolPlatform::GetHostName() const {
    return kHostName;
}

bool ToolPlatform::IsInputConnected(std::int32_t channel) const {
    return channel >= 0 && channel < channels_;
}

bool ToolPlatform::IsOutputConnected(std::int32_t channel) const {
    return channel >= 0 && channel < channels_;
}

void ToolPlatform::ParameterChanged(std::int32_t /*index*/, float /*value*/) {}

}  // namespace vorix::cli
