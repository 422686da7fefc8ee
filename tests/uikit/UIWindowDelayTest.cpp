#include "tests/support/VirtualClock.hpp"
#include "tests/uikit/TestViews.hpp"

namespace {
using Messages = std::vector<std::string>;

/// A view that scrolls, as far as a window is concerned.
class DelayingView : public TouchView {
 public:
    using TouchView::TouchView;
    bool delaysTouchesIn(const UIView& subview) const override {
        return delays && &subview != exempt.get();
    }
    bool delays = true;
    std::shared_ptr<UIView> exempt;
};

/// A view within one that scrolls, and a finger on it at x 100, y 100.
class WindowDelayTest : public testing::Test {
 protected:
    void send(UITouchPhase phase, CGFloat x, CGFloat y, int identifier = 1) {
        window->sendTouch(phase, {x, y}, identifier, UITouchType::Direct);
    }
    void begin(int identifier = 1) { send(UITouchPhase::Began, 100, 100, identifier); }
    void wait(double seconds) {
        clock.advance(seconds);
        loop().runDue();
    }
    static NSRunLoop& loop() { return NSRunLoop::mainRunLoop(); }
    void expectNobodyHeard() {
        EXPECT_EQ(view->messages, Messages{});
        EXPECT_EQ(scroller->messages, Messages{});
    }

    VirtualClock clock;
    std::shared_ptr<UIWindow> window = makeWindow();
    std::shared_ptr<DelayingView> scroller = add<DelayingView>(window, CGRectMake(0, 0, 320, 270));
    std::shared_ptr<UIView> row = add<UIView>(scroller, CGRectMake(0, 50, 320, 100));
    std::shared_ptr<FocusableView> view = add<FocusableView>(row, CGRectMake(50, 0, 200, 100));
};
}  // namespace

TEST_F(WindowDelayTest, KeepsAFingerBackUntilItIsKnownWhatItMeans) {
    begin();
    send(UITouchPhase::Moved, 104, 103);
    send(UITouchPhase::Stationary, 104, 103);
    wait(0.149);
    expectNobodyHeard();
    EXPECT_EQ(window->focusedView(), nullptr);
}

TEST_F(WindowDelayTest, GivesAFingerThatGoesUpOrDownToTheViewThatScrolls) {
    for (const CGFloat y : {92, 108}) {
        scroller->messages.clear();
        begin();
        send(UITouchPhase::Moved, 103, y);
        EXPECT_EQ(scroller->messages, (Messages{"began", "moved"}));
        EXPECT_EQ(scroller->last->previousLocationInView(nullptr), (CGPoint{100, 100}))
            << "nothing of the way is lost";
        send(UITouchPhase::Moved, 300, y);
        send(UITouchPhase::Ended, 300, y);
        EXPECT_EQ(scroller->messages, (Messages{"began", "moved", "moved", "ended"}));
    }
    EXPECT_EQ(view->messages, Messages{});
    EXPECT_EQ(window->focusedView(), nullptr);
}

TEST_F(WindowDelayTest, GivesAFingerThatGoesSidewaysToItsViewFromWhereItCameDown) {
    std::vector<CGPoint> places;
    view->onTouch = [&] { places.push_back(view->last->locationInView(nullptr)); };
    begin();
    send(UITouchPhase::Moved, 108, 104);
    send(UITouchPhase::Moved, 108, 10);
    send(UITouchPhase::Ended, 90, 10);
    EXPECT_EQ(view->messages, (Messages{"began", "moved", "moved", "ended"}));
    EXPECT_EQ(places, (std::vector<CGPoint>{{100, 100}, {108, 104}, {108, 10}, {90, 10}}));
    EXPECT_EQ(scroller->messages, Messages{});
    EXPECT_EQ(window->focusedView(), view);
}

TEST_F(WindowDelayTest, GivesAFingerThatRestsToItsView) {
    begin();
    wait(0.15);
    EXPECT_EQ(view->messages, Messages{"began"}) << "it has not moved";
    send(UITouchPhase::Moved, 100, 20);
    EXPECT_EQ(view->messages, (Messages{"began", "moved"})) << "and is the view's from then on";
    send(UITouchPhase::Ended, 100, 20);
    begin();
    send(UITouchPhase::Moved, 106, 101);
    wait(0.15);
    EXPECT_EQ(view->messages, (Messages{"began", "moved", "ended", "began", "moved"}));
    EXPECT_EQ(view->last->locationInView(nullptr), (CGPoint{106, 101}));
    EXPECT_EQ(scroller->messages, Messages{});
}

TEST_F(WindowDelayTest, TakesASlowSwipeForOne) {
    begin();
    send(UITouchPhase::Moved, 101, 95);
    wait(0.15);
    EXPECT_EQ(scroller->messages, (Messages{"began", "moved"}));
    EXPECT_EQ(view->messages, Messages{});
}

TEST_F(WindowDelayTest, DeliversATapWholeWhenTheFingerIsLifted) {
    begin();
    send(UITouchPhase::Moved, 102, 102);
    view->onTouch = [&] {
        EXPECT_EQ(view->last->phase(),
                  view->messages.size() == 1 ? UITouchPhase::Began : UITouchPhase::Ended);
    };
    send(UITouchPhase::Ended, 102, 105);
    EXPECT_EQ(view->messages, (Messages{"began", "ended"}));
    EXPECT_EQ(view->last->locationInView(nullptr), (CGPoint{102, 105}));
    EXPECT_EQ(scroller->messages, Messages{});
}

