#include "framework/DrawContext.h"

#include <algorithm>

namespace vorix {

DrawContext::Region::~Region() = default;

DrawContext::DrawContext() = default;

DrawContext::~DrawContext() = default;

void DrawContext::AddFloatingRect(FloatingRectId id, const Rect& rect, std::int32_t layer) {
    auto same = [id](const FloatingRect& entry) { return entry.id == id; };
    if (std::any_of(floatingRects_.begin(), floatingRects_.end(), same)) return;
    // In front of the first higher layer, so that equal layers keep their order of arrival.
    auto higher = std::find_if(floatingRects_.begin(), floatingRects_.end(),
                               [layer](const FloatingRect& entry) { return entry.layer > layer; });
    floatingRects_.insert(higher, FloatingRect{rect, layer, id, false});
    RebuildFloatingRegion();
}

void DrawContext::RemoveFloatingRect(FloatingRectId id) {
    auto removed = std::remove_if(floatingRects_.begin(), floatingRects_.end(),
                                  [id](const FloatingRect& entry) { return entry.id == id; });
    if (removed == floatingRects_.end()) return;
    floatingRects_.erase(removed, floatingRects_.end());
    RebuildFloatingRegion();
}

void DrawContext::SuspendFloatingRect(FloatingRectId id, bool suspended) {
    for (FloatingRect& entry : floatingRects_) {
        if (entry.id == id) entry.suspended = suspended;
    }
    RebuildFloatingRegion();
}

void DrawContext::ClearFloatingRects() {
    floatingRects_.clear();
    RebuildFloatingRegion();
}

void DrawContext::RebuildFloatingRegion() {
    if (floatingRects_.empty()) {
        floatingRegion_.reset();
        return;
    }
    if (!floatingRegion_) floatingRegion_ = CreateRegion();
    floatingRegion_->Clear();
    // From the top layer down to the frame that paints now (it suspended its own rectangle):
    // it is clipped by what floats above it, never by what lies beneath.
    std::unique_ptr<Region> piece = CreateRegion();
    for (auto entry = floatingRects_.rbegin(); entry != floatingRects_.rend(); ++entry) {
        if (entry->suspended) break;
        piece->SetRect(entry->rect);
        floatingRegion_->Union(*piece);
    }
}

void DrawContext::SetClip(const Rect& rect) {
    if (!floatingRegion_ || floatingRegion_->IsEmpty()) {
        SetClipRect(rect);
        return;
    }
    std::unique_ptr<Region> open = CreateRegion();
    open->SetRect(GetBounds());
    open->Subtract(*floatingRegion_);
    std::unique_ptr<Region> wanted = CreateRegion();
    wanted->SetRect(ToSurfaceRect(rect));
    open->Intersect(*wanted);
    ApplyClipRegion(*open);
}

}  // namespace vorix
