#include "platform/uikit/UISlider.hpp"
#include "platform/uikit/UIWindow.hpp"
#include "shells/panel/PanelView.hpp"

#include <gtest/gtest.h>

#include <limits>

using namespace shell;

namespace {

/// An opening of 200 by 100 points.
class ScrollingViewTest : public testing::Test {
 protected:
    ScrollingViewTest() { window->addSubview(view); }

    std::shared_ptr<UIView> show(CGFloat width, CGFloat height) {
        auto content = std::make_shared<UIView>(CGRectMake(0, 0, width, height));
        view->setContent(content);
        return content;
    }
    bool showsTheIndicator() const { return !view->subviews().back()->isHidden(); }
    CGRect indicator() const { return view->subviews().back()->frame(); }

    std::shared_ptr<UIWindow> window = std::make_shared<UIWindow>(CGRectMake(0, 0, 200, 100));
    std::shared_ptr<ScrollingView> view = [] {
        auto made = std::make_shared<ScrollingView>();
        made->setFrame(CGRectMake(0, 0, 200, 100));
        return made;
    }();
};

TEST_F(ScrollingViewTest, PutsASmallContentInTheMiddleOnWholePoints) {
    EXPECT_EQ(show(101, 51)->frame(), CGRectMake(49, 24, 101, 51));
    EXPECT_EQ(show(200, 100)->frame(), CGRectMake(0, 0, 200, 100));
}

TEST_F(ScrollingViewTest, DoesNotMoveWhatFits) {
    for (const CGFloat height : {0, 50, 100}) {
        const auto content = show(200, height);
        const CGRect before = content->frame();
        EXPECT_FALSE(view->isScrollable());
        EXPECT_FALSE(view->scrolled({10, 10}, -1));
        view->scrollBy(10);
        EXPECT_EQ(view->offset(), 0);
        EXPECT_EQ(content->frame(), before);
        EXPECT_FALSE(showsTheIndicator());
    }
}

TEST_F(ScrollingViewTest, MovesWhatIsAPointTooTall) {
    const auto content = show(200, 101);
    EXPECT_TRUE(view->isScrollable());
    EXPECT_TRUE(showsTheIndicator());
    view->scrollBy(1);
    EXPECT_EQ(content->frame().origin.y, -1);
    view->scrollBy(1);
    EXPECT_EQ(view->offset(), 1);
}

TEST_F(ScrollingViewTest, StopsAtBothEnds) {
    const auto content = show(200, 1000);
    view->scrollBy(900);
    EXPECT_EQ(view->offset(), 900);
    view->scrollBy(1);
    EXPECT_EQ(view->offset(), 900);
    EXPECT_EQ(content->frame().origin.y, -900);
    view->scrollBy(-900);
    EXPECT_EQ(view->offset(), 0);
    view->scrollBy(-1);
    EXPECT_EQ(content->frame().origin.y, 0);
}

TEST_F(ScrollingViewTest, IgnoresADistanceThatIsNoNumber) {
    show(200, 1000);
    view->scrollBy(300);
    view->scrollBy(std::numeric_limits<CGFloat>::quiet_NaN());
    view->scrollBy(std::numeric_limits<CGFloat>::infinity());
    EXPECT_EQ(view->offset(), 300);
    view->scrollBy(std::numeric_limits<CGFloat>::max());
    EXPECT_EQ(view->offset(), 900);
}

TEST_F(ScrollingViewTest, MovesByFiftyPointsAStepOfTheWheel) {
    show(200, 1000);
    EXPECT_TRUE(view->scrolled({10, 10}, -1));
    EXPECT_EQ(view->offset(), 50);
    EXPECT_TRUE(view->scrolled({10, 10}, 0.5));
    EXPECT_EQ(view->offset(), 25);
    EXPECT_TRUE(view->scrolled({10, 10}, 10)) << "at the end too, so that nothing behind it moves";
    EXPECT_EQ(view->offset(), 0);
}

TEST_F(ScrollingViewTest, MovesNoFartherThanNeededToShowARectangle) {
    show(200, 1000);
    view->scrollToShow(CGRectMake(0, 20, 200, 50));
    EXPECT_EQ(view->offset(), 0);
    view->scrollToShow(CGRectMake(0, 50, 200, 50));
    EXPECT_EQ(view->offset(), 0);
    view->scrollToShow(CGRectMake(0, 51, 200, 50));
    EXPECT_EQ(view->offset(), 1);
    view->scrollToShow(CGRectMake(0, 400, 200, 50));
    EXPECT_EQ(view->offset(), 351);
    view->scrollToShow(CGRectMake(0, -1, 200, 50));
    EXPECT_EQ(view->offset(), 350);
    view->scrollToShow(CGRectMake(0, 30, 200, 150));
    EXPECT_EQ(view->offset(), 380) << "its beginning matters more than its end";
}

TEST_F(ScrollingViewTest, ComesBackWhenTheContentShrinksOrTheOpeningGrows) {
    const auto content = show(200, 1000);
    view->scrollBy(900);
    content->setFrame({content->frame().origin, {200, 300}});
    view->setNeedsLayout();
    window->layoutIfNeeded();
    EXPECT_EQ(view->offset(), 200);
    view->setFrame(CGRectMake(0, 0, 200, 400));
    window->layoutIfNeeded();
    EXPECT_EQ(view->offset(), 0);
    EXPECT_EQ(content->frame().origin.y, 50);
    EXPECT_FALSE(showsTheIndicator());
}

TEST_F(ScrollingViewTest, BeginsAnotherContentAtItsTop) {
    const auto former = show(200, 1000);
    view->scrollBy(300);
    show(200, 500);
    EXPECT_EQ(former->superview(), nullptr);
    EXPECT_EQ(view->offset(), 0);
    view->setContent(nullptr);
    EXPECT_FALSE(view->isScrollable());
    EXPECT_FALSE(showsTheIndicator());
}

TEST_F(ScrollingViewTest, TellsWhereItStandsByTheIndicator) {
    show(200, 400);
    const CGRect top = indicator();
    EXPECT_EQ(top.origin.y, panelRadius);
    EXPECT_LT(CGRectGetMaxX(top), 200);
    view->scrollBy(300);
    const CGRect bottom = indicator();
    EXPECT_EQ(CGRectGetMaxY(bottom), 100 - panelRadius);
    EXPECT_EQ(bottom.size, top.size);
}

TEST_F(ScrollingViewTest, KeepsAnIndicatorThatCanBeSeenAndStaysInside) {
    show(200, 1e6);
    EXPECT_GE(indicator().size.height, 24);
    view->setFrame(CGRectMake(0, 0, 200, 10));
    window->layoutIfNeeded();
    EXPECT_EQ(indicator().size.height, 0) << "between the corners there is no room";
}

/// A panel of 200 by 100 points, with a slider at y 40 of a content of 300.
class PanelScrollingTest : public testing::Test {
 protected:
    PanelScrollingTest() {
        content->addSubview(slider);
        panel->setWidgetView(content);
        panel->setLayout(layout, PanelEdge::Hard);
        panel->setMoveHandler([this] { ++moves; });
        window->addSubview(panel);
        window->layoutIfNeeded();
    }
    void drag(const CGPoint& from, const CGPoint& to) {
        window->sendTouch(UITouchPhase::Began, from);
        window->sendTouch(UITouchPhase::Moved, to);
        window->sendTouch(UITouchPhase::Ended, to);
    }
    void makeItFit() {
        content->setFrame(CGRectMake(0, 0, 200, 100));
        panel->scroller().setNeedsLayout();
        window->layoutIfNeeded();
    }
    CGFloat offset() { return panel->scroller().offset(); }

