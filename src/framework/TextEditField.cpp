#include "framework/TextEditField.h"

namespace vorix {
namespace {

constexpr RGBColor kFieldBorder{0x80, 0x80, 0x80};

// Whether the byte continues a UTF-8 sequence.
bool IsContinuation(char c) {
    return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

}  // namespace

TextEditField::TextEditField(Frame& top, const Rect& place, std::string_view text)
    : Frame(top, place.left, place.top, place.Width(), place.Height(), kFloatingLow | kFloatingHigh,
            0) {
    Insert(text);
}

void TextEditField::Draw(DrawContext& context, const Rect& /*rect*/) {
    const Rect& b = GetBoundsRect();
    context.SetForeColor(kWhite);
    context.FillRect(b);
    context.SetForeColor(kFieldBorder);
    context.FrameRect({b.left - 1, b.top - 1, b.right + 1, b.bottom + 1});
    context.SetFont(1, kBlack);
    const std::int32_t baseline = GetHeight() - 4;
    context.MoveTo({3, baseline});
    context.DrawString(text_);
    // The caret stands after the last character.
    const std::int32_t caret = 3 + context.GetStringWidth(text_);
    context.MoveTo({caret, 2});
    context.LineTo({caret, GetHeight() - 3});
}

void TextEditField::Insert(std::string_view text) {
    std::size_t room = kMaxTextBytes > text_.size() ? kMaxTextBytes - text_.size() : 0;
    if (text.size() > room) {
        // Never half a character.
        while (room > 0 && IsContinuation(text[room]))
            --room;
        text = text.substr(0, room);
    }
    text_.append(text);
    Refresh(nullptr, true);
}

void TextEditField::EraseLast() {
    while (!text_.empty() && IsContinuation(text_.back()))
        text_.pop_back();
    if (!text_.empty()) text_.pop_back();
    Refresh(nullptr, true);
}

}  // namespace vorix
