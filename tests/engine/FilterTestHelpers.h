#pragma once

#include <cmath>
#include <complex>
#include <cstring>
#include <numbers>
#include <vector>

#include <gtest/gtest.h>

#include "dsp/FilterChainOps.h"
#include "dsp/FilterParameters.h"
#include "dsp/FilterResponse.h"
#include "dsp/SectionKernel.h"

namespace vorix::test {

using P = FilterParameterId;

// A pool with one chain, for tests that need a few filters and nothing of the audio path.
struct PoolWithChain {
    FilterPool pool;
    FilterChain* chain = AcquireFilterChain(&pool);

    OpaqueFilterData* Add(FilterType type, uint32_t flags = 0) {
        return CreateFilterInChain(chain, flags, type);
    }
    SectionFilterData* AddSection(FilterType type) { return AsSection(Add(type)); }
    HarmonicFilterData* AddHarmonic(FilterType type) { return AsHarmonic(Add(type)); }
    ExternalFilterData* AddExternal() { return AsExternal(Add(kExternalFilter)); }
};

inline double Normalised(double hz, double rate = 48000.0) {
    return hz / rate;
}

// H(z) = (b0 + b1 z^-1 + b2 z^-2) / (a0 + a1 z^-1 + a2 z^-2), straight in complex double: the
// independent reference for the engine's own evaluation.
inline std::complex<double> TransferFunction(const float* b, const float* a, double frequency) {
    const std::complex<double> zInv = std::polar(1.0, -2.0 * std::numbers::pi * frequency);
    const std::complex<double> num = double(b[0]) + zInv * (double(b[1]) + zInv * double(b[2]));
    return num / (double(a[0]) + zInv * (double(a[1]) + zInv * double(a[2])));
}

inline double EditSetMagnitude(const OpaqueFilterData* f, double frequency) {
    return std::abs(TransferFunction(AsSection(f)->edit.b, AsSection(f)->edit.a, frequency));
}

inline float EngineMagnitude(const OpaqueFilterData* f, double frequency) {
    float magnitude = -1.0f;
    EvaluateFilterResponse(f, frequency, &magnitude, nullptr);
    return magnitude;
}

// 200 normalised frequencies, log-spaced from 10 Hz to 20 kHz at 48 kHz.
inline std::vector<double> AudibleFrequencies() {
    std::vector<double> frequencies;
    for (int i = 0; i < 200; ++i)
        frequencies.push_back(Normalised(10.0 * std::pow(2000.0, i / 199.0)));
    return frequencies;
}

// Q from a bandwidth in octaves, from the published single-precision coefficients.
inline double ExpectedQ(double frequency, double bandwidth) {
    const double c0 = 0.99943435f, c1 = -0.70890266f, c2 = -2.3372357f;
    return ((c2 * frequency + c1) * frequency + c0) / (2.0 * bandwidth);
}

// The parameter besides gain and frequency that shapes a single-section type.
inline FilterParameterId ShapeOf(FilterType type) {
    if (type == kParametric || type == kBandpass || type == kNotch) return P::Bandwidth;
    return (type == kLowShelf || type == kHiShelf) ? P::Slope : P::Q;
}

// A new single-section filter with frequency (Hz at 48 kHz), shape and gain set in that order.
inline SectionFilterData* Configure(PoolWithChain& pc, FilterType type, float gainDb, double hz,
                                    float shape) {
    SectionFilterData* f = pc.AddSection(type);
    SetFilterParameter(f, P::Frequency, static_cast<float>(Normalised(hz)));
    SetFilterParameter(f, ShapeOf(type), shape);
    SetFilterParameter(f, P::Gain, gainDb);
    return f;
}

// Reproducible white noise in -0.5 to 0.5.
inline std::vector<float> Noise(int count, uint32_t seed = 12345) {
    std::vector<float> samples(static_cast<size_t>(count));
    for (float& s : samples) {
        seed = seed * 1664525u + 1013904223u;
        s = static_cast<float>(seed >> 8) / 16777216.0f - 0.5f;
    }
    return samples;
}

// The sub-filters of a harmonic filter in harmonic order.
inline std::vector<SectionFilterData*> SubFilters(const OpaqueFilterData* h) {
    std::vector<SectionFilterData*> subs;
    for (OpaqueFilterData* s = FirstFilter(AsHarmonic(h)->subFilters); s; s = NextFilter(s)) {
        subs.push_back(AsSection(s));
    }
    return subs;
}

// Bitwise equality: the kernels must agree to the last bit.
inline ::testing::AssertionResult SameBits(const std::vector<float>& a,
                                           const std::vector<float>& b) {
    size_t i = 0;
    while (i < a.size() && i < b.size() && std::memcmp(&a[i], &b[i], 4) == 0)
        ++i;
    if (i == a.size() && i == b.size()) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << "they differ from sample " << i << " on";
}

// The block sizes that catch edge handling in unrolled and pipelined loops.
inline std::vector<int> OddBlockSizes() {
    std::vector<int> sizes = {31, 64, 511};
    for (int n = 0; n <= 17; ++n)
        sizes.push_back(n);
    return sizes;
}

}  // namespace vorix::test
