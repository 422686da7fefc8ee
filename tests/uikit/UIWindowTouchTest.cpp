#include "tests/support/VirtualClock.hpp"
#include "tests/uikit/TestViews.hpp"

#include <cmath>

namespace {
using Messages = std::vector<std::string>;

class WindowTouchTest : public testing::Test {
 protected:
    void send(UITouchPhase phase, CGFloat x, CGFloat y, int identifier = 0) {
        window->sendTouch(phase, {x, y}, identifier);
    }
    VirtualClock clock;
    std::shared_ptr<UIWindow> window = makeWindow();
    std::shared_ptr<TouchView> view = add<TouchView>(window, CGRectMake(10, 20, 50, 50));
};
}  // namespace

TEST_F(WindowTouchTest, DeliversAllPhasesToTheViewItBeganOn) {
    send(UITouchPhase::Began, 15, 25);
    send(UITouchPhase::Moved, 300, 200);
    send(UITouchPhase::Ended, -10, 1000);
    EXPECT_EQ(view->messages, (Messages{"began", "moved", "ended"}));
    send(UITouchPhase::Moved, 15, 25);
    EXPECT_EQ(view->messages.size(), 3U);
}

TEST_F(WindowTouchTest, HandsWhatAViewHasNoUseForToItsSuperview) {
    const auto inner =
        add<UIView>(add<UIView>(view, CGRectMake(5, 5, 30, 30)), CGRectMake(0, 0, 20, 20));
    send(UITouchPhase::Began, 16, 26);
    send(UITouchPhase::Moved, 18, 28);
    send(UITouchPhase::Ended, 18, 28);
    send(UITouchPhase::Began, 16, 26);
    window->cancelTouches();
    EXPECT_EQ(view->messages, (Messages{"began", "moved", "ended", "began", "cancelled"}));
    EXPECT_EQ(view->last->view(), inner) << "the touch stays the inner view's";
}

TEST_F(WindowTouchTest, HandsNothingOnFromAViewThatTakesIt) {
    const auto inner = add<TouchView>(view, CGRectMake(5, 5, 30, 30));
    send(UITouchPhase::Began, 16, 26);
    send(UITouchPhase::Ended, 16, 26);
    EXPECT_EQ(inner->messages, (Messages{"began", "ended"}));
    EXPECT_EQ(view->messages, Messages{});
}

TEST_F(WindowTouchTest, HandsATouchOnAlthoughThatRemovesTheView) {
    const auto inner = add<UIView>(view, CGRectMake(5, 5, 30, 30));
    view->onTouch = [&] { inner->removeFromSuperview(); };
    send(UITouchPhase::Began, 16, 26);
    send(UITouchPhase::Moved, 18, 28);
    EXPECT_EQ(view->messages, Messages{"began"}) << "the touch ended with the view it was on";
}

TEST_F(WindowTouchTest, TellsWhereAndWhenTheTouchIsAndWas) {
    send(UITouchPhase::Began, 15, 25);
    const auto touch = view->last;
    EXPECT_EQ(touch->phase(), UITouchPhase::Began);
    EXPECT_EQ(touch->tapCount(), 1);
    EXPECT_EQ(touch->view(), view);
    EXPECT_EQ(touch->window(), window);
    EXPECT_EQ(touch->timestamp(), clock.now());
    EXPECT_EQ(touch->locationInView(nullptr), (CGPoint{15, 25}));
    EXPECT_EQ(touch->previousLocationInView(nullptr), (CGPoint{15, 25}));
    clock.advance(0.5);
    send(UITouchPhase::Moved, 17, 28);
    EXPECT_EQ(view->last, touch);
    EXPECT_EQ(touch->phase(), UITouchPhase::Moved);
    EXPECT_EQ(touch->timestamp(), clock.now());
    EXPECT_EQ(touch->locationInView(view.get()), (CGPoint{7, 8}));
    EXPECT_EQ(touch->previousLocationInView(view.get()), (CGPoint{5, 5}));
    EXPECT_EQ(view->lastEvent->allTouches(), UITouchSet{touch});
}

TEST_F(WindowTouchTest, IgnoresPhasesWithoutABeginning) {
    send(UITouchPhase::Moved, 15, 25);
    send(UITouchPhase::Ended, 15, 25);
    send(UITouchPhase::Cancelled, 15, 25);
    send(UITouchPhase::Stationary, 15, 25);
    EXPECT_TRUE(view->messages.empty());
}

TEST_F(WindowTouchTest, BeginsNothingOutsideTheWindow) {
    window->sendTouch(UITouchPhase::Began, {400, 25});
    window->sendTouch(UITouchPhase::Moved, {15, 25});
    EXPECT_TRUE(view->messages.empty());
}

TEST_F(WindowTouchTest, TellsNothingOfARestingFinger) {
    send(UITouchPhase::Began, 15, 25);
    send(UITouchPhase::Stationary, 15, 25);
    EXPECT_EQ(view->messages, Messages{"began"});
    EXPECT_EQ(view->last->phase(), UITouchPhase::Stationary);
}

