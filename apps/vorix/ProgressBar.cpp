#include "vorix/ProgressBar.h"

#include <string>

namespace vorix::cli {
namespace {

using Seconds = std::chrono::duration<double>;

// The bar appears once the work has run this long and is going to take longer than kLongWork.
constexpr Seconds kPaceJudged{0.3};
constexpr Seconds kLongWork{2.0};
constexpr Seconds kRedrawInterval{0.1};
constexpr int kBarWidth = 40;

}  // namespace

ProgressBar::ProgressBar(std::ostream& err, bool enabled, std::int64_t total)
    : err_(err), enabled_(enabled && total > 0), total_(total), start_(Clock::now()) {}

ProgressBar::~ProgressBar() {
    if (shown_) Clear();
}

void ProgressBar::Update(std::int64_t done) {
    if (!enabled_ || done <= 0) return;
    const Clock::time_point now = Clock::now();
    const Seconds elapsed = now - start_;
    if (!shown_) {
        if (elapsed < kPaceJudged) return;
        const Seconds expected = elapsed * (static_cast<double>(total_) / done);
        if (expected < kLongWork) {
            enabled_ = false;  // judged once: a short render stays quiet to its end
            return;
        }
    } else if (now - lastDraw_ < kRedrawInterval) {
        return;
    }
    lastDraw_ = now;
    Draw(done);
}

void ProgressBar::Finish() {
    if (!shown_) return;
    Draw(total_);
    err_ << '\n' << std::flush;
    shown_ = false;
}

void ProgressBar::Draw(std::int64_t done) {
    const double fraction = done >= total_ ? 1.0 : static_cast<double>(done) / total_;
    const int filled = static_cast<int>(fraction * kBarWidth);
    err_ << "\r[" << std::string(static_cast<std::size_t>(filled), '#')
         << std::string(static_cast<std::size_t>(kBarWidth - filled), '.') << "] "
         << static_cast<int>(fraction * 100.0) << "%" << std::flush;
    shown_ = true;
}

void ProgressBar::Clear() {
    err_ << "\r" << std::string(kBarWidth + 8, ' ') << "\r" << std::flush;
}

}  // namespace vorix::cli
