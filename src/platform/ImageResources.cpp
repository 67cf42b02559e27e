#include "platform/ImageResources.h"

#include <utility>

#include "framework/Exceptions.h"
#include "platform/PngImage.h"

namespace vorix {

void ImageResources::AddPng(std::int32_t id, std::span<const std::uint8_t> png) {
    entries_[id] = Entry{png, std::nullopt};
}

void ImageResources::AddImage(std::int32_t id, PixelImage image) {
    entries_[id] = Entry{{}, std::move(image)};
}

const PixelImage& ImageResources::GetImage(std::int32_t id) const {
    auto found = entries_.find(id);
    if (found == entries_.end()) VORIX_THROW(AppFrame::ResAlloc);
    const Entry& entry = found->second;
    if (!entry.image) {
        try {
            entry.image = DecodePng(entry.png);
        } catch (const PngError&) {
            VORIX_THROW(AppFrame::ResAlloc);
        }
    }
    return *entry.image;
}

}  // namespace vorix
