// Lines, rectangles and ovals of the software surface, pixel by pixel; the origin and the clip.
#include <gtest/gtest.h>

#include <cstdlib>
#include <set>
#include <utility>

#include "SurfacePicture.h"
#include "platform/SoftwareContext.h"
#include "platform/SoftwareRegion.h"

namespace vorix {
namespace {

using test::kInkColor;
using test::Picture;
using test::Rows;

// A black surface with white ink.
struct Canvas : SoftwareContext {
    Canvas(std::int32_t width, std::int32_t height) : SoftwareContext(width, height) {
        SetForeColor(kInkColor);
    }
    void Line(Point from, Point to) {
        MoveTo(from);
        LineTo(to);
    }
};

// ---- LineTo

TEST(SoftwareLines, LineToPaintsBothEndsAndLeavesThePenAtTheEnd) {
    Canvas canvas(6, 3);
    canvas.Line({1, 1}, {4, 1});
    EXPECT_EQ(Picture(canvas), Rows({"......",  //
                                     ".####.",  //
                                     "......"}));
    EXPECT_EQ(canvas.GetPen(), (Point{4, 1}));
}

TEST(SoftwareLines, ALineToThePenItselfPaintsThatOnePixel) {
    Canvas canvas(3, 3);
    canvas.Line({1, 2}, {1, 2});
    EXPECT_EQ(Picture(canvas), Rows({"...",  //
                                     "...",  //
                                     ".#."}));
}

TEST(SoftwareLines, APolylineGoesOnFromWhereTheLastLineEnded) {
    Canvas canvas(5, 4);
    canvas.MoveTo({0, 0});
    canvas.LineTo({3, 0});
    canvas.LineTo({3, 3});
    canvas.LineTo({1, 1});
    EXPECT_EQ(Picture(canvas), Rows({"####.",  //
                                     ".#.#.",  //
                                     "..##.",  //
                                     "...#."}));
}

TEST(SoftwareLines, ASlantedLineStepsLikeABresenhamLine) {
    Canvas canvas(5, 3);
    canvas.Line({0, 0}, {4, 2});
    EXPECT_EQ(Picture(canvas), Rows({"#....",  //
                                     ".##..",  //
                                     "...##"}));
    Canvas steep(3, 5);
    steep.Line({0, 0}, {2, 4});
    EXPECT_EQ(Picture(steep), Rows({"#..",  //
                                    ".#.",  //
                                    ".#.",  //
                                    "..#",  //
                                    "..#"}));
}

// In every direction: one pixel per step of the longer axis, both ends included, each pixel
// touching the one before.
TEST(SoftwareLines, EveryDirectionPaintsAnUnbrokenLineOfOnePixelPerStep) {
    for (std::int32_t dx = -7; dx <= 7; ++dx) {
        for (std::int32_t dy = -7; dy <= 7; ++dy) {
            SCOPED_TRACE(testing::Message() << "to (+" << dx << ", +" << dy << ")");
            Canvas canvas(17, 17);
            canvas.Line({8, 8}, {8 + dx, 8 + dy});
            const std::vector<Point> inked = test::InkedPixels(canvas);
            EXPECT_EQ(inked.size(),
                      static_cast<std::size_t>(std::max(std::abs(dx), std::abs(dy)) + 1));
            EXPECT_EQ(canvas.GetPixel(8, 8), test::kInk);
            EXPECT_EQ(canvas.GetPixel(8 + dx, 8 + dy), test::kInk);
            // Each inked pixel but the ends has exactly two inked neighbours (8-connected).
            for (Point p : inked) {
                int neighbours = 0;
                for (Point q : inked) {
                    if (!(p == q) && std::abs(p.x - q.x) <= 1 && std::abs(p.y - q.y) <= 1) {
                        ++neighbours;
                    }
                }
                const bool end = p == Point{8, 8} || p == Point{8 + dx, 8 + dy};
                if (inked.size() > 1) {
                    EXPECT_EQ(neighbours, end ? 1 : 2) << p.x << "," << p.y;
                }
            }
        }
    }
}

// A curve point far below the plot (a magnitude of zero) draws a line across the whole
// surface and beyond; only its visible part is painted, from either direction.
TEST(SoftwareLines, LinesFarBeyondTheSurfacePaintOnlyTheirVisiblePart) {
    Canvas down(6, 4);
    down.Line({2, -30000}, {2, 30000});
    Canvas up(6, 4);
    up.Line({2, 30000}, {2, -30000});
    const std::string column = Rows({"..#...", "..#...", "..#...", "..#..."});
    EXPECT_EQ(Picture(down), column);
    EXPECT_EQ(Picture(up), column);

    // 60000 steps along x climbing 2 rows: the middle third of the climb lies on row 2.
    Canvas across(6, 4);
    across.Line({-30000, 1}, {30000, 3});
    EXPECT_EQ(Picture(across), Rows({"......", "......", "######", "......"}));
}

// ---- Rectangles

TEST(SoftwareRects, FillRectLeavesTheRightColumnAndBottomRowAlone) {
    Canvas canvas(6, 4);
    canvas.FillRect({1, 1, 4, 3});
    EXPECT_EQ(Picture(canvas), Rows({"......",  //
                                     ".###..",  //
                                     ".###..",  //
                                     "......"}));
}

TEST(SoftwareRects, FrameRectOutlinesTheRectangleInsetByOneOnEverySide) {
    Canvas canvas(7, 6);
    canvas.FrameRect({0, 0, 7, 6});
    EXPECT_EQ(Picture(canvas), Rows({".......",  //
                                     ".#####.",  //
                                     ".#...#.",  //
                                     ".#...#.",  //
                                     ".#####.",  //
                                     "......."}));

    Canvas small(4, 4);
    small.FrameRect({0, 0, 3, 3});  // inset to the one pixel (1, 1)
    small.FrameRect({2, 0, 4, 4});  // inset to nothing: two wide
    EXPECT_EQ(Picture(small), Rows({"....", ".#..", "....", "...."}));
}

TEST(SoftwareRects, EmptyAndInvertedRectanglesPaintNothing) {
    Canvas canvas(5, 5);
    canvas.FillRect({3, 1, 3, 4});
    canvas.FillRect({4, 4, 1, 1});
    canvas.FillOval({4, 4, 1, 1});
    canvas.FrameOval({1, 1, 1, 4});
    canvas.FrameRect({4, 4, 0, 0});
    EXPECT_TRUE(test::InkedPixels(canvas).empty());
}

// ---- Ovals

TEST(SoftwareOvals, ASmallCircleIsRoundAndItsOutlineIsTheRimOfTheFill) {
    Canvas filled(6, 6);
    filled.FillOval({0, 0, 6, 6});
    EXPECT_EQ(Picture(filled), Rows({"..##..",  //
                                     ".####.",  //
                                     "######",  //
                                     "######",  //
                                     ".####.",  //
                                     "..##.."}));
    Canvas framed(6, 6);
    framed.FrameOval({0, 0, 6, 6});
    EXPECT_EQ(Picture(framed), Rows({"..##..",  //
                                     ".#..#.",  //
                                     "#....#",  //
                                     "#....#",  //
                                     ".#..#.",  //
                                     "..##.."}));
}

// For every size up to 16 by 16: the oval touches all four sides of its rectangle and nothing
// outside it, is symmetric about both axes, widens row by row towards the middle, and its
// outline is exactly the pixels of the filled oval that have a side neighbour outside it.
TEST(SoftwareOvals, EverySizeStaysWithinTouchesAndMirrorsItsRectangle) {
    for (std::int32_t width = 1; width <= 16; ++width) {
        for (std::int32_t height = 1; height <= 16; ++height) {
            SCOPED_TRACE(testing::Message() << width << " x " << height);
            const Rect box{3, 2, 3 + width, 2 + height};
            Canvas filled(22, 20);
            filled.FillOval(box);
            Canvas framed(22, 20);
            framed.FrameOval(box);
            EXPECT_EQ(test::InkBox(filled), box);
            EXPECT_EQ(test::InkBox(framed), box);

            auto in = [&](std::int32_t x, std::int32_t y) {
                return box.Contains({x, y}) && filled.GetPixel(x, y) == test::kInk;
            };
            std::int32_t previousSpan = 0;
            for (std::int32_t y = box.top; y < box.bottom; ++y) {
                std::int32_t span = 0;
                for (std::int32_t x = box.left; x < box.right; ++x) {
                    const std::int32_t mirrorX = box.left + box.right - 1 - x;
                    const std::int32_t mirrorY = box.top + box.bottom - 1 - y;
                    EXPECT_EQ(in(x, y), in(mirrorX, y));
                    EXPECT_EQ(in(x, y), in(x, mirrorY));
                    const bool rim = in(x, y) && (!in(x - 1, y) || !in(x + 1, y) || !in(x, y - 1) ||
                                                  !in(x, y + 1));
                    EXPECT_EQ(framed.GetPixel(x, y) == test::kInk, rim) << x << "," << y;
                    if (in(x, y)) ++span;
                }
                if (2 * y < box.top + box.bottom - 1) {
                    EXPECT_GE(span, previousSpan);
                }
                previousSpan = span;
            }
        }
    }
}

// ---- Origin

TEST(SoftwareOrigin, TheOriginIsSubtractedFromEveryCoordinate) {
    Canvas canvas(8, 6);
    canvas.SetOrigin({-4, -2});  // a frame at (4, 2) of the window draws in its own coordinates
    canvas.FillRect({0, 0, 2, 1});
    canvas.Line({0, 2}, {3, 2});
    canvas.FrameRect({-4, -2, -1, 1});            // inset to the window's pixel (1, 1)
    EXPECT_EQ(Picture(canvas), Rows({"........",  //
                                     ".#......",  //
                                     "....##..",  //
                                     "........",  //
                                     "....####",  //
                                     "........"}));
    EXPECT_EQ(canvas.ToSurfaceRect({0, 0, 2, 1}), (Rect{4, 2, 6, 3}));
}

TEST(SoftwareOrigin, ThePenKeepsTheSurfacePlaceItWasGivenUnderTheOldOrigin) {
    Canvas canvas(6, 3);
    canvas.SetOrigin({-3, 0});
    canvas.MoveTo({0, 1});  // the surface's (3, 1)
    canvas.SetOrigin({0, 0});
    canvas.LineTo({0, 1});
    EXPECT_EQ(Picture(canvas), Rows({"......", "####..", "......"}));
}

// Coordinates minus the origin are taken in 16 bits, wrapping as the window system's do.
TEST(SoftwareOrigin, CoordinatesWrapAroundInSixteenBits) {
    Canvas canvas(6, 3);
    canvas.Line({65536 + 1, 1}, {65536 + 2, 1});
    canvas.SetOrigin({65536, -65536});
    canvas.FillRect({4, -65536, 5, -65536 + 1});
    EXPECT_EQ(Picture(canvas), Rows({"....#.", ".##...", "......"}));
    // A rectangle whose right edge wraps below its left covers nothing.
    canvas.SetOrigin({0, 0});
    canvas.FillRect({0, 0, 40000, 3});
    EXPECT_EQ(Picture(canvas), Rows({"....#.", ".##...", "......"}));
}

// ---- Clip

TEST(SoftwareClip, ARectangularClipIsGivenInDrawingCoordinates) {
    Canvas canvas(6, 4);
    canvas.SetOrigin({-1, -1});
    canvas.SetClipRect({1, 0, 3, 2});  // the surface's (2, 1) to (4, 3)
    canvas.FillRect({-10, -10, 10, 10});
    EXPECT_EQ(Picture(canvas), Rows({"......", "..##..", "..##..", "......"}));

    canvas.ClearClip();
    canvas.SetOrigin({0, 0});
    canvas.FillRect({0, 3, 1, 4});
    EXPECT_EQ(Picture(canvas), Rows({"......", "..##..", "..##..", "#....."}));
}

TEST(SoftwareClip, EveryOperationStaysInsideARegionClip) {
    Canvas canvas(8, 5);
    SoftwareRegion region;
    region.SetRect({0, 0, 8, 5});
    SoftwareRegion hole;
    hole.SetRect({2, 1, 6, 4});
    region.Subtract(hole);
    canvas.ApplyClipRegion(region);  // surface coordinates: the origin does not apply
    canvas.SetOrigin({5, 5});
    canvas.FillRect({5, 5, 13, 10});
    EXPECT_EQ(Picture(canvas), Rows({"########",  //
                                     "##....##",  //
                                     "##....##",  //
                                     "##....##",  //
                                     "########"}));

    Canvas lines(8, 5);
    lines.ApplyClipRegion(region);
    lines.Line({0, 2}, {7, 2});
    lines.FillOval({0, 0, 8, 5});
    lines.FrameRect({-1, -1, 9, 6});
    EXPECT_EQ(Picture(lines), Rows({"########",  //
                                    "##....##",  //
                                    "##....##",  //
                                    "##....##",  //
                                    "########"}));
}

TEST(SoftwareClip, AnEmptyClipPaintsNothing) {
    Canvas canvas(4, 4);
    canvas.SetClipRect({2, 2, 2, 4});
    canvas.FillRect({0, 0, 4, 4});
    canvas.Line({0, 0}, {3, 3});
    canvas.FillOval({0, 0, 4, 4});
    SoftwareRegion nothing;
    nothing.Clear();
    canvas.ApplyClipRegion(nothing);
    canvas.FillRect({0, 0, 4, 4});
    EXPECT_TRUE(test::InkedPixels(canvas).empty());
}

// The floating rectangles of the surface: what floats above the frame that paints is clipped
// away, what lies beneath is not, whatever order they came in.
TEST(SoftwareClip, SetClipKeepsDrawingOffWhatFloatsAbove) {
    Canvas canvas(6, 2);
    int lower = 0;
    int upper = 0;
    canvas.AddFloatingRect(&upper, {4, 0, 6, 2}, 2);
    canvas.AddFloatingRect(&lower, {1, 0, 3, 2}, 1);

    canvas.SetClip({0, 0, 6, 2});  // the main frame: clipped by both
    canvas.FillRect({0, 0, 6, 2});
    EXPECT_EQ(Picture(canvas), Rows({"#..#..", "#..#.."}));

    canvas.SuspendFloatingRect(&lower, true);  // the lower floating frame paints itself
    canvas.SetClip({0, 1, 6, 2});
    canvas.FillRect({0, 0, 6, 2});
    EXPECT_EQ(Picture(canvas), Rows({"#..#..", "####.."}));

    canvas.SuspendFloatingRect(&lower, false);
    canvas.SuspendFloatingRect(&upper, true);  // the top one paints: nothing above it
    canvas.SetOrigin({-1, 0});
    canvas.SetClip({3, 0, 5, 1});  // drawing coordinates: the surface's (4, 0) to (6, 1)
    canvas.FillRect({-1, 0, 5, 2});
    EXPECT_EQ(Picture(canvas), Rows({"#..###", "####.."}));

    canvas.ClearFloatingRects();
    canvas.SetOrigin({0, 0});
    canvas.SetClip({0, 0, 6, 2});
    canvas.FillRect({0, 0, 6, 2});
    EXPECT_EQ(Picture(canvas), Rows({"######", "######"}));
}

// ---- Regions

// Random rectangles combined by region operations and by sets of pixels give the same pixels,
// and a region's rectangles never overlap.
TEST(SoftwareRegions, OperationsAgreeWithSetsOfPixels) {
    using Pixels = std::set<std::pair<int, int>>;
    auto pixelsOf = [](const SoftwareRegion& region) {
        Pixels pixels;
        std::size_t area = 0;
        for (const Rect& r : region.GetRects()) {
            area += static_cast<std::size_t>(r.Width() * r.Height());
            for (int y = r.top; y < r.bottom; ++y) {
                for (int x = r.left; x < r.right; ++x)
                    pixels.insert({x, y});
            }
        }
        EXPECT_EQ(area, pixels.size()) << "overlapping rectangles";
        return pixels;
    };
    auto pixelsOfRect = [](const Rect& r) {
        Pixels pixels;
        for (int y = r.top; y < r.bottom; ++y) {
            for (int x = r.left; x < r.right; ++x)
                pixels.insert({x, y});
        }
        return pixels;
    };
    std::uint32_t seed = 12345;
    auto next = [&seed](int range) {
        seed = seed * 1664525u + 1013904223u;
        return static_cast<int>((seed >> 8) % static_cast<std::uint32_t>(range));
    };
    auto randomRect = [&] {
        const int left = next(12), top = next(12);
        return Rect{left, top, left + next(8), top + next(8)};
    };

    for (int round = 0; round < 300; ++round) {
        SoftwareRegion region;
        region.Clear();
        Pixels expected;
        for (int step = 0; step < 6; ++step) {
            const Rect rect = randomRect();
            SoftwareRegion operand;
            operand.SetRect(rect);
            const Pixels rectPixels = pixelsOfRect(rect);
            Pixels result;
            switch (next(3)) {
                case 0:
                    region.Union(operand);
                    result = expected;
                    result.insert(rectPixels.begin(), rectPixels.end());
                    break;
                case 1:
                    region.Subtract(operand);
                    for (auto p : expected) {
                        if (!rectPixels.count(p)) result.insert(p);
                    }
                    break;
                default:
                    region.Intersect(operand);
                    for (auto p : expected) {
                        if (rectPixels.count(p)) result.insert(p);
                    }
                    break;
            }
            expected = result;
            ASSERT_EQ(pixelsOf(region), expected) << "round " << round << " step " << step;
            ASSERT_EQ(region.IsEmpty(), expected.empty());
        }
    }
}

TEST(SoftwareRegions, ANewRegionIsTheOnePixelAtTheOrigin) {
    SoftwareRegion region;
    EXPECT_FALSE(region.IsEmpty());
    EXPECT_EQ(region.GetBoundingRect(), (Rect{0, 0, 1, 1}));
    region.SetRect({3, 3, 3, 9});
    EXPECT_TRUE(region.IsEmpty());
}

}  // namespace
}  // namespace vorix
