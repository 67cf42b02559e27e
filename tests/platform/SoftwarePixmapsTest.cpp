// Pixel copies, masked copies, resource images and reading pixels back; offscreen buffers.
#include <gtest/gtest.h>

#include "SurfacePicture.h"
#include "framework/Exceptions.h"
#include "platform/ImageResources.h"
#include "platform/OGWorld.h"
#include "platform/PngImage.h"

namespace vorix {
namespace {

using test::Picture;
using test::Rows;

constexpr Pixel kRed = MakePixel(0xC0, 0x10, 0x10);
constexpr Pixel kGreen = MakePixel(0x10, 0xC0, 0x10);
constexpr Pixel kBlue = MakePixel(0x10, 0x10, 0xC0);
constexpr Pixel kWhitePixel = MakePixel(0xFF, 0xFF, 0xFF);
const std::map<Pixel, char> kLegend = {{kRed, 'r'}, {kGreen, 'g'}, {kBlue, 'b'}};

// An image from rows of legend characters ('.' black, '#' white).
PixelImage ImageOf(const std::vector<std::string>& rows) {
    PixelImage image(static_cast<std::int32_t>(rows[0].size()),
                     static_cast<std::int32_t>(rows.size()));
    for (std::size_t y = 0; y < rows.size(); ++y) {
        for (std::size_t x = 0; x < rows[y].size(); ++x) {
            Pixel pixel = 0;
            switch (rows[y][x]) {
                case '#':
                    pixel = kWhitePixel;
                    break;
                case 'r':
                    pixel = kRed;
                    break;
                case 'g':
                    pixel = kGreen;
                    break;
                case 'b':
                    pixel = kBlue;
                    break;
                default:
                    break;
            }
            image.pixels[y * rows[y].size() + x] = pixel;
        }
    }
    return image;
}

// A pixmap made from rows of legend characters.
struct Pixmap {
    explicit Pixmap(const std::vector<std::string>& rows)
        : resources(With(ImageOf(rows))), world(resources, 1) {}
    static ImageResources With(PixelImage image) {
        ImageResources resources;
        resources.AddImage(1, std::move(image));
        return resources;
    }
    ImageResources resources;
    OGWorld world;
};

// ---- CopyBits

TEST(SoftwareCopy, CopyBitsPutsTheSourceRectangleAtTheDestinationThroughTheOrigin) {
    Pixmap source({"rgb",  //
                   "bgr"});
    SoftwareContext window(6, 4);
    window.SetOrigin({-1, -1});
    window.CopyBits(source.world, {1, 0, 3, 2}, {2, 1}, true);
    EXPECT_EQ(Picture(window, window.GetBounds(), kLegend), Rows({"......",  //
                                                                  "......",  //
                                                                  "...gb.",  //
                                                                  "...gr."}));
}

TEST(SoftwareCopy, APartOfTheSourceRectangleOffTheSourceIsNotCopied) {
    Pixmap source({"rg",  //
                   "gb"});
    SoftwareContext window(5, 4);
    window.CopyBits(source.world, {-1, -1, 3, 3}, {0, 0}, true);
    EXPECT_EQ(Picture(window, window.GetBounds(), kLegend), Rows({".....",  //
                                                                  ".rg..",  //
                                                                  ".gb..",  //
                                                                  "....."}));
}

TEST(SoftwareCopy, ACopyWithinOneSurfaceReadsWhatWasThereBefore) {
    Pixmap strip({"rgb..."});
    strip.world.CopyBits(strip.world, {0, 0, 4, 1}, {2, 0}, true);
    EXPECT_EQ(Picture(strip.world, strip.world.GetBounds(), kLegend), Rows({"rgrgb."}));
}

TEST(SoftwareCopy, CopiesStayInsideTheClip) {
    Pixmap source({"rrrr", "rrrr"});
    SoftwareContext window(4, 2);
    window.SetClipRect({1, 0, 3, 1});
    window.CopyBits(source.world, {0, 0, 4, 2}, {0, 0}, true);
    EXPECT_EQ(Picture(window, window.GetBounds(), kLegend), Rows({".rr.", "...."}));
}

TEST(SoftwareCopy, CopyBitsWithResetColoursLeavesBlackAndWhiteForTheNextDrawing) {
    Pixmap source({"r"});
    SoftwareContext window(2, 1);
    window.SetForeColor({0, 0xFFFF, 0});
    window.CopyBits(source.world, {0, 0, 1, 1}, {0, 0}, true);
    window.FillRect({1, 0, 2, 1});
    EXPECT_EQ(window.GetPixel(1, 0), 0u);  // black foreground
}

// ---- CopyMaskedBits

TEST(SoftwareCopy, MaskedCopyKeepsWhatLayUnderTheMasksWhiteParts) {
    Pixmap source({"rrrr", "rrrr"});
    Pixmap mask({"#..#", "##.."});
    Pixmap window({"gggg", "bbbb"});
    window.world.CopyMaskedBits(source.world, {0, 0, 4, 2}, mask.world, {0, 0}, {0, 0}, true);
    EXPECT_EQ(Picture(window.world, window.world.GetBounds(), kLegend), Rows({"grrg",  //
                                                                              "bbrr"}));
}

// A slider's thumb: the pixmap holds the image and beside it its own mask.
TEST(SoftwareCopy, APixmapCanBeItsOwnMask) {
    Pixmap thumb({"bbbb#..#",  //
                  "bbbb....",  //
                  "bbbb#..#"});
    Pixmap window({"gggggg", "gggggg", "gggggg"});
    window.world.SetOrigin({-1, 0});
    window.world.CopyMaskedBits(thumb.world, {0, 0, 4, 3}, thumb.world, {4, 0}, {0, 0}, true);
    EXPECT_EQ(Picture(window.world, window.world.GetBounds(), kLegend), Rows({"ggbbgg",  //
                                                                              "gbbbbg",  //
                                                                              "ggbbgg"}));
}

// Grey in the mask mixes bit by bit: its set bits keep the destination's bits, its clear bits
// take the source's.
TEST(SoftwareCopy, MaskedCopyCombinesByBits) {
    PixelImage dest(1, 1, 0x123456);
    PixelImage source(1, 1, 0xABCDEF);
    PixelImage mask(1, 1, 0xF0F0F0);
    ImageResources resources;
    resources.AddImage(1, dest);
    resources.AddImage(2, source);
    resources.AddImage(3, mask);
    OGWorld window(resources, 1);
    window.CopyMaskedBits(OGWorld(resources, 2), {0, 0, 1, 1}, OGWorld(resources, 3), {0, 0},
                          {0, 0}, false);
    EXPECT_EQ(window.GetPixel(0, 0), 0x1B3D5Fu);
}

TEST(SoftwareCopy, MaskedCopyTouchesOnlyPixelsThatSourceAndMaskBothHave) {
    Pixmap source({"rrr", "rrr", "rrr"});
    Pixmap mask({"..", ".."});
    Pixmap window({"ggg", "ggg", "ggg"});
    window.world.CopyMaskedBits(source.world, {0, 0, 3, 3}, mask.world, {-1, 0}, {0, 0}, true);
    EXPECT_EQ(Picture(window.world, window.world.GetBounds(), kLegend), Rows({"grr",  //
                                                                              "grr",  //
                                                                              "ggg"}));
}

// ---- Reading pixels

TEST(SoftwarePixels, GetPixelColorAnswersTheLowBytesThroughTheOrigin) {
    SoftwareContext surface(3, 2);
    surface.SetForeColor({0x1234, 0xFF80, 0x0001});  // only the low bytes reach the surface
    surface.FillRect({1, 1, 2, 2});
    EXPECT_EQ(surface.GetPixel(1, 1), MakePixel(0x34, 0x80, 0x01));
    surface.SetOrigin({-1, -1});
    EXPECT_EQ(surface.GetPixelColor({0, 0}), (RGBColor{0x34, 0x80, 0x01}));
    EXPECT_EQ(surface.GetPixelColor({-1, -1}), (RGBColor{0, 0, 0}));
    EXPECT_EQ(surface.GetPixelColor({2, 0}), (RGBColor{0xFF, 0xFF, 0xFF}));  // off the surface
}

// ---- Resources

TEST(SoftwareResources, DrawResourcePutsTheImageAtTheLeftTopLimitedToTheRectangle) {
    ImageResources resources;
    resources.AddImage(8000, ImageOf({"rgb", "bgr"}));
    SoftwareContext surface(5, 4, &resources);
    surface.SetOrigin({0, -1});
    surface.DrawResource(8000, {1, 0, 3, 5});
    EXPECT_EQ(Picture(surface, surface.GetBounds(), kLegend), Rows({".....",  //
                                                                    ".rg..",  //
                                                                    ".bg..",  //
                                                                    "....."}));
}

TEST(SoftwareResources, AnImageThatCannotBeHadRaisesResAlloc) {
    ImageResources resources;
    const std::uint8_t notPng[] = {1, 2, 3, 4, 5, 6, 7, 8, 9};
    resources.AddPng(5, notPng);
    SoftwareContext surface(4, 4, &resources);
    EXPECT_THROW(surface.DrawResource(6, {0, 0, 4, 4}), AppFrame::ResAlloc);
    EXPECT_THROW(surface.DrawResource(5, {0, 0, 4, 4}), AppFrame::ResAlloc);
    EXPECT_THROW(OGWorld(resources, 5), AppFrame::ResAlloc);
    SoftwareContext withoutResources(4, 4);
    EXPECT_THROW(withoutResources.DrawResource(6, {0, 0, 4, 4}), AppFrame::ResAlloc);
}

TEST(SoftwareResources, APngResourceIsDecodedOnFirstUse) {
    const std::vector<std::uint8_t> png = EncodePng(ImageOf({"r.", ".b"}));
    ImageResources resources;
    resources.AddPng(2200, png);
    OGWorld pixmap(resources, 2200);
    EXPECT_EQ(pixmap.GetBounds(), (Rect{0, 0, 2, 2}));
    EXPECT_EQ(Picture(pixmap, pixmap.GetBounds(), kLegend), Rows({"r.", ".b"}));
}

// ---- Offscreen buffers

TEST(SoftwareOffscreen, ResizingToTheSameSizeKeepsThePixelsAndAnyOtherSizeClearsThem) {
    OGWorld buffer({0, 0, 3, 2});
    buffer.SetForeColor(kWhite);
    buffer.FillRect({0, 0, 1, 1});
    buffer.SetBounds({10, 10, 13, 12});
    EXPECT_EQ(Picture(buffer), Rows({"#..", "..."}));
    buffer.SetBounds({0, 0, 4, 2});
    EXPECT_EQ(buffer.GetBounds(), (Rect{0, 0, 4, 2}));
    EXPECT_EQ(Picture(buffer), Rows({"....", "...."}));
    buffer.FillRect({3, 1, 4, 2});  // the clip grew with the buffer
    EXPECT_EQ(Picture(buffer), Rows({"....", "...#"}));
}

TEST(SoftwareOffscreen, ABufferBeyondTheReachOfSixteenBitCoordinatesIsRefused) {
    EXPECT_THROW(OGWorld({0, 0, 40000, 2}), AppFrame::ResAlloc);
    OGWorld buffer({0, 0, 2, 1});
    buffer.SetForeColor(kWhite);
    buffer.FillRect({0, 0, 1, 1});
    EXPECT_THROW(buffer.SetBounds({0, 0, 2, 40000}), AppFrame::ResAlloc);
    EXPECT_EQ(Picture(buffer), Rows({"#."}));  // the old buffer stays
}

TEST(SoftwareOffscreen, AnOffscreenSurfaceHasNoWindow) {
    OGWorld buffer({0, 0, 4, 4});
    EXPECT_EQ(buffer.GetMousePoint(), (Point{0, 0}));
    EXPECT_FALSE(buffer.IsControlDown() || buffer.IsShiftDown() || buffer.IsControlShiftDown() ||
                 buffer.IsOptionDown());
    EXPECT_TRUE(buffer.ScrollBits({0, 0, 4, 4}, {0, 1}).IsEmpty());
    std::string data = "kept";
    EXPECT_FALSE(buffer.LoadSettingsFile(data, ".vrx"));
    EXPECT_EQ(data, "kept");
    EXPECT_FALSE(buffer.SaveSettingsFile("x", "name", ".vrx"));
}

TEST(SoftwareOffscreen, DeleteContextDeletesASurfaceMadeForThisOne) {
    struct Watched : OGWorld {
        explicit Watched(bool* gone) : OGWorld({0, 0, 1, 1}), gone(gone) {}
        ~Watched() override { *gone = true; }
        bool* gone;
    };
    bool gone = false;
    OGWorld window({0, 0, 1, 1});
    window.DeleteContext(new Watched(&gone));
    EXPECT_TRUE(gone);
    window.DeleteContext(nullptr);
}

TEST(SoftwareOffscreen, BeginAndEndDrawNestAndTheCountNeverGoesBelowZero) {
    OGWorld buffer({0, 0, 1, 1});
    buffer.BeginDraw();
    buffer.BeginDraw();
    EXPECT_EQ(buffer.GetDrawDepth(), 2);
    buffer.EndDraw();
    buffer.EndDraw();
    buffer.EndDraw();
    EXPECT_EQ(buffer.GetDrawDepth(), 0);
    buffer.BeginDraw();
    EXPECT_EQ(buffer.GetDrawDepth(), 1);
}

}  // namespace
}  // namespace vorix
