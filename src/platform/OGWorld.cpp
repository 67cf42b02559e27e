#include "platform/OGWorld.h"

#include "platform/ImageResources.h"

namespace vorix {

OGWorld::OGWorld(const Rect& bounds, const ImageResources* resources)
    : SoftwareContext(bounds.Width(), bounds.Height(), resources) {}

OGWorld::OGWorld(const ImageResources& resources, std::int32_t resourceId)
    : SoftwareContext(0, 0, &resources) {
    ReplaceImage(resources.GetImage(resourceId));
}

void OGWorld::SetBounds(const Rect& bounds) {
    const Rect present = GetBounds();
    if (bounds.Width() == present.Width() && bounds.Height() == present.Height()) return;
    ReplaceImage(BlankImage(bounds.Width(), bounds.Height()));
}

}  // namespace vorix
