#pragma once

#include <cstdint>

#include "framework/GraphicControl.h"

namespace vorix {

// Where a button's images lie in its pixmap: the first state's image at `image`, each next one
// `step` further on. The images are the frame's size.
struct ButtonArt {
    const DrawContext* pixmap = nullptr;  // not owned
    Point image;
    Point step;
};

// A button whose every state is an image of the pixmap. Three modes: multi-state (each click
// steps the value round from 0 to the maximum, with an up and a down image per state), action
// (announces 1 and goes quietly back to 0) and boolean (each click toggles). The value changes at
// the release inside the frame, so that a release outside cancels, or at the press for a button
// that acts on press. Editor thread.
class PixMapButton : public GraphicControl {
  public:
    enum Mode : std::int32_t { kMultiState = 0, kAction = 1, kBoolean = 2 };

    // Editor thread. A boolean-mode button with the range given; the hand cursor.
    PixMapButton(Frame& parent, const Rect& place, std::int32_t id, const ButtonArt& art,
                 Value minimum, Value maximum, Value defaultValue, std::uint32_t flags = 0,
                 CentralController* controller = nullptr);

    void Draw(DrawContext& context, const Rect& rect) override;
    void OnMouse(std::int32_t kind, std::int32_t x, std::int32_t y) override;
    void TrackMouse(std::int32_t phase, std::int32_t x, std::int32_t y, bool inside) override;

    // Editor thread. Modes 1 and 2 make the range 0 to 1.
    virtual void SetButtonMode(std::int32_t mode);

    // Editor thread. The image shown while disabled; (-1, -1) for none.
    void SetDisabledImage(Point image) { disabledImage_ = image; }
    // Editor thread. A second set of images, shown while an allowed modifier key is down; the
    // frame then repaints as the keys change.
    void SetAltImages(Point image, Point step);
    void SetActsOnPress(bool actsOnPress) { actsOnPress_ = actsOnPress; }

    std::int32_t GetButtonMode() const { return mode_; }
    bool ActsOnPress() const { return actsOnPress_; }
    bool IsAltActive() const { return altActive_; }

  protected:
    // Editor thread. The value after this one: round from 0 to the maximum.
    Value NextValue() const;

  private:
    std::int32_t mode_ = kBoolean;
    bool actsOnPress_ = false;
    ButtonArt art_;
    Point disabledImage_{-1, -1};
    bool hasAltImages_ = false;
    bool altActive_ = false;
    Point altImage_;
    Point altStep_;
};

// A button that toggles between 0 and 1.
class BooleanButton : public PixMapButton {
  public:
    BooleanButton(Frame& parent, const Rect& place, std::int32_t id, const ButtonArt& art,
                  Value defaultValue = 0, std::uint32_t flags = 0,
                  CentralController* controller = nullptr);
};

// A button that steps its value round from 0 to the maximum, each state an up and a down image.
class MultiStateButton : public PixMapButton {
  public:
    MultiStateButton(Frame& parent, const Rect& place, std::int32_t id, const ButtonArt& art,
                     Value minimum, Value maximum, Value defaultValue, std::uint32_t flags = 0,
                     CentralController* controller = nullptr);
};

// A button that announces 1 at the release inside and is quietly 0 again.
class ActionButton : public PixMapButton {
  public:
    ActionButton(Frame& parent, const Rect& place, std::int32_t id, const ButtonArt& art,
                 std::uint32_t flags = 0, CentralController* controller = nullptr);
};

// A button that acts at the press: it announces 1 then, and 0 at the release; it stays down
// while the mouse is held, wherever the mouse goes.
class InstantActionButton : public PixMapButton {
  public:
    InstantActionButton(Frame& parent, const Rect& place, std::int32_t id, const ButtonArt& art,
                        std::uint32_t flags = 0, CentralController* controller = nullptr);

    void OnMouse(std::int32_t kind, std::int32_t x, std::int32_t y) override;
    void SetPressed(bool pressed, bool refresh) override;

  private:
    bool draggingNow_ = false;
};

}  // namespace vorix
