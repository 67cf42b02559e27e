#pragma once

// Golden images: a picture compared byte for byte with a PNG file kept beside its tests. After an
// intended change of the pixels, the tests run with VORIX_BLESS=1 rewrite the files from what is
// drawn now; look at every image before committing it.

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "platform/PngImage.h"

namespace vorix::test {

// Compares `image` with `directory`/`name`.png, or rewrites the file under VORIX_BLESS=1. On a
// difference, what was drawn lands in the working directory as `name`.actual.png.
inline void ExpectGolden(const PixelImage& image, const std::filesystem::path& directory,
                         const std::string& name) {
    const std::filesystem::path golden = directory / (name + ".png");
    const char* bless = std::getenv("VORIX_BLESS");
    if (bless != nullptr && std::string(bless) == "1") {
        WritePngFile(golden, image);
        GTEST_SKIP() << "blessed " << golden;
    }
    ASSERT_TRUE(std::filesystem::exists(golden))
        << golden << " is missing; run the tests with VORIX_BLESS=1 to make it";
    if (ReadFileBytes(golden) == EncodePng(image)) return;

    const std::filesystem::path actual = std::filesystem::current_path() / (name + ".actual.png");
    WritePngFile(actual, image);
    const PixelImage expected = ReadPngFile(golden);
    std::size_t differing = 0;
    if (expected.width == image.width && expected.height == image.height) {
        for (std::size_t i = 0; i < image.pixels.size(); ++i)
            differing += expected.pixels[i] != image.pixels[i] ? 1 : 0;
    }
    ADD_FAILURE() << name << " differs from " << golden << " (" << differing
                  << " pixels differ); what was drawn is in " << actual
                  << ". If the change is intended, run the tests with VORIX_BLESS=1.";
}

}  // namespace vorix::test
