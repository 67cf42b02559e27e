#pragma once

#include <atomic>
#include <cstdint>
#include <string>
#include <string_view>

#include "hostlib/ControlValueRange.h"

namespace vorix {

// The keys every value entry accepts besides the visible characters: cursor left and right, and
// backspace.
inline constexpr char kKeyCursorLeft = 28;
inline constexpr char kKeyCursorRight = 29;
inline constexpr char kKeyBackspace = 8;

// The host-facing description of one automatable parameter: its id and name, how the 32-bit
// control value the host stores maps to the parameter's range, and how a value becomes short text
// and back. The family is built by virtual inheritance: a mapping branch and a unit branch meet
// in the concrete classes. Everything is read-only after construction apart from the control
// value; text operations may run on any thread, as the host's display code calls them.
class CPluginControl {
  public:
    CPluginControl() = default;
    CPluginControl(const CPluginControl&) = delete;
    CPluginControl& operator=(const CPluginControl&) = delete;
    virtual ~CPluginControl();

    // Any thread.
    virtual std::int32_t GetID() const = 0;
    // The control value of the default. Any thread.
    virtual std::int32_t GetDefaultControlValue() const = 0;
    // The number of distinct values the host offers when it steps. Any thread.
    virtual std::int32_t GetNumSteps() const = 0;
    // The control value of a typed text; throws AppFrame::BadParameter when the text does not
    // read as a value. Any thread; never changes the control.
    virtual std::int32_t TextToControlValue(std::string_view text) const = 0;
    // Whether a key may be typed into a value entry of this control. Any thread.
    virtual bool IsKeyValid(char key) const = 0;
    // The longest name of the control's name set that fits a buffer of `maxChars` characters,
    // terminating zero included; the shortest one cut to fit when none does. Any thread.
    virtual void GetName(char* buffer, std::int32_t maxChars) const = 0;
    // 1 for a control with a real-valued range, 0 for one of whole steps. Any thread.
    virtual int IsContinuous() const = 0;
    // The text of a control value, cut to fit a buffer of `maxChars`, terminated. Any thread.
    virtual void GetValueString(char* buffer, std::int32_t maxChars,
                                std::int32_t controlValue) const = 0;
    // Any thread.
    virtual bool IsAutomatable() const = 0;

    // The value the host automates; the bottom of the range until it is first set. Any thread.
    std::int32_t GetControlValue() const noexcept {
        return controlValue_.load(std::memory_order_relaxed);
    }
    // Main thread: the process sets it when the host or the plug-in changes the control.
    void SetControlValue(std::int32_t value) noexcept {
        controlValue_.store(value, std::memory_order_relaxed);
    }

  protected:
    // The entry of a name set (names of falling length, one per line) that fits `maxChars`.
    static std::string_view ChooseName(std::string_view nameSet, std::int32_t maxChars);

  private:
    std::atomic<std::int32_t> controlValue_{kControlValueBottom};
};

}  // namespace vorix
