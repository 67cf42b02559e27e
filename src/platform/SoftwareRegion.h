#pragma once

#include <vector>

#include "framework/DrawContext.h"

namespace vorix {

// A region of a software surface: rectangles that never overlap, in surface coordinates.
// Editor thread, like the surface that made it.
class SoftwareRegion : public DrawContext::Region {
  public:
    // A new region is the one pixel (0, 0, 1, 1), as the window system's regions begin; every
    // user sets or clears it first.
    SoftwareRegion();

    void Clear() override;
    void SetRect(const Rect& rect) override;
    // The other region must be a SoftwareRegion too; anything else raises AppFrame::BadParameter.
    void Union(const Region& other) override;
    void Subtract(const Region& other) override;
    void Intersect(const Region& other) override;
    bool IsEmpty() const override;

    bool Contains(Point point) const;
    // The smallest rectangle around the region; empty for an empty region.
    Rect GetBoundingRect() const;
    // The rectangles, in no particular order.
    const std::vector<Rect>& GetRects() const { return rects_; }

  private:
    static const SoftwareRegion& Of(const Region& other);

    std::vector<Rect> rects_;
};

}  // namespace vorix
