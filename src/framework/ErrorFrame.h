#pragma once

#include <cstdint>
#include <string>

#include "framework/Frame.h"
#include "framework/TimerClient.h"

namespace vorix {

// A message for the user laid over the editor: the picture of its kind, the title, an empty
// line and the message. It floats above everything and takes every press while it is there; a
// press closes it at the next beat of the heartbeat, since a frame may not delete itself inside
// its own mouse handler. Editor thread.
class ErrorFrame : public Frame, public TimerClient<ErrorFrame> {
  public:
    static constexpr std::int32_t kWidth = 270;
    static constexpr std::int32_t kHeight = 100;
    // The pictures of a severity 1 message and of every other.
    static constexpr std::int32_t kSevereImage = 8000;
    static constexpr std::int32_t kOtherImage = 8001;
    static constexpr const char* kUnknownTitle = "<unknown error>";

    // Editor thread. A panel at (x, y) in `parent`. A null title shows as "<unknown error>".
    ErrorFrame(Frame& parent, std::int32_t x, std::int32_t y, const char* title,
               std::string message, std::int32_t severity);

    void Draw(DrawContext& context, const Rect& rect) override;
    void OnMouse(std::int32_t kind, std::int32_t x, std::int32_t y) override;

    const std::string& GetTitle() const { return title_; }
    const std::string& GetMessage() const { return message_; }
    bool IsClosing() const { return HasTimer(0); }

  private:
    // Must be made with new: the panel deletes itself.
    void Close();

    std::string title_;
    std::string message_;
    std::int32_t severity_;
};

// The product's credits over the whole editor: a picture centred on black, a notice, and the
// plug-in's version. A press tells the owner, who closes the panel. Editor thread.
class AboutFrame : public Frame {
  public:
    // Whoever shows the panel: told when the user clicks it away.
    class Owner {
      public:
        virtual void CloseAbout(AboutFrame& frame) = 0;

      protected:
        ~Owner() = default;
    };

    struct Credits {
        std::int32_t pictureId = 0;  // 0 for none
        Point pictureSize;
        Point textPosition;  // (0, 0): right-aligned at the top
        std::string text;
        Point versionPosition;  // (0, 0): (2, 10)
        std::string version;
    };

    // Editor thread. A panel the size of `covered`, as its child.
    AboutFrame(Frame& covered, Owner* owner, Credits credits);

    void Draw(DrawContext& context, const Rect& rect) override;
    void OnMouse(std::int32_t kind, std::int32_t x, std::int32_t y) override;

    const Credits& GetCredits() const { return credits_; }

  private:
    Owner* owner_;
    Credits credits_;
};

}  // namespace vorix
