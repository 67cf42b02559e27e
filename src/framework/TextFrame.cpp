#include "framework/TextFrame.h"

#include "framework/FrameRoot.h"

namespace vorix {

TextFrame::TextFrame(Frame& parent, const Rect& place, std::int32_t id, std::string text,
                     std::uint32_t flags)
    : Frame(parent, place.left, place.top, place.Width(), place.Height(), flags, id),
      text_(std::move(text)) {
    textClass_ = GetRoot().GetServices()->GetMessagingServer().CreateMsgClass(kTextClassId);
}

TextFrame::~TextFrame() {
    // An edit still open reports to nobody from here on.
    DetachFromProxies();
    GetRoot().GetServices()->GetMessagingServer().DestroyMsgClass(textClass_);
}

void TextFrame::Draw(DrawContext& context, const Rect& /*rect*/) {
    DrawText(context);
}

void TextFrame::DrawText(DrawContext& context) {
    context.SetFont(fontKind_, textColor_);
    std::int32_t x = horizontalMargin_;
    if (alignment_ == kRight) {
        x = GetWidth() - horizontalMargin_ - context.GetStringWidth(text_);
    } else if (alignment_ == kCentred) {
        x = GetWidth() / 2 + horizontalMargin_ - context.GetStringWidth(text_) / 2;
    }
    context.MoveTo({x, GetHeight() - baselineOffset_});
    context.DrawString(text_);
}

void TextFrame::OnMouse(std::int32_t kind, std::int32_t /*x*/, std::int32_t /*y*/) {
    if (kind != kMouseDown || !IsEnabled() || editTrigger_ == kNoEdit) return;
    if (editTrigger_ == kEditOnDoubleClick && !GetRoot().IsDoubleClick()) return;
    const DrawContext* c = GetRoot().GetWindowContext();
    const bool noModifier = c == nullptr || !(c->IsControlShiftDown() || c->IsControlDown() ||
                                              c->IsOptionDown() || c->IsShiftDown());
    if (!noModifier) return;
    GetRoot().GetServices()->GetMessagingServer().SendToClass(textClass_, kMsgEditStarted, 0,
                                                              PointerParam(this), nullptr);
    GetRoot().EditText(LocalToWindow(GetBoundsRect()), text_, this);
}

void TextFrame::TextEditDone(const std::string* text) {
    MessagingServer& server = GetRoot().GetServices()->GetMessagingServer();
    if (text != nullptr) {
        TextEditResult result{this, text};
        server.SendToClass(textClass_, kMsgEditDone, 0, PointerParam(&result), nullptr);
    } else {
        server.SendToClass(textClass_, kMsgEditCancelled, 0, PointerParam(this), nullptr);
    }
}

void TextFrame::SetText(std::string text) {
    text_ = std::move(text);
    Refresh(nullptr, true);
}

void TextFrame::SetAlignment(std::int16_t alignment, std::int32_t horizontalMargin) {
    alignment_ = alignment;
    horizontalMargin_ = horizontalMargin;
    Refresh(nullptr, true);
}

void TextFrame::SetBaselineOffset(std::int32_t offset) {
    baselineOffset_ = offset;
    Refresh(nullptr, true);
}

void TextFrame::SetFont(std::int32_t fontKind, const RGBColor& color) {
    fontKind_ = fontKind;
    textColor_ = color;
    Refresh(nullptr, true);
}

StaticTextPMFrame::StaticTextPMFrame(Frame& parent, const Rect& place, std::int32_t id,
                                     std::string text, const DrawContext* pixmap, Point source,
                                     std::uint32_t flags)
    : TextFrame(parent, place, id, std::move(text), flags | kOffscreen),
      pixmap_(pixmap),
      source_(source) {}

void StaticTextPMFrame::Draw(DrawContext& context, const Rect& rect) {
    if (pixmap_ != nullptr) {
        context.CopyBits(*pixmap_,
                         {source_.x, source_.y, source_.x + GetWidth(), source_.y + GetHeight()},
                         {0, 0}, true);
    }
    TextFrame::Draw(context, rect);
}

}  // namespace vorix
