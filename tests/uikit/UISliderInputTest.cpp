#include "tests/uikit/TestViews.hpp"

#include <cmath>
#include <limits>

using Values = std::vector<float>;
using UISliderInput = SliderTest;

TEST_F(UISliderInput, StepsByOnePercentForArrows) {
    slider->setValue(50);
    window->setFocusedView(slider);
    for (const UIKey key : {UIKey::Right, UIKey::Up, UIKey::Left, UIKey::Down})
        EXPECT_TRUE(window->sendKey(key));
    EXPECT_EQ(listener->values, (Values{51, 52, 51, 50}));
}

TEST_F(UISliderInput, StepsByTenPercentForPagesAndToTheEnds) {
    slider->setValue(50);
    window->setFocusedView(slider);
    for (const UIKey key : {UIKey::PageUp, UIKey::PageDown, UIKey::End, UIKey::Home})
        EXPECT_TRUE(window->sendKey(key));
    EXPECT_EQ(listener->values, (Values{60, 50, 100, 0}));
}

TEST_F(UISliderInput, StepsByPercentOfItsOwnRange) {
    slider->setMinimumValue(-10);
    slider->setMaximumValue(10);
    slider->setValue(0);
    slider->stepFromUser(5);
    EXPECT_EQ(listener->values, Values{1});
}

TEST_F(UISliderInput, UsesAKeyAtTheEndWithoutSendingAgain) {
    window->setFocusedView(slider);
    EXPECT_TRUE(window->sendKey(UIKey::Home));
    EXPECT_TRUE(window->sendKey(UIKey::Left));
    slider->setValue(99.5);
    EXPECT_TRUE(window->sendKey(UIKey::Right));
    EXPECT_TRUE(window->sendKey(UIKey::Right));
    EXPECT_EQ(listener->values, Values{100});
}

TEST_F(UISliderInput, HasNoUseForTab) {
    EXPECT_FALSE(slider->keyPressed(UIKey::Tab));
    EXPECT_FALSE(slider->keyPressed(UIKey::BackTab));
}

TEST_F(UISliderInput, StepsByOnePercentForAWheelStep) {
    slider->setValue(50);
    EXPECT_TRUE(window->sendScroll({xAt(10), 35}, 1));
    EXPECT_TRUE(window->sendScroll({xAt(10), 35}, -2));
    EXPECT_TRUE(window->sendScroll({xAt(10), 35}, 0.5));
    EXPECT_EQ(listener->values, (Values{51, 49, 49.5}));
}

TEST_F(UISliderInput, KeepsTheWheelToItselfAtItsEnd) {
    EXPECT_TRUE(window->sendScroll({xAt(10), 35}, -1));
    EXPECT_TRUE(window->sendScroll({xAt(10), 35}, 1e300));
    EXPECT_EQ(listener->values, Values{100});
}

TEST_F(UISliderInput, IgnoresWheelAndKeysWhileAFingerHoldsIt) {
    window->setFocusedView(slider);
    slider->setValue(50);
    press(xAt(50));
    EXPECT_TRUE(window->sendScroll({xAt(10), 35}, 1));
    EXPECT_TRUE(window->sendKey(UIKey::End));
    slider->setValueFromUser(7);
    EXPECT_EQ(slider->value(), 50);
    release(xAt(50));
    EXPECT_TRUE(window->sendKey(UIKey::End));
    EXPECT_EQ(listener->values, Values{100});
}

TEST_F(UISliderInput, IgnoresEveryInputWhileDisabled) {
    window->setFocusedView(slider);
    slider->setEnabled(false);
    EXPECT_FALSE(slider->isFocused());
    EXPECT_FALSE(slider->canBecomeFocused());
    EXPECT_FALSE(slider->keyPressed(UIKey::End));
    EXPECT_FALSE(slider->scrolled({5, 5}, 1));
    slider->setValueFromUser(50);
    slider->stepFromUser(5);
    EXPECT_FALSE(window->sendKey(UIKey::Tab));
    EXPECT_EQ(slider->value(), 0);
    EXPECT_TRUE(listener->values.empty());
}

TEST_F(UISliderInput, TakesEveryInputWhileItsValueIsNotKnown) {
    slider->setValueKnown(false);
    window->setFocusedView(slider);
    EXPECT_TRUE(window->sendKey(UIKey::End));
    EXPECT_TRUE(window->sendScroll({xAt(10), 35}, -1));
    press(xAt(20));
    release(xAt(20));
    ASSERT_EQ(listener->values.size(), 3U);
    EXPECT_EQ(listener->values[0], 100);
    EXPECT_EQ(listener->values[1], 99);
    EXPECT_NEAR(listener->values[2], 20, 0.001);
    EXPECT_FALSE(slider->isValueKnown());
}

TEST_F(UISliderInput, SendsAUsersValueOnlyIfItIsAnother) {
    slider->setValueFromUser(30);
    slider->setValueFromUser(30);
    slider->setValueFromUser(130);
    slider->setValueFromUser(140);
    EXPECT_EQ(listener->values, (Values{30, 100}));
}

TEST_F(UISliderInput, SendsAUsersValueAtOnceWhenNotContinuous) {
    slider->setContinuous(false);
    slider->setValueFromUser(30);
    EXPECT_EQ(listener->values, Values{30});
}

TEST_F(UISliderInput, IgnoresAUsersValueThatIsNoNumber) {
    slider->setValue(30);
    slider->setValueFromUser(std::nanf(""));
    slider->stepFromUser(NAN);
    EXPECT_EQ(slider->value(), 30);
    slider->stepFromUser(-INFINITY);
    EXPECT_EQ(slider->value(), 0);
}

TEST_F(UISliderInput, StandsItsDestructionInTheActionOfAKey) {
    std::weak_ptr<UISlider> weak = slider;
    window->setFocusedView(slider);
    slider.reset();
    listener->onChange = [&] { weak.lock()->removeFromSuperview(); };
    EXPECT_TRUE(window->sendKey(UIKey::Right));
    EXPECT_TRUE(weak.expired());
}

TEST_F(UISliderInput, StandsItsDestructionInTheActionOfTheWheel) {
    std::weak_ptr<UISlider> weak = slider;
    slider.reset();
    listener->onChange = [&] { weak.lock()->removeFromSuperview(); };
    EXPECT_TRUE(window->sendScroll({xAt(10), 35}, 1));
    EXPECT_TRUE(weak.expired());
}

TEST_F(UISliderInput, TellsTheShellOfEveryNewValue) {
    int told = 0;
    window->setStructureHandler([&] { ++told; });
    slider->setValue(0);
    EXPECT_EQ(told, 0);
    slider->setValue(1);
    EXPECT_EQ(told, 1);
}
