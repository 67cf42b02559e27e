#pragma once

#include <chrono>
#include <cstdint>
#include <ostream>

namespace vorix::cli {

// A progress bar on the error stream for a long render. It stays hidden unless it is enabled (a
// terminal, no --quiet) and the work, judged by its pace so far, is going to take longer than a
// couple of seconds; a short render never flickers one. Main thread.
class ProgressBar {
  public:
    // `total` is the work's size in frames; 0 or less means unknown, and no bar.
    ProgressBar(std::ostream& err, bool enabled, std::int64_t total);
    // Clears a bar left on the line, also when the work ends in an error.
    ~ProgressBar();

    // Main thread. `done` frames are finished; redraws at most a few times a second.
    void Update(std::int64_t done);
    // Main thread. Shows the bar full and ends its line.
    void Finish();

  private:
    using Clock = std::chrono::steady_clock;
    void Draw(std::int64_t done);
    void Clear();

    std::ostream& err_;
    bool enabled_;
    std::int64_t total_;
    Clock::time_point start_;
    Clock::time_point lastDraw_;
    bool shown_ = false;
};

}  // namespace vorix::cli
