// Pixel copies on the software surface: pixmaps, masked pixmaps, resource images, reading back.
#include <algorithm>
#include <cstring>

#include "framework/Exceptions.h"
#include "platform/ImageResources.h"
#include "platform/SoftwareContext.h"

namespace vorix {
namespace {

const SoftwareContext& SoftwareSurfaceOf(const DrawContext& context) {
    const auto* surface = dynamic_cast<const SoftwareContext*>(&context);
    if (surface == nullptr) VORIX_THROW(AppFrame::BadParameter);
    return *surface;
}

// The pixels of `surface`, or a copy of them when `surface` is the one being drawn on, so that
// a copy within one surface reads what was there before it began.
const PixelImage& StablePixels(const SoftwareContext& surface, const SoftwareContext& target,
                               PixelImage* copy) {
    if (&surface != &target) return surface.GetImage();
    *copy = surface.GetImage();
    return *copy;
}

// Source rectangles and mask points are taken as given, not through the origin; bounded like
// this, no arithmetic on them can overflow, and no surface is large enough to notice.
constexpr std::int32_t kFarthest = 1 << 24;

std::int32_t Bounded(std::int32_t value) {
    return std::clamp(value, -kFarthest, kFarthest);
}
Rect Bounded(const Rect& rect) {
    return {Bounded(rect.left), Bounded(rect.top), Bounded(rect.right), Bounded(rect.bottom)};
}

}  // namespace

void SoftwareContext::PaintImage(const PixelImage& from, const Rect& area, Point to) {
    const Rect target{to.x, to.y, to.x + area.Width(), to.y + area.Height()};
    for (const Rect& clip : clip_) {
        const Rect visible = Intersection(target, clip);
        for (std::int32_t y = visible.top; y < visible.bottom; ++y) {
            const Pixel* source = from.Row(area.top + y - to.y) + area.left + visible.left - to.x;
            std::memmove(image_.Row(y) + visible.left, source,
                         static_cast<std::size_t>(visible.Width()) * sizeof(Pixel));
        }
    }
}

void SoftwareContext::CopyBits(const DrawContext& source, const Rect& requestedRect,
                               Point destPoint, bool resetColors) {
    if (resetColors) ResetCopyColors();
    const Rect sourceRect = Bounded(requestedRect);
    const SoftwareContext& surface = SoftwareSurfaceOf(source);
    const Point dest = ToSurface(destPoint);
    const Rect area = Intersection(sourceRect, surface.GetImage().Bounds());
    if (area.IsEmpty()) return;
    PixelImage copy;
    const PixelImage& pixels = StablePixels(surface, *this, &copy);
    PaintImage(pixels, area,
               {dest.x + area.left - sourceRect.left, dest.y + area.top - sourceRect.top});
}

void SoftwareContext::CopyMaskedBits(const DrawContext& source, const Rect& requestedRect,
                                     const DrawContext& mask, Point requestedMaskPoint,
                                     Point destPoint, bool resetColors) {
    if (resetColors) ResetCopyColors();
    const Rect sourceRect = Bounded(requestedRect);
    const Point maskPoint{Bounded(requestedMaskPoint.x), Bounded(requestedMaskPoint.y)};
    PixelImage sourceCopy;
    PixelImage maskCopy;
    const PixelImage& sourcePixels = StablePixels(SoftwareSurfaceOf(source), *this, &sourceCopy);
    const PixelImage& maskPixels = StablePixels(SoftwareSurfaceOf(mask), *this, &maskCopy);
    const Point dest = ToSurface(destPoint);

    // Offsets within the copied rectangle at which source and mask both have a pixel.
    const Rect inSource = sourcePixels.Bounds().Offset(-sourceRect.left, -sourceRect.top);
    const Rect inMask = maskPixels.Bounds().Offset(-maskPoint.x, -maskPoint.y);
    const Rect offsets = Intersection(
        Intersection({0, 0, sourceRect.Width(), sourceRect.Height()}, inSource), inMask);
    if (offsets.IsEmpty()) return;

    for (const Rect& clip : clip_) {
        const Rect visible = Intersection(offsets.Offset(dest.x, dest.y), clip);
        for (std::int32_t y = visible.top; y < visible.bottom; ++y) {
            const std::int32_t j = y - dest.y;
            Pixel* row = image_.Row(y);
            const Pixel* sourceRow = sourcePixels.Row(sourceRect.top + j);
            const Pixel* maskRow = maskPixels.Row(maskPoint.y + j);
            for (std::int32_t x = visible.left; x < visible.right; ++x) {
                const std::int32_t i = x - dest.x;
                const Pixel sourcePixel = sourceRow[sourceRect.left + i];
                // XOR the source in, AND the mask, XOR the source again.
                row[x] = ((row[x] ^ sourcePixel) & maskRow[maskPoint.x + i]) ^ sourcePixel;
            }
        }
    }
}

void SoftwareContext::DrawResource(std::int32_t resourceId, const Rect& rect) {
    if (resources_ == nullptr) VORIX_THROW(AppFrame::ResAlloc);
    const PixelImage& image = resources_->GetImage(resourceId);
    const Rect dest = ToSurfaceRect(rect);
    if (dest.IsEmpty()) return;
    const Rect area{0, 0, std::min(image.width, dest.Width()),
                    std::min(image.height, dest.Height())};
    if (area.IsEmpty()) return;
    PaintImage(image, area, {dest.left, dest.top});
}

RGBColor SoftwareContext::GetPixelColor(Point point) const {
    const Point at = ToSurface(point);
    if (!image_.Bounds().Contains(at)) return {0xFF, 0xFF, 0xFF};
    return ColorOf(image_.At(at.x, at.y));
}

Rect SoftwareContext::ScrollBits(const Rect&, Point) {
    return {};
}

}  // namespace vorix
