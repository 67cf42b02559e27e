#include "platform/SoftwareWindowContext.h"

namespace vorix {

SoftwareWindowContext::SoftwareWindowContext(std::int32_t width, std::int32_t height,
                                             const ImageResources* resources)
    : SoftwareContext(width, height, resources) {
    invalid_.Clear();
}

void SoftwareWindowContext::SetModifierKeys(bool control, bool shift, bool rightButton) {
    controlDown_ = control;
    shiftDown_ = shift;
    rightButtonDown_ = rightButton;
}

// Control with Shift is a state of its own: then neither Control nor Shift counts alone. The
// right button stands for Control, the secondary click of a one-button mouse.
bool SoftwareWindowContext::IsControlShiftDown() const {
    return controlDown_ && shiftDown_;
}

bool SoftwareWindowContext::IsControlDown() const {
    return !IsControlShiftDown() && (controlDown_ || rightButtonDown_);
}

bool SoftwareWindowContext::IsShiftDown() const {
    return !IsControlShiftDown() && shiftDown_;
}

bool SoftwareWindowContext::IsOptionDown() const {
    return false;
}

void SoftwareWindowContext::ValidateRect(const Rect& rect) {
    SoftwareRegion done;
    done.SetRect(rect);
    invalid_.Subtract(done);
}

void SoftwareWindowContext::InvalidateRect(const Rect& rect) {
    SoftwareRegion added;
    added.SetRect(rect);
    invalid_.Union(added);
}

}  // namespace vorix
