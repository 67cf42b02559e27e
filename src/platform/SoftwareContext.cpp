#include "platform/SoftwareContext.h"

#include <algorithm>
#include <cmath>
#include <new>
#include <stdexcept>
#include <utility>

#include "framework/Exceptions.h"
#include "platform/FontFace.h"
#include "platform/SoftwareRegion.h"

namespace vorix {
namespace {

// `value - origin` as the window system computes it: in 16 bits, wrapping.
std::int32_t Narrow(std::int32_t value, std::int32_t origin) {
    const auto difference = static_cast<std::uint32_t>(value) - static_cast<std::uint32_t>(origin);
    return static_cast<std::int16_t>(static_cast<std::uint16_t>(difference));
}

std::uint64_t SquareRootFloor(std::uint64_t n) {
    auto root = static_cast<std::uint64_t>(std::sqrt(static_cast<double>(n)));
    while (root * root > n)
        --root;
    while (root < 0xFFFFFFFFu && (root + 1) * (root + 1) <= n)
        ++root;
    return root;
}

// The pixels of row `y` of the oval in `box`: those whose centres lie in the ellipse through the
// centres of the box's outermost pixels. Where that ellipse misses every centre of a row, the
// row still gets its middle pixel or two, and the middle row (or two) spans the box, so that the
// oval touches all four sides as a pen drawing it would. False for a row outside the box.
// Exact integer arithmetic, symmetric about both axes of the box; sides of up to 65535 pixels
// fit in 64 bits.
bool OvalRow(const Rect& box, std::int32_t y, std::int32_t* left, std::int32_t* right) {
    if (y < box.top || y >= box.bottom) return false;
    // Doubled: the ellipse's diameters and the row centre's distance from the box's centre.
    const std::int64_t across = static_cast<std::int64_t>(box.Width()) - 1;
    const std::int64_t down = static_cast<std::int64_t>(box.Height()) - 1;
    const std::int64_t dy2 = 2 * static_cast<std::int64_t>(y) - box.top - (box.bottom - 1);
    std::int64_t inset = 0;
    if (std::llabs(dy2) > 1) {
        const auto acrossSquared = static_cast<std::uint64_t>(across * across);
        const auto downSquared = static_cast<std::uint64_t>(down * down);
        const std::uint64_t reach =
            acrossSquared * (downSquared - static_cast<std::uint64_t>(dy2 * dy2)) / downSquared;
        // Twice the distance of a pixel centre from the middle may be at most this.
        const auto widest = static_cast<std::int64_t>(SquareRootFloor(reach));
        inset = (across - widest + 1) / 2;
        if (2 * inset > across) inset = across / 2;
    }
    *left = static_cast<std::int32_t>(box.left + inset);
    *right = static_cast<std::int32_t>(box.right - 1 - inset);
    return true;
}

}  // namespace

SoftwareContext::SoftwareContext(std::int32_t width, std::int32_t height,
                                 const ImageResources* resources)
    : resources_(resources) {
    ReplaceImage(BlankImage(width, height));
}

PixelImage SoftwareContext::BlankImage(std::int32_t width, std::int32_t height) {
    if (width > kMaxSide || height > kMaxSide) VORIX_THROW(AppFrame::ResAlloc);
    try {
        return PixelImage(width, height);
    } catch (const std::bad_alloc&) {
        VORIX_THROW(AppFrame::ResAlloc);
    } catch (const std::length_error&) {
        VORIX_THROW(AppFrame::ResAlloc);
    }
}

SoftwareContext::~SoftwareContext() = default;

void SoftwareContext::ReplaceImage(PixelImage image) {
    image_ = std::move(image);
    ClearClip();
}

Rect SoftwareContext::GetBounds() const {
    return image_.Bounds();
}

void SoftwareContext::BeginDraw() {
    RaiseDrawDepth();
}

void SoftwareContext::EndDraw() {
    LowerDrawDepth();
}

void SoftwareContext::SetOrigin(Point origin) {
    origin_ = origin;
}

Point SoftwareContext::ToSurface(Point point) const {
    return {Narrow(point.x, origin_.x), Narrow(point.y, origin_.y)};
}

Rect SoftwareContext::ToSurfaceRect(const Rect& rect) const {
    return {Narrow(rect.left, origin_.x), Narrow(rect.top, origin_.y),
            Narrow(rect.right, origin_.x), Narrow(rect.bottom, origin_.y)};
}

// ---- Clip

void SoftwareContext::ClearClip() {
    clip_.clear();
    if (!image_.Bounds().IsEmpty()) clip_.push_back(image_.Bounds());
    clipBox_ = image_.Bounds();
}

void SoftwareContext::SetClipRect(const Rect& rect) {
    clip_.clear();
    clipBox_ = Intersection(ToSurfaceRect(rect), image_.Bounds());
    if (!clipBox_.IsEmpty()) clip_.push_back(clipBox_);
}

std::unique_ptr<DrawContext::Region> SoftwareContext::CreateRegion() {
    return std::make_unique<SoftwareRegion>();
}

void SoftwareContext::ApplyClipRegion(const Region& region) {
    const auto* software = dynamic_cast<const SoftwareRegion*>(&region);
    if (software == nullptr) VORIX_THROW(AppFrame::BadParameter);
    SoftwareRegion onSurface;
    onSurface.SetRect(image_.Bounds());
    onSurface.Intersect(*software);
    clip_ = onSurface.GetRects();
    clipBox_ = onSurface.GetBoundingRect();
}

// ---- Painting through the clip

void SoftwareContext::PaintPixel(std::int32_t x, std::int32_t y, Pixel pixel) {
    if (!clipBox_.Contains({x, y})) return;
    for (const Rect& rect : clip_) {
        if (rect.Contains({x, y})) {
            image_.Row(y)[x] = pixel;
            return;
        }
    }
}

void SoftwareContext::PaintSpan(std::int32_t y, std::int32_t left, std::int32_t right,
                                Pixel pixel) {
    if (y < clipBox_.top || y >= clipBox_.bottom) return;
    Pixel* row = image_.Row(y);
    for (const Rect& rect : clip_) {
        if (y < rect.top || y >= rect.bottom) continue;
        const std::int32_t from = std::max(left, rect.left);
        const std::int32_t to = std::min(right, rect.right);
        if (from < to) std::fill(row + from, row + to, pixel);
    }
}

void SoftwareContext::PaintColumn(std::int32_t x, std::int32_t top, std::int32_t bottom,
                                  Pixel pixel) {
    if (x < clipBox_.left || x >= clipBox_.right) return;
    for (const Rect& rect : clip_) {
        if (x < rect.left || x >= rect.right) continue;
        const std::int32_t to = std::min(bottom, rect.bottom);
        for (std::int32_t y = std::max(top, rect.top); y < to; ++y) image_.Row(y)[x] = pixel;
    }
}

// Both ends painted. Each step along the longer axis moves the shorter one by the rounded
// fraction covered so far (a half rounds away from the start), which is the pixel choice of a
// Bresenham line. Only the steps inside the clip's box are visited, so a line that runs far off
// the surface costs no more than its visible part.
void SoftwareContext::PaintLine(Point from, Point to, Pixel pixel) {
    const std::int64_t dx = static_cast<std::int64_t>(to.x) - from.x;
    const std::int64_t dy = static_cast<std::int64_t>(to.y) - from.y;
    const bool alongX = std::llabs(dx) >= std::llabs(dy);
    const std::int64_t steps = alongX ? std::llabs(dx) : std::llabs(dy);
    if (steps == 0) {
        PaintPixel(from.x, from.y, pixel);
        return;
    }
    const std::int64_t across = alongX ? std::llabs(dy) : std::llabs(dx);
    const std::int64_t majorStart = alongX ? from.x : from.y;
    const std::int64_t minorStart = alongX ? from.y : from.x;
    const std::int64_t majorSign = (alongX ? dx : dy) < 0 ? -1 : 1;
    const std::int64_t minorSign = (alongX ? dy : dx) < 0 ? -1 : 1;
    const std::int64_t low = alongX ? clipBox_.left : clipBox_.top;
    const std::int64_t high = (alongX ? clipBox_.right : clipBox_.bottom) - 1;

    std::int64_t first = 0;
    std::int64_t last = steps;
    if (majorSign > 0) {
        first = std::max(first, low - majorStart);
        last = std::min(last, high - majorStart);
    } else {
        first = std::max(first, majorStart - high);
        last = std::min(last, majorStart - low);
    }
    if (first > last) return;
    if (across == 0) {  // a row or a column: one run of pixels
        const auto start =
            static_cast<std::int32_t>(majorStart + majorSign * (majorSign > 0 ? first : last));
        const auto end = static_cast<std::int32_t>(start + last - first + 1);
        if (alongX) {
            PaintSpan(from.y, start, end, pixel);
        } else {
            PaintColumn(from.x, start, end, pixel);
        }
        return;
    }
    // The minor offset at step i is (2 i across + steps) / (2 steps), rounded down; it is
    // divided once and then carried along, the quotient rising by at most 1 a step.
    const std::int64_t denominator = 2 * steps;
    const std::int64_t numerator = 2 * first * across + steps;
    std::int64_t offset = numerator / denominator;
    std::int64_t remainder = numerator % denominator;
    for (std::int64_t i = first; i <= last; ++i) {
        const std::int64_t major = majorStart + majorSign * i;
        const std::int64_t minor = minorStart + minorSign * offset;
        PaintPixel(static_cast<std::int32_t>(alongX ? major : minor),
                   static_cast<std::int32_t>(alongX ? minor : major), pixel);
        remainder += 2 * across;
        if (remainder >= denominator) {
            remainder -= denominator;
            ++offset;
        }
    }
}

void SoftwareContext::PaintOval(const Rect& box, bool outlineOnly, Pixel pixel) {
    if (box.IsEmpty()) return;
    const std::int32_t top = std::max(box.top, clipBox_.top);
    const std::int32_t bottom = std::min(box.bottom, clipBox_.bottom);
    for (std::int32_t y = top; y < bottom; ++y) {
        std::int32_t left = 0;
        std::int32_t right = 0;
        if (!OvalRow(box, y, &left, &right)) continue;
        if (!outlineOnly) {
            PaintSpan(y, left, right + 1, pixel);
            continue;
        }
        // The outline: the pixels of the filled oval with a neighbour above or below outside
        // it, and the two ends of each row.
        std::int32_t aboveLeft = 0, aboveRight = 0, belowLeft = 0, belowRight = 0;
        const bool above = OvalRow(box, y - 1, &aboveLeft, &aboveRight);
        const bool below = OvalRow(box, y + 1, &belowLeft, &belowRight);
        if (!above || !below) {
            PaintSpan(y, left, right + 1, pixel);
            continue;
        }
        const std::int32_t innerLeft = std::max(aboveLeft, belowLeft);
        const std::int32_t innerRight = std::min(aboveRight, belowRight);
        PaintSpan(y, left, std::max(left, innerLeft - 1) + 1, pixel);
        PaintSpan(y, std::min(right, innerRight + 1), right + 1, pixel);
    }
}

// ---- Shapes

void SoftwareContext::SetForeColor(const RGBColor& color) {
    foreColor_ = PixelOf(color);
}

void SoftwareContext::SetBackColor(const RGBColor& color) {
    backColor_ = PixelOf(color);
}

void SoftwareContext::ResetCopyColors() {
    SetForeColor(kBlack);
    SetBackColor(kWhite);
}

void SoftwareContext::MoveTo(Point point) {
    pen_ = ToSurface(point);
}

void SoftwareContext::LineTo(Point point) {
    const Point end = ToSurface(point);
    PaintLine(pen_, end, foreColor_);
    pen_ = end;
}

void SoftwareContext::FillRect(const Rect& rect) {
    const Rect area = Intersection(ToSurfaceRect(rect), clipBox_);
    for (std::int32_t y = area.top; y < area.bottom; ++y) {
        PaintSpan(y, area.left, area.right, foreColor_);
    }
}

void SoftwareContext::FrameRect(const Rect& rect) {
    const Rect outer = ToSurfaceRect(rect);
    const Rect line{outer.left + 1, outer.top + 1, outer.right - 1, outer.bottom - 1};
    if (line.IsEmpty()) return;
    PaintSpan(line.top, line.left, line.right, foreColor_);
    PaintSpan(line.bottom - 1, line.left, line.right, foreColor_);
    const std::int32_t top = std::max(line.top + 1, clipBox_.top);
    const std::int32_t bottom = std::min(line.bottom - 1, clipBox_.bottom);
    for (std::int32_t y = top; y < bottom; ++y) {
        PaintPixel(line.left, y, foreColor_);
        PaintPixel(line.right - 1, y, foreColor_);
    }
}

void SoftwareContext::FillOval(const Rect& rect) {
    PaintOval(ToSurfaceRect(rect), false, foreColor_);
}

void SoftwareContext::FrameOval(const Rect& rect) {
    PaintOval(ToSurfaceRect(rect), true, foreColor_);
}

// ---- Window operations: an offscreen surface has no window

Point SoftwareContext::GetMousePoint() const {
    return {};
}
void SoftwareContext::SetCursor(std::int16_t) {}
void SoftwareContext::ResetCursor() {}
bool SoftwareContext::IsControlDown() const {
    return false;
}
bool SoftwareContext::IsShiftDown() const {
    return false;
}
bool SoftwareContext::IsControlShiftDown() const {
    return false;
}
bool SoftwareContext::IsOptionDown() const {
    return false;
}
void SoftwareContext::SetMouseCapturer(MouseCapturer*) {}
void SoftwareContext::ClearMouseCapturer() {}
void SoftwareContext::ValidateRect(const Rect&) {}
void SoftwareContext::InvalidateRect(const Rect&) {}
bool SoftwareContext::LoadSettingsFile(std::string&, std::string_view) {
    return false;
}
bool SoftwareContext::SaveSettingsFile(std::string_view, std::string_view, std::string_view) {
    return false;
}

void SoftwareContext::DeleteContext(DrawContext* context) {
    delete context;
}

}  // namespace vorix
