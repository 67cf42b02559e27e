#pragma once

// The cascade kernels of each instruction set, behind the dispatch of SectionCascade.cpp. They see
// plain numbers only: the dispatch reads the records before and writes them back after, so the
// files built with wider instruction sets never touch a record or an inline function of another
// header (whose out-of-line copy the linker could otherwise pick for code that runs anywhere).
namespace vorix::cascade_variants {

// One second-order section as a kernel carries it: the coefficients widened to double, and the
// direct form I history (the input history holds single-precision values).
struct StageValues {
    double b0, b1, b2, a1, a2;
    double x1, x2, y1, y2;
};

// Runs `count` sections in cascade over `samples` samples of each of `channels` buffers (1 or 2),
// in place: stages[c][j] is section j of channel c, and its history is updated. Audio thread.
using CascadeKernel = void (*)(StageValues* const* stages, int channels, int count,
                               float* const* buffers, int samples) noexcept;

void CascadeSse2(StageValues* const* stages, int channels, int count, float* const* buffers,
                 int samples) noexcept;
void CascadeAvx2(StageValues* const* stages, int channels, int count, float* const* buffers,
                 int samples) noexcept;
void CascadeAvx512(StageValues* const* stages, int channels, int count, float* const* buffers,
                   int samples) noexcept;

}  // namespace vorix::cascade_variants
