#include "hostlib/CDSPProcessType.h"

#include "framework/Exceptions.h"

namespace vorix {
namespace {

bool IsKnownFormat(std::int32_t format) {
    return format == CDSPProcessType::kChannelFormatMono ||
           format == CDSPProcessType::kChannelFormatStereo;
}

}  // namespace

void CDSPProcessType::SetChannelConfiguration(std::int32_t inputFormat, std::int32_t outputFormat) {
    if (!IsKnownFormat(inputFormat) || !IsKnownFormat(outputFormat)) {
        VORIX_THROW(AppFrame::BadParameter);
    }
    dspSettings_.inputFormat = inputFormat;
    dspSettings_.outputFormat = outputFormat;
}

void CDSPProcessType::GetChannelCounts(std::int32_t& inputs, std::int32_t& outputs) const noexcept {
    // A format is one channel less than its count: mono 0, stereo 1.
    inputs = dspSettings_.inputFormat + 1;
    outputs = dspSettings_.outputFormat + 1;
}

}  // namespace vorix
