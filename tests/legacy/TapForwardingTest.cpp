#include "host/TarnwickViewController.hpp"
#include "platform/foundation/NSClassRegistry.hpp"
#include "platform/foundation/NSLog.hpp"
#include "platform/uikit/UIEvent.hpp"
#include "platform/uikit/UIWindow.hpp"

#include <gtest/gtest.h>

namespace {

/// Notes every touch message that reaches it.
class Touched : public UIView {
 public:
    using UIView::UIView;
    void touchesBegan(const UITouchSet& touches, const std::shared_ptr<UIEvent>& event) override {
        received.push_back("began " + textOf(touches, event));
    }
    void touchesMoved(const UITouchSet&, const std::shared_ptr<UIEvent>&) override {
        received.emplace_back("moved");
    }
    void touchesEnded(const UITouchSet& touches, const std::shared_ptr<UIEvent>& event) override {
        received.push_back("ended " + textOf(touches, event));
    }
    void touchesCancelled(const UITouchSet&, const std::shared_ptr<UIEvent>&) override {
        received.emplace_back("cancelled");
    }
    std::vector<std::string> received;

 private:
    static std::string textOf(const UITouchSet& touches, const std::shared_ptr<UIEvent>& event) {
        std::string text = std::to_string(touches.size());
        text += event ? " " + std::string(event->className()) : " no event";
        if (event) EXPECT_EQ(event->allTouches(), touches);
        return text;
    }
};

/// Takes a class out of the registry for as long as it lives.
class WithoutClass {
 public:
    explicit WithoutClass(const char* name) : class_(*NSClassFromString(name)) {
        NSClassRegistry::unregisterClass(class_.name, class_.code);
    }
    ~WithoutClass() { NSClassRegistry::registerClass(class_); }
    WithoutClass(const WithoutClass&) = delete;
    WithoutClass& operator=(const WithoutClass&) = delete;

 private:
    Class class_;
};

/// A controller whose view, with one view that takes touches, lies at {30, 70} in a window.
class TapForwarding : public testing::Test {
 protected:
    TapForwarding() {
        setLogSink([](const std::string&) {});
        controller->init();
        controller->setView(mixer);
        parent->addSubview(mixer);
        window->addSubview(parent);
        mixer->addSubview(target);
        setTouchMessageObserver([this](const UITouchMessage& message) {
            messages.push_back(message);
            for (const auto& touch : message.touches)
                phases.push_back(touch->phase());
        });
    }
    ~TapForwarding() override {
        setTouchMessageObserver(nullptr);
        setLogSink({});
    }
    std::shared_ptr<NSObject> tap(CGFloat x, CGFloat y) {
        return controller->launchURLForTapLocation({x, y});
    }

