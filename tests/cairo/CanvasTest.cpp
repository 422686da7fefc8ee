#include "tests/support/Paper.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

constexpr Pixel clear{};
constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

const CGRect strangeRects[] = {
    {{0, 0}, {0, 10}},  {{0, 0}, {10, 0}},       {{5, 5}, {-3, 4}},
    {{nan, 0}, {5, 5}}, {{0, nan}, {5, 5}},      {{0, 0}, {nan, 5}},
    {{0, 0}, {5, nan}}, {{infinity, 0}, {5, 5}}, {{-infinity, 0}, {infinity, 5}},
};

TEST(CairoCanvas, FillsExactlyTheRectangle) {
    Paper paper(10, 10);
    paper.canvas().fill(CGRectMake(2, 3, 4, 5), UIColor::redColor());
    EXPECT_EQ(paper.at(2, 3), redPixel);
    EXPECT_EQ(paper.at(5, 7), redPixel);
    EXPECT_EQ(paper.inked(), 20);
}

TEST(CairoCanvas, CountsInPointsOfItsScale) {
    Paper paper(10, 10, 3);
    EXPECT_EQ(paper.canvas().scale(), 3);
    paper.canvas().fill(CGRectMake(1, 1, 1, 2), UIColor::redColor());
    EXPECT_EQ(paper.inked(), 3 * 6);
    EXPECT_EQ(paper.at(3, 3), redPixel);
}

TEST(CairoCanvas, WorksOnASurfaceWithADeviceScale) {
    const painting::CairoSurface surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, 20, 20));
    cairo_surface_set_device_scale(surface.get(), 2, 2);
    const painting::CairoContext context(cairo_create(surface.get()));
    painting::CairoCanvas(context.get(), 2).clip(CGRectMake(0, 0, 1, 1));
    painting::CairoCanvas canvas(context.get(), 2);
    canvas.clip(CGRectMake(0.6, 0, 1, 20));  // 1.2 to 3.2 pixels
    canvas.fill(CGRectMake(0, 0, 10, 10), UIColor::redColor());
    cairo_surface_flush(surface.get());
    const unsigned char* row = cairo_image_surface_get_data(surface.get());
    EXPECT_EQ(row[4 * 0 + 3], 0);
    EXPECT_EQ(row[4 * 1 + 3], 255);
    EXPECT_EQ(row[4 * 2 + 3], 255);
    EXPECT_EQ(row[4 * 3 + 3], 0);
}

TEST(CairoCanvas, TakesColorsOutsideTheirRangeAsTheNearest) {
    Paper paper(2, 1);
    paper.canvas().fill(CGRectMake(0, 0, 1, 1), {7, -2, nan, 3});
    EXPECT_EQ(paper.at(0, 0), redPixel);
    paper.canvas().fill(CGRectMake(1, 0, 1, 1), {1, 1, 1, nan});
    EXPECT_EQ(paper.at(1, 0), clear);
}

TEST(CairoCanvas, PaintsNothingForStrangeRectanglesAndGoesOn) {
    const painting::CairoBitmap bitmap = bitmapOf(4, 4, [](int, int) { return 0xffffffffU; });
    for (const CGRect& rect : strangeRects) {
        Paper paper(10, 10);
        Canvas& canvas = paper.canvas();
        canvas.fill(rect, UIColor::redColor());
        canvas.fillRounded(rect, 3, UIColor::redColor());
        canvas.strokeRounded(rect, 3, 1, UIColor::redColor());
        canvas.fillShadow(rect, 3, 2, UIColor::redColor());
        canvas.drawBitmap(bitmap, CGRectMake(0, 0, 4, 4), rect, std::nullopt);
        canvas.drawText("text", UIFont{}, UIColor::redColor(), rect, NSTextAlignment::Natural);
        EXPECT_EQ(paper.inked(), 0);
        canvas.fill(CGRectMake(0, 0, 1, 1), UIColor::redColor());
        EXPECT_EQ(paper.inked(), 1);
    }
}

TEST(CairoCanvas, FillsPolygonsButWhereTheyLieInEachOther) {
    Paper paper(10, 10);
    const Polygon outside = {{0, 0}, {8, 0}, {8, 8}, {0, 8}};
    const Polygon inside = {{2, 2}, {6, 2}, {6, 6}, {2, 6}};
    const Polygon nowhere = {{0, 0}, {nan, 5}, {infinity, 0}};
    paper.canvas().fillPolygons({outside, nowhere, inside, {}}, UIColor::redColor());
    EXPECT_EQ(paper.inked(), 64 - 16);
    EXPECT_EQ(paper.at(1, 1), redPixel);
    EXPECT_EQ(paper.at(4, 4), clear);
}

