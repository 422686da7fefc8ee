#include "tests/support/FakeImageDecoder.hpp"
#include "tests/uikit/TestViews.hpp"

using Values = std::vector<float>;
using UISliderTouch = SliderTest;

TEST_F(UISliderTouch, StartsAtNoughtInARangeToOneAndContinuous) {
    const auto plain = std::make_shared<UISlider>();
    EXPECT_EQ(plain->minimumValue(), 0);
    EXPECT_EQ(plain->maximumValue(), 1);
    EXPECT_EQ(plain->value(), 0);
    EXPECT_TRUE(plain->isContinuous());
}

TEST_F(UISliderTouch, SendsNothingForAValueSetByTheProgram) {
    slider->setValue(50);
    slider->setValue(20, Animated::Yes);
    slider->setMaximumValue(10);
    slider->setMinimumValue(5);
    EXPECT_TRUE(listener->values.empty());
}

TEST_F(UISliderTouch, ClampsAValueOneStepPastEitherEnd) {
    slider->setValue(100.5F);
    EXPECT_EQ(slider->value(), 100);
    slider->setValue(-0.5F);
    EXPECT_EQ(slider->value(), 0);
}

TEST_F(UISliderTouch, LeavesEveryValueWhenTheThumbIsOnlyPressed) {
    for (float value = 0; value <= 100; value += 0.37F) {
        slider->setValue(value);
        const CGFloat x = xAt(static_cast<double>(value)) + 5;
        press(x);
        drag(x);
        release(x);
        EXPECT_EQ(slider->value(), value);
    }
    EXPECT_TRUE(listener->values.empty());
}

TEST_F(UISliderTouch, DragsTheThumbFromWhereItIsHeld) {
    slider->setValue(50);
    press(xAt(50) + 10);
    drag(xAt(60) + 10);
    EXPECT_NEAR(slider->value(), 60, 1e-4);
    release(xAt(60) + 10);
    EXPECT_EQ(listener->values.size(), 1U);
}

TEST_F(UISliderTouch, BringsTheThumbToAPressOnTheTrackAndDragsItOn) {
    press(xAt(50));
    EXPECT_NEAR(slider->value(), 50, 1e-4);
    drag(xAt(20));
    EXPECT_NEAR(slider->value(), 20, 1e-4);
    release(xAt(25));
    EXPECT_NEAR(slider->value(), 25, 1e-4);
    EXPECT_EQ(listener->values.size(), 3U);
}

TEST_F(UISliderTouch, ReachesBothEndsExactlyAndStaysThere) {
    press(xAt(50));
    drag(xAt(100) + 1);
    EXPECT_EQ(slider->value(), 100);
    drag(5000);
    EXPECT_EQ(listener->values.size(), 2U);
    drag(xAt(0) - 1);
    EXPECT_EQ(slider->value(), 0);
    drag(-5000);
    EXPECT_EQ(listener->values.size(), 3U);
}

TEST_F(UISliderTouch, IsHighlightedWhileItsActionsRun) {
    std::vector<bool> lit;
    listener->onChange = [&] { lit.push_back(slider->isHighlighted()); };
    press(xAt(50));
    drag(xAt(60));
    release(xAt(70));
    EXPECT_EQ(lit, (std::vector<bool>{true, true, true}));
    EXPECT_FALSE(slider->isHighlighted());
}

TEST_F(UISliderTouch, SendsOnceAtTheEndWhenNotContinuous) {
    slider->setContinuous(false);
    press(xAt(50));
    drag(xAt(60));
    EXPECT_TRUE(listener->values.empty());
    EXPECT_NEAR(slider->value(), 60, 1e-4);
    release(xAt(70));
    ASSERT_EQ(listener->values.size(), 1U);
    EXPECT_NEAR(listener->values[0], 70, 1e-4);
}

TEST_F(UISliderTouch, SendsNothingAtTheEndOfADragThatCameBack) {
    slider->setContinuous(false);
    press(xAt(0));
    drag(xAt(60));
    release(xAt(0) - 5);
    EXPECT_TRUE(listener->values.empty());
}

TEST_F(UISliderTouch, GoesBackForACancelledTouchThatNobodyHeardOf) {
    slider->setContinuous(false);
    slider->setValue(10);
    press(xAt(50));
    window->cancelTouches();
    EXPECT_EQ(slider->value(), 10);
    EXPECT_TRUE(listener->values.empty());
}

