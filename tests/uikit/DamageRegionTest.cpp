#include "platform/uikit/DamageRegion.hpp"

#include <gtest/gtest.h>

namespace {

using Rects = std::vector<CGRect>;
constexpr CGRect everywhere = CGRectMake(0, 0, 1000, 1000);

TEST(DamageRegion, IsEmptyUntilSomethingWithAnAreaIsAdded) {
    DamageRegion region;
    EXPECT_TRUE(region.isEmpty());
    region.add({}, everywhere);
    region.add(CGRectMake(-20, 0, 10, 10), everywhere);
    EXPECT_TRUE(region.isEmpty());
    region.add(CGRectMake(-5, 0, 10, 10), everywhere);
    EXPECT_EQ(region.rects(), Rects{CGRectMake(0, 0, 5, 10)});
}

TEST(DamageRegion, RoundsOutwardsToWholePoints) {
    DamageRegion region;
    region.add(CGRectMake(10.4, 10.4, 5, 5), everywhere);
    EXPECT_EQ(region.rects(), Rects{CGRectMake(10, 10, 6, 6)});
}

TEST(DamageRegion, IsEmptyOnceItWasTakenOrCleared) {
    DamageRegion region;
    region.add(CGRectMake(0, 0, 5, 5), everywhere);
    EXPECT_EQ(region.take(), Rects{CGRectMake(0, 0, 5, 5)});
    EXPECT_TRUE(region.isEmpty());
    region.add(CGRectMake(0, 0, 5, 5), everywhere);
    region.clear();
    EXPECT_TRUE(region.take().empty());
}

TEST(DamageRegion, JoinsWhatCostsNoMoreTogether) {
    DamageRegion region;
    region.add(CGRectMake(0, 0, 10, 10), everywhere);
    region.add(CGRectMake(5, 0, 10, 10), everywhere);
    EXPECT_EQ(region.rects(), Rects{CGRectMake(0, 0, 15, 10)});
}

TEST(DamageRegion, CutsOffWhatIsThereAlready) {
    DamageRegion region;
    region.add(CGRectMake(0, 10, 100, 10), everywhere);
    region.add(CGRectMake(45, 0, 10, 30), everywhere);
    double area = 0;
    for (const CGRect& rect : region.rects())
        area += rect.size.width * rect.size.height;
    EXPECT_EQ(area, 100 * 10 + 10 * 20);
}

TEST(DamageRegion, HasAtMostSixteenRectanglesThatCoverAll) {
    DamageRegion region;
    for (int i = 0; i < 40; ++i)
        region.add(CGRectMake(CGFloat(20 * i), CGFloat(20 * (i % 7)), 3, 3), everywhere);
    EXPECT_LE(region.rects().size(), 16U);
    for (int i = 0; i < 40; ++i) {
        const CGRect added = CGRectMake(CGFloat(20 * i), CGFloat(20 * (i % 7)), 3, 3);
        CGFloat covered = 0;
        for (const CGRect& rect : region.rects()) {
            const CGRect common = CGRectIntersection(rect, added);
            covered += common.size.width * common.size.height;
        }
        EXPECT_EQ(covered, 9) << i;
    }
}

}  // namespace