TEST(CairoCanvas, FillsWhatIsVisibleOfAGiganticRectangle) {
    for (const double size : {1e5, 1e9, 1e300, infinity}) {
        Paper paper(4, 4);
        paper.canvas().fill({{-10, -10}, {CGFloat(size), CGFloat(size)}}, UIColor::redColor());
        EXPECT_EQ(paper.inked(), 16) << size;
    }
}

TEST(CairoCanvas, ClipsToARectangleAndToTheOneBefore) {
    Paper paper(10, 10);
    paper.canvas().clip(CGRectMake(0, 0, 5, 5));
    paper.canvas().clip(CGRectMake(3, 3, 5, 5));
    paper.canvas().fill(CGRectMake(0, 0, 10, 10), UIColor::redColor());
    EXPECT_EQ(paper.inked(), 4);
    EXPECT_EQ(paper.at(3, 3), redPixel);
}

TEST(CairoCanvas, ClipsEverythingAwayByAStrangeRectangle) {
    for (const CGRect& rect : strangeRects) {
        Paper paper(10, 10);
        paper.canvas().clip(rect);
        paper.canvas().fill(CGRectMake(0, 0, 10, 10), UIColor::redColor());
        EXPECT_EQ(paper.inked(), 0);
    }
}

TEST(CairoCanvas, MovesClipsToWholePixelsSoThatNeighboursHaveNoSeam) {
    Paper paper(10, 1);
    for (const CGRect& part : {CGRectMake(0, 0, 4.4, 1), CGRectMake(4.4, 0, 5.6, 1)}) {
        paper.canvas().save();
        paper.canvas().clip(part);
        paper.canvas().fill(CGRectMake(0, 0, 10, 1), {1, 0, 0, 0.5});
        paper.canvas().restore();
    }
    for (int x = 0; x < 10; ++x)
        EXPECT_EQ(paper.alphaAt(x, 0), 128) << x;
}

void clipToTwo(Paper& paper) {
    cairo_rectangle(paper.context(), 0, 0, 10, 10);
    cairo_rectangle(paper.context(), 30, 30, 10, 10);
    cairo_clip(paper.context());
}

TEST(CairoCanvas, KnowsWhatOfItCanBeSeen) {
    Paper paper(40, 40, 2);
    clipToTwo(paper);
    painting::CairoCanvas canvas(paper.context(), 2);
    EXPECT_TRUE(canvas.isVisible(CGRectMake(9, 9, 5, 5)));
    EXPECT_FALSE(canvas.isVisible(CGRectMake(10, 0, 5, 10)));
    EXPECT_FALSE(canvas.isVisible(CGRectMake(12, 12, 18, 18))) << "it lies between the two";
    EXPECT_TRUE(canvas.isVisible(CGRectMake(12, 12, 19, 19)));
    EXPECT_FALSE(canvas.isVisible(CGRectMake(5, 5, 0, 0)));
    canvas.translate(-20, -20);
    EXPECT_TRUE(canvas.isVisible(CGRectMake(25, 25, 1, 1)));
    EXPECT_FALSE(canvas.isVisible(CGRectMake(5, 5, 1, 1)));
    canvas.translate(100, 0);
    EXPECT_FALSE(canvas.isVisible(CGRectMake(0, 0, 40, 40)));
}

TEST(CairoCanvas, ClipsThoseOfItsPartsThatLieOutside) {
    struct Case {
        CGRect clip;
        int inked;
    };
    for (const Case& each :
         {Case{CGRectMake(-5, -5, 50, 50), 200}, Case{CGRectMake(0, 0, 40, 40), 200},
          Case{CGRectMake(0, 0, 39, 40), 190}, Case{CGRectMake(0, 1, 40, 39), 190},
          Case{CGRectMake(0, 0, 15, 15), 100}, Case{CGRectMake(25, 25, 15, 15), 100},
          Case{CGRectMake(12, 12, 12, 12), 0}}) {
        Paper paper(40, 40);
        clipToTwo(paper);
        painting::CairoCanvas canvas(paper.context(), 1);
        canvas.translate(7, 3);
        canvas.clip(CGRectOffset(each.clip, -7, -3));
        canvas.fill(CGRectMake(-10, -10, 60, 60), UIColor::redColor());
        EXPECT_EQ(paper.inked(), each.inked) << CGRectGetMaxX(each.clip);
    }
}

