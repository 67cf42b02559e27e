#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <span>

#include "platform/PixelImage.h"

namespace vorix {

// The images a surface draws by resource id (DrawResource, pixmaps made from a resource): PNG
// bytes compiled into the program, decoded on first use and kept. Editor thread.
class ImageResources {
  public:
    // Registers the PNG bytes of an image; they are not copied and must outlive this object
    // (they are meant to be constant data of the program). A second registration of an id
    // replaces the first.
    void AddPng(std::int32_t id, std::span<const std::uint8_t> png);
    // Registers an image already decoded.
    void AddImage(std::int32_t id, PixelImage image);

    // The image; raises AppFrame::ResAlloc when the id is unknown or its bytes are no PNG.
    const PixelImage& GetImage(std::int32_t id) const;

  private:
    struct Entry {
        std::span<const std::uint8_t> png;
        mutable std::optional<PixelImage> image;
    };
    std::map<std::int32_t, Entry> entries_;
};

}  // namespace vorix
