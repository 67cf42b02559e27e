#include "framework/GraphicControl.h"

#include "framework/FrameRoot.h"
#include "framework/ScopeGuards.h"

namespace vorix {

GraphicControl::GraphicControl(Frame& parent, const Rect& place, std::uint32_t flags,
                               std::int32_t id, Value minimum, Value maximum, Value defaultValue,
                               CentralController* controller)
    : Frame(parent, place.left, place.top, place.Width(), place.Height(), flags, id),
      GenericControl(parent.GetRoot().GetServices(), minimum, maximum, defaultValue,
                     static_cast<std::uint32_t>(id), controller) {
    Frame::SetEnabled(true);
}

void GraphicControl::OnMouse(std::int32_t kind, std::int32_t x, std::int32_t y) {
    if (kind == kMouseDown) {
        Press(x, y);
    } else if (kind == kMouseMoved) {
        if (tracking_) Drag(x, y);
    } else if (kind == kMouseUp) {
        if (tracking_) Release(x, y);
        Refresh(nullptr, true);
    }
}

void GraphicControl::Press(std::int32_t x, std::int32_t y) {
    const DrawContext* c = GetRoot().GetWindowContext();
    if (c != nullptr) {
        if ((!allowControlShift_ && c->IsControlShiftDown()) ||
            (!allowControl_ && c->IsControlDown()) || (!allowOption_ && c->IsOptionDown()) ||
            (!allowShift_ && c->IsShiftDown())) {
            return;
        }
        if (resetOnShift_ && c->IsShiftDown()) {
            ResetToDefault();
            return;
        }
    }
    if (!IsEnabled()) return;
    SendControlMessage(kControlPressed);
    // A subscriber of the press may have disabled the control.
    if (!IsEnabled()) return;
    SetPressed(true, true);
    CaptureMouse();
    TrackMouse(kTrackPress, x, y, true);
    tracking_ = true;
    mouseWasInside_ = true;
}

void GraphicControl::Drag(std::int32_t x, std::int32_t y) {
    const Rect& b = GetBoundsRect();
    const bool inside = x > b.left && x < b.right && y > b.top && y < b.bottom;
    if (inside != mouseWasInside_) {
        SetPressed(inside, true);
        mouseWasInside_ = inside;
    }
    TrackMouse(kTrackDrag, x, y, inside);
    SendControlMessage(kControlDragged);
}

void GraphicControl::Release(std::int32_t x, std::int32_t y) {
    const Rect& b = GetBoundsRect();
    const bool inside = x > b.left && x < b.right && y > b.top && y < b.bottom;
    try {
        ScopeExit endTracking([this] { tracking_ = false; });
        SetPressed(false, false);
        TrackMouse(kTrackRelease, x, y, inside);
        ReleaseMouse();
        SendControlMessage(kControlReleased);
    } catch (...) {
        // The mouse must never stay captured by a press that failed.
        ReleaseMouse();
    }
}

void GraphicControl::SetValue(Value newValue) {
    GenericControl::SetValue(newValue);
    Refresh(nullptr, true);
}

void GraphicControl::SetRange(Value newMinimum, Value newMaximum) {
    GenericControl::SetRange(newMinimum, newMaximum);
    if (newMinimum == newMaximum) {
        SetEnabled(false);
    } else if (!IsEnabled()) {
        SetEnabled(true);
    }
}

void GraphicControl::SetPressed(bool pressed, bool refresh) {
    pressed_ = pressed;
    if (refresh) Refresh(nullptr, true);
}

void GraphicControl::TrackMouse(std::int32_t /*phase*/, std::int32_t /*x*/, std::int32_t /*y*/,
                                bool /*inside*/) {}

void GraphicControl::SetResetOnShift(bool reset) {
    resetOnShift_ = reset;
    if (reset) allowShift_ = true;
}

void GraphicControl::SetAllowedModifiers(bool controlShift, bool control, bool option, bool shift) {
    allowControlShift_ = controlShift;
    allowControl_ = control;
    allowOption_ = option;
    allowShift_ = shift;
}

bool GraphicControl::IsAllowedModifierDown() const {
    const DrawContext* c = GetRoot().GetWindowContext();
    if (c == nullptr) return false;
    return (allowControlShift_ && c->IsControlShiftDown()) ||
           (allowControl_ && c->IsControlDown()) || (allowOption_ && c->IsOptionDown()) ||
           (allowShift_ && c->IsShiftDown());
}

void GraphicControl::SendControlMessage(MsgId msgId) {
    GetMessagingServer().SendToClass(GenericControl::GetMsgClass(), msgId, GetValue(),
                                     PointerParam(static_cast<GenericControl*>(this)), nullptr);
}

}  // namespace vorix