    std::vector<UITouchMessage> messages;
    std::vector<UITouchPhase> phases;
    std::shared_ptr<UIWindow> window = std::make_shared<UIWindow>(CGRectMake(0, 0, 400, 500));
    std::shared_ptr<UIView> parent = std::make_shared<UIView>(CGRectMake(10, 20, 380, 400));
    std::shared_ptr<TarnwickView> mixer =
        std::make_shared<TarnwickView>(CGRectMake(20, 50, 320, 250));
    std::shared_ptr<Touched> target = std::make_shared<Touched>(CGRectMake(100, 100, 50, 50));
    std::shared_ptr<TarnwickViewController> controller = std::make_shared<TarnwickViewController>();
};

TEST_F(TapForwarding, GivesTheViewUnderThePointOnePressAndOneRelease) {
    EXPECT_EQ(tap(120, 120), nullptr);
    EXPECT_EQ(target->received,
              (std::vector<std::string>{"began 1 UITouchesEvent", "ended 1 UITouchesEvent"}));
    EXPECT_EQ(phases, (std::vector{UITouchPhase::Began, UITouchPhase::Ended}));
}

TEST_F(TapForwarding, SpeaksOfThePointInTheWindowsCoordinates) {
    tap(120, 121);
    ASSERT_EQ(messages.size(), 2U);
    const UITouch& touch = *messages[0].touches.at(0);
    EXPECT_EQ(touch.locationInView(nullptr), (CGPoint{150, 191}));
    EXPECT_EQ(touch.previousLocationInView(nullptr), (CGPoint{150, 191}));
    EXPECT_EQ(touch.locationInView(mixer.get()), (CGPoint{120, 121}));
    EXPECT_EQ(touch.tapCount(), 1);
    EXPECT_EQ(touch.window(), window);
    EXPECT_EQ(touch.view(), target);
}

TEST_F(TapForwarding, HitsTheEdgesOfAViewAndNotOnePast) {
    tap(100, 100);
    EXPECT_EQ(messages.at(0).receiver, target);
    messages.clear();
    tap(150, 120);
    EXPECT_EQ(messages.at(0).receiver, mixer) << "the right edge is not the view's own";
    messages.clear();
    tap(99.5F, 120);
    EXPECT_EQ(messages.at(0).receiver, mixer);
}

TEST_F(TapForwarding, MakesOneTouchAndTwoEvents) {
    tap(120, 120);
    ASSERT_EQ(messages.size(), 2U);
    EXPECT_EQ(messages[0].touches, messages[1].touches);
    EXPECT_NE(messages[0].event, messages[1].event);
}

TEST_F(TapForwarding, LeavesNothingBehind) {
    tap(120, 120);
    ASSERT_EQ(messages.size(), 2U);
    const std::weak_ptr<UITouch> touch = messages[0].touches.at(0);
    const std::weak_ptr<UIEvent> began = messages[0].event;
    const std::weak_ptr<UIEvent> ended = messages[1].event;
    messages.clear();
    EXPECT_TRUE(touch.expired());
    EXPECT_TRUE(began.expired());
    EXPECT_TRUE(ended.expired());
    EXPECT_EQ(target.use_count(), 2) << "the test's and the superview's";
}

TEST_F(TapForwarding, SendsNoTouchesAndNoEventWithoutTheEventsClass) {
    const WithoutClass gone("UITouchesEvent");
    EXPECT_EQ(tap(120, 120), nullptr);
    EXPECT_EQ(target->received, (std::vector<std::string>{"began 0 no event", "ended 0 no event"}));
}

TEST_F(TapForwarding, TouchesNobodyOutsideAWindow) {
    parent->removeFromSuperview();
    EXPECT_EQ(tap(120, 120), nullptr);
    EXPECT_TRUE(messages.empty());
}

TEST_F(TapForwarding, TouchesNobodyOutsideTheWindowsViews) {
    EXPECT_EQ(tap(-300, 0), nullptr);
    EXPECT_TRUE(messages.empty());
}

TEST_F(TapForwarding, PassesByHiddenAndDisabledViews) {
    target->setHidden(true);
    tap(120, 120);
    EXPECT_EQ(messages.at(0).receiver, mixer);
    messages.clear();
    window->setUserInteractionEnabled(false);
    tap(120, 120);
    EXPECT_TRUE(messages.empty());
}

TEST_F(TapForwarding, FinishesOnAViewThatLeavesBetweenPressAndRelease) {
    class Leaving : public Touched {
     public:
        using Touched::Touched;
        void touchesBegan(const UITouchSet& touches,
                          const std::shared_ptr<UIEvent>& event) override {
            Touched::touchesBegan(touches, event);
            removeFromSuperview();
        }
    };
    const auto leaving = std::make_shared<Leaving>(CGRectMake(0, 0, 50, 50));
    mixer->addSubview(leaving);
    EXPECT_EQ(tap(10, 10), nullptr);
    EXPECT_EQ(leaving->received.size(), 2U) << "the touch keeps its view";
}

TEST_F(TapForwarding, SurvivesTheEndOfItsControllerAndWindowFromInside) {
    class Ending : public UIView {
     public:
        using UIView::UIView;
        void touchesBegan(const UITouchSet&, const std::shared_ptr<UIEvent>&) override { end(); }
        std::function<void()> end;
    };
    const auto ending = std::make_shared<Ending>(CGRectMake(0, 0, 50, 50));
    mixer->addSubview(ending);
    const auto held = controller;  // A host holds the object that it sends a message to.
    ending->end = [this] {
        mixer->removeFromSuperview();
        mixer = nullptr;
        parent = nullptr;
        window = nullptr;
        controller->setView(nullptr);
        controller = nullptr;
    };
    EXPECT_EQ(held->launchURLForTapLocation({10, 10}), nullptr);
    ending->end = nullptr;
}

}  // namespace
