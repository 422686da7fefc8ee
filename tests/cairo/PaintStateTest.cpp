#include "backends/cairo/PaintState.hpp"

#include <gtest/gtest.h>

#include <cmath>

namespace {

constexpr painting::PixelGrid fine = {.scale = 2, .x = 10, .y = 0};

TEST(PixelGrid, LeadsFromPointsOfItsOriginToPixels) {
    EXPECT_EQ(fine.pixels(CGRectMake(1, 2, 3, 4)), (painting::PixelRect{12, 4, 18, 12}));
    EXPECT_EQ(fine.pixels(CGRectMake(-6, 0.25, 1, 1)), (painting::PixelRect{-2, 0.5, 0, 2.5}));
}

TEST(PixelGrid, MovesEachEdgeToTheNearestPixel) {
    EXPECT_EQ(fine.alignedPixels(CGRectMake(0.3, 0.2, 1, 1)), (painting::PixelRect{11, 0, 13, 2}));
    EXPECT_EQ(fine.aligned(CGRectMake(0.3, 0.2, 1, 1)), CGRectMake(0.5, 0, 1, 1));
    EXPECT_EQ(fine.alignedX(0.3), 0.5);
    EXPECT_EQ(fine.alignedY(0.2), 0);
}

TEST(PixelGrid, HoldsWhatItPaintsWithinTheLibrarysCoordinates) {
    const auto endless = fine.paintable(CGRectMake(-1e9, 0, 2e9, 1));
    ASSERT_TRUE(endless);
    EXPECT_EQ(*endless, CGRectMake(-2e6, 0, 4e6, 1));
    EXPECT_FALSE(fine.paintable(CGRectMake(3e6, 0, 1, 1)));
    EXPECT_FALSE(fine.paintable(CGRectMake(0, 0, 0, 1)));
    EXPECT_FALSE(fine.paintable(CGRectMake(CGFloat(NAN), 0, 1, 1)));
}

TEST(PixelRect, HasNothingInCommonWithANeighbour) {
    const painting::PixelRect one{0, 0, 4, 4};
    EXPECT_FALSE(meet(one, {4, 0, 8, 4}));
    EXPECT_TRUE(meet(one, {3, 3, 8, 8}));
    EXPECT_EQ(intersection(one, {3, 3, 8, 8}), (painting::PixelRect{3, 3, 4, 4}));
    const painting::PixelRect none = intersection(one, {6, 6, 8, 8});
    EXPECT_FALSE(meet(none, {-100, -100, 100, 100}));
}

TEST(PixelRect, ContainsItself) {
    const painting::PixelRect one{0, 0, 4, 4};
    EXPECT_TRUE(contains(one, one));
    EXPECT_TRUE(contains(one, {1, 1, 2, 2}));
    EXPECT_FALSE(contains(one, {1, 1, 2, 5}));
}

}  // namespace
