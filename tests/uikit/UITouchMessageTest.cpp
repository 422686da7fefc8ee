#include "platform/uikit/UIEvent.hpp"
#include "platform/uikit/UIWindow.hpp"

#include <gtest/gtest.h>

namespace {

class Noting : public UIView {
 public:
    using UIView::UIView;
    explicit Noting(std::vector<std::string>& notes) : UIView({{0, 0}, {10, 10}}), notes_(notes) {}
    void touchesBegan(const UITouchSet&, const std::shared_ptr<UIEvent>&) override {
        notes_.emplace_back("began");
    }
    void touchesMoved(const UITouchSet&, const std::shared_ptr<UIEvent>&) override {
        notes_.emplace_back("moved");
    }
    void touchesEnded(const UITouchSet&, const std::shared_ptr<UIEvent>&) override {
        notes_.emplace_back("ended");
    }
    void touchesCancelled(const UITouchSet&, const std::shared_ptr<UIEvent>&) override {
        notes_.emplace_back("cancelled");
    }

 private:
    std::vector<std::string>& notes_;
};

class TouchMessage : public testing::Test {
 protected:
    ~TouchMessage() override { setTouchMessageObserver(nullptr); }
    std::vector<std::string> notes;
    std::shared_ptr<UIView> view = std::make_shared<Noting>(notes);
};

TEST_F(TouchMessage, ReachesItsViewByItsPhase) {
    for (const auto phase : {UITouchPhase::Began, UITouchPhase::Moved, UITouchPhase::Stationary,
                             UITouchPhase::Ended, UITouchPhase::Cancelled})
        UITouchMessage{view, phase, {}, nullptr}.send();
    EXPECT_EQ(notes, (std::vector<std::string>{"began", "moved", "ended", "cancelled"}));
}

TEST_F(TouchMessage, ToNobodyDoesNothing) {
    setTouchMessageObserver([this](const UITouchMessage&) { notes.emplace_back("seen"); });
    UITouchMessage{nullptr, UITouchPhase::Began, {}, nullptr}.send();
    EXPECT_TRUE(notes.empty());
}

TEST_F(TouchMessage, IsSeenBeforeItsViewGetsIt) {
    setTouchMessageObserver(
        [this](const UITouchMessage& message) { notes.emplace_back(message.selector()); });
    UITouchMessage{view, UITouchPhase::Ended, {}, nullptr}.send();
    EXPECT_EQ(notes, (std::vector<std::string>{"touchesEnded:withEvent:", "ended"}));
}

TEST_F(TouchMessage, IsHowAWindowDeliversToo) {
    setTouchMessageObserver(
        [this](const UITouchMessage& message) { notes.emplace_back(message.selector()); });
    const auto window = std::make_shared<UIWindow>(CGRectMake(0, 0, 10, 10));
    window->addSubview(view);
    window->sendTouch(UITouchPhase::Began, {5, 5});
    window->sendTouch(UITouchPhase::Moved, {6, 5});
    window->cancelTouches();
    EXPECT_EQ(notes, (std::vector<std::string>{"touchesBegan:withEvent:", "began",
                                               "touchesMoved:withEvent:", "moved",
                                               "touchesCancelled:withEvent:", "cancelled"}));
}

}  // namespace
