#include "platform/uikit/UIButton.hpp"
#include "platform/uikit/UIView.hpp"
#include "tests/uikit/TestViews.hpp"

namespace {

class ButtonTest : public testing::Test {
 protected:
    ButtonTest() {
        button->setAccessibilityLabel("Close");
        button->addAction(target, UIControlEventTouchUpInside, [this](const auto&) { ++presses; });
    }
    void send(UITouchPhase phase, CGFloat x) { window->sendTouch(phase, {x, 20}); }

    std::shared_ptr<UIWindow> window = makeWindow();
    std::shared_ptr<UIButton> button = add<UIButton>(window, CGRectMake(10, 10, 40, 30));
    std::shared_ptr<NSObject> target = std::make_shared<TouchView>();
    int presses = 0;
};

TEST_F(ButtonTest, IsPressedByAFingerThatIsLiftedOnIt) {
    send(UITouchPhase::Began, 20);
    EXPECT_TRUE(button->isHighlighted());
    EXPECT_EQ(presses, 0);
    send(UITouchPhase::Ended, 49);
    EXPECT_EQ(presses, 1);
    EXPECT_FALSE(button->isHighlighted());
}

TEST_F(ButtonTest, IsNotPressedByAFingerThatSlidesOffOrIsCancelled) {
    send(UITouchPhase::Began, 20);
    send(UITouchPhase::Moved, 60);
    send(UITouchPhase::Ended, 60);
    send(UITouchPhase::Began, 20);
    window->cancelTouches();
    EXPECT_EQ(presses, 0);
}

TEST_F(ButtonTest, CanBePressedByOtherMeansWhileItIsEnabled) {
    button->press();
    EXPECT_EQ(presses, 1);
    button->setEnabled(false);
    button->press();
    EXPECT_EQ(presses, 1);
}

TEST_F(ButtonTest, IsPressedByOneKeyWhileItIsEnabled) {
    EXPECT_TRUE(button->keyPressed(UIKey::Press));
    EXPECT_EQ(presses, 1);
    EXPECT_FALSE(button->keyPressed(UIKey::Right));
    button->setEnabled(false);
    EXPECT_FALSE(button->keyPressed(UIKey::Press));
    EXPECT_EQ(presses, 1);
}

TEST_F(ButtonTest, MayGoWhenItIsPressed) {
    button->addAction(target, UIControlEventTouchUpInside, [this](const auto&) {
        button->removeFromSuperview();
        button.reset();
    });
    send(UITouchPhase::Began, 20);
    send(UITouchPhase::Ended, 20);
    EXPECT_EQ(presses, 1);
    EXPECT_EQ(button, nullptr);
}

TEST_F(ButtonTest, IsToldByItsLabel) {
    EXPECT_EQ(button->accessibilityLabel(), "Close");
    EXPECT_EQ(accessibilityElements(window), std::vector<std::shared_ptr<UIView>>{button});
}

}  // namespace
