#include "platform/EndingSignals.h"

#include <signal.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <climits>
#include <cstring>

namespace vorix {
namespace {

// Every signal whose default action ends the process and that a process may catch; the real-time
// signals, which end it too, are added at installation, since their numbers are known only then.
constexpr int kEndingSignals[] = {SIGHUP,  SIGINT,  SIGQUIT,   SIGILL,  SIGTRAP, SIGABRT,
                                  SIGBUS,  SIGFPE,  SIGUSR1,   SIGSEGV, SIGUSR2, SIGPIPE,
                                  SIGALRM, SIGTERM, SIGSTKFLT, SIGXCPU, SIGXFSZ, SIGVTALRM,
                                  SIGPROF, SIGPOLL, SIGPWR,    SIGSYS};

EndingSignalHook gHook = nullptr;

// What each signal did before the process took it over; it does that again once the files are gone.
std::array<struct sigaction, NSIG> gPreviousActions{};

// A few slots of whole paths, each free, being filled, or holding a path: a handler may neither
// allocate nor lock.
enum SlotState : int { kFree, kFilling, kHolding };
struct TemporarySlot {
    std::atomic<int> state{kFree};
    std::array<char, PATH_MAX> path{};
};
static_assert(std::atomic<int>::is_always_lock_free);
std::array<TemporarySlot, 8> gTemporaryFiles;

// A fault of the process's own code, raised by the processor rather than sent: returning re-runs the
// faulting instruction, which then meets the previous action (a sanitizer's report, a core dump).
bool IsOwnFault(int signal, const siginfo_t* info) noexcept {
    const bool faultKind =
        signal == SIGSEGV || signal == SIGBUS || signal == SIGILL || signal == SIGFPE;
    return faultKind && info != nullptr && info->si_code > 0;
}

// Async-signal-safe throughout: unlink, sigaction, raise, and what the hook does.
extern "C" void OnEndingSignal(int signal, siginfo_t* info, void* /*context*/) {
    const bool removed = RemoveTemporaryFiles();
    if (gHook != nullptr) gHook(signal, removed);
    sigaction(signal, &gPreviousActions[static_cast<std::size_t>(signal)], nullptr);
    // Blocked while this handler runs, the signal arrives again as it returns.
    if (!IsOwnFault(signal, info)) raise(signal);
}

void TakeOver(int signal) {
    struct sigaction previous {};
    if (sigaction(signal, nullptr, &previous) != 0 || previous.sa_handler == SIG_IGN) return;
    struct sigaction action {};
    action.sa_sigaction = OnEndingSignal;
    action.sa_flags = SA_SIGINFO;
    sigfillset(&action.sa_mask);  // one handler at a time
    gPreviousActions[static_cast<std::size_t>(signal)] = previous;
    sigaction(signal, &action, nullptr);
}

}  // namespace

void InstallEndingSignalHandlers(EndingSignalHook hook) {
    gHook = hook;
    for (const int signal : kEndingSignals)
        TakeOver(signal);
    for (int signal = SIGRTMIN; signal <= SIGRTMAX; ++signal)
        TakeOver(signal);
}

int EnlistTemporaryFile(const std::string& path) noexcept {
    if (path.size() >= PATH_MAX) return -1;
    for (std::size_t k = 0; k < gTemporaryFiles.size(); ++k) {
        TemporarySlot& slot = gTemporaryFiles[k];
        int expected = kFree;
        if (!slot.state.compare_exchange_strong(expected, kFilling)) continue;
        std::memcpy(slot.path.data(), path.c_str(), path.size() + 1);
        slot.state.store(kHolding, std::memory_order_release);
        return static_cast<int>(k);
    }
    return -1;
}

void ReleaseTemporaryFile(int slot) noexcept {
    if (slot >= 0 && slot < static_cast<int>(gTemporaryFiles.size())) {
        gTemporaryFiles[static_cast<std::size_t>(slot)].state.store(kFree);
    }
}

bool RemoveTemporaryFiles() noexcept {
    bool removed = false;
    for (TemporarySlot& slot : gTemporaryFiles) {
        if (slot.state.load(std::memory_order_acquire) != kHolding) continue;
        unlink(slot.path.data());
        removed = true;
    }
    return removed;
}

}  // namespace vorix