TEST_F(WindowDelayTest, TakesAFingerThatIsLiftedFarAwayForASwipe) {
    begin();
    send(UITouchPhase::Ended, 100, 30);
    EXPECT_EQ(scroller->messages, (Messages{"began", "ended"}));
    EXPECT_EQ(view->messages, Messages{});
}

TEST_F(WindowDelayTest, DelaysNeitherThePointerNorWhatNothingScrolls) {
    window->sendTouch(UITouchPhase::Began, {100, 100});
    EXPECT_EQ(view->messages, Messages{"began"});
    scroller->delays = false;
    begin(2);
    EXPECT_EQ(view->messages, (Messages{"began", "began"}));
    scroller->delays = true;
    scroller->exempt = row;
    begin(3);
    EXPECT_EQ(view->messages.size(), 3U) << "a part of it that does not scroll";
    send(UITouchPhase::Began, 300, 200, 4);
    EXPECT_EQ(scroller->messages, Messages{"began"}) << "the view itself";
    EXPECT_EQ(loop().nextDue(), std::nullopt);
}

TEST_F(WindowDelayTest, SaysNothingOfAFingerThatIsCancelledBefore) {
    begin();
    send(UITouchPhase::Cancelled, 100, 100);
    begin();
    window->cancelTouches();
    begin();
    send(UITouchPhase::Began, 1000, 1000);  // The same finger, beside everything.
    wait(1);
    expectNobodyHeard();
    EXPECT_EQ(loop().nextDue(), std::nullopt);
}

TEST_F(WindowDelayTest, CancelsAFingerThatSomebodyHasHeardOf) {
    begin();
    wait(0.2);
    window->cancelTouches();
    EXPECT_EQ(view->messages, (Messages{"began", "cancelled"}));
}

TEST_F(WindowDelayTest, KnowsEachOfTwoFingersByItself) {
    const auto other = add<TouchView>(scroller, CGRectMake(0, 160, 320, 50));
    begin(1);
    send(UITouchPhase::Began, 100, 180, 2);
    send(UITouchPhase::Moved, 130, 180, 2);
    EXPECT_EQ(other->messages, (Messages{"began", "moved"}));
    EXPECT_EQ(view->messages, Messages{});
    send(UITouchPhase::Moved, 70, 100, 1);
    EXPECT_EQ(view->messages, (Messages{"began", "moved"}));
}

TEST_F(WindowDelayTest, GivesNoFingerToWhatHasBeenScrolledUnderIt) {
    const auto other = add<TouchView>(row, CGRectMake(50, 0, 200, 40));
    begin(1);
    row->setFrame(CGRectMake(0, 80, 320, 100));
    wait(0.15);
    EXPECT_EQ(view->messages, Messages{});
    EXPECT_EQ(other->messages, Messages{});
    EXPECT_EQ(scroller->messages, Messages{"began"});
}

TEST_F(WindowDelayTest, ForgetsAFingerWithItsView) {
    begin();
    view->removeFromSuperview();
    EXPECT_EQ(loop().nextDue(), std::nullopt);
    send(UITouchPhase::Moved, 130, 100);
    send(UITouchPhase::Ended, 130, 100);
    expectNobodyHeard();
}

TEST_F(WindowDelayTest, GivesAFingerToItsViewWhenTheOneThatScrollsIsGone) {
    begin();
    window->addSubview(row);
    scroller->removeFromSuperview();
    scroller.reset();
    send(UITouchPhase::Moved, 100, 50);
    EXPECT_EQ(view->messages, (Messages{"began", "moved"}));
}

TEST_F(WindowDelayTest, EndsATouchWhoseBeginningRemovesTheView) {
    view->onTouch = [&] { view->removeFromSuperview(); };
    begin();
    send(UITouchPhase::Moved, 130, 100);
    EXPECT_EQ(view->messages, Messages{"began"});
    row->addSubview(view);
    begin();
    send(UITouchPhase::Moved, 104, 100);
    wait(0.15);
    EXPECT_EQ(view->messages, (Messages{"began", "began"}));
}

TEST_F(WindowDelayTest, LeavesNothingBehindThatWakesUp) {
    begin();
    EXPECT_TRUE(loop().nextDue());
    send(UITouchPhase::Moved, 130, 100);
    EXPECT_EQ(loop().nextDue(), std::nullopt) << "it is known before the time is over";
    send(UITouchPhase::Ended, 130, 100);
    begin();
    send(UITouchPhase::Ended, 100, 100);
    EXPECT_EQ(loop().nextDue(), std::nullopt);
    begin();
    scroller.reset();
    row.reset();
    window.reset();
    EXPECT_EQ(loop().nextDue(), std::nullopt) << "the window is gone";
}

TEST_F(WindowDelayTest, MayEndWithTheFingerThatItGives) {
    view->onTouch = [&] {
        scroller.reset();
        row.reset();
        window.reset();
    };
    begin();
    wait(0.15);
    EXPECT_EQ(window, nullptr);
    EXPECT_EQ(view->messages, Messages{"began"});
}
