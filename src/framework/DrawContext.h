#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "framework/Geometry.h"

namespace vorix {

// The drawing surface that every frame of the editor paints through: a window, an offscreen
// buffer or an image of the artwork. Frames know nothing else of the platform; a back end
// implements these operations and the same frame tree paints into a window or into a PNG.
//
// Coordinates given to the drawing operations are the caller's; the surface subtracts the origin
// (SetOrigin) to find the pixel. Everything here runs on the editor thread: none of it may be
// called from the audio thread, and a surface belongs to one thread for its whole life.
//
// The order of the virtual operations is part of the design and is kept as it stands.
class DrawContext {
  public:
    // A set of pixels of the surface, in surface coordinates, used to clip. Made by CreateRegion
    // of the surface it is applied to; regions of different surfaces do not combine.
    class Region {
      public:
        virtual ~Region();
        // Editor thread. The region becomes empty.
        virtual void Clear() = 0;
        // Editor thread. The region becomes exactly the rectangle.
        virtual void SetRect(const Rect& rect) = 0;
        // Editor thread. Set operations with another region of the same surface.
        virtual void Union(const Region& other) = 0;
        virtual void Subtract(const Region& other) = 0;
        virtual void Intersect(const Region& other) = 0;
        // Editor thread. True when the region holds no pixel.
        virtual bool IsEmpty() const = 0;
    };

    // Whoever holds the mouse while a button is down: it hears every move and the release,
    // wherever they happen, and keeps the editor's heartbeat going while it holds it.
    class MouseCapturer {
      public:
        // Editor thread. The mouse moved to `point`, in window coordinates.
        virtual void MouseMoved(Point point) = 0;
        // Editor thread. The button went up at `point`, in window coordinates.
        virtual void MouseUp(Point point) = 0;
        // Editor thread. One beat of the heartbeat during the capture.
        virtual void Pump() = 0;

      protected:
        // A capturer is never deleted through this interface.
        ~MouseCapturer() = default;
    };

    // What identifies a floating rectangle: the address of the floating frame.
    using FloatingRectId = const void*;

    // A rectangle that floats above its siblings, in surface coordinates. What lies in a higher
    // layer clips everything drawn beneath it.
    struct FloatingRect {
        Rect rect;
        std::int32_t layer = 0;
        FloatingRectId id = nullptr;
        bool suspended = false;
    };

    DrawContext();
    DrawContext(const DrawContext&) = delete;
    DrawContext& operator=(const DrawContext&) = delete;

    virtual ~DrawContext();