TEST_F(WindowTouchTest, IgnoresPointsThatAreNotFinite) {
    send(UITouchPhase::Began, NAN, 25, 7);
    send(UITouchPhase::Ended, 15, 25, 7);
    EXPECT_TRUE(view->messages.empty());
    send(UITouchPhase::Began, 15, 25);
    send(UITouchPhase::Moved, INFINITY, 25);
    EXPECT_EQ(view->messages, Messages{"began"});
    send(UITouchPhase::Ended, NAN, NAN);
    EXPECT_EQ(view->messages, (Messages{"began", "ended"}));
    EXPECT_EQ(view->last->locationInView(nullptr), (CGPoint{15, 25}));
}

TEST_F(WindowTouchTest, KeepsFingersApart) {
    const auto other = add<TouchView>(window, CGRectMake(100, 20, 50, 50));
    send(UITouchPhase::Began, 15, 25, 1);
    send(UITouchPhase::Began, 105, 25, 2);
    send(UITouchPhase::Moved, 106, 25, 2);
    send(UITouchPhase::Ended, 15, 25, 1);
    EXPECT_EQ(view->messages, (Messages{"began", "ended"}));
    EXPECT_EQ(other->messages, (Messages{"began", "moved"}));
}

TEST_F(WindowTouchTest, CancelsATouchThatBeginsTwice) {
    send(UITouchPhase::Began, 15, 25);
    const auto first = view->last;
    send(UITouchPhase::Began, 16, 25);
    EXPECT_EQ(view->messages, (Messages{"began", "cancelled", "began"}));
    EXPECT_EQ(first->phase(), UITouchPhase::Cancelled);
    EXPECT_NE(view->last, first);
    send(UITouchPhase::Ended, 16, 25);
    EXPECT_EQ(view->messages.size(), 4U);
}

TEST_F(WindowTouchTest, CancelsEveryTouchUnderWay) {
    const auto other = add<TouchView>(window, CGRectMake(100, 20, 50, 50));
    send(UITouchPhase::Began, 15, 25, 1);
    send(UITouchPhase::Began, 105, 25, 2);
    window->cancelTouches();
    EXPECT_EQ(view->messages, (Messages{"began", "cancelled"}));
    EXPECT_EQ(other->messages, (Messages{"began", "cancelled"}));
    send(UITouchPhase::Ended, 15, 25, 1);
    EXPECT_EQ(view->messages.size(), 2U);
}

TEST_F(WindowTouchTest, GoesNowhereOnceItsViewHasLeftTheWindow) {
    send(UITouchPhase::Began, 15, 25);
    view->removeFromSuperview();
    window->addSubview(view);
    send(UITouchPhase::Moved, 16, 25);
    send(UITouchPhase::Ended, 16, 25);
    EXPECT_EQ(view->messages, Messages{"began"});
}

TEST_F(WindowTouchTest, GoesNowhereOnceASuperviewHasLeftTheWindow) {
    const auto row = add(window, CGRectMake(0, 100, 320, 50));
    row->addSubview(view);
    send(UITouchPhase::Began, 15, 125);
    row->removeFromSuperview();
    send(UITouchPhase::Ended, 16, 25);
    EXPECT_EQ(view->messages, Messages{"began"});
}

TEST_F(WindowTouchTest, StaysWithAViewThatMovesWithinTheWindow) {
    const auto row = add(window, CGRectMake(0, 100, 320, 50));
    send(UITouchPhase::Began, 15, 25);
    row->addSubview(view);
    send(UITouchPhase::Ended, 16, 25);
    EXPECT_EQ(view->messages, (Messages{"began", "ended"}));
}

TEST_F(WindowTouchTest, LeavesATouchWhoseViewIsGoneWithoutOne) {
    send(UITouchPhase::Began, 15, 25);
    const auto touch = view->last;
    view->removeFromSuperview();
    view.reset();
    EXPECT_EQ(touch->view(), nullptr);
    send(UITouchPhase::Moved, 16, 25);
}

TEST_F(WindowTouchTest, StandsAViewThatDestroysItselfInItsOwnCallback) {
    std::weak_ptr<TouchView> weak = view;
    view->onTouch = [weak] { weak.lock()->removeFromSuperview(); };
    view.reset();
    send(UITouchPhase::Began, 15, 25);
    EXPECT_TRUE(weak.expired());
    send(UITouchPhase::Ended, 15, 25);
}

TEST_F(WindowTouchTest, StandsItsOwnDestructionInACallback) {
    for (const UITouchPhase phase :
         {UITouchPhase::Moved, UITouchPhase::Ended, UITouchPhase::Cancelled}) {
        auto doomed = makeWindow();
        UIWindow* const raw = doomed.get();
        const auto held = add<TouchView>(doomed, CGRectMake(0, 0, 50, 50));
        raw->sendTouch(UITouchPhase::Began, {5, 5});
        held->onTouch = [&] { doomed.reset(); };
        raw->sendTouch(phase, {6, 6});
        EXPECT_EQ(doomed, nullptr);
        EXPECT_EQ(held->window(), nullptr);
    }
}

