#include "vorix/DemoMeasurement.h"

#include <cmath>
#include <complex>

namespace vorix::cli {
namespace {

constexpr double kTwoPi = 6.283185307179586;

// Decibels of a power relative to a full-scale sine's (one half).
double PowerDb(double power) {
    return 10.0 * std::log10(std::max(power, 1e-30) * 2.0);
}

}  // namespace

double ToneAmplitude(const float* samples, std::size_t stride, std::size_t count, double frequency,
                     double sampleRate) {
    // Rotations by one sample of the tone and of the window; sums in double.
    const std::complex<double> toneStep = std::polar(1.0, -kTwoPi * frequency / sampleRate);
    const std::complex<double> windowStep = std::polar(1.0, kTwoPi / static_cast<double>(count));
    std::complex<double> tone(1.0, 0.0), window(1.0, 0.0), sum(0.0, 0.0);
    double windowSum = 0.0;
    for (std::size_t i = 0; i < count; ++i) {
        const double w = 0.5 - 0.5 * window.real();
        sum += w * static_cast<double>(samples[i * stride]) * tone;
        windowSum += w;
        tone *= toneStep;
        window *= windowStep;
        if (i % 4096 == 4095) {
            tone /= std::abs(tone);
            window /= std::abs(window);
        }
    }
    return 2.0 * std::abs(sum) / windowSum;
}

DemoLevels MeasureDemoLevels(const std::vector<float>& interleaved,
                             const std::vector<HumComponent>& hum) {
    const std::size_t frames = interleaved.size() / kDemoChannels;
    const std::size_t count = std::min<std::size_t>(frames, kMeasuredSeconds * kDemoSampleRate);
    const float* start = interleaved.data() + (frames - count) * kDemoChannels;
    DemoLevels levels;
    double musicPower = 0.0;
    for (int c = 0; c < kDemoChannels; ++c) {
        double power = 0.0;
        for (std::size_t i = 0; i < count; ++i) {
            const double v = start[i * kDemoChannels + static_cast<std::size_t>(c)];
            power += v * v;
        }
        musicPower += power / static_cast<double>(count) / kDemoChannels;
    }
    for (const HumComponent& component : hum) {
        double componentPower = 0.0;
        for (int c = 0; c < kDemoChannels; ++c) {
            const double a = ToneAmplitude(start + c, kDemoChannels, count, component.frequency,
                                           kDemoSampleRate);
            componentPower += a * a / 2.0 / kDemoChannels;
        }
        levels.humDb.push_back(PowerDb(componentPower));
        musicPower -= componentPower;
    }
    levels.musicDb = PowerDb(musicPower);
    return levels;
}

}  // namespace vorix::cli
