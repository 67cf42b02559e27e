#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string_view>
#include <vector>

#include "core/AudioLock.h"
#include "framework/DrawContext.h"
#include "framework/ErrorFrame.h"
#include "framework/Frame.h"
#include "framework/FrameRoot.h"
#include "framework/MessageSubscriber.h"
#include "framework/PluginServicesClient.h"

namespace vorix {

class PluginCore;
class TextEditDialogUserProxy;
class TextEditField;

// The root of the editor, independent of any host: it holds the frame tree on the window's
// surface, routes the mouse and the keys into it, pumps timers and posted messages, keeps the
// audio thread out while the editor rebuilds what it reads, shows errors over the editor, and
// marks the controls whose parameters the host highlights. A host layer derives from it and
// gives it a window (CreateDrawContext, CreateRegion, CreateRootFrame).
//
// Everything runs on the editor (host main) thread; the audio thread never reaches the editor.
// Every entry from the window (Open, Draw, MouseDown, Idle, Activate) catches every exception
// and shows it through ReportError.
class PluginUIRoot : public PluginServicesClient,
                     public DrawContext::MouseCapturer,
                     public FrameRoot,
                     public AboutFrame::Owner {
  public:
    // Keys that the text field acts on; any other key between 32 and 126 is typed.
    static constexpr std::int32_t kKeyBackspace = 8;
    static constexpr std::int32_t kKeyReturn = 13;
    static constexpr std::int32_t kKeyEscape = 27;

    // A second press within fewer ticks, and fewer pixels along each axis, is a double click.
    static constexpr Ticks kDoubleClickTicks = 15;
    static constexpr std::int32_t kDoubleClickDistance = 5;
    // The editor's heartbeat, in milliseconds.
    static constexpr std::int64_t kHeartbeatMilliseconds = 30;

    // Corner codes of a binding: which corners of the control the highlight marks.
    static constexpr std::int32_t kAllCorners = 0;
    static constexpr std::int32_t kNoCorners = 1;

    // One control frame bound to a parameter, and the corners its highlight marks.
    struct ParameterBinding {
        Frame* frame = nullptr;
        std::int32_t cornerCode = kAllCorners;
    };

    // The host's highlight of one parameter.
    struct ParameterHighlight {
        bool on = false;
        std::int32_t colourIndex = 0;
    };

    // Refuses input and idle work for a scope, for an operation that must not be interrupted
    // by the editor's own events. Nests; the depth never goes below 0. Editor thread.
    class BusyGuard {
      public:
        explicit BusyGuard(PluginUIRoot& root) noexcept;
        ~BusyGuard();
        BusyGuard(const BusyGuard&) = delete;
        BusyGuard& operator=(const BusyGuard&) = delete;

      private:
        PluginUIRoot& root_;
    };

    // The audio lock as the editor takes it: the editor's pump keeps running while it waits for
    // the audio thread to leave. Raises AppFrame::TimeOut after about five seconds. Editor
    // thread.
    class AudioLock : public vorix::AudioLock {
      public:
        explicit AudioLock(PluginUIRoot& root);
    };

    // Editor thread. A closed editor of `core` (not owned; it outlives this object).
    explicit PluginUIRoot(PluginCore* core);
    ~PluginUIRoot() override;

    // ---- DrawContext::MouseCapturer: the mouse while a frame holds it ----
    void MouseMoved(Point point) override;
    void MouseUp(Point point) override;
    // Editor thread. Unless busy: due timers, then posted messages.
    void Pump() override;

    // ---- Queries ----
    Frame* GetRootFrame() const { return rootFrame_.get(); }
    bool IsDrawing() const;
    bool IsOpen() const { return isOpen_; }
    // Editor thread. Asks the window to repaint `rect` (window coordinates).
    void InvalidateRect(const Rect& rect);
    DrawContext::MouseCapturer* GetMouseCapturer() { return this; }
    virtual Point GetRootOrigin() const { return {}; }

    // ---- FrameRoot ----
    DrawContext* GetWindowContext() const override { return drawContext_.get(); }
    DrawContext* GetOffscreen() const override { return offscreen_.get(); }
    bool DeclinesOffscreen() const override { return declinesOffscreen_; }
    void GrowOffscreen(std::int32_t width, std::int32_t height) override;
    void CaptureMouse(Frame* frame) override;
    void ReleaseMouse() override;
    // Editor thread. The old frame loses the focus and the new one gets it; both repaint.
    void SetKeyFrame(Frame* frame) override;
    // Editor thread. Opens the text field: the window rectangle less 1 on the left, 2 above and
    // 4 more below. An edit already open is cancelled first.
    void EditText(const Rect& windowRect, std::string_view text,
                  TextEditDialogUser* client) override;

    // ---- AboutFrame::Owner ----
    void CloseAbout(AboutFrame& frame) override;

    // ---- Entries from the window ----
    // Editor thread. Shows the product's credits, made once by the core.
    virtual void ShowAbout();
    // Editor thread. A press at (x, y), window coordinates, with the window's modifier keys.
    virtual void MouseDown(std::int32_t x, std::int32_t y);
    // Editor thread. A key: the open text field takes it, else the key frame.
    virtual void KeyDown(std::int32_t key);
    // Editor thread. Text typed on the keyboard (UTF-8), for the open text field.
    void TypeText(std::string_view text);
    // Editor thread. Paints `updateRegion` (window coordinates) of the tree.
    virtual void Draw(const Rect& updateRegion);
    // Editor thread, from the host's idle call and the heartbeat: the host's parameter changes
    // reach the editor, the hover follows the mouse, queued frames paint, then the pump.
    virtual void Idle();
    // Editor thread. The window's periodic call: the capture's pump while a frame holds the
    // mouse, else Idle.
    void Heartbeat();
    // Editor thread. For a host that calls irregularly: a heartbeat when at least
    // kHeartbeatMilliseconds have passed since the last one; true when it beat.
    bool HeartbeatByElapsedTime(std::int64_t nowMilliseconds);

    // Editor thread. The host's window frame: false when it could not be opened (the user was
    // told why). Opening an open editor does nothing.
    virtual bool Open();
    // Editor thread. Tears the tree down; nothing on a closed editor.
    virtual void Close();
    // Editor thread. The window became active or inactive.
    virtual void Activate(bool active);

    // Editor thread. The overlay that marks a highlighted control; a subclass may draw
    // highlights its own way.
    virtual std::unique_ptr<FrameOverlay> CreateParameterHighlighter(Frame& frame,
                                                                     std::int32_t colourIndex,
                                                                     std::int32_t cornerCode);

    // ---- Highlights ----
    // Editor thread. The host highlights (or stops highlighting) the parameter at table
    // position `parameterIndex`; an index outside the table is ignored.
    void SetParameterHighlight(std::int32_t parameterIndex, bool on, std::int32_t colourIndex);
    // Editor thread. `frame` shows the parameter of `parameterId`; it takes its binding with it
    // when it dies.
    void BindParameterFrame(std::int32_t parameterId, Frame* frame, std::int32_t cornerCode);
    void UnbindFrame(Frame* frame);
    // Editor thread. The bindings of a parameter, and the highlight of a table position.
    std::vector<ParameterBinding> GetBindings(std::int32_t parameterId) const;
    ParameterHighlight GetHighlight(std::int32_t parameterIndex) const;

    // ---- Errors ----
    // Editor thread. ReportError's way onto an open editor: a message panel over the tree.
    void ShowError(std::string_view first, std::string_view second, std::string_view third,
                   std::int32_t kind);

    // ---- State for the window and for tests ----
    PluginCore* GetCore() const { return core_; }
    std::int32_t GetBusyDepth() const { return busyDepth_; }
    bool HasDrawnOnce() const { return drawnOnce_; }
    Frame* GetAboutFrame() const { return aboutFrame_; }
    // The text field while an edit is open, else null.
    TextEditField* GetEditField() const { return editField_; }

  protected:
    // The window side, which a host layer supplies: the frames of the editor under the root
    // frame, the window's surface, and an offscreen surface of a rectangle (null declines
    // offscreen painting).
    virtual void CreateRootFrame() = 0;
    virtual std::unique_ptr<DrawContext> CreateDrawContext() = 0;
    virtual std::unique_ptr<DrawContext> CreateRegion(const Rect& rect) = 0;

    // Hooks of the edits of a bound parameter: the user began, and ended, changing it. Empty.
    virtual void ParameterEditBegun(std::int32_t parameterId);
    virtual void ParameterEditEnded(std::int32_t parameterId);

    void FrameDestroyed(Frame& frame) noexcept override;

  private:
    // Hears the frames that highlights are bound to, so that a dying control takes its binding
    // with it.
    class HiliteFrameRemovalAgent : public MessageSubscriber<HiliteFrameRemovalAgent> {
      public:
        explicit HiliteFrameRemovalAgent(PluginUIRoot& owner);
        void Watch(Frame& frame);
        void Forget(const Frame& frame);

      private:
        void OnFrameMessage(MsgId msgId);

        PluginUIRoot& owner_;
        std::map<const Frame*, std::int32_t> keys_;
        std::map<std::int32_t, Frame*> frames_;
        std::int32_t nextKey_ = 1;
    };

    void SetHoverFrame(Frame* frame, std::int32_t x, std::int32_t y);
    void UpdateHover();
    void ApplyHighlight(const ParameterBinding& binding, std::int32_t parameterId,
                        const ParameterHighlight& highlight);
    void CommitEdit();
    void CancelEdit();
    void CloseEditField() noexcept;
    void TearDown() noexcept;

    PluginCore* core_;
    std::unique_ptr<HiliteFrameRemovalAgent> removalAgent_;
    Ticks lastClickTick_ = 0;
    Point lastClickPoint_{-1000, -1000};
    Point lastMousePoint_{-1000, -1000};
    // The surfaces outlive the tree: declared before it, they are destroyed after it.
    std::unique_ptr<DrawContext> drawContext_;
    std::unique_ptr<DrawContext> offscreen_;
    std::unique_ptr<Frame> rootFrame_;
    bool isOpen_ = false;
    Frame* aboutFrame_ = nullptr;
    bool declinesOffscreen_ = false;
    std::vector<ParameterHighlight> highlights_;
    std::multimap<std::int32_t, ParameterBinding> framesByParameter_;
    bool drawnOnce_ = false;
    std::int32_t busyDepth_ = 0;
    TextEditField* editField_ = nullptr;
    std::unique_ptr<TextEditDialogUserProxy> editClient_;
    std::int64_t lastBeatMilliseconds_ = 0;
    bool beatStarted_ = false;
};

}  // namespace vorix
