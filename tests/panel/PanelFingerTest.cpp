#include "platform/uikit/UISlider.hpp"
#include "platform/uikit/UIWindow.hpp"
#include "shells/panel/PanelView.hpp"
#include "tests/support/VirtualClock.hpp"

#include <gtest/gtest.h>

using namespace shell;

namespace {

/// A panel of 200 by 100 points, with a slider at y 40 of a content of 300. The slider stands at 0,
/// its thumb from x 20 on.
class PanelFingerTest : public testing::Test {
 protected:
    PanelFingerTest() {
        content->addSubview(slider);
        panel->setWidgetView(content);
        panel->setLayout({whole.size, whole, whole}, PanelEdge::Hard);
        panel->setMoveHandler([this] { ++moves; });
        window->addSubview(panel);
        window->layoutIfNeeded();
    }
    void send(UITouchPhase phase, const CGPoint& point, int finger = 1) {
        window->sendTouch(phase, point, finger, UITouchType::Direct);
    }
    void swipe(const CGPoint& from, const CGPoint& to) {
        constexpr int steps = 10;
        send(UITouchPhase::Began, from);
        for (int i = 1; i <= steps; ++i) {
            constexpr double frame = 0.016;
            wait(frame);
            send(UITouchPhase::Moved,
                 {from.x + (to.x - from.x) * i / steps, from.y + (to.y - from.y) * i / steps});
        }
        send(UITouchPhase::Ended, to);
    }
    void wait(double seconds) {
        clock.advance(seconds);
        NSRunLoop::mainRunLoop().runDue();
    }
    CGFloat offset() { return panel->scroller().offset(); }

    VirtualClock clock;
    static constexpr CGRect whole = CGRectMake(0, 0, 200, 100);
    std::shared_ptr<UIWindow> window = std::make_shared<UIWindow>(whole);
    std::shared_ptr<PanelView> panel = std::make_shared<PanelView>();
    std::shared_ptr<UIView> content = std::make_shared<UIView>(CGRectMake(0, 0, 200, 300));
    std::shared_ptr<UISlider> slider = std::make_shared<UISlider>(CGRectMake(20, 40, 160, 30));
    int moves = 0;
};

TEST_F(PanelFingerTest, SwipeUpAcrossASliderScrollsByItsWholeWay) {
    swipe({100, 55}, {104, 15});
    EXPECT_EQ(slider->value(), 0);
    EXPECT_EQ(offset(), 40);
    swipe({100, 15}, {100, 25});
    EXPECT_EQ(slider->value(), 0);
    EXPECT_EQ(offset(), 30);
    EXPECT_EQ(moves, 0);
}

TEST_F(PanelFingerTest, SwipeSidewaysOnAThumbDragsItByItsWholeWay) {
    slider->setValue(0.5F);
    const CGRect thumb = slider->thumbRect();
    const CGPoint from =
        slider->convertPointToView({CGRectGetMidX(thumb) + 5, CGRectGetMidY(thumb)}, nullptr);
    swipe(from, {from.x + 30, from.y + 5});
    EXPECT_NEAR(CGRectGetMidX(slider->thumbRect()), CGRectGetMidX(thumb) + 30, 0.01);
    EXPECT_EQ(offset(), 0);
}

TEST_F(PanelFingerTest, TapOnATrackSetsTheSliderWhenTheFingerIsLifted) {
    send(UITouchPhase::Began, {100, 55});
    EXPECT_EQ(slider->value(), 0);
    EXPECT_FALSE(slider->isHighlighted());
    send(UITouchPhase::Ended, {100, 56});
    EXPECT_NEAR(slider->value(), 0.5, 0.01);
    EXPECT_FALSE(slider->isHighlighted());
}

TEST_F(PanelFingerTest, FingerThatRestsHasTheSliderInWhicheverDirectionItGoesThen) {
    send(UITouchPhase::Began, {100, 55});
    wait(0.15);
    EXPECT_NEAR(slider->value(), 0.5, 0.01);
    EXPECT_TRUE(slider->isHighlighted());
    send(UITouchPhase::Moved, {100, 5});
    EXPECT_NEAR(slider->value(), 0.5, 0.01);
    EXPECT_EQ(offset(), 0);
}

TEST_F(PanelFingerTest, SliderOfAListThatFitsIsHadAtOnce) {
    content->setFrame(CGRectMake(0, 0, 200, 100));
    send(UITouchPhase::Began, {100, 55});
    EXPECT_NEAR(slider->value(), 0.5, 0.01);
    EXPECT_EQ(NSRunLoop::mainRunLoop().nextDue(), std::nullopt);
}

TEST_F(PanelFingerTest, SecondFingerOnAListThatIsScrolledSetsNothing) {
    const auto below = std::make_shared<UISlider>(CGRectMake(20, 65, 160, 30));
    content->addSubview(below);
    send(UITouchPhase::Began, {100, 20}, 1);
    send(UITouchPhase::Moved, {100, 10}, 1);
    send(UITouchPhase::Began, {100, 70}, 2);
    send(UITouchPhase::Moved, {100, -30}, 1);
    wait(0.15);
    send(UITouchPhase::Ended, {100, 70}, 2);
    EXPECT_EQ(offset(), 50);
    EXPECT_EQ(slider->value(), 0);
    EXPECT_EQ(below->value(), 0);
}

}  // namespace
