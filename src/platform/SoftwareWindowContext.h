#pragma once

#include <cstdint>
#include <optional>

#include "platform/SoftwareContext.h"
#include "platform/SoftwareRegion.h"

namespace vorix {

// The editor's window as a software surface without a window system: the frames paint into its
// pixels, and whoever presents them (a window of the platform, a snapshot, a test) reads them
// back. What a window would take from the system is held here instead: the mouse position and
// modifier keys are given by the driver of the surface, and the capture, the cursor and the
// requested repaints are recorded for it to act on. There is no file dialog: loading and saving
// settings answer as if the user cancelled. Editor thread.
class SoftwareWindowContext : public SoftwareContext {
  public:
    SoftwareWindowContext(std::int32_t width, std::int32_t height,
                          const ImageResources* resources = nullptr);

    Point GetMousePoint() const override { return mousePoint_; }
    void SetCursor(std::int16_t cursorId) override { cursor_ = cursorId; }
    void ResetCursor() override { cursor_.reset(); }
    bool IsControlDown() const override;
    bool IsShiftDown() const override;
    bool IsControlShiftDown() const override;
    bool IsOptionDown() const override;
    void SetMouseCapturer(MouseCapturer* capturer) override { capturer_ = capturer; }
    void ClearMouseCapturer() override { capturer_ = nullptr; }
    void ValidateRect(const Rect& rect) override;
    void InvalidateRect(const Rect& rect) override;

    // Editor thread. The state of the mouse and keys that the surface reports.
    void SetMousePoint(Point point) { mousePoint_ = point; }
    void SetModifierKeys(bool control, bool shift, bool rightButton);

    // Editor thread. What the frames asked of the window.
    MouseCapturer* GetMouseCapturer() const { return capturer_; }
    // The cursor shown over the surface; none for the usual one.
    std::optional<std::int16_t> GetCursor() const { return cursor_; }
    // The area waiting to be repainted, in window coordinates; the presenter clears it after
    // painting.
    const SoftwareRegion& GetInvalidRegion() const { return invalid_; }
    void ClearInvalidRegion() { invalid_.Clear(); }

  private:
    Point mousePoint_;
    bool controlDown_ = false;
    bool shiftDown_ = false;
    bool rightButtonDown_ = false;
    MouseCapturer* capturer_ = nullptr;
    std::optional<std::int16_t> cursor_;
    SoftwareRegion invalid_;
};

}  // namespace vorix
