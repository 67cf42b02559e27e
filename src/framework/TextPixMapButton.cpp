#include "framework/TextPixMapButton.h"

#include "framework/MessagingServer.h"

namespace vorix {

TextPixMapButton::TextPixMapButton(Frame& parent, const Rect& place, std::int32_t id,
                                   const ButtonArt& art, std::string text,
                                   std::int32_t baselineOffset, std::uint32_t flags,
                                   CentralController* controller)
    : PixMapButton(parent, place, id, art, 0, 1, 0, flags | kOffscreen, controller),
      text_(std::move(text)),
      baselineOffset_(baselineOffset) {}

void TextPixMapButton::Draw(DrawContext& context, const Rect& rect) {
    PixMapButton::Draw(context, rect);
    context.SetFont(fontKind_, IsPressed() ? pressedTextColor_ : textColor_);
    const std::int32_t textWidth = context.GetStringWidth(text_);
    const std::int32_t x = textWidth < GetWidth() ? (GetWidth() - textWidth) / 2 + 1 : 0;
    context.MoveTo({x, GetHeight() - baselineOffset_});
    context.DrawString(text_);
}

void TextPixMapButton::TrackMouse(std::int32_t phase, std::int32_t /*x*/, std::int32_t /*y*/,
                                  bool inside) {
    if (phase != kTrackRelease || !inside) return;
    SetValue(NextValue());
    if (GetButtonMode() == kAction || GetButtonMode() == kBoolean) {
        // Back to 0 unheard on the value class; a controller still follows.
        MessagingServer& server = GetMessagingServer();
        MsgClass* own = GenericControl::GetMsgClass();
        server.SuspendMsgClass(own, true);
        try {
            SetValue(0);
        } catch (...) {
            server.SuspendMsgClass(own, false);
            throw;
        }
        server.SuspendMsgClass(own, false);
    }
}

void TextPixMapButton::SetText(std::string text) {
    text_ = std::move(text);
    Refresh(nullptr, true);
}

void TextPixMapButton::SetTextColors(const RGBColor& normal, const RGBColor& pressed) {
    textColor_ = normal;
    pressedTextColor_ = pressed;
    Refresh(nullptr, true);
}

void TextPixMapButton::SetFontKind(std::int32_t fontKind) {
    fontKind_ = fontKind;
    Refresh(nullptr, true);
}

}  // namespace vorix
