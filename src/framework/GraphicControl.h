#pragma once

#include <cstdint>

#include "framework/Frame.h"
#include "framework/GenericControl.h"

namespace vorix {

class CentralController;

// A control that is also a frame: the mouse protocol of every pixmap widget, done once. A press
// (unless a modifier that is not allowed is down) announces kControlPressed, shows the pressed
// image and takes the mouse; a drag follows the mouse in and out of the frame and announces
// kControlDragged; the release lets go and announces kControlReleased. What a press, drag and
// release do to the value is TrackMouse's, which the widgets supply. The control's value class
// is GenericControl's; the frame's own class still tells of the raw mouse. Editor thread.
class GraphicControl : public Frame, public GenericControl {
  public:
    enum TrackPhase : std::int32_t { kTrackPress = 0, kTrackDrag = 1, kTrackRelease = 2 };

    // Editor thread. A control of range `minimum` to `maximum` at `place` in `parent`; its
    // control id is `id`, the frame's too. With a controller it follows it at once.
    GraphicControl(Frame& parent, const Rect& place, std::uint32_t flags, std::int32_t id,
                   Value minimum, Value maximum, Value defaultValue,
                   CentralController* controller = nullptr);

    // ---- Frame ----
    void OnMouse(std::int32_t kind, std::int32_t x, std::int32_t y) override;

    // ---- GenericControl: a change of value or range repaints ----
    void SetValue(Value newValue) override;
    // A range of one value disables the control, and a wider one enables it again.
    void SetRange(Value newMinimum, Value newMaximum) override;

    // Editor thread. Whether the image shows the pressed state; with `refresh` it repaints.
    virtual void SetPressed(bool pressed, bool refresh);
    // Editor thread. What a phase of the mouse does to the value; `inside` says whether the
    // point lies inside the frame. Empty here.
    virtual void TrackMouse(std::int32_t phase, std::int32_t x, std::int32_t y, bool inside);

    // Editor thread. A Shift click resets the value to the default; true also allows Shift.
    void SetResetOnShift(bool reset);
    // Editor thread. Presses with these modifiers held are taken rather than ignored.
    void SetAllowedModifiers(bool controlShift, bool control, bool option, bool shift);

    bool IsPressed() const { return pressed_; }
    bool IsTracking() const { return tracking_; }
    bool GetResetOnShift() const { return resetOnShift_; }

  protected:
    // Editor thread. Whether a modifier that the control allows is down now.
    bool IsAllowedModifierDown() const;
    // Editor thread. Sends `msgId` with the present value on the control's value class.
    void SendControlMessage(MsgId msgId);

  private:
    void Press(std::int32_t x, std::int32_t y);
    void Drag(std::int32_t x, std::int32_t y);
    void Release(std::int32_t x, std::int32_t y);

    bool pressed_ = false;
    bool tracking_ = false;
    bool mouseWasInside_ = false;
    bool resetOnShift_ = false;
    bool allowControlShift_ = false;
    bool allowControl_ = false;
    bool allowOption_ = false;
    bool allowShift_ = false;
};

}  // namespace vorix
