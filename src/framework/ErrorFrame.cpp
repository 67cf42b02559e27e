#include "framework/ErrorFrame.h"

#include "framework/FrameRoot.h"

namespace vorix {
namespace {

constexpr RGBColor kCreditColor{0xFFFF, 0xFFFF, 0xFFFF};

// The artwork may lack a picture; the text must show all the same.
void DrawPicture(DrawContext& context, std::int32_t id, const Rect& rect) {
    try {
        context.DrawResource(id, rect);
    } catch (const AppFrame::ResAlloc&) {
    }
}

}  // namespace

ErrorFrame::ErrorFrame(Frame& parent, std::int32_t x, std::int32_t y, const char* title,
                       std::string message, std::int32_t severity)
    : Frame(parent, x, y, kWidth, kHeight, kFloatingHigh, 0),
      TimerClient<ErrorFrame>(parent.GetRoot().GetServices(), this),
      title_(title != nullptr ? title : kUnknownTitle),
      message_(std::move(message)),
      severity_(severity) {}

void ErrorFrame::Draw(DrawContext& context, const Rect& /*rect*/) {
    const Rect& b = GetBoundsRect();
    context.SetForeColor(kWhite);
    context.FillRect(b);
    DrawPicture(context, severity_ == 1 ? kSevereImage : kOtherImage, b);
    context.SetFont(1, kBlack);
    context.MoveTo({42, 17});
    context.DrawStringInRect(title_ + "\n\n" + message_, {42, 17, 255, 87});
}

void ErrorFrame::OnMouse(std::int32_t kind, std::int32_t /*x*/, std::int32_t /*y*/) {
    if (kind != kMouseDown || HasTimer(0)) return;
    StartTimer(TimerMode::kOneShot, 0, &ErrorFrame::Close, 0);
}

void ErrorFrame::Close() {
    delete this;
}

AboutFrame::AboutFrame(Frame& covered, Owner* owner, Credits credits)
    : Frame(covered, 0, 0, covered.GetWidth(), covered.GetHeight(), kFloatingLow, 0),
      owner_(owner),
      credits_(std::move(credits)) {}

void AboutFrame::Draw(DrawContext& context, const Rect& /*rect*/) {
    const Rect& b = GetBoundsRect();
    context.SetForeColor(kBlack);
    context.FillRect(b);
    if (credits_.pictureId != 0) {
        const std::int32_t left = (b.Width() - credits_.pictureSize.x) / 2;
        const std::int32_t top = (b.Height() - credits_.pictureSize.y) / 2;
        DrawPicture(context, credits_.pictureId,
                    {left, top, left + credits_.pictureSize.x, top + credits_.pictureSize.y});
    }
    context.SetFont(1, kCreditColor);
    if (!credits_.text.empty()) {
        Point at = credits_.textPosition;
        if (at == Point{}) at = {b.right - 4 - context.GetStringWidth(credits_.text), 10};
        context.MoveTo(at);
        context.DrawString(credits_.text);
    }
    const Point version =
        credits_.versionPosition == Point{} ? Point{2, 10} : credits_.versionPosition;
    context.MoveTo(version);
    context.DrawString(credits_.version);
}

void AboutFrame::OnMouse(std::int32_t kind, std::int32_t /*x*/, std::int32_t /*y*/) {
    if (kind == kMouseDown && owner_ != nullptr) owner_->CloseAbout(*this);
}

}  // namespace vorix
