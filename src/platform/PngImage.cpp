#include "platform/PngImage.h"

#include <png.h>

#include <csetjmp>
#include <cstring>
#include <fstream>
#include <iterator>
#include <string>

namespace vorix {
namespace {

// libpng reports failures by a long jump back to the setjmp of the stage that runs. Every
// function below that calls setjmp holds only trivially destructible locals, so that the jump
// skips no destructor; the objects with destructors live in their callers.

// zlib's level 9 and every filter: the smallest files, and for one libpng and zlib the same bytes
// every time.
constexpr int kCompressionLevel = 9;

struct ErrorText {
    char text[160] = {};
};

[[noreturn]] void OnError(png_structp png, png_const_charp message) {
    auto* error = static_cast<ErrorText*>(png_get_error_ptr(png));
    if (error != nullptr && message != nullptr) {
        std::strncpy(error->text, message, sizeof(error->text) - 1);
    }
    png_longjmp(png, 1);
}

// Warnings (an unknown chunk, a bad gamma value) change nothing that Vorix reads.
void OnWarning(png_structp, png_const_charp) {}

struct WriteTarget {
    std::vector<std::uint8_t>* bytes = nullptr;
};

void WriteBytes(png_structp png, png_bytep data, std::size_t length) {
    auto* target = static_cast<WriteTarget*>(png_get_io_ptr(png));
    bool outOfMemory = false;
    try {
        target->bytes->insert(target->bytes->end(), data, data + length);
    } catch (...) {
        outOfMemory = true;
    }
    if (outOfMemory) png_error(png, "out of memory");
}

void FlushNothing(png_structp) {}

struct ReadSource {
    const std::uint8_t* data = nullptr;
    std::size_t size = 0;
    std::size_t position = 0;
};

void ReadBytes(png_structp png, png_bytep data, std::size_t length) {
    auto* source = static_cast<ReadSource*>(png_get_io_ptr(png));
    if (length > source->size - source->position) png_error(png, "the data ends too early");
    std::memcpy(data, source->data + source->position, length);
    source->position += length;
}

bool WriteImage(png_structp png, png_infop info, const PixelImage& image, std::uint8_t* row) {
    if (setjmp(png_jmpbuf(png))) return false;
    png_set_IHDR(png, info, static_cast<png_uint_32>(image.width),
                 static_cast<png_uint_32>(image.height), 8, PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_set_compression_level(png, kCompressionLevel);
    png_set_filter(png, PNG_FILTER_TYPE_BASE, PNG_ALL_FILTERS);
    png_write_info(png, info);
    for (std::int32_t y = 0; y < image.height; ++y) {
        const Pixel* pixels = image.Row(y);
        for (std::int32_t x = 0; x < image.width; ++x) {
            row[3 * x] = static_cast<std::uint8_t>(pixels[x] >> 16);
            row[3 * x + 1] = static_cast<std::uint8_t>(pixels[x] >> 8);
            row[3 * x + 2] = static_cast<std::uint8_t>(pixels[x]);
        }
        png_write_row(png, row);
    }
    png_write_end(png, nullptr);
    return true;
}

struct Header {
    png_uint_32 width = 0;
    png_uint_32 height = 0;
    std::size_t rowBytes = 0;
};

bool ReadHeader(png_structp png, png_infop info, Header* header) {
    if (setjmp(png_jmpbuf(png))) return false;
    png_set_user_limits(png, kMaxPngSide, kMaxPngSide);
    png_read_info(png, info);
    png_set_expand(png);
    png_set_scale_16(png);
    png_set_strip_alpha(png);
    png_set_gray_to_rgb(png);
    png_set_interlace_handling(png);
    png_read_update_info(png, info);
    header->width = png_get_image_width(png, info);
    header->height = png_get_image_height(png, info);
    header->rowBytes = png_get_rowbytes(png, info);
    return true;
}

bool ReadRows(png_structp png, png_infop info, png_bytepp rows) {
    if (setjmp(png_jmpbuf(png))) return false;
    png_read_image(png, rows);
    png_read_end(png, info);
    return true;
}

struct WriteStructs {
    png_structp png = nullptr;
    png_infop info = nullptr;
    ~WriteStructs() { png_destroy_write_struct(&png, &info); }
};

struct ReadStructs {
    png_structp png = nullptr;
    png_infop info = nullptr;
    ~ReadStructs() { png_destroy_read_struct(&png, &info, nullptr); }
};

}  // namespace

std::vector<std::uint8_t> EncodePng(const PixelImage& image) {
    if (image.width <= 0 || image.height <= 0) throw PngError("a PNG needs at least one pixel");
    ErrorText error;
    WriteStructs structs;
    structs.png = png_create_write_struct(PNG_LIBPNG_VER_STRING, &error, OnError, OnWarning);
    if (structs.png != nullptr) structs.info = png_create_info_struct(structs.png);
    if (structs.info == nullptr) throw PngError("libpng could not start: out of memory");

    std::vector<std::uint8_t> bytes;
    WriteTarget target{&bytes};
    png_set_write_fn(structs.png, &target, WriteBytes, FlushNothing);
    std::vector<std::uint8_t> row(static_cast<std::size_t>(image.width) * 3);
    if (!WriteImage(structs.png, structs.info, image, row.data())) {
        throw PngError(std::string("cannot write the PNG: ") + error.text);
    }
    return bytes;
}

PixelImage DecodePng(std::span<const std::uint8_t> bytes) {
    if (bytes.size() < 8 || png_sig_cmp(bytes.data(), 0, 8) != 0) {
        throw PngError("not a PNG image");
    }
    ErrorText error;
    ReadStructs structs;
    structs.png = png_create_read_struct(PNG_LIBPNG_VER_STRING, &error, OnError, OnWarning);
    if (structs.png != nullptr) structs.info = png_create_info_struct(structs.png);
    if (structs.info == nullptr) throw PngError("libpng could not start: out of memory");

    ReadSource source{bytes.data(), bytes.size(), 0};
    png_set_read_fn(structs.png, &source, ReadBytes);
    Header header;
    if (!ReadHeader(structs.png, structs.info, &header)) {
        throw PngError(std::string("cannot read the PNG: ") + error.text);
    }
    if (header.rowBytes != static_cast<std::size_t>(header.width) * 3) {
        throw PngError("cannot read the PNG: unexpected pixel layout");
    }

    std::vector<std::uint8_t> data(header.rowBytes * header.height);
    std::vector<png_bytep> rows(header.height);
    for (png_uint_32 y = 0; y < header.height; ++y)
        rows[y] = data.data() + y * header.rowBytes;
    if (!ReadRows(structs.png, structs.info, rows.data())) {
        throw PngError(std::string("cannot read the PNG: ") + error.text);
    }

    PixelImage image(static_cast<std::int32_t>(header.width),
                     static_cast<std::int32_t>(header.height));
    for (std::size_t i = 0; i < image.pixels.size(); ++i) {
        image.pixels[i] = MakePixel(data[3 * i], data[3 * i + 1], data[3 * i + 2]);
    }
    return image;
}

void WritePngFile(const std::filesystem::path& path, const PixelImage& image) {
    std::vector<std::uint8_t> bytes = EncodePng(image);
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (!file) throw PngError("cannot write " + path.string());
}

std::vector<std::uint8_t> ReadFileBytes(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) throw PngError("cannot open " + path.string());
    std::vector<std::uint8_t> bytes((std::istreambuf_iterator<char>(file)),
                                    std::istreambuf_iterator<char>());
    if (file.bad()) throw PngError("cannot read " + path.string());
    return bytes;
}

PixelImage ReadPngFile(const std::filesystem::path& path) {
    return DecodePng(ReadFileBytes(path));
}

}  // namespace vorix
