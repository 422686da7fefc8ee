#include "platform/uikit/NineSlice.hpp"
#include "tests/uikit/TestViews.hpp"

#include <cmath>

namespace {
constexpr NineSlice track{{20, 10}, {0, 9, 0, 9}, {20, 10}, 1};

/// That the pieces lie side by side and fill the rectangle.
void expectFilled(const std::vector<NineSlice::Piece>& pieces, const CGRect& rect) {
    CGFloat x = rect.origin.x;
    for (const auto& piece : pieces) {
        EXPECT_NEAR(piece.target.origin.x, x, tolerance);
        EXPECT_GT(piece.source.size.width, 0);
        x = CGRectGetMaxX(piece.target);
    }
    EXPECT_NEAR(x, CGRectGetMaxX(rect), tolerance);
}
}  // namespace

TEST(NineSlice, StretchesOnlyTheMiddleOfATrack) {
    const auto pieces = track.pieces(CGRectMake(2, 0, 276, 10));
    ASSERT_EQ(pieces.size(), 3U);
    EXPECT_EQ(pieces[0].target, CGRectMake(2, 0, 9, 10));
    EXPECT_EQ(pieces[1].source, CGRectMake(9, 0, 2, 10));
    EXPECT_EQ(pieces[1].target, CGRectMake(11, 0, 258, 10));
    EXPECT_EQ(pieces[2].target, CGRectMake(269, 0, 9, 10));
}

TEST(NineSlice, HasNinePiecesWithInsetsAllRound) {
    const NineSlice slice{{20, 20}, {5, 5, 5, 5}, {20, 20}, 1};
    EXPECT_EQ(slice.pieces(CGRectMake(0, 0, 50, 50)).size(), 9U);
}

TEST(NineSlice, ShrinksCapsInProportionWhereTheyDoNotFit) {
    const NineSlice slice{{20, 10}, {0, 12, 0, 6}, {20, 10}, 1};
    const auto exact = slice.pieces(CGRectMake(0, 0, 18, 10));
    ASSERT_EQ(exact.size(), 2U);
    EXPECT_EQ(exact[0].target.size.width, 12);
    const auto half = slice.pieces(CGRectMake(0, 0, 9, 10));
    ASSERT_EQ(half.size(), 2U);
    EXPECT_EQ(half[0].target.size.width, 6);
    EXPECT_EQ(half[0].source.size.width, 12);
    EXPECT_EQ(half[1].target.size.width, 3);
}

TEST(NineSlice, LeavesNoGapAtAnyWidthAndScale) {
    for (const CGFloat scale : {1.0, 1.5, 2.0, 3.0}) {
        NineSlice slice = track;
        slice.scale = scale;
        for (CGFloat width = 0.25; width < 60; width += 0.25) {
            const CGRect rect = CGRectMake(2.25, 0, width, 10);
            expectFilled(slice.pieces(rect), rect);
        }
    }
}

TEST(NineSlice, LeavesNoGapWithACapAtOneSideOrNone) {
    for (const UIEdgeInsets& caps : {UIEdgeInsets{0, 9, 0, 0}, UIEdgeInsets{0, 0, 0, 9},
                                     UIEdgeInsets{}, UIEdgeInsets{0, 30, 0, 0}}) {
        const NineSlice slice{{20, 10}, caps, {20, 10}, 1};
        for (CGFloat width = 0.25; width < 40; width += 0.25) {
            const CGRect rect = CGRectMake(2.25, 0, width, 10);
            expectFilled(slice.pieces(rect), rect);
        }
    }
}

TEST(NineSlice, PutsInnerBordersOnDevicePixels) {
    const NineSlice slice{{20, 10}, {0, 9.3, 0, 9.3}, {20, 10}, 2};
    const auto pieces = slice.pieces(CGRectMake(0, 0, 100, 10));
    ASSERT_EQ(pieces.size(), 3U);
    EXPECT_EQ(pieces[1].target.origin.x, 9.5);
    EXPECT_EQ(CGRectGetMaxX(pieces[1].target), 90.5);
}

TEST(NineSlice, StretchesAPixelWhereTheCapsMeet) {
    const NineSlice slice{{18, 10}, {0, 9, 0, 9}, {18, 10}, 1};
    const auto pieces = slice.pieces(CGRectMake(0, 0, 100, 10));
    ASSERT_EQ(pieces.size(), 3U);
    EXPECT_EQ(pieces[1].source, CGRectMake(8, 0, 1, 10));
}

TEST(NineSlice, KeepsCapsLargerThanTheImageWithinIt) {
    const NineSlice slice{{10, 10}, {50, 50, 50, 50}, {10, 10}, 1};
    for (const auto& piece : slice.pieces(CGRectMake(0, 0, 40, 40))) {
        EXPECT_GE(piece.source.origin.x, 0);
        EXPECT_LE(CGRectGetMaxX(piece.source), 10);
        EXPECT_LE(CGRectGetMaxY(piece.source), 10);
    }
}

TEST(NineSlice, HasNoPiecesOfNothing) {
    EXPECT_TRUE(track.pieces({}).empty());
    EXPECT_TRUE((NineSlice{{20, 10}, {}, {0, 0}, 1}).pieces(CGRectMake(0, 0, 5, 5)).empty());
    EXPECT_TRUE((NineSlice{{0, 10}, {}, {20, 10}, 1}).pieces(CGRectMake(0, 0, 5, 5)).empty());
    EXPECT_TRUE((NineSlice{{20, 10}, {}, {20, 10}, 0}).pieces(CGRectMake(0, 0, 5, 5)).empty());
}
