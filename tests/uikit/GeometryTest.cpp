#include "tests/uikit/TestViews.hpp"

#include <cmath>

TEST(Geometry, ARectangleHoldsItsLeftAndTopEdgesAndNotTheOthers) {
    const CGRect rect = CGRectMake(10, 20, 30, 40);
    EXPECT_TRUE(CGRectContainsPoint(rect, {10, 20}));
    EXPECT_TRUE(CGRectContainsPoint(rect, {39.999, 59.999}));
    EXPECT_FALSE(CGRectContainsPoint(rect, {40, 30}));
    EXPECT_FALSE(CGRectContainsPoint(rect, {20, 60}));
    EXPECT_FALSE(CGRectContainsPoint(rect, {9.999, 30}));
}

TEST(Geometry, RectanglesThatOnlyTouchDoNotIntersect) {
    EXPECT_FALSE(CGRectIntersectsRect(CGRectMake(0, 0, 10, 10), CGRectMake(10, 0, 10, 10)));
    EXPECT_TRUE(CGRectIntersectsRect(CGRectMake(0, 0, 10, 10), CGRectMake(9.5, 9.5, 10, 10)));
    EXPECT_EQ(CGRectIntersection(CGRectMake(0, 0, 10, 10), CGRectMake(50, 50, 1, 1)), CGRect{});
}

TEST(Geometry, AnEmptyRectangleIntersectsNothing) {
    const CGRect rect = CGRectMake(0, 0, 10, 10);
    for (const CGRect& empty :
         {CGRectMake(5, 5, 0, 2), CGRectMake(5, 5, 2, 0), CGRectMake(5, 5, -3, 2),
          CGRectMake(5, 5, NAN, 2), CGRectMake(NAN, 5, 2, 2)}) {
        EXPECT_FALSE(CGRectIntersectsRect(rect, empty));
        EXPECT_FALSE(CGRectIntersectsRect(empty, rect));
    }
}

TEST(Geometry, AnEmptyRectangleAddsNothingToAUnion) {
    const CGRect rect = CGRectMake(1, 2, 3, 4);
    EXPECT_EQ(CGRectUnion(rect, CGRectMake(100, 100, 0, 5)), rect);
    EXPECT_EQ(CGRectUnion(CGRectMake(-100, 0, 5, -1), rect), rect);
    EXPECT_EQ(CGRectUnion(rect, CGRectMake(10, 0, 1, 1)), CGRectMake(1, 0, 10, 6));
}

TEST(Geometry, AnUndefinedOrNegativeSizeIsEmpty) {
    EXPECT_TRUE(CGRectIsEmpty(CGRectMake(0, 0, NAN, 5)));
    EXPECT_TRUE(CGRectIsEmpty(CGRectMake(0, 0, -1, 5)));
    EXPECT_TRUE(CGRectIsEmpty(CGRectMake(0, 0, 0, 5)));
    EXPECT_FALSE(CGRectIsEmpty(CGRectMake(0, 0, 0.001, 5)));
}

TEST(Geometry, ASizeReadsWithoutTrailingZeros) {
    EXPECT_EQ(NSStringFromCGSize({320, 270}), "{320, 270}");
    EXPECT_EQ(NSStringFromCGSize({0.5, -1}), "{0.5, -1}");
}
