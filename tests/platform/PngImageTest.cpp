// PNG form of software surfaces: exact round trips, stable bytes, the formats read, bad files.
#include <gtest/gtest.h>

#include <png.h>
#include <unistd.h>
#include <zlib.h>

#include <csetjmp>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "platform/PngImage.h"

namespace vorix {
namespace {

PixelImage Noise(std::int32_t width, std::int32_t height, std::uint32_t seed) {
    PixelImage image(width, height);
    for (Pixel& pixel : image.pixels) {
        seed = seed * 1664525u + 1013904223u;
        pixel = (seed >> 8) & 0xFFFFFF;
    }
    return image;
}

// A PNG written by libpng directly, in a format the product itself never writes.
struct ForeignPng {
    int colorType = PNG_COLOR_TYPE_RGB;
    int bitDepth = 8;
    int interlace = PNG_INTERLACE_NONE;
    std::vector<png_color> palette;
    std::vector<std::vector<std::uint8_t>> rows;  // raw bytes of each row
};

void AppendBytes(png_structp png, png_bytep data, std::size_t length) {
    auto* out = static_cast<std::vector<std::uint8_t>*>(png_get_io_ptr(png));
    out->insert(out->end(), data, data + length);
}

std::vector<std::uint8_t> Write(const ForeignPng& format, std::uint32_t width) {
    std::vector<std::uint8_t> bytes;
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    if (setjmp(png_jmpbuf(png))) {
        ADD_FAILURE() << "libpng failed to write the test image";
        png_destroy_write_struct(&png, &info);
        return {};
    }
    png_set_write_fn(png, &bytes, AppendBytes, nullptr);
    png_set_IHDR(png, info, width, static_cast<png_uint_32>(format.rows.size()), format.bitDepth,
                 format.colorType, format.interlace, PNG_COMPRESSION_TYPE_DEFAULT,
                 PNG_FILTER_TYPE_DEFAULT);
    if (!format.palette.empty()) {
        png_set_PLTE(png, info, format.palette.data(), static_cast<int>(format.palette.size()));
    }
    png_write_info(png, info);
    std::vector<png_bytep> rows;
    for (const auto& row : format.rows)
        rows.push_back(const_cast<png_bytep>(row.data()));
    png_write_image(png, rows.data());
    png_write_end(png, nullptr);
    png_destroy_write_struct(&png, &info);
    return bytes;
}

TEST(PngImage, AnImageComesBackPixelForPixelAndItsBytesNeverChange) {
    const PixelImage image = Noise(37, 23, 7);
    const std::vector<std::uint8_t> bytes = EncodePng(image);
    const PixelImage decoded = DecodePng(bytes);
    EXPECT_EQ(decoded, image);
    EXPECT_EQ(EncodePng(decoded), bytes);
    EXPECT_EQ(EncodePng(image), bytes);
    // Nothing in the file depends on when or where it was written.
    const std::string text(bytes.begin(), bytes.end());
    EXPECT_EQ(text.find("tIME"), std::string::npos);
    EXPECT_EQ(text.find("tEXt"), std::string::npos);
}

TEST(PngImage, AFileRoundTripKeepsEveryByte) {
    const auto path = std::filesystem::temp_directory_path() /
                      ("vorix-png-" + std::to_string(::getpid()) + ".png");
    const PixelImage image = Noise(5, 9, 3);
    WritePngFile(path, image);
    EXPECT_EQ(ReadFileBytes(path), EncodePng(image));
    EXPECT_EQ(ReadPngFile(path), image);
    std::filesystem::remove(path);
    EXPECT_THROW(ReadPngFile(path), PngError);
    EXPECT_THROW(WritePngFile(path / "inside-a-file-that-is-not-there.png", image), PngError);
}

TEST(PngImage, GreyPaletteSixteenBitAlphaAndInterlacedImagesReadAsRgb) {
    ForeignPng grey;
    grey.colorType = PNG_COLOR_TYPE_GRAY;
    grey.rows = {{0x00, 0x80, 0xFF}};
    EXPECT_EQ(DecodePng(Write(grey, 3)).pixels, (std::vector<Pixel>{0x000000, 0x808080, 0xFFFFFF}));

    ForeignPng palette;
    palette.colorType = PNG_COLOR_TYPE_PALETTE;
    palette.bitDepth = 2;
    palette.palette = {{0x10, 0x20, 0x30}, {0xA0, 0xB0, 0xC0}};
    palette.rows = {{0b00010100}};  // indices 0, 1, 1, 0
    EXPECT_EQ(DecodePng(Write(palette, 4)).pixels,
              (std::vector<Pixel>{0x102030, 0xA0B0C0, 0xA0B0C0, 0x102030}));

    ForeignPng deep;
    deep.colorType = PNG_COLOR_TYPE_RGB_ALPHA;
    deep.bitDepth = 16;
    deep.interlace = PNG_INTERLACE_ADAM7;
    // Two pixels, big-endian 16-bit R, G, B, A: the alpha is dropped.
    deep.rows = {{0x12, 0x34, 0x56, 0x78, 0x9A, 0xBC, 0x00, 0x00,  //
                  0xFF, 0xFF, 0x00, 0x00, 0x80, 0x00, 0xFF, 0xFF}};
    EXPECT_EQ(DecodePng(Write(deep, 2)).pixels, (std::vector<Pixel>{0x12569A, 0xFF0080}));
}

TEST(PngImage, DamagedOrForeignDataIsRefusedWithAReason) {
    const std::vector<std::uint8_t> good = EncodePng(Noise(16, 16, 1));
    auto refused = [](std::vector<std::uint8_t> bytes) {
        try {
            DecodePng(bytes);
        } catch (const PngError& error) {
            return std::string(error.what()).size() > 10;
        }
        return false;
    };
    EXPECT_TRUE(refused({}));
    EXPECT_TRUE(refused({'G', 'I', 'F', '8', '9', 'a', 0, 0, 0, 0}));
    EXPECT_TRUE(refused(std::vector<std::uint8_t>(good.begin(), good.begin() + good.size() / 2)));
    std::vector<std::uint8_t> badCrc = good;
    badCrc[29] ^= 0x01;  // a byte of the header chunk's checksum
    EXPECT_TRUE(refused(badCrc));

    // A header that claims an image too large to allocate.
    ForeignPng huge;
    huge.rows = {{0, 0, 0}};
    std::vector<std::uint8_t> claim = Write(huge, 1);
    claim[16] = 0x00, claim[17] = 0x01, claim[18] = 0x00, claim[19] = 0x00;  // width 65536
    const uLong crc = crc32(crc32(0, nullptr, 0), claim.data() + 12, 17);    // over type and data
    for (int i = 0; i < 4; ++i)
        claim[29 + i] = static_cast<std::uint8_t>(crc >> (24 - 8 * i));
    EXPECT_TRUE(refused(claim));

    EXPECT_THROW(EncodePng(PixelImage(0, 4)), PngError);
}

}  // namespace
}  // namespace vorix
