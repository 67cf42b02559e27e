#pragma once

#include <cstdint>

#include "hostlib/CProcessType.h"

namespace vorix {

// A type whose processes render audio: its channel formats and the class of processor it runs
// on. Main thread.
class CDSPProcessType : public CProcessType {
  public:
    // The channel formats of a configuration.
    static constexpr std::int32_t kChannelFormatMono = 0;
    static constexpr std::int32_t kChannelFormatStereo = 1;

    // Main thread. The formats of input and output; throws AppFrame::BadParameter for an unknown
    // format.
    void SetChannelConfiguration(std::int32_t inputFormat, std::int32_t outputFormat);
    // Main thread. The class of processor the type's processes run on.
    void SetDSPClass(std::int32_t dspClass) noexcept { dspSettings_.dspClass = dspClass; }

    // IProcessType and IProcessType2: main thread, never throwing.
    void GetChannelCounts(std::int32_t& inputs, std::int32_t& outputs) const noexcept override;
    std::int32_t GetDSPClass() const noexcept override { return dspSettings_.dspClass; }

  protected:
    struct DSPSettings {
        std::int32_t inputFormat = kChannelFormatMono;
        std::int32_t outputFormat = kChannelFormatMono;
        std::int32_t dspClass = 0;
    };
    DSPSettings dspSettings_;
};

}  // namespace vorix
