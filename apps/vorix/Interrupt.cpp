#include "vorix/Interrupt.h"

#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstring>
#include <string>

#include "vorix/CommandLine.h"
#include "platform/EndingSignals.h"

namespace vorix::cli {
namespace {

// Lock-free, so that another thread or a signal handler may set it.
std::atomic<bool> gInterrupted{false};
static_assert(std::atomic<bool>::is_always_lock_free);

// The lines an interrupt writes, made before a signal can come, since a handler may not allocate.
constexpr std::size_t kLineCapacity = 128;
struct InterruptLines {
    std::array<char, kLineCapacity> withOutput{};
    std::array<char, kLineCapacity> withoutOutput{};
};
InterruptLines gLines;

void MakeLine(std::array<char, kLineCapacity>& line, std::string_view command,
              std::string_view ending) {
    std::string text = "vorix ";
    text.append(command.empty() ? std::string_view("command") : command).append(": interrupted");
    text.append(ending).append(".\n");
    text.resize(std::min(text.size(), kLineCapacity - 1));
    std::memcpy(line.data(), text.c_str(), text.size() + 1);
}

void WriteLine(const std::array<char, kLineCapacity>& line) noexcept {
    const ssize_t written = write(STDERR_FILENO, line.data(), std::strlen(line.data()));
    static_cast<void>(written);  // nothing is left to tell if the standard error is gone
}

// Ctrl-C and a polite kill end the command here, with its line; other signals go on to what they
// did before. Async-signal-safe: write and _exit.
void OnEndingSignal(int signal, bool removedFiles) noexcept {
    if (signal != SIGINT && signal != SIGTERM) return;
    WriteLine(removedFiles ? gLines.withOutput : gLines.withoutOutput);
    _exit(kExitFailure);
}

}  // namespace

void InstallSignalHandlers() {
    SetInterruptedCommand({});
    InstallEndingSignalHandlers(&OnEndingSignal);
}

void SetInterruptedCommand(std::string_view command) noexcept {
    try {
        InterruptLines lines;
        MakeLine(lines.withOutput, command, ", so no output was written");
        MakeLine(lines.withoutOutput, command, "");
        // Signals are held off while the lines change, so that a handler never reads half a line.
        sigset_t all, previous;
        sigfillset(&all);
        pthread_sigmask(SIG_BLOCK, &all, &previous);
        gLines = lines;
        pthread_sigmask(SIG_SETMASK, &previous, nullptr);
    } catch (...) {
        // The lines stay as they were; an interrupt still removes the files.
    }
}

void RequestInterrupt() noexcept {
    gInterrupted.store(true, std::memory_order_relaxed);
}

void ClearInterrupt() noexcept {
    gInterrupted.store(false, std::memory_order_relaxed);
}

bool InterruptRequested() noexcept {
    return gInterrupted.load(std::memory_order_relaxed);
}

}  // namespace vorix::cli
