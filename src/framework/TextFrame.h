#pragma once

#include <cstdint>
#include <string>

#include "framework/FourCC.h"
#include "framework/Frame.h"
#include "framework/TextEditDialogUser.h"

namespace vorix {

// A line of text in a frame, centred, left or right aligned, that can open the editor's text
// field over itself on a click or a double click. The frame does not take what was typed: it
// tells its text class ("edit") and its owner decides. Editor thread.
class TextFrame : public Frame, public TextEditDialogUser {
  public:
    enum Alignment : std::int16_t { kCentred = 0, kLeft = 1, kRight = 2 };
    enum EditTrigger : std::int32_t { kNoEdit = 0, kEditOnClick = 1, kEditOnDoubleClick = 2 };

    // Messages on the text class.
    static constexpr std::uint32_t kTextClassId = FourCC("edit");
    static constexpr MsgId kMsgEditStarted = 0;    // parameter 2 the frame
    static constexpr MsgId kMsgEditDone = 1;       // parameter 2 a TextEditResult
    static constexpr MsgId kMsgEditCancelled = 2;  // parameter 2 the frame

    // What kMsgEditDone carries: the frame and the text typed.
    struct TextEditResult {
        TextFrame* frame;
        const std::string* text;
    };

    TextFrame(Frame& parent, const Rect& place, std::int32_t id, std::string text,
              std::uint32_t flags = 0);
    ~TextFrame() override;

    void Draw(DrawContext& context, const Rect& rect) override;
    void OnMouse(std::int32_t kind, std::int32_t x, std::int32_t y) override;
    void TextEditDone(const std::string* text) override;

    // Editor thread. Each repaints.
    void SetText(std::string text);
    void SetAlignment(std::int16_t alignment, std::int32_t horizontalMargin);
    void SetBaselineOffset(std::int32_t offset);
    void SetFont(std::int32_t fontKind, const RGBColor& color);
    void SetEditTrigger(std::int32_t trigger) { editTrigger_ = trigger; }

    const std::string& GetText() const { return text_; }
    MsgClass* GetTextClass() const { return textClass_; }

  protected:
    // Editor thread. The text alone, as Draw paints it after any background.
    void DrawText(DrawContext& context);

  private:
    std::string text_;
    std::int16_t alignment_ = kCentred;
    std::int32_t horizontalMargin_ = 0;
    std::int32_t baselineOffset_ = 2;
    std::int32_t fontKind_ = 1;
    RGBColor textColor_ = kBlack;
    std::int32_t editTrigger_ = kNoEdit;
    MsgClass* textClass_ = nullptr;
};

// A text frame over a background cut from a pixmap, painted through the offscreen buffer.
class StaticTextPMFrame : public TextFrame {
  public:
    StaticTextPMFrame(Frame& parent, const Rect& place, std::int32_t id, std::string text,
                      const DrawContext* pixmap, Point source, std::uint32_t flags = 0);

    void Draw(DrawContext& context, const Rect& rect) override;

  private:
    const DrawContext* pixmap_;
    Point source_;
};

}  // namespace vorix
