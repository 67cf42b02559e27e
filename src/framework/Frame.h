#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "framework/DrawContext.h"
#include "framework/Geometry.h"
#include "framework/MessageTypes.h"
#include "framework/MessagingServer.h"

namespace vorix {

class Frame;
class FrameRoot;

// Something drawn on top of a frame's own pixels, after the frame has painted: the brackets of
// a parameter that the host highlights for automation, for one. Owned by its frame. Editor
// thread.
class FrameOverlay {
  public:
    virtual ~FrameOverlay() = default;
    // Editor thread. `rect` is the part being painted, in the frame's own coordinates; the
    // context already draws in them, clipped to `rect`.
    virtual void Draw(Frame& frame, DrawContext& context, const Rect& rect) = 0;
};

// One rectangle of the editor's tree: a place relative to its parent, a message class of its own
// on which it tells of the mouse, and hooks for painting and the mouse. Nothing paints on demand:
// a change queues the frame with the root, and the queue is painted at the next chance, parents
// before children and younger siblings over older ones. Editor thread only; a frame is never
// touched from the audio thread.
class Frame {
  public:
    // Bits of the frame's flags.
    enum Flag : std::uint32_t {
        kAnchorLeft = 0x1,      // keep the left margin to the parent
        kAnchorTop = 0x2,       // keep the top margin
        kAnchorRight = 0x4,     // keep the right margin
        kAnchorBottom = 0x8,    // keep the bottom margin
        kModifierImage = 0x10,  // the image changes with the modifier keys
        kRepaintOnActivation = 0x20,
        kTransparent = 0x80,     // the parent must paint first
        kOffscreen = 0x100,      // paints through the shared offscreen buffer
        kKeepOffscreen = 0x200,  // keeps kOffscreen even when the root declines it
        kAlwaysInside = 0x400,   // counts as wholly inside the parent
        kFloatingLow = 0x1000,   // floats above its siblings, layer 1
        kFloatingHigh = 0x2000,  // floats above its siblings, layer 2 (3 with kFloatingLow)
    };
    static constexpr std::uint32_t kAnchorMask = 0xF;
    static constexpr std::uint32_t kFloatingMask = kFloatingLow | kFloatingHigh;

    // Kinds of mouse event.
    enum MouseKind : std::int32_t {
        kMouseDown = 0,
        kMouseUp = 1,
        kMouseEntered = 2,
        kMouseLeft = 3,
        kMouseMoved = 4,
    };

    // Messages on the frame's own class; parameter 2 is the address of the local Point, except
    // for kMsgDestroyed, whose parameter 2 is the frame.
    static constexpr MsgId kMsgMouseDown = 0;
    static constexpr MsgId kMsgMouseUp = 1;
    static constexpr MsgId kMsgMouseEntered = 2;
    static constexpr MsgId kMsgMouseLeft = 3;
    static constexpr MsgId kMsgMouseMoved = 4;
    static constexpr MsgId kMsgDisabledMouseDown = 5;
    static constexpr MsgId kMsgDestroyed = 6;

    // The cursor that a pressable control shows: the back end's hand.
    static constexpr std::int16_t kHandCursor = 2000;

    // Editor thread. A child of `parent`, at (x, y) in the parent's coordinates plus the
    // parent's child offset, queued to be painted.
    Frame(Frame& parent, std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height,
          std::uint32_t flags, std::int32_t id);
    // Editor thread. The top frame of `root`'s tree.
    Frame(FrameRoot& root, std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height,
          std::uint32_t flags, std::int32_t id);

    // Editor thread. Tells its class (kMsgDestroyed), lets go of the mouse, the float and the
    // queue, deletes its children and its overlay, and leaves its parent, which repaints.
    virtual ~Frame();

    Frame(const Frame&) = delete;
    Frame& operator=(const Frame&) = delete;

    // ---- Virtual operations, in the order of the design ----

    // Editor thread. The frame's own class, on which it tells of the mouse.
    virtual MsgClass* GetMsgClass() const;
    // Editor thread. Paints `rect` (null: the whole frame) now when the root's draw lock is
    // held, in the frame's coordinates when `rectIsLocal`, else in the window's; without the
    // lock, queues the whole frame instead.
    virtual void Refresh(const Rect* rect, bool rectIsLocal);
    // Editor thread. A new place in the parent's coordinates; the old and new places repaint.
    virtual void MoveTo(std::int32_t x, std::int32_t y);
    virtual void SetSize(std::int32_t width, std::int32_t height, bool refresh);
    virtual void SetBounds(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height,
                           bool refresh);
    virtual void SetVisible(bool visible, bool noRefresh);
    // Editor thread. Registers the floating rectangle while the frame floats and is shown, and
    // withdraws it otherwise.
    virtual void UpdateFloating();
    virtual bool IsVisible() const;
    // Editor thread. Stores it for the frame and every child, and repaints.
    virtual void SetEnabled(bool enabled);
    virtual std::int32_t GetId() const;
    // Editor thread. The cursor shown while the mouse is over the frame; with `now` at once.
    virtual void SetCursor(std::int16_t cursorId, bool now);
    virtual void ClearCursor();
    // Editor thread. Paints `rect` of the frame, in its own coordinates; the context is set up
    // and clipped. Empty here.
    virtual void Draw(DrawContext& context, const Rect& rect);
    // Editor thread. A mouse event at a point in the frame's coordinates. Empty here.
    virtual void OnMouse(std::int32_t kind, std::int32_t x, std::int32_t y);
    virtual void OnActiveChanged(bool active);
    virtual void OnResized();
    virtual void OnWillMove();
    virtual void OnMoved();
    // Editor thread. Gives anchored children their places after a change of size.
    virtual void PlaceChildren(bool refresh);
    virtual void SetActive(bool active);
    // Editor thread. The deepest frame strictly inside whose window rectangle (x, y) lies, in
    // window coordinates; among overlapping siblings the oldest. Null when the point misses.
    virtual Frame* FindFrameAt(std::int32_t x, std::int32_t y, bool visibleOnly);
    // Editor thread. Hands a mouse event to the frame: the cursor, OnMouse, the message.
    virtual void DispatchMouse(std::int32_t kind, std::int32_t x, std::int32_t y);
    virtual void BeginDraw(const Rect& rect);
    virtual void EndDraw(const Rect& rect);
    // Editor thread. The offscreen buffer has been copied to the window. Empty here.
    virtual void OnOffscreenCopied(const Rect& rect);
    // Editor thread. Recomputes the window rectangle from the bounds and the place.
    virtual Rect UpdateWindowRect();
    // Editor thread. The frame got (true) or lost the key focus. Empty here.
    virtual void OnKeyFocus(bool focused);
    // Editor thread. A key while the frame has the focus; true when the frame took it.
    virtual bool OnKey(std::int32_t key);