TEST_F(UISliderTouch, StaysForACancelledTouchThatWasHeardOf) {
    slider->setValue(10);
    press(xAt(50));
    window->cancelTouches();
    EXPECT_NEAR(slider->value(), 50, 1e-4);
    EXPECT_EQ(listener->values.size(), 1U);
}

TEST_F(UISliderTouch, TakesPressesUpToEightPointsBesideTheTrackOnly) {
    const InstalledFakeDecoder decoder;
    slider->setMinimumValueImage(decoder.image("quiet.png", {20, 20}));
    slider->setMaximumValueImage(decoder.image("loud.png", {24, 20}));
    slider->setValue(50);
    press(20 + 19.5);  // On the image.
    press(20 + 280 - 23.5);
    EXPECT_EQ(slider->value(), 50);
    EXPECT_FALSE(slider->isHighlighted());
    press(20 + 20);
    EXPECT_EQ(slider->value(), 0);
    release(20 + 20);
    press(20 + 280 - 24);
    EXPECT_EQ(slider->value(), 100);
}

TEST_F(UISliderTouch, StandsItsDestructionInItsOwnAction) {
    std::weak_ptr<UISlider> weak = slider;
    slider.reset();
    listener->onChange = [&] { weak.lock()->removeFromSuperview(); };
    press(xAt(50));
    EXPECT_TRUE(weak.expired());
    drag(xAt(60));
    release(xAt(60));
    EXPECT_EQ(listener->values.size(), 1U);
}

TEST_F(UISliderTouch, StandsTheWindowsDestructionInItsOwnAction) {
    UIWindow* const raw = window.get();
    listener->onChange = [&] { window.reset(); };
    raw->sendTouch(UITouchPhase::Began, {xAt(50), 35});
    EXPECT_EQ(window, nullptr);
    EXPECT_FALSE(slider->isHighlighted());
}

TEST_F(UISliderTouch, StandsItsTargetsDestructionInTheAction) {
    listener->onChange = [&] { listener.reset(); };
    press(xAt(50));
    drag(xAt(60));
    EXPECT_NEAR(slider->value(), 60, 1e-4);
}

TEST_F(UISliderTouch, StandsBeingDisabledInItsOwnAction) {
    listener->onChange = [&] { slider->setEnabled(false); };
    press(xAt(50));
    EXPECT_FALSE(slider->isHighlighted());
    drag(xAt(60));
    EXPECT_EQ(listener->values.size(), 1U);
    EXPECT_EQ(slider->value(), listener->values[0]);
}

TEST_F(UISliderTouch, TakesTheProgramsValueWhileHeldAndTheFingersNextMove) {
    press(xAt(50));
    slider->setValue(10);
    EXPECT_EQ(slider->value(), 10);
    drag(xAt(60));
    EXPECT_NEAR(slider->value(), 60, 1e-4);
}

TEST_F(UISliderTouch, KeepsTheProgramsValueWhenTheFingerLeavesWithoutAMove) {
    slider->setValue(50);
    press(xAt(50));
    slider->setValue(10);
    drag(xAt(50));
    release(xAt(50));
    EXPECT_EQ(slider->value(), 10);
    EXPECT_TRUE(listener->values.empty());
}

TEST_F(UISliderTouch, IgnoresTouchesWithoutRoomForAThumb) {
    slider->setFrame(CGRectMake(20, 20, 26, 30));
    press(30);
    EXPECT_FALSE(slider->isHighlighted());
    EXPECT_TRUE(listener->values.empty());
}

TEST_F(UISliderTouch, KeepsItsValueWhenThereIsRoomForAThumbButNotToMoveIt) {
    slider->setFrame(CGRectMake(20, 20, 27, 30));
    slider->setValue(40);
    press(30);
    drag(45);
    EXPECT_TRUE(slider->isHighlighted());
    EXPECT_EQ(slider->value(), 40);
}

TEST_F(UISliderTouch, StaysPutInAnEmptyRange) {
    slider->setMinimumValue(100);
    press(xAt(50));
    drag(xAt(100));
    EXPECT_EQ(slider->value(), 100);
    EXPECT_TRUE(listener->values.empty());
}
