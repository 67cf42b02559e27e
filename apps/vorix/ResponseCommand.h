#pragma once

#include <ostream>
#include <vector>

namespace vorix {
class Ombrel;
}

namespace vorix::cli {

// The whole plug-in's steady-state gain at one frequency, per channel, in decibels.
struct ResponsePoint {
    double frequency = 0.0;  // Hz
    double leftDb = 0.0;
    double rightDb = 0.0;  // the left value again on a mono engine
};

// The quietest level the response reports; a zero magnitude reads as this.
inline constexpr double kResponseFloorDb = -240.0;

// The response of the engine's current configuration at each frequency (Hz): per channel, the
// product of the responses of the filters that process that channel (neither disabled, nor a
// deleted half, nor out of range), times the channel's compensation gain, in decibels with the
// floor above. It reads what the user has set, as the editor's plot does. Main thread.
std::vector<ResponsePoint> ComputeResponse(Ombrel& engine, const std::vector<double>& frequencies);

// `points` frequencies spaced logarithmically from 10 Hz to the smaller of 20000 Hz and half the
// rate, both ends included. Any thread; pure.
std::vector<double> LogFrequencyGrid(int points, double sampleRate);

// The response as CSV with the header frequency_hz,left_db,right_db. Main thread.
void WriteResponseCsv(std::ostream& out, const std::vector<ResponsePoint>& points);

}  // namespace vorix::cli
