#include "dsp/SectionCascade.h"

#include "dsp/SectionCascadePasses.h"
#include "dsp/SectionCascadeVariants.h"

namespace vorix {

namespace cascade_variants {

// Four stages in flight hide the latency of one recursion; more would spill the sixteen registers.
constexpr int kSse2Stages = 4;

void MonoSse2(SectionFilterData* const* filters, int count, float* buffer, int samples) noexcept {
    RunMonoCascade<kSse2Stages>(filters, count, buffer, samples);
}

void StereoSse2(SectionFilterData* const* left, SectionFilterData* const* right, int count,
                float* bufferLeft, float* bufferRight, int samples) noexcept {
    RunStereoCascade<kSse2Stages>(left, right, count, bufferLeft, bufferRight, samples);
}

}  // namespace cascade_variants

namespace {

bool HasAvx512() {
    static const bool has = __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512vl");
    return has;
}

}  // namespace

bool CascadeIsaSupported(CascadeIsa isa) noexcept {
    return isa == CascadeIsa::Sse2 || (isa == CascadeIsa::Avx512 && HasAvx512());
}

CascadeIsa BestCascadeIsa() noexcept {
    static const CascadeIsa best = HasAvx512() ? CascadeIsa::Avx512 : CascadeIsa::Sse2;
    return best;
}

void ProcessSectionCascadeOn(CascadeIsa isa, SectionFilterData* const* filters, int count,
                             float* buffer, int samples) noexcept {
    if (isa == CascadeIsa::Avx512) return cascade_variants::MonoAvx512(filters, count, buffer, samples);
    cascade_variants::MonoSse2(filters, count, buffer, samples);
}

void ProcessSectionCascadeStereoOn(CascadeIsa isa, SectionFilterData* const* left,
                                   SectionFilterData* const* right, int count, float* bufferLeft,
                                   float* bufferRight, int samples) noexcept {
    if (isa == CascadeIsa::Avx512) {
        return cascade_variants::StereoAvx512(left, right, count, bufferLeft, bufferRight, samples);
    }
    cascade_variants::StereoSse2(left, right, count, bufferLeft, bufferRight, samples);
}

void ProcessSectionCascade(SectionFilterData* const* filters, int count, float* buffer,
                           int samples) noexcept {
    ProcessSectionCascadeOn(BestCascadeIsa(), filters, count, buffer, samples);
}

void ProcessSectionCascadeStereo(SectionFilterData* const* left, SectionFilterData* const* right,
                                 int count, float* bufferLeft, float* bufferRight,
                                 int samples) noexcept {
    ProcessSectionCascadeStereoOn(BestCascadeIsa(), left, right, count, bufferLeft, bufferRight,
                                  samples);
}

void ProcessSectionCascadePlain(SectionFilterData* const* filters, int count, float* buffer,
                                int samples) noexcept {
    for (int j = 0; j < count; ++j) {
        SectionState state = LoadState(filters[j]);
        RunRecursionPlain(LoadAudioSet(filters[j]), state, buffer, buffer, samples);
        StoreState(filters[j], state);
    }
}

}  // namespace vorix
