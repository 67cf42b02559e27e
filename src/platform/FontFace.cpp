#include "platform/FontFace.h"

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_DRIVER_H
#include FT_MODULE_H

#include <cstdlib>
#include <cstring>

#include "framework/Exceptions.h"
#include "platform/EmbeddedFont.h"

namespace vorix {
namespace {

// The classic interpreter runs the font's hints in both directions: stems land on whole pixels
// and advances are the hinted ones, which keeps 7- and 8-point text crisp and its widths as the
// artwork was laid out for.
constexpr FT_UInt kInterpreterVersion = TT_INTERPRETER_VERSION_35;
constexpr FT_Int32 kLoadFlags = FT_LOAD_RENDER | FT_LOAD_TARGET_NORMAL | FT_LOAD_NO_AUTOHINT;

void* Allocate(FT_Memory, long size) {
    return std::malloc(static_cast<std::size_t>(size));
}
void Free(FT_Memory, void* block) {
    std::free(block);
}
void* Reallocate(FT_Memory, long, long newSize, void* block) {
    return std::realloc(block, static_cast<std::size_t>(newSize));
}

std::int32_t WholePixels(FT_Pos value) {
    return static_cast<std::int32_t>(value >> 6);
}

}  // namespace

struct FontFace::FreeTypeState {
    FT_MemoryRec_ memory{nullptr, Allocate, Free, Reallocate};
    FT_Library library = nullptr;
    FT_Face face = nullptr;

    ~FreeTypeState() {
        if (face != nullptr) FT_Done_Face(face);
        if (library != nullptr) FT_Done_Library(library);
    }
};

FontFace::FontFace(std::int32_t pixelSize)
    : freeType_(std::make_unique<FreeTypeState>()), pixelSize_(pixelSize) {
    FreeTypeState& ft = *freeType_;
    // A library of our own with the default modules, without FT_Init_FreeType's reading of
    // FREETYPE_PROPERTIES from the environment.
    if (FT_New_Library(&ft.memory, &ft.library) != 0) VORIX_THROW(AppFrame::ResAlloc);
    FT_Add_Default_Modules(ft.library);
    FT_UInt version = kInterpreterVersion;
    if (FT_Property_Set(ft.library, "truetype", "interpreter-version", &version) != 0) {
        VORIX_THROW(AppFrame::ResAlloc);
    }
    const std::span<const std::uint8_t> font = EmbeddedSansFont();
    if (FT_New_Memory_Face(ft.library, font.data(), static_cast<FT_Long>(font.size()), 0,
                           &ft.face) != 0 ||
        FT_Set_Pixel_Sizes(ft.face, 0, static_cast<FT_UInt>(pixelSize)) != 0) {
        VORIX_THROW(AppFrame::ResAlloc);
    }
    ascent_ = WholePixels(ft.face->size->metrics.ascender);
    descent_ = -WholePixels(ft.face->size->metrics.descender);
}

FontFace::~FontFace() = default;

const FontFace::Glyph& FontFace::GetGlyph(char32_t character) {
    std::unique_ptr<Glyph>& slot =
        character < latin_.size() ? latin_[character] : others_[character];
    if (!slot) slot = std::make_unique<Glyph>(Render(character));
    return *slot;
}

std::int32_t FontFace::MeasureText(std::u32string_view text) {
    std::int32_t width = 0;
    for (char32_t character : text)
        width += GetGlyph(character).advance;
    return width;
}

FontFace::Glyph FontFace::Render(char32_t character) {
    if (character == U'\t') {
        Glyph tab;
        tab.advance = GetGlyph(U' ').advance;
        return tab;
    }
    if (character < 0x20 || character == 0x7F) return Glyph{};

    FT_Face face = freeType_->face;
    if (FT_Load_Char(face, character, kLoadFlags) != 0) return Glyph{};
    const FT_GlyphSlot slot = face->glyph;
    const FT_Bitmap& bitmap = slot->bitmap;
    Glyph glyph;
    glyph.advance = WholePixels(slot->advance.x);
    if (bitmap.pixel_mode != FT_PIXEL_MODE_GRAY || bitmap.buffer == nullptr) return glyph;
    glyph.left = slot->bitmap_left;
    glyph.top = slot->bitmap_top;
    glyph.width = static_cast<std::int32_t>(bitmap.width);
    glyph.rows = static_cast<std::int32_t>(bitmap.rows);
    glyph.coverage.resize(static_cast<std::size_t>(glyph.width) * bitmap.rows);
    for (std::int32_t row = 0; row < glyph.rows; ++row) {
        std::memcpy(glyph.coverage.data() + static_cast<std::size_t>(row) * glyph.width,
                    bitmap.buffer + static_cast<std::ptrdiff_t>(row) * bitmap.pitch,
                    static_cast<std::size_t>(glyph.width));
    }
    return glyph;
}

}  // namespace vorix
