#include "core/PluginUIRoot.h"

#include <algorithm>
#include <cstdlib>
#include <new>
#include <string>

#include "core/ErrorDisplay.h"
#include "core/ParameterHighlighter.h"
#include "core/PluginCore.h"
#include "framework/MessagingServer.h"
#include "framework/TextEditDialogUser.h"
#include "framework/TextEditField.h"
#include "framework/TimerManager.h"

namespace vorix {
namespace {

// The texts of the editor's failures, shown through ReportError.
constexpr const char* kCannotOpen = "Cannot open editor window.";
constexpr const char* kCannotHandleClick = "Cannot handle mouse click.";
constexpr const char* kAnErrorOccurred = "An error occurred.";
constexpr const char* kUnknownErrorOccurred = "An unknown error occurred.";
constexpr const char* kUnknownErrorHasOccurred = "An unknown error has occurred.";
constexpr const char* kNoMemory = "There is insufficient memory available.";
constexpr std::int32_t kEditorErrorKind = 2;

// Tick values wrap; their difference does not.
Ticks Elapsed(Ticks now, Ticks then) {
    return static_cast<Ticks>(static_cast<std::uint32_t>(now) - static_cast<std::uint32_t>(then));
}

}  // namespace

// ---- Guards ----

PluginUIRoot::BusyGuard::BusyGuard(PluginUIRoot& root) noexcept : root_(root) {
    ++root_.busyDepth_;
}

PluginUIRoot::BusyGuard::~BusyGuard() {
    if (root_.busyDepth_ > 0) --root_.busyDepth_;
}

PluginUIRoot::AudioLock::AudioLock(PluginUIRoot& root)
    : vorix::AudioLock(*root.core_, [&root] { root.Pump(); }) {}

// ---- The removal agent ----

PluginUIRoot::HiliteFrameRemovalAgent::HiliteFrameRemovalAgent(PluginUIRoot& owner)
    : MessageSubscriber(owner.GetPluginServices()), owner_(owner) {}

void PluginUIRoot::HiliteFrameRemovalAgent::Watch(Frame& frame) {
    if (keys_.contains(&frame)) return;
    const std::int32_t key = nextKey_++;
    Subscribe(frame.GetMsgClass(), key, &HiliteFrameRemovalAgent::OnFrameMessage, false);
    keys_[&frame] = key;
    frames_[key] = &frame;
}

void PluginUIRoot::HiliteFrameRemovalAgent::Forget(const Frame& frame) {
    const auto found = keys_.find(&frame);
    if (found == keys_.end()) return;
    const std::int32_t key = found->second;
    keys_.erase(found);
    frames_.erase(key);
    Unsubscribe(key);
}

void PluginUIRoot::HiliteFrameRemovalAgent::OnFrameMessage(MsgId msgId) {
    if (msgId != Frame::kMsgDestroyed && msgId != kMsgClassGone) return;
    const auto found = frames_.find(mCurKey);
    if (found != frames_.end()) owner_.UnbindFrame(found->second);
}

// ---- Life ----

PluginUIRoot::PluginUIRoot(PluginCore* core)
    : PluginServicesClient(core), FrameRoot(core), core_(core) {}

PluginUIRoot::~PluginUIRoot() {
    Close();
    if (core_ != nullptr && core_->GetEditor() == this) core_->SetEditor(nullptr);
}

bool PluginUIRoot::Open() {
    if (isOpen_) return true;
    const char* second = nullptr;
    try {
        if (removalAgent_ == nullptr)
            removalAgent_ = std::make_unique<HiliteFrameRemovalAgent>(*this);
        // Whatever the new frames set up is the editor's own doing: nothing reaches the host.
        PluginCore::InternalChange internal(*core_);
        highlights_.assign(
            static_cast<std::size_t>(std::max(0, core_->MetaClass().GetParameterCount())),
            ParameterHighlight{});
        core_->SetEditor(this);
        drawContext_ = CreateDrawContext();
        if (drawContext_ == nullptr) VORIX_THROW(AppFrame::ResAlloc);
        declinesOffscreen_ = false;
        const EditorSize size = core_->GetEditorSize();
        rootFrame_ = std::make_unique<Frame>(*this, 0, 0, size.width, size.height, 0, 0);
        CreateRootFrame();
        rootFrame_->SetVisible(true, false);
        isOpen_ = true;
        drawContext_->InvalidateRect(rootFrame_->GetWindowRect());
        return true;
    } catch (const std::bad_alloc&) {
        second = kNoMemory;
    } catch (...) {
        second = kUnknownErrorHasOccurred;
    }
    TearDown();
    ReportError(core_, kCannotOpen, second, "", kEditorErrorKind);
    return false;
}

void PluginUIRoot::Close() {
    if (!isOpen_) return;
    isOpen_ = false;
    captureFrame_ = nullptr;
    hoverFrame_ = nullptr;
    keyFrame_ = nullptr;
    TearDown();
}

void PluginUIRoot::TearDown() noexcept {
    try {
        // An edit left open ends unheard: its frame goes with the tree.
        editClient_.reset();
        rootFrame_.reset();
        aboutFrame_ = nullptr;
        editField_ = nullptr;
        ForgetAllFrames();
        framesByParameter_.clear();
        offscreen_.reset();
        drawContext_.reset();
        removalAgent_.reset();
        drawnOnce_ = false;
        beatStarted_ = false;
    } catch (...) {
        // Closing goes on whatever a frame's destructor does.
    }
    if (core_ != nullptr && core_->GetEditor() == this) core_->SetEditor(nullptr);
}

void PluginUIRoot::Activate(bool active) {
    if (!isOpen_ || busyDepth_ > 0) return;
    try {
        rootActive_ = active;
        rootFrame_->SetActive(active);
        if (!active) drawContext_->ClearMouseCapturer();
        captureFrame_ = nullptr;
    } catch (const std::bad_alloc&) {
        ReportError(core_, kAnErrorOccurred, kNoMemory, "", kEditorErrorKind);
    } catch (...) {
        ReportError(core_, kUnknownErrorHasOccurred, "", "", kEditorErrorKind);
    }
}

// ---- Surfaces and painting ----

void PluginUIRoot::GrowOffscreen(std::int32_t width, std::int32_t height) {
    if (declinesOffscreen_ || drawContext_ == nullptr) return;
    Rect have = offscreen_ != nullptr ? offscreen_->GetBounds() : Rect{};
    if (width <= have.Width() && height <= have.Height()) return;
    // One buffer for every frame that paints through it: the largest of them, never smaller.
    std::unique_ptr<DrawContext> grown =
        CreateRegion({0, 0, std::max(width, have.Width()), std::max(height, have.Height())});
    if (grown == nullptr) {
        declinesOffscreen_ = true;
        offscreen_.reset();
        return;
    }
    offscreen_ = std::move(grown);
}

bool PluginUIRoot::IsDrawing() const {
    return Frame::IsPainting();
}

void PluginUIRoot::InvalidateRect(const Rect& rect) {
    if (drawContext_ != nullptr) drawContext_->InvalidateRect(rect);
}

void PluginUIRoot::Draw(const Rect& updateRegion) {
    if (!isOpen_) return;
    // While busy the window keeps the pixels it has: no frame is touched.
    if (busyDepth_ > 0) return;
    try {
        drawnOnce_ = true;
        DrawLock lock(*this);
        rootFrame_->Refresh(&updateRegion, false);
    } catch (...) {
        // A failed paint leaves the pixels of the last; the next expose tries again.
    }
}

// ---- The pump ----

void PluginUIRoot::Pump() {
    if (busyDepth_ > 0 || GetPluginServices() == nullptr) return;
    GetTimerManager().Tick();
    GetMessagingServer().DeliverPosted();
}

void PluginUIRoot::Idle() {
    if (!isOpen_ || !drawnOnce_ || busyDepth_ > 0) return;
    try {
        core_->DispatchPendingParameters();
        if (captureFrame_ == nullptr && rootFrame_->IsVisible()) UpdateHover();
        { DrawLock paint(*this, true); }
        Pump();
    } catch (const std::bad_alloc&) {
        ReportError(core_, kUnknownErrorOccurred, kNoMemory, "", kEditorErrorKind);
    } catch (...) {
        ReportError(core_, kUnknownErrorOccurred, "", "", kEditorErrorKind);
    }
}

void PluginUIRoot::Heartbeat() {
    if (captureFrame_ != nullptr) {
        Pump();
    } else {
        Idle();
    }
}

bool PluginUIRoot::HeartbeatByElapsedTime(std::int64_t nowMilliseconds) {
    if (beatStarted_ && nowMilliseconds - lastBeatMilliseconds_ < kHeartbeatMilliseconds &&
        nowMilliseconds >= lastBeatMilliseconds_) {
        return false;
    }
    beatStarted_ = true;
    lastBeatMilliseconds_ = nowMilliseconds;
    Heartbeat();
    return true;
}

// ---- The mouse ----

void PluginUIRoot::MouseDown(std::int32_t x, std::int32_t y) {
    if (!isOpen_ || busyDepth_ > 0) return;
    try {
        const Ticks t = core_->GetTimerManager().Now();
        if (captureFrame_ != nullptr) {
            // A press that lost its release: the frame hears an "up" first.
            Frame* lost = captureFrame_;
            captureFrame_ = nullptr;
            lost->DispatchMouse(Frame::kMouseUp, 0, 0);
            captureFrame_ = nullptr;
        }
        doubleClick_ = Elapsed(t, lastClickTick_) < kDoubleClickTicks &&
                       std::abs(x - lastClickPoint_.x) < kDoubleClickDistance &&
                       std::abs(y - lastClickPoint_.y) < kDoubleClickDistance;
        lastClickTick_ = t;
        lastClickPoint_ = {x, y};

        // Leaving the text field ends its edit, as a field that loses the focus.
        if (editField_ != nullptr) {
            if (editField_->GetWindowRect().Contains({x, y})) return;
            CancelEdit();
        }

        Frame* target = !GetModalFrames().empty() ? GetModalFrames().front()
                                                  : rootFrame_->FindFrameAt(x, y, true);
        if (target != nullptr) {
            SetHoverFrame(target, x, y);
            if (IsLiveFrame(target)) {
                const Point local = target->WindowPointToLocal({x, y});
                target->DispatchMouse(Frame::kMouseDown, local.x, local.y);
            }
        }
        if (captureFrame_ != nullptr && drawContext_ != nullptr)
            drawContext_->SetMouseCapturer(this);
    } catch (const std::bad_alloc&) {
        ReportError(core_, kCannotHandleClick, kNoMemory, "", kEditorErrorKind);
    } catch (...) {
        ReportError(core_, kUnknownErrorOccurred, "", "", kEditorErrorKind);
    }
}

void PluginUIRoot::MouseMoved(Point point) {
    try {
        if (captureFrame_ != nullptr) {
            const Point local = captureFrame_->WindowPointToLocal(point);
            captureFrame_->DispatchMouse(Frame::kMouseMoved, local.x, local.y);
        }
        Pump();
    } catch (...) {
        ReportError(core_, kUnknownErrorOccurred, "", "", kEditorErrorKind);
    }
}

void PluginUIRoot::MouseUp(Point point) {
    try {
        if (captureFrame_ != nullptr) {
            Frame* frame = captureFrame_;
            const Point local = frame->WindowPointToLocal(point);
            frame->DispatchMouse(Frame::kMouseUp, local.x, local.y);
            captureFrame_ = nullptr;
        }
        if (drawContext_ != nullptr) drawContext_->ClearMouseCapturer();
    } catch (...) {
        captureFrame_ = nullptr;
        ReportError(core_, kUnknownErrorOccurred, "", "", kEditorErrorKind);
    }
}

void PluginUIRoot::CaptureMouse(Frame* frame) {
    captureFrame_ = frame;
    if (frame != nullptr && drawContext_ != nullptr) drawContext_->SetMouseCapturer(this);
}

void PluginUIRoot::ReleaseMouse() {
    captureFrame_ = nullptr;
    if (drawContext_ != nullptr) drawContext_->ClearMouseCapturer();
}

void PluginUIRoot::SetHoverFrame(Frame* frame, std::int32_t x, std::int32_t y) {
    if (frame != hoverFrame_) {
        if (Frame* old = hoverFrame_) {
            hoverFrame_ = nullptr;
            old->DispatchMouse(Frame::kMouseLeft, -1, -1);
        }
        hoverFrame_ = IsLiveFrame(frame) ? frame : nullptr;
        if (hoverFrame_ != nullptr) {
            const Point local = hoverFrame_->WindowPointToLocal({x, y});
            hoverFrame_->DispatchMouse(Frame::kMouseEntered, local.x, local.y);
        }
    } else if (frame != nullptr &&
               ((frame->GetFlags() & Frame::kModifierImage) != 0 || frame == captureFrame_)) {
        const Point local = frame->WindowPointToLocal({x, y});
        frame->DispatchMouse(Frame::kMouseMoved, local.x, local.y);
    }
}

void PluginUIRoot::UpdateHover() {
    const Point mouse = drawContext_->GetMousePoint();
    if (mouse == lastClickPoint_ || mouse == lastMousePoint_) return;
    SetHoverFrame(rootFrame_->FindFrameAt(mouse.x, mouse.y, false), mouse.x, mouse.y);
    lastMousePoint_ = mouse;
}

void PluginUIRoot::FrameDestroyed(Frame& frame) noexcept {
    FrameRoot::FrameDestroyed(frame);
    if (aboutFrame_ == &frame) aboutFrame_ = nullptr;
    if (editField_ == &frame) editField_ = nullptr;
}

// ---- Keys and the text field ----

void PluginUIRoot::SetKeyFrame(Frame* frame) {
    if (frame == keyFrame_) return;
    Frame* old = keyFrame_;
    keyFrame_ = frame;
    if (old != nullptr && IsLiveFrame(old)) {
        old->OnKeyFocus(false);
        old->Invalidate();
    }
    if (frame != nullptr) {
        frame->OnKeyFocus(true);
        frame->Invalidate();
    }
}

void PluginUIRoot::KeyDown(std::int32_t key) {
    if (!isOpen_ || busyDepth_ > 0) return;
    try {
        if (editField_ != nullptr) {
            if (key == kKeyReturn) {
                CommitEdit();
            } else if (key == kKeyEscape) {
                CancelEdit();
            } else if (key == kKeyBackspace) {
                editField_->EraseLast();
            } else if (key >= 32 && key <= 126) {
                const char typed = static_cast<char>(key);
                editField_->Insert(std::string_view(&typed, 1));
            }
            return;
        }
        if (keyFrame_ != nullptr) keyFrame_->OnKey(key);
    } catch (...) {
        ReportError(core_, kUnknownErrorOccurred, "", "", kEditorErrorKind);
    }
}

void PluginUIRoot::TypeText(std::string_view text) {
    if (!isOpen_ || busyDepth_ > 0 || editField_ == nullptr) return;
    editField_->Insert(text);
}

void PluginUIRoot::EditText(const Rect& windowRect, std::string_view text,
                            TextEditDialogUser* client) {
    if (!isOpen_) return;
    ReleaseMouse();
    if (editField_ != nullptr) CancelEdit();
    const Point origin = rootFrame_->GetAbsoluteOrigin();
    const Rect local = windowRect.Offset(-origin.x, -origin.y);
    const Rect place{local.left - 1, local.top - 2, local.right, local.bottom + 4};
    editClient_ = std::make_unique<TextEditDialogUserProxy>(client);
    try {
        editField_ = new TextEditField(*rootFrame_, place, text);
    } catch (...) {
        editClient_.reset();
        throw;
    }
}

void PluginUIRoot::CommitEdit() {
    if (editField_ == nullptr) return;
    const std::string text = editField_->GetText();
    // A text the client refuses stays in the field for the user to mend; a client that has
    // gone meanwhile is told nothing, and the field just closes.
    const bool clientAlive = editClient_ != nullptr && editClient_->HasTarget();
    if (clientAlive && !editClient_->IsTextValid(text)) return;
    std::unique_ptr<TextEditDialogUserProxy> client = std::move(editClient_);
    CloseEditField();
    if (client != nullptr) client->TextEditDone(&text);
}

void PluginUIRoot::CancelEdit() {
    std::unique_ptr<TextEditDialogUserProxy> client = std::move(editClient_);
    CloseEditField();
    if (client != nullptr) client->TextEditDone(nullptr);
}

void PluginUIRoot::CloseEditField() noexcept {
    TextEditField* field = editField_;
    editField_ = nullptr;
    delete field;
}

// ---- About ----

void PluginUIRoot::ShowAbout() {
    if (!isOpen_) return;
    if (aboutFrame_ == nullptr) {
        aboutFrame_ = core_->CreateAboutFrame(*this, rootFrame_.get());
    } else {
        aboutFrame_->SetVisible(true, false);
    }
    if (aboutFrame_ == nullptr) return;
    // Over the whole editor, the panel takes every press until it is put away.
    AddModalFrame(*aboutFrame_);
    SetKeyFrame(aboutFrame_);
}

void PluginUIRoot::CloseAbout(AboutFrame& frame) {
    // The panel may not delete itself inside its own mouse handler: it is hidden, and kept.
    frame.SetVisible(false, false);
    RemoveModalFrame(frame);
    if (keyFrame_ == &frame) SetKeyFrame(nullptr);
}

// ---- Highlights ----

std::unique_ptr<FrameOverlay> PluginUIRoot::CreateParameterHighlighter(Frame& /*frame*/,
                                                                       std::int32_t colourIndex,
                                                                       std::int32_t cornerCode) {
    return std::make_unique<DefaultParameterHighlighter>(colourIndex, cornerCode);
}

void PluginUIRoot::SetParameterHighlight(std::int32_t parameterIndex, bool on,
                                         std::int32_t colourIndex) {
    if (parameterIndex < 0 || parameterIndex >= static_cast<std::int32_t>(highlights_.size()))
        return;
    ParameterHighlight& highlight = highlights_[static_cast<std::size_t>(parameterIndex)];
    highlight = {on, colourIndex};
    const ZORParameterInfo* info = core_->MetaClass().GetParameterInfo(parameterIndex);
    if (info == nullptr) return;
    // A copy: a frame's own highlight may unbind or bind.
    const std::vector<ParameterBinding> bindings = GetBindings(info->id);
    for (const ParameterBinding& binding : bindings)
        ApplyHighlight(binding, info->id, highlight);
}

void PluginUIRoot::ApplyHighlight(const ParameterBinding& binding, std::int32_t parameterId,
                                  const ParameterHighlight& highlight) {
    if (binding.cornerCode == kNoCorners || !IsLiveFrame(binding.frame)) return;
    auto* own = dynamic_cast<ParameterHighlightTarget*>(binding.frame);
    if (!highlight.on) {
        if (own != nullptr) {
            own->ClearParameterHighlight();
        } else {
            binding.frame->RemoveOverlay();
        }
        return;
    }
    if (own != nullptr) {
        own->ShowParameterHighlight(parameterId, highlight.colourIndex);
    } else {
        binding.frame->SetOverlay(
            CreateParameterHighlighter(*binding.frame, highlight.colourIndex, binding.cornerCode));
    }
}

void PluginUIRoot::BindParameterFrame(std::int32_t parameterId, Frame* frame,
                                      std::int32_t cornerCode) {
    if (frame == nullptr) return;
    if (removalAgent_ == nullptr) removalAgent_ = std::make_unique<HiliteFrameRemovalAgent>(*this);
    removalAgent_->Watch(*frame);
    const ParameterBinding binding{frame, cornerCode};
    framesByParameter_.emplace(parameterId, binding);
    // A control made while its parameter is highlighted shows the highlight at once.
    std::int32_t index = -1;
    core_->MetaClass().FindParameterIndex(index, parameterId);
    if (index >= 0 && index < static_cast<std::int32_t>(highlights_.size()) &&
        highlights_[static_cast<std::size_t>(index)].on) {
        ApplyHighlight(binding, parameterId, highlights_[static_cast<std::size_t>(index)]);
    }
}

void PluginUIRoot::UnbindFrame(Frame* frame) {
    std::erase_if(framesByParameter_,
                  [frame](const auto& entry) { return entry.second.frame == frame; });
    if (removalAgent_ != nullptr && frame != nullptr) removalAgent_->Forget(*frame);
}

std::vector<PluginUIRoot::ParameterBinding> PluginUIRoot::GetBindings(
    std::int32_t parameterId) const {
    std::vector<ParameterBinding> bindings;
    const auto [first, last] = framesByParameter_.equal_range(parameterId);
    for (auto it = first; it != last; ++it)
        bindings.push_back(it->second);
    return bindings;
}

PluginUIRoot::ParameterHighlight PluginUIRoot::GetHighlight(std::int32_t parameterIndex) const {
    if (parameterIndex < 0 || parameterIndex >= static_cast<std::int32_t>(highlights_.size()))
        return {};
    return highlights_[static_cast<std::size_t>(parameterIndex)];
}

void PluginUIRoot::ParameterEditBegun(std::int32_t /*parameterId*/) {}
void PluginUIRoot::ParameterEditEnded(std::int32_t /*parameterId*/) {}

// ---- Errors ----

void PluginUIRoot::ShowError(std::string_view first, std::string_view second,
                             std::string_view third, std::int32_t kind) {
    if (!isOpen_ || rootFrame_ == nullptr) return;
    std::string message(second);
    if (!third.empty()) message.append("\n").append(third);
    const std::string title(first);
    const std::int32_t x = (rootFrame_->GetWidth() - ErrorFrame::kWidth) / 2;
    const std::int32_t y = (rootFrame_->GetHeight() - ErrorFrame::kHeight) / 2;
    // The panel deletes itself when clicked; the tree deletes it if the editor closes first.
    auto* panel = new ErrorFrame(*rootFrame_, x, y, title.empty() ? nullptr : title.c_str(),
                                 std::move(message), kind);
    AddModalFrame(*panel);
}

}  // namespace vorix
