#include "tests/uikit/TestViews.hpp"

namespace {
class TrackedControl : public UIControl {
 public:
    using UIControl::UIControl;
    std::vector<std::string> messages;
    std::vector<CGPoint> points;
    bool accepts = true;
    std::function<void()> onBegin;
    std::function<void()> onEnd;

 protected:
    bool beginTracking(const CGPoint& point) override {
        note("begin", point);
        if (onBegin) onBegin();
        return accepts;
    }
    void continueTracking(const CGPoint& point) override { note("continue", point); }
    void endTracking(const CGPoint& point) override {
        note("end", point);
        if (onEnd) onEnd();
    }
    void cancelTracking() override { messages.emplace_back("cancel"); }

 private:
    void note(const char* message, const CGPoint& point) {
        messages.emplace_back(isHighlighted() ? message : std::string(message) + " unlit");
        points.push_back(point);
    }
};

class Listener : public NSObject {
 public:
    void heard(const std::shared_ptr<UIControl>& control) {
        ++calls;
        sender = control;
        if (onCall) onCall();
    }
    void heardSlider(const std::shared_ptr<UISlider>& slider) { sliderWasNull = !slider; }
    int calls = 0;
    bool sliderWasNull = false;
    std::weak_ptr<UIControl> sender;
    std::function<void()> onCall;
};

using Messages = std::vector<std::string>;

class ControlTest : public testing::Test {
 protected:
    void send(UITouchPhase phase, CGFloat x, int identifier = 0) {
        window->sendTouch(phase, {x, 15}, identifier);
    }
    std::shared_ptr<UIWindow> window = makeWindow();
    std::shared_ptr<TrackedControl> control =
        add<TrackedControl>(window, CGRectMake(10, 10, 50, 50));
    std::shared_ptr<Listener> listener = std::make_shared<Listener>();
};
}  // namespace

TEST_F(ControlTest, TellsTheTargetsOfAnEventOnly) {
    control->addTarget(listener, &Listener::heard, UIControlEventValueChanged);
    control->sendActionsForControlEvents(1U << 6);
    control->sendActionsForControlEvents(0);
    EXPECT_EQ(listener->calls, 0);
    control->sendActionsForControlEvents(UIControlEventValueChanged | 1U);
    EXPECT_EQ(listener->calls, 1);
    EXPECT_EQ(listener->sender.lock(), control);
}

TEST_F(ControlTest, TellsOneTargetOncePerRegistration) {
    control->addTarget(listener, &Listener::heard, 1U);
    control->addTarget(listener, &Listener::heard, 1U);
    control->sendActionsForControlEvents(1U);
    EXPECT_EQ(listener->calls, 2);
}

TEST_F(ControlTest, IgnoresANullTargetAndAMissingAction) {
    control->addTarget(std::shared_ptr<Listener>(), &Listener::heard, 1U);
    control->addAction(listener, 1U, nullptr);
    control->sendActionsForControlEvents(1U);
    EXPECT_EQ(listener->calls, 0);
}

TEST_F(ControlTest, DoesNotOwnItsTargets) {
    control->addTarget(listener, &Listener::heard, 1U);
    const std::weak_ptr<Listener> weak = listener;
    listener.reset();
    EXPECT_TRUE(weak.expired());
    control->sendActionsForControlEvents(1U);
}

TEST_F(ControlTest, HandsASenderOfAnotherClassOverAsNone) {
    control->addTarget(listener, &Listener::heardSlider, 1U);
    control->sendActionsForControlEvents(1U);
    EXPECT_TRUE(listener->sliderWasNull);
}

TEST_F(ControlTest, StandsATargetDestroyedByAnEarlierOne) {
    auto second = std::make_shared<Listener>();
    listener->onCall = [&] { second.reset(); };
    control->addTarget(listener, &Listener::heard, 1U);
    control->addTarget(second, &Listener::heard, 1U);
    control->sendActionsForControlEvents(1U);
    EXPECT_EQ(listener->calls, 1);
}

