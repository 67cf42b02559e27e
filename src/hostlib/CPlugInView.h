#pragma once

#include <cstdint>

namespace vorix {

// The editor of a process as the host sees it: a rectangle it sizes, draws, idles and clicks in.
// A plug-in derives its bridge to its own editor from this. Main thread; must not throw.
class CPlugInView {
  public:
    CPlugInView() = default;
    CPlugInView(const CPlugInView&) = delete;
    CPlugInView& operator=(const CPlugInView&) = delete;
    virtual ~CPlugInView() = default;

    // Main thread: the view's size in pixels.
    virtual void GetSize(std::int32_t& width, std::int32_t& height) = 0;
    // Main thread: the host asks for a part of the view to be drawn again.
    virtual void Draw(std::int16_t left, std::int16_t top, std::int16_t right,
                      std::int16_t bottom) = 0;
    // Main thread: a click at a point of the view.
    virtual void MouseDown(std::int16_t x, std::int16_t y) = 0;
    // Main thread: the host's periodic call while the view is open.
    virtual void Idle() = 0;
};

}  // namespace vorix
