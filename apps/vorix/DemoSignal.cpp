#include "vorix/DemoSignal.h"

#include <cmath>
#include <complex>
#include <cstddef>

namespace vorix::cli {
namespace {

constexpr double kTwoPi = 6.283185307179586;
constexpr double kMainsFrequency = 60.0;

// Hum amplitudes of harmonics 1 to 5.
constexpr double kHumAmplitudes[] = {0.020, 0.008, 0.012, 0.004, 0.006};

// The chords, 2.5 s each, in a loop; their tones and overtones lie at least 20 Hz from every
// multiple of 60 Hz up to the 5th.
constexpr double kChordSeconds = 2.5;
constexpr double kChords[][3] = {
    {220.00, 261.63, 329.63},  // A minor
    {349.23, 440.00, 523.25},  // F major
    {261.63, 329.63, 392.00},  // C major
    {392.00, 493.88, 587.33},  // G major
};
constexpr double kOvertoneLevels[] = {1.0, 0.5, 0.3, 0.2};
constexpr double kToneAmplitude = 0.06;
// Each chord fades in and out over this long, so that its edges spread no energy into the hum.
constexpr double kChordFadeSeconds = 0.15;

// The noise: one-pole high pass and low pass, a band a little narrower than speech and song.
constexpr double kNoiseLowCorner = 150.0;
constexpr double kNoiseHighCorner = 5000.0;
constexpr double kNoiseAmplitude = 0.25;
constexpr double kNoiseShared = 0.7;  // how much of each channel's noise is common to both

// A sine by rotation: one complex multiply per sample, renormalised now and then.
class Oscillator {
  public:
    Oscillator(double frequency, double phase)
        : z_(std::polar(1.0, phase)),
          step_(std::polar(1.0, kTwoPi * frequency / kDemoSampleRate)) {}
    double Next() {
        const double value = z_.imag();
        z_ *= step_;
        if (++count_ % 4096 == 0) z_ /= std::abs(z_);
        return value;
    }

  private:
    std::complex<double> z_, step_;
    unsigned count_ = 0;
};

// A small generator of uniform noise, fixed seed, so the recording is the same on every run.
class Noise {
  public:
    double Next() {
        state_ ^= state_ << 13;
        state_ ^= state_ >> 7;
        state_ ^= state_ << 17;
        return static_cast<double>(state_ >> 11) * 0x1.0p-53 * 2.0 - 1.0;
    }

  private:
    std::uint64_t state_ = 0x9E3779B97F4A7C15ull;
};

// White noise shaped into a band by a one-pole high pass and a one-pole low pass.
class BandNoise {
  public:
    BandNoise()
        : highPass_(1.0 / (1.0 + kTwoPi * kNoiseLowCorner / kDemoSampleRate)),
          lowPass_(1.0 - std::exp(-kTwoPi * kNoiseHighCorner / kDemoSampleRate)) {}
    double Next(double white) {
        high_ = highPass_ * (high_ + white - lastWhite_);
        lastWhite_ = white;
        low_ += lowPass_ * (high_ - low_);
        return low_;
    }

  private:
    double highPass_, lowPass_;
    double high_ = 0.0, lastWhite_ = 0.0, low_ = 0.0;
};

// Loudness moving like speech: syllables near 4 Hz, phrases near 0.45 Hz.
double SpeechEnvelope(double t) {
    const double phrase = 0.7 + 0.3 * std::sin(kTwoPi * 0.45 * t);
    return (0.6 + 0.4 * std::sin(kTwoPi * 3.7 * t)) * phrase;
}

// A chord's loudness within its span: a raised-cosine fade at each end.
double ChordFade(double t) {
    const double edge = std::min(t, kChordSeconds - t);
    if (edge >= kChordFadeSeconds) return 1.0;
    return 0.5 - 0.5 * std::cos(kTwoPi * 0.5 * edge / kChordFadeSeconds);
}

void AddChords(std::vector<float>& out, std::size_t frames) {
    const auto chordFrames = static_cast<std::size_t>(kChordSeconds * kDemoSampleRate);
    for (std::size_t start = 0, chord = 0; start < frames; start += chordFrames, ++chord) {
        const double* notes = kChords[chord % std::size(kChords)];
        for (int n = 0; n < 3; ++n) {
            const double pan = 0.25 + 0.25 * n;  // left to right across the chord
            const double left = std::cos(pan * kTwoPi / 4), right = std::sin(pan * kTwoPi / 4);
            for (std::size_t k = 0; k < std::size(kOvertoneLevels); ++k) {
                Oscillator tone(notes[n] * static_cast<double>(k + 1), 0.7 * n + 1.3 * k);
                const double level = kToneAmplitude * kOvertoneLevels[k];
                for (std::size_t i = start; i < std::min(start + chordFrames, frames); ++i) {
                    const double t = static_cast<double>(i) / kDemoSampleRate;
                    const double v = tone.Next() * level *
                                     ChordFade(static_cast<double>(i - start) / kDemoSampleRate) *
                                     SpeechEnvelope(t);
                    out[2 * i] += static_cast<float>(v * left);
                    out[2 * i + 1] += static_cast<float>(v * right);
                }
            }
        }
    }
}

void AddNoise(std::vector<float>& out, std::size_t frames) {
    Noise white;
    BandNoise shared, own[2];
    for (std::size_t i = 0; i < frames; ++i) {
        const double envelope = SpeechEnvelope(static_cast<double>(i) / kDemoSampleRate);
        const double common = shared.Next(white.Next());
        for (int c = 0; c < 2; ++c) {
            const double mixed =
                kNoiseShared * common + (1.0 - kNoiseShared) * own[c].Next(white.Next());
            out[2 * i + static_cast<std::size_t>(c)] +=
                static_cast<float>(kNoiseAmplitude * envelope * mixed);
        }
    }
}

void AddHum(std::vector<float>& out, std::size_t frames) {
    for (const HumComponent& hum : DemoHum()) {
        Oscillator tone(hum.frequency, 0.9 * hum.harmonic);
        for (std::size_t i = 0; i < frames; ++i) {
            const auto v = static_cast<float>(hum.amplitude * tone.Next());
            out[2 * i] += v;
            out[2 * i + 1] += v;
        }
    }
}

}  // namespace

std::vector<HumComponent> DemoHum() {
    std::vector<HumComponent> hum;
    for (int k = 1; k <= static_cast<int>(std::size(kHumAmplitudes)); ++k) {
        hum.push_back({k, kMainsFrequency * k, kHumAmplitudes[k - 1]});
    }
    return hum;
}

std::vector<float> MakeDemoRecording() {
    const auto frames = static_cast<std::size_t>(kDemoSeconds) * kDemoSampleRate;
    std::vector<float> out(frames * kDemoChannels, 0.0f);
    AddChords(out, frames);
    AddNoise(out, frames);
    AddHum(out, frames);
    return out;
}

}  // namespace vorix::cli