TEST_F(ControlTest, TellsATargetAddedInAnActionFromTheNextTimeOn) {
    const auto second = std::make_shared<Listener>();
    listener->onCall = [&] { control->addTarget(second, &Listener::heard, 1U); };
    control->addTarget(listener, &Listener::heard, 1U);
    control->sendActionsForControlEvents(1U);
    EXPECT_EQ(second->calls, 0);
    listener->onCall = nullptr;
    control->sendActionsForControlEvents(1U);
    EXPECT_EQ(second->calls, 1);
}

TEST_F(ControlTest, StandsItsOwnDestructionInAnAction) {
    const auto second = std::make_shared<Listener>();
    UIControl* const raw = control.get();
    listener->onCall = [&] {
        control->removeFromSuperview();
        control.reset();
    };
    control->addTarget(listener, &Listener::heard, 1U);
    control->addTarget(second, &Listener::heard, 1U);
    raw->sendActionsForControlEvents(1U);
    EXPECT_EQ(control, nullptr);
    EXPECT_EQ(second->calls, 1);
}

TEST_F(ControlTest, IsHighlightedWhileATouchHoldsIt) {
    send(UITouchPhase::Began, 15);
    EXPECT_TRUE(control->isHighlighted());
    EXPECT_TRUE(control->isTracking());
    EXPECT_EQ(control->state(), UIControlStateHighlighted);
    send(UITouchPhase::Moved, 200);
    send(UITouchPhase::Ended, 201);
    EXPECT_FALSE(control->isHighlighted());
    EXPECT_FALSE(control->isTracking());
    EXPECT_EQ(control->messages, (Messages{"begin", "continue", "end"}));
    EXPECT_EQ(control->points, (std::vector<CGPoint>{{5, 5}, {190, 5}, {191, 5}}));
}

TEST_F(ControlTest, IsPaintedAgainWhenItsHighlightChanges) {
    window->takeDamage();
    send(UITouchPhase::Began, 15);
    EXPECT_EQ(window->takeDamage(), std::vector{control->frame()});
    control->setHighlighted(true);
    EXPECT_TRUE(window->damage().empty());
    send(UITouchPhase::Ended, 15);
    EXPECT_EQ(window->takeDamage(), std::vector{control->frame()});
}

TEST_F(ControlTest, LetsATouchGoThatItDoesNotWant) {
    control->accepts = false;
    window->takeDamage();
    send(UITouchPhase::Began, 15);
    EXPECT_FALSE(control->isHighlighted());
    send(UITouchPhase::Moved, 16);
    send(UITouchPhase::Ended, 16);
    EXPECT_EQ(control->messages, Messages{"begin"});
    EXPECT_TRUE(window->damage().empty());
}

TEST_F(ControlTest, FollowsOneFingerAtATime) {
    send(UITouchPhase::Began, 15, 1);
    send(UITouchPhase::Began, 20, 2);
    send(UITouchPhase::Moved, 21, 2);
    send(UITouchPhase::Ended, 21, 2);
    EXPECT_TRUE(control->isHighlighted());
    send(UITouchPhase::Ended, 15, 1);
    EXPECT_EQ(control->messages, (Messages{"begin", "end"}));
}

TEST_F(ControlTest, EndsItsTrackingForACancelledTouch) {
    send(UITouchPhase::Began, 15);
    window->cancelTouches();
    EXPECT_FALSE(control->isHighlighted());
    EXPECT_EQ(control->messages, (Messages{"begin", "cancel"}));
}

