#include "vorix/Interrupt.h"

#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstring>
#include <string>

#include "vorix/CommandLine.h"
#include "vorix/OutputFile.h"

namespace vorix::cli {
namespace {

// Lock-free, so that another thread or a signal handler may set it.
std::atomic<bool> gInterrupted{false};
static_assert(std::atomic<bool>::is_always_lock_free);

// Every signal whose default action ends the process and that a process may catch; the real-time
// signals, which end it too, are added at installation, since their numbers are known only then.
constexpr int kEndingSignals[] = {SIGHUP,  SIGINT,  SIGQUIT,   SIGILL,  SIGTRAP, SIGABRT,
                                  SIGBUS,  SIGFPE,  SIGUSR1,   SIGSEGV, SIGUSR2, SIGPIPE,
                                  SIGALRM, SIGTERM, SIGSTKFLT, SIGXCPU, SIGXFSZ, SIGVTALRM,
                                  SIGPROF, SIGPOLL, SIGPWR,    SIGSYS};

// What each signal did before the tool took it over; it does that again once the files are gone.
std::array<struct sigaction, NSIG> gPreviousActions{};

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

// A fault of the tool's own code, raised by the processor rather than sent: returning re-runs the
// faulting instruction, which then meets the previous action (a sanitizer's report, a core dump).
bool IsOwnFault(int signal, const siginfo_t* info) noexcept {
    const bool faultKind =
        signal == SIGSEGV || signal == SIGBUS || signal == SIGILL || signal == SIGFPE;
    return faultKind && info != nullptr && info->si_code > 0;
}

// Async-signal-safe throughout: unlink, write, sigaction, raise, _exit.
extern "C" void OnEndingSignal(int signal, siginfo_t* info, void* /*context*/) {
    const bool hadOutput = RemoveUnfinishedOutputs();
    if (signal == SIGINT || signal == SIGTERM) {
        WriteLine(hadOutput ? gLines.withOutput : gLines.withoutOutput);
        _exit(kExitFailure);
    }
    sigaction(signal, &gPreviousActions[static_cast<std::size_t>(signal)], nullptr);
    // Blocked while this handler runs, the signal arrives again as it returns.
    if (!IsOwnFault(signal, info)) raise(signal);
}

void TakeOver(int signal) {
    struct sigaction previous {};
    if (sigaction(signal, nullptr, &previous) != 0) return;
    if (previous.sa_handler == SIG_IGN) return;
    struct sigaction action {};
    action.sa_sigaction = OnEndingSignal;
    action.sa_flags = SA_SIGINFO;
    sigfillset(&action.sa_mask);  // one handler at a time
    gPreviousActions[static_cast<std::size_t>(signal)] = previous;
    sigaction(signal, &action, nullptr);
}

}  // namespace

void InstallSignalHandlers() {
    SetInterruptedCommand({});
    for (const int signal : kEndingSignals)
        TakeOver(signal);
    for (int signal = SIGRTMIN; signal <= SIGRTMAX; ++signal)
        TakeOver(signal);
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
