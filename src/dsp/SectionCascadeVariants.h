#pragma once

#include "dsp/FilterRecord.h"

// The cascade kernels of each instruction set, behind the dispatch of SectionCascade.cpp.
namespace vorix::cascade_variants {

void MonoSse2(SectionFilterData* const* filters, int count, float* buffer, int samples) noexcept;
void StereoSse2(SectionFilterData* const* left, SectionFilterData* const* right, int count,
                float* bufferLeft, float* bufferRight, int samples) noexcept;
void MonoAvx512(SectionFilterData* const* filters, int count, float* buffer, int samples) noexcept;
void StereoAvx512(SectionFilterData* const* left, SectionFilterData* const* right, int count,
                  float* bufferLeft, float* bufferRight, int samples) noexcept;

}  // namespace vorix::cascade_variants