TEST(CairoCanvas, SeesAllOfASurfaceThatNothingClips) {
    Paper paper(10, 10);
    EXPECT_TRUE(paper.canvas().isVisible(CGRectMake(9, 9, 1, 1)));
    EXPECT_FALSE(paper.canvas().isVisible(CGRectMake(10, 9, 1, 1)));
    const painting::CairoSurface endless(
        cairo_recording_surface_create(CAIRO_CONTENT_COLOR_ALPHA, nullptr));
    const painting::CairoContext context(cairo_create(endless.get()));
    EXPECT_TRUE(painting::CairoCanvas(context.get(), 1).isVisible(CGRectMake(1000, 1000, 1, 1)));
}

class CairoPanel : public testing::TestWithParam<CGFloat> {};
INSTANTIATE_TEST_SUITE_P(WithABorder, CairoPanel, testing::Values(1, 1.5, 12, 20));

// Round corners are drawn only where they can be seen.
TEST_P(CairoPanel, IsDrawnInPiecesAsItIsAtOnce) {
    const auto drawPanel = [](painting::CairoCanvas& canvas) {
        const CGRect panel = CGRectMake(2, 3, 33, 31);
        canvas.fillRounded(panel, 9, UIColor::redColor());
        canvas.strokeRounded(panel, 9, GetParam(), UIColor::blueColor());
    };
    Paper whole(40, 40);
    drawPanel(whole.canvas());
    for (const int side : {1, 3, 7, 16}) {
        Paper pieces(40, 40);
        for (int x = 0; x < 40; x += side) {
            for (int y = 0; y < 40; y += side) {
                cairo_save(pieces.context());
                cairo_rectangle(pieces.context(), x, y, side, side);
                cairo_clip(pieces.context());
                painting::CairoCanvas canvas(pieces.context(), 1);
                drawPanel(canvas);
                cairo_restore(pieces.context());
            }
        }
        // The library itself smooths an edge a little otherwise in a small picture.
        constexpr int hair = 8;
        for (int x = 0; x < 40; ++x) {
            for (int y = 0; y < 40; ++y) {
                const Pixel piece = pieces.at(x, y);
                const Pixel wanted = whole.at(x, y);
                ASSERT_NEAR(piece.alpha, wanted.alpha, hair) << side << " at " << x << ", " << y;
                ASSERT_NEAR(piece.red, wanted.red, 3 * hair) << side << " at " << x << ", " << y;
            }
        }
    }
}

/// Whether the library is given anything to draw, also where it would come to nothing.
bool drawsABorder(const CGRect& seen, CGFloat radius) {
    const painting::CairoSurface record(
        cairo_recording_surface_create(CAIRO_CONTENT_COLOR_ALPHA, nullptr));
    const painting::CairoContext context(cairo_create(record.get()));
    cairo_rectangle(context.get(), seen.origin.x, seen.origin.y, seen.size.width, seen.size.height);
    cairo_clip(context.get());
    {
        painting::CairoCanvas canvas(context.get(), 1);
        canvas.translate(2, 3);
        canvas.strokeRounded(CGRectMake(0, 0, 33, 31), radius, 1.5, UIColor::redColor());
    }
    double left = 0;
    double top = 0;
    double width = 0;
    double height = 0;
    cairo_recording_surface_ink_extents(record.get(), &left, &top, &width, &height);
    return width > 0 && height > 0;
}

TEST(CairoCanvas, DrawsNoBorderWhereNoneOfItCanBeSeen) {
    for (const CGFloat radius : {0, 9}) {
        EXPECT_FALSE(drawsABorder(CGRectMake(11, 5, 15, 27), radius)) << "within the straight";
        EXPECT_FALSE(drawsABorder(CGRectMake(4, 12, 29, 13), radius)) << "within its width";
        EXPECT_TRUE(drawsABorder(CGRectMake(3, 12, 29, 13), radius)) << "half a pixel of it";
        EXPECT_TRUE(drawsABorder(CGRectMake(4, 12, 30, 13), radius)) << "the same on the right";
        EXPECT_TRUE(drawsABorder(CGRectMake(11, 4, 15, 27), radius)) << "and at the top";
        EXPECT_TRUE(drawsABorder(CGRectMake(11, 5, 15, 28), radius)) << "and at the bottom";
    }
    EXPECT_TRUE(drawsABorder(CGRectMake(4, 5, 15, 15), 9)) << "a corner reaches inside";
}

TEST(CairoCanvas, PaintsATranslucentBorderOnceWhereItsSidesMeet) {
    Paper paper(10, 10);
    cairo_rectangle(paper.context(), 1, 1, 8, 8);  // Without the corners, which are a pixel each.
    cairo_clip(paper.context());
    painting::CairoCanvas canvas(paper.context(), 1);
    canvas.strokeRounded(CGRectMake(0, 0, 10, 10), 1, 3, {1, 0, 0, 0.5});
    EXPECT_EQ(paper.inked(), 64 - 16);
    for (const int at : {1, 2, 5, 7, 8})
        for (const int side : {1, 2, 7, 8}) {
            EXPECT_EQ(paper.alphaAt(at, side), 128) << at << ' ' << side;
            EXPECT_EQ(paper.alphaAt(side, at), 128) << side << ' ' << at;
        }
}

