#include "framework/Frame.h"

#include <algorithm>

#include "framework/FrameRoot.h"
#include "framework/ScopeGuards.h"

namespace vorix {
namespace {

// The three words that every editor of the process shares on the editor thread.
std::int32_t gLiveFrames = 0;
std::int32_t gPaintDepth = 0;
bool gOutlineDebugging = false;

constexpr RGBColor kOutlineColor{0xFFFF, 0, 0};

}  // namespace

Frame::Frame(Frame& parent, std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height,
             std::uint32_t flags, std::int32_t id)
    : flags_(flags), root_(parent.root_), id_(id), parent_(&parent) {
    SetUp(x + parent.childOffset_.x, y + parent.childOffset_.y, width, height);
}

Frame::Frame(FrameRoot& root, std::int32_t x, std::int32_t y, std::int32_t width,
             std::int32_t height, std::uint32_t flags, std::int32_t id)
    : flags_(flags), root_(root), id_(id) {
    SetUp(x, y, width, height);
}

void Frame::SetUp(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height) {
    ++gLiveFrames;
    position_ = {x, y};
    width_ = width;
    height_ = height;
    context_ = root_.GetWindowContext();
    if (root_.DeclinesOffscreen() && (flags_ & kKeepOffscreen) == 0) flags_ &= ~kOffscreen;
    bounds_ = {0, 0, width, height};
    try {
        if ((flags_ & kOffscreen) != 0) root_.GrowOffscreen(width, height);
        SetActive(parent_ != nullptr ? parent_->active_ : root_.IsRootActive());
        if (parent_ != nullptr) ComputeMargins();
        UpdateWindowRect();
        msgClass_ = root_.GetServices()->GetMessagingServer().CreateMsgClass(
            static_cast<std::uint32_t>(id_));
        if (parent_ != nullptr) parent_->children_.push_back(this);
        root_.FrameCreated(*this);
    } catch (...) {
        // No destructor runs for a half-built frame.
        if (parent_ != nullptr) std::erase(parent_->children_, this);
        if (msgClass_ != nullptr)
            root_.GetServices()->GetMessagingServer().DestroyMsgClass(msgClass_);
        --gLiveFrames;
        throw;
    }
    if (IsVisible()) Invalidate();
    shown_ = visible_ && (parent_ == nullptr || parent_->shown_);
    UpdateVisibleRectTree();
    UpdateFloating();
}

Frame::~Frame() {
    MessagingServer& server = root_.GetServices()->GetMessagingServer();
    try {
        server.SendToClass(msgClass_, kMsgDestroyed, 0, PointerParam(this), nullptr);
    } catch (...) {
        // A destructor goes on whatever a listener does.
    }
    if (floatingRegistered_ && context_ != nullptr) context_->RemoveFloatingRect(this);
    floatingRegistered_ = false;
    root_.RemoveFloatingFrame(*this);
    if (root_.GetCaptureFrame() == this) {
        try {
            root_.ReleaseMouse();
        } catch (...) {
        }
    }
    while (!children_.empty())
        delete children_.back();
    server.DestroyMsgClass(msgClass_);
    if (parent_ != nullptr) {
        std::erase(parent_->children_, this);
        if (visible_) parent_->Invalidate();
    }
    root_.FrameDestroyed(*this);
    overlay_.reset();
    --gLiveFrames;
}

MsgClass* Frame::GetMsgClass() const {
    return msgClass_;
}

void Frame::Refresh(const Rect* rect, bool rectIsLocal) {
    if (root_.GetDrawLockCount() <= 0) {
        // A deferred refresh repaints the whole frame, whatever part was asked for.
        Invalidate();
        return;
    }
    if (!visible_ || context_ == nullptr || !shown_ || visibleRect_.IsEmpty()) return;
    Rect area = rect != nullptr ? *rect : bounds_;
    if (!rectIsLocal) area = WindowToLocal(area);
    area = Intersection(area, visibleRect_);
    if (area.IsEmpty()) return;

    if (!inParentDraw_ && parent_ != nullptr && (flags_ & kTransparent) != 0) {
        // What shows through comes from the parent, whose pass paints this frame in turn.
        const Rect inParent = area.Offset(position_.x, position_.y);
        parent_->Refresh(&inParent, true);
        return;
    }

    BeginDraw(area);
    {
        // The paint nesting must come down even when a frame's painting throws.
        ScopeExit end([&] { EndDraw(area); });
        Draw(*context_, area);
        if (overlay_ != nullptr) overlay_->Draw(*this, *context_, area);
        if (gOutlineDebugging) {
            context_->SetForeColor(kOutlineColor);
            context_->FrameRect(
                {bounds_.left - 1, bounds_.top - 1, bounds_.right + 1, bounds_.bottom + 1});
        }
    }

    const Rect windowArea = LocalToWindow(area);
    // A copy: painting a child never changes the list, but a child's hook might.
    const std::vector<Frame*> children = children_;
    for (Frame* child : children) {
        if (!root_.IsLiveFrame(child)) continue;
        Rect part = Intersection(windowArea, child->windowRect_);
        if (part.IsEmpty()) continue;
        ScopedFlag inParent(child->inParentDraw_);
        child->Refresh(&part, false);
    }
}

void Frame::MoveTo(std::int32_t x, std::int32_t y) {
    CallTree(&Frame::OnWillMove);
    // The old place shows what lies beneath once the frame has gone from it.
    if (parent_ != nullptr && visible_) parent_->Invalidate();
    Invalidate();
    position_ = {x, y};
    if (parent_ != nullptr) ComputeMargins();
    UpdateWindowRectTree();
    UpdateVisibleRectTree();
    Invalidate();
    CallTree(&Frame::OnMoved);
}

void Frame::SetSize(std::int32_t width, std::int32_t height, bool refresh) {
    if (refresh) {
        if (parent_ != nullptr && visible_) parent_->Invalidate();
        Invalidate();
    }
    width_ = width;
    height_ = height;
    bounds_ = {0, 0, width, height};
    UpdateWindowRectTree();
    if (parent_ != nullptr) ComputeMargins();
    if ((flags_ & kOffscreen) != 0) root_.GrowOffscreen(width, height);
    if (refresh) Invalidate();
    UpdateVisibleRectTree();
    PlaceChildren(refresh);
    OnResized();
}

void Frame::SetBounds(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height,
                      bool refresh) {
    MoveTo(x, y);
    SetSize(width, height, refresh);
}

void Frame::SetVisible(bool visible, bool noRefresh) {
    visible_ = visible;
    if (mouseInside_ && hasCursor_ && context_ != nullptr) {
        if (visible) {
            context_->SetCursor(cursorId_);
        } else {
            context_->ResetCursor();
        }
    }
    if (!noRefresh) {
        // A hidden frame cannot paint itself away: what lies beneath repaints instead.
        if (visible || parent_ == nullptr) {
            Invalidate();
        } else {
            parent_->Invalidate();
        }
    }
    UpdateShownTree();
}

void Frame::UpdateFloating() {
    const bool wanted = IsFloating() && shown_ && context_ != nullptr;
    if (wanted && !floatingRegistered_) {
        context_->AddFloatingRect(this, windowRect_, GetFloatingLayer());
        root_.AddFloatingFrame(*this);
        floatingRegistered_ = true;
    } else if (!wanted && floatingRegistered_) {
        if (context_ != nullptr) context_->RemoveFloatingRect(this);
        root_.RemoveFloatingFrame(*this);
        floatingRegistered_ = false;
    }
}

bool Frame::IsVisible() const {
    return visible_;
}

void Frame::SetEnabled(bool enabled) {
    enabled_ = enabled;
    for (Frame* child : children_)
        child->SetEnabled(enabled);
    Refresh(nullptr, true);
}

std::int32_t Frame::GetId() const {
    return id_;
}

void Frame::SetCursor(std::int16_t cursorId, bool now) {
    cursorId_ = cursorId;
    hasCursor_ = true;
    if (now && mouseInside_ && context_ != nullptr) context_->SetCursor(cursorId_);
}

void Frame::ClearCursor() {
    hasCursor_ = false;
    if (mouseInside_ && context_ != nullptr) context_->ResetCursor();
}

void Frame::Draw(DrawContext& /*context*/, const Rect& /*rect*/) {}
void Frame::OnMouse(std::int32_t /*kind*/, std::int32_t /*x*/, std::int32_t /*y*/) {}
void Frame::OnActiveChanged(bool /*active*/) {}
void Frame::OnResized() {}
void Frame::OnWillMove() {}
void Frame::OnMoved() {}
void Frame::OnOffscreenCopied(const Rect& /*rect*/) {}
void Frame::OnKeyFocus(bool /*focused*/) {}
bool Frame::OnKey(std::int32_t /*key*/) {
    return false;
}

void Frame::PlaceChildren(bool refresh) {
    const std::vector<Frame*> children = children_;
    for (Frame* child : children) {
        const std::uint32_t anchors = child->flags_ & kAnchorMask;
        if (anchors == 0) continue;
        std::int32_t x = child->position_.x;
        std::int32_t y = child->position_.y;
        std::int32_t width = child->width_;
        std::int32_t height = child->height_;
        const Rect& m = child->margins_;
        if ((anchors & kAnchorLeft) != 0) x = m.left;
        if ((anchors & kAnchorTop) != 0) y = m.top;
        if ((anchors & kAnchorRight) != 0) {
            if ((anchors & kAnchorLeft) == 0) x = width_ - m.right - width;
            width = width_ - m.right - x;
        }
        if ((anchors & kAnchorBottom) != 0) {
            if ((anchors & kAnchorTop) == 0) y = height_ - m.bottom - height;
            height = height_ - m.bottom - y;
        }
        // The margins are the anchor's memory: a new place must not overwrite them.
        const Rect kept = m;
        child->SetBounds(x, y, width, height, refresh);
        child->margins_ = kept;
    }
}

void Frame::SetActive(bool active) {
    active_ = active;
    OnActiveChanged(active);
    if ((flags_ & kRepaintOnActivation) != 0) Invalidate();
    for (Frame* child : children_)
        child->SetActive(active);
}

Frame* Frame::FindFrameAt(std::int32_t x, std::int32_t y, bool visibleOnly) {
    // Strictly inside on all four sides: a point on the frame's edge misses it.
    if (!(x > windowRect_.left && x < windowRect_.right && y > windowRect_.top &&
          y < windowRect_.bottom)) {
        return nullptr;
    }
    if (visibleOnly && !visible_) return nullptr;
    for (Frame* child : children_) {
        if (!child->visible_) continue;
        if (Frame* found = child->FindFrameAt(x, y, true)) return found;
    }
    return this;
}

void Frame::DispatchMouse(std::int32_t kind, std::int32_t x, std::int32_t y) {
    if (kind == kMouseEntered) {
        mouseInside_ = true;
        if (enabled_ && active_ && hasCursor_ && visible_ && context_ != nullptr)
            context_->SetCursor(cursorId_);
    } else if (kind == kMouseLeft) {
        mouseInside_ = false;
        if (hasCursor_ && visible_ && context_ != nullptr) context_->ResetCursor();
    }
    MessagingServer& server = root_.GetServices()->GetMessagingServer();
    Point point{x, y};
    if (enabled_) {
        OnMouse(kind, x, y);
        server.SendToClass(msgClass_, kind, 0, PointerParam(&point), nullptr);
    } else if (kind == kMouseDown) {
        server.SendToClass(msgClass_, kMsgDisabledMouseDown, 0, PointerParam(&point), nullptr);
    }
}

void Frame::BeginDraw(const Rect& rect) {
    ++gPaintDepth;
    context_ = root_.GetWindowContext();
    if (floatingRegistered_) context_->SuspendFloatingRect(this, true);
    DrawContext* buffer = root_.GetOffscreen();
    usingOffscreen_ = (flags_ & kOffscreen) != 0 && buffer != nullptr;
    if (usingOffscreen_) {
        buffer->BeginDraw();
        buffer->SetOrigin({0, 0});
        buffer->SetClip(rect);
        if ((flags_ & kTransparent) != 0) {
            // The buffer starts from what the parent has just painted beneath.
            buffer->CopyBits(*context_, LocalToWindow(rect), {rect.left, rect.top}, true);
        }
        context_ = buffer;
        return;
    }
    const Point origin = GetAbsoluteOrigin();
    context_->BeginDraw();
    context_->SetOrigin({-origin.x, -origin.y});
    context_->SetClip(rect);
}

void Frame::EndDraw(const Rect& rect) {
    DrawContext* window = root_.GetWindowContext();
    if (usingOffscreen_) {
        DrawContext* buffer = context_;
        buffer->EndDraw();
        context_ = window;
        const Point origin = GetAbsoluteOrigin();
        window->BeginDraw();
        window->ResetCopyColors();
        window->SetOrigin({-origin.x, -origin.y});
        window->SetClip(rect);
        window->CopyBits(*buffer, rect, {rect.left, rect.top}, false);
        usingOffscreen_ = false;
        OnOffscreenCopied(rect);
    }
    if (floatingRegistered_) window->SuspendFloatingRect(this, false);
    root_.NotePainted(Intersection(LocalToWindow(rect), window->GetBounds()));
    window->SetOrigin({0, 0});
    window->EndDraw();
    if (gPaintDepth > 0) --gPaintDepth;
}

Rect Frame::UpdateWindowRect() {
    const Point origin = GetAbsoluteOrigin();
    windowRect_ = bounds_.Offset(origin.x, origin.y);
    return windowRect_;
}

Point Frame::GetAbsoluteOrigin() const {
    Point origin;
    for (const Frame* f = this; f != nullptr; f = f->parent_) {
        origin.x += f->position_.x;
        origin.y += f->position_.y;
    }
    return origin;
}

Rect Frame::LocalToWindow(const Rect& rect) const {
    const Point origin = GetAbsoluteOrigin();
    return rect.Offset(origin.x, origin.y);
}

Rect Frame::WindowToLocal(const Rect& rect) const {
    const Point origin = GetAbsoluteOrigin();
    return rect.Offset(-origin.x, -origin.y);
}

Point Frame::WindowPointToLocal(Point point) const {
    const Point origin = GetAbsoluteOrigin();
    return {point.x - origin.x, point.y - origin.y};
}

void Frame::RemoveOverlay() {
    overlay_.reset();
    Refresh(nullptr, true);
}

void Frame::SetOverlay(std::unique_ptr<FrameOverlay> overlay) {
    if (overlay_ != nullptr) {
        overlay_.reset();
        Refresh(nullptr, true);
    }
    overlay_ = std::move(overlay);
    Refresh(nullptr, true);
}

void Frame::CaptureMouse() {
    try {
        root_.CaptureMouse(this);
    } catch (...) {
        // Without the capture the press still ends at its release over the frame.
    }
}

void Frame::ReleaseMouse() {
    if (root_.GetCaptureFrame() == this) root_.ReleaseMouse();
}

void Frame::Invalidate() {
    root_.AddDirtyFrame(*this);
}

std::int32_t Frame::GetFloatingLayer() const {
    return ((flags_ & kFloatingHigh) != 0 ? 2 : 0) + ((flags_ & kFloatingLow) != 0 ? 1 : 0);
}

std::int32_t Frame::LiveFrameCount() noexcept {
    return gLiveFrames;
}

bool Frame::IsPainting() noexcept {
    return gPaintDepth > 0;
}

void Frame::SetOutlineDebugging(bool on) noexcept {
    gOutlineDebugging = on;
}

void Frame::SetBoundsRect(const Rect& bounds) {
    bounds_ = bounds;
    UpdateWindowRectTree();
    UpdateVisibleRectTree();
}

void Frame::ComputeMargins() {
    margins_ = {position_.x, position_.y, parent_->width_ - (position_.x + width_),
                parent_->height_ - (position_.y + height_)};
}

void Frame::UpdateWindowRectTree() {
    UpdateWindowRect();
    RefreshFloatingRect();
    for (Frame* child : children_)
        child->UpdateWindowRectTree();
}

void Frame::UpdateVisibleRectTree() {
    Rect visible = windowRect_;
    for (const Frame* a = parent_; a != nullptr; a = a->parent_)
        visible = Intersection(visible, a->windowRect_);
    visibleRect_ = visible.IsEmpty() ? Rect{} : WindowToLocal(visible);
    for (Frame* child : children_)
        child->UpdateVisibleRectTree();
}

void Frame::UpdateShownTree() {
    shown_ = visible_ && (parent_ == nullptr || parent_->shown_);
    UpdateFloating();
    for (Frame* child : children_)
        child->UpdateShownTree();
}

void Frame::RefreshFloatingRect() {
    if (!floatingRegistered_ || context_ == nullptr) return;
    context_->RemoveFloatingRect(this);
    context_->AddFloatingRect(this, windowRect_, GetFloatingLayer());
}

void Frame::CallTree(void (Frame::*hook)()) {
    (this->*hook)();
    for (Frame* child : children_)
        child->CallTree(hook);
}

}  // namespace vorix
