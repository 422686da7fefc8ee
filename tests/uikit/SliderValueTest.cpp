#include "platform/uikit/SliderValue.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {
constexpr float infinity = std::numeric_limits<float>::infinity();

SliderValue percent() {
    SliderValue value;
    value.setMaximum(100);
    return value;
}
}  // namespace

TEST(SliderValue, StartsAtNoughtInARangeToOne) {
    const SliderValue value;
    EXPECT_EQ(value.minimum(), 0);
    EXPECT_EQ(value.maximum(), 1);
    EXPECT_EQ(value.value(), 0);
}

TEST(SliderValue, KeepsBothEndsAndClampsOneStepPastThem) {
    SliderValue value = percent();
    EXPECT_TRUE(value.setValue(100));
    EXPECT_EQ(value.value(), 100);
    EXPECT_FALSE(value.setValue(std::nextafter(100.0F, infinity)));
    EXPECT_EQ(value.value(), 100);
    EXPECT_TRUE(value.setValue(0));
    EXPECT_FALSE(value.setValue(-std::numeric_limits<float>::denorm_min()));
    EXPECT_EQ(value.value(), 0);
}

TEST(SliderValue, TakesTheMinimumForWhatIsNoNumber) {
    SliderValue value = percent();
    value.setMinimum(20);
    value.setValue(50);
    EXPECT_TRUE(value.setValue(std::nanf("")));
    EXPECT_EQ(value.value(), 20);
}

TEST(SliderValue, GoesToTheEndsForInfiniteValues) {
    SliderValue value = percent();
    value.setValue(infinity);
    EXPECT_EQ(value.value(), 100);
    value.setValue(-infinity);
    EXPECT_EQ(value.value(), 0);
}

TEST(SliderValue, IgnoresAnEndThatIsNotFinite) {
    SliderValue value = percent();
    value.setValue(40);
    EXPECT_FALSE(value.setMaximum(infinity));
    EXPECT_FALSE(value.setMaximum(std::nanf("")));
    EXPECT_FALSE(value.setMinimum(-infinity));
    EXPECT_EQ(value.minimum(), 0);
    EXPECT_EQ(value.maximum(), 100);
    EXPECT_EQ(value.value(), 40);
}

TEST(SliderValue, FollowsARangeThatShrinksPastIt) {
    SliderValue value = percent();
    value.setValue(50);
    EXPECT_FALSE(value.setMaximum(50));
    EXPECT_TRUE(value.setMaximum(49));
    EXPECT_EQ(value.value(), 49);
    EXPECT_FALSE(value.setMinimum(49));
    value.setMaximum(100);
    EXPECT_TRUE(value.setMinimum(60));
    EXPECT_EQ(value.value(), 60);
}

TEST(SliderValue, IsTheMinimumInARangeTheWrongWayRound) {
    SliderValue value = percent();
    value.setMinimum(200);
    EXPECT_EQ(value.value(), 200);
    EXPECT_FALSE(value.setValue(150));
    EXPECT_EQ(value.fraction(), 0);
    EXPECT_EQ(value.valueAtFraction(1), 200);
}

TEST(SliderValue, ConvertsFractionsExactlyAtBothEnds) {
    SliderValue value;
    value.setMinimum(-0.1F);
    value.setMaximum(0.3F);
    EXPECT_EQ(value.valueAtFraction(0), -0.1F);
    EXPECT_EQ(value.valueAtFraction(1), 0.3F);
    EXPECT_EQ(value.valueAtFraction(-0.01), -0.1F);
    EXPECT_EQ(value.valueAtFraction(1.01), 0.3F);
    EXPECT_EQ(value.valueAtFraction(std::nan("")), -0.1F);
    EXPECT_EQ(value.fraction(-5), 0);
    EXPECT_EQ(value.fraction(5), 1);
    EXPECT_EQ(value.fraction(std::nan("")), 0);
}

TEST(SliderValue, ComesBackFromEveryWholePercent) {
    SliderValue value = percent();
    for (int step = 0; step <= 100; ++step) {
        value.setValue(static_cast<float>(step));
        EXPECT_EQ(value.valueAtFraction(value.fraction()), static_cast<float>(step));
    }
}

TEST(SliderValue, StandsTheWidestRange) {
    SliderValue value;
    value.setMinimum(std::numeric_limits<float>::lowest());
    value.setMaximum(std::numeric_limits<float>::max());
    EXPECT_EQ(value.valueAtFraction(1), std::numeric_limits<float>::max());
    value.setValue(0);
    EXPECT_NEAR(value.fraction(), 0.5, 1e-9);
}
