#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <stdexcept>
#include <vector>

#include "platform/PixelImage.h"

namespace vorix {

// PNG images of software surfaces: snapshots of the editor, golden images of the tests, the
// artwork. Any thread; nothing here is shared.

// A PNG that cannot be read or written; the text says why.
class PngError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// The largest width or height read; a file claiming more is refused before anything is
// allocated for it.
inline constexpr std::int32_t kMaxPngSide = 16384;

// The image as an 8-bit RGB PNG. The same pixels always give the same bytes: fixed compression
// level and filters, no time stamp, no text or gamma chunks. Throws PngError.
std::vector<std::uint8_t> EncodePng(const PixelImage& image);

// Any PNG (palette, grey, 16-bit, interlaced): alpha is dropped and grey becomes RGB. Throws
// PngError for anything that is not a whole, valid PNG of at most kMaxPngSide on a side.
PixelImage DecodePng(std::span<const std::uint8_t> bytes);

// The file's whole content; throws PngError when it cannot be written.
void WritePngFile(const std::filesystem::path& path, const PixelImage& image);

// Throws PngError when the file cannot be read or is not a PNG.
PixelImage ReadPngFile(const std::filesystem::path& path);

// The file's bytes; throws PngError when it cannot be read.
std::vector<std::uint8_t> ReadFileBytes(const std::filesystem::path& path);

}  // namespace vorix