    static constexpr CGRect whole = CGRectMake(0, 0, 200, 100);
    static constexpr PanelLayout layout = {whole.size, whole, whole};
    std::shared_ptr<UIWindow> window = std::make_shared<UIWindow>(whole);
    std::shared_ptr<PanelView> panel = std::make_shared<PanelView>();
    std::shared_ptr<UIView> content = std::make_shared<UIView>(CGRectMake(0, 0, 200, 300));
    std::shared_ptr<UISlider> slider = std::make_shared<UISlider>(CGRectMake(20, 40, 160, 30));
    int moves = 0;
};

TEST_F(PanelScrollingTest, WheelOverASliderMovesTheSliderAndElsewhereTheContent) {
    window->sendScroll({100, 55}, 1);
    EXPECT_NEAR(slider->value(), 0.01, 0.0001);
    EXPECT_EQ(offset(), 0);
    window->sendScroll({100, 20}, -1);
    EXPECT_EQ(offset(), 50);
    EXPECT_NEAR(slider->value(), 0.01, 0.0001);
}

TEST_F(PanelScrollingTest, DragOfASliderMovesTheSliderAlone) {
    drag({33, 55}, {100, 5});
    EXPECT_GT(slider->value(), 0.4);
    EXPECT_EQ(offset(), 0);
    EXPECT_EQ(moves, 0);
}

TEST_F(PanelScrollingTest, DragElsewhereMovesTheContentWithTheFinger) {
    drag({100, 90}, {100, 60});
    EXPECT_EQ(offset(), 30);
    drag({100, 60}, {100, 70});
    EXPECT_EQ(offset(), 20);
    EXPECT_EQ(slider->value(), 0);
    EXPECT_EQ(moves, 0);
}

TEST_F(PanelScrollingTest, FingerThatHardlyMovesIsATap) {
    drag({100, 90}, {103, 88});
    EXPECT_EQ(offset(), 0);
    drag({100, 90}, {100, 86});
    EXPECT_EQ(offset(), 4);
}

TEST_F(PanelScrollingTest, DragOfAPanelWithoutMoreToShowMovesTheWindowOnce) {
    makeItFit();
    window->sendTouch(UITouchPhase::Began, {100, 90});
    window->sendTouch(UITouchPhase::Moved, {102, 92});
    EXPECT_EQ(moves, 0);
    window->sendTouch(UITouchPhase::Moved, {110, 90});
    window->sendTouch(UITouchPhase::Moved, {150, 90});
    EXPECT_EQ(moves, 1);
}

TEST_F(PanelScrollingTest, SecondFingerDoesNotTakeTheContentOver) {
    window->sendTouch(UITouchPhase::Began, {100, 90}, 1);
    window->sendTouch(UITouchPhase::Began, {50, 90}, 2);
    window->sendTouch(UITouchPhase::Moved, {50, 40}, 2);
    EXPECT_EQ(offset(), 0);
    window->sendTouch(UITouchPhase::Moved, {100, 80}, 1);
    EXPECT_EQ(offset(), 10);
    window->sendTouch(UITouchPhase::Ended, {50, 40}, 2);
    window->sendTouch(UITouchPhase::Moved, {100, 70}, 1);
    EXPECT_EQ(offset(), 20) << "the first finger still holds it";
}

TEST_F(PanelScrollingTest, NothingBesideThePanelIsTouched) {
    const PanelLayout soft = panelLayout({200, 100}, {1000, 1000}, PanelEdge::Soft);
    window->setFrame({{0, 0}, soft.window});
    panel->setLayout(soft, PanelEdge::Soft);
    EXPECT_EQ(panel->hitTest({soft.panel.origin.x - 1, 50}, nullptr), nullptr);
    EXPECT_NE(panel->hitTest(soft.panel.origin, nullptr), nullptr);
}

}  // namespace