TEST_F(WindowTouchTest, StandsItsOwnDestructionWhileCancelling) {
    auto doomed = makeWindow();
    UIWindow* const raw = doomed.get();
    add<TouchView>(doomed, CGRectMake(0, 0, 50, 50))->onTouch = [&] { doomed.reset(); };
    const auto second = add<TouchView>(doomed, CGRectMake(50, 0, 50, 50));
    raw->sendTouch(UITouchPhase::Began, {55, 5}, 2);
    raw->sendTouch(UITouchPhase::Began, {5, 5}, 1);
    EXPECT_EQ(doomed, nullptr);
    EXPECT_EQ(second->messages, Messages{"began"});
}

TEST_F(WindowTouchTest, StandsATouchSentFromInsideACallback) {
    view->onTouch = [this] {
        view->onTouch = nullptr;
        send(UITouchPhase::Ended, 15, 25);
    };
    send(UITouchPhase::Began, 15, 25);
    EXPECT_EQ(view->messages, (Messages{"began", "ended"}));
}

namespace {
class ScrolledView : public UIView {
 public:
    using UIView::UIView;
    bool scrolled(const CGPoint& point, double steps) override {
        points.push_back(point);
        lastSteps = steps;
        return takes;
    }
    bool takes = true;
    std::vector<CGPoint> points;
    double lastSteps = 0;
};
}  // namespace

TEST(WindowScroll, GoesToTheViewUnderThePointThenItsSuperviews) {
    const auto window = makeWindow();
    const auto row = add<ScrolledView>(window, CGRectMake(10, 10, 100, 100));
    const auto view = add<ScrolledView>(row, CGRectMake(10, 10, 50, 50));
    EXPECT_TRUE(window->sendScroll({25, 27}, -2));
    EXPECT_EQ(view->points, (std::vector<CGPoint>{{5, 7}}));
    EXPECT_EQ(view->lastSteps, -2);
    EXPECT_TRUE(row->points.empty());
    view->takes = false;
    EXPECT_TRUE(window->sendScroll({25, 27}, 1));
    EXPECT_EQ(row->points, (std::vector<CGPoint>{{15, 17}}));
    row->takes = false;
    EXPECT_FALSE(window->sendScroll({25, 27}, 1));
    EXPECT_FALSE(window->sendScroll({400, 27}, 1));
}

TEST(WindowScroll, IgnoresNoStepsAndWhatIsNoNumber) {
    const auto window = makeWindow();
    const auto view = add<ScrolledView>(window, CGRectMake(0, 0, 100, 100));
    EXPECT_FALSE(window->sendScroll({5, 5}, 0));
    EXPECT_FALSE(window->sendScroll({5, 5}, NAN));
    EXPECT_FALSE(window->sendScroll({5, 5}, INFINITY));
    EXPECT_FALSE(window->sendScroll({NAN, 5}, 1));
    EXPECT_TRUE(view->points.empty());
}

namespace {
class ScrollingOn : public testing::Test {
 protected:
    ScrollingOn() {
        window->sendScroll({5, 5}, 1);
        front = add<ScrolledView>(window, CGRectMake(0, 0, 100, 100));
    }
    VirtualClock clock;
    std::shared_ptr<UIWindow> window = makeWindow();
    std::shared_ptr<ScrolledView> list = add<ScrolledView>(window, CGRectMake(0, 0, 100, 100));
    std::shared_ptr<ScrolledView> front;
};
}  // namespace

TEST_F(ScrollingOn, KeepsToItsViewWhileAnotherComesToLieThere) {
    clock.advance(0.49);
    window->sendScroll({5, 5}, 1);
    clock.advance(0.49);
    window->sendScroll({5, 5}, 1);
    EXPECT_EQ(list->points.size(), 3U);
    EXPECT_TRUE(front->points.empty());
}

TEST_F(ScrollingOn, EndsWithAPauseOfHalfASecond) {
    clock.advance(0.5);
    window->sendScroll({5, 5}, 1);
    EXPECT_EQ(front->points.size(), 1U);
}

TEST_F(ScrollingOn, EndsAtAnotherPoint) {
    window->sendScroll({6, 5}, 1);
    EXPECT_EQ(front->points.size(), 1U);
}

TEST_F(ScrollingOn, EndsWithAViewThatIsHiddenRemovedOrDestroyed) {
    list->setHidden(true);
    window->sendScroll({5, 5}, 1);
    EXPECT_EQ(front->points.size(), 1U);
    front->removeFromSuperview();
    front.reset();
    EXPECT_FALSE(window->sendScroll({5, 5}, 1));
}
