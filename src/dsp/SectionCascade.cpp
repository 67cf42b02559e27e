#include "dsp/SectionCascade.h"

#include <algorithm>

#include "dsp/ExternalFilter.h"
#include "dsp/SectionCascadeVariants.h"
#include "dsp/SectionKernel.h"

namespace vorix {
namespace {

using cascade_variants::StageValues;

// Sections handed to a kernel at once; a longer cascade is run in pieces of this many. Their
// numbers live on the audio thread's stack, 6 KB for two channels.
constexpr int kChunk = 32;

bool HasAvx2() {
    static const bool has = __builtin_cpu_supports("avx2");
    return has;
}

bool HasAvx512() {
    static const bool has = __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512vl");
    return has;
}

cascade_variants::CascadeKernel KernelFor(CascadeIsa isa) noexcept {
    switch (isa) {
        case CascadeIsa::Avx512: return &cascade_variants::CascadeAvx512;
        case CascadeIsa::Avx2: return &cascade_variants::CascadeAvx2;
        case CascadeIsa::Sse2: break;
    }
    return &cascade_variants::CascadeSse2;
}

// Field by field, straight into place: a whole structure returned through memory and read back in
// wider pieces would stall on every section of every block.
void Enter(const CascadeStage& stage, StageValues& v) noexcept {
    v.ramp = stage.ramp != nullptr && stage.ramp->length > 0 ? stage.ramp->steps : nullptr;
    v.rampLength = v.ramp != nullptr ? stage.ramp->length : 0;
    if (const SectionFilterData* f = stage.filter) {
        v.b0 = f->b[0].Load(), v.b1 = f->b[1].Load(), v.b2 = f->b[2].Load();
        v.a1 = f->a[1].Load(), v.a2 = f->a[2].Load();
        v.x1 = f->x1.Load(), v.x2 = f->x2.Load(), v.y1 = f->y1.Load(), v.y2 = f->y2.Load();
        return;
    }
    const FilterSection& s = *stage.section;
    v.b0 = s.b[0].Load(), v.b1 = s.b[1].Load(), v.b2 = s.b[2].Load();
    v.a1 = s.a[1].Load(), v.a2 = s.a[2].Load();
    v.x1 = s.x[1].Load(), v.x2 = s.x[2].Load(), v.y1 = s.y[1].Load(), v.y2 = s.y[2].Load();
}

// Writes the history back as each section's own kernel leaves it.
void Leave(const CascadeStage& stage, const StageValues& v, int samples) noexcept {
    const float x1 = static_cast<float>(v.x1), x2 = static_cast<float>(v.x2);
    if (SectionFilterData* f = stage.filter) {
        f->x1 = x1, f->x2 = x2, f->y1 = v.y1, f->y2 = v.y2;
        return;
    }
    FilterSection& s = *stage.section;
    if (samples > 0) s.x[0] = x1;  // the External kernel keeps the last input there
    s.x[1] = x1;
    s.x[2] = x2;
    s.y[0] = v.y1;
    s.y[1] = v.y1;
    s.y[2] = v.y2;
}

void Run(CascadeIsa isa, const CascadeStage* const* stages, int channels, int count,
         float* const* buffers, int samples) noexcept {
    const cascade_variants::CascadeKernel kernel = KernelFor(isa);
    StageValues values[2][kChunk];
    StageValues* lanes[2] = {values[0], values[1]};
    for (int done = 0; done < count; done += kChunk) {
        const int chunk = std::min(kChunk, count - done);
        for (int c = 0; c < channels; ++c) {
            for (int j = 0; j < chunk; ++j) Enter(stages[c][done + j], values[c][j]);
        }
        kernel(lanes, channels, chunk, buffers, samples);
        for (int c = 0; c < channels; ++c) {
            for (int j = 0; j < chunk; ++j) Leave(stages[c][done + j], values[c][j], samples);
        }
    }
}

}  // namespace

bool CascadeIsaSupported(CascadeIsa isa) noexcept {
    switch (isa) {
        case CascadeIsa::Sse2: return true;
        case CascadeIsa::Avx2: return HasAvx2();
        case CascadeIsa::Avx512: return HasAvx512();
    }
    return false;
}

CascadeIsa BestCascadeIsa() noexcept {
    static const CascadeIsa best = HasAvx512() ? CascadeIsa::Avx512
                                   : HasAvx2() ? CascadeIsa::Avx2
                                               : CascadeIsa::Sse2;
    return best;
}

const char* CascadeIsaName(CascadeIsa isa) noexcept {
    switch (isa) {
        case CascadeIsa::Sse2: return "sse2";
        case CascadeIsa::Avx2: return "avx2";
        case CascadeIsa::Avx512: return "avx512";
    }
    return "?";
}

void ProcessSectionCascade(CascadeIsa isa, const CascadeStage* stages, int count, float* buffer,
                           int samples) noexcept {
    Run(isa, &stages, 1, count, &buffer, samples);
}

void ProcessSectionCascadeStereo(CascadeIsa isa, const CascadeStage* left,
                                 const CascadeStage* right, int count, float* bufferLeft,
                                 float* bufferRight, int samples) noexcept {
    const CascadeStage* stages[2] = {left, right};
    float* buffers[2] = {bufferLeft, bufferRight};
    Run(isa, stages, 2, count, buffers, samples);
}

}  // namespace vorix
