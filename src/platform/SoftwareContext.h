#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "framework/DrawContext.h"
#include "platform/PixelImage.h"

namespace vorix {

class FontFace;
class ImageResources;

// The software drawing surface: every operation of DrawContext on a buffer of 32-bit pixels,
// with the pixel rules the editor's artwork is laid out for:
//
// - coordinates minus the origin, in 16-bit arithmetic: a coordinate that leaves the signed
//   16-bit range wraps around, as the window system's does;
// - LineTo paints both ends, in one-pixel lines of the foreground colour;
// - FrameRect outlines the rectangle inset by one pixel on every side: the outline of (0, 0,
//   10, 10) runs through columns and rows 1 and 8;
// - ovals lie within their rectangle and are symmetric in it;
// - text is drawn with its baseline above the pen's row, blended into what lies beneath, in
//   the foreground colour; the normal face is 8 points, the small one 7;
// - CopyMaskedBits combines by bits as three raster copies do: destination XOR source, AND
//   mask, XOR source. White in the mask keeps the destination, black lets the source through.
//
// Used as it is, the surface is an offscreen buffer: it has no window, so the window operations
// do nothing (no mouse, cursor, modifier keys, capture, repaint requests or file dialogs).
// SoftwareWindowContext adds them. Editor thread; a surface belongs to one thread.
class SoftwareContext : public DrawContext {
  public:
    static constexpr std::int32_t kNormalFont = 0;
    static constexpr std::int32_t kSmallFont = 1;
    // The widest and tallest surface: drawing coordinates reach no farther in 16 bits.
    static constexpr std::int32_t kMaxSide = 32767;

    // A black surface of the given size. `resources` (not owned, may be null) provides the
    // images of DrawResource. Raises AppFrame::ResAlloc for a side beyond kMaxSide or when the
    // pixels cannot be allocated.
    SoftwareContext(std::int32_t width, std::int32_t height,
                    const ImageResources* resources = nullptr);
    ~SoftwareContext() override;

    Rect GetBounds() const override;
    void BeginDraw() override;
    void EndDraw() override;
    void SetOrigin(Point origin) override;
    Point GetMousePoint() const override;
    void SetCursor(std::int16_t cursorId) override;
    void ResetCursor() override;
    void SetForeColor(const RGBColor& color) override;
    void SetBackColor(const RGBColor& color) override;
    void MoveTo(Point point) override;
    void LineTo(Point point) override;
    void FillRect(const Rect& rect) override;
    void FillOval(const Rect& rect) override;
    void FrameOval(const Rect& rect) override;
    void FrameRect(const Rect& rect) override;
    void SetFont(std::int32_t fontKind, const RGBColor& color) override;
    void DrawString(std::string_view text) override;
    void DrawStringInRect(std::string_view text, const Rect& rect) override;
    std::int32_t GetStringWidth(std::string_view text) override;
    void DrawResource(std::int32_t resourceId, const Rect& rect) override;
    void ResetCopyColors() override;
    // The source must be a software surface (else AppFrame::BadParameter); `sourceRect` is in
    // its own pixels, whatever its origin, and the part of it off the source is not copied.
    void CopyBits(const DrawContext& source, const Rect& sourceRect, Point destPoint,
                  bool resetColors) override;
    // As CopyBits; only pixels present in source, mask and this surface are touched.
    void CopyMaskedBits(const DrawContext& source, const Rect& sourceRect, const DrawContext& mask,
                        Point maskPoint, Point destPoint, bool resetColors) override;
    // A point off the surface reads as white: every bit set, as a failed read reports.
    RGBColor GetPixelColor(Point point) const override;
    Rect ScrollBits(const Rect& rect, Point delta) override;
    bool IsControlDown() const override;
    bool IsShiftDown() const override;
    bool IsControlShiftDown() const override;
    bool IsOptionDown() const override;
    void SetMouseCapturer(MouseCapturer* capturer) override;
    void ClearMouseCapturer() override;
    void ValidateRect(const Rect& rect) override;
    void InvalidateRect(const Rect& rect) override;
    bool LoadSettingsFile(std::string& data, std::string_view extension) override;
    bool SaveSettingsFile(std::string_view data, std::string_view suggestedName,
                          std::string_view extension) override;
    // Deletes `context`, which must have been made with new; null is a no-op.
    void DeleteContext(DrawContext* context) override;
    void SetClipRect(const Rect& rect) override;
    Rect ToSurfaceRect(const Rect& rect) const override;
    std::unique_ptr<Region> CreateRegion() override;
    // The region must be one this surface made (else AppFrame::BadParameter).
    void ApplyClipRegion(const Region& region) override;

    // Editor thread. The pixels, for a window to show or a snapshot to save.
    const PixelImage& GetImage() const { return image_; }
    // Editor thread. One pixel in surface coordinates; the point must lie on the surface.
    Pixel GetPixel(std::int32_t x, std::int32_t y) const { return image_.At(x, y); }
    // Editor thread. Drawing reaches the whole surface again.
    void ClearClip();
    // Editor thread. The pen, in surface coordinates, and the origin.
    Point GetPen() const { return pen_; }
    Point GetOrigin() const { return origin_; }
    // Editor thread. The face in use (kNormalFont or kSmallFont) and its line height in pixels.
    std::int32_t GetFontKind() const { return fontKind_; }
    std::int32_t GetLineHeight();

  protected:
    // Editor thread. New pixels and size; the clip becomes the whole surface.
    void ReplaceImage(PixelImage image);
    // Any thread. A black image; raises AppFrame::ResAlloc when memory for it cannot be had.
    static PixelImage BlankImage(std::int32_t width, std::int32_t height);
    const ImageResources* GetResources() const { return resources_; }

  private:
    Point ToSurface(Point point) const;
    FontFace& CurrentFace();

    // Painting in surface coordinates, through the clip.
    void PaintPixel(std::int32_t x, std::int32_t y, Pixel pixel);
    void PaintSpan(std::int32_t y, std::int32_t left, std::int32_t right, Pixel pixel);
    void PaintColumn(std::int32_t x, std::int32_t top, std::int32_t bottom, Pixel pixel);
    void PaintLine(Point from, Point to, Pixel pixel);
    void PaintOval(const Rect& rect, bool outlineOnly, Pixel pixel);
    void PaintText(std::u32string_view text, Point pen, FontFace& face, Pixel pixel);
    // Copies `area` of `from` (within its bounds) so that its left top lands on `to`.
    void PaintImage(const PixelImage& from, const Rect& area, Point to);

    PixelImage image_;
    const ImageResources* resources_ = nullptr;
    Point origin_;
    Point pen_;
    Pixel foreColor_ = 0;
    Pixel backColor_ = MakePixel(0xFF, 0xFF, 0xFF);
    std::int32_t fontKind_ = kNormalFont;
    // The two faces, made on first use, by font kind.
    std::array<std::unique_ptr<FontFace>, 2> faces_;
    // The clip: rectangles on the surface that never overlap, and the box around them.
    std::vector<Rect> clip_;
    Rect clipBox_;
};

}  // namespace vorix
