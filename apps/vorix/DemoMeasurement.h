#pragma once

#include <cstddef>
#include <vector>

#include "vorix/DemoSignal.h"

namespace vorix::cli {

// The demonstration measures the last 15 seconds: the narrow hum filters ring for a second or so
// after the start, and the table is to show their steady state.
inline constexpr int kMeasuredSeconds = 15;

// The levels of one file of the demonstration, in decibels relative to a full-scale sine.
struct DemoLevels {
    std::vector<double> humDb;  // per hum component, averaged in power over the channels
    double musicDb = 0.0;       // everything else: the whole power less the hum components'
};

// The amplitude of the sinusoid at `frequency` in `count` samples spaced `stride` apart, from one
// Hann-windowed bin of the Fourier transform. Exact for a steady sine whatever its phase; sound at
// other frequencies leaks in only far below it. Any thread; pure.
double ToneAmplitude(const float* samples, std::size_t stride, std::size_t count, double frequency,
                     double sampleRate);

// Measures interleaved stereo at the demonstration's rate over its last kMeasuredSeconds.
// Any thread; pure.
DemoLevels MeasureDemoLevels(const std::vector<float>& interleaved,
                             const std::vector<HumComponent>& hum);

}  // namespace vorix::cli
