// Built with -mavx512f -mavx512vl; called only where the processor has them.
#include "dsp/SectionCascadePasses.h"
#include "dsp/SectionCascadeVariants.h"

namespace vorix::cascade_variants {

// Thirty-two registers hold five stages' history and carries without spilling.
constexpr int kAvx512Stages = 5;

void MonoAvx512(SectionFilterData* const* filters, int count, float* buffer, int samples) noexcept {
    RunMonoCascade<kAvx512Stages>(filters, count, buffer, samples);
}

void StereoAvx512(SectionFilterData* const* left, SectionFilterData* const* right, int count,
                  float* bufferLeft, float* bufferRight, int samples) noexcept {
    RunStereoCascade<kAvx512Stages>(left, right, count, bufferLeft, bufferRight, samples);
}

}  // namespace vorix::cascade_variants
