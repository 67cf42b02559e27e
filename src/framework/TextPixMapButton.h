#pragma once

#include <cstdint>
#include <string>

#include "framework/PixMapButton.h"

namespace vorix {

// A button image with a text on it, painted through the offscreen buffer. It acts only at a
// release inside, and never stays on: in the action and boolean modes its value goes back to 0
// at once, without a word on its value class. Editor thread.
class TextPixMapButton : public PixMapButton {
  public:
    TextPixMapButton(Frame& parent, const Rect& place, std::int32_t id, const ButtonArt& art,
                     std::string text, std::int32_t baselineOffset, std::uint32_t flags = 0,
                     CentralController* controller = nullptr);

    void Draw(DrawContext& context, const Rect& rect) override;
    void TrackMouse(std::int32_t phase, std::int32_t x, std::int32_t y, bool inside) override;

    // Editor thread. Each repaints.
    void SetText(std::string text);
    void SetTextColors(const RGBColor& normal, const RGBColor& pressed);
    void SetFontKind(std::int32_t fontKind);
    const std::string& GetText() const { return text_; }

  private:
    std::int32_t fontKind_ = 1;
    RGBColor textColor_ = kWhite;
    RGBColor pressedTextColor_ = kWhite;
    std::string text_;
    std::int32_t baselineOffset_;
};

}  // namespace vorix
