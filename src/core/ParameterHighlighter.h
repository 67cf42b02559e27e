#pragma once

#include <cstdint>

#include "framework/Frame.h"

namespace vorix {

// The host's mark on a control whose parameter it highlights for automation: a small bracket in
// chosen corners of the control, in the highlight's colour. Each bracket is a horizontal and a
// vertical line of 4 pixels from the corner inward, on the frame's outermost pixels. Editor
// thread.
class DefaultParameterHighlighter : public FrameOverlay {
  public:
    // The corners a corner code marks (bit 0 top left, 1 top right, 2 bottom left, 3 bottom
    // right); a code beyond the table marks none.
    static std::uint32_t CornersOf(std::int32_t cornerCode) noexcept;
    // The colour of a colour index; an index beyond the table is black.
    static RGBColor ColorOf(std::int32_t colourIndex) noexcept;

    DefaultParameterHighlighter(std::int32_t colourIndex, std::int32_t cornerCode) noexcept;

    void Draw(Frame& frame, DrawContext& context, const Rect& rect) override;
    virtual RGBColor GetColor() const;

    std::int32_t GetColourIndex() const { return colourIndex_; }
    std::int32_t GetCornerCode() const { return cornerCode_; }

  private:
    std::int32_t colourIndex_;
    std::int32_t cornerCode_;
};

// A control that shows the host's highlight its own way instead of through an overlay (the rows
// of the parameter panel). Editor thread.
class ParameterHighlightTarget {
  public:
    // Editor thread. The parameter of `parameterId` is highlighted in this colour index.
    virtual void ShowParameterHighlight(std::int32_t parameterId, std::int32_t colourIndex) = 0;
    // Editor thread. The highlight is over.
    virtual void ClearParameterHighlight() = 0;

  protected:
    ~ParameterHighlightTarget() = default;
};

}  // namespace vorix
