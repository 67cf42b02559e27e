#include "framework/PixMapButton.h"

namespace vorix {

PixMapButton::PixMapButton(Frame& parent, const Rect& place, std::int32_t id, const ButtonArt& art,
                           Value minimum, Value maximum, Value defaultValue, std::uint32_t flags,
                           CentralController* controller)
    : GraphicControl(parent, place, flags, id, minimum, maximum, defaultValue, controller),
      art_(art) {
    SetCursor(kHandCursor, false);
}

PixMapButton::Value PixMapButton::NextValue() const {
    return (GetValue() + 1) % (GetMaximum() + 1);
}

void PixMapButton::SetButtonMode(std::int32_t mode) {
    mode_ = mode;
    if (mode == kAction || mode == kBoolean) SetRange(0, 1);
}

void PixMapButton::SetAltImages(Point image, Point step) {
    altImage_ = image;
    altStep_ = step;
    hasAltImages_ = true;
    AddFlags(kModifierImage);
}

void PixMapButton::OnMouse(std::int32_t kind, std::int32_t x, std::int32_t y) {
    if (hasAltImages_) {
        if (IsEnabled()) altActive_ = IsAllowedModifierDown();
        if (kind == kMouseLeft) altActive_ = false;
        Refresh(nullptr, true);
    }
    GraphicControl::OnMouse(kind, x, y);
}

void PixMapButton::TrackMouse(std::int32_t phase, std::int32_t /*x*/, std::int32_t /*y*/,
                              bool inside) {
    if (phase == kTrackPress) {
        if (!actsOnPress_) return;
        SetValue(NextValue());
        // An action is announced as 1 and goes back without a word.
        if (mode_ == kAction) SetValueSilently(0);
    } else if (phase == kTrackRelease) {
        if (inside && !actsOnPress_) SetValue(NextValue());
        if (mode_ == kAction) {
            if (actsOnPress_) {
                // The press left the value quietly at 0: the release still says so out loud.
                ForceValue(0);
            } else {
                SetValueSilently(0);
            }
        }
    }
}

void PixMapButton::Draw(DrawContext& context, const Rect& /*rect*/) {
    if (art_.pixmap == nullptr) return;
    const bool alt = hasAltImages_ && altActive_ && IsEnabled();
    const Point origin = alt ? altImage_ : art_.image;
    const Point step = alt ? altStep_ : art_.step;
    const std::int32_t state = GetValue() % (GetMaximum() + 1);
    std::int32_t image = 0;
    if (mode_ == kMultiState) {
        // Multi-state images come in pairs: up, then down.
        image = (IsPressed() ? 1 : 0) + 2 * state;
    } else {
        image = state;
        if (IsPressed() && (!actsOnPress_ || mode_ == kAction)) image = state != 0 ? 0 : 1;
    }
    Point source{origin.x + step.x * image, origin.y + step.y * image};
    if (!IsEnabled() && disabledImage_.x != -1 && disabledImage_.y != -1) source = disabledImage_;
    context.ResetCopyColors();
    context.CopyBits(*art_.pixmap,
                     {source.x, source.y, source.x + GetWidth(), source.y + GetHeight()}, {0, 0},
                     false);
}

BooleanButton::BooleanButton(Frame& parent, const Rect& place, std::int32_t id,
                             const ButtonArt& art, Value defaultValue, std::uint32_t flags,
                             CentralController* controller)
    : PixMapButton(parent, place, id, art, 0, 1, defaultValue, flags, controller) {}

MultiStateButton::MultiStateButton(Frame& parent, const Rect& place, std::int32_t id,
                                   const ButtonArt& art, Value minimum, Value maximum,
                                   Value defaultValue, std::uint32_t flags,
                                   CentralController* controller)
    : PixMapButton(parent, place, id, art, minimum, maximum, defaultValue, flags, controller) {
    SetButtonMode(kMultiState);
}

ActionButton::ActionButton(Frame& parent, const Rect& place, std::int32_t id, const ButtonArt& art,
                           std::uint32_t flags, CentralController* controller)
    : PixMapButton(parent, place, id, art, 0, 1, 0, flags, controller) {
    SetButtonMode(kAction);
}

InstantActionButton::InstantActionButton(Frame& parent, const Rect& place, std::int32_t id,
                                         const ButtonArt& art, std::uint32_t flags,
                                         CentralController* controller)
    : PixMapButton(parent, place, id, art, 0, 1, 0, flags, controller) {
    SetButtonMode(kAction);
    SetActsOnPress(true);
}

void InstantActionButton::OnMouse(std::int32_t kind, std::int32_t x, std::int32_t y) {
    draggingNow_ = kind == kMouseMoved;
    PixMapButton::OnMouse(kind, x, y);
}

void InstantActionButton::SetPressed(bool pressed, bool refresh) {
    // The action has happened: the button stays down until the release, wherever the mouse is.
    if (draggingNow_ && IsTracking() && ActsOnPress() && !pressed) return;
    PixMapButton::SetPressed(pressed, refresh);
}

}  // namespace vorix