    // Editor thread. The surface's rectangle, in surface coordinates.
    virtual Rect GetBounds() const = 0;
    // Editor thread. Prepares for drawing; calls nest, each ended by EndDraw.
    virtual void BeginDraw() = 0;
    virtual void EndDraw() = 0;
    // Editor thread. From now on `origin` is subtracted from every coordinate drawn.
    virtual void SetOrigin(Point origin) = 0;
    // Editor thread. The mouse on the surface; (0, 0) where the surface has no mouse.
    virtual Point GetMousePoint() const = 0;
    // Editor thread. Shows the cursor with this id over the surface, or the usual one again.
    virtual void SetCursor(std::int16_t cursorId) = 0;
    virtual void ResetCursor() = 0;
    // Editor thread. The colour of lines, fills and text.
    virtual void SetForeColor(const RGBColor& color) = 0;
    virtual void SetBackColor(const RGBColor& color) = 0;
    // Editor thread. Sets the pen.
    virtual void MoveTo(Point point) = 0;
    // Editor thread. A line from the pen to `point` that paints `point` too; the pen then stands
    // at `point`. A line to the pen's own place paints that one pixel.
    virtual void LineTo(Point point) = 0;
    virtual void FillRect(const Rect& rect) = 0;
    // Editor thread. Ovals stay within the rectangle; FrameOval paints the outline only.
    virtual void FillOval(const Rect& rect) = 0;
    virtual void FrameOval(const Rect& rect) = 0;
    // Editor thread. A one-pixel outline inside the rectangle.
    virtual void FrameRect(const Rect& rect) = 0;
    // Editor thread. `fontKind` 0 is the normal face and 1 the small one; any other value keeps
    // the face in use. Then the colour, as SetForeColor.
    virtual void SetFont(std::int32_t fontKind, const RGBColor& color) = 0;
    // Editor thread. The text with its baseline on the pen's row, starting at the pen; the pen
    // stays where it is.
    virtual void DrawString(std::string_view text) = 0;
    // Editor thread. The text broken at words into lines within the rectangle's width; a word
    // too wide for a line ends in an ellipsis. Lines beyond the rectangle are drawn all the same.
    virtual void DrawStringInRect(std::string_view text, const Rect& rect) = 0;
    // Editor thread. The text's width in pixels, in the face in use.
    virtual std::int32_t GetStringWidth(std::string_view text) = 0;
    // Editor thread. The image resource at the rectangle's left top, limited to the rectangle.
    // Raises AppFrame::ResAlloc when the image cannot be had.
    virtual void DrawResource(std::int32_t resourceId, const Rect& rect) = 0;
    // Editor thread. Black foreground, white background: what a straight copy of pixels needs.
    virtual void ResetCopyColors() = 0;
    // Editor thread. Copies `sourceRect` of `source` so that its left top lands on `destPoint`;
    // with `resetColors` first as ResetCopyColors.
    virtual void CopyBits(const DrawContext& source, const Rect& sourceRect, Point destPoint,
                          bool resetColors) = 0;
    // Editor thread. As CopyBits, through the mask's pixels at `maskPoint`: where the mask is
    // white, what lay on this surface stays; where it is black, the source comes through.
    virtual void CopyMaskedBits(const DrawContext& source, const Rect& sourceRect,
                                const DrawContext& mask, Point maskPoint, Point destPoint,
                                bool resetColors) = 0;
    // Editor thread. The colour of one pixel, each component in 0 to 255.
    virtual RGBColor GetPixelColor(Point point) const = 0;
    // Editor thread. Moves the pixels of `rect` by `delta` and answers what is left to repaint;
    // a surface that cannot scroll answers an empty rectangle, and the caller repaints it all.
    virtual Rect ScrollBits(const Rect& rect, Point delta) = 0;
    // Editor thread. The modifiers of the mouse click in progress. Control is the secondary
    // click: Control alone or the right button; Control with Shift is its own state, in which
    // neither IsControlDown nor IsShiftDown answers true.
    virtual bool IsControlDown() const = 0;
    virtual bool IsShiftDown() const = 0;
    virtual bool IsControlShiftDown() const = 0;
    virtual bool IsOptionDown() const = 0;
    // Editor thread. From now on every mouse event goes to `capturer` (not owned) until
    // ClearMouseCapturer.
    virtual void SetMouseCapturer(MouseCapturer* capturer) = 0;
    virtual void ClearMouseCapturer() = 0;
    // Editor thread. The platform need not repaint the rectangle, or must, in window
    // coordinates. Neither paints at once.
    virtual void ValidateRect(const Rect& rect) = 0;
    virtual void InvalidateRect(const Rect& rect) = 0;
    // Editor thread. The list of floating rectangles, kept here for every surface. Adding an id
    // that is present already changes nothing.
    virtual void AddFloatingRect(FloatingRectId id, const Rect& rect, std::int32_t layer);
    virtual void RemoveFloatingRect(FloatingRectId id);
    // Editor thread. A suspended rectangle and everything beneath it no longer clip: a floating
    // frame suspends its own while it paints.
    virtual void SuspendFloatingRect(FloatingRectId id, bool suspended);
    virtual void ClearFloatingRects();
    // Editor thread. The settings file dialogs. Load answers false when the user cancels or the
    // file cannot be read (after showing why), and true with the whole file in `data`. Save
    // offers `suggestedName` and answers whether the whole of `data` was written.
    virtual bool LoadSettingsFile(std::string& data, std::string_view extension) = 0;
    virtual bool SaveSettingsFile(std::string_view data, std::string_view suggestedName,
                                  std::string_view extension) = 0;
    // Editor thread. Deletes a surface made for this one (an offscreen buffer, a pixmap).
    virtual void DeleteContext(DrawContext* context) = 0;
    // Editor thread. Clips all drawing to the rectangle, given in drawing coordinates.
    virtual void SetClipRect(const Rect& rect) = 0;
    // Editor thread. The rectangle in surface coordinates: minus the origin.
    virtual Rect ToSurfaceRect(const Rect& rect) const = 0;
    // Editor thread. A new region of this surface, owned by the caller.
    virtual std::unique_ptr<Region> CreateRegion() = 0;
    // Editor thread. Clips all drawing to the region, in surface coordinates.
    virtual void ApplyClipRegion(const Region& region) = 0;

    // Editor thread. Clips drawing to `rect` (drawing coordinates) and away from every floating
    // rectangle above the one that paints: the rectangles from the top layer down to the first
    // suspended one.
    void SetClip(const Rect& rect);

    // Editor thread. How deep BeginDraw calls are nested now.
    std::int32_t GetDrawDepth() const { return drawDepth_; }

    // Editor thread. The floating rectangles, lowest layer first; equal layers in the order they
    // came.
    const std::vector<FloatingRect>& GetFloatingRects() const { return floatingRects_; }

  protected:
    // For BeginDraw and EndDraw of a back end: the nesting count, which never goes below 0.
    void RaiseDrawDepth() { ++drawDepth_; }
    void LowerDrawDepth() {
        if (drawDepth_ > 0) --drawDepth_;
    }

  private:
    void RebuildFloatingRegion();

    std::int32_t drawDepth_ = 0;
    std::vector<FloatingRect> floatingRects_;
    // What the floating rectangles take away from drawing; absent while the list is empty.
    std::unique_ptr<Region> floatingRegion_;
};

}  // namespace vorix