    // ---- Non-virtual helpers ----

    // Editor thread. The sum of the places of the frame and its ancestors.
    Point GetAbsoluteOrigin() const;
    Rect LocalToWindow(const Rect& rect) const;
    Rect WindowToLocal(const Rect& rect) const;
    Point WindowPointToLocal(Point point) const;
    // Editor thread. Deletes the overlay and repaints.
    void RemoveOverlay();
    // Editor thread. Takes `overlay` (owned; null removes), deleting the old one, and repaints.
    void SetOverlay(std::unique_ptr<FrameOverlay> overlay);
    FrameOverlay* GetOverlay() const { return overlay_.get(); }
    // Editor thread. Takes and lets go of the mouse through the root.
    void CaptureMouse();
    void ReleaseMouse();
    // Editor thread. Queues the whole frame for painting.
    void Invalidate();

    // Editor thread. Fields of the frame.
    FrameRoot& GetRoot() const { return root_; }
    Frame* GetParent() const { return parent_; }
    const std::vector<Frame*>& GetChildren() const { return children_; }
    std::uint32_t GetFlags() const { return flags_; }
    Point GetPosition() const { return position_; }
    std::int32_t GetWidth() const { return width_; }
    std::int32_t GetHeight() const { return height_; }
    const Rect& GetBoundsRect() const { return bounds_; }
    const Rect& GetWindowRect() const { return windowRect_; }
    // The part that the ancestors leave visible, in the frame's coordinates.
    const Rect& GetVisibleRect() const { return visibleRect_; }
    const Rect& GetMargins() const { return margins_; }
    bool IsEnabled() const { return enabled_; }
    bool IsActive() const { return active_; }
    bool IsShown() const { return shown_; }
    bool IsMouseInside() const { return mouseInside_; }
    bool IsInParentDraw() const { return inParentDraw_; }
    bool IsFloating() const { return (flags_ & kFloatingMask) != 0; }
    std::int32_t GetFloatingLayer() const;
    DrawContext* GetContext() const { return context_; }
    // Editor thread. The offset added to the place of every child made from now on.
    void SetChildOffset(std::int32_t x, std::int32_t y) { childOffset_ = {x, y}; }

    // Editor thread. How many frames are alive in the process, and whether one is painting.
    static std::int32_t LiveFrameCount() noexcept;
    static bool IsPainting() noexcept;
    // Editor thread. Draws a red outline round every frame painted, to see the tree.
    static void SetOutlineDebugging(bool on) noexcept;

  protected:
    // Editor thread. For a subclass whose picture lies elsewhere than (0, 0, width, height).
    void SetBoundsRect(const Rect& bounds);
    // Editor thread. Flags that only a subclass's own set-up can know.
    void AddFlags(std::uint32_t flags) { flags_ |= flags; }

  private:
    void SetUp(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height);
    void ComputeMargins();
    void UpdateWindowRectTree();
    void UpdateVisibleRectTree();
    void UpdateShownTree();
    void RefreshFloatingRect();
    void CallTree(void (Frame::*hook)());

    std::uint32_t flags_;
    bool inParentDraw_ = false;
    std::vector<Frame*> children_;
    Point childOffset_;
    MsgClass* msgClass_ = nullptr;
    FrameRoot& root_;
    Rect windowRect_;
    Point position_;
    std::int32_t width_ = 0;
    std::int32_t height_ = 0;
    Rect bounds_;
    Rect visibleRect_;
    Rect margins_;
    std::int32_t id_;
    bool mouseInside_ = false;
    bool active_ = false;
    bool enabled_ = true;
    bool visible_ = true;
    bool shown_ = false;
    std::int16_t cursorId_ = 0;
    bool hasCursor_ = false;
    DrawContext* context_ = nullptr;
    std::unique_ptr<FrameOverlay> overlay_;
    Frame* parent_ = nullptr;
    // Whether the painting under way goes through the offscreen buffer.
    bool usingOffscreen_ = false;
    bool floatingRegistered_ = false;
};

}  // namespace vorix
