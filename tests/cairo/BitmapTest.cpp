#include "tests/support/Paper.hpp"

#include <gtest/gtest.h>

#include <limits>

namespace {

constexpr Pixel green{0, 255, 0, 255};

std::uint32_t stripes(int x, int) {
    return x % 2 ? 0xff00ff00U : 0xffff0000U;
}

// A red square with a green frame around it that must not be seen.
std::uint32_t framed(int x, int y) {
    return x >= 2 && x < 6 && y >= 2 && y < 6 ? 0xffff0000U : 0xff00ff00U;
}

TEST(CairoBitmap, IsDrawnPixelByPixel) {
    const painting::CairoBitmap bitmap = bitmapOf(8, 4, stripes);
    Paper paper(10, 6);
    paper.canvas().drawBitmap(bitmap, CGRectMake(0, 0, 8, 4), CGRectMake(1, 1, 8, 4), {});
    for (int x = 0; x < 8; ++x)
        EXPECT_EQ(paper.at(x + 1, 1), x % 2 ? green : redPixel) << x;
    EXPECT_EQ(paper.inked(), 32);
}

TEST(CairoBitmap, IsDrawnPixelByPixelAtTheScreensScale) {
    const painting::CairoBitmap bitmap = bitmapOf(8, 4, stripes);
    Paper paper(10, 6, 2);
    paper.canvas().drawBitmap(bitmap, CGRectMake(0, 0, 8, 4), CGRectMake(1, 1, 4, 2), {});
    for (int x = 0; x < 8; ++x)
        EXPECT_EQ(paper.at(x + 2, 2), x % 2 ? green : redPixel) << x;
    EXPECT_EQ(paper.inked(), 32);
}

TEST(CairoBitmap, StaysSharpAndAsLargeBetweenPixels) {
    const painting::CairoBitmap bitmap = bitmapOf(7, 3, stripes);
    for (const double offset : {0.0, 0.1, 0.25, 0.49, 0.5, 0.51, 0.75, 0.999}) {
        Paper paper(12, 8);
        paper.canvas().drawBitmap(bitmap, CGRectMake(0, 0, 7, 3),
                                  CGRectMake(CGFloat(1 + offset), CGFloat(1 + offset), 7, 3), {});
        EXPECT_EQ(paper.inked(), 21) << offset;
        EXPECT_EQ(paper.at(paper.firstInkedColumn(), 3), redPixel) << offset;
        EXPECT_EQ(paper.at(paper.firstInkedColumn() + 1, 3), green) << offset;
    }
}

TEST(CairoBitmap, DoesNotBleedFromOutsideTheSource) {
    const painting::CairoBitmap bitmap = bitmapOf(8, 8, framed);
    for (const int width : {1, 2, 3, 4, 5, 8, 15, 300}) {
        for (const double scale : {1.0, 1.5, 2.0, 3.0}) {
            Paper paper(width, 9, scale);
            paper.canvas().drawBitmap(bitmap, CGRectMake(2, 2, 4, 4),
                                      CGRectMake(0, 0, CGFloat(width), 9), {});
            for (int x = 0; x < paper.pixelsWide(); ++x) {
                ASSERT_EQ(paper.at(x, 0), redPixel) << width << ' ' << scale << ' ' << x;
                ASSERT_EQ(paper.at(x, paper.pixelsHigh() - 1), redPixel) << width << ' ' << x;
            }
        }
    }
}

TEST(CairoBitmap, HasNoSeamWithItsNeighbourOnABrokenPixel) {
    const painting::CairoBitmap bitmap = bitmapOf(8, 8, [](int, int) { return 0x80800000U; });
    Paper paper(30, 4);
    paper.canvas().drawBitmap(bitmap, CGRectMake(0, 0, 4, 8), CGRectMake(0, 0, 9.3, 4), {});
    paper.canvas().drawBitmap(bitmap, CGRectMake(4, 0, 4, 8), CGRectMake(9.3, 0, 20.7, 4), {});
    for (int x = 0; x < 30; ++x)
        EXPECT_EQ(paper.alphaAt(x, 2), 128) << x;
}

TEST(CairoBitmap, KeepsToItsPixelsForASourceThatReachesPastThem) {
    const painting::CairoBitmap bitmap = bitmapOf(8, 8, stripes);
    Paper paper(10, 10);
    paper.canvas().drawBitmap(bitmap, CGRectMake(-5, -5, 1000, 1000), CGRectMake(0, 0, 4, 4), {});
    EXPECT_EQ(paper.inked(), 16);
    paper.canvas().drawBitmap(bitmap, CGRectMake(100, 0, 5, 5), CGRectMake(5, 5, 4, 4), {});
    EXPECT_EQ(paper.inked(), 16);
}

TEST(CairoBitmap, IsUnchangedByWhite) {
    const painting::CairoBitmap bitmap =
        bitmapOf(16, 16, [](int x, int y) { return std::uint32_t(x * 16) << 24 | y * x / 2; });
    Paper plain(16, 16);
    plain.canvas().drawBitmap(bitmap, CGRectMake(0, 0, 16, 16), CGRectMake(0, 0, 16, 16), {});
    Paper white(16, 16);
    white.canvas().drawBitmap(bitmap, CGRectMake(0, 0, 16, 16), CGRectMake(0, 0, 16, 16),
                              UIColor::whiteColor());
    for (int x = 0; x < 16; ++x) {
        for (int y = 0; y < 16; ++y)
            EXPECT_EQ(plain.at(x, y), white.at(x, y));
    }
    EXPECT_EQ(bitmap.tinted(UIColor::whiteColor()), bitmap.surface());
}

struct Multiplication {
    std::uint32_t pixel;
    UIColor color;
    Pixel expected;
};

std::ostream& operator<<(std::ostream& stream, const Multiplication& test) {
    return stream << std::hex << test.pixel << " to " << test.expected;
}

class CairoBitmapTint : public testing::TestWithParam<Multiplication> {};

TEST_P(CairoBitmapTint, MultipliesEveryPixelByTheColor) {
    const painting::CairoBitmap bitmap = bitmapOf(1, 1, [](int, int) { return GetParam().pixel; });
    Paper paper(1, 1);
    paper.canvas().drawBitmap(bitmap, CGRectMake(0, 0, 1, 1), CGRectMake(0, 0, 1, 1),
                              GetParam().color);
    const Pixel found = paper.at(0, 0);
    EXPECT_NEAR(found.red, GetParam().expected.red, 2);
    EXPECT_NEAR(found.green, GetParam().expected.green, 2);
    EXPECT_NEAR(found.blue, GetParam().expected.blue, 2);
    EXPECT_EQ(found.alpha, GetParam().expected.alpha);
}

INSTANTIATE_TEST_SUITE_P(
    Table, CairoBitmapTint,
    testing::Values(Multiplication{0xffffffff, UIColor::redColor(), {255, 0, 0, 255}},
                    Multiplication{0xff808080, UIColor::orangeColor(), {128, 64, 0, 255}},
                    Multiplication{0xff000000, UIColor::whiteColor(), {0, 0, 0, 255}},
                    Multiplication{0xff204060, UIColor::blackColor(), {0, 0, 0, 255}},
                    // Half transparent white: the colour changes, the alpha does not.
                    Multiplication{0x80808080, UIColor::redColor(), {255, 0, 0, 128}},
                    Multiplication{0x80404040, UIColor::brownColor(), {77, 51, 26, 128}},
                    Multiplication{0x00000000, UIColor::redColor(), {0, 0, 0, 0}},
                    Multiplication{0xffffffff, UIColor{1, 1, 1, 0.5}, {255, 255, 255, 128}},
                    Multiplication{0xffffffff,
                                   UIColor{5, -1, std::numeric_limits<double>::quiet_NaN(), 9},
                                   {255, 0, 0, 255}}));

TEST(CairoBitmap, RemembersItsTintsAndForgetsTheOldest) {
    const painting::CairoBitmap bitmap = bitmapOf(2, 2, stripes);
    cairo_surface_t* first = bitmap.tinted(UIColor::redColor());
    EXPECT_EQ(bitmap.tinted(UIColor::redColor()), first);
    for (int step = 0; step < 100; ++step) {
        ASSERT_NE(bitmap.tinted({step / 100.0, 0, 0, 1}), nullptr);
    }
    EXPECT_NE(bitmap.tinted(UIColor::redColor()), nullptr);
}

TEST(CairoBitmap, TellsTheAlphaOfAPixel) {
    const painting::CairoBitmap bitmap = bitmapOf(3, 2, [](int x, int y) {
        return x == 2 && y == 1 ? 0x40102030U : x == 0 ? 0xff000000U : 0U;
    });
    EXPECT_EQ(bitmap.alphaAt(0, 0), 255);
    EXPECT_EQ(bitmap.alphaAt(1, 0), 0);
    EXPECT_EQ(bitmap.alphaAt(2, 1), 0x40);
}

class ForeignBitmap : public UIBitmap {
    PixelSize size() const override { return {4, 4}; }
};

TEST(CairoBitmap, OfAnotherBackendIsNotDrawn) {
    Paper paper(4, 4);
    paper.canvas().drawBitmap(ForeignBitmap(), CGRectMake(0, 0, 4, 4), CGRectMake(0, 0, 4, 4), {});
    EXPECT_EQ(paper.inked(), 0);
}

}  // namespace
