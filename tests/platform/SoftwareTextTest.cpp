// Text on the software surface: faces, baselines, widths, boxed text; and the layout beneath.
#include <gtest/gtest.h>

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_DRIVER_H
#include FT_MODULE_H

#include <algorithm>
#include <string>
#include <vector>

#include "SurfacePicture.h"
#include "platform/SoftwareContext.h"
#include "platform/TextLayout.h"

namespace vorix {
namespace {

using test::InkBox;
using test::kInkColor;

constexpr std::int32_t kNormal = SoftwareContext::kNormalFont;
constexpr std::int32_t kSmall = SoftwareContext::kSmallFont;

struct Page : SoftwareContext {
    explicit Page(std::int32_t fontKind, std::int32_t width = 120, std::int32_t height = 60)
        : SoftwareContext(width, height) {
        SetFont(fontKind, kInkColor);
    }
    void Write(Point pen, std::string_view text) {
        MoveTo(pen);
        DrawString(text);
    }
};

// The advances that FreeType gives for the installed copy of the face, loaded apart from the
// product's embedded copy, at the pixel size of a face kind, with the product's hinting.
std::int32_t FreeTypeAdvanceSum(std::string_view text, FT_UInt pixelSize) {
    FT_Library library = nullptr;
    FT_Face face = nullptr;
    EXPECT_EQ(FT_Init_FreeType(&library), 0);
    FT_UInt interpreter = TT_INTERPRETER_VERSION_35;
    EXPECT_EQ(FT_Property_Set(library, "truetype", "interpreter-version", &interpreter), 0);
    EXPECT_EQ(
        FT_New_Face(library, "/usr/share/fonts/truetype/liberation2/LiberationSans-Regular.ttf", 0,
                    &face),
        0);
    EXPECT_EQ(FT_Set_Pixel_Sizes(face, 0, pixelSize), 0);
    std::int32_t sum = 0;
    for (char c : text) {
        EXPECT_EQ(FT_Load_Char(face, static_cast<unsigned char>(c), FT_LOAD_NO_AUTOHINT), 0);
        sum += static_cast<std::int32_t>(face->glyph->advance.x >> 6);
    }
    FT_Done_Face(face);
    FT_Done_FreeType(library);
    return sum;
}

// ---- DrawString

TEST(SoftwareText, TextSitsOnTheRowAboveThePenAndOnlyDescendersReachBelow) {
    for (std::int32_t kind : {kNormal, kSmall}) {
        SCOPED_TRACE(kind);
        Page capital(kind);
        capital.Write({10, 30}, "Hx");
        EXPECT_EQ(InkBox(capital).bottom, 30);  // the last inked row is 29
        EXPECT_GE(InkBox(capital).left, 10);
        EXPECT_LE(InkBox(capital).left, 11);

        Page descender(kind);
        descender.Write({10, 30}, "p");
        EXPECT_GT(InkBox(descender).bottom, 31);
    }
}

// The sizes the artwork is laid out for: 8 points is an 11-pixel em, 7 points a 9-pixel em.
TEST(SoftwareText, TheFacesAreEightAndSevenPointsAtNinetySixDots) {
    Page normal(kNormal);
    normal.Write({10, 30}, "H");
    EXPECT_EQ(InkBox(normal).Height(), 8);
    EXPECT_EQ(normal.GetLineHeight(), 13);
    Page small(kSmall);
    small.Write({10, 30}, "H");
    EXPECT_EQ(InkBox(small).Height(), 7);
    EXPECT_EQ(small.GetLineHeight(), 11);
}

TEST(SoftwareText, KnownStringsHaveKnownWidths) {
    Page page(kNormal);
    EXPECT_EQ(page.GetStringWidth("20000 Hz"), 46);
    EXPECT_EQ(page.GetStringWidth("-12.50 dB"), 47);
    EXPECT_EQ(page.GetStringWidth("Parametric"), 51);
    page.SetFont(kSmall, kInkColor);
    EXPECT_EQ(page.GetStringWidth("20000 Hz"), 39);
    EXPECT_EQ(page.GetStringWidth("-12.50 dB"), 40);
    EXPECT_EQ(page.GetStringWidth("Parametric"), 45);
    EXPECT_EQ(page.GetStringWidth(""), 0);
}

TEST(SoftwareText, TheWidthIsTheSumOfTheAdvancesFreeTypeGivesForTheFontFile) {
    const std::vector<std::string> texts = {"20 Hz", "AVAToWay", "1 L Low Shelf 2",
                                            "Unable to load settings", "%&()*+,-./:;<=>?@[]{}"};
    for (std::int32_t kind : {kNormal, kSmall}) {
        Page page(kind);
        const FT_UInt pixels = kind == kNormal ? 11 : 9;
        for (const std::string& text : texts) {
            EXPECT_EQ(page.GetStringWidth(text), FreeTypeAdvanceSum(text, pixels)) << text;
        }
    }
}

// No kerning: a string is its characters one after the other, each at the pen plus the width
// of those before it.
TEST(SoftwareText, AStringIsItsCharactersSetSideBySideByTheirWidths) {
    Page whole(kNormal);
    whole.Write({4, 20}, "AVATo");
    Page pieces(kNormal);
    std::int32_t x = 4;
    for (std::string_view piece : {"A", "V", "A", "T", "o"}) {
        pieces.Write({x, 20}, piece);
        x += pieces.GetStringWidth(piece);
    }
    EXPECT_EQ(whole.GetImage(), pieces.GetImage());
    EXPECT_EQ(whole.GetStringWidth("AVATo"), x - 4);
}

TEST(SoftwareText, DrawingTextLeavesThePenWhereItWas) {
    Page page(kNormal);
    page.Write({3, 20}, "abc");
    EXPECT_EQ(page.GetPen(), (Point{3, 20}));
    Page line(kNormal);
    line.Write({3, 20}, "abc");
    line.LineTo({3, 20});  // from the pen to itself: the one pixel (3, 20)
    EXPECT_EQ(line.GetPixel(3, 20), test::kInk);
}

TEST(SoftwareText, TextIsTheForegroundColourBlendedIntoWhatLiesBeneath) {
    constexpr RGBColor kText{0xFFC3, 0xFFC7, 0xFFDB};  // the plot's label colour, 16-bit
    constexpr Pixel kTextPixel = MakePixel(0xC3, 0xC7, 0xDB);
    constexpr Pixel kBackground = MakePixel(66, 70, 91);
    SoftwareContext page(60, 20);
    page.SetForeColor({66, 70, 91});
    page.FillRect({0, 0, 60, 20});
    page.SetFont(kSmall, kText);
    page.MoveTo({2, 14});
    page.DrawString("10k Hz");
    // Each component lies between the background's and the text's; the strongest pixels come
    // close to the text colour itself.
    std::uint32_t strongest = 0;
    for (std::int32_t y = 0; y < 20; ++y) {
        for (std::int32_t x = 0; x < 60; ++x) {
            const Pixel p = page.GetPixel(x, y);
            for (int shift : {16, 8, 0}) {
                const std::uint32_t c = (p >> shift) & 0xFF;
                const std::uint32_t low = (kBackground >> shift) & 0xFF;
                const std::uint32_t high = (kTextPixel >> shift) & 0xFF;
                EXPECT_GE(c, low);
                EXPECT_LE(c, high);
                strongest = std::max(strongest, 100 * (c - low) / (high - low));
            }
        }
    }
    EXPECT_GE(strongest, 90u);
    page.FillRect({0, 0, 1, 1});  // SetFont set the colour of every drawing
    EXPECT_EQ(page.GetPixel(0, 0), kTextPixel);
}

TEST(SoftwareText, AnUnknownFontKindKeepsTheFaceButTakesTheColour) {
    Page page(kSmall);
    page.SetFont(2, {0, 0xFF, 0});
    EXPECT_EQ(page.GetFontKind(), kSmall);
    EXPECT_EQ(page.GetStringWidth("Parametric"), 45);
    page.FillRect({0, 0, 1, 1});
    EXPECT_EQ(page.GetPixel(0, 0), MakePixel(0, 0xFF, 0));
}

TEST(SoftwareText, TextStaysInsideTheClip) {
    Page page(kNormal, 40, 20);
    page.SetClipRect({0, 0, 8, 20});
    page.Write({2, 15}, "MMMM");
    EXPECT_EQ(InkBox(page).right, 8);
}

TEST(SoftwareText, UnicodeTextAndBytesThatAreNotUtf8ShowTheSameCharacters) {
    Page page(kNormal);
    EXPECT_EQ(page.GetStringWidth("\xC2\xB0"), page.GetStringWidth("\xB0"));  // the degree sign
    EXPECT_GT(page.GetStringWidth("\xB0"), 0);
    EXPECT_EQ(page.GetStringWidth("a\tb"), page.GetStringWidth("a b"));
    EXPECT_EQ(page.GetStringWidth("a\x01\x7F"
                                  "b"),
              page.GetStringWidth("ab"));
}

// ---- DrawStringInRect

// Boxed text begins 5 columns left of the box, its first baseline 12 rows below the box's top.
TEST(SoftwareBoxedText, TheFirstLineStandsAtTheShiftedLeftTopOfTheBox) {
    Page boxed(kSmall);
    boxed.SetOrigin({-2, -3});
    boxed.DrawStringInRect("Unable to load", {20, 10, 110, 40});
    Page plain(kSmall);
    plain.Write({15 + 2, 22 + 3}, "Unable to load");
    EXPECT_EQ(boxed.GetImage(), plain.GetImage());
}

TEST(SoftwareBoxedText, LinesBreakAtWordsOneLineHeightApart) {
    Page boxed(kSmall, 120, 80);
    const std::int32_t width = boxed.GetStringWidth("one two") - 1;
    boxed.DrawStringInRect("one two three\n\nfour", {10, 0, 10 + width, 10});
    Page lines(kSmall, 120, 80);
    const std::int32_t height = lines.GetLineHeight();
    lines.Write({5, 12}, "one");
    lines.Write({5, 12 + height}, "two");
    lines.Write({5, 12 + 2 * height}, "three");
    lines.Write({5, 12 + 4 * height}, "four");  // the empty line between
    EXPECT_EQ(boxed.GetImage(), lines.GetImage());
}

TEST(SoftwareBoxedText, AWordTooWideForTheBoxEndsInAnEllipsis) {
    const std::string word = "Supercalifragilistic";
    Page boxed(kNormal);
    const Rect box{10, 0, 70, 20};
    boxed.DrawStringInRect(word + " go", box);

    // The longest start of the word that fits with the ellipsis behind it.
    std::string cut = word;
    while (boxed.GetStringWidth(cut + "...") > box.Width())
        cut.pop_back();
    ASSERT_GT(cut.size(), 3u);
    ASSERT_LT(cut.size(), word.size());
    Page expected(kNormal);
    expected.Write({5, 12}, cut + "...");
    expected.Write({5, 12 + expected.GetLineHeight()}, "go");
    EXPECT_EQ(boxed.GetImage(), expected.GetImage());
}

TEST(SoftwareBoxedText, BoxedTextIsNotClippedToItsBox) {
    Page page(kSmall, 120, 60);
    page.DrawStringInRect("one\ntwo\nthree", {10, 0, 100, 2});
    EXPECT_GT(InkBox(page).bottom, 12 + 2 * page.GetLineHeight() - 2);
}

// ---- Layout

// Each character 10 pixels wide, so that breaks can be reasoned about exactly.
const TextMeasure kTenEach = [](std::u32string_view text) {
    return static_cast<std::int32_t>(10 * text.size());
};

std::vector<std::u32string> Lines(std::u32string_view text, std::int32_t width) {
    return BreakIntoLines(text, width, kTenEach);
}

using Expected = std::vector<std::u32string>;

TEST(TextLayout, LinesTakeAsManyWordsAsFitAndBlanksAtABreakVanish) {
    EXPECT_EQ(Lines(U"one two three", 75), (Expected{U"one two", U"three"}));
    EXPECT_EQ(Lines(U"one two three", 70), (Expected{U"one two", U"three"}));
    EXPECT_EQ(Lines(U"one two three", 69), (Expected{U"one", U"two", U"three"}));
    EXPECT_EQ(Lines(U"a  b\tc", 100), (Expected{U"a  b\tc"}));
    EXPECT_EQ(Lines(U"ab    cd", 40), (Expected{U"ab", U"cd"}));
    EXPECT_EQ(Lines(U"  ab cd", 40), (Expected{U"  ab", U"cd"}));
    EXPECT_EQ(Lines(U"ab   ", 40), (Expected{U"ab"}));
}

TEST(TextLayout, LineFeedsEndLinesAndEmptyParagraphsStay) {
    EXPECT_EQ(Lines(U"", 50), (Expected{U""}));
    EXPECT_EQ(Lines(U"a\n\nb", 50), (Expected{U"a", U"", U"b"}));
    EXPECT_EQ(Lines(U"a\r\nb\n", 50), (Expected{U"a", U"b", U""}));
    EXPECT_EQ(Lines(U"   \nb", 50), (Expected{U"   ", U"b"}));
}

TEST(TextLayout, AWordWiderThanTheBoxIsCutWithAnEllipsisOnALineOfItsOwn) {
    EXPECT_EQ(Lines(U"abcdefgh", 45), (Expected{U"a..."}));
    EXPECT_EQ(Lines(U"abcdefgh ij", 45), (Expected{U"a...", U"ij"}));
    EXPECT_EQ(Lines(U"ab abcdefgh ij", 60), (Expected{U"ab", U"abc...", U"ij"}));
    EXPECT_EQ(Lines(U"abcdef", 60), (Expected{U"abcdef"}));
    EXPECT_EQ(Lines(U"abc", 20), (Expected{U"..."}));
}

// A message of any length lays out in one pass: a word of 200000 characters is cut, and 200000
// words that take no room share one line.
TEST(TextLayout, HugeWordsAndLinesAreLaidOutWhole) {
    const std::u32string word(200000, U'w');
    EXPECT_EQ(Lines(word + U" x", 50), (Expected{U"ww...", U"x"}));

    std::u32string invisible;
    for (int i = 0; i < 200000; ++i)
        invisible += U"\x01 ";
    const TextMeasure noRoom = [](std::u32string_view text) {
        return static_cast<std::int32_t>(std::count(text.begin(), text.end(), U'w'));
    };
    const std::vector<std::u32string> lines = BreakIntoLines(invisible, 10, noRoom);
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines[0].size(), invisible.size() - 1);
}

TEST(TextLayout, Utf8IsDecodedAndEveryOtherByteIsTakenAsLatin1) {
    EXPECT_EQ(DecodeText("a\xC2\xB0\xE2\x82\xAC\xF0\x9F\x8E\xB5"), U"a\u00B0\u20AC\U0001F3B5");
    EXPECT_EQ(DecodeText("\xB0x"), U"\u00B0x");                    // a lone continuation byte
    EXPECT_EQ(DecodeText("\xC3"), U"\u00C3");                      // a sequence cut short
    EXPECT_EQ(DecodeText("\xC0\x80"), U"\u00C0\u0080");            // an overlong form
    EXPECT_EQ(DecodeText("\xED\xA0\x80"), U"\u00ED\u00A0\u0080");  // a surrogate
    EXPECT_EQ(DecodeText("\xF4\x90\x80\x80"), U"\u00F4\u0090\u0080\u0080");  // beyond Unicode
}

}  // namespace
}  // namespace vorix
