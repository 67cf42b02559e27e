#include "framework/FrameRoot.h"

#include <algorithm>

#include "framework/Frame.h"
#include "framework/TimerManager.h"

namespace vorix {

FrameRoot::FrameRoot(PluginServices* services) noexcept : services_(services) {}

FrameRoot::~FrameRoot() = default;

Ticks FrameRoot::Now() const {
    return services_->GetTimerManager().Now();
}

void FrameRoot::AddDirtyFrame(Frame& frame) {
    // A queued ancestor repaints its whole subtree: one paint per frame however many changes.
    for (const Frame* f = &frame; f != nullptr; f = f->GetParent()) {
        if (std::find(dirtyFrames_.begin(), dirtyFrames_.end(), f) != dirtyFrames_.end()) return;
    }
    dirtyFrames_.push_back(&frame);
}

void FrameRoot::RemoveDirtyFrame(const Frame& frame) noexcept {
    std::erase(dirtyFrames_, &frame);
}

void FrameRoot::PaintDirtyFrames() {
    std::vector<Frame*> frames;
    frames.swap(dirtyFrames_);
    for (Frame* frame : frames) {
        // A frame painted earlier in the run may have deleted another one.
        if (IsLiveFrame(frame)) frame->Refresh(nullptr, true);
    }
}

void FrameRoot::NotePainted(const Rect& windowRect) {
    if (windowRect.IsEmpty()) return;
    if (paintedArea_.IsEmpty()) {
        paintedArea_ = windowRect;
        return;
    }
    paintedArea_ = {std::min(paintedArea_.left, windowRect.left),
                    std::min(paintedArea_.top, windowRect.top),
                    std::max(paintedArea_.right, windowRect.right),
                    std::max(paintedArea_.bottom, windowRect.bottom)};
}

Rect FrameRoot::TakePaintedArea() {
    const Rect area = paintedArea_;
    paintedArea_ = {};
    return area;
}

void FrameRoot::FrameCreated(Frame& frame) {
    liveFrames_.push_back(&frame);
}

void FrameRoot::FrameDestroyed(Frame& frame) noexcept {
    std::erase(liveFrames_, &frame);
    std::erase(dirtyFrames_, &frame);
    std::erase(floatingFrames_, &frame);
    std::erase(modalFrames_, &frame);
    if (captureFrame_ == &frame) captureFrame_ = nullptr;
    if (hoverFrame_ == &frame) hoverFrame_ = nullptr;
    if (keyFrame_ == &frame) keyFrame_ = nullptr;
}

bool FrameRoot::IsLiveFrame(const Frame* frame) const noexcept {
    return frame != nullptr &&
           std::find(liveFrames_.begin(), liveFrames_.end(), frame) != liveFrames_.end();
}

void FrameRoot::AddFloatingFrame(Frame& frame) {
    if (std::find(floatingFrames_.begin(), floatingFrames_.end(), &frame) == floatingFrames_.end())
        floatingFrames_.push_back(&frame);
}

void FrameRoot::RemoveFloatingFrame(const Frame& frame) noexcept {
    std::erase(floatingFrames_, &frame);
}

void FrameRoot::AddModalFrame(Frame& frame) {
    RemoveModalFrame(frame);
    modalFrames_.insert(modalFrames_.begin(), &frame);
}

void FrameRoot::RemoveModalFrame(const Frame& frame) noexcept {
    std::erase(modalFrames_, &frame);
}

void FrameRoot::ForgetAllFrames() noexcept {
    liveFrames_.clear();
    dirtyFrames_.clear();
    floatingFrames_.clear();
    modalFrames_.clear();
    captureFrame_ = nullptr;
    hoverFrame_ = nullptr;
    keyFrame_ = nullptr;
}

DrawLock::DrawLock(FrameRoot& root, bool flush) : root_(root) {
    ++root_.drawLockCount_;
    if (!flush) return;
    try {
        root_.PaintDirtyFrames();
    } catch (...) {
        --root_.drawLockCount_;
        throw;
    }
}

DrawLock::~DrawLock() {
    if (root_.drawLockCount_ > 0) --root_.drawLockCount_;
}

}  // namespace vorix
