#include "tests/uikit/TestViews.hpp"

#include <cmath>
#include <limits>

TEST(UIView, StartsVisibleEnabledAndPlain) {
    const auto view = std::make_shared<UIView>();
    EXPECT_EQ(view->frame(), CGRect{});
    EXPECT_EQ(view->tag(), 0);
    EXPECT_FALSE(view->isHidden());
    EXPECT_TRUE(view->isUserInteractionEnabled());
    EXPECT_EQ(view->backgroundColor(), std::nullopt);
    EXPECT_EQ(view->autoresizingMask(), 0U);
    EXPECT_EQ(view->superview(), nullptr);
    EXPECT_EQ(view->window(), nullptr);
    EXPECT_FALSE(view->isFocused());
}

TEST(UIView, HasItsFramesSizeAtNoughtInItsOwnCoordinates) {
    const auto view = std::make_shared<UIView>(CGRectMake(10, 20, 30, 40));
    EXPECT_EQ(view->bounds(), CGRectMake(0, 0, 30, 40));
}

TEST(UIView, TakesNoughtForACoordinateThatIsNotFinite) {
    const CGFloat infinity = std::numeric_limits<CGFloat>::infinity();
    const auto view = std::make_shared<UIView>(CGRectMake(NAN, 1, infinity, -infinity));
    EXPECT_EQ(view->frame(), CGRectMake(0, 1, 0, 0));
    view->setFrame(CGRectMake(5, NAN, 6, NAN));
    EXPECT_EQ(view->frame(), CGRectMake(5, 0, 6, 0));
}

TEST(UIView, KeepsANegativeSizeButHasNoAreaThere) {
    const auto view = std::make_shared<UIView>(CGRectMake(0, 0, -40, 30));
    EXPECT_EQ(view->frame().size.width, -40);
    EXPECT_FALSE(view->pointInside({-10, 10}));
    EXPECT_EQ(view->hitTest({-10, 10}, nullptr), nullptr);
}

TEST(UIView, WidensOnlySubviewsWhoseWidthFollows) {
    const auto parent = std::make_shared<UIView>(CGRectMake(0, 0, 100, 100));
    const auto flexible = add(parent, CGRectMake(10, 10, 50, 50));
    const auto fixed = add(parent, CGRectMake(10, 10, 50, 50));
    const auto grandchild = add(flexible, CGRectMake(0, 0, 50, 10));
    flexible->setAutoresizingMask(2);
    grandchild->setAutoresizingMask(2 | 16);
    fixed->setAutoresizingMask(16);
    parent->setFrame(CGRectMake(0, 0, 130, 200));
    EXPECT_EQ(flexible->frame(), CGRectMake(10, 10, 80, 50));
    EXPECT_EQ(grandchild->frame(), CGRectMake(0, 0, 80, 10));
    EXPECT_EQ(fixed->frame(), CGRectMake(10, 10, 50, 50));
}

TEST(UIView, ComesBackFromANarrowSuperview) {
    const auto parent = std::make_shared<UIView>(CGRectMake(0, 0, 100, 100));
    const auto flexible = add(parent, CGRectMake(0, 0, 80, 50));
    flexible->setAutoresizingMask(2);
    parent->setFrame(CGRectMake(0, 0, 0, 100));
    parent->setFrame(CGRectMake(0, 0, 100, 100));
    EXPECT_EQ(flexible->frame().size.width, 80);
}

TEST(UIView, ConvertsPointsThroughTheTree) {
    const auto window = std::make_shared<UIWindow>(CGRectMake(500, 600, 320, 270));
    const auto row = add(window, CGRectMake(10, 20, 300, 50));
    const auto slider = add(row, CGRectMake(1, 2, 30, 40));
    const auto other = add(window, CGRectMake(100, 100, 10, 10));
    EXPECT_EQ(slider->convertPointToView({5, 5}, nullptr), (CGPoint{16, 27}));
    EXPECT_EQ(slider->convertPointToView({5, 5}, window.get()), (CGPoint{16, 27}));
    EXPECT_EQ(slider->convertPointToView({5, 5}, row.get()), (CGPoint{6, 7}));
    EXPECT_EQ(row->convertPointToView({6, 7}, slider.get()), (CGPoint{5, 5}));
    EXPECT_EQ(slider->convertPointToView({5, 5}, other.get()), (CGPoint{-84, -73}));
    EXPECT_EQ(slider->convertRectToView(slider->bounds(), nullptr), CGRectMake(11, 22, 30, 40));
}

TEST(UIView, IsHitAtItsTopLeftCornerAndNotAtTheOther) {
    const auto window = makeWindow();
    const auto view = add(window, CGRectMake(10, 10, 20, 20));
    EXPECT_EQ(window->hitTest({10, 10}, nullptr), view);
    EXPECT_EQ(window->hitTest({29.9, 29.9}, nullptr), view);
    EXPECT_EQ(window->hitTest({30, 20}, nullptr), window);
    EXPECT_EQ(window->hitTest({20, 9.9}, nullptr), window);
    EXPECT_EQ(window->hitTest({320, 10}, nullptr), nullptr);
    EXPECT_EQ(window->hitTest({NAN, NAN}, nullptr), nullptr);
}

TEST(UIView, IsHitInFrontOfItsElderSiblings) {
    const auto window = makeWindow();
    const auto behind = add(window, CGRectMake(0, 0, 50, 50));
    const auto front = add(window, CGRectMake(0, 0, 50, 50));
    EXPECT_EQ(window->hitTest({5, 5}, nullptr), front);
    window->addSubview(behind);
    EXPECT_EQ(window->hitTest({5, 5}, nullptr), behind);
}

TEST(UIView, IsNotHitWhenHiddenOrDisabledNorAreItsSubviews) {
    const auto window = makeWindow();
    const auto behind = add(window, CGRectMake(0, 0, 50, 50));
    const auto front = add(window, CGRectMake(0, 0, 50, 50));
    add(front, CGRectMake(0, 0, 50, 50));
    front->setHidden(true);
    EXPECT_EQ(window->hitTest({5, 5}, nullptr), behind);
    front->setHidden(false);
    front->setUserInteractionEnabled(false);
    EXPECT_EQ(window->hitTest({5, 5}, nullptr), behind);
}

TEST(UIView, IsNotHitOutsideItsSuperview) {
    const auto window = makeWindow();
    const auto parent = add(window, CGRectMake(0, 0, 50, 50));
    const auto child = add(parent, CGRectMake(25, 0, 50, 50));
    EXPECT_EQ(window->hitTest({49, 5}, nullptr), child);
    EXPECT_EQ(window->hitTest({51, 5}, nullptr), window);
}