TEST_F(ControlTest, TellsHowATouchEndedOnceItIsNotHeldAnyMore) {
    std::vector<std::pair<unsigned, bool>> ends;
    for (const unsigned end :
         {UIControlEventTouchUpInside, UIControlEventTouchUpOutside, UIControlEventTouchCancel})
        control->addAction(listener, end, [&ends, end](const std::shared_ptr<UIControl>& sender) {
            ends.emplace_back(end, sender->isTracking() || sender->isHighlighted());
        });
    using Ends = decltype(ends);
    send(UITouchPhase::Began, 15);
    send(UITouchPhase::Moved, 200);
    EXPECT_EQ(ends, Ends{});
    send(UITouchPhase::Ended, 15);
    send(UITouchPhase::Began, 15);
    send(UITouchPhase::Ended, 200);
    send(UITouchPhase::Began, 15);
    window->cancelTouches();
    EXPECT_EQ(ends, (Ends{{UIControlEventTouchUpInside, false},
                          {UIControlEventTouchUpOutside, false},
                          {UIControlEventTouchCancel, false}}));
    control->accepts = false;
    send(UITouchPhase::Began, 15);
    send(UITouchPhase::Ended, 15);
    EXPECT_EQ(ends.size(), 3U) << "nothing held it";
}

TEST_F(ControlTest, TakesNoTouchWhileDisabledAndLetsItThrough) {
    control->setEnabled(false);
    EXPECT_EQ(window->hitTest({15, 15}, nullptr), window);
    const UITouchSet direct{std::make_shared<UITouch>()};
    control->touchesBegan(direct, std::make_shared<UIEvent>(direct));
    EXPECT_TRUE(control->messages.empty());
    EXPECT_FALSE(control->isHighlighted());
}

TEST_F(ControlTest, CancelsATouchUnderWayWhenDisabled) {
    send(UITouchPhase::Began, 15);
    control->setEnabled(false);
    EXPECT_FALSE(control->isHighlighted());
    control->setEnabled(true);
    send(UITouchPhase::Moved, 16);
    send(UITouchPhase::Ended, 16);
    EXPECT_EQ(control->messages, (Messages{"begin", "cancel"}));
}

TEST_F(ControlTest, StandsBeingDisabledInItsOwnBeginning) {
    control->onBegin = [this] { control->setEnabled(false); };
    send(UITouchPhase::Began, 15);
    EXPECT_FALSE(control->isHighlighted());
    EXPECT_FALSE(control->isTracking());
    EXPECT_EQ(control->messages, (Messages{"begin", "cancel"}));
}

TEST_F(ControlTest, CancelsATouchUnderWayWhenItLeavesTheWindow) {
    send(UITouchPhase::Began, 15);
    control->removeFromSuperview();
    EXPECT_FALSE(control->isHighlighted());
    window->addSubview(control);
    send(UITouchPhase::Began, 15);
    EXPECT_TRUE(control->isHighlighted());
    EXPECT_EQ(control->messages, (Messages{"begin", "cancel", "begin"}));
}

TEST_F(ControlTest, StandsItsDestructionInItsOwnTracking) {
    std::weak_ptr<TrackedControl> weak = control;
    control->onEnd = [weak] { weak.lock()->removeFromSuperview(); };
    control.reset();
    send(UITouchPhase::Began, 15);
    send(UITouchPhase::Ended, 15);
    EXPECT_TRUE(weak.expired());
}

TEST_F(ControlTest, TakesANewTouchAfterOneThatVanished) {
    {
        const UITouchSet vanishing{std::make_shared<UITouch>()};
        control->touchesBegan(vanishing, std::make_shared<UIEvent>(vanishing));
    }
    EXPECT_FALSE(control->isTracking());
    send(UITouchPhase::Began, 15);
    EXPECT_EQ(control->messages, (Messages{"begin", "cancel", "begin"}));
    EXPECT_TRUE(control->isHighlighted());
}

TEST_F(ControlTest, StandsEmptyAndNullTouches) {
    control->touchesBegan({}, nullptr);
    control->touchesBegan({nullptr}, nullptr);
    control->touchesMoved({nullptr}, nullptr);
    control->touchesEnded({}, nullptr);
    EXPECT_TRUE(control->messages.empty());
}
