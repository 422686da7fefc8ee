#include "tests/support/VirtualClock.hpp"
#include "tests/uikit/TestViews.hpp"

#include <cmath>

namespace {
class UISliderAnimation : public SliderTest {
 protected:
    ~UISliderAnimation() override { UIAnimator::shared().setEnabled(true); }
    void pass(double seconds) {
        clock.advance(seconds);
        UIAnimator::shared().advance(clock.now());
    }
    /// The value that the thumb stands at.
    double shown() const { return (CGRectGetMidX(slider->thumbRect()) - 13.5) / 2.53; }
    VirtualClock clock;
};
}  // namespace

TEST_F(UISliderAnimation, HasItsValueAtOnceAndMovesTheThumbInAQuarterOfASecond) {
    slider->setValue(80, Animated::Yes);
    EXPECT_EQ(slider->value(), 80);
    EXPECT_TRUE(slider->isAnimating());
    EXPECT_TRUE(UIAnimator::shared().isActive());
    EXPECT_NEAR(shown(), 0, tolerance);
    pass(0.125);
    EXPECT_NEAR(shown(), 40, tolerance);
    pass(0.124);
    EXPECT_TRUE(slider->isAnimating());
    EXPECT_LT(shown(), 80);
    pass(0.001);
    EXPECT_FALSE(slider->isAnimating());
    EXPECT_FALSE(UIAnimator::shared().isActive());
    EXPECT_NEAR(shown(), 80, tolerance);
    EXPECT_TRUE(listener->values.empty());
}

TEST_F(UISliderAnimation, EasesInAndOut) {
    slider->setValue(100, Animated::Yes);
    pass(0.025);
    const double first = shown();
    pass(0.1);
    const double half = shown();
    pass(0.025);
    const double afterHalf = shown();
    EXPECT_LT(first, 5);
    EXPECT_GT(afterHalf - half, 10);
}

TEST_F(UISliderAnimation, DamagesTheSliderAtEachStepButNotTheWindow) {
    slider->setValue(10, Animated::Yes);
    for (const double seconds : {0.0, 0.125, 0.125}) {
        if (seconds > 0) pass(seconds);
        const auto damage = window->takeDamage();
        ASSERT_EQ(damage.size(), 1U);
        EXPECT_LT(damage[0].size.width, 80);
        EXPECT_LE(damage[0].size.height, 40);
    }
}

TEST_F(UISliderAnimation, NeedsNoneToTheValueShown) {
    slider->setValue(50);
    slider->setValue(50, Animated::Yes);
    EXPECT_FALSE(slider->isAnimating());
    EXPECT_FALSE(UIAnimator::shared().isActive());
}

TEST_F(UISliderAnimation, EndsForAValueThatIsNotAnimated) {
    slider->setValue(80, Animated::Yes);
    pass(0.1);
    slider->setValue(20);
    EXPECT_FALSE(slider->isAnimating());
    EXPECT_NEAR(shown(), 20, tolerance);
    pass(0.1);
    EXPECT_NEAR(shown(), 20, tolerance);
}

TEST_F(UISliderAnimation, EndsForTheSameValueNotAnimated) {
    slider->setValue(80, Animated::Yes);
    slider->setValue(80);
    EXPECT_FALSE(slider->isAnimating());
    EXPECT_NEAR(shown(), 80, tolerance);
}

TEST_F(UISliderAnimation, GoesOnFromWhereTheThumbStandsForANewOne) {
    slider->setValue(80, Animated::Yes);
    pass(0.125);
    slider->setValue(20, Animated::Yes);
    EXPECT_NEAR(shown(), 40, tolerance);
    pass(0.125);
    EXPECT_NEAR(shown(), 30, tolerance);
    pass(0.125);
    EXPECT_NEAR(shown(), 20, tolerance);
}

TEST_F(UISliderAnimation, StopsWhereAFingerCatchesTheThumb) {
    slider->setValue(80, Animated::Yes);
    pass(0.125);
    press(xAt(40));
    EXPECT_FALSE(slider->isAnimating());
    EXPECT_NEAR(slider->value(), 40, 1e-4);
    EXPECT_EQ(listener->values.size(), 1U);
    pass(0.125);
    EXPECT_NEAR(shown(), 40, 1e-4);
}

TEST_F(UISliderAnimation, GoesOnUnderATouchThatTheSliderDoesNotTake) {
    slider->setEnabled(false);
    slider->setValue(80, Animated::Yes);
    press(xAt(40));
    EXPECT_TRUE(slider->isAnimating());
}

TEST_F(UISliderAnimation, StepsAKeyFromTheValueAndNotFromTheThumb) {
    slider->setValue(80, Animated::Yes);
    pass(0.125);
    slider->stepFromUser(1);
    EXPECT_EQ(slider->value(), 81);
    EXPECT_FALSE(slider->isAnimating());
    EXPECT_NEAR(shown(), 81, 1e-5);
}

TEST_F(UISliderAnimation, JumpsWhileAFingerHoldsIt) {
    press(xAt(0));
    slider->setValue(80, Animated::Yes);
    EXPECT_FALSE(slider->isAnimating());
    EXPECT_NEAR(shown(), 80, tolerance);
}

TEST_F(UISliderAnimation, JumpsWhenAnimationsAreOff) {
    UIAnimator::shared().setEnabled(false);
    slider->setValue(80, Animated::Yes);
    EXPECT_FALSE(slider->isAnimating());
    EXPECT_NEAR(shown(), 80, tolerance);
}

TEST_F(UISliderAnimation, JumpsToItsEndWhenAnimationsAreTurnedOffMeanwhile) {
    slider->setValue(80, Animated::Yes);
    UIAnimator::shared().setEnabled(false);
    pass(0.001);
    EXPECT_FALSE(slider->isAnimating());
    EXPECT_NEAR(shown(), 80, tolerance);
}

TEST_F(UISliderAnimation, EndsWhenTheRangeChanges) {
    slider->setValue(80, Animated::Yes);
    slider->setMaximumValue(50);
    EXPECT_FALSE(slider->isAnimating());
    EXPECT_EQ(slider->value(), 50);
    EXPECT_NEAR(shown(), 100, tolerance);  // The whole way along the track.
}

TEST_F(UISliderAnimation, GoesOnWhenARangeEndIsIgnored) {
    slider->setValue(80, Animated::Yes);
    slider->setMaximumValue(100);
    slider->setMinimumValue(NAN);
    EXPECT_TRUE(slider->isAnimating());
}

TEST_F(UISliderAnimation, LeavesNothingBehindWhenTheSliderIsDestroyed) {
    slider->setValue(80, Animated::Yes);
    pass(0.1);
    slider->removeFromSuperview();
    slider.reset();
    EXPECT_FALSE(UIAnimator::shared().isActive());
    pass(0.1);
}

TEST_F(UISliderAnimation, StandsTheSlidersDestructionInAStep) {
    std::weak_ptr<UISlider> weak = slider;
    slider->setValue(80, Animated::Yes);
    window->takeDamage();
    window->setDamageHandler([&] { slider.reset(); });
    slider->removeFromSuperview();
    EXPECT_TRUE(weak.expired());
    pass(0.1);
}

TEST_F(UISliderAnimation, StaysAtItsStartForAClockThatGoesBack) {
    slider->setValue(80, Animated::Yes);
    UIAnimator::shared().advance(clock.now() - 10);
    EXPECT_NEAR(shown(), 0, tolerance);
    pass(0.25);
    EXPECT_NEAR(shown(), 80, tolerance);
}
