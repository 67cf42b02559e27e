#pragma once

#include <utility>

namespace vorix {

// Holds a re-entrancy flag raised for the length of a scope. The flag's earlier state comes back
// on every exit, an exception included, so a throwing handler can never leave it stuck. Any
// thread, for a flag that only that thread touches.
class ScopedFlag {
  public:
    explicit ScopedFlag(bool& flag) noexcept : flag_(flag), previous_(flag) { flag_ = true; }
    ~ScopedFlag() { flag_ = previous_; }
    ScopedFlag(const ScopedFlag&) = delete;
    ScopedFlag& operator=(const ScopedFlag&) = delete;

  private:
    bool& flag_;
    bool previous_;
};

// Runs a clean-up step when the scope ends, however it ends. Any thread; the step must not throw.
template <typename Step>
class ScopeExit {
  public:
    explicit ScopeExit(Step step) noexcept : step_(std::move(step)) {}
    ~ScopeExit() { step_(); }
    ScopeExit(const ScopeExit&) = delete;
    ScopeExit& operator=(const ScopeExit&) = delete;

  private:
    Step step_;
};

}  // namespace vorix
