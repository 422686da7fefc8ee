#include "tests/support/Paper.hpp"

#include <gtest/gtest.h>

#include <limits>

namespace {

const UIColor redInk = UIColor::redColor();
const CGRect whole = CGRectMake(0, 0, 10, 10);

TEST(CairoOpacity, BlendsOverlappingPartsAsOnePicture) {
    Paper paper(10, 10);
    paper.canvas().saveWithOpacity(0.4);
    paper.canvas().fill(CGRectMake(0, 0, 6, 10), redInk);
    paper.canvas().fill(CGRectMake(4, 0, 6, 10), redInk);
    paper.canvas().restore();
    for (const int x : {0, 5, 9})
        EXPECT_EQ(paper.alphaAt(x, 5), 102) << x;
}

TEST(CairoOpacity, LetsNothingShowThroughWhatCoversIt) {
    Paper paper(10, 10);
    paper.canvas().saveWithOpacity(0.5);
    paper.canvas().fill(whole, redInk);
    paper.canvas().fill(whole, UIColor::blueColor());
    paper.canvas().restore();
    EXPECT_EQ(paper.at(5, 5).red, 0);
    EXPECT_EQ(paper.at(5, 5).blue, 255);
}

TEST(CairoOpacity, EndsWithItsRestore) {
    Paper paper(10, 10);
    paper.canvas().saveWithOpacity(0.5);
    paper.canvas().translate(5, 0);
    paper.canvas().restore();
    paper.canvas().fill(CGRectMake(0, 0, 1, 1), redInk);
    EXPECT_EQ(paper.alphaAt(0, 0), 255);
    EXPECT_EQ(paper.inked(), 1);
}

TEST(CairoOpacity, IsMultipliedByTheOneAround) {
    Paper paper(10, 10);
    paper.canvas().saveWithOpacity(0.5);
    paper.canvas().save();
    paper.canvas().saveWithOpacity(0.5);
    paper.canvas().fill(whole, redInk);
    paper.canvas().restore();
    paper.canvas().restore();
    paper.canvas().restore();
    EXPECT_NEAR(paper.alphaAt(5, 5), 64, 1);
}

TEST(CairoOpacity, KeepsPixelsWhereTheyAreAtEveryScaleAndWithinTheClip) {
    Paper paper(10, 10, 2);
    paper.canvas().translate(1, 1);
    paper.canvas().clip(CGRectMake(0, 0, 4, 4));
    paper.canvas().saveWithOpacity(1);
    paper.canvas().fill(CGRectMake(1, 1, 10, 1), redInk);
    paper.canvas().restore();
    EXPECT_EQ(paper.alphaAt(4, 4), 255);
    EXPECT_EQ(paper.inked(), 6 * 2) << "three points by one";
}

TEST(CairoOpacity, OutsideItsRangeCountsAsTheNearest) {
    for (const double opacity : {-1.0, 0.0, std::numeric_limits<double>::quiet_NaN()}) {
        Paper paper(10, 10);
        paper.canvas().saveWithOpacity(CGFloat(opacity));
        paper.canvas().fill(whole, redInk);
        paper.canvas().restore();
        EXPECT_EQ(paper.inked(), 0) << opacity;
    }
    Paper paper(10, 10);
    paper.canvas().saveWithOpacity(7);
    paper.canvas().fill(whole, redInk);
    paper.canvas().restore();
    EXPECT_EQ(paper.alphaAt(5, 5), 255);
}

TEST(CairoOpacity, IsBlendedAtTheCanvasEndWithoutARestore) {
    Paper paper(10, 10);
    paper.canvas().saveWithOpacity(0.4);
    paper.canvas().fill(whole, redInk);
    paper.freshCanvas();
    EXPECT_EQ(paper.alphaAt(5, 5), 102);
}

}  // namespace
