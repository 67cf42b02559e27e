#include "platform/SoftwareRegion.h"

#include <algorithm>

#include "framework/Exceptions.h"

namespace vorix {
namespace {

// What is left of `a` outside `b`: at most four rectangles, none overlapping.
void AppendDifference(const Rect& a, const Rect& b, std::vector<Rect>* out) {
    const Rect common = Intersection(a, b);
    if (common.IsEmpty()) {
        out->push_back(a);
        return;
    }
    if (a.top < common.top) out->push_back({a.left, a.top, a.right, common.top});
    if (common.bottom < a.bottom) out->push_back({a.left, common.bottom, a.right, a.bottom});
    if (a.left < common.left) out->push_back({a.left, common.top, common.left, common.bottom});
    if (common.right < a.right) out->push_back({common.right, common.top, a.right, common.bottom});
}

std::vector<Rect> Difference(const std::vector<Rect>& from, const std::vector<Rect>& take) {
    std::vector<Rect> rest = from;
    for (const Rect& cut : take) {
        std::vector<Rect> next;
        for (const Rect& piece : rest)
            AppendDifference(piece, cut, &next);
        rest = std::move(next);
    }
    return rest;
}

}  // namespace

SoftwareRegion::SoftwareRegion() : rects_{Rect{0, 0, 1, 1}} {}

const SoftwareRegion& SoftwareRegion::Of(const Region& other) {
    const auto* region = dynamic_cast<const SoftwareRegion*>(&other);
    if (region == nullptr) VORIX_THROW(AppFrame::BadParameter);
    return *region;
}

void SoftwareRegion::Clear() {
    rects_.clear();
}

void SoftwareRegion::SetRect(const Rect& rect) {
    rects_.clear();
    if (!rect.IsEmpty()) rects_.push_back(rect);
}

void SoftwareRegion::Union(const Region& other) {
    // Only what is new is added, so that the rectangles stay apart.
    std::vector<Rect> added = Difference(Of(other).rects_, rects_);
    rects_.insert(rects_.end(), added.begin(), added.end());
}

void SoftwareRegion::Subtract(const Region& other) {
    rects_ = Difference(rects_, Of(other).rects_);
}

void SoftwareRegion::Intersect(const Region& other) {
    std::vector<Rect> common;
    for (const Rect& a : rects_) {
        for (const Rect& b : Of(other).rects_) {
            const Rect piece = Intersection(a, b);
            if (!piece.IsEmpty()) common.push_back(piece);
        }
    }
    rects_ = std::move(common);
}

bool SoftwareRegion::IsEmpty() const {
    return rects_.empty();
}

bool SoftwareRegion::Contains(Point point) const {
    return std::any_of(rects_.begin(), rects_.end(),
                       [point](const Rect& rect) { return rect.Contains(point); });
}

Rect SoftwareRegion::GetBoundingRect() const {
    if (rects_.empty()) return {};
    Rect box = rects_.front();
    for (const Rect& rect : rects_) {
        box.left = std::min(box.left, rect.left);
        box.top = std::min(box.top, rect.top);
        box.right = std::max(box.right, rect.right);
        box.bottom = std::max(box.bottom, rect.bottom);
    }
    return box;
}

}  // namespace vorix
