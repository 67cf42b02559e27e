#pragma once

#include <cstdint>
#include <vector>

namespace vorix::cli {

// The demonstration's recording: 20 seconds of 48 kHz stereo.
inline constexpr int kDemoSampleRate = 48000;
inline constexpr int kDemoChannels = 2;
inline constexpr int kDemoSeconds = 20;

// One component of the mains hum laid over the music, the same on both channels.
struct HumComponent {
    int harmonic = 1;        // 1 is the mains frequency itself
    double frequency = 0.0;  // Hz
    double amplitude = 0.0;  // peak, full scale 1
};

// The hum of 60 Hz mains: the fundamental and the 2nd to 5th harmonics, at levels a ground loop
// puts on a recording (-34 dBFS down to -48 dBFS, odd harmonics stronger than even).
std::vector<HumComponent> DemoHum();

// The recording, interleaved stereo: chords of tones and band-limited noise under an envelope that
// moves at the pace of syllables, plus the hum. The music keeps clear of the hum's frequencies by
// at least 20 Hz, so that each hum component can be measured on its own. The same every time.
// Main thread; allocates.
std::vector<float> MakeDemoRecording();

}  // namespace vorix::cli
