#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "framework/Frame.h"

namespace vorix {

// The editor's one-line text field, drawn by the framework over the frame being edited: white,
// outlined, the text in the small face with a caret at its end. It floats above everything
// else. It only keeps and shows the text; the root feeds it keys and decides when it closes.
// Editor thread.
class TextEditField : public Frame {
  public:
    // The most a field holds, in bytes; longer input is cut at a whole character.
    static constexpr std::size_t kMaxTextBytes = 64;

    // Editor thread. A field at `place` in the top frame's coordinates.
    TextEditField(Frame& top, const Rect& place, std::string_view text);

    void Draw(DrawContext& context, const Rect& rect) override;

    // Editor thread. Typed text goes at the end, as much as fits; each repaints.
    void Insert(std::string_view text);
    // Editor thread. Takes away the last character.
    void EraseLast();
    const std::string& GetText() const { return text_; }

  private:
    std::string text_;
};

}  // namespace vorix
