#include "tests/support/Paper.hpp"

#include <gtest/gtest.h>

#include <limits>

namespace {

void expectFallingFromTheEdge(Paper& paper, int middle, int row, int edge, int blur) {
    for (int x = middle; x + 1 < edge + blur; ++x) {
        EXPECT_GE(paper.alphaAt(x, row), paper.alphaAt(x + 1, row)) << x;
    }
    EXPECT_EQ(paper.alphaAt(edge - blur - 1, row), 255);
    EXPECT_NEAR(paper.alphaAt(edge - 1, row), 128, 24);
    EXPECT_LT(paper.alphaAt(edge + blur - 1, row), 10);
    EXPECT_EQ(paper.alphaAt(edge + blur, row), 0);
}

TEST(CairoShadow, FadesOfACircleOnBothSidesOfItsEdge) {
    Paper paper(40, 40);
    paper.canvas().fillShadow(CGRectMake(10, 10, 20, 20), 10, 5, UIColor::blackColor());
    expectFallingFromTheEdge(paper, 20, 20, 30, 5);
}

TEST(CairoShadow, FadesOfARoundedRectangleOnBothSidesOfItsEdge) {
    Paper paper(60, 40);
    paper.canvas().fillShadow(CGRectMake(10, 10, 40, 20), 6, 4, UIColor::blackColor());
    expectFallingFromTheEdge(paper, 30, 20, 50, 4);
    EXPECT_EQ(paper.alphaAt(9, 9) < paper.alphaAt(9, 20), true);
}

TEST(CairoShadow, IsTheSameAtBothEnds) {
    Paper paper(220, 60);
    paper.canvas().fillShadow(CGRectMake(10, 10, 200, 40), 8, 6, UIColor::blackColor());
    for (int y = 0; y < 60; ++y) {
        for (int x = 0; x < 110; ++x) {
            ASSERT_EQ(paper.alphaAt(x, y), paper.alphaAt(219 - x, y)) << x << ' ' << y;
            ASSERT_EQ(paper.alphaAt(x, y), paper.alphaAt(x, 59 - y)) << x << ' ' << y;
        }
    }
}

TEST(CairoShadow, HasNoSeamWhereItIsStretched) {
    Paper paper(320, 80, 2);
    paper.canvas().fillShadow(CGRectMake(20, 20, 280, 40), 10, 8, UIColor::blackColor());
    for (int x = 120; x < 520; ++x) {
        for (int y = 0; y < 160; ++y) {
            ASSERT_EQ(paper.alphaAt(x, y), paper.alphaAt(119, y)) << x << ' ' << y;
        }
    }
}

TEST(CairoShadow, FollowsAMaskThatIsNotTheFirst) {
    for (int width = 20; width < 60; ++width) {
        Paper paper(80, 40);
        paper.canvas().fillShadow(CGRectMake(10, 10, width, 20), 3, 2, UIColor::blackColor());
        EXPECT_EQ(paper.firstInkedColumn(), 8);
        EXPECT_EQ(paper.lastInkedColumn(), 10 + width + 1);
    }
}

TEST(CairoShadow, IsAPlainShapeWithoutABlur) {
    for (const double blur : {0.0, -1.0, std::numeric_limits<double>::quiet_NaN(),
                              std::numeric_limits<double>::infinity()}) {
        Paper paper(20, 20);
        paper.canvas().fillShadow(CGRectMake(5, 5, 10, 8), 0, CGFloat(blur), UIColor::redColor());
        EXPECT_EQ(paper.inked(), 80) << blur;
    }
}

TEST(CairoShadow, StaysSmallForAHugeRadiusAndBlur) {
    Paper paper(50, 50, 3);
    paper.canvas().fillShadow(CGRectMake(-1e5, -1e5, 3e5, 2e5), 1e5, 1e4, UIColor::redColor());
    EXPECT_EQ(paper.alphaAt(75, 75), 255);
}

TEST(CairoShadow, KeepsTheColorsAlpha) {
    Paper paper(40, 40);
    paper.canvas().fillShadow(CGRectMake(10, 10, 20, 20), 10, 5, {0, 0, 0, 0.25});
    EXPECT_NEAR(paper.alphaAt(20, 20), 64, 1);
}

}  // namespace
