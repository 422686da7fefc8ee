#include "tests/support/Paper.hpp"

#include <gtest/gtest.h>

namespace {

const UIColor ink = UIColor::redColor();
const CGRect everywhere = CGRectMake(-100, -100, 200, 200);

CGRect clipOf(cairo_t* context) {
    double left = 0;
    double top = 0;
    double right = 0;
    double bottom = 0;
    cairo_clip_extents(context, &left, &top, &right, &bottom);
    return CGRectMake(CGFloat(left), CGFloat(top), CGFloat(right - left), CGFloat(bottom - top));
}

TEST(CairoClip, IsLeftToTheContextOnceSomethingIsDrawn) {
    Paper paper(10, 10);
    paper.canvas().save();
    paper.canvas().clip(CGRectMake(1, 2, 3, 4));
    EXPECT_EQ(clipOf(paper.context()), CGRectMake(0, 0, 10, 10)) << "told for nothing";
    paper.canvas().fill(everywhere, ink);
    EXPECT_EQ(clipOf(paper.context()), CGRectMake(1, 2, 3, 4));
    paper.canvas().restore();
    paper.canvas().save();
    paper.canvas().restore();
    EXPECT_EQ(clipOf(paper.context()), CGRectMake(1, 2, 3, 4)) << "told for nothing";
}

TEST(CairoClip, EndsWithItsRestoreWhetherOrNotSomethingWasDrawn) {
    for (const bool drawsWithin : {false, true}) {
        Paper paper(10, 10);
        paper.canvas().save();
        paper.canvas().clip(CGRectMake(0, 0, 2, 2));
        if (drawsWithin) paper.canvas().fill(everywhere, ink);
        paper.canvas().restore();
        paper.canvas().fill(CGRectMake(0, 0, 5, 5), ink);
        EXPECT_EQ(paper.inked(), 25) << drawsWithin;
    }
}

TEST(CairoClip, GoesBackToTheOneAround) {
    Paper paper(10, 10);
    paper.canvas().clip(CGRectMake(0, 0, 4, 4));
    paper.canvas().save();
    paper.canvas().clip(CGRectMake(2, 2, 4, 4));
    paper.canvas().fill(everywhere, ink);
    EXPECT_EQ(paper.inked(), 4);
    paper.canvas().restore();
    paper.canvas().fill(everywhere, ink);
    EXPECT_EQ(paper.inked(), 16);
}

TEST(CairoClip, StaysWhereItWasWhenTheOriginMoves) {
    Paper paper(10, 10, 2);
    paper.canvas().translate(1, 1);
    paper.canvas().clip(CGRectMake(0, 0, 3, 3));
    paper.canvas().translate(2, 2);
    paper.canvas().clip(CGRectMake(0, 0, 9, 9));
    paper.canvas().fill(CGRectMake(-5, -5, 20, 20), ink);
    EXPECT_EQ(paper.inked(), 4);
    EXPECT_EQ(paper.alphaAt(6, 6), 255);
    paper.canvas().fill(CGRectMake(0.5, 0.5, 0.5, 0.5), UIColor::blueColor());
    EXPECT_EQ(paper.at(7, 7).blue, 255) << "the origin is as it was";
}

TEST(CairoClip, OfTwoThatDoNotMeetShowsNothing) {
    Paper paper(10, 10);
    paper.canvas().save();
    paper.canvas().clip(CGRectMake(6, 6, 2, 2));
    paper.canvas().clip(CGRectMake(1, 1, 2, 2));
    paper.canvas().fill(everywhere, ink);
    EXPECT_EQ(paper.inked(), 0);
    paper.canvas().restore();
    paper.canvas().fill(everywhere, ink);
    EXPECT_EQ(paper.inked(), 100);
}

TEST(CairoClip, KeepsToWhatTheContextCameWith) {
    Paper paper(10, 10);
    cairo_rectangle(paper.context(), 0, 0, 5, 5);
    cairo_clip(paper.context());
    {
        painting::CairoCanvas canvas(paper.context(), 1);
        canvas.save();
        canvas.clip(CGRectMake(4, 4, 4, 4));
        canvas.fill(everywhere, ink);
        EXPECT_EQ(paper.inked(), 1);
        canvas.restore();
        canvas.fill(everywhere, ink);
        EXPECT_EQ(paper.inked(), 25);
    }
    EXPECT_EQ(clipOf(paper.context()), CGRectMake(0, 0, 5, 5));
}

TEST(CairoClip, HoldsForAPictureThatIsBlended) {
    Paper paper(10, 10);
    paper.canvas().clip(CGRectMake(0, 0, 6, 6));
    paper.canvas().saveWithOpacity(0.4);
    paper.canvas().save();
    paper.canvas().clip(CGRectMake(4, 4, 6, 6));
    paper.canvas().fill(everywhere, ink);
    paper.canvas().restore();
    paper.canvas().fill(CGRectMake(0, 0, 10, 1), ink);
    paper.canvas().restore();
    EXPECT_EQ(paper.inked(), 4 + 6);
    EXPECT_EQ(paper.alphaAt(5, 5), 102);
    EXPECT_EQ(paper.alphaAt(5, 0), 102);
}

TEST(CairoClip, MadeForABlendedPictureEndsWithIt) {
    Paper paper(10, 10);
    paper.canvas().saveWithOpacity(0.4);
    paper.canvas().translate(3, 3);
    paper.canvas().clip(CGRectMake(0, 0, 2, 2));
    paper.canvas().fill(everywhere, ink);
    paper.canvas().restore();
    EXPECT_EQ(paper.inked(), 4);
    paper.canvas().fill(CGRectMake(0, 0, 1, 1), ink);
    EXPECT_EQ(paper.alphaAt(0, 0), 255);
    EXPECT_EQ(paper.alphaAt(3, 3), 102);
}

}  // namespace