TEST(CairoCanvas, RestoresOriginAndClip) {
    Paper paper(10, 10);
    paper.canvas().save();
    paper.canvas().translate(5, 5);
    paper.canvas().clip(CGRectMake(0, 0, 1, 1));
    paper.canvas().restore();
    paper.canvas().fill(CGRectMake(0, 0, 2, 2), UIColor::redColor());
    EXPECT_EQ(paper.inked(), 4);
    EXPECT_EQ(paper.at(0, 0), redPixel);
}

TEST(CairoCanvas, IgnoresARestoreTooManyAndATranslationThatIsNoNumber) {
    Paper paper(10, 10);
    paper.canvas().restore();
    paper.canvas().translate(nan, 0);
    paper.canvas().translate(0, infinity);
    paper.canvas().fill(CGRectMake(0, 0, 1, 1), UIColor::redColor());
    EXPECT_EQ(paper.at(0, 0), redPixel);
}

TEST(CairoCanvas, LeavesTheContextAsItWas) {
    Paper paper(10, 10);
    paper.canvas().save();
    paper.canvas().translate(5, 5);
    paper.canvas().clip(CGRectMake(0, 0, 1, 1));
    paper.freshCanvas().fill(CGRectMake(0, 0, 2, 2), UIColor::redColor());
    EXPECT_EQ(paper.inked(), 4);
    EXPECT_EQ(cairo_status(paper.context()), CAIRO_STATUS_SUCCESS);
}

TEST(CairoCanvas, RoundsTheCornersOnly) {
    Paper paper(20, 10);
    paper.canvas().fillRounded(CGRectMake(0, 0, 20, 10), 4, UIColor::redColor());
    for (const auto& [x, y] : {std::pair{0, 0}, {19, 0}, {0, 9}, {19, 9}}) {
        EXPECT_EQ(paper.alphaAt(x, y), 0) << x << ' ' << y;
    }
    EXPECT_EQ(paper.alphaAt(5, 0), 255);
    EXPECT_EQ(paper.alphaAt(0, 5), 255);
}

TEST(CairoCanvas, LimitsTheRadiusToHalfTheShorterSide) {
    Paper large(20, 10);
    large.canvas().fillRounded(CGRectMake(0, 0, 20, 10), 1000, UIColor::redColor());
    Paper half(20, 10);
    half.canvas().fillRounded(CGRectMake(0, 0, 20, 10), 5, UIColor::redColor());
    for (int x = 0; x < 20; ++x) {
        for (int y = 0; y < 10; ++y)
            EXPECT_EQ(large.at(x, y), half.at(x, y)) << x << ' ' << y;
    }
    EXPECT_EQ(half.alphaAt(10, 0), 255);
}

TEST(CairoCanvas, TakesANegativeOrUndefinedRadiusAsNone) {
    for (const double radius : {-3.0, nan, 0.0}) {
        Paper paper(4, 4);
        paper.canvas().fillRounded(CGRectMake(0, 0, 4, 4), CGFloat(radius), UIColor::redColor());
        EXPECT_EQ(paper.at(0, 0), redPixel) << radius;
    }
}

TEST(CairoCanvas, StrokesAlongTheInside) {
    Paper paper(12, 12);
    paper.canvas().strokeRounded(CGRectMake(1, 1, 10, 10), 0, 2, UIColor::redColor());
    EXPECT_EQ(paper.inked(), 100 - 36);
    EXPECT_EQ(paper.at(1, 1), redPixel);
    EXPECT_EQ(paper.at(2, 5), redPixel);
    EXPECT_EQ(paper.at(3, 3), clear);
    EXPECT_EQ(paper.at(0, 5), clear);
}

TEST(CairoCanvas, FillsARectangleThatIsTooSmallForItsStroke) {
    Paper paper(6, 6);
    paper.canvas().strokeRounded(CGRectMake(1, 1, 4, 4), 0, 2, UIColor::redColor());
    EXPECT_EQ(paper.inked(), 16);
    EXPECT_EQ(paper.at(3, 3), redPixel);
}

TEST(CairoCanvas, StrokesNothingWithoutAWidth) {
    for (const double width : {0.0, -1.0, nan}) {
        Paper paper(6, 6);
        paper.canvas().strokeRounded(CGRectMake(0, 0, 6, 6), 2, CGFloat(width),
                                     UIColor::redColor());
        EXPECT_EQ(paper.inked(), 0) << width;
    }
}

}  // namespace
