#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "framework/DrawContext.h"
#include "framework/Geometry.h"
#include "framework/PluginServices.h"
#include "framework/Ticks.h"

namespace vorix {

class Frame;
class TextEditDialogUser;

// What the frames of one editor share through the root of their tree: the window surface and the
// offscreen buffer they paint with, the draw lock and the list of frames waiting to be painted,
// the frames that hold the mouse, the hover and the key focus, and the instance's services and
// clock. The editor's root (PluginUIRoot) implements the window side; the tree's bookkeeping is
// kept here so that a frame needs nothing above the framework. Editor thread only: nothing here
// may be touched from the audio thread.
class FrameRoot {
  public:
    // Editor thread. `services` (not owned) are the instance's timers and messages.
    explicit FrameRoot(PluginServices* services) noexcept;
    virtual ~FrameRoot();

    FrameRoot(const FrameRoot&) = delete;
    FrameRoot& operator=(const FrameRoot&) = delete;

    // Editor thread. The instance's services, and its clock in ticks (the timer manager's, so
    // that a test or an offline tool moves it by hand).
    PluginServices* GetServices() const noexcept { return services_; }
    Ticks Now() const;

    // ---- Surfaces ----

    // Editor thread. The window's surface; null while the editor is closed.
    virtual DrawContext* GetWindowContext() const = 0;
    // Editor thread. The shared offscreen buffer, or null when there is none yet or the root
    // declines offscreen painting.
    virtual DrawContext* GetOffscreen() const = 0;
    // Editor thread. True when frames must paint straight to the window.
    virtual bool DeclinesOffscreen() const = 0;
    // Editor thread. Makes the shared buffer at least this size; it grows and never shrinks.
    virtual void GrowOffscreen(std::int32_t width, std::int32_t height) = 0;

    // ---- Painting ----

    // Editor thread. The draw-lock count: refreshes paint at once only while it is above 0.
    std::int32_t GetDrawLockCount() const noexcept { return drawLockCount_; }
    // Editor thread. Queues `frame` to be painted whole, unless it or an ancestor is queued.
    void AddDirtyFrame(Frame& frame);
    // Editor thread. Forgets a queued frame; one not queued is a no-op.
    void RemoveDirtyFrame(const Frame& frame) noexcept;
    // Editor thread. The frames waiting, in the order they came.
    const std::vector<Frame*>& GetDirtyFrames() const noexcept { return dirtyFrames_; }
    // Editor thread. Paints every queued frame, oldest first, and empties the list. The caller
    // holds a draw lock.
    void PaintDirtyFrames();
    // Editor thread. Frames note what they painted on the window; the window layer takes the
    // box round it, in window coordinates, to bring those pixels to the screen. Taking it
    // empties it.
    void NotePainted(const Rect& windowRect);
    Rect TakePaintedArea();

    // ---- The tree ----

    // Editor thread. Every frame tells the root of its birth and death.
    void FrameCreated(Frame& frame);
    virtual void FrameDestroyed(Frame& frame) noexcept;
    // Editor thread. Whether `frame` is alive in this tree.
    bool IsLiveFrame(const Frame* frame) const noexcept;
    // Editor thread. Whether the editor's window is active; new top frames start so.
    bool IsRootActive() const noexcept { return rootActive_; }

    // Editor thread. Floating frames of the tree, in the order they came to float.
    void AddFloatingFrame(Frame& frame);
    void RemoveFloatingFrame(const Frame& frame) noexcept;
    const std::vector<Frame*>& GetFloatingFrames() const noexcept { return floatingFrames_; }

    // ---- Mouse and keys ----

    // Editor thread. `frame` takes every mouse event until ReleaseMouse.
    virtual void CaptureMouse(Frame* frame) = 0;
    virtual void ReleaseMouse() = 0;
    Frame* GetCaptureFrame() const noexcept { return captureFrame_; }
    // Editor thread. The frame under the mouse, as the last hover update or press found it.
    Frame* GetHoverFrame() const noexcept { return hoverFrame_; }
    // Editor thread. Whether the press being handled is the second of a double click.
    bool IsDoubleClick() const noexcept { return doubleClick_; }
    // Editor thread. The frame that has the key focus, or null.
    Frame* GetKeyFrame() const noexcept { return keyFrame_; }
    virtual void SetKeyFrame(Frame* frame) = 0;

    // Editor thread. Frames that take every press ahead of the tree, newest first: a modal panel
    // such as an error message.
    void AddModalFrame(Frame& frame);
    void RemoveModalFrame(const Frame& frame) noexcept;
    const std::vector<Frame*>& GetModalFrames() const noexcept { return modalFrames_; }

    // Editor thread. Opens the editor's text field over `windowRect` (window coordinates) with
    // `text`; `client` hears the outcome through a proxy, so that it may die meanwhile.
    virtual void EditText(const Rect& windowRect, std::string_view text,
                          TextEditDialogUser* client) = 0;

  protected:
    std::int32_t drawLockCount_ = 0;
    Frame* captureFrame_ = nullptr;
    Frame* hoverFrame_ = nullptr;
    Frame* keyFrame_ = nullptr;
    bool doubleClick_ = false;
    bool rootActive_ = true;

    // Editor thread. Forgets every frame: the tree is being torn down.
    void ForgetAllFrames() noexcept;

  private:
    friend class DrawLock;

    PluginServices* services_;
    std::vector<Frame*> dirtyFrames_;
    std::vector<Frame*> liveFrames_;
    std::vector<Frame*> floatingFrames_;
    std::vector<Frame*> modalFrames_;
    Rect paintedArea_;
};

// Holds the root's draw lock for a scope: refreshes paint at once while it is held. Made with
// `flush`, it first paints every queued frame. The count never goes below 0. Editor thread.
class DrawLock {
  public:
    explicit DrawLock(FrameRoot& root, bool flush = false);
    ~DrawLock();
    DrawLock(const DrawLock&) = delete;
    DrawLock& operator=(const DrawLock&) = delete;

  private:
    FrameRoot& root_;
};

}  // namespace vorix
