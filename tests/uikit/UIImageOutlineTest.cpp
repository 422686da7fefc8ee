#include "platform/uikit/UIBitmap.hpp"
#include "platform/uikit/UIImage.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>

namespace {
class DrawnBitmap : public UIBitmap {
 public:
    DrawnBitmap(int width, int height, std::function<int(int, int)> alpha)
        : size_{width, height}, alpha_(std::move(alpha)) {}
    PixelSize size() const override { return size_; }
    int alphaAt(int x, int y) const override { return alpha_(x, y); }

 private:
    PixelSize size_;
    std::function<int(int, int)> alpha_;
};

/// Within `radius` of the middle, as pixels see it.
bool inCircle(int x, int y, double middle, double radius) {
    return std::hypot(x + 0.5 - middle, y + 0.5 - middle) <= radius;
}
}  // namespace

TEST(UIImageOutline, OfAnOpaqueImageIsAllOfItWithSquareCorners) {
    const UIImageOutline outline = outlineOf(DrawnBitmap(7, 5, [](int, int) { return 255; }));
    EXPECT_EQ(outline.rect, CGRectMake(0, 0, 7, 5));
    EXPECT_EQ(outline.radius, 0);
}

TEST(UIImageOutline, OfACircleHasHalfItsSideAsRadius) {
    const DrawnBitmap bitmap(62, 62, [](int x, int y) { return inCircle(x, y, 31, 26) ? 255 : 0; });
    const UIImageOutline outline = outlineOf(bitmap);
    EXPECT_EQ(outline.rect, CGRectMake(5, 5, 52, 52));
    EXPECT_NEAR(outline.radius, 26, 0.5);
    EXPECT_LE(outline.radius, 26);
}

TEST(UIImageOutline, OfARoundedRectangleHasItsRadius) {
    const DrawnBitmap bitmap(100, 60, [](int x, int y) {
        const double fromCornerX = std::max({10.0 - (x + 0.5), x + 0.5 - 90, 0.0});
        const double fromCornerY = std::max({10.0 - (y + 0.5), y + 0.5 - 50, 0.0});
        return std::hypot(fromCornerX, fromCornerY) <= 10 ? 255 : 0;
    });
    const UIImageOutline outline = outlineOf(bitmap);
    EXPECT_EQ(outline.rect, CGRectMake(0, 0, 100, 60));
    EXPECT_NEAR(outline.radius, 10, 0.5);
}

TEST(UIImageOutline, LeavesTheShadowOut) {
    const DrawnBitmap bitmap(
        20, 20, [](int x, int y) { return x >= 4 && x < 12 && y >= 2 && y < 10 ? 128 : 127; });
    EXPECT_EQ(outlineOf(bitmap).rect, CGRectMake(4, 2, 8, 8));
}

TEST(UIImageOutline, OfASinglePixelIsThatPixel) {
    const DrawnBitmap bitmap(9, 9, [](int x, int y) { return x == 8 && y == 0 ? 255 : 0; });
    EXPECT_EQ(outlineOf(bitmap).rect, CGRectMake(8, 0, 1, 1));
    EXPECT_EQ(outlineOf(bitmap).radius, 0);
}

TEST(UIImageOutline, OfAnImageThatIsHardlyThereIsAllOfIt) {
    EXPECT_EQ(outlineOf(DrawnBitmap(9, 4, [](int, int) { return 20; })).rect,
              CGRectMake(0, 0, 9, 4));
    EXPECT_EQ(outlineOf(DrawnBitmap(0, 0, [](int, int) { return 255; })).rect, CGRect{});
}

TEST(UIImageOutline, OfAHollowShapeHasARadiusThatFits) {
    const DrawnBitmap bitmap(
        40, 20, [](int x, int y) { return x == 0 || y == 0 || x == 39 || y == 19 ? 255 : 0; });
    EXPECT_EQ(outlineOf(bitmap).radius, 10);
}
