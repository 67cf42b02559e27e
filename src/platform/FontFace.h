#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace vorix {

// The editor's two text faces: the embedded sans face at 8 and 7 points on a 96 dpi screen.
// A point size becomes whole pixels of em height, rounded: 11 and 9.
inline constexpr std::int32_t kScreenDpi = 96;
inline constexpr std::int32_t kNormalFacePoints = 8;
inline constexpr std::int32_t kSmallFacePoints = 7;

constexpr std::int32_t PixelsForPoints(std::int32_t points) {
    return (points * kScreenDpi + 36) / 72;
}

// One size of the embedded face, rendered through FreeType with fixed settings: the font's own
// full hinting (the TrueType interpreter in its classic mode, chosen explicitly so that no
// environment variable can change it), 8-bit grey coverage, whole-pixel advances, no kerning.
// The same text gives the same pixels on every machine. Each glyph is rendered once and kept.
//
// Editor thread: an object belongs to one surface and one thread; it shares nothing with others.
class FontFace {
  public:
    // A rendered character. `coverage` holds `width` by `rows` values of 0 (none) to 255 (full),
    // row after row; its left top pixel lies `left` right of the pen and `top` rows above the
    // baseline (the row the pen stands on is the first below the baseline).
    struct Glyph {
        std::int32_t left = 0;
        std::int32_t top = 0;
        std::int32_t width = 0;
        std::int32_t rows = 0;
        std::int32_t advance = 0;
        std::vector<std::uint8_t> coverage;
    };

    // Raises AppFrame::ResAlloc when FreeType cannot load the face.
    explicit FontFace(std::int32_t pixelSize);
    ~FontFace();
    FontFace(const FontFace&) = delete;
    FontFace& operator=(const FontFace&) = delete;

    // The glyph of a character. A tab is a blank as wide as a space; other control characters
    // are blanks of no width; a character the font lacks shows the font's missing-glyph box.
    const Glyph& GetGlyph(char32_t character);

    // The sum of the characters' advances, in pixels.
    std::int32_t MeasureText(std::u32string_view text);

    std::int32_t GetPixelSize() const { return pixelSize_; }
    // Rows above the baseline and below it, in whole pixels; their sum is the line height.
    std::int32_t GetAscent() const { return ascent_; }
    std::int32_t GetDescent() const { return descent_; }
    std::int32_t GetLineHeight() const { return ascent_ + descent_; }

  private:
    struct FreeTypeState;

    Glyph Render(char32_t character);

    std::unique_ptr<FreeTypeState> freeType_;
    std::int32_t pixelSize_ = 0;
    std::int32_t ascent_ = 0;
    std::int32_t descent_ = 0;
    // Latin-1 characters by code; the rest by map. A glyph never moves once made.
    std::array<std::unique_ptr<Glyph>, 256> latin_;
    std::unordered_map<char32_t, std::unique_ptr<Glyph>> others_;
};

}  // namespace vorix
