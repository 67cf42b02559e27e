#include "dsp/PeakMeter.h"

#include <cmath>

namespace vorix {
namespace {

inline float Larger(float peak, float sample) {
    const float a = std::fabs(sample);
    return a > peak ? a : peak;
}

}  // namespace

float CollectPeak(const float* samples, int count) noexcept {
    float p0 = 0.0f, p1 = 0.0f, p2 = 0.0f, p3 = 0.0f;
    int i = 0;
    for (; i + 4 <= count; i += 4) {
        p0 = Larger(p0, samples[i]);
        p1 = Larger(p1, samples[i + 1]);
        p2 = Larger(p2, samples[i + 2]);
        p3 = Larger(p3, samples[i + 3]);
    }
    for (; i < count; ++i) p0 = Larger(p0, samples[i]);
    return Larger(Larger(Larger(p0, p1), p2), p3);
}

}  // namespace vorix
