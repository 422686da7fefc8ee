#include "platform/uikit/UIWindow.hpp"
#include "shells/panel/ScrollingView.hpp"

#include <gtest/gtest.h>

using namespace shell;

namespace {

/// An opening of 232 points in which half of the content is seen: the bar is as long as its way.
class ScrollBarTest : public testing::Test {
 protected:
    ScrollBarTest() {
        view->setFrame(window->bounds());
        window->addSubview(view);
        show(464);
    }
    void show(CGFloat height) {
        view->setContent(std::make_shared<UIView>(CGRectMake(0, 0, 200, height)));
    }
    UIControl& bar() const { return dynamic_cast<UIControl&>(*view->subviews().back()); }
    CGPoint middle() const { return {CGRectGetMidX(bar().frame()), CGRectGetMidY(bar().frame())}; }
    void send(UITouchPhase phase, const CGPoint& point, UITouchType type = UITouchType::Direct) {
        window->sendTouch(phase, point, 1, type);
    }
    bool isGraspedAt(const CGPoint& point) {
        return window->hitTest(point, nullptr).get() == &bar();
    }

    std::shared_ptr<UIWindow> window = std::make_shared<UIWindow>(CGRectMake(0, 0, 200, 232));
    std::shared_ptr<ScrollingView> view = std::make_shared<ScrollingView>();
};

TEST_F(ScrollBarTest, StaysUnderWhatDragsItFromEndToEnd) {
    for (const UITouchType type : {UITouchType::Direct, UITouchType::IndirectPointer}) {
        const CGPoint from = middle();
        send(UITouchPhase::Began, from, type);
        send(UITouchPhase::Moved, {from.x - 50, from.y + 30}, type);
        EXPECT_NEAR(middle().y, from.y + 30, 0.5);
        EXPECT_NEAR(view->offset(), 30 * 2.32, 1) << "30 of its 100 points, and of 232 hidden ones";
        send(UITouchPhase::Moved, {from.x, from.y + 1000}, type);
        EXPECT_EQ(view->offset(), 232);
        send(UITouchPhase::Moved, from, type);
        EXPECT_EQ(view->offset(), 0);
        send(UITouchPhase::Ended, from, type);
    }
}

TEST_F(ScrollBarTest, CanBeGraspedSomewhatBesideTheLine) {
    const CGRect line = bar().frame();
    EXPECT_TRUE(isGraspedAt({180, middle().y}));
    EXPECT_TRUE(isGraspedAt({199, middle().y})) << "at the very edge";
    EXPECT_TRUE(isGraspedAt({190, CGRectGetMaxY(line) + 7}));
    EXPECT_FALSE(isGraspedAt({179, middle().y})) << "there are the sliders";
    EXPECT_FALSE(isGraspedAt({190, CGRectGetMaxY(line) + 9}));
}

TEST_F(ScrollBarTest, IsBroaderWhileItIsHeld) {
    window->takeDamage();
    send(UITouchPhase::Began, middle());
    EXPECT_TRUE(bar().isHighlighted()) << "at once, for it is no part of what scrolls";
    ASSERT_FALSE(window->damage().empty());
    EXPECT_LT(bar().paintBounds().origin.x, 0);
    window->cancelTouches();
    EXPECT_FALSE(bar().isHighlighted());
}

TEST_F(ScrollBarTest, IsNotThereWhereAllIsSeen) {
    const CGPoint former = middle();
    send(UITouchPhase::Began, former);
    show(200);
    EXPECT_FALSE(isGraspedAt(former));
    send(UITouchPhase::Moved, {former.x, former.y + 20});
    EXPECT_EQ(view->offset(), 0);
}

TEST_F(ScrollBarTest, LeavesWhatHasNoRoomForItAlone) {
    view->setFrame(CGRectMake(0, 0, 200, 2 * panelRadius));
    window->layoutIfNeeded();
    EXPECT_FALSE(isGraspedAt({195, panelRadius}));
}

}  // namespace
