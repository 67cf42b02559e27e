#pragma once

#include <cstdint>

#include "platform/SoftwareContext.h"

namespace vorix {

// An offscreen surface: the shared buffer that frames paint through to avoid flicker, or a
// pixmap holding an image of the artwork. Editor thread.
class OGWorld : public SoftwareContext {
  public:
    // A black buffer the size of `bounds`; an empty rectangle gives a surface without pixels.
    explicit OGWorld(const Rect& bounds, const ImageResources* resources = nullptr);
    // A pixmap of the image resource, its size the image's. Raises AppFrame::ResAlloc when the
    // image cannot be had, and then no surface exists.
    OGWorld(const ImageResources& resources, std::int32_t resourceId);

    // Makes the buffer the size of `bounds`. The same size changes nothing; any other gives a
    // new black buffer, for the buffer is only scratch space and its pixels are not kept. Raises
    // AppFrame::ResAlloc when the new buffer cannot be allocated, and keeps the old one.
    void SetBounds(const Rect& bounds);
};

}  // namespace vorix
